#include "registry/store/StorePicture.h"

#include <sqlite3.h>

#include <cerrno>
#include <cstdio>
#include <optional>

#include "frame/files/FileSystem.h"
#include "frame/files/FreshFile.h"
#include "frame/files/PrivateFolder.h"
#include "frame/platform/HostFile.h"

namespace brenvik {

namespace fs = std::filesystem;

namespace {

constexpr std::uintmax_t LargestPicture = std::uintmax_t{1} << 30;
constexpr int Attempts = 10;
constexpr std::size_t SpaceForASession = 65536;   // log and index of the smallest work

struct Stamps {
    std::optional<host::FileStamp> file, log;
    bool operator==(const Stamps&) const = default;
};

Stamps stampsOf(const fs::path& file) { return {host::fileStamp(file), host::fileStamp(sqliteLogOf(file))}; }

std::string uriOf(const fs::path& file) {
    constexpr char digits[] = "0123456789ABCDEF";
    const std::u8string path = fs::absolute(file).generic_u8string();
    std::string uri = path.starts_with(u8'/') ? "file://" : "file:///";
    for (const char8_t unit : path) {
        const char c = static_cast<char>(unit);
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '/' || c == '.' || c == '-' || c == '_';
        if (plain) uri += c;
        else (uri += '%').append({digits[unit >> 4], digits[unit & 15]});
    }
    return uri + "?immutable=1";
}

void copyInto(sqlite::Database& from, sqlite::Database& to) {
    sqlite3_backup* const backup = sqlite3_backup_init(to.handle(), "main", from.handle(), "main");
    if (backup == nullptr) throw sqlite::Error(sqlite3_extended_errcode(to.handle()), sqlite3_errmsg(to.handle()));
    sqlite3_backup_step(backup, -1);
    if (const int code = sqlite3_backup_finish(backup); code != SQLITE_OK) throw sqlite::Error(code, sqlite3_errmsg(to.handle()), sqlite3_system_errno(from.handle()));
}

std::unique_ptr<sqlite::Database> once(const fs::path& file, bool withLog) {
    auto picture = std::make_unique<sqlite::Database>(":memory:", SQLITE_OPEN_READWRITE);
    if (!withLog) {
        sqlite::Database source(uriOf(file), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
        copyInto(source, *picture);
        return picture;
    }
    const PrivateFolder folder("brenvik-registry");   // applying a log writes
    const fs::path copy = folder.path() / "registry.db";
    fs::copy_file(file, copy);
    fs::copy_file(sqliteLogOf(file), sqliteLogOf(copy));
    for (const fs::path& part : {copy, sqliteLogOf(copy)}) fs::permissions(part, fs::perms::owner_read | fs::perms::owner_write);
    sqlite::Database source(utf8FromPath(copy), SQLITE_OPEN_READWRITE);
    copyInto(source, *picture);
    return picture;
}

}  // namespace

fs::path sqliteLogOf(const fs::path& file) {
    fs::path log = file;
    return log += "-wal";
}

// Somebody else may be writing: only what was the same before and after is a state of the file.
std::unique_ptr<sqlite::Database> pictureOf(const fs::path& file) {
    for (int attempt = 1;; ++attempt) {
        const Stamps before = stampsOf(file);
        const std::uintmax_t logged = before.log ? before.log->size : 0;
        if (!before.file) throw sqlite::Error(SQLITE_CANTOPEN, "not there");
        if (before.file->size + logged > LargestPicture) throw sqlite::Error(SQLITE_NOMEM, "too large");
        auto picture = once(file, logged > 0);
        if (stampsOf(file) == before) return picture;
        if (attempt == Attempts) throw sqlite::Error(SQLITE_BUSY, "changing");
    }
}

std::error_code whyNotWritable(const fs::path& file) {
    std::FILE* const itself = host::openFile(file, "r+b");
    if (itself != nullptr) std::fclose(itself);
    else if (errno != ENOENT) return {errno, std::generic_category()};
    const fs::path probe = freshNameBeside(file);
    const std::error_code error = host::writeNewFile(probe, std::string(SpaceForASession, '\0'), {});
    std::error_code ignored;
    fs::remove(probe, ignored);
    return error;
}

}  // namespace brenvik
