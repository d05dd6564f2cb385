#include "registry/creg/CregText.h"

#include <algorithm>

#include <fmt/format.h>

#include "frame/Errors.h"
#include "frame/text/Codepage.h"

namespace brenvik {

namespace {

constexpr std::uint32_t Western = 1252;

bool isText(std::uint32_t type) { return type == regtype::Sz || type == regtype::ExpandSz || type == regtype::MultiSz; }

std::string_view textOf(cregfmt::ByteSpan bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

Bytes encoded(std::string_view text, const CregCodepage& codepage) {
    std::size_t missing = 0;
    const std::string bytes = ansiFromUtf8(text, &missing);
    if (missing != 0) throw RegError(regerr::NoAssignment, "Der Text hat Zeichen, die es in der Codepage dieses Windows (1252) nicht gibt. Es wurde nichts geschrieben.");
    if (codepage.number == 0 && !isAscii(text))
        throw RegError(regerr::NoAssignment, "Der Text hat Zeichen außerhalb von ASCII, und die Codepage dieses Windows ist nicht bekannt (SYSTEM.DAT, Wert ACP). Es wurde nichts geschrieben.");
    return {bytes.begin(), bytes.end()};
}

}  // namespace

std::string cregName(cregfmt::ByteSpan name) { return utf8FromAnsi(textOf(name)); }

RawValue cregValue(std::uint32_t type, cregfmt::ByteSpan data) {
    if (!isText(type)) return {type, {data.begin(), data.end()}};
    std::string units = utf16LeFromUtf8(utf8FromAnsi(textOf(data)));
    if (type == regtype::Sz) units.append(2, '\0');
    return {type, {units.begin(), units.end()}};
}

Bytes cregBytes(const RawValue& value, const CregCodepage& codepage) {
    Bytes bytes = value.bytes;
    if (isText(value.type)) {
        if (codepage.number != 0 && codepage.number != Western) {
            throw RegError(regerr::NoAssignment, fmt::format("Dieses Windows hat die Codepage {}. Texte können hier nur gelesen werden (gezeigt als Windows-1252), andere Werte auch geschrieben.", codepage.number));
        }
        if (bytes.size() % 2 != 0) throw RegError(regerr::NoAssignment, "Ein Text mit einer ungeraden Zahl von Bytes kann hier nicht gespeichert werden.");
        if (value.type == regtype::Sz && bytes.size() >= 2 && bytes[bytes.size() - 1] == 0 && bytes[bytes.size() - 2] == 0) bytes.resize(bytes.size() - 2);
        bytes = encoded(utf8FromUtf16Le(textOf(bytes)), codepage);
    }
    if (bytes.size() > cregfmt::mostData) throw RegError(regerr::NoAssignment, "Ein Wert darf bei Windows 95, 98 und ME höchstens 16300 Bytes haben.");
    return bytes;
}

Bytes cregValueName(std::string_view name, const CregCodepage& codepage) {
    Bytes bytes = isAscii(name) || codepage.number == 0 || codepage.number == Western ? encoded(name, codepage) : Bytes(cregfmt::longestName + 1);
    if (bytes.size() > cregfmt::longestName || std::find(bytes.begin(), bytes.end(), 0) != bytes.end())
        throw RegError(regerr::NoAssignment, "Dieser Wertname kann bei Windows 95, 98 und ME nicht geschrieben werden: höchstens 255 Zeichen, und nur solche seiner Codepage.");
    return bytes;
}

Bytes cregKeyName(std::string_view name) {
    if (name.empty() || name.size() > cregfmt::longestName || !isAscii(name) || name.find_first_of(std::string_view("\\\0", 2)) != std::string_view::npos)
        throw RegError(regerr::NoKey, "Schlüssel \"" + std::string(name) + "\": Schlüsselnamen haben bei Windows 95, 98 und ME 1 bis 255 Zeichen aus ASCII. Es wurde nichts geschrieben.");
    return {name.begin(), name.end()};
}

}  // namespace brenvik
