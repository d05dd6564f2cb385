#pragma once
// The text forms in which values of the registry stand in the database.
#include <cstdint>
#include <optional>
#include <string>

namespace brenvik {

// Plain decimal without sign "+", leading zeros or blanks, as the registry service writes it; nothing for other texts.
std::optional<std::int64_t> decimal(const std::string& text);
// Two-digit bytes separated by single blanks.
bool isBinary(const std::string& text);
// Three numbers from 0 to 255 separated by single blanks.
bool isColour(const std::string& text);
// One to eight hexadecimal digits.
bool isHexDword(const std::string& text);

// Whether a value of this type can have the text, as the service reads it: a dword is a signed decimal.
bool fitsType(std::int64_t datentyp, const std::string& text);

}  // namespace brenvik
