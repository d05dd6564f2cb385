#include "tipengine/values/BootSwitches.h"

#include "frame/text/Conversions.h"

namespace brenvik {
namespace {

// Each piece begins with its "/"; text in front of the first one is a piece of its own.
std::vector<std::string> pieces(const std::string& switches) {
    std::vector<std::string> found;
    std::size_t from = 0;
    while (from < switches.size()) {
        const auto next = std::min(switches.find('/', from + 1), switches.size());
        if (std::string piece = Trim(switches.substr(from, next - from)); !piece.empty()) found.push_back(std::move(piece));
        from = next;
    }
    return found;
}

bool isSwitch(const std::string& piece, const std::string& name) {
    const std::string lower = lowerCase(piece), wanted = lowerCase(name);
    return switchTakesValue(name) ? lower.starts_with(wanted) : lower == wanted;
}

}  // namespace

std::string switchName(const std::string& offered) {
    auto end = offered.find(':');
    if (end == std::string::npos) end = offered.find('=');
    return end == std::string::npos ? offered : offered.substr(0, end + 1);
}

std::optional<std::string> switchIn(const std::string& switches, const std::string& name) {
    for (const std::string& piece : pieces(switches))
        if (isSwitch(piece, name)) return piece.substr(name.size());
    return std::nullopt;
}

std::string withSwitches(const std::string& switches, const std::vector<ChosenSwitch>& offered) {
    std::string result;
    const auto append = [&](const std::string& piece) { result += (result.empty() ? "" : " ") + piece; };
    for (const std::string& piece : pieces(switches)) {
        bool isOffered = false;
        for (const ChosenSwitch& s : offered) isOffered = isOffered || isSwitch(piece, s.name);
        if (!isOffered) append(piece);
    }
    for (const ChosenSwitch& s : offered)
        if (s.on) append(s.name + (switchTakesValue(s.name) ? Trim(s.value) : std::string()));
    return result;
}

}  // namespace brenvik
