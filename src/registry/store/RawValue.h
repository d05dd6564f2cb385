#pragma once
// A registry value as it is stored: type number and bytes. Strings are UTF-16LE with their terminators, dwords little-endian,
// exactly as Windows and hive files keep them, so that what is not touched goes back byte for byte.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

using Bytes = std::vector<std::uint8_t>;

namespace regtype {
inline constexpr std::uint32_t None = 0, Sz = 1, ExpandSz = 2, Binary = 3, Dword = 4, DwordBigEndian = 5, Link = 6, MultiSz = 7,
                               ResourceList = 8, FullResourceDescriptor = 9, ResourceRequirementsList = 10, Qword = 11;
}

struct RawValue {
    std::uint32_t type = regtype::Sz;
    Bytes bytes;
    bool operator==(const RawValue&) const = default;
};

// The name of a value. The unnamed value is a case of its own, so that an empty text can never become a key operation.
class ValueName {
public:
    static ValueName unnamed() { return ValueName({}); }
    static ValueName named(std::string name) { return ValueName(std::move(name)); }  // an empty name is the unnamed value
    bool isUnnamed() const { return name_.empty(); }
    const std::string& text() const { return name_; }
    bool operator==(const ValueName&) const = default;

private:
    explicit ValueName(std::string name) : name_(std::move(name)) {}
    std::string name_;
};

// Text forms at the service boundary (UTF-8). REG_DWORD: signed decimal out, -2147483648 to 4294967295 in. REG_BINARY and
// all other types: two-digit upper-case bytes with single blanks. REG_MULTI_SZ: elements joined by U+0000, no final one.
// Strings are shown up to their first U+0000. toText throws RegError KeyNotRead for a dword that has not four bytes,
// fromText throws NoAssignment or BadBinary.
std::string toText(const RawValue& value);
RawValue fromText(std::string_view text, std::uint32_t type);
std::string bytesText(const Bytes& bytes);   // the binary form, whatever the type

}  // namespace brenvik
