#pragma once
// Topic numbers of the help file produkt::HilfeDatei. 6 and 125 are quoted from outside and never change.
namespace brenvik::hilfethema {

inline constexpr int Info = 0, ErsteSchritte = 1, Hauptfenster = 2, Speichern = 3, Suchen = 4, History = 5, DebugModus = 6, Favoriten = 7,
                     Export = 8, Sicherung = 9, Netzwerk = 10, Optionen = 11, Datentypen = 12, RegistryBrowser = 13, Infofenster = 14,
                     Befehlszeile = 15, Datenbank = 16, Statuszeilen = 17, Tastatur = 18;
inline constexpr int Inhalt = 100;
inline constexpr int Panelart = 100;      // + Ausgabeart (1 to 11): the page of that panel kind
inline constexpr int Allgemein = 125;

}  // namespace brenvik::hilfethema
