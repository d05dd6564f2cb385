#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "frame/UserPort.h"

namespace brenvik {

// The colour of a text of three numbers with blanks between, hexadecimal for data type 3 (binary), else decimal.
// None unless there are at least three from 0 to 255.
std::optional<Rgb> colourText(const std::string& text, std::int32_t datentyp);

}  // namespace brenvik
