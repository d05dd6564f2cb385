#ifdef _WIN32
#include <array>
#include <vector>

#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include "frame/DateiSystem.h"
#include "frame/Platform.h"

namespace brenvik {
namespace {

std::wstring wide(const std::string& text) { return pathFromUtf8(text).wstring(); }
std::string narrow(const std::wstring& text) { return utf8FromPath(std::filesystem::path(text)); }

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

    void sendSettingChange(std::uint32_t wParam, std::uint32_t flags, std::uint32_t timeoutMs) override {
        DWORD_PTR result = 0;
        ::SendMessageTimeoutA(HWND_BROADCAST, WM_SETTINGCHANGE, wParam, 0, flags, timeoutMs, &result);
    }
};

}  // namespace

std::unique_ptr<Platform> makeNativePlatform() { return std::make_unique<PlatformWindows>(); }

}  // namespace brenvik
#endif
