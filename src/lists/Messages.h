#pragma once
// The messages of history, journal and favourites that stand in none of the numbered tables.
#include "tipengine/Messages.h"

namespace brenvik::messages {

// List files
inline constexpr char ListFolderMissing1[] = "Auf das Verzeichnis ";
inline constexpr char ListFolderMissing2[] =
    " kann nicht zugegriffen werden. Geben Sie einen neuen Pfad an, wo die Datei abgelegt werden soll";
inline constexpr char ListStays[] = "Die Liste bleibt in ihrem bisherigen Verzeichnis: ";
inline constexpr char ListeVerknuepfung[] = "Die Datei \"{}\" ist eine Verknüpfung; ihr wird nicht gefolgt.";
inline constexpr char ListNoText[] = "Die Datei \"{}\" ist keine ANSI-Textdatei (sie ist in UTF-16 gespeichert).";
inline constexpr char ListFolderGone[] = "Der Ordner der Datei \"{}\" ist nicht mehr da.";

// History
inline constexpr char HistoryWriting[] = "Beim schreiben der History ist folgender Fehler aufgetreten:\r\n\r\n";
inline constexpr char HistoryWriteProtected[] = "Die Datei ist schreibgeschütz !!!";
inline constexpr char UndoOtherMachine[] =
    "Die Änderung wurde auf dem Rechner \"{}\" gemacht. Zurückgesetzt wird auf dem Rechner \"{}\".\r\n\r\nSollen die alten Werte dort geschrieben werden ?";
inline constexpr char UndoInexact[] =
    "Das Zurücksetzen bringt nicht genau den Zustand vor der Änderung zurück:\r\n\r\n{}\r\nSoll stattdessen genau zurückgesetzt werden ?";
inline constexpr char UndoInexactNoJournal[] =
    "Das Zurücksetzen bringt nicht genau den Zustand vor der Änderung zurück:\r\n\r\n{}\r\nDas Änderungsjournal kennt diesen Eintrag nicht, genau "
    "zurücksetzen ist deshalb nicht möglich.";
inline constexpr char UndoAnyway[] = "Sollen die Werte trotzdem so geschrieben werden, wie sie in der History stehen ?";
inline constexpr char UndoLineInexact[] = "{}\r\n   alter Wert: {}\r\n   geschrieben würde: {}\r\n";
inline constexpr char UndoLineMissing[] = "{}\r\n   alter Wert: {}\r\n   steht nicht in der History und bleibt, wie er ist\r\n";
inline constexpr char UndoFiles[] = "Dateien und Schlüssel stehen nicht in der History und bleiben, wie sie sind.\r\n";

// Exact undo
inline constexpr char ExactDone[] = "Alle Werte stehen wieder genau so da wie vor der Änderung.";
inline constexpr char ExactAlready[] = "Es steht schon alles so da wie vor der Änderung, es war nichts zu schreiben.";
inline constexpr char ExactExceptFor[] =
    "Alle Werte stehen wieder genau so da wie vor der Änderung, bis auf {}, die inzwischen geändert wurden und so bleiben sollten.";
inline constexpr char RedoExceptFor[] = "Die zurückgesetzte Änderung wurde wiederhergestellt, bis auf {} Werte, die inzwischen geändert wurden und so bleiben sollten.";
inline constexpr char AllesBleibt[] =
    "Was zu schreiben gewesen wäre, wurde inzwischen geändert und sollte so bleiben. Es wurde nichts geändert, und die Änderung steht weiter in der Liste wie bisher.";
inline constexpr char RedoNothing[] = "Es steht schon alles so da wie vor dem Zurücksetzen, es war nichts wiederherzustellen.";
inline constexpr char RedoDone[] = "Die zurückgesetzte Änderung wurde wiederhergestellt.";
inline constexpr char RedoQuestion[] = "Soll die zurückgesetzte Änderung\r\n\r\n{}\r\n\r\nwiederhergestellt werden ?";
inline constexpr char ExactFailed[] = "Genau zurücksetzen ist gescheitert: {}\r\n\r\nEs wurde nichts geändert.";
inline constexpr char ExactHalfFailed[] =
    "Genau zurücksetzen ist gescheitert: {}\r\n\r\nDiese Dateien konnten nicht wieder so hingestellt werden, wie sie eben noch waren:\r\n{}";
inline constexpr char MachineNotReachable[] = "Der Rechner \"{}\" ist nicht erreichbar. Es wurde nichts geändert.";
inline constexpr char OtherMachine[] =
    "Die Änderung wurde auf dem Rechner \"{}\" gemacht, der gerade nicht bearbeitet wird.\r\n\r\nSoll die Verbindung aufgenommen und dort geschrieben werden ?";
inline constexpr char OtherFolder[] =
    "Die Änderung wurde am Windows im Ordner\r\n\r\n{}\r\n\r\ngemacht, das gerade nicht bearbeitet wird. Soll dort geschrieben werden ?";
inline constexpr char FileNotOnDrive[] =
    "Die Datei \"{}\" liegt auf keinem Laufwerk des Rechners, auf dem die Änderung gemacht wurde. Sie wird weder gelesen noch geschrieben.";
inline constexpr char ByOthers[] = "von anderer Seite";
inline constexpr char OwnChange[] = "durch die Änderung {} vom {} ({})";
inline constexpr char OnlyExact[] = "Diese Änderung steht nicht in der History, sie kann nur genau zurückgesetzt werden.";
inline constexpr char NotInJournal[] = "Das Änderungsjournal kennt die Werte dieses Eintrags nicht, genau zurücksetzen ist nicht möglich.";
inline constexpr char DriftChange[] = "Änderung {}";
inline constexpr char AnotherUndoes[] = "Ein anderes Brenvik schreibt gerade eine Änderung oder nimmt eine zurück und ist damit noch nicht fertig. Bitte versuchen Sie es gleich noch einmal.";
inline constexpr char AlreadyUndone[] = "Diese Änderung ist schon zurückgesetzt.";
inline constexpr char NotUndoable[] = "Diese Änderung wurde nicht zurückgesetzt, es gibt nichts wiederherzustellen.";
inline constexpr char NoSuchEntry[] = "Den Eintrag {} gibt es nicht.";
inline constexpr char UndoQuestion[] = "Sollen die schon geschriebenen Werte wieder auf den Stand vor dem Speichern gebracht werden ?";
inline constexpr char FileWriteProtection[] = "Die Datei {} ist schreibgeschützt. Soll der Schreibschutz zum Zurücksetzen kurz aufgehoben werden ?";
inline constexpr char NotThere[] = "(nicht vorhanden)";

// Interrupted changes, and what was set
inline constexpr char LateUndo[] = "Das Zurücksetzen der Änderung {} wurde unterbrochen und ist jetzt nachgetragen.";
inline constexpr char LateRedo[] = "Das Wiederherstellen der Änderung {} wurde unterbrochen und ist jetzt nachgetragen.";
inline constexpr char LateLines[] = "Die History wurde mit dem Änderungsjournal abgeglichen: {} Zeilen heraus, {} hinein.";
inline constexpr char DriftNotConnected[] = "der Rechner \"{}\" wird gerade nicht bearbeitet";
inline constexpr char DriftUnreadable[] = "die Datei kann nicht gelesen werden";

// Conflicts
inline constexpr char ConflictTitle[] = "Zurücksetzen";
inline constexpr char ConflictInfo[] =
    "Diese Werte wurden seit der Änderung noch einmal geändert. Angehakte werden überschrieben, die anderen bleiben, wie sie jetzt sind.";
inline constexpr char ConflictGoOn[] = "&Zurücksetzen";
inline constexpr char ConflictAbort[] = "&Abbrechen";

// Journal
inline constexpr char JournalError[] =
    "Das Änderungsjournal \"{}\" {}\r\n\r\nÄnderungen aus dieser Sitzung können nicht genau zurückgesetzt werden.";
inline constexpr char JournalNone[] = "ist kein Änderungsjournal dieses Programms. Benennen Sie die Datei um, dann wird ein neues angelegt.";
inline constexpr char JournalNewer[] = "stammt von einer neueren Version des Programms.";
inline constexpr char JournalFull[] = "kann nicht geschrieben werden, weil der Datenträger voll ist.";
inline constexpr char JournalRights[] = "kann nicht geöffnet oder geschrieben werden. Prüfen Sie die Rechte der Datei und ihres Ordners.";
inline constexpr char JournalLocked[] = "wird von einem anderen Programm gesperrt.";
inline constexpr char JournalZuLang[] =
    "Die Änderung {} hält im Änderungsjournal mehr als 64 MiB an einer Stelle. So etwas schreibt das Programm nicht; sie kann nicht gelesen und nicht genau zurückgesetzt werden.";
inline constexpr char JournalElse[] = "kann nicht benutzt werden ({}).";

// Windows
inline constexpr char ExactButton[] = "&Genau zurücksetzen";
inline constexpr char RestoreButton[] = "&Wiederherstellen...";
inline constexpr char ForgetCount[] =
    "Änderungen, die endgültig aus History und Änderungsjournal entfernt werden und dann nicht mehr zurückgesetzt werden können: {}. Sollen sie vergessen werden ?";
inline constexpr char ForgetButton[] = "&Vergessen...";
inline constexpr char ForgetQuestion[] =
    "Die Änderung\r\n\r\n{}\r\n\r\nwird mit allen alten und neuen Werten endgültig aus History und Änderungsjournal entfernt. Sie kann dann nicht mehr "
    "zurückgesetzt werden; an der Registry ändert sich nichts.\r\n\r\nSoll sie vergessen werden ?";
inline constexpr char ReadElsewhere[] =
    "Die Änderung wurde auf dem Rechner \"{}\" gemacht; die aktuellen Werte sind die des Rechners \"{}\".";
inline constexpr char UnnamedValue[] = "(Standard)";

// Favourites
inline constexpr char FavSave[] = "Beim speichern der Favoriten ist folgender Fehler aufgetreten:";
inline constexpr char FavUnknown[] = "Unbekannter Eintrag";
inline constexpr char FavNoAnsi[] = "Die Überschrift enthält Zeichen, die in der Favoritenliste nicht stehen können.";

}  // namespace brenvik::meldung
