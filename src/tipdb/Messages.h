#pragma once
// Texts of the database layer that stand in none of the numbered tables.

namespace brenvik::meldung {

inline constexpr char PasswortUngueltig[] = "Passwort ungültig";
inline constexpr char MdacFehler[] = "MDAC Fehler";
inline constexpr char DatenbankzugriffNichtMoeglich[] = "Fehler: Datenbankzugriff nicht möglich\r\n";

inline constexpr char DatenbankFehlt1[] = "Die Datenbankdatei: \"";
inline constexpr char DatenbankFehlt2[] = "\" wurde nicht gefunden.\r\n\r\nBitte überprüfen Sie die Installation und starten Sie das Programm neu !";
inline constexpr char DatenbankNichtGeoeffnet[] = "Datenbank konnte nicht geöffnet werden, das Programm wird beendet.";
inline constexpr char MdacZuAlt1[] = "MDAC-Version ab 2.5 wird benötigt. Es ist nur Version: ";
inline constexpr char MdacZuAlt2[] = " installiert.\r\n\r\nSie finden MDAC und den Jet-Treiber unter: ";
inline constexpr char MdacZuAlt3[] = "\r\n\r\nDas Programm wird beendet.";
inline constexpr char FormatFalsch1[] = "Die Datenbankdatei: \"";
inline constexpr char FormatFalsch2[] = "\" ist nicht für diese Programmversion geeignet.\r\n\r\nSie benötigen die Version: ";
inline constexpr char FormatFalsch3[] = "\r\nSie haben die Version:       ";
inline constexpr char FormatFalsch4[] = "Die aktuelle Version finden Sie im Internet unter: ";
inline constexpr char LadenFehlgeschlagen[] = "Die Datenbank konnte nicht geöffnet werden";
inline constexpr char LadenMdac1[] = "Es ist MDAC in der Version: ";
inline constexpr char LadenMdac2[] = " installiert. Es wird aber MDAC ab Version 2.5 benötigt";
inline constexpr char LadenJet1[] = "MDAC ist in der Version: ";
inline constexpr char LadenJet2[] = " Installiert. Der JET-Provider ist aber nicht installiert";
inline constexpr char DatenbankZuGross[] = "Die Datenbank ist größer, als das Programm sie liest: {}, erlaubt sind {}.";
inline constexpr char BaumEbenen[] = "Der Baum hat {} Ebenen";
inline constexpr char BaumEintraege[] = "Der Baum hat zu viele Einträge";
inline constexpr char TabellenZellen[] = "Tabelle {}: zu viele Felder";
inline constexpr char TabellenTexte[] = "Tabelle {}: zu viel Text in Bytes";
inline constexpr char TextZuLang[] = "{}: ein Text von {} Bytes";
inline constexpr char MehrZeilen[] = "Tabelle {}, Index {}: Der Tipp hat mehr Zeilen, als in AnzahlWerte stehen";

// Another database in place of the one that is open
inline constexpr char AndereNichtGeoeffnet[] = "Die Datei \"{}\" wird nicht als Tipp-Datenbank geöffnet.\r\n\r\n{}\r\n\r\nDie bisherige Datenbank bleibt geöffnet.";
inline constexpr char AndereFehlt[] = "Die Datei wurde nicht gefunden.";
inline constexpr char AndereOhneVersion[] = "Die Tabelle \"Version\" ist leer.";

}  // namespace brenvik::meldung
