#include "registry/RegTextSource.h"

#include "registry/Wtf8.h"

namespace brenvik {

namespace {

// Windows-1252 from 0x80 to 0x9F; the five holes stand for the control characters of their own number.
constexpr char16_t ansiSpecials[] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
                                     0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
                                     0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

char16_t ansiUnit(std::uint8_t byte) { return byte >= 0x80 && byte < 0xA0 ? ansiSpecials[byte - 0x80] : byte; }

std::string ansiToText(std::string_view bytes) {
    std::u16string units;
    units.reserve(bytes.size());
    for (const char byte : bytes) units += ansiUnit(static_cast<std::uint8_t>(byte));
    return fromUtf16(units);
}

bool startsWith(std::string_view text, std::string_view prefix) { return text.substr(0, prefix.size()) == prefix; }

std::string_view firstLine(std::string_view text) { return text.substr(0, text.find_first_of("\r\n")); }

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return text;
}

}  // namespace

Bytes ansiToUtf16Le(const Bytes& ansi) {
    Bytes wide;
    wide.reserve(2 * ansi.size());
    for (const std::uint8_t byte : ansi) {
        wide.push_back(static_cast<std::uint8_t>(ansiUnit(byte) & 0xFF));
        wide.push_back(static_cast<std::uint8_t>(ansiUnit(byte) >> 8));
    }
    return wide;
}

RegTextSource readRegTextSource(std::string_view bytes) {
    using namespace std::string_view_literals;
    RegTextSource source;
    if (startsWith(bytes, "\xFE\xFF"sv)) {
        source.problem = "Die Datei ist in UTF-16 mit vertauschten Bytes geschrieben und kann nicht gelesen werden.";
        return source;
    }
    const bool wide = startsWith(bytes, "\xFF\xFE"sv);
    if (wide || startsWith(bytes, "W\0i\0n\0"sv)) {
        const std::string_view units = bytes.substr(wide ? 2 : 0);
        source.text = fromUtf16Le(reinterpret_cast<const std::uint8_t*>(units.data()), units.size());
        if (units.size() % 2 != 0) source.problem = "Die Datei endet mitten in einem Zeichen.";
    } else {
        const bool marked = startsWith(bytes, "\xEF\xBB\xBF"sv);
        const std::string_view plain = bytes.substr(marked ? 3 : 0);
        const bool utf8 = marked || (!startsWith(plain, RegHeader4) && fromUtf16(toUtf16(plain)) == plain);
        source.text = utf8 ? std::string(plain) : ansiToText(plain);
    }
    const std::string_view header = firstLine(source.text);
    source.start = header.size();
    source.ansiData = trimmed(header) == RegHeader4;
    if (!source.ansiData && trimmed(header) != RegHeader5) {
        source.problem = "Die Datei beginnt weder mit \"REGEDIT4\" noch mit \"Windows Registry Editor Version 5.00\".";
    }
    return source;
}

}  // namespace brenvik
