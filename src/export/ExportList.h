#pragma once
// The two lists in which a user collects Tips while browsing. They live as long as the program; main owns them.
#include <cstdint>
#include <string>
#include <vector>

#include "tipengine/TipEngine.h"

namespace brenvik {

struct TipListValue {
    std::string Hauptschluessel;     // long form
    std::string Unterschluessel;
    std::int32_t Datentyp = 0;
    std::string Wertname;
    std::string Wert;                // text of the panel; empty until the Tip is added a second time
    std::int16_t PanelArt = 0;
    std::string WertAus, WertEin;    // minimum and maximum of a number
    std::string WertInfo;
    std::string Standardwert;
    std::string Werteliste;          // divisor of a number
    std::int16_t TippIndex = 0;      // number of the value's own row
    GatheredValue gathered;       // what the Tip held when it was added last; all but the classic writers use this alone

    std::string pfad() const { return Hauptschluessel + "\\" + Unterschluessel + "\\" + Wertname; }   // for messages
};

struct TippListEintrag {
    std::string Anzahl;              // N: index of the last element of Werte
    std::int16_t TippNr = 0;         // identity of the entry
    std::string Titel;
    bool Geloescht = false;
    std::string Baumpfad;            // its first character is the group's number
    std::string Beschreibung;
    std::vector<TipListValue> Values; // 0..N
};

using TipList = std::vector<TippListEintrag>;

struct ExportLists {
    TipList RegListe, ADMListe;
    bool blnADMListe = false;        // for which of the two the last command was meant
};

// A Tip as an entry, its texts (Wert) empty. The values are parallel to the Tip's entries, [0] unused in both.
TippListEintrag listEntry(const Tipp& tipp, const std::vector<GatheredValue>& values);

// The current text of every value goes into Wert.
void takeTexts(TippListEintrag& entry);

}  // namespace brenvik
