#pragma once
// The switches of a boot menu line, as text: "/fastdetect /noexecute=optin". Names ending in ":" or "=" carry a value.
#include <optional>
#include <string>
#include <vector>

namespace brenvik {

// The offered switch up to and including ":" or, without one, "="; else the whole text.
std::string switchName(const std::string& offered);
inline bool switchTakesValue(const std::string& name) { return name.ends_with(':') || name.ends_with('='); }

// The value of a switch in the text (empty for those without); none if the switch is not there.
std::optional<std::string> switchIn(const std::string& switches, const std::string& name);

struct ChosenSwitch {
    std::string name;
    bool on = false;
    std::string value;
};
// The text without any of the offered switches, and the chosen ones behind the rest, in their order.
std::string withSwitches(const std::string& switches, const std::vector<ChosenSwitch>& offered);

}  // namespace brenvik
