#pragma once
// Texts for the user that stand in none of the numbered tables, by name (UTF-8). Where a message is put together at
// run time the pieces are numbered in their order. Each room adds its own group.
namespace brenvik::meldung {

// Reports and small helpers
inline constexpr char InZwischenablage[] = "Wollen Sie diese Fehlermeldung in die Zwischenablage kopieren?";
inline constexpr char VerzeichnisAuswaehlen[] = "Verzeichnis auswählen:";
inline constexpr char UnbekanntesBetriebssystem[] = "Unbekanntes Betriebssystem";
inline constexpr char SchluesselZuLang[] = "Die maximale Länge beträgt 16 Zeichen.";

// Start password
inline constexpr char StartkennwortBeschaedigt[] =
    "Das gespeicherte Startkennwort ist beschädigt: Kein Kennwort kann mehr richtig sein.\r\n\r\n"
    "Wie die Abfrage zurückgesetzt wird, steht in der Hilfe unter \"Optionen\", \"Kennwort\".";
inline constexpr char KennwortZeichen[] =
    "Das Kennwort enthält Zeichen, die hier nicht gespeichert werden können, die Einstellung wurde nicht übernommen.\r\n\r\n"
    "Möglich sind die Zeichen der westeuropäischen Windows-Zeichentabelle (Windows-1252).";

// Main window at start
inline constexpr char WeitereInfos[] = "Weitere Infos zum Tipp";
inline constexpr char Informationen[] = "Informationen";

// End of the session
inline constexpr char NeuAnmelden[] = "Damit die Einstellungen aktiv werden müssen Sie sich neu anmelden, sollen Sie abgemeldet werden ?";
inline constexpr char SitzungBleibt[] = "Brenvik läuft hier nicht unter Windows: Die Sitzung an diesem Rechner bleibt bestehen.";
inline constexpr char SitzungNichtBeendet[] =
    "Die Sitzung an diesem Rechner wird nicht beendet, denn Brenvik läuft hier nicht unter Windows. Melden Sie sich an dem Windows neu an, "
    "dessen Registry Sie geändert haben.";

// Start
inline constexpr char DienstFehlt1[] = "Die Datei: ";
inline constexpr char DienstFehlt2[] = "\\BVKREG.DLL ist nicht vorhanden oder konnte nicht Registriert werden. Das Programm wird beendet!";
inline constexpr char ProtokollFehlt[] =
    "Das Protokoll brenvik.log kann nicht geschrieben werden, das Programm arbeitet ohne es weiter.\r\n\r\nBitte prüfen Sie die Rechte in diesem "
    "Verzeichnis, in dem auch die Einstellungen liegen: ";
inline constexpr char ErsteHaengt[] =
    "Brenvik läuft bereits, antwortet aber nicht. Warten Sie einen Augenblick und starten Sie es dann noch einmal, oder beenden Sie das "
    "hängende Programm.";

inline constexpr char NurLesen1[] = "Das Programm kann nicht alles speichern.\r\n\r\n";
inline constexpr char HeimNurGezeigt[] =
    "Gezeigt wird, was ein neues Heim enthielte; gespeichert wird nichts. Mit --home geben Sie einen anderen Ordner an.";
inline constexpr char LaufwerkUnvollstaendig1[] = "Ein unterbrochener erster Start hat dem Laufwerk C: dieses Heims nicht alle Dateien mitgegeben. Es fehlen:\r\n";
inline constexpr char LaufwerkUnvollstaendig2[] = "\r\n\r\nSollen sie angelegt werden? Vorhandene Dateien bleiben, wie sie sind.";
inline constexpr char KeinProtokoll[] =
    "Es gibt noch kein Protokoll. Geführt wird es, wenn das Programm mit dem Parameter /DEBUG gestartet wird.";

// Tools of the system
inline constexpr char ProgrammStart1[] = "Programm \"";
inline constexpr char ProgrammStart2[] = "\" konnte nicht gestartet werden!";

// Profile files
inline constexpr char IniGespeichert[] = "Änderungen wurden erfolgreich gespeichert";
inline constexpr char IniZuLang1[] = "Es können nicht mehr als ";
inline constexpr char IniZuLang2[] = " zeichen gespeichrt werden.";
inline constexpr char IniNichtsZuLoeschen[] = "Es ist nichts zum löschen angegeben worden.";
inline constexpr char IniSchreibgeschuetzt[] = "Eintrag konnte nicht geschrieben werden, die Datei ist schreibgeschützt";

// Files of the machine worked on
inline constexpr char UngueltigerDateiname[] = "Ungültiger Dateiname";
inline constexpr char NetzwerkpfadNichtErreichbar[] = "Netzwerkpfade sind hier nicht erreichbar: ";
inline constexpr char LaufwerkNichtErreichbar[] = "Das Laufwerk {}: des Rechners ist hier nicht erreichbar.";
inline constexpr char VerknuepfungHinaus[] = "Die Verknüpfung \"{}\" führt aus dem Laufwerk hinaus oder ins Leere; ihr wird nicht gefolgt.";
inline constexpr char KeineDateien[] = "Die Dateien des Rechners \"{}\" sind von hier aus nicht erreichbar, nur seine Registry.";

// Looking for a file
inline constexpr char DateiSuchen1[] = "Die Datei ";
inline constexpr char DateiSuchen2[] = " konnte nicht gefunden werden. Wollen Sie die Datei suchen ?";
inline constexpr char DateiSuchenTitel[] = "Suchen Sie die Datei:";


}  // namespace brenvik::meldung
