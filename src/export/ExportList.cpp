#include "export/ExportList.h"

#include "frame/text/Conversions.h"

namespace brenvik {

TippListEintrag listEntry(const Tipp& tipp, const std::vector<GatheredValue>& values) {
    TippListEintrag entry;
    entry.Anzahl = numberText(static_cast<int>(tipp.lastEntry()) - 1);
    entry.Titel = tipp.Überschrift;
    entry.Baumpfad = tipp.Gruppen;
    entry.Beschreibung = tipp.Beschreibung;
    for (std::size_t i = 1; i < tipp.Eintrag.size(); ++i) {
        const TipEntry& e = tipp.Eintrag[i];
        if (i == 1) entry.TippNr = e.TippIndex;
        entry.Values.push_back({e.Hauptschlüssel, e.Schlüssel, e.Datentyp, e.Wertname, {}, e.Ausgabeart, e.WertAus, e.WertEin,
                               e.Anzeigetext.empty() ? e.Beschriftung : e.Anzeigetext, e.Standardwert, e.Werteliste, e.TippIndex,
                               i < values.size() ? values[i] : GatheredValue{}});
    }
    return entry;
}

void takeTexts(TippListEintrag& entry) {
    for (TipListValue& value : entry.Values) value.Wert = value.gathered.text;
}

}  // namespace brenvik
