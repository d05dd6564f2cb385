#pragma once
// The tables of the tip database and the ordinals by which their columns are addressed.

namespace brenvik {

inline constexpr const char* DatabaseName = "RegDaten.mdb";   // beside the program

inline constexpr const char* TableVersion = "Version";
inline constexpr const char* TableGruppennamen = "Gruppennamen";
inline constexpr const char* TableTreebaum = "Treebaum";
inline constexpr const char* TableRegDaten = "RegDaten";
inline constexpr const char* TipTables[] = {TableVersion, TableGruppennamen, TableTreebaum, TableRegDaten};

inline constexpr const char* DBFormat = "8";              // format number that this program reads
inline constexpr const char* DBWantedVersion = "1.2.18";  // version that the format belongs to

// Columns of RegDaten. HauptIndex has no fixed place and is reached by name only.
namespace spalte {
enum Spalte : int {
    Index = 0, Gruppen = 1, Hauptschlüssel = 2, Schlüssel = 3, SchlüsselNT = 4, Wertname = 5, Datentyp = 6,
    Ausgabeart = 7, Überschrift = 8, Beschreibung = 10, HilfeNummer = 11, AnzahlWerte = 12, WertEin = 14,
    Anzeigetext = 15, WertAus = 16, Werteliste = 17, Standardwert = 18, TypAnpassen = 19, Symbol = 20, Verweis = 21,
    Win95 = 22, Win98 = 23, WinME = 24, WinNT = 25, Win2000 = 26, NeuInVersion = 27, Neustart = 28, INITipp = 29,
    Beschriftung = 30, WinXP = 31, ADMExport = 32
};
}  // namespace spalte

namespace versionColumn {
enum : int { Version = 0, Datum = 1, Format = 2 };
}
namespace groupColumn {
enum : int { Name = 0, Nummer = 1, Beschreibung = 2 };
}
namespace treeColumn {
enum : int { Nummer = 0, Vorgänger = 1, Ebene = 2, Gruppe = 3 };
}

}  // namespace brenvik
