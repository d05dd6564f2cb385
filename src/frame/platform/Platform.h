#pragma once
// What differs between Linux and Windows and is more than a file operation. One native implementation per
// platform (PlatformLinux.cpp, PlatformWindows.cpp); tests bring their own and look at what arrived.
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace brenvik {

// The web browser component of a Windows. A Windows without one has installed = false.
struct BrowserComponent {
    bool installed = false;
    std::int32_t major = 0, minor = 0, build = 0;
};

class Platform {
public:
    virtual ~Platform() = default;

    virtual std::filesystem::path executableDirectory() const = 0;
    // Where the program keeps its data if nothing else is asked for (XDG data directory on Linux).
    virtual std::filesystem::path defaultHome() const = 0;
    virtual std::optional<std::string> environment(const std::string& name) const = 0;
    virtual std::string userName() const = 0;   // empty if it cannot be had
    virtual std::string hostName() const = 0;

    // Facts of a Windows machine; the answers here are those of a host that is none.
    virtual std::optional<std::string> windowsDirectory() const { return std::nullopt; }  // GetWindowsDirectory
    virtual bool isAdministrator() const { return true; }  // of the administrators' group; elsewhere the registry is the user's own

    // What the start asks of a Windows; nothing where the host is none.
    virtual std::optional<std::int16_t> colourBits() const { return std::nullopt; }  // bits per pixel times planes
    virtual std::optional<BrowserComponent> browserComponent() const { return std::nullopt; }

    // The end of the user's session. Flags are those of ExitWindowsEx; false: it was not done, and the program goes on.
    virtual bool canEndSession() const { return false; }
    virtual void obtainShutdownPrivilege() {}
    virtual void terminateShell() {}                       // of the 9x family, which may keep a logoff from happening
    virtual bool exitWindows(std::uint32_t /*flags*/, std::int32_t /*reason*/) { return false; }

    // The two messages of BroadCast. On a system without them nothing happens beyond the caller's trace.
    virtual void sendSettingChange(std::uint32_t wParam, std::uint32_t flags, std::uint32_t timeoutMs) = 0;
};

std::unique_ptr<Platform> makeNativePlatform();

}  // namespace brenvik
