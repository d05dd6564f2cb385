#pragma once
// Walking UTF-8 character by character, and the letters of Windows-1252.
#include <cstddef>
#include <string>
#include <string_view>

namespace brenvik::characters {

// Marks a byte that belongs to no character; the byte's value stands in the low bits.
inline constexpr char32_t BadByte = 0x80000000U;

// The character at place, which moves behind it. Takes the three-byte form of single surrogates.
char32_t next(std::string_view text, std::size_t& place);
// Appends a character (or gives a bad byte back as it was).
void append(std::string& text, char32_t character);
std::size_t byteOf(std::string_view text, std::size_t characters);  // byte offset behind so many characters

char32_t upper(char32_t character);
char32_t lower(char32_t character);
// The base letters of a lower-case letter ("ä" -> "a", "ß" -> "ss"); second is 0 if there is only one.
struct Base {
    char32_t first, second;
};
Base base(char32_t lowerCharacter);

}  // namespace brenvik::zeichen
