#pragma once
// File operations that differ from host to host (HostFilePosix.cpp, HostFileWindows.cpp). Host paths only;
// the operations answer an error code and throw nothing of their own.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>

namespace brenvik::host {

std::FILE* openFile(const std::filesystem::path& file, const char* mode);  // nullptr: not opened
std::FILE* openDescriptor(int descriptor);   // to read from; the descriptor itself stays open. nullptr: there is none
std::tm localTime(std::time_t time);

// Makes a new file (never an existing one) with these bytes and brings them to the disk. It takes over the rights and, where
// the host lets it, the owner of model, if that exists; never the right of everybody to write nor marks like setuid. Where the
// owner cannot be taken over the rights become fewer, so that nobody may do with it what he might not do with the model.
std::error_code writeNewFile(const std::filesystem::path& file, std::string_view bytes, const std::filesystem::path& model);
std::error_code flushToDisk(std::FILE* file);   // of an open file what has been written so far
bool meansDiskFull(const std::error_code& code);   // no room left, however the host says it: on the disk, or for this user
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

// Which process makes a file: the number and the start of a process tell it from all that had that number before. The host is
// part of it, since other hosts' processes may write in a shared folder.
struct ProcessMark {
    std::uint32_t host = 0;
    std::uint64_t process = 0, start = 0;   // start 0: not known
};
ProcessMark thisProcess();
bool isGone(const ProcessMark& mark);   // false also where nothing can be known of it

// Holds a folder against other programs that lock it so. The lock is the folder's own and so outlives the renaming of what lies
// in it; it ends with the process. Nothing stays behind in the folder.
class FolderLock {
public:
    FolderLock(const std::filesystem::path& folder, std::chrono::milliseconds wait);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    std::error_code error() const { return error_; }   // why it is not held; timed_out: somebody else held it all the time

private:
    bool tryFolder();   // each: true if it is held or cannot be, for error_; false: somebody else holds it
    bool tryFile();
    std::filesystem::path folder_, file_;
    std::intptr_t handle_ = -1;
    std::error_code error_;
};

bool isReadOnly(const std::filesystem::path& file);   // false also for a file that isn't there
std::error_code setReadOnly(const std::filesystem::path& file, bool on);

}  // namespace brenvik::host
