#ifndef _WIN32
#include <cerrno>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "frame/HostDatei.h"

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

}  // namespace

std::FILE* openFile(const std::filesystem::path& file, const char* mode) {
    return std::fopen(file.c_str(), (std::string(mode) + "e").c_str());
}

std::tm localTime(std::time_t time) {
    std::tm result{};
    ::localtime_r(&time, &result);
    return result;
}

std::error_code writeNewFile(const std::filesystem::path& file, std::string_view bytes, const std::filesystem::path& model) {
    const Descriptor out(::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (out.get() < 0) return lastError();
    struct stat old{};
    if (::stat(model.c_str(), &old) == 0 && ::fchmod(out.get(), old.st_mode & 07777) != 0) return lastError();
    return writeAll(out.get(), bytes);
}

std::error_code flushToDisk(std::FILE* file) { return std::fflush(file) != 0 || ::fsync(::fileno(file)) != 0 ? lastError() : std::error_code(); }

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
