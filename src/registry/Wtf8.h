#pragma once
// Registry names and texts are UTF-16 and may hold unpaired surrogates; inside the program they are UTF-8 with such
// surrogates in the generalised three-byte form (WTF-8), so that every name comes back unit for unit.
#include <cstdint>
#include <string>
#include <string_view>

namespace brenvik {

// Bytes that are no UTF-8 become U+FFFD, one for each byte.
std::u16string toUtf16(std::string_view text);
std::string fromUtf16(std::u16string_view units);

// The same from and to little-endian bytes, as values and hives keep them. An odd last byte is ignored.
std::string fromUtf16Le(const std::uint8_t* bytes, std::size_t size);
void appendUtf16Le(std::string& bytes, std::u16string_view units);

}  // namespace brenvik
