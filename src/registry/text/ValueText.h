#pragma once
// A value as a person edits it, and back. A value that its type's own form would not bring back byte for byte (no text, a
// dword of three bytes, an empty line in a list) is shown as bytes, so that editing never loses what is not seen.
#include <string>
#include <string_view>

#include "registry/store/RawValue.h"

namespace brenvik {

enum class Wertform {
    Text,           // one line
    Dezimal,        // -2147483648 to 4294967295, shown as the service does
    Hexadezimal,    // one to eight digits, "0x" in front is allowed
    Zeilen,         // one element a line, separated by LF
    Bytewerte       // two digits each, 16 to a line
};

Wertform eingabeForm(const RawValue& value);        // Dezimal for a dword; Hexadezimal is the window's choice
Wertform eingabeForm(std::uint32_t type);           // of a new value
std::string eingabeText(const RawValue& value, Wertform form);
// Throws RegError with a German message for what does not fit.
RawValue wertAusEingabe(std::string_view text, std::uint32_t type, Wertform form);

}  // namespace brenvik
