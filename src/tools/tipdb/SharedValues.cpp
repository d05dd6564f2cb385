#include <map>
#include <set>

#include "Check.h"
#include "frame/text/Conversions.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik::tipbuild {

namespace {

// The boot menu and keys whose entries are the values are edited in parts, by as many Tips as one likes.
bool isOneValue(const Zeile& row) {
    const Kind& kind = kindOf(row.Ausgabeart);
    return !kind.section && !kind.menu && row.Wertname.has_value();
}

// Where the value lies on a system of the NT family, or on one of the others.
std::string placeOf(const Zeile& row, bool nt) {
    std::string place;
    if (row.INITipp) place = row.Werteliste.value_or("") + "\n" + row.SchlüsselNT.value_or("") + "\n" + row.Schlüssel.value_or("");
    else place = row.Hauptschlüssel.value_or("") + "\\" + (nt && !row.SchlüsselNT.value_or("").empty() ? *row.SchlüsselNT : row.Schlüssel.value_or(""));
    return lowerCase(place + "\n" + *row.Wertname);
}

}  // namespace

void hintSharedValues(const Stock& stock, Complaints& complaints) {
    std::map<std::pair<int, std::string>, std::int64_t> owner;   // by system and place: the Tip that has it first
    for (const Zeile& row : stock.lines) {
        if (!isOneValue(row)) continue;
        const std::int64_t tip = row.isHeading() ? row.Index : row.HauptIndex;
        const bool systems[] = {row.Win95, row.Win98, row.WinME, row.WinNT, row.Win2000, row.WinXP};
        std::set<std::int64_t> others;
        for (int i = 0; i < 6; ++i) {
            if (!systems[i]) continue;
            const auto [place, isNew] = owner.try_emplace({i, placeOf(row, i >= 3)}, tip);
            if (!isNew && place->second != tip) others.insert(place->second);
        }
        for (const std::int64_t other : others) complaints.hint(row.placeOf("Wertname"), "Diesen Wert hat auch der Tipp " + std::to_string(other) + ".");
    }
}

}  // namespace brenvik::tipbau
