#ifdef _WIN32
#include <array>
#include <vector>

#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <shlwapi.h>

#include "frame/files/FileSystem.h"
#include "frame/platform/Platform.h"

namespace brenvik {
namespace {

std::wstring wide(const std::string& text) { return pathFromUtf8(text).wstring(); }
std::string narrow(const std::wstring& text) { return utf8FromPath(std::filesystem::path(text)); }

class Library {
public:
    explicit Library(const wchar_t* name) : handle_(::LoadLibraryW(name)) {}
    ~Library() { if (handle_ != nullptr) ::FreeLibrary(handle_); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    HMODULE get() const { return handle_; }

private:
    HMODULE handle_;
};

class PlatformWindows final : public Platform {
public:
    std::filesystem::path executableDirectory() const override {
        std::vector<wchar_t> name(32768);
        const DWORD length = ::GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
        return std::filesystem::path(std::wstring(name.data(), length)).parent_path();
    }

    std::filesystem::path defaultHome() const override {
        const auto data = environment("APPDATA");
        return (data ? pathFromUtf8(*data) : executableDirectory()) / "Brenvik";
    }

    std::optional<std::string> environment(const std::string& name) const override {
        std::vector<wchar_t> value(32768);
        const DWORD length = ::GetEnvironmentVariableW(wide(name).c_str(), value.data(), static_cast<DWORD>(value.size()));
        if (length == 0 && ::GetLastError() == ERROR_ENVVAR_NOT_FOUND) return std::nullopt;
        return narrow(std::wstring(value.data(), length));
    }

    std::string userName() const override {
        std::array<wchar_t, 257> name{};
        DWORD length = static_cast<DWORD>(name.size());
        return ::GetUserNameW(name.data(), &length) != 0 ? narrow(name.data()) : std::string();
    }

    std::string hostName() const override {
        std::array<wchar_t, MAX_COMPUTERNAME_LENGTH + 1> name{};
        DWORD length = static_cast<DWORD>(name.size());
        return ::GetComputerNameW(name.data(), &length) != 0 ? narrow(name.data()) : std::string();
    }

    std::optional<std::string> windowsDirectory() const override {
        std::array<wchar_t, MAX_PATH> name{};
        const UINT length = ::GetWindowsDirectoryW(name.data(), static_cast<UINT>(name.size()));
        if (length == 0 || length >= name.size()) return std::nullopt;
        return narrow(std::wstring(name.data(), length));
    }

    bool isAdministrator() const override {
        SID_IDENTIFIER_AUTHORITY authority = SECURITY_NT_AUTHORITY;
        PSID group = nullptr;
        if (::AllocateAndInitializeSid(&authority, 2, SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_ADMINS, 0, 0, 0, 0, 0, 0, &group) == 0) return false;
        BOOL member = FALSE;
        const bool known = ::CheckTokenMembership(nullptr, group, &member) != 0;
        ::FreeSid(group);
        return known && member != FALSE;
    }

    std::optional<std::int16_t> colourBits() const override {
        const HDC screen = ::GetDC(nullptr);
        const int bits = ::GetDeviceCaps(screen, BITSPIXEL) * ::GetDeviceCaps(screen, PLANES);
        ::ReleaseDC(nullptr, screen);
        return static_cast<std::int16_t>(bits);
    }

    // The function's presence is looked up in one library, the version asked of another: that of the component itself.
    std::optional<BrowserComponent> browserComponent() const override {
        const Library shlwapi(L"shlwapi");
        if (shlwapi.get() == nullptr || ::GetProcAddress(shlwapi.get(), "DllGetVersion") == nullptr) return BrowserComponent{};
        const Library shdocvw(L"shdocvw");
        const auto ask = shdocvw.get() == nullptr ? nullptr : reinterpret_cast<DLLGETVERSIONPROC>(reinterpret_cast<void*>(::GetProcAddress(shdocvw.get(), "DllGetVersion")));
        DLLVERSIONINFO info{};
        info.cbSize = sizeof info;
        if (ask == nullptr || FAILED(ask(&info))) return BrowserComponent{};
        return BrowserComponent{true, static_cast<std::int32_t>(info.dwMajorVersion), static_cast<std::int32_t>(info.dwMinorVersion), static_cast<std::int32_t>(info.dwBuildNumber)};
    }

    bool canEndSession() const override { return true; }

    void obtainShutdownPrivilege() override {
        HANDLE token = nullptr;
        if (::OpenProcessToken(::GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token) == 0) return;
        TOKEN_PRIVILEGES wanted{};
        wanted.PrivilegeCount = 1;
        wanted.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
        if (::LookupPrivilegeValueA("", "SeShutdownPrivilege", &wanted.Privileges[0].Luid) != 0)
            ::AdjustTokenPrivileges(token, FALSE, &wanted, 0, nullptr, nullptr);
        ::CloseHandle(token);
    }

    void terminateShell() override {
        const HWND window = ::FindWindowA("progman", "program manager");
        DWORD id = 0;
        if (window == nullptr || ::GetWindowThreadProcessId(window, &id) == 0) return;
        const HANDLE shell = ::OpenProcess(PROCESS_TERMINATE, FALSE, id);
        if (shell == nullptr) return;
        ::TerminateProcess(shell, 1);
        ::CloseHandle(shell);
    }

    bool exitWindows(std::uint32_t flags, std::int32_t reason) override { return ::ExitWindowsEx(flags, static_cast<DWORD>(reason)) != 0; }

    void sendSettingChange(std::uint32_t wParam, std::uint32_t flags, std::uint32_t timeoutMs) override {
        DWORD_PTR result = 0;
        ::SendMessageTimeoutA(HWND_BROADCAST, WM_SETTINGCHANGE, wParam, 0, flags, timeoutMs, &result);
    }
};

}  // namespace

std::unique_ptr<Platform> makeNativePlatform() { return std::make_unique<PlatformWindows>(); }

}  // namespace brenvik
#endif
