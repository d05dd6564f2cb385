#pragma once
// Texts from outside (databases, registries, files, other programs) as a person may see them, in a terminal and in a window.
// What has no picture of its own and could move the cursor, turn the direction of writing or hide something becomes a mark
// that can be seen: control characters their pictures (␛), all others their number (‹U+202E›, ‹0x9B› for a byte that is no
// UTF-8). In and out UTF-8; nothing fails.
#include <cstddef>
#include <string>
#include <string_view>

namespace brenvik {

enum class ShownAs {
    Line,     // line breaks and tabs become marks too
    Lines,    // LF and tabs stay, CR LF becomes LF
};

// At most that many characters of the text, with "…" in the place of the rest.
std::string shownText(std::string_view text, ShownAs form, std::size_t most = std::string_view::npos);
inline std::string shownLine(std::string_view text, std::size_t most = std::string_view::npos) { return shownText(text, ShownAs::Line, most); }

// Whether shownText puts marks into it, line breaks and tabs aside.
bool hasUnseen(std::string_view text);

// C1 controls and the format characters of Unicode: direction, joining, width and order of others.
bool isUnseen(char32_t character);

}  // namespace brenvik
