#include "frame/files/FreshFile.h"

#include <charconv>
#include <optional>
#include <random>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "frame/files/FileSystem.h"
#include "frame/platform/HostFile.h"

namespace brenvik {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t LongestStem = 190;   // bytes, so that the whole stays below what file systems take
constexpr std::string_view Ending = ".neu";
constexpr std::string_view DatabaseEndings[] = {"-wal", "-shm", "-journal"};

std::string stemOf(const fs::path& file) {
    std::string stem = utf8FromPath(file.filename());
    if (stem.size() > LongestStem) {
        std::size_t end = LongestStem;
        while (end > 0 && (static_cast<unsigned char>(stem[end]) & 0xC0) == 0x80) --end;
        stem.resize(end);
    }
    return stem += '.';
}

template <class Number> bool takeNumber(std::string_view& text, char behind, Number& number) {
    const std::size_t end = std::min(text.find(behind), text.size());
    const auto [at, error] = std::from_chars(text.data(), text.data() + end, number, 16);
    const bool whole = error == std::errc() && at == text.data() + end && end > 0;
    text.remove_prefix(std::min(end + 1, text.size()));
    return whole;
}

std::optional<host::ProcessMark> makerOf(std::string_view name, std::string_view stem) {
    if (!name.starts_with(stem)) return std::nullopt;
    name.remove_prefix(stem.size());
    for (const std::string_view ending : DatabaseEndings)
        if (name.ends_with(ending)) name.remove_suffix(ending.size());
    if (!name.ends_with(Ending)) return std::nullopt;
    name.remove_suffix(Ending.size());
    host::ProcessMark mark;
    std::uint64_t random = 0;
    if (!takeNumber(name, '-', mark.host) || !takeNumber(name, '-', mark.process) || !takeNumber(name, '-', mark.start) || !takeNumber(name, '-', random) || !name.empty())
        return std::nullopt;
    return mark;
}

}  // namespace

fs::path freshNameBeside(const fs::path& file) {
    std::random_device random;
    const host::ProcessMark mark = host::thisProcess();
    return file.parent_path() / pathFromUtf8(fmt::format("{}{:x}-{:x}-{:x}-{:08x}{}", stemOf(file), mark.host, mark.process, mark.start, random(), Ending));
}

bool isFreshNameOf(const fs::path& name, const fs::path& file) { return makerOf(utf8FromPath(name.filename()), stemOf(file)).has_value(); }

std::vector<fs::path> leftBehind(const fs::path& file) {
    std::vector<fs::path> found;
    const std::string stem = stemOf(file);
    const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
    std::error_code error;
    for (fs::directory_iterator place(folder, error), end; !error && place != end; place.increment(error)) {
        const auto maker = makerOf(utf8FromPath(place->path().filename()), stem);
        if (maker && host::isGone(*maker)) found.push_back(place->path());
    }
    return found;
}

void sweepLeftBehind(const fs::path& file) noexcept {
    try {
        for (const fs::path& left : leftBehind(file)) {
            std::error_code error;
            if (fs::is_regular_file(fs::symlink_status(left, error))) fs::remove(left, error);
        }
    } catch (const std::exception&) {
        // What cannot be swept lies there as before; whoever writes has better things to report.
    }
}

}  // namespace brenvik
