#pragma once
// Texts of the database layer that stand in none of the numbered tables.

namespace brenvik::messages {

inline constexpr char PasswordInvalid[] = "Passwort ungültig";
inline constexpr char MdacError[] = "MDAC Fehler";
inline constexpr char DatabaseAccessImpossible[] = "Fehler: Datenbankzugriff nicht möglich\r\n";

inline constexpr char DatabaseMissing1[] = "Die Datenbankdatei: \"";
inline constexpr char DatabaseMissing2[] = "\" wurde nicht gefunden.\r\n\r\nBitte überprüfen Sie die Installation und starten Sie das Programm neu !";
inline constexpr char DatabaseNotOpened[] = "Datenbank konnte nicht geöffnet werden, das Programm wird beendet.";
inline constexpr char MdacTooOld1[] = "MDAC-Version ab 2.5 wird benötigt. Es ist nur Version: ";
inline constexpr char MdacTooOld2[] = " installiert.\r\n\r\nSie finden MDAC und den Jet-Treiber unter: ";
inline constexpr char MdacTooOld3[] = "\r\n\r\nDas Programm wird beendet.";
inline constexpr char FormatWrong1[] = "Die Datenbankdatei: \"";
inline constexpr char FormatWrong2[] = "\" ist nicht für diese Programmversion geeignet.\r\n\r\nSie benötigen die Version: ";
inline constexpr char FormatWrong3[] = "\r\nSie haben die Version:       ";
inline constexpr char FormatWrong4[] = "Die aktuelle Version finden Sie im Internet unter: ";
inline constexpr char LoadingFailed[] = "Die Datenbank konnte nicht geöffnet werden";
inline constexpr char LoadMdac1[] = "Es ist MDAC in der Version: ";
inline constexpr char LoadMdac2[] = " installiert. Es wird aber MDAC ab Version 2.5 benötigt";
inline constexpr char LadenJet1[] = "MDAC ist in der Version: ";
inline constexpr char LadenJet2[] = " Installiert. Der JET-Provider ist aber nicht installiert";
inline constexpr char DatabaseTooLarge[] = "Die Datenbank ist größer, als das Programm sie liest: {}, erlaubt sind {}.";
inline constexpr char TreeLevels[] = "Der Baum hat {} Ebenen";
inline constexpr char TreeEntries[] = "Der Baum hat zu viele Einträge";
inline constexpr char TableCells[] = "Tabelle {}: zu viele Felder";
inline constexpr char TableTexts[] = "Tabelle {}: zu viel Text in Bytes";
inline constexpr char TextZuLang[] = "{}: ein Text von {} Bytes";
inline constexpr char MoreLines[] = "Tabelle {}, Index {}: Der Tipp hat mehr Zeilen, als in AnzahlWerte stehen";

// Another database in place of the one that is open
inline constexpr char OtherNotOpened[] = "Die Datei \"{}\" wird nicht als Tipp-Datenbank geöffnet.\r\n\r\n{}\r\n\r\nDie bisherige Datenbank bleibt geöffnet.";
inline constexpr char OtherIsMissing[] = "Die Datei wurde nicht gefunden.";
inline constexpr char OtherWithoutVersion[] = "Die Tabelle \"Version\" ist leer.";

}  // namespace brenvik::meldung
