#include "registry/store/RawValue.h"

#include <charconv>
#include <limits>

#include "frame/Errors.h"
#include "registry/Wtf8.h"

namespace brenvik {

namespace {

constexpr char hexDigits[] = "0123456789ABCDEF";

std::string cutAtZero(std::string text) {
    if (const auto zero = text.find('\0'); zero != std::string::npos) text.resize(zero);
    return text;
}

std::string multiText(const Bytes& bytes) {
    std::string text = fromUtf16Le(bytes.data(), bytes.size());
    // One terminator belongs to the list, one to its last element; zeros before those are empty elements.
    for (int i = 0; i < 2 && !text.empty() && text.back() == '\0'; ++i) text.pop_back();
    return text;
}

std::string dwordText(const Bytes& bytes) {
    if (bytes.size() != 4) {
        throw RegError(regerr::KeyNotRead, "Der Wert ist als REG_DWORD angelegt, hat aber " + std::to_string(bytes.size()) + " statt 4 Bytes.");
    }
    std::uint32_t number = 0;
    for (int i = 3; i >= 0; --i) number = (number << 8) | bytes[static_cast<std::size_t>(i)];
    return std::to_string(static_cast<std::int32_t>(number));
}

Bytes terminatedUtf16(std::string_view text, int terminators) {
    const std::u16string units = toUtf16(text);
    if (fromUtf16(units) != text) throw RegError(regerr::NoAssignment, "Der Text ist kein gültiges UTF-8.");
    Bytes bytes;
    bytes.reserve(2 * (units.size() + 2));
    for (const char16_t unit : units) {
        bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
    }
    bytes.insert(bytes.end(), 2 * static_cast<std::size_t>(terminators), 0);
    return bytes;
}

Bytes stringBytes(std::string_view text) {
    if (text.find('\0') != std::string_view::npos) {
        throw RegError(regerr::NoAssignment, "Ein Text mit Nullzeichen kann nicht als Zeichenkette gespeichert werden.");
    }
    return terminatedUtf16(text, 1);
}

Bytes dwordBytes(std::string_view text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < std::numeric_limits<std::int32_t>::min() ||
        number > std::numeric_limits<std::uint32_t>::max()) {
        throw RegError(regerr::NoAssignment, "\"" + std::string(text) + "\" ist keine Zahl für einen REG_DWORD-Wert.");
    }
    const auto bits = static_cast<std::uint32_t>(number);
    return {static_cast<std::uint8_t>(bits), static_cast<std::uint8_t>(bits >> 8), static_cast<std::uint8_t>(bits >> 16),
            static_cast<std::uint8_t>(bits >> 24)};
}

Bytes binaryBytes(std::string_view text) {
    Bytes bytes;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find(' '), text.size());
        const std::string_view piece = text.substr(0, length);
        text.remove_prefix(std::min(length + 1, text.size()));
        if (piece.empty()) continue;
        std::uint8_t byte = 0;
        const auto [end, error] = std::from_chars(piece.data(), piece.data() + piece.size(), byte, 16);
        if (piece.size() > 2 || error != std::errc() || end != piece.data() + piece.size()) {
            throw RegError(regerr::BadBinary, "\"" + std::string(piece) + "\" ist kein Byte in hexadezimaler Schreibweise.");
        }
        bytes.push_back(byte);
    }
    return bytes;
}

}  // namespace

std::string bytesText(const Bytes& bytes) {
    std::string text;
    text.reserve(3 * bytes.size());
    for (const std::uint8_t byte : bytes) {
        if (!text.empty()) text += ' ';
        text += hexDigits[byte >> 4];
        text += hexDigits[byte & 15];
    }
    return text;
}

std::string toText(const RawValue& value) {
    switch (value.type) {
        case regtype::Sz:
        case regtype::ExpandSz: return cutAtZero(fromUtf16Le(value.bytes.data(), value.bytes.size()));
        case regtype::Dword: return dwordText(value.bytes);
        case regtype::MultiSz: return multiText(value.bytes);
        default: return bytesText(value.bytes);
    }
}

RawValue fromText(std::string_view text, std::uint32_t type) {
    switch (type) {
        case regtype::Sz:
        case regtype::ExpandSz: return {type, stringBytes(text)};
        case regtype::Dword: return {type, dwordBytes(text)};
        case regtype::MultiSz: return {type, terminatedUtf16(text, text.empty() ? 1 : 2)};
        default: return {type, binaryBytes(text)};
    }
}

}  // namespace brenvik
