#pragma once
// The bytes of a REG file as text: which of the two formats it is, and its lines in UTF-8.
#include <string>
#include <string_view>

#include "registry/store/RawValue.h"

namespace brenvik {

struct RegTextSource {
    std::string text;       // UTF-8, without mark
    bool ansiData = false;  // strings given as bytes, hex(2) and hex(7), are Windows-1252 (REGEDIT4)
    std::size_t start = 0;  // of the first line behind the header
    std::string problem;    // not empty: no REG file, and why (German)
};

inline constexpr std::string_view RegHeader4 = "REGEDIT4", RegHeader5 = "Windows Registry Editor Version 5.00";

RegTextSource readRegTextSource(std::string_view bytes);
RegTextSource readRegTextSource(std::string&& bytes);   // a text that is UTF-8 already is not copied

// Windows-1252 bytes as UTF-16LE bytes.
Bytes ansiToUtf16Le(const Bytes& ansi);

}  // namespace brenvik
