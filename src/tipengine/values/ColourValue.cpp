#include "tipengine/values/ColourValue.h"

#include <array>

#include "frame/text/Conversions.h"

namespace brenvik {

std::optional<Rgb> colourText(const std::string& text, std::int32_t datentyp) {
    const auto parts = Split(text, " ");
    if (parts.size() < 3) return std::nullopt;
    std::array<std::uint8_t, 3> rgb{};
    const char* digits = datentyp == 3 ? "0123456789abcdefABCDEF" : "0123456789";
    for (std::size_t k = 0; k < 3; ++k) {
        if (parts[k].empty() || parts[k].size() > 3 || parts[k].find_first_not_of(digits) != std::string::npos) return std::nullopt;
        const int value = std::stoi(parts[k], nullptr, datentyp == 3 ? 16 : 10);
        if (value > 255) return std::nullopt;
        rgb[k] = static_cast<std::uint8_t>(value);
    }
    return Rgb{rgb[0], rgb[1], rgb[2]};
}

}  // namespace brenvik
