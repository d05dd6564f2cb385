#pragma once
// What differs between Linux and Windows and is more than a file operation. One native implementation per
// platform (PlatformLinux.cpp, PlatformWindows.cpp); tests bring their own and look at what arrived.
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace brenvik {

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

    // The two messages of BroadCast. On a system without them nothing happens beyond the caller's trace.
    virtual void sendSettingChange(std::uint32_t wParam, std::uint32_t flags, std::uint32_t timeoutMs) = 0;
};

std::unique_ptr<Platform> makeNativePlatform();

}  // namespace brenvik
