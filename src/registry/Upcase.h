#pragma once
// Upper case as the registry uses it to compare and order names: unit by unit of UTF-16, by one fixed table for the whole
// BMP that depends on no locale. Letters without an upper-case form of one unit stay (ß), so do U+0131 and other
// letters whose upper case does not lead back to them; surrogates stay.
#include <cstdint>
#include <string>
#include <string_view>

namespace brenvik {

char16_t upcase(char16_t unit);

// Upper case in place.
void upcaseAll(std::u16string& units);

// A name (UTF-8) folded for comparing: upper-cased UTF-16.
std::u16string foldName(std::string_view name);

// Below, equal to or above 0 in the order of the upper-cased units, which is the order of key lists.
int compareNames(std::u16string_view left, std::u16string_view right);
int compareNames(std::string_view left, std::string_view right);
inline bool sameName(std::string_view left, std::string_view right) { return compareNames(left, right) == 0; }

}  // namespace brenvik
