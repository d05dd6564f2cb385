#pragma once
// How the database compares texts: without regard to case, umlauts included, and with ß equal to "ss". Texts are UTF-8.
#include <string_view>

namespace brenvik {

// Below, equal to or above 0. Letters with marks stand behind their base letter.
int compareDatabaseTexts(std::string_view left, std::string_view right);

// The Like of the program's statements: % any run of characters, _ one character.
bool likeDatabaseText(std::string_view text, std::string_view pattern);

}  // namespace brenvik
