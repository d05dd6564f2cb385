#include "frame/text/Characters.h"

namespace brenvik::characters {
namespace {

bool continues(std::string_view text, std::size_t place) {
    return place < text.size() && (static_cast<unsigned char>(text[place]) & 0xC0) == 0x80;
}

// Base letters of U+00E0 to U+00FF, in order; 0 where the character is none of the letters with marks.
constexpr char baseOfLatin[33] = "aaaaaa\0ceeeeiiiidnooooo\0ouuuuy\0y";

}  // namespace

char32_t next(std::string_view text, std::size_t& place) {
    const auto lead = static_cast<unsigned char>(text[place]);
    if (lead < 0x80) return ++place, lead;
    const std::size_t length = lead >= 0xF0 && lead < 0xF5 ? 4 : lead >= 0xE0 ? 3 : 2;
    const char32_t bad = BadByte | lead;
    if (lead < 0xC2 || lead >= 0xF5) return ++place, bad;
    char32_t character = lead & (0xFFU >> (length + 1));
    for (std::size_t k = 1; k < length; ++k) {
        if (!continues(text, place + k)) return ++place, bad;
        character = character << 6 | (static_cast<unsigned char>(text[place + k]) & 0x3FU);
    }
    const char32_t least = length == 2 ? 0x80 : length == 3 ? 0x800 : 0x10000;
    if (character < least || character > 0x10FFFF) return ++place, bad;
    place += length;
    return character;
}

void append(std::string& text, char32_t c) {
    const auto put = [&](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (c & BadByte) return put(c & 0xFF);
    if (c < 0x80) return put(c);
    if (c < 0x800) return put(0xC0 | c >> 6), put(0x80 | (c & 0x3F));
    if (c < 0x10000) return put(0xE0 | c >> 12), put(0x80 | (c >> 6 & 0x3F)), put(0x80 | (c & 0x3F));
    put(0xF0 | c >> 18), put(0x80 | (c >> 12 & 0x3F)), put(0x80 | (c >> 6 & 0x3F)), put(0x80 | (c & 0x3F));
}

std::size_t byteOf(std::string_view text, std::size_t characters) {
    std::size_t place = 0;
    for (; characters > 0 && place < text.size(); --characters) next(text, place);
    return place;
}

char32_t upper(char32_t c) {
    if (c >= U'a' && c <= U'z') return c - 32;
    if (c >= 0xE0 && c <= 0xFE && c != 0xF7) return c - 32;
    switch (c) {
        case 0xFF: return 0x178;                                  // ÿ
        case 0x161: case 0x153: case 0x17E: return c - 1;         // š œ ž
        default: return c;
    }
}

char32_t lower(char32_t c) {
    if (c >= U'A' && c <= U'Z') return c + 32;
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 32;
    switch (c) {
        case 0x178: return 0xFF;
        case 0x160: case 0x152: case 0x17D: return c + 1;
        default: return c;
    }
}

Base base(char32_t c) {
    switch (c) {
        case 0xDF: return {U's', U's'};
        case 0xE6: return {U'a', U'e'};
        case 0xFE: return {U't', U'h'};
        case 0x153: return {U'o', U'e'};
        case 0x161: return {U's', 0};
        case 0x17E: return {U'z', 0};
        case 0x192: return {U'f', 0};
        default: break;
    }
    if (c >= 0xE0 && c <= 0xFF && baseOfLatin[c - 0xE0] != 0) return {static_cast<char32_t>(baseOfLatin[c - 0xE0]), 0};
    return {c, 0};
}

}  // namespace brenvik::zeichen
