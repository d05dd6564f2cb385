#include "registry/text/RegTextSource.h"

#include "frame/text/Codepage.h"

namespace brenvik {

namespace {

bool startsWith(std::string_view text, std::string_view prefix) { return text.substr(0, prefix.size()) == prefix; }

std::string_view firstLine(std::string_view text) { return text.substr(0, text.find_first_of("\r\n")); }

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return text;
}

}  // namespace

Bytes ansiToUtf16Le(const Bytes& ansi) {
    const std::string wide = utf16LeFromUtf8(utf8FromAnsi({reinterpret_cast<const char*>(ansi.data()), ansi.size()}));
    return {wide.begin(), wide.end()};
}

namespace {

// The text of the bytes; takeOver gives it where it is UTF-8 and begins behind that many bytes.
template <class TakeOver>
RegTextSource read(std::string_view bytes, const TakeOver& takeOver) {
    using namespace std::string_view_literals;
    RegTextSource source;
    if (startsWith(bytes, "\xFE\xFF"sv)) {
        source.problem = "Die Datei ist in UTF-16 mit vertauschten Bytes geschrieben und kann nicht gelesen werden.";
        return source;
    }
    const bool wide = startsWith(bytes, "\xFF\xFE"sv);
    if (wide || startsWith(bytes, "W\0i\0n\0"sv)) {
        const std::string_view units = bytes.substr(wide ? 2 : 0);
        source.text = utf8FromUtf16Le(units);
        if (units.size() % 2 != 0) source.problem = "Die Datei endet mitten in einem Zeichen.";
    } else {
        const bool marked = startsWith(bytes, "\xEF\xBB\xBF"sv);
        const std::string_view plain = bytes.substr(marked ? 3 : 0);
        const bool whole = isUtf8(plain), utf8 = marked || (!startsWith(plain, RegHeader4) && whole);
        if (marked && !whole) source.problem = "Die Datei ist als UTF-8 gekennzeichnet, enthält aber ungültige Zeichen.";
        source.text = utf8 ? takeOver(bytes.size() - plain.size()) : utf8FromAnsi(plain);
    }
    const std::string_view header = firstLine(source.text);
    source.start = header.size();
    source.ansiData = trimmed(header) == RegHeader4;
    if (!source.ansiData && trimmed(header) != RegHeader5) {
        source.problem = "Die Datei beginnt weder mit \"REGEDIT4\" noch mit \"Windows Registry Editor Version 5.00\".";
    }
    return source;
}

}  // namespace

RegTextSource readRegTextSource(std::string_view bytes) {
    return read(bytes, [&](std::size_t mark) { return std::string(bytes.substr(mark)); });
}

RegTextSource readRegTextSource(std::string&& bytes) {
    return read(bytes, [&](std::size_t mark) { return std::move(bytes.erase(0, mark)); });
}

}  // namespace brenvik
