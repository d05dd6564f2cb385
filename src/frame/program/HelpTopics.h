#pragma once
// Topic numbers of the help file produkt::HelpFile. 6 and 125 are quoted from outside and never change.
namespace brenvik::helpTopic {

inline constexpr int Info = 0, FirstSteps = 1, MainWindow = 2, Speichern = 3, Suchen = 4, History = 5, DebugMode = 6, Favoriten = 7,
                     Export = 8, Sicherung = 9, Network = 10, Optionen = 11, DataTypes = 12, RegistryBrowser = 13, InfoWindows = 14,
                     CommandLine = 15, Database = 16, StatusLines = 17, Keyboard = 18;
inline constexpr int Contents = 100;
inline constexpr int Panelart = 100;      // + Ausgabeart (1 to 11): the page of that panel kind
inline constexpr int General = 125;

}  // namespace brenvik::hilfethema
