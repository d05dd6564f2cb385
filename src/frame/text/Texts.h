#pragma once
// The numbered text tables of the user interface (UTF-8, line ends CR LF). Every function throws NumberedError 9
// for an index outside the table's bounds; a number inside the bounds that has no text gives the empty text.
// Messages outside these tables stand by name in Messages.h.
#include <cstdint>
#include <string>

namespace brenvik {

const std::string& strBVKTexte(int index);     // 0 to 250: messages and labels
const std::string& strBVKButtons(int index);   // 0 to 34: button captions
const std::string& strBVKToolbar(int index);   // 1 to 17: toolbar captions
const std::string& strBVKTips(int index);      // 0 to 24: tooltips
const std::string& strBVKBS(int index);        // 0 to 5: names of the operating systems
const std::string& strBVKFehler(int index);    // 0 to 18: error texts
const std::string& strRootKeys(int index);     // 0 to 5: names of the root keys
const std::string& strPanelArten(int index);   // 0 to 10: names of the panel kinds (kind - 1)

struct Datentyp {
    std::string name;      // "REG_SZ"
    std::int32_t nummer;   // the registry's number of the type
};
const Datentyp& typDatentyp(int index);        // 0 to 4
inline constexpr int typeCount = 5;

}  // namespace brenvik
