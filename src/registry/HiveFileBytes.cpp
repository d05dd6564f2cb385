#include "registry/HiveFileBytes.h"

#include <algorithm>
#include <random>

#include "frame/DateiSystem.h"
#include "frame/HostDatei.h"
#include "registry/HiveInPlace.h"
#include "registry/RegLinks.h"
#include "registry/hive/HiveLog.h"

namespace brenvik {

namespace fs = std::filesystem;

std::string shownFile(const fs::path& file) {
    std::string text(1, '"');
    return text.append(utf8FromPath(file)).append(1, '"');
}

std::vector<fs::path> logsBeside(const fs::path& hive) {
    std::vector<fs::path> logs;
    std::error_code error;
    const std::string name = utf8FromPath(hive.filename());
    const fs::path folder = hive.has_parent_path() ? hive.parent_path() : fs::path(".");
    for (fs::directory_iterator place(folder, error), end; !error && place != end; place.increment(error)) {
        const std::string other = utf8FromPath(place->path().filename());
        if (other.size() < name.size() + 4 || other.size() > name.size() + 5) continue;
        const std::string_view ending = std::string_view(other).substr(name.size());
        if (!sameAscii(ending, ".log") && !sameAscii(ending, ".log1") && !sameAscii(ending, ".log2")) continue;
        std::string folded = name;
        for (char& c : folded) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
        std::error_code ignored;
        if (sameAscii(std::string_view(other).substr(0, name.size()), folded) && fs::is_regular_file(place->path(), ignored)) logs.push_back(place->path());
    }
    std::sort(logs.begin(), logs.end());
    return logs;
}

HiveFileBytes readHiveFile(const fs::path& file) {
    try {
        HiveFileBytes bytes;
        bytes.hive = readFile(file, MaxHiveFile);
        if (isDirty(bytes.span())) {
            for (const fs::path& log : logsBeside(file)) bytes.logs.push_back(readFile(log, MaxHiveFile));
        }
        return bytes;
    } catch (const RegError&) {
        throw;
    } catch (const NumberedError& error) {
        throw RegError(regerr::KeyNotRead, error.what());
    }
}

HiveReading HiveFileBytes::read(HiveMode mode) const {
    std::vector<hivefmt::ByteSpan> spans;
    for (const std::string& log : logs) spans.emplace_back(reinterpret_cast<const std::uint8_t*>(log.data()), log.size());
    return readHive(span(), spans, mode);
}

namespace {

template <class Work> auto namingTheFile(const fs::path& file, const Work& work) {
    try {
        return work();
    } catch (const HiveError& error) {
        throw RegError(regerr::KeyNotRead, "Die Hivedatei " + shownFile(file) + " kann nicht gelesen werden. " + error.what());
    }
}

}  // namespace

HiveReading readHiveFrom(const HiveFileBytes& bytes, const fs::path& file, HiveMode mode) {
    return namingTheFile(file, [&] { return bytes.read(mode); });
}

void requireSoundHiveOf(const fs::path& file, hivefmt::ByteSpan bytes) {
    namingTheFile(file, [&] { requireSoundHive(bytes); });
}

fs::path writeBeside(const fs::path& file, hivefmt::ByteSpan bytes) {
    std::random_device random;
    fs::path fresh = file;
    fresh += "." + std::to_string(random()) + ".neu";
    const std::error_code error = host::writeNewFile(fresh, {reinterpret_cast<const char*>(bytes.data()), bytes.size()}, file);
    if (!error) return fresh;
    std::error_code ignored;
    if (error != std::errc::file_exists) fs::remove(fresh, ignored);
    throw RegError(regerr::NoAssignment, "Die Datei " + shownFile(file) + " kann nicht geschrieben werden: " + error.message());
}

}  // namespace brenvik
