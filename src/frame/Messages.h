#pragma once
// Texts for the user that stand in none of the numbered tables, by name (UTF-8). Where a message is put together at
// run time the pieces are numbered in their order. Each room adds its own group.
namespace brenvik::messages {

// Reports and small helpers
inline constexpr char ToClipboard[] = "Wollen Sie diese Fehlermeldung in die Zwischenablage kopieren?";
inline constexpr char ChooseFolder[] = "Verzeichnis auswählen:";
inline constexpr char UnknownOperatingSystem[] = "Unbekanntes Betriebssystem";
inline constexpr char KeyTooLong[] = "Die maximale Länge beträgt 16 Zeichen.";

// Start password
inline constexpr char StartPasswordDamaged[] =
    "Das gespeicherte Startkennwort ist beschädigt: Kein Kennwort kann mehr richtig sein.\r\n\r\n"
    "Wie die Abfrage zurückgesetzt wird, steht in der Hilfe unter \"Optionen\", \"Kennwort\".";
inline constexpr char PasswordCharacters[] =
    "Das Kennwort enthält Zeichen, die hier nicht gespeichert werden können, die Einstellung wurde nicht übernommen.\r\n\r\n"
    "Möglich sind die Zeichen der westeuropäischen Windows-Zeichentabelle (Windows-1252).";

// Main window at start
inline constexpr char MoreInfos[] = "Weitere Infos zum Tipp";
inline constexpr char Information[] = "Informationen";

// End of the session
inline constexpr char LogOnAgain[] = "Damit die Einstellungen aktiv werden müssen Sie sich neu anmelden, sollen Sie abgemeldet werden ?";
inline constexpr char SessionStays[] = "Brenvik läuft hier nicht unter Windows: Die Sitzung an diesem Rechner bleibt bestehen.";
inline constexpr char SessionNotEnded[] =
    "Die Sitzung an diesem Rechner wird nicht beendet, denn Brenvik läuft hier nicht unter Windows. Melden Sie sich an dem Windows neu an, "
    "dessen Registry Sie geändert haben.";

// Start
inline constexpr char ServiceMissing1[] = "Die Datei: ";
inline constexpr char ServiceMissing2[] = "\\BVKREG.DLL ist nicht vorhanden oder konnte nicht Registriert werden. Das Programm wird beendet!";
inline constexpr char LogMissing[] =
    "Das Protokoll brenvik.log kann nicht geschrieben werden, das Programm arbeitet ohne es weiter.\r\n\r\nBitte prüfen Sie die Rechte in diesem "
    "Verzeichnis, in dem auch die Einstellungen liegen: ";
inline constexpr char FirstHangs[] =
    "Brenvik läuft bereits, antwortet aber nicht. Warten Sie einen Augenblick und starten Sie es dann noch einmal, oder beenden Sie das "
    "hängende Programm.";

inline constexpr char ReadOnly1[] = "Das Programm kann nicht alles speichern.\r\n\r\n";
inline constexpr char HomeOnlyShown[] =
    "Gezeigt wird, was ein neues Heim enthielte; gespeichert wird nichts. Mit --home geben Sie einen anderen Ordner an.";
inline constexpr char DriveIncomplete1[] = "Ein unterbrochener erster Start hat dem Laufwerk C: dieses Heims nicht alle Dateien mitgegeben. Es fehlen:\r\n";
inline constexpr char DriveIncomplete2[] = "\r\n\r\nSollen sie angelegt werden? Vorhandene Dateien bleiben, wie sie sind.";
inline constexpr char NoLog[] =
    "Es gibt noch kein Protokoll. Geführt wird es, wenn das Programm mit dem Parameter /DEBUG gestartet wird.";

// Tools of the system
inline constexpr char ProgramStart1[] = "Programm \"";
inline constexpr char ProgramStart2[] = "\" konnte nicht gestartet werden!";

// Profile files
inline constexpr char IniSaved[] = "Änderungen wurden erfolgreich gespeichert";
inline constexpr char IniZuLang1[] = "Es können nicht mehr als ";
inline constexpr char IniZuLang2[] = " zeichen gespeichrt werden.";
inline constexpr char IniNothingToDelete[] = "Es ist nichts zum löschen angegeben worden.";
inline constexpr char IniWriteProtected[] = "Eintrag konnte nicht geschrieben werden, die Datei ist schreibgeschützt";

// Files of the machine worked on
inline constexpr char InvalidFileName[] = "Ungültiger Dateiname";
inline constexpr char NetworkPathNotReachable[] = "Netzwerkpfade sind hier nicht erreichbar: ";
inline constexpr char DriveNotReachable[] = "Das Laufwerk {}: des Rechners ist hier nicht erreichbar.";
inline constexpr char LinkLeadsOut[] = "Die Verknüpfung \"{}\" führt aus dem Laufwerk hinaus oder ins Leere; ihr wird nicht gefolgt.";
inline constexpr char NoFiles[] = "Die Dateien des Rechners \"{}\" sind von hier aus nicht erreichbar, nur seine Registry.";

// Looking for a file
inline constexpr char FileSearch1[] = "Die Datei ";
inline constexpr char FileSearch2[] = " konnte nicht gefunden werden. Wollen Sie die Datei suchen ?";
inline constexpr char FileSearchTitle[] = "Suchen Sie die Datei:";


}  // namespace brenvik::meldung
