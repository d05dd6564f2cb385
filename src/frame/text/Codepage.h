#pragma once
// Texts between the outside's encodings and UTF-8. Nothing here fails; what cannot be told becomes a substitute.
#include <cstddef>
#include <string>
#include <string_view>

namespace brenvik {

// Windows-1252. Every byte has a character (the five unused ones become U+0081 and the like) and comes back as it was.
std::string utf8FromAnsi(std::string_view bytes);
// Characters that Windows-1252 lacks, and bytes that are no UTF-8, become "?" and are added to *missing.
std::string ansiFromUtf8(std::string_view text, std::size_t* missing = nullptr);
bool fitsAnsi(std::string_view text);

// UTF-16, little-endian bytes; an odd last byte is ignored. Unpaired surrogates take the generalised three-byte form and
// come back as they were. In the other direction bytes that are no UTF-8 become U+FFFD.
std::string utf8FromUtf16Le(std::string_view bytes);
std::string utf16LeFromUtf8(std::string_view text);
std::string utf8FromUtf16(std::u16string_view units);
std::u16string utf16FromUtf8(std::string_view text);

bool isUtf8(std::string_view text);

}  // namespace brenvik
