#pragma once
// Names in the registry that lead to other places, as every store of a whole machine has them: CurrentControlSet, the
// current hardware profile, the user's classes. Paths below HKLM or HKU, without leading backslash.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "registry/store/RawValue.h"

namespace brenvik {

inline constexpr const char* CurrentControlSetName = "CurrentControlSet";
inline constexpr const char* HardwareProfilePath = "System\\CurrentControlSet\\Hardware Profiles\\Current";
inline constexpr const char* ClassesPath = "Software\\Classes";

bool sameAscii(std::string_view text, std::string_view lower);            // without the case of ASCII letters
std::string joinKey(std::string_view parent, std::string_view key);       // either may be empty
std::string_view lastKeyName(std::string_view path);
std::string_view parentKey(std::string_view path);                        // "" if there is none
bool startsWithKey(std::string_view path, std::string_view lowerKey);     // the key itself or below it

bool isControlSetName(std::string_view machineKey);                       // the link itself
bool isControlSetLink(std::string_view machineKey);                       // or below it
std::string throughControlSet(std::string_view machineKey, std::string_view controlSet);
std::string controlSetOf(const std::optional<RawValue>& current);         // from Select\Current; ControlSet001 if unusable
bool isProfileName(std::string_view userKey);                             // of a person: no service, no default, no classes

std::uint64_t fileTimeNow();

}  // namespace brenvik
