#pragma once
// The messages of history, journal and favourites that stand in none of the numbered tables.
#include "tipengine/Messages.h"

namespace brenvik::meldung {

// List files
inline constexpr char ListeOrdnerFehlt1[] = "Auf das Verzeichnis ";
inline constexpr char ListeOrdnerFehlt2[] =
    " kann nicht zugegriffen werden. Geben Sie einen neuen Pfad an, wo die Datei abgelegt werden soll";
inline constexpr char ListeBleibt[] = "Die Liste bleibt in ihrem bisherigen Verzeichnis: ";
inline constexpr char ListeVerknuepfung[] = "Die Datei \"{}\" ist eine Verknüpfung; ihr wird nicht gefolgt.";
inline constexpr char ListeKeinText[] = "Die Datei \"{}\" ist keine ANSI-Textdatei (sie ist in UTF-16 gespeichert).";
inline constexpr char ListeOrdnerWeg[] = "Der Ordner der Datei \"{}\" ist nicht mehr da.";

// History
inline constexpr char HistorySchreiben[] = "Beim schreiben der History ist folgender Fehler aufgetreten:\r\n\r\n";
inline constexpr char HistorySchreibgeschuetzt[] = "Die Datei ist schreibgeschütz !!!";
inline constexpr char UndoAndererRechner[] =
    "Die Änderung wurde auf dem Rechner \"{}\" gemacht. Zurückgesetzt wird auf dem Rechner \"{}\".\r\n\r\nSollen die alten Werte dort geschrieben werden ?";
inline constexpr char UndoUngenau[] =
    "Das Zurücksetzen bringt nicht genau den Zustand vor der Änderung zurück:\r\n\r\n{}\r\nSoll stattdessen genau zurückgesetzt werden ?";
inline constexpr char UndoUngenauOhneJournal[] =
    "Das Zurücksetzen bringt nicht genau den Zustand vor der Änderung zurück:\r\n\r\n{}\r\nDas Änderungsjournal kennt diesen Eintrag nicht, genau "
    "zurücksetzen ist deshalb nicht möglich.";
inline constexpr char UndoTrotzdem[] = "Sollen die Werte trotzdem so geschrieben werden, wie sie in der History stehen ?";
inline constexpr char UndoZeileUngenau[] = "{}\r\n   alter Wert: {}\r\n   geschrieben würde: {}\r\n";
inline constexpr char UndoZeileFehlt[] = "{}\r\n   alter Wert: {}\r\n   steht nicht in der History und bleibt, wie er ist\r\n";
inline constexpr char UndoDateien[] = "Dateien und Schlüssel stehen nicht in der History und bleiben, wie sie sind.\r\n";

// Exact undo
inline constexpr char GenauFertig[] = "Alle Werte stehen wieder genau so da wie vor der Änderung.";
inline constexpr char GenauSchonSo[] = "Es steht schon alles so da wie vor der Änderung, es war nichts zu schreiben.";
inline constexpr char GenauBisAuf[] =
    "Alle Werte stehen wieder genau so da wie vor der Änderung, bis auf {}, die inzwischen geändert wurden und so bleiben sollten.";
inline constexpr char RedoBisAuf[] = "Die zurückgesetzte Änderung wurde wiederhergestellt, bis auf {} Werte, die inzwischen geändert wurden und so bleiben sollten.";
inline constexpr char AllesBleibt[] =
    "Was zu schreiben gewesen wäre, wurde inzwischen geändert und sollte so bleiben. Es wurde nichts geändert, und die Änderung steht weiter in der Liste wie bisher.";
inline constexpr char RedoNichts[] = "Es steht schon alles so da wie vor dem Zurücksetzen, es war nichts wiederherzustellen.";
inline constexpr char RedoFertig[] = "Die zurückgesetzte Änderung wurde wiederhergestellt.";
inline constexpr char RedoFrage[] = "Soll die zurückgesetzte Änderung\r\n\r\n{}\r\n\r\nwiederhergestellt werden ?";
inline constexpr char GenauGescheitert[] = "Genau zurücksetzen ist gescheitert: {}\r\n\r\nEs wurde nichts geändert.";
inline constexpr char GenauHalbGescheitert[] =
    "Genau zurücksetzen ist gescheitert: {}\r\n\r\nDiese Dateien konnten nicht wieder so hingestellt werden, wie sie eben noch waren:\r\n{}";
inline constexpr char RechnerNichtErreichbar[] = "Der Rechner \"{}\" ist nicht erreichbar. Es wurde nichts geändert.";
inline constexpr char AndererRechner[] =
    "Die Änderung wurde auf dem Rechner \"{}\" gemacht, der gerade nicht bearbeitet wird.\r\n\r\nSoll die Verbindung aufgenommen und dort geschrieben werden ?";
inline constexpr char AndererOrdner[] =
    "Die Änderung wurde am Windows im Ordner\r\n\r\n{}\r\n\r\ngemacht, das gerade nicht bearbeitet wird. Soll dort geschrieben werden ?";
inline constexpr char DateiNichtAufLaufwerk[] =
    "Die Datei \"{}\" liegt auf keinem Laufwerk des Rechners, auf dem die Änderung gemacht wurde. Sie wird weder gelesen noch geschrieben.";
inline constexpr char VonAnderen[] = "von anderer Seite";
inline constexpr char EigeneAenderung[] = "durch die Änderung {} vom {} ({})";
inline constexpr char NurGenau[] = "Diese Änderung steht nicht in der History, sie kann nur genau zurückgesetzt werden.";
inline constexpr char NichtImJournal[] = "Das Änderungsjournal kennt die Werte dieses Eintrags nicht, genau zurücksetzen ist nicht möglich.";
inline constexpr char DriftAenderung[] = "Änderung {}";
inline constexpr char AndererSetztZurueck[] = "Ein anderes Brenvik schreibt gerade eine Änderung oder nimmt eine zurück und ist damit noch nicht fertig. Bitte versuchen Sie es gleich noch einmal.";
inline constexpr char SchonZurueck[] = "Diese Änderung ist schon zurückgesetzt.";
inline constexpr char NichtZurueck[] = "Diese Änderung wurde nicht zurückgesetzt, es gibt nichts wiederherzustellen.";
inline constexpr char KeinSolcherEintrag[] = "Den Eintrag {} gibt es nicht.";
inline constexpr char ZuruecknehmenFrage[] = "Sollen die schon geschriebenen Werte wieder auf den Stand vor dem Speichern gebracht werden ?";
inline constexpr char DateiSchreibschutz[] = "Die Datei {} ist schreibgeschützt. Soll der Schreibschutz zum Zurücksetzen kurz aufgehoben werden ?";
inline constexpr char NichtVorhanden[] = "(nicht vorhanden)";

// Interrupted changes, and what was set
inline constexpr char NachgetragenZurueck[] = "Das Zurücksetzen der Änderung {} wurde unterbrochen und ist jetzt nachgetragen.";
inline constexpr char NachgetragenWieder[] = "Das Wiederherstellen der Änderung {} wurde unterbrochen und ist jetzt nachgetragen.";
inline constexpr char NachgetragenZeilen[] = "Die History wurde mit dem Änderungsjournal abgeglichen: {} Zeilen heraus, {} hinein.";
inline constexpr char DriftNichtVerbunden[] = "der Rechner \"{}\" wird gerade nicht bearbeitet";
inline constexpr char DriftUnlesbar[] = "die Datei kann nicht gelesen werden";

// Conflicts
inline constexpr char KonfliktTitel[] = "Zurücksetzen";
inline constexpr char KonfliktInfo[] =
    "Diese Werte wurden seit der Änderung noch einmal geändert. Angehakte werden überschrieben, die anderen bleiben, wie sie jetzt sind.";
inline constexpr char KonfliktWeiter[] = "&Zurücksetzen";
inline constexpr char KonfliktAbbruch[] = "&Abbrechen";

// Journal
inline constexpr char JournalFehler[] =
    "Das Änderungsjournal \"{}\" {}\r\n\r\nÄnderungen aus dieser Sitzung können nicht genau zurückgesetzt werden.";
inline constexpr char JournalKeines[] = "ist kein Änderungsjournal dieses Programms. Benennen Sie die Datei um, dann wird ein neues angelegt.";
inline constexpr char JournalNeuer[] = "stammt von einer neueren Version des Programms.";
inline constexpr char JournalVoll[] = "kann nicht geschrieben werden, weil der Datenträger voll ist.";
inline constexpr char JournalRechte[] = "kann nicht geöffnet oder geschrieben werden. Prüfen Sie die Rechte der Datei und ihres Ordners.";
inline constexpr char JournalGesperrt[] = "wird von einem anderen Programm gesperrt.";
inline constexpr char JournalZuLang[] =
    "Die Änderung {} hält im Änderungsjournal mehr als 64 MiB an einer Stelle. So etwas schreibt das Programm nicht; sie kann nicht gelesen und nicht genau zurückgesetzt werden.";
inline constexpr char JournalSonst[] = "kann nicht benutzt werden ({}).";

// Windows
inline constexpr char GenauKnopf[] = "&Genau zurücksetzen";
inline constexpr char WiederherstellenKnopf[] = "&Wiederherstellen...";
inline constexpr char VergessenAnzahl[] =
    "Änderungen, die endgültig aus History und Änderungsjournal entfernt werden und dann nicht mehr zurückgesetzt werden können: {}. Sollen sie vergessen werden ?";
inline constexpr char VergessenKnopf[] = "&Vergessen...";
inline constexpr char VergessenFrage[] =
    "Die Änderung\r\n\r\n{}\r\n\r\nwird mit allen alten und neuen Werten endgültig aus History und Änderungsjournal entfernt. Sie kann dann nicht mehr "
    "zurückgesetzt werden; an der Registry ändert sich nichts.\r\n\r\nSoll sie vergessen werden ?";
inline constexpr char AnderswoGelesen[] =
    "Die Änderung wurde auf dem Rechner \"{}\" gemacht; die aktuellen Werte sind die des Rechners \"{}\".";
inline constexpr char UnbenannterWert[] = "(Standard)";

// Favourites
inline constexpr char FavSpeichern[] = "Beim speichern der Favoriten ist folgender Fehler aufgetreten:";
inline constexpr char FavUnbekannt[] = "Unbekannter Eintrag";
inline constexpr char FavKeinAnsi[] = "Die Überschrift enthält Zeichen, die in der Favoritenliste nicht stehen können.";

}  // namespace brenvik::meldung
