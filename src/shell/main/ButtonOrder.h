#pragma once
// The user's arrangement of the buttons of a toolbar: their keys in order, "|" for a separator, "-" in front of what is
// hidden; with commas between, "tbrExit,|,-tbrSuchen".
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

struct ButtonPlace {
    std::string key;
    bool visible = true;
    bool isSeparator() const { return key == "|"; }
    bool operator==(const ButtonPlace&) const = default;
};
using ButtonOrder = std::vector<ButtonPlace>;

std::string buttonOrderText(const ButtonOrder& order);
// Keys that standard does not have are left out, those that the text does not name come behind the others. A text that shows
// no button at all gives standard.
ButtonOrder buttonOrder(std::string_view text, const ButtonOrder& standard);

}  // namespace brenvik
