#include "tipdb/jet/JetText.h"

#include <algorithm>

#include "frame/text/Codepage.h"

namespace brenvik::jet {

namespace {

bool isAscii(const std::uint8_t* bytes, std::size_t count) {
    return std::all_of(bytes, bytes + count, [](std::uint8_t b) { return b != 0 && b < 0x80; });
}

std::string_view viewOf(const std::uint8_t* bytes, std::size_t count) { return {reinterpret_cast<const char*>(bytes), count}; }

}  // namespace

std::string decode1252(const std::uint8_t* bytes, std::size_t count) { return utf8FromAnsi(viewOf(bytes, count)); }

std::string decodeUcs2(const std::uint8_t* bytes, std::size_t count, bool mayBeCompressed) {
    const bool compressed = mayBeCompressed && count >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE;
    if (!compressed) return utf8FromUtf16Le(viewOf(bytes, count));
    if (isAscii(bytes + 2, count - 2)) return std::string(viewOf(bytes + 2, count - 2));
    std::u16string units;
    units.reserve(count);
    bool single = true;
    for (std::size_t i = 2; i < count;) {
        if (bytes[i] == 0) {
            single = !single;
            ++i;
        } else if (single) {
            units += static_cast<char16_t>(bytes[i++]);
        } else {
            if (i + 2 > count) break;
            units += static_cast<char16_t>(bytes[i] | bytes[i + 1] << 8);
            i += 2;
        }
    }
    return utf8FromUtf16(units);
}

}  // namespace brenvik::jet
