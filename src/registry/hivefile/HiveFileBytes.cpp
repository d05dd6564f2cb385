#include "registry/hivefile/HiveFileBytes.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include "frame/files/FileSystem.h"
#include "frame/files/FreshFile.h"
#include "frame/platform/HostFile.h"
#include "registry/hive/HiveLog.h"
#include "registry/hivefile/HiveInPlace.h"
#include "registry/store/RegLinks.h"

namespace brenvik {

namespace fs = std::filesystem;

std::string shownFile(const fs::path& file) {
    std::string text(1, '"');
    return text.append(utf8FromPath(file)).append(1, '"');
}

namespace {

std::vector<fs::path> logsOf(const fs::path& hive, bool links) {
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
        const fs::file_status kind = place->symlink_status(ignored);
        if (sameAscii(std::string_view(other).substr(0, name.size()), folded) && (links ? fs::is_symlink(kind) : fs::is_regular_file(kind))) logs.push_back(place->path());
    }
    std::sort(logs.begin(), logs.end());
    return logs;
}

}  // namespace

std::vector<fs::path> logsBeside(const fs::path& hive) { return logsOf(hive, false); }

std::vector<hivefmt::ByteSpan> HiveFileBytes::logSpans() const {
    std::vector<hivefmt::ByteSpan> spans;
    for (const Log& log : logs) spans.emplace_back(reinterpret_cast<const std::uint8_t*>(log.bytes.data()), log.bytes.size());
    return spans;
}

// A pipe would keep whoever opens it waiting.
bool isHiveFile(const fs::path& file) {
    Bytes start(HiveStartSize);
    std::error_code error;
    std::FILE* const in = fs::is_regular_file(file, error) ? host::openFile(file, "rb") : nullptr;
    if (in == nullptr) return false;
    start.resize(std::fread(start.data(), 1, start.size(), in));
    std::fclose(in);
    return looksLikeHive(start);
}

void requireHiveFile(const fs::path& file) {
    std::error_code error;
    if (fs::status(file, error).type() == fs::file_type::regular) {
        if (isHiveFile(file)) return;
        std::FILE* const in = host::openFile(file, "rb");
        if (in == nullptr) error = {errno, std::generic_category()};
        else std::fclose(in);
    }
    if (error) throw RegError(regerr::KeyNotRead, "Die Datei " + shownFile(file) + " kann nicht gelesen werden: " + fileErrorText(error));
    throw RegError(regerr::KeyNotRead, "Dies ist keine Hivedatei: " + utf8FromPath(file));
}

HiveFileBytes readHiveFile(const fs::path& file) {
    try {
        HiveFileBytes bytes;
        bytes.hive = readFile(file, MaxHiveFile);
        if (isDirty(bytes.span())) {
            for (const fs::path& log : logsBeside(file)) bytes.logs.push_back({log, readFile(log, MaxHiveFile)});
            bytes.linkedLogs = logsOf(file, true);
        }
        return bytes;
    } catch (const RegError&) {
        throw;
    } catch (const NumberedError& error) {
        throw RegError(regerr::KeyNotRead, error.what());
    }
}

HiveReading readHiveFrom(const HiveFileBytes& bytes, const fs::path& file, HiveMode mode) {
    if (mode == HiveMode::Strict && !bytes.linkedLogs.empty()) {
        throw RegError(regerr::KeyNotRead, "Die Hivedatei " + shownFile(file) + " wurde nicht ordentlich geschlossen, und ihre Protokolldatei " +
                                               shownFile(bytes.linkedLogs.front()) + " ist ein Verweis, der nicht gelesen wird.");
    }
    return namingTheFile(file, [&] { return readHive(bytes.span(), bytes.logSpans(), mode); });
}

void requireSoundHiveOf(const fs::path& file, hivefmt::ByteSpan bytes) {
    namingTheFile(file, [&] { requireSoundHive(bytes); });
}

fs::path writeBeside(const fs::path& file, hivefmt::ByteSpan bytes, const fs::path& model) {
    const fs::path fresh = freshNameBeside(file);
    const std::error_code error = host::writeNewFile(fresh, {reinterpret_cast<const char*>(bytes.data()), bytes.size()}, model);
    if (!error) return fresh;
    std::error_code ignored;
    if (error != std::errc::file_exists) fs::remove(fresh, ignored);
    throw RegError(regerr::NoAssignment, "Die Datei " + shownFile(file) + " kann nicht geschrieben werden: " + fileErrorText(error));
}

bool writeNewHiveFile(const fs::path& file, hivefmt::ByteSpan bytes, const fs::path& model) {
    const auto isThere = [&] {
        std::error_code error;
        return fs::exists(fs::symlink_status(file, error));
    };
    if (isThere()) return false;
    sweepLeftBehind(file);
    const fs::path fresh = writeBeside(file, bytes, model);
    std::error_code error, ignored;
    fs::create_hard_link(fresh, file, error);   // never over a file that somebody else has made meanwhile
    const bool taken = error && isThere();
    if (error && !taken) {   // a file system without hard links
        error = host::replaceFile(fresh, file);
        if (!error) return true;
    }
    fs::remove(fresh, ignored);
    if (error && !taken) throw RegError(regerr::NoAssignment, "Die Datei " + shownFile(file) + " kann nicht geschrieben werden: " + fileErrorText(error));
    return !taken;
}

}  // namespace brenvik
