#include "tipengine/kinds/ValueForms.h"

#include <algorithm>
#include <charconv>

#include "frame/text/Conversions.h"
#include "frame/text/HexDigit.h"
#include "tipengine/kinds/SourceCheck.h"

namespace brenvik {

namespace {

bool isHexDigit(char c) { return hexDigit(c) >= 0; }

}  // namespace

std::optional<std::int64_t> decimal(const std::string& text) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || std::to_string(value) != text) return std::nullopt;
    return value;
}

bool isBinary(const std::string& text) {
    if (text.size() % 3 != 2) return false;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (i % 3 == 2 ? text[i] != ' ' : !isHexDigit(text[i])) return false;
    return true;
}

bool isColour(const std::string& text) {
    const auto parts = Split(text, " ");
    return parts.size() == 3 && std::all_of(parts.begin(), parts.end(), [](const std::string& part) {
        const auto value = decimal(part);
        return value && *value >= 0 && *value <= 255;
    });
}

bool isHexDword(const std::string& text) {
    return !text.empty() && text.size() <= 8 && std::all_of(text.begin(), text.end(), isHexDigit);
}

bool fitsType(std::int64_t datentyp, const std::string& text) {
    if (datentyp == typ::Binary) return isBinary(text);
    if (datentyp != typ::Dword) return true;
    const auto value = decimal(text);
    return value && *value >= INT32_MIN && *value <= INT32_MAX;
}

}  // namespace brenvik
