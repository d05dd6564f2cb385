#include "frame/files/ProfileFile.h"

#include <algorithm>

#include <fmt/format.h>

#include "frame/Errors.h"
#include "frame/files/FileSystem.h"
#include "frame/text/Codepage.h"
#include "frame/text/Conversions.h"
#include "frame/text/LineMerge.h"

namespace brenvik {
namespace {

constexpr std::string_view NewLine = "\r\n";
constexpr std::uintmax_t LargestFile = 16u << 20;

std::string_view cutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// Names as they are compared; the files are Windows-1252, the letters with marks have two cases too.
std::string folded(std::string_view ansi) { return lowerCase(utf8FromAnsi(ansi)); }

// The name in a header line "[name]".
std::optional<std::string_view> headerName(std::string_view line) {
    line = cutBlanks(line);
    if (line.empty() || line.front() != '[') return std::nullopt;
    const std::size_t end = line.find(']');
    if (end == std::string_view::npos) return std::nullopt;
    return cutBlanks(line.substr(1, end - 1));
}

bool isComment(std::string_view line) {
    line = cutBlanks(line);
    return !line.empty() && line.front() == ';';
}

// What reading a value gives: one pair of equal quotes around it is no part of it.
std::string_view readValue(std::string_view raw) {
    std::string_view value = cutBlanks(raw.substr(0, raw.find('\0')));
    if (value.size() > 1 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front())
        value = value.substr(1, value.size() - 2);
    return value;
}

std::string ansiBytes(std::string_view text) {
    std::size_t missing = 0;
    std::string bytes = ansiFromUtf8(text, &missing);
    if (missing != 0) throw NumberedError(errnum::InvalidCall, fmt::format("Der Text \"{}\" enthält Zeichen, die in einer INI-Datei nicht möglich sind.", text));
    return bytes;
}

// Text that may stand in a profile file, as bytes.
std::string storable(std::string_view text, std::string_view forbidden) {
    std::string bytes = ansiBytes(text);
    if (bytes.find_first_of(std::string_view("\r\n\0", 3)) != std::string::npos || bytes.find_first_of(forbidden) != std::string::npos)
        throw NumberedError(errnum::InvalidCall, fmt::format("Der Text \"{}\" kann in einer INI-Datei nicht stehen.", Replace(text, std::string_view("\0", 1), " ")));
    return bytes;
}

std::string storableKey(std::string_view key) {
    std::string bytes = storable(cutBlanks(key), "=");
    if (bytes.empty() || bytes.front() == '[' || bytes.front() == ';')
        throw NumberedError(errnum::InvalidCall, fmt::format("\"{}\" ist kein Name für einen Eintrag einer INI-Datei.", key));
    return bytes;
}

}  // namespace

ProfileFile::ProfileFile(std::string bytes) : bytes_(std::move(bytes)) {
    ansi_ = bytes_.rfind("\xFF\xFE", 0) != 0 && bytes_.rfind("\xFE\xFF", 0) != 0;
    split();
}

void ProfileFile::split() {
    lines_.clear();
    if (!ansi_) return;
    for (std::size_t place = 0; place < bytes_.size();) {
        const std::size_t end = std::min(bytes_.find_first_of("\r\n", place), bytes_.size());
        std::size_t next = std::min(end + 1, bytes_.size());
        if (end + 1 < bytes_.size() && bytes_[end] == '\r' && bytes_[end + 1] == '\n') ++next;
        lines_.push_back({place, end, next});
        place = next;
    }
}

void ProfileFile::mustBeAnsi() const {
    if (!ansi_) throw NumberedError(errnum::TypeMismatch, "Die Datei ist keine ANSI-Textdatei und wird nicht verändert.");
}

std::optional<ProfileFile::Section> ProfileFile::find(std::string_view section) const {
    const std::string wanted = lowerCase(cutBlanks(section));
    for (std::size_t k = 0; k < lines_.size(); ++k) {
        const auto name = headerName(text(lines_[k]));
        if (!name || folded(*name) != wanted) continue;
        std::size_t last = k + 1;
        while (last < lines_.size() && !headerName(text(lines_[last]))) ++last;
        return Section{k + 1, last};
    }
    return std::nullopt;
}

std::optional<std::size_t> ProfileFile::findKey(const Section& section, std::string_view key) const {
    const std::string wanted = lowerCase(cutBlanks(key));
    for (std::size_t k = section.first; k < section.last; ++k) {
        const std::string_view line = text(lines_[k]);
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos || isComment(line)) continue;
        if (folded(cutBlanks(line.substr(0, equals))) == wanted) return k;
    }
    return std::nullopt;
}

std::optional<std::string> ProfileFile::rawValue(std::string_view section, std::string_view key) const {
    const auto place = find(section);
    const auto line = place ? findKey(*place, key) : std::nullopt;
    if (!line) return std::nullopt;
    const std::string_view whole = text(lines_[*line]);
    return utf8FromAnsi(whole.substr(whole.find('=') + 1));
}

std::optional<std::string> ProfileFile::value(std::string_view section, std::string_view key, std::size_t size) const {
    const auto raw = rawValue(section, key);
    if (!raw) return std::nullopt;
    const std::string_view read = readValue(*raw);
    return size == 0 ? std::string(read) : Left(read, size - 1);
}

std::vector<std::string> ProfileFile::sections() const {
    std::vector<std::string> names;
    for (const Line& line : lines_)
        if (const auto name = headerName(text(line))) names.push_back(utf8FromAnsi(*name));
    return names;
}

ProfileFile::LineTexts ProfileFile::entries(const Section& section) const {
    LineTexts result;
    for (std::size_t k = section.first; k < section.last; ++k) {
        const std::string_view line = cutBlanks(text(lines_[k]));
        if (!line.empty() && line.front() != ';') result.emplace_back(k, line);
    }
    return result;
}

std::vector<std::string> ProfileFile::sectionLines(std::string_view section) const {
    std::vector<std::string> lines;
    if (const auto place = find(section))
        for (const auto& [number, line] : entries(*place)) lines.push_back(utf8FromAnsi(line));
    return lines;
}

std::size_t ProfileFile::appendPlace(const Section& section) const {
    std::size_t last = section.last;
    while (last > section.first && cutBlanks(text(lines_[last - 1])).empty()) --last;
    return last == 0 ? 0 : lines_[last - 1].next;
}

void ProfileFile::insertLine(std::size_t place, std::string_view line) {
    const bool open = place > 0 && bytes_[place - 1] != '\n' && bytes_[place - 1] != '\r';
    bytes_.insert(place, std::string(open ? NewLine : "").append(line).append(NewLine));
    split();
}

ProfileFile::Section ProfileFile::makeSection(std::string_view section) {
    const std::string name = storable(cutBlanks(section), "]");
    insertLine(bytes_.size(), "[" + name + "]");
    return {lines_.size(), lines_.size()};
}

void ProfileFile::setValue(std::string_view section, std::string_view key, std::string_view value) {
    mustBeAnsi();
    const std::string name = storableKey(key);
    const auto place = find(section);
    if (const auto line = place ? findKey(*place, key) : std::nullopt) {
        const std::string_view whole = text(lines_[*line]);
        const std::size_t behind = whole.find('=') + 1;
        const std::string_view present = whole.substr(behind);
        // Equal before the check of the characters: what stands in the file may always be written back.
        if (const std::string old = utf8FromAnsi(present); value == old || value == cutBlanks(old)) return;
        const std::string bytes = storable(value, {});
        bytes_.replace(lines_[*line].begin + behind, present.size(), bytes);
        return split();
    }
    const std::string bytes = storable(value, {});
    const Section target = place ? *place : makeSection(section);
    insertLine(appendPlace(target), name + "=" + bytes);
}

bool ProfileFile::removeKey(std::string_view section, std::string_view key) {
    mustBeAnsi();
    const auto place = find(section);
    const auto line = place ? findKey(*place, key) : std::nullopt;
    if (!line) return false;
    bytes_.erase(lines_[*line].begin, lines_[*line].next - lines_[*line].begin);
    split();
    return true;
}

void ProfileFile::setSectionLines(std::string_view section, const std::vector<std::string>& lines) {
    mustBeAnsi();
    const auto found = find(section);
    const LineTexts old = found ? entries(*found) : LineTexts{};
    std::vector<std::string_view> oldLines;
    for (const auto& entry : old) oldLines.push_back(entry.second);
    // What stands in the file already is compared as bytes and may hold anything; only new lines are checked.
    std::vector<std::string> newLines;
    for (const std::string& line : lines) newLines.push_back(ansiBytes(cutBlanks(line)));
    const auto changes = lineChanges(oldLines, newLines);
    for (const LineChange& change : changes)
        for (std::size_t k = change.newFirst; k < change.newLast; ++k) {
            newLines[k] = storable(cutBlanks(lines[k]), {});
            if (newLines[k].empty() || headerName(newLines[k]))
                throw NumberedError(errnum::InvalidCall, fmt::format("\"{}\" kann keine Zeile eines INI-Abschnitts sein.", lines[k]));
        }
    const Section target = found ? *found : makeSection(section);
    // From the back to the front, so that the places of the lines before stay right.
    const std::vector<Line> places = lines_;
    for (auto change = changes.rbegin(); change != changes.rend(); ++change) {
        const std::size_t replaced = std::min(change->oldLast - change->oldFirst, change->newLast - change->newFirst);
        std::string added;
        for (std::size_t k = change->newFirst + replaced; k < change->newLast; ++k) added.append(newLines[k]).append(NewLine);
        if (!added.empty()) {
            const std::size_t before = change->oldFirst + replaced;
            const std::size_t place = before > 0 ? places[old[before - 1].first].next
                                      : target.first > 0 ? places[target.first - 1].next : 0;
            const bool open = place > 0 && bytes_[place - 1] != '\n' && bytes_[place - 1] != '\r';
            bytes_.insert(place, (open ? std::string(NewLine) : std::string()) + added);
        }
        for (std::size_t k = change->oldLast; k-- > change->oldFirst + replaced;) {
            const Line& line = places[old[k].first];
            bytes_.erase(line.begin, line.next - line.begin);
        }
        for (std::size_t k = replaced; k-- > 0;) {
            const Line& line = places[old[change->oldFirst + k].first];
            bytes_.replace(line.begin, line.end - line.begin, newLines[change->newFirst + k]);
        }
    }
    split();
}

// --- on files ---

namespace {

ProfileFile load(const std::filesystem::path& file) {
    std::error_code error;
    if (std::filesystem::status(file, error).type() == std::filesystem::file_type::not_found) return ProfileFile();
    return ProfileFile(readFile(file, LargestFile));
}

// Nothing is written if nothing changed, except that a new file comes to be.
template <class Change> void change(const std::filesystem::path& file, Change apply) {
    ProfileFile profile = load(file);
    const std::string before = profile.bytes();
    apply(profile);
    if (profile.bytes() != before) return writeFileAtomic(file, profile.bytes());
    if (isReadOnly(file)) throw NumberedError(errnum::PathFileAccess, fmt::format("Die Datei \"{}\" ist schreibgeschützt.", utf8FromPath(file)));
}

}  // namespace

std::optional<std::string> profileValue(const std::filesystem::path& file, std::string_view section, std::string_view key, std::size_t size) {
    return load(file).value(section, key, size);
}

std::optional<std::string> rawProfileValue(const std::filesystem::path& file, std::string_view section, std::string_view key) {
    return load(file).rawValue(section, key);
}

std::vector<std::string> profileSection(const std::filesystem::path& file, std::string_view section) { return load(file).sectionLines(section); }

void writeProfileValue(const std::filesystem::path& file, std::string_view section, std::string_view key, std::string_view value) {
    change(file, [&](ProfileFile& profile) { profile.setValue(section, key, value); });
}

bool deleteProfileKey(const std::filesystem::path& file, std::string_view section, std::string_view key) {
    bool removed = false;
    change(file, [&](ProfileFile& profile) { removed = profile.removeKey(section, key); });
    return removed;
}

void writeProfileSection(const std::filesystem::path& file, std::string_view section, const std::vector<std::string>& lines) {
    change(file, [&](ProfileFile& profile) { profile.setSectionLines(section, lines); });
}

}  // namespace brenvik
