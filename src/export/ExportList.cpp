#include "export/ExportList.h"

#include "frame/text/Conversions.h"

namespace brenvik {

TippListEintrag listeneintrag(const Tipp& tipp, const std::vector<GesammelterWert>& values) {
    TippListEintrag entry;
    entry.Anzahl = numberText(static_cast<int>(tipp.letzterEintrag()) - 1);
    entry.Titel = tipp.Überschrift;
    entry.Baumpfad = tipp.Gruppen;
    entry.Beschreibung = tipp.Beschreibung;
    for (std::size_t i = 1; i < tipp.Eintrag.size(); ++i) {
        const TippEintrag& e = tipp.Eintrag[i];
        if (i == 1) entry.TippNr = e.TippIndex;
        entry.Werte.push_back({e.Hauptschlüssel, e.Schlüssel, e.Datentyp, e.Wertname, {}, e.Ausgabeart, e.WertAus, e.WertEin,
                               e.Anzeigetext.empty() ? e.Beschriftung : e.Anzeigetext, e.Standardwert, e.Werteliste, e.TippIndex,
                               i < values.size() ? values[i] : GesammelterWert{}});
    }
    return entry;
}

void uebernehmeTexte(TippListEintrag& entry) {
    for (TippListWert& value : entry.Werte) value.Wert = value.gesammelt.text;
}

}  // namespace brenvik
