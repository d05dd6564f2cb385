#include "registry/machine/TargetSystem.h"

#include "frame/program/Detection.h"
#include "frame/text/Conversions.h"
#include "registry/store/RegStore.h"

namespace brenvik {
namespace {

constexpr const char* NtVersion = "Software\\Microsoft\\Windows NT\\CurrentVersion";
constexpr const char* WinVersion = "Software\\Microsoft\\Windows\\CurrentVersion";
constexpr std::uint32_t PlatformNT = 2, Platform9x = 1;

std::uint32_t wholeOf(const std::string& text) {
    const double value = Val(text);
    return value < 0 || value > 1e9 ? 0 : static_cast<std::uint32_t>(value);
}

}  // namespace

OSVERSIONINFO storedSystemVersion(RegStore& store) {
    const auto text = [&](const char* key, const char* name) {
        const auto value = store.value(Root::LocalMachine, key, ValueName::named(name));
        return value ? toText(*value) : std::string();
    };
    OSVERSIONINFO version;
    std::string number = text(NtVersion, "CurrentVersion");
    if (!number.empty()) {
        version.dwPlatformId = PlatformNT;
        version.dwBuildNumber = wholeOf(text(NtVersion, "CurrentBuildNumber"));
        version.szCSDVersion = text(NtVersion, "CSDVersion");
        // Later systems keep an old number for old programs, and their own beside it.
        if (const std::string major = text(NtVersion, "CurrentMajorVersionNumber"); !major.empty())
            number = major + "." + text(NtVersion, "CurrentMinorVersionNumber");
    } else {
        number = text(WinVersion, "VersionNumber");
        if (!number.empty()) version.dwPlatformId = Platform9x;
    }
    const auto parts = Split(number, ".");
    if (!parts.empty()) version.dwMajorVersion = wholeOf(parts[0]);
    if (parts.size() > 1) version.dwMinorVersion = wholeOf(parts[1]);
    if (version.dwPlatformId == Platform9x && parts.size() > 2) version.dwBuildNumber = wholeOf(parts[2]);
    return version;
}

OSVERSIONINFO TargetSystem::version() { return storedSystemVersion(store()); }

std::string TargetSystem::systemName() {
    const OSVERSIONINFO numbers = version();
    const OperatingSystem known = determineSystem(numbers.dwPlatformId, numbers.dwMajorVersion, numbers.dwMinorVersion);
    return known.intBS != 0 ? known.strBS : laterWindows(numbers);
}

}  // namespace brenvik
