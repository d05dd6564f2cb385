#pragma once
// Texts of registry files of the 9x family are bytes of an ANSI code page that the file does not name. They are shown as
// Windows-1252, in which every byte has a character and comes back as it was; written is only what is sure to mean the same.
#include <cstdint>
#include <string>
#include <string_view>

#include "registry/creg/CregFormat.h"
#include "registry/store/RawValue.h"

namespace brenvik {

// Of the machine (value ACP). Without one only ASCII is written, in another than 1252 no text.
struct CregCodepage {
    std::uint32_t number = 0;   // 0: not known
    bool operator==(const CregCodepage&) const = default;
};

std::string cregName(cregfmt::ByteSpan name);
RawValue cregValue(std::uint32_t type, cregfmt::ByteSpan data);   // texts become UTF-16 with terminators

// Back. Throw RegError: NoAssignment for values and their names, NoKey for names of keys, which are ASCII everywhere.
Bytes cregBytes(const RawValue& value, const CregCodepage& codepage);
Bytes cregValueName(std::string_view name, const CregCodepage& codepage);
Bytes cregKeyName(std::string_view name);

}  // namespace brenvik
