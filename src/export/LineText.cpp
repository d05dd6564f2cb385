#include "export/LineText.h"

#include <algorithm>
#include <fmt/format.h>

#include "export/Messages.h"
#include "frame/text/Characters.h"

namespace brenvik {
namespace {

constexpr std::string_view LineEnds("\r\n\0", 3);

}  // namespace

bool isControl(char32_t c) { return c < U' ' || (c >= 0x7F && c <= 0x9F); }

bool breaksLine(std::string_view text) { return text.find_first_of(LineEnds) != std::string_view::npos; }

bool forgesRegLine(std::string_view text) {
    for (std::size_t end = text.find_first_of(LineEnds); end != std::string_view::npos; end = text.find_first_of(LineEnds, end + 1)) {
        const auto next = std::find_if(text.begin() + static_cast<std::ptrdiff_t>(end), text.end(), [](char c) { return static_cast<unsigned char>(c) > ' '; });
        if (next != text.end() && std::string_view("[\"@").find(*next) != std::string_view::npos) return true;
    }
    return false;
}

bool hasControls(std::string_view text) {
    for (std::size_t at = 0; at < text.size();)
        if (isControl(characters::next(text, at))) return true;
    return false;
}

std::string commentText(std::string_view text) {
    constexpr char32_t LineSeparator = 0x2028, ParagraphSeparator = 0x2029;
    std::string line;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t c = characters::next(text, at);
        characters::append(line, isControl(c) || c == LineSeparator || c == ParagraphSeparator ? U' ' : c);
    }
    return line;
}

std::string listed(const std::vector<std::string>& lines, std::size_t most) {
    std::string text;
    for (std::size_t i = 0; i < lines.size() && i < most; ++i) text += commentText(lines[i]) + "\r\n";
    return lines.size() > most ? text + fmt::format(messages::AndMore, lines.size() - most) + "\r\n" : text;
}

}  // namespace brenvik
