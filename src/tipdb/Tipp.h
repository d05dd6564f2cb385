#pragma once
// The record of one Tip, as read from the database. Entries are counted from 1 to AnzahlWerte + 1; element 0 stays empty.
#include <cstdint>
#include <string>
#include <vector>

namespace brenvik {

struct TipEntry {
    std::int16_t TippIndex = 0;      // Index of the entry's row
    std::string Hauptschlüssel;      // long form ("HKEY_CURRENT_USER"), empty if the column held no known root
    std::string Schlüssel;
    std::string SchlüsselNT;
    std::string Wertname;
    std::int32_t Datentyp = 0;
    std::int16_t Ausgabeart = 0;     // panel kind 1 to 11
    std::string WertAus;             // off value or minimum
    std::string WertEin;             // on value or maximum
    std::string Anzeigetext;         // caption, or captions separated by "#"
    std::string Werteliste;
    std::string Standardwert;
    std::uint8_t TypAnpassen = 0;
    std::string Beschriftung;
};

struct Tipp {
    std::string Gruppen;
    std::string Überschrift;
    std::string Beschreibung;
    std::int32_t HilfeNummer = 0;
    std::uint8_t AnzahlWerte = 0;
    bool Win95 = false, Win98 = false, WinME = false, WinNT = false, Win2000 = false, WinXP = false;
    std::uint8_t Neustart = 0;
    bool INITipp = false;
    std::string NeuInVersion;
    std::int16_t Symbol = 0;
    bool ADMExport = false;
    std::vector<TipEntry> Eintrag;   // [0] unused

    std::size_t lastEntry() const { return Eintrag.empty() ? 0 : Eintrag.size() - 1; }
};

}  // namespace brenvik
