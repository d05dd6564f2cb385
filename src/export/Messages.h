#pragma once
// The messages of this room that stand in none of the numbered tables.

namespace brenvik::messages {

inline constexpr char RegFileFilter[] = "REG-File (*.REG)|*.REG";
inline constexpr char AdmFileFilter[] = "ADM-File (*.ADM)|*.ADM";
inline constexpr char AdmFileTitle[] = "ADM-Datei";
inline constexpr char AdmMade1[] = "ADM-Datei: ";
inline constexpr char AdmMade2[] = " wurde erstellt";

// The second box
inline constexpr char CharactersReplaced[] = "Zeichen, die es in diesem Format nicht gibt: {}. In der Datei steht dafür ein Fragezeichen.";
inline constexpr char ArrivesChanged[] =
    "Klassisches Format: Beim Einlesen dieser Datei in eine Registry kommen Werte anders an, als sie hier stehen. Anzahl: {}.\r\n\r\n{}\r\n"
    "Richtig überträgt alle Werte das Format \"Geprüftes Format\"{}.";
inline constexpr char AdmCannotSay[] =
    "Diese Werte kann eine ADM-Datei nicht oder nicht so setzen, wie es der Tipp tut. Anzahl: {}.\r\n\r\n{}";
inline constexpr char RoadWindow[] = " (zu wählen im Menü Extras, Optionen)";
inline constexpr char RoadCommandLine[] = " (mit --checked)";
inline constexpr char NoValues[] = "Die Datei enthält keine Werte, denn in der Registry steht keiner und es wurde keiner gesetzt.";

// Why there is no file
inline constexpr char BreaksLines[] =
    "Die Datei wurde nicht geschrieben. Ein Name oder ein Text dieser Werte enthält Zeilenenden, hinter denen in diesem Format andere "
    "Einträge beginnen würden:\r\n\r\n{}";
inline constexpr char NotShowable[] = "Die Datei wurde nicht geschrieben. Diese Werte lassen sich in diesem Format nicht darstellen:\r\n\r\n{}";
inline constexpr char NotAsMeant[] = "Die Datei wurde nicht geschrieben, denn beim Nachlesen stand etwas anderes darin, als gemeint war:\r\n\r\n{}";

// Lists as files
inline constexpr char ListenFilter[] = "Brenvik-Liste (*.toml)|*.toml|Alle Dateien|*.*";
inline constexpr char ListSaveTitle[] = "Liste speichern";
inline constexpr char ListLoadTitle[] = "Liste laden";
inline constexpr char ListSaved1[] = "Die Liste wurde unter: ";
inline constexpr char ToRegList[] = "Zur REG-Liste hinzugefügt";
inline constexpr char ToAdmList[] = "Zur ADM-Liste hinzugefügt";
inline constexpr char InRegListNew[] = "In der REG-Liste stehen jetzt die neuen Werte";
inline constexpr char InAdmListNew[] = "Steht schon in der ADM-Liste";
inline constexpr char ListMessage[] = "Index: {}  |  {} (Tipps darin: {})";
inline constexpr char ListNotLoaded[] = "Die Liste wurde nicht geladen:\r\n\r\n{}";
inline constexpr char SavedWithoutValues[] = "Ohne Wert in der Liste: {}. Beim Anwenden bleibt dort alles, wie es ist.\r\n\r\n{}";
inline constexpr char AndMore[] = "... und {} weitere";

inline constexpr char NoTOML[] = "Zeile {}: Die Datei ist keine gültige TOML-Datei ({})";
inline constexpr char WrongFormat[] = "Das ist keine Liste dieses Programms (erwartet wird format = 1)";
inline constexpr char UnknownField[] = "Zeile {}: Das Feld \"{}\" ist unbekannt";
inline constexpr char FieldExpected[] = "Zeile {}: \"{}\" fehlt oder ist nicht {}";
inline constexpr char DuplicateTip[] = "Zeile {}: Der Tipp {} kommt mehrmals vor";
inline constexpr char DuplicateValue[] = "Zeile {}: Der Wert \"{}\" kommt mehrmals vor";
inline constexpr char ValueOrDeleted[] = "Zeile {}: Zu einem Wert gehört genau eines von wert, bytes und geloescht";
inline constexpr char ValueDoesNotFit[] = "Zeile {}: {}";
inline constexpr char TipUnknown[] = "Zeile {}: Den Tipp {} gibt es in der Datenbank nicht";
inline constexpr char TipIsINI[] = "Zeile {}: Die Werte des Tipps {} stehen in einer Datei, nicht in der Registry";
inline constexpr char ValueUnknown[] = "Zeile {}: Der Tipp {} hat keinen Wert {} mit dem Namen \"{}\"";
inline constexpr char TypeUnfit[] = "Zeile {}: Der Wert \"{}\" des Tipps {} hat einen anderen Datentyp";
inline constexpr char TipNotSuitable[] = "Der Tipp {} ist für dieses Betriebssystem nicht geeignet: {}";

}  // namespace brenvik::meldung
