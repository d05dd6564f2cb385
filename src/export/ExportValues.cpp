#include "export/ExportValues.h"

#include <algorithm>
#include <fmt/format.h>

#include "tipengine/kinds/Kind.h"

namespace brenvik {
std::string Exportwert::pfad() const {
    return std::string(longRootName(root)) + "\\" + key + "\\" + (name.isUnnamed() ? std::string("(Standard)") : name.text());
}

std::size_t Exportsatz::anzahl() const {
    std::size_t count = 0;
    for (const Exporttipp& tipp : tipps) count += tipp.werte.size();
    return count;
}

bool passtZumTyp(std::uint32_t type, std::int32_t datentyp) {
    const auto own = static_cast<std::uint32_t>(datentyp);
    if (std::find(std::begin(Listentypen), std::end(Listentypen), type) == std::end(Listentypen)) return false;
    const auto isText = [](std::uint32_t t) { return t == regtype::Sz || t == regtype::ExpandSz; };
    return type == own || (isText(type) && isText(own));
}

Exportsatz exportwerte(const TippListe& liste) {
    Exportsatz result;
    for (const TippListEintrag& entry : liste) {
        if (entry.Geloescht) continue;
        Exporttipp tipp{entry.TippNr, entry.Titel, {}};
        for (std::size_t i = 0; i < entry.Werte.size(); ++i) {
            const TippListWert& value = entry.Werte[i];
            const GesammelterWert& own = value.gesammelt;
            const auto root = rootByName(value.Hauptschluessel);
            if (!root || !kindOf(value.PanelArt).holdsValue(value.Wertname)) continue;
            if (!own.unpassend.empty() && own.beruehrt) result.hindernisse.push_back(fmt::format("Tipp {}, {}: {}", entry.TippNr, entry.Titel, own.unpassend));
            if (!own.geloescht && !(own.wert && (own.gefunden || own.beruehrt))) continue;
            // Written through the path's rules, so that a doubled or closing backslash means the same key everywhere.
            const RegPath path = parseRegPath(value.Hauptschluessel + "\\" + value.Unterschluessel + "\\");
            tipp.werte.push_back({*root, path.key, ValueName::named(value.Wertname), own.geloescht ? std::nullopt : own.wert, i});
        }
        result.tipps.push_back(std::move(tipp));
    }
    return result;
}

}  // namespace brenvik
