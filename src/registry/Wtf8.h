#pragma once
// Registry names and texts are UTF-16 and may hold unpaired surrogates; inside the program they are UTF-8 with such
// surrogates in the generalised three-byte form (WTF-8), so that every name comes back unit for unit.
#include <cstdint>
#include <string>
#include <string_view>

#include "frame/text/Codepage.h"

namespace brenvik {

// Bytes that are no UTF-8 become U+FFFD.
inline std::u16string toUtf16(std::string_view text) { return utf16FromUtf8(text); }
inline std::string fromUtf16(std::u16string_view units) { return utf8FromUtf16(units); }

// From and to little-endian bytes, as values and hives keep them. An odd last byte is ignored.
inline std::string fromUtf16Le(const std::uint8_t* bytes, std::size_t size) {
    return utf8FromUtf16Le({reinterpret_cast<const char*>(bytes), size});
}
inline void appendUtf16Le(std::string& bytes, std::u16string_view units) {
    bytes.reserve(bytes.size() + 2 * units.size());
    for (const char16_t unit : units) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
}

}  // namespace brenvik
