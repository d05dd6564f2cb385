#include "frame/text/Codepage.h"

#include <algorithm>
#include <iterator>

#include "frame/text/Characters.h"

namespace brenvik {
namespace {

// Characters of the bytes 80 to 9F; the five unused bytes stand for themselves.
constexpr char32_t Upper1252[32] = {
    0x20AC, 0x81,   0x201A, 0x192,  0x201E, 0x2026, 0x2020, 0x2021, 0x2C6, 0x2030, 0x160, 0x2039, 0x152, 0x8D, 0x17D, 0x8F,
    0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x2DC, 0x2122, 0x161, 0x203A, 0x153, 0x9D, 0x17E, 0x178};

// The byte of a character; -1: there is none.
int ansiByte(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<int>(c);
    const auto* place = std::find(std::begin(Upper1252), std::end(Upper1252), c);
    return place == std::end(Upper1252) ? -1 : static_cast<int>(place - std::begin(Upper1252)) + 0x80;
}

bool isHigh(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isLow(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

template <class UnitAt> std::string fromUnits(std::size_t count, UnitAt unitAt) {
    std::string text;
    text.reserve(count);
    for (std::size_t k = 0; k < count;) {
        char plain[64];   // most texts are ASCII; loops without an early end take many units at a time
        const std::size_t piece = std::min(count - k, sizeof plain), end = k + piece;
        char32_t all = 0;
        for (std::size_t i = 0; i < piece; ++i) all |= unitAt(k + i);
        if (all < 0x80) {
            for (std::size_t i = 0; i < piece; ++i) plain[i] = static_cast<char>(unitAt(k + i));
            text.append(plain, piece);
            k = end;
        }
        for (; k < end; ++k) {
            char32_t c = unitAt(k);
            if (isHigh(c) && k + 1 < count && isLow(unitAt(k + 1))) c = 0x10000 + ((c - 0xD800) << 10) + (unitAt(++k) - 0xDC00);
            if (c < 0x80) {
                text += static_cast<char>(c);
            } else {
                characters::append(text, c);
            }
        }
    }
    return text;
}

template <class Put> void toUnits(std::string_view text, Put put) {
    for (std::size_t place = 0; place < text.size();) {
        if (const auto byte = static_cast<unsigned char>(text[place]); byte < 0x80) {
            put(byte);
            ++place;
            continue;
        }
        const char32_t c = characters::next(text, place);
        if (c & characters::BadByte) put(0xFFFD);
        else if (c < 0x10000) put(c);
        else put(0xD800 + ((c - 0x10000) >> 10)), put(0xDC00 + (c & 0x3FF));
    }
}

}  // namespace

std::string utf8FromAnsi(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        characters::append(text, byte >= 0x80 && byte < 0xA0 ? Upper1252[byte - 0x80] : byte);
    }
    return text;
}

std::string ansiFromUtf8(std::string_view text, std::size_t* missing) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t place = 0; place < text.size();) {
        const int byte = ansiByte(characters::next(text, place));
        if (byte < 0 && missing != nullptr) ++*missing;
        bytes += byte < 0 ? '?' : static_cast<char>(static_cast<unsigned char>(byte));
    }
    return bytes;
}

bool fitsAnsi(std::string_view text) {
    std::size_t missing = 0;
    ansiFromUtf8(text, &missing);
    return missing == 0;
}

std::string utf8FromUtf16Le(std::string_view bytes) {
    const auto unitAt = [&](std::size_t k) -> char32_t {
        return static_cast<unsigned char>(bytes[2 * k]) | static_cast<char32_t>(static_cast<unsigned char>(bytes[2 * k + 1])) << 8;
    };
    return fromUnits(bytes.size() / 2, unitAt);
}

std::string utf16LeFromUtf8(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() * 2);
    toUnits(text, [&](char32_t unit) {
        bytes += static_cast<char>(static_cast<unsigned char>(unit & 0xFF));
        bytes += static_cast<char>(static_cast<unsigned char>(unit >> 8));
    });
    return bytes;
}

std::string utf8FromUtf16(std::u16string_view units) {
    return fromUnits(units.size(), [&](std::size_t k) -> char32_t { return units[k]; });
}

std::u16string utf16FromUtf8(std::string_view text) {
    std::u16string units;
    units.reserve(text.size());
    toUnits(text, [&](char32_t unit) { units += static_cast<char16_t>(unit); });
    return units;
}

bool isUtf8(std::string_view text) {
    for (std::size_t place = 0; place < text.size();) {
        const char32_t c = characters::next(text, place);
        if ((c & characters::BadByte) != 0 || isHigh(c) || isLow(c)) return false;
    }
    return true;
}

}  // namespace brenvik
