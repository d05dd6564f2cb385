#include "export/ExportValues.h"

#include <algorithm>
#include <fmt/format.h>

#include "tipengine/kinds/Kind.h"

namespace brenvik {
std::string ExportValue::pfad() const {
    return std::string(longRootName(root)) + "\\" + key + "\\" + (name.isUnnamed() ? std::string("(Standard)") : name.text());
}

std::size_t ExportRecord::anzahl() const {
    std::size_t count = 0;
    for (const ExportTip& tipp : tipps) count += tipp.values.size();
    return count;
}

bool fitsTheType(std::uint32_t type, std::int32_t datentyp) {
    const auto own = static_cast<std::uint32_t>(datentyp);
    if (std::find(std::begin(ListTypes), std::end(ListTypes), type) == std::end(ListTypes)) return false;
    const auto isText = [](std::uint32_t t) { return t == regtype::Sz || t == regtype::ExpandSz; };
    return type == own || (isText(type) && isText(own));
}

ExportRecord exportValues(const TipList& liste) {
    ExportRecord result;
    for (const TippListEintrag& entry : liste) {
        if (entry.Geloescht) continue;
        ExportTip tipp{entry.TippNr, entry.Titel, {}};
        for (std::size_t i = 0; i < entry.Values.size(); ++i) {
            const TipListValue& value = entry.Values[i];
            const GatheredValue& own = value.gathered;
            const auto root = rootByName(value.Hauptschluessel);
            if (!root || !kindOf(value.PanelArt).holdsValue(value.Wertname)) continue;
            if (!own.unfit.empty() && own.touched) result.obstacles.push_back(fmt::format("Tipp {}, {}: {}", entry.TippNr, entry.Titel, own.unfit));
            if (!own.geloescht && !(own.wert && (own.gefunden || own.touched))) continue;
            // Written through the path's rules, so that a doubled or closing backslash means the same key everywhere.
            const RegPath path = parseRegPath(value.Hauptschluessel + "\\" + value.Unterschluessel + "\\");
            tipp.values.push_back({*root, path.key, ValueName::named(value.Wertname), own.geloescht ? std::nullopt : own.wert, i});
        }
        result.tipps.push_back(std::move(tipp));
    }
    return result;
}

}  // namespace brenvik
