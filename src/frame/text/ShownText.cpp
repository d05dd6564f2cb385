#include "frame/text/ShownText.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "frame/text/Characters.h"

namespace brenvik {
namespace {

struct Range {
    char32_t first, last;
};
constexpr Range Unseen[] = {{0x80, 0x9F},     {0xAD, 0xAD},     {0x61C, 0x61C},   {0x180E, 0x180E},   {0x200B, 0x200F},  {0x2028, 0x202E},
                            {0x2060, 0x206F}, {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}, {0xE0000, 0xE007F}};
constexpr char32_t FirstSurrogate = 0xD800, LastSurrogate = 0xDFFF, ControlPictures = 0x2400, Delete = 0x7F, DeletePicture = 0x2421;
constexpr std::string_view Cut = "…";

bool isPlainAscii(char c) { return c >= 0x20 && c < 0x7F; }

bool isMarked(char32_t c) { return (c & characters::BadByte) || c < 0x20 || c == Delete || isUnseen(c) || (c >= FirstSurrogate && c <= LastSurrogate); }

void appendShown(std::string& shown, char32_t c) {
    if (!isMarked(c)) characters::append(shown, c);
    else if (c & characters::BadByte) fmt::format_to(std::back_inserter(shown), "‹0x{:02X}›", static_cast<std::uint32_t>(c & 0xFF));
    else if (c < 0x20) characters::append(shown, ControlPictures + c);
    else if (c == Delete) characters::append(shown, DeletePicture);
    else fmt::format_to(std::back_inserter(shown), "‹U+{:04X}›", static_cast<std::uint32_t>(c));
}

}  // namespace

bool isUnseen(char32_t c) {
    for (const Range& range : Unseen)
        if (c >= range.first && c <= range.last) return true;
    return false;
}

bool hasUnseen(std::string_view text) {
    for (std::size_t place = 0; place < text.size();) {
        const char32_t c = characters::next(text, place);
        if (isMarked(c) && c != '\n' && c != '\r' && c != '\t') return true;
    }
    return false;
}

std::string shownText(std::string_view text, ShownAs form, std::size_t most) {
    std::string shown;
    shown.reserve(std::min(text.size(), most));
    std::size_t place = 0;
    for (; place < text.size() && most > 0; --most) {
        std::size_t plain = place;
        while (plain < text.size() && plain - place < most && isPlainAscii(text[plain])) ++plain;
        if (plain > place) {
            shown.append(text, place, plain - place);
            most -= plain - place - 1;
            place = plain;
            continue;
        }
        const bool lineEnd = text[place] == '\r' && place + 1 < text.size() && text[place + 1] == '\n';
        if (form == ShownAs::Lines && lineEnd) ++place;
        const char32_t c = characters::next(text, place);
        if (form == ShownAs::Lines && (c == '\n' || c == '\t')) shown += static_cast<char>(c);
        else appendShown(shown, c);
    }
    if (place < text.size()) shown += Cut;
    return shown;
}

}  // namespace brenvik
