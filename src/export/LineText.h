#pragma once
// Texts of a database or a registry on their way into files that are made of lines.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

// Holds a line end or U+0000: no name that stands in a line as it is.
bool breaksLine(std::string_view text);
// Holds a line end behind which a REG file would go on with an entry or a key of the text's own making.
bool forgesRegLine(std::string_view text);
// C0 and C1, tabs and line ends included.
bool isControl(char32_t character);
bool hasControls(std::string_view text);
// For comments: in one line, with a blank in the place of each control character and separator of lines.
std::string commentText(std::string_view text);

// A line for each of them, closed by CR LF; of more than most the rest is counted.
inline constexpr std::size_t LinesInBox = 12;
std::string listed(const std::vector<std::string>& lines, std::size_t most = LinesInBox);

}  // namespace brenvik
