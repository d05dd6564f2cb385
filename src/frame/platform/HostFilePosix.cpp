#ifndef _WIN32
#include <cerrno>
#include <csignal>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>
#ifdef __linux__
#include <linux/msdos_fs.h>
#endif

#include "frame/platform/HostFile.h"

namespace brenvik::host {
namespace {

std::error_code lastError() { return {errno, std::generic_category()}; }

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { if (number_ >= 0) ::close(number_); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return number_; }

private:
    int number_;
};

std::error_code writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return lastError();
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return ::fsync(file) == 0 ? std::error_code() : lastError();
}

constexpr mode_t CarriedOver = 0777 & ~static_cast<mode_t>(S_IWOTH);

// Some file systems have rights of their own and refuse others; then what they give must be no more than the model's.
std::error_code takeRights(int file, const struct stat& model) {
    struct stat mine{};
    if (::fstat(file, &mine) != 0) return lastError();
    mode_t mode = model.st_mode & CarriedOver;
    if ((model.st_uid != mine.st_uid || model.st_gid != mine.st_gid) && ::fchown(file, model.st_uid, model.st_gid) != 0 &&
        model.st_gid != mine.st_gid && ::fchown(file, static_cast<uid_t>(-1), model.st_gid) != 0) {
        // Its group is another one, whose members were just anybody before.
        mode &= ~static_cast<mode_t>(S_IRWXG) | ((mode & S_IRWXO) << 3);
    }
    if (::fchmod(file, mode) == 0) return {};
    const std::error_code error = lastError();
    return ::fstat(file, &mine) == 0 && (mine.st_mode & 07777 & ~model.st_mode) == 0 ? std::error_code() : error;
}

// Hidden and system, where the file system has such marks. Without the right to set them the file goes without: they hide, nothing more.
void takeFatMarks([[maybe_unused]] int file, [[maybe_unused]] const std::filesystem::path& model) {
#ifdef __linux__
    std::uint32_t marks = 0;
    const Descriptor old(::open(model.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (old.get() >= 0 && ::ioctl(old.get(), FAT_IOCTL_GET_ATTRIBUTES, &marks) == 0) static_cast<void>(::ioctl(file, FAT_IOCTL_SET_ATTRIBUTES, &marks));
#endif
}

std::uint32_t mixed(std::uint32_t hash, std::string_view text) {
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
    return hash;
}

// The 22nd field; the name in brackets in front of it may hold anything.
std::uint64_t startOf(std::uint64_t process) {
    std::ifstream in("/proc/" + std::to_string(process) + "/stat");
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::size_t at = text.rfind(')');
    for (int field = 2; at != std::string::npos && field < 22; ++field) at = text.find(' ', at + 1);
    return at == std::string::npos ? 0 : std::strtoull(text.c_str() + at, nullptr, 10);
}

// Numbers of processes mean something only among those that see one another.
std::uint32_t hostMark() {
    char name[256] = "", space[64] = "";
    ::gethostname(name, sizeof name - 1);
    const ssize_t length = ::readlink("/proc/self/ns/pid", space, sizeof space - 1);
    return mixed(mixed(2166136261u, name), std::string_view(space, static_cast<std::size_t>(length > 0 ? length : 0)));
}

}  // namespace

std::FILE* openDescriptor(int descriptor) {
    const int own = ::dup(descriptor);
    std::FILE* const file = own < 0 ? nullptr : ::fdopen(own, "rb");
    if (own >= 0 && file == nullptr) ::close(own);
    return file;
}

std::FILE* openFile(const std::filesystem::path& file, const char* mode) {
    return std::fopen(file.c_str(), (std::string(mode) + "e").c_str());
}

std::tm localTime(std::time_t time) {
    std::tm result{};
    ::localtime_r(&time, &result);
    return result;
}

std::error_code writeNewFile(const std::filesystem::path& file, std::string_view bytes, const std::filesystem::path& model) {
    struct stat old{};
    const bool hasModel = ::stat(model.c_str(), &old) == 0;
    const Descriptor out(::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, hasModel ? 0600 : 0666));
    if (out.get() < 0) return lastError();
    if (const std::error_code error = hasModel ? takeRights(out.get(), old) : std::error_code()) return error;
    if (const std::error_code error = writeAll(out.get(), bytes)) return error;
    if (hasModel) takeFatMarks(out.get(), model);
    return {};
}

std::error_code flushToDisk(std::FILE* file) { return std::fflush(file) != 0 || ::fsync(::fileno(file)) != 0 ? lastError() : std::error_code(); }

bool meansDiskFull(const std::error_code& code) {
    return code == std::errc::no_space_on_device || code == std::errc::file_too_large || code == std::error_code(EDQUOT, std::generic_category());
}

std::error_code replaceFile(const std::filesystem::path& source, const std::filesystem::path& target) {
    if (::rename(source.c_str(), target.c_str()) != 0) return lastError();
    const auto parent = target.has_parent_path() ? target.parent_path() : std::filesystem::path(".");
    const Descriptor directory(::open(parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.get() >= 0) ::fsync(directory.get());  // the new name stands already; some file systems refuse the sync
    return {};
}

std::optional<FileStamp> fileStamp(const std::filesystem::path& file) {
    struct stat facts{};
    if (::stat(file.c_str(), &facts) != 0) return std::nullopt;
    const auto nanoseconds = [](const timespec& time) { return static_cast<std::int64_t>(time.tv_sec) * 1'000'000'000 + time.tv_nsec; };
    return FileStamp{static_cast<std::uintmax_t>(facts.st_size), nanoseconds(facts.st_mtim), nanoseconds(facts.st_ctim),
                     static_cast<std::uintmax_t>(facts.st_ino)};
}

std::error_code makePrivate(const std::filesystem::path& file) {
    const Descriptor out(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (out.get() < 0 || ::fchmod(out.get(), 0600) != 0) return lastError();
    return {};
}

ProcessMark thisProcess() {
    const auto process = static_cast<std::uint64_t>(::getpid());
    return {hostMark(), process, startOf(process)};
}

bool isGone(const ProcessMark& mark) {
    if (mark.process == 0 || mark.process > 0x7FFFFFFF || mark.host != hostMark()) return false;
    if (::kill(static_cast<pid_t>(mark.process), 0) != 0 && errno == ESRCH) return true;
    const std::uint64_t start = startOf(mark.process);
    return start != 0 && mark.start != 0 && start != mark.start;
}

FolderLock::FolderLock(const std::filesystem::path& folder, std::chrono::milliseconds wait) : folder_(folder) {
    constexpr std::chrono::milliseconds between(5);
    const auto until = std::chrono::steady_clock::now() + wait;
    while (!tryFolder()) {
        if (std::chrono::steady_clock::now() >= until) {
            error_ = std::make_error_code(std::errc::timed_out);
            return;
        }
        std::this_thread::sleep_for(between);
    }
}

FolderLock::~FolderLock() {
    if (!file_.empty()) ::unlink(file_.c_str());   // while it is held: who waits for it looks again
    if (handle_ >= 0) ::close(static_cast<int>(handle_));
}

bool FolderLock::tryFolder() {
    const int folder = ::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) {
        error_ = lastError();
        return true;
    }
    if (::flock(folder, LOCK_EX | LOCK_NB) == 0) {
        handle_ = folder;
        return true;
    }
    const int reason = errno;
    ::close(folder);
    if (reason == EWOULDBLOCK || reason == EINTR) return false;
    return tryFile();   // file systems of the network lock files only
}

bool FolderLock::tryFile() {
    const std::filesystem::path name = folder_ / ".brenvik-lock";
    const int file = ::open(name.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (file < 0) {
        error_ = lastError();
        return true;
    }
    if (::flock(file, LOCK_EX | LOCK_NB) != 0) {
        const std::error_code reason = lastError();
        ::close(file);
        if (reason == std::errc::operation_would_block || reason == std::errc::interrupted) return false;
        error_ = reason;
        return true;
    }
    struct stat held{}, there{};
    if (::fstat(file, &held) != 0 || ::stat(name.c_str(), &there) != 0 || held.st_ino != there.st_ino) {
        ::close(file);   // whoever held it before has taken it away
        return false;
    }
    handle_ = file;
    file_ = name;
    return true;
}

bool isReadOnly(const std::filesystem::path& file) {
    struct stat facts{};
    return ::stat(file.c_str(), &facts) == 0 && (facts.st_mode & S_IWUSR) == 0;
}

std::error_code setReadOnly(const std::filesystem::path& file, bool on) {
    struct stat facts{};
    if (::stat(file.c_str(), &facts) != 0) return lastError();
    const mode_t mode = on ? facts.st_mode & ~static_cast<mode_t>(S_IWUSR | S_IWGRP | S_IWOTH) : facts.st_mode | S_IWUSR;
    return ::chmod(file.c_str(), mode & 07777) == 0 ? std::error_code() : lastError();
}

}  // namespace brenvik::host
#endif
