#pragma once
// File operations that differ from host to host (HostDateiPosix.cpp, HostDateiWindows.cpp). Host paths only;
// the operations answer an error code and throw nothing of their own.
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>

namespace brenvik::host {

std::FILE* openFile(const std::filesystem::path& file, const char* mode);  // nullptr: not opened
std::tm localTime(std::time_t time);

// Makes a new file (never an existing one) with these bytes and brings them to the disk. The file takes over the
// rights of model, if that exists.
std::error_code writeNewFile(const std::filesystem::path& file, std::string_view bytes, const std::filesystem::path& model);
std::error_code flushToDisk(std::FILE* file);   // of an open file what has been written so far
// Puts one file in the place of another, in one step that survives a power failure.
std::error_code replaceFile(const std::filesystem::path& source, const std::filesystem::path& target);

// Tells one state of a file from another: size, times, and which file it is. Equal stamps mean equal content; none: not there.
struct FileStamp {
    std::uintmax_t size = 0;
    std::int64_t written = 0, changed = 0;   // as the host counts
    std::uintmax_t number = 0;
    bool operator==(const FileStamp&) const = default;
};
std::optional<FileStamp> fileStamp(const std::filesystem::path& file);
// Makes an empty file unless there is one, and takes it from everybody but its owner.
std::error_code makePrivate(const std::filesystem::path& file);

bool isReadOnly(const std::filesystem::path& file);   // false also for a file that isn't there
std::error_code setReadOnly(const std::filesystem::path& file, bool on);

}  // namespace brenvik::host
