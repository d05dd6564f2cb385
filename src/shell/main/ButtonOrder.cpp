#include "shell/main/ButtonOrder.h"

#include <algorithm>

#include "frame/text/Conversions.h"

namespace brenvik {
namespace {

constexpr std::size_t MostPlaces = 100;    // whatever a text may hold

bool names(const ButtonOrder& order, const std::string& key) {
    return std::any_of(order.begin(), order.end(), [&](const ButtonPlace& place) { return place.key == key; });
}

}  // namespace

std::string buttonOrderText(const ButtonOrder& order) {
    std::string text;
    for (const ButtonPlace& place : order) text += (text.empty() ? "" : ",") + std::string(place.visible ? "" : "-") + place.key;
    return text;
}

ButtonOrder buttonOrder(std::string_view text, const ButtonOrder& standard) {
    ButtonOrder order;
    for (const std::string& piece : Split(text, ",")) {
        ButtonPlace place{piece, true};
        if (!piece.empty() && piece.front() == '-') place = {piece.substr(1), false};
        const bool fits = place.isSeparator() || (names(standard, place.key) && !names(order, place.key));
        if (fits && order.size() < MostPlaces) order.push_back(std::move(place));
    }
    const bool shows = std::any_of(order.begin(), order.end(), [](const ButtonPlace& place) { return place.visible && !place.isSeparator(); });
    if (!shows) return standard;
    for (const ButtonPlace& place : standard)
        if (!place.isSeparator() && !names(order, place.key)) order.push_back(place);
    return order;
}

}  // namespace brenvik
