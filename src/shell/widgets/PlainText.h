#pragma once
// Texts from outside (database, registry, files, other programs) as the windows show them: never as rich text, with marks for
// what nobody sees (frame/ShownText.h), and no more of them than a window can lay out at once. Whatever is not the program's
// own words reaches a widget through one of these; labels that show it have Qt::PlainText besides. What a field lets the user
// edit stays as it is; unseenNote goes beside it.
#include <QString>
#include <string_view>

namespace brenvik {

inline constexpr std::size_t MostInLine = 1'000, MostInLines = 100'000, MostInBox = 4'000, MostInTip = 1'500;   // characters

QString plainLine(std::string_view text);               // for a cell, a caption, a title, an accessible name
QString plainLines(std::string_view text, std::size_t most = MostInLines);
QString plainCaption(std::string_view text);            // for buttons and menus: its "&" is a character, no mnemonic
QString boxText(std::string_view text);                 // plainLines that leave the buttons of a box on the screen
// The tool tip that shows the text as it is. Tool tips have no plain form of their own; the text is escaped where Qt would
// take it for rich text, and broken where it would be wider than the screen.
QString toolTipText(std::string_view text);
QString toolTipText(const QString& text);
// Words for beside a field whose text has characters in it that the field does not show; empty if it has none.
QString unseenNote(std::string_view text);

}  // namespace brenvik
