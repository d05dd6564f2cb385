#pragma once
// A value as a person edits it, and back. A value that its type's own form would not bring back byte for byte (no text, a
// dword of three bytes, an empty line in a list) is shown as bytes, so that editing never loses what is not seen.
#include <string>
#include <string_view>

#include "registry/store/RawValue.h"

namespace brenvik {

enum class ValueForm {
    Text,           // one line
    Decimal,        // -2147483648 to 4294967295, shown as the service does
    Hexadecimal,    // one to eight digits, "0x" in front is allowed
    Lines,         // one element a line, separated by LF
    ByteValues       // two digits each, 16 to a line
};

ValueForm inputForm(const RawValue& value);        // Decimal for a dword; Hexadecimal is the window's choice
ValueForm inputForm(std::uint32_t type);           // of a new value
std::string inputText(const RawValue& value, ValueForm form);
// Throws RegError with a German message for what does not fit.
RawValue valueFromInput(std::string_view text, std::uint32_t type, ValueForm form);

}  // namespace brenvik
