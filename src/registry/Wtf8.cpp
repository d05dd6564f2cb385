#include "registry/Wtf8.h"

namespace brenvik {

namespace {

bool isHigh(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLow(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

// Length of the well-formed sequence at the front of text and its code point; length 0 if there is none.
struct Decoded {
    std::size_t length = 0;
    char32_t point = 0;
};

Decoded decode(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) return {1, lead};
    const std::size_t length = lead >= 0xC2 && lead < 0xE0 ? 2 : lead >= 0xE0 && lead < 0xF0 ? 3 : lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
    if (length == 0 || text.size() < length) return {};
    char32_t point = lead & (0xFFu >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return {};
        point = (point << 6) | (byte(i) & 0x3F);
    }
    if ((length == 3 && point < 0x800) || (length == 4 && (point < 0x10000 || point > 0x10FFFF))) return {};
    return {length, point};
}

void encode(std::string& out, char32_t point) {
    if (point < 0x80) {
        out += static_cast<char>(point);
        return;
    }
    const int following = point < 0x800 ? 1 : point < 0x10000 ? 2 : 3;
    const unsigned lead = following == 1 ? 0xC0u : following == 2 ? 0xE0u : 0xF0u;
    out += static_cast<char>(lead | (point >> (6 * following)));
    for (int i = following - 1; i >= 0; --i) out += static_cast<char>(0x80u | ((point >> (6 * i)) & 0x3F));
}

}  // namespace

std::u16string toUtf16(std::string_view text) {
    std::u16string units;
    units.reserve(text.size());
    while (!text.empty()) {
        const Decoded next = decode(text);
        text.remove_prefix(next.length == 0 ? 1 : next.length);
        if (next.length == 0) {
            units += u'\uFFFD';
        } else if (next.point < 0x10000) {
            units += static_cast<char16_t>(next.point);
        } else {
            units += static_cast<char16_t>(0xD7C0 + (next.point >> 10));
            units += static_cast<char16_t>(0xDC00 + (next.point & 0x3FF));
        }
    }
    return units;
}

std::string fromUtf16(std::u16string_view units) {
    std::string text;
    text.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        char32_t point = units[i];
        if (isHigh(units[i]) && i + 1 < units.size() && isLow(units[i + 1])) {
            point = 0x10000 + ((point - 0xD800) << 10) + (units[i + 1] - 0xDC00u);
            ++i;
        }
        encode(text, point);
    }
    return text;
}

std::string fromUtf16Le(const std::uint8_t* bytes, std::size_t size) {
    std::u16string units;
    units.reserve(size / 2);
    for (std::size_t i = 0; i + 1 < size; i += 2) units += static_cast<char16_t>(bytes[i] | (bytes[i + 1] << 8));
    return fromUtf16(units);
}

void appendUtf16Le(std::string& bytes, std::u16string_view units) {
    bytes.reserve(bytes.size() + 2 * units.size());
    for (const char16_t unit : units) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
}

}  // namespace brenvik
