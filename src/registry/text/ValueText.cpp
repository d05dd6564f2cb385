#include "registry/text/ValueText.h"

#include <algorithm>
#include <charconv>

#include <fmt/format.h>

#include "frame/Errors.h"

namespace brenvik {
namespace {

constexpr std::size_t BytesPerLine = 16;

bool isControl(char c) { return static_cast<unsigned char>(c) < 0x20 && c != '\t'; }

// Unpaired surrogates, in the generalised form of UTF-8, which no input field keeps.
bool hasSurrogates(std::string_view text) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i)
        if (static_cast<unsigned char>(text[i]) == 0xED && static_cast<unsigned char>(text[i + 1]) >= 0xA0) return true;
    return false;
}

bool onlyZerosBehind(const Bytes& whole, std::size_t start) {
    return std::all_of(whole.begin() + static_cast<std::ptrdiff_t>(start), whole.end(), [](std::uint8_t byte) { return byte == 0; });
}

// The text gives the same bytes again, but for terminators that were missing.
bool comesBack(const RawValue& value, std::string_view text) {
    if (value.bytes.size() % 2 != 0 || hasSurrogates(text)) return false;
    const Bytes written = fromText(text, value.type).bytes;
    return value.bytes.size() <= written.size() && std::equal(value.bytes.begin(), value.bytes.end(), written.begin()) &&
           onlyZerosBehind(written, value.bytes.size());
}

bool fitsLine(const RawValue& value) {
    const std::string text = toText(value);
    return std::none_of(text.begin(), text.end(), isControl) && comesBack(value, text);
}

bool hasEmptyElement(std::string_view elements) {
    return !elements.empty() && (elements.front() == '\0' || elements.back() == '\0' || elements.find(std::string_view("\0\0", 2)) != std::string_view::npos);
}

bool fitsLines(const RawValue& value) {
    const std::string text = toText(value);
    return !hasEmptyElement(text) && std::none_of(text.begin(), text.end(), [](char c) { return c != '\0' && isControl(c); }) && comesBack(value, text);
}

std::string linesOfBytes(const Bytes& bytes) {
    std::string text;
    for (std::size_t start = 0; start < bytes.size(); start += BytesPerLine) {
        const auto first = bytes.begin() + static_cast<std::ptrdiff_t>(start);
        if (start > 0) text += '\n';
        text += bytesText({first, first + static_cast<std::ptrdiff_t>(std::min(BytesPerLine, bytes.size() - start))});
    }
    return text;
}

RawValue fromHexNumber(std::string_view text, std::uint32_t type) {
    std::string_view digits = text;
    if (digits.starts_with("0x") || digits.starts_with("0X")) digits.remove_prefix(2);
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    if (digits.empty() || error != std::errc() || end != digits.data() + digits.size())
        throw RegError(regerr::NoAssignment, fmt::format("\"{}\" ist keine Hexadezimalzahl mit ein bis acht Stellen (0-9, A-F).", text));
    return fromText(std::to_string(number), type);
}

RawValue fromLines(std::string_view text, std::uint32_t type) {
    while (text.ends_with('\n')) text.remove_suffix(1);
    std::string elements(text);
    std::replace(elements.begin(), elements.end(), '\n', '\0');
    if (hasEmptyElement(elements)) throw RegError(regerr::NoAssignment, "Eine Liste kann keine leere Zeile enthalten: mit ihr wäre sie dort zu Ende.");
    return fromText(elements, type);
}

RawValue fromBytes(std::string_view text, std::uint32_t type) {
    std::string oneLine(text);
    std::replace_if(oneLine.begin(), oneLine.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t' || c == ','; }, ' ');
    RawValue value = fromText(oneLine, regtype::Binary);
    value.type = type;
    return value;
}

}  // namespace

ValueForm inputForm(std::uint32_t type) {
    switch (type) {
        case regtype::Sz:
        case regtype::ExpandSz: return ValueForm::Text;
        case regtype::Dword: return ValueForm::Decimal;
        case regtype::MultiSz: return ValueForm::Lines;
        default: return ValueForm::ByteValues;
    }
}

ValueForm inputForm(const RawValue& value) {
    const ValueForm own = inputForm(value.type);
    const bool fits = own == ValueForm::Text      ? fitsLine(value)
                      : own == ValueForm::Lines  ? fitsLines(value)
                      : own == ValueForm::Decimal ? value.bytes.size() == 4
                                                 : true;
    return fits ? own : ValueForm::ByteValues;
}

std::string inputText(const RawValue& value, ValueForm form) {
    switch (form) {
        case ValueForm::ByteValues: return linesOfBytes(value.bytes);
        case ValueForm::Hexadecimal: return fmt::format("{:X}", static_cast<std::uint32_t>(std::stoll(toText(value))));
        case ValueForm::Lines: {
            std::string text = toText(value);
            std::replace(text.begin(), text.end(), '\0', '\n');
            return text;
        }
        default: return toText(value);
    }
}

RawValue valueFromInput(std::string_view text, std::uint32_t type, ValueForm form) {
    switch (form) {
        case ValueForm::Hexadecimal: return fromHexNumber(text, type);
        case ValueForm::Lines: return fromLines(text, type);
        case ValueForm::ByteValues: return fromBytes(text, type);
        default: return fromText(text, type);
    }
}

}  // namespace brenvik
