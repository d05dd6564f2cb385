#ifdef _WIN32
#include <cerrno>
#include <string>
#include <thread>

#include <io.h>

#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#include <sddl.h>

#include "frame/platform/HostFile.h"

namespace brenvik::host {
namespace {

std::error_code lastError() { return {static_cast<int>(::GetLastError()), std::system_category()}; }

class Handle {
public:
    explicit Handle(HANDLE handle) : handle_(handle) {}
    ~Handle() { if (handle_ != INVALID_HANDLE_VALUE) ::CloseHandle(handle_); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    HANDLE get() const { return handle_; }

private:
    HANDLE handle_;
};

std::uint64_t startOf(HANDLE process) {
    FILETIME made{}, ended{}, kernel{}, user{};
    if (::GetProcessTimes(process, &made, &ended, &kernel, &user) == 0) return 0;
    return static_cast<std::uint64_t>(made.dwHighDateTime) << 32 | made.dwLowDateTime;
}

std::uint32_t hostMark() {
    wchar_t name[MAX_COMPUTERNAME_LENGTH + 1] = L"";
    DWORD length = MAX_COMPUTERNAME_LENGTH + 1;
    ::GetComputerNameW(name, &length);
    std::uint32_t hash = 2166136261u;
    for (const wchar_t* c = name; *c != 0; ++c) hash = (hash ^ static_cast<std::uint32_t>(*c)) * 16777619u;
    return hash;
}

}  // namespace

std::FILE* openDescriptor(int descriptor) {
    const int own = ::_dup(descriptor);
    std::FILE* const file = own < 0 ? nullptr : ::_fdopen(own, "rb");
    if (own >= 0 && file == nullptr) ::_close(own);
    return file;
}

std::FILE* openFile(const std::filesystem::path& file, const char* mode) {
    const std::string text(mode);
    return ::_wfopen(file.c_str(), std::wstring(text.begin(), text.end()).c_str());
}

std::tm localTime(std::time_t time) {
    std::tm result{};
    ::localtime_s(&result, &time);
    return result;
}

std::error_code writeNewFile(const std::filesystem::path& file, std::string_view bytes, const std::filesystem::path&) {
    const Handle out(::CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (out.get() == INVALID_HANDLE_VALUE) return lastError();
    while (!bytes.empty()) {
        const DWORD part = static_cast<DWORD>(bytes.size() < (1u << 30) ? bytes.size() : (1u << 30));
        DWORD written = 0;
        if (::WriteFile(out.get(), bytes.data(), part, &written, nullptr) == 0) return lastError();
        bytes.remove_prefix(written);
    }
    return ::FlushFileBuffers(out.get()) != 0 ? std::error_code() : lastError();
}

std::error_code flushToDisk(std::FILE* file) {
    return std::fflush(file) != 0 || ::_commit(::_fileno(file)) != 0 ? std::error_code(errno, std::generic_category()) : std::error_code();
}

bool meansDiskFull(const std::error_code& code) {
    const bool own = code.category() == std::system_category() && (code.value() == ERROR_HANDLE_DISK_FULL || code.value() == ERROR_DISK_QUOTA_EXCEEDED);
    return own || code == std::errc::no_space_on_device || code == std::errc::file_too_large;
}

std::error_code replaceFile(const std::filesystem::path& source, const std::filesystem::path& target) {
    // ReplaceFile keeps the old file's rights; it needs an old file.
    if (::ReplaceFileW(target.c_str(), source.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr) != 0) return {};
    const bool done = ::MoveFileExW(source.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
    return done ? std::error_code() : lastError();
}

std::optional<FileStamp> fileStamp(const std::filesystem::path& file) {
    const Handle in(::CreateFileW(file.c_str(), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, 0, nullptr));
    BY_HANDLE_FILE_INFORMATION facts{};
    if (in.get() == INVALID_HANDLE_VALUE || ::GetFileInformationByHandle(in.get(), &facts) == 0) return std::nullopt;
    const auto joined = [](DWORD high, DWORD low) { return static_cast<std::uintmax_t>(high) << 32 | low; };
    const auto time = [&](const FILETIME& t) { return static_cast<std::int64_t>(joined(t.dwHighDateTime, t.dwLowDateTime)); };
    return FileStamp{joined(facts.nFileSizeHigh, facts.nFileSizeLow), time(facts.ftLastWriteTime), time(facts.ftCreationTime),
                     joined(facts.nFileIndexHigh, facts.nFileIndexLow)};
}

// The file lies in the user's own profile, whose rights it inherits; a list of its own keeps everybody else out even elsewhere.
std::error_code makePrivate(const std::filesystem::path& file) {
    PSECURITY_DESCRIPTOR ownerOnly = nullptr;
    if (::ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;FA;;;OW)", SDDL_REVISION_1, &ownerOnly, nullptr) == 0) return lastError();
    SECURITY_ATTRIBUTES attributes{sizeof attributes, ownerOnly, FALSE};
    std::error_code error;
    {
        const Handle out(::CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &attributes, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (out.get() == INVALID_HANDLE_VALUE) error = lastError();
    }
    if (!error && ::SetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION, ownerOnly) == 0) error = lastError();
    ::LocalFree(ownerOnly);
    return error;
}

ProcessMark thisProcess() { return {hostMark(), ::GetCurrentProcessId(), startOf(::GetCurrentProcess())}; }

bool isGone(const ProcessMark& mark) {
    if (mark.process == 0 || mark.host != hostMark()) return false;
    const HANDLE process = ::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, static_cast<DWORD>(mark.process));
    if (process == nullptr) return ::GetLastError() == ERROR_INVALID_PARAMETER;
    const Handle opened(process);
    DWORD code = STILL_ACTIVE;
    if (::GetExitCodeProcess(process, &code) != 0 && code != STILL_ACTIVE) return true;
    const std::uint64_t start = startOf(process);
    return start != 0 && mark.start != 0 && start != mark.start;
}

FolderLock::FolderLock(const std::filesystem::path& folder, std::chrono::milliseconds wait) : folder_(folder) {
    constexpr std::chrono::milliseconds between(5);
    const auto until = std::chrono::steady_clock::now() + wait;
    while (!tryFile()) {
        if (std::chrono::steady_clock::now() >= until) {
            error_ = std::make_error_code(std::errc::timed_out);
            return;
        }
        std::this_thread::sleep_for(between);
    }
}

FolderLock::~FolderLock() {
    if (error_ || handle_ == -1) return;
    ::CloseHandle(reinterpret_cast<HANDLE>(handle_));
}

// Folders cannot be locked here; a file that goes with its last handle stands for it.
bool FolderLock::tryFile() {
    file_ = folder_ / L".brenvik-lock";
    const HANDLE file = ::CreateFileW(file_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        handle_ = reinterpret_cast<std::intptr_t>(file);
        return true;
    }
    const std::error_code reason = lastError();
    if (reason.value() == ERROR_SHARING_VIOLATION || reason.value() == ERROR_ACCESS_DENIED || reason.value() == ERROR_DELETE_PENDING) return false;
    error_ = reason;
    return true;
}

bool isReadOnly(const std::filesystem::path& file) {
    const DWORD attributes = ::GetFileAttributesW(file.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

std::error_code setReadOnly(const std::filesystem::path& file, bool on) {
    const DWORD attributes = ::GetFileAttributesW(file.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return lastError();
    const DWORD wanted = on ? attributes | FILE_ATTRIBUTE_READONLY : attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY);
    return ::SetFileAttributesW(file.c_str(), wanted) != 0 ? std::error_code() : lastError();
}

}  // namespace brenvik::host
#endif
