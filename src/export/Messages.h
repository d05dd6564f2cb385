#pragma once
// The messages of this room that stand in none of the numbered tables.

namespace brenvik::meldung {

inline constexpr char RegDateiFilter[] = "REG-File (*.REG)|*.REG";
inline constexpr char AdmDateiFilter[] = "ADM-File (*.ADM)|*.ADM";
inline constexpr char AdmDateiTitel[] = "ADM-Datei";
inline constexpr char AdmErstellt1[] = "ADM-Datei: ";
inline constexpr char AdmErstellt2[] = " wurde erstellt";

// The second box
inline constexpr char ZeichenErsetzt[] = "Zeichen, die es in diesem Format nicht gibt: {}. In der Datei steht dafür ein Fragezeichen.";
inline constexpr char KommtAndersAn[] =
    "Klassisches Format: Beim Einlesen dieser Datei in eine Registry kommen Werte anders an, als sie hier stehen. Anzahl: {}.\r\n\r\n{}\r\n"
    "Richtig überträgt alle Werte das Format \"Geprüftes Format\"{}.";
inline constexpr char AdmSagtNicht[] =
    "Diese Werte kann eine ADM-Datei nicht oder nicht so setzen, wie es der Tipp tut. Anzahl: {}.\r\n\r\n{}";
inline constexpr char WegFenster[] = " (zu wählen im Menü Extras, Optionen)";
inline constexpr char WegBefehlszeile[] = " (mit --checked)";
inline constexpr char KeineWerte[] = "Die Datei enthält keine Werte, denn in der Registry steht keiner und es wurde keiner gesetzt.";

// Why there is no file
inline constexpr char BrichtZeilen[] =
    "Die Datei wurde nicht geschrieben. Ein Name oder ein Text dieser Werte enthält Zeilenenden, hinter denen in diesem Format andere "
    "Einträge beginnen würden:\r\n\r\n{}";
inline constexpr char NichtDarstellbar[] = "Die Datei wurde nicht geschrieben. Diese Werte lassen sich in diesem Format nicht darstellen:\r\n\r\n{}";
inline constexpr char NichtWieGemeint[] = "Die Datei wurde nicht geschrieben, denn beim Nachlesen stand etwas anderes darin, als gemeint war:\r\n\r\n{}";

// Lists as files
inline constexpr char ListenFilter[] = "Brenvik-Liste (*.toml)|*.toml|Alle Dateien|*.*";
inline constexpr char ListeSpeichernTitel[] = "Liste speichern";
inline constexpr char ListeLadenTitel[] = "Liste laden";
inline constexpr char ListeGespeichert1[] = "Die Liste wurde unter: ";
inline constexpr char ZurRegListe[] = "Zur REG-Liste hinzugefügt";
inline constexpr char ZurAdmListe[] = "Zur ADM-Liste hinzugefügt";
inline constexpr char InRegListeNeu[] = "In der REG-Liste stehen jetzt die neuen Werte";
inline constexpr char InAdmListeNeu[] = "Steht schon in der ADM-Liste";
inline constexpr char ListenMeldung[] = "Index: {}  |  {} (Tipps darin: {})";
inline constexpr char ListeNichtGeladen[] = "Die Liste wurde nicht geladen:\r\n\r\n{}";
inline constexpr char OhneWerteGespeichert[] = "Ohne Wert in der Liste: {}. Beim Anwenden bleibt dort alles, wie es ist.\r\n\r\n{}";
inline constexpr char UndWeitere[] = "... und {} weitere";

inline constexpr char KeinTOML[] = "Zeile {}: Die Datei ist keine gültige TOML-Datei ({})";
inline constexpr char FalschesFormat[] = "Das ist keine Liste dieses Programms (erwartet wird format = 1)";
inline constexpr char UnbekanntesFeld[] = "Zeile {}: Das Feld \"{}\" ist unbekannt";
inline constexpr char FeldErwartet[] = "Zeile {}: \"{}\" fehlt oder ist nicht {}";
inline constexpr char DoppelterTipp[] = "Zeile {}: Der Tipp {} kommt mehrmals vor";
inline constexpr char DoppelterWert[] = "Zeile {}: Der Wert \"{}\" kommt mehrmals vor";
inline constexpr char WertOderGeloescht[] = "Zeile {}: Zu einem Wert gehört genau eines von wert, bytes und geloescht";
inline constexpr char WertPasstNicht[] = "Zeile {}: {}";
inline constexpr char TippUnbekannt[] = "Zeile {}: Den Tipp {} gibt es in der Datenbank nicht";
inline constexpr char TippIstINI[] = "Zeile {}: Die Werte des Tipps {} stehen in einer Datei, nicht in der Registry";
inline constexpr char WertUnbekannt[] = "Zeile {}: Der Tipp {} hat keinen Wert {} mit dem Namen \"{}\"";
inline constexpr char TypUnpassend[] = "Zeile {}: Der Wert \"{}\" des Tipps {} hat einen anderen Datentyp";
inline constexpr char TippNichtGeeignet[] = "Der Tipp {} ist für dieses Betriebssystem nicht geeignet: {}";

}  // namespace brenvik::meldung
