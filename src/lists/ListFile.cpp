#include "lists/ListFile.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <unordered_map>

#include "frame/files/FileSystem.h"
#include "frame/text/Codepage.h"
#include "lists/Messages.h"

namespace brenvik {
namespace {

constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view LineEnd = "\r\n";

// Every line of every save passes here, so that it takes eight characters at a time.
bool isAscii(std::string_view text) {
    std::uint64_t seen = 0, word = 0;
    for (; text.size() >= sizeof word; text.remove_prefix(sizeof word)) {
        std::memcpy(&word, text.data(), sizeof word);
        seen |= word;
    }
    word = 0;
    if (!text.empty()) std::memcpy(&word, text.data(), text.size());
    return ((seen | word) & 0x8080808080808080u) == 0;
}

// With a mark of either order, or without one: then its line ends and ASCII letters are bytes with a 0 each.
bool isUtf16(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) return true;
    const auto zeros = static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\0'));
    return bytes.size() >= 4 && bytes.size() % 2 == 0 && zeros * 3 >= bytes.size();
}

}  // namespace

ListDifference listDifference(const std::vector<std::string>& before, const std::vector<std::string>& now) {
    std::unordered_map<std::string_view, std::ptrdiff_t> surplus;   // of now over before
    surplus.reserve(before.size());
    for (const std::string& line : before) --surplus[line];
    for (const std::string& line : now) ++surplus[line];
    ListDifference difference;
    // The last of equal lines are those that came or went.
    for (auto line = now.rbegin(); line != now.rend(); ++line)
        if (auto& count = surplus[*line]; count > 0) --count, difference.dazu.push_back(*line);
    for (auto line = before.rbegin(); line != before.rend(); ++line)
        if (auto& count = surplus[*line]; count < 0) ++count, difference.weg.push_back(*line);
    std::reverse(difference.dazu.begin(), difference.dazu.end());
    std::reverse(difference.weg.begin(), difference.weg.end());
    return difference;
}

std::string ListFile::load() {
    std::error_code unknown;   // the settings that name the folder may come from anybody
    if (std::filesystem::is_symlink(file_, unknown)) throw NumberedError(errnum::PathFileAccess, fmt::format(messages::ListeVerknuepfung, utf8FromPath(file_)));
    stamp_ = host::fileStamp(file_);   // before reading, so that a change in between shows the next time
    if (!stamp_) {   // a folder that has gone, with its drive perhaps, has not deleted its files
        std::error_code error;
        if (!std::filesystem::exists(std::filesystem::absolute(file_).parent_path(), error))
            throw NumberedError(errnum::PathNotFound, fmt::format(messages::ListFolderGone, utf8FromPath(file_)));
        return {};
    }
    std::string bytes = readFile(file_, Bound);
    if (isUtf16(bytes)) throw NumberedError(errnum::TypeMismatch, fmt::format(messages::ListNoText, utf8FromPath(file_)));
    utf8_ = bytes.starts_with(Utf8Mark) && isUtf8(bytes);
    return bytes;
}

std::vector<std::string> ListFile::linesOf(const std::string& bytes) {
    std::string_view rest = bytes;
    const bool marked = rest.starts_with(Utf8Mark) && isUtf8(bytes);
    if (marked) rest.remove_prefix(Utf8Mark.size());
    std::vector<std::string> lines;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of(LineEnd), rest.size());
        const std::string_view line = rest.substr(0, end);
        lines.push_back(marked || isAscii(line) ? std::string(line) : utf8FromAnsi(line));
        rest.remove_prefix(end);
        if (rest.starts_with(LineEnd)) rest.remove_prefix(2);
        else if (!rest.empty()) rest.remove_prefix(1);
    }
    return lines;
}

std::vector<std::string> ListFile::read() {
    std::string bytes = load();
    auto lines = linesOf(bytes);
    stand_ = std::move(bytes);
    return lines;
}

ListDifference ListFile::foreignChanges() {
    if (stamp_ && host::fileStamp(file_) == stamp_) return {};
    const std::vector<std::string> before = linesOf(stand_);
    return listDifference(before, read());
}

void ListFile::appendEncoded(std::string& bytes, std::string_view text) const {
    if (utf8_ || isAscii(text)) bytes.append(text);
    else bytes += ansiFromUtf8(text);
}

std::string ListFile::afterReading(std::string_view line) const {
    return utf8_ ? std::string(line) : utf8FromAnsi(ansiFromUtf8(line));
}

void ListFile::write(const std::vector<std::string_view>& lines) {
    std::size_t size = Utf8Mark.size();
    for (const std::string_view line : lines) size += line.size() + LineEnd.size();
    std::string bytes(utf8_ ? Utf8Mark : std::string_view());
    bytes.reserve(size);
    for (const std::string_view line : lines) {
        appendEncoded(bytes, line);
        bytes += LineEnd;
    }
    writeBytes(std::move(bytes));
}

void ListFile::writeText(std::string_view text) {
    std::string bytes(utf8_ ? Utf8Mark : std::string_view());
    appendEncoded(bytes, text);
    writeBytes(std::move(bytes));
}

void ListFile::writeBytes(std::string bytes) {
    writeFileAtomic(file_, bytes);
    stand_ = std::move(bytes);
    stamp_ = host::fileStamp(file_);
    if (stamp_ && stamp_->size != stand_.size()) stamp_.reset();   // somebody was quicker
}

}  // namespace brenvik
