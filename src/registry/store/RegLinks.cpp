#include "registry/store/RegLinks.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace brenvik {

namespace {

constexpr std::string_view ControlSetLink = "system\\currentcontrolset";

}  // namespace

bool sameAscii(std::string_view text, std::string_view lower) {
    return text.size() == lower.size() && std::equal(text.begin(), text.end(), lower.begin(), [](char a, char b) {
               return (a >= 'A' && a <= 'Z' ? static_cast<char>(a + 32) : a) == b;
           });
}

std::string joinKey(std::string_view parent, std::string_view key) {
    std::string path(parent);
    if (!parent.empty() && !key.empty()) path += '\\';
    return path.append(key);
}

std::string_view lastKeyName(std::string_view path) { return path.substr(path.rfind('\\') + 1); }

std::string_view parentKey(std::string_view path) {
    const std::size_t cut = path.rfind('\\');
    return cut == std::string_view::npos ? std::string_view() : path.substr(0, cut);
}

bool startsWithKey(std::string_view path, std::string_view lowerKey) {
    return path.size() >= lowerKey.size() && (path.size() == lowerKey.size() || path[lowerKey.size()] == '\\') &&
           sameAscii(path.substr(0, lowerKey.size()), lowerKey);
}

bool isControlSetName(std::string_view machineKey) { return sameAscii(machineKey, ControlSetLink); }

bool isControlSetLink(std::string_view machineKey) { return startsWithKey(machineKey, ControlSetLink); }

std::string throughControlSet(std::string_view machineKey, std::string_view controlSet) {
    const std::string_view rest = machineKey.size() == ControlSetLink.size() ? std::string_view() : machineKey.substr(ControlSetLink.size() + 1);
    return joinKey(joinKey("System", controlSet), rest);
}

std::string controlSetOf(const std::optional<RawValue>& current) {
    std::uint32_t number = 1;
    if (current && current->type == regtype::Dword && current->bytes.size() == 4 && current->bytes[3] == 0 && current->bytes[2] == 0) {
        number = current->bytes[0] | (current->bytes[1] * 256u);
    }
    char text[32];
    std::snprintf(text, sizeof text, "ControlSet%03u", number >= 1 && number <= 999 ? number : 1u);
    return text;
}

bool isProfileName(std::string_view name) {
    constexpr std::string_view classes = "_classes";
    if (sameAscii(name, ".default") || sameAscii(name, "s-1-5-18") || sameAscii(name, "s-1-5-19") || sameAscii(name, "s-1-5-20")) return false;
    return name.size() < classes.size() || !sameAscii(name.substr(name.size() - classes.size()), classes);
}

std::uint64_t fileTimeNow() {
    using namespace std::chrono;
    using Ticks = duration<std::int64_t, std::ratio<1, 10000000>>;
    constexpr std::int64_t from1601To1970 = 116444736000000000;
    return static_cast<std::uint64_t>(duration_cast<Ticks>(system_clock::now().time_since_epoch()).count() + from1601To1970);
}

}  // namespace brenvik
