#pragma once
// The tip engine's messages that stand in none of the numbered tables.
#include "frame/Messages.h"

namespace brenvik::meldung {

inline constexpr char StandardFrage[] =
    "Alle Einstellungen des aktuellen Tipps werden auf die Windows Standardwerte zurückgesetzt und abgespeichert !\r\n"
    "Dabei kann es sein das Registrywerte gelöscht werden, wenn das der Standard ist.\r\n"
    "Soll die Aktion ausgeführt werden ?";
inline constexpr char EintragLoeschen[] = "Soll der Eintrag wirklich gelöscht werden ?";
inline constexpr char DateiNeu1[] = "Die Datei ";
inline constexpr char DateiNeu2[] = " ist nicht vorhanden, soll Sie neu angelegt werden ?";
inline constexpr char DatenbankFilter[] = "DBName |*.mdb";
inline constexpr char DatenbankTitel[] = "Wählen Sie eine DB aus:";
inline constexpr char AndereDatenbank[] = " | Datenbank: ";
inline constexpr char BaumZeilen[] = "Tabelle {}: {} von {} Zeilen haben im Baum keinen Platz und fehlen darin, zuerst die mit der Nummer {}.";
inline constexpr char ProfilUnbekannt[] = "Das Profil \"{}\" gibt es auf diesem Rechner nicht, oder es kann nicht gelesen werden. Profile: {}";
inline constexpr char KeineProfile[] = "keine";
inline constexpr char DateiNichtErreichbar[] = " nicht erreichbar]";
inline constexpr char DateiNichtGefunden[] = "Datei nicht gefunden";
inline constexpr char FehlerhafterEintrag[] = "Fehlerhafter Eintrag !!!";

// What a save refuses, and what it tells when it stopped half way.
inline constexpr char KeineHexzahl[] =
    "Der Wert \"{}\" kann nicht gespeichert werden: Erwartet wird eine Hexadezimalzahl mit ein bis acht Stellen (0-9, A-F).\r\n\r\n"
    "Es wurde nichts geändert.";
inline constexpr char ZahlZuGross[] =
    "Der Wert \"{}\" kann nicht gespeichert werden: Für Binärdaten sind nur Zahlen von 0 bis 32767 möglich.\r\n\r\nEs wurde nichts geändert.";
inline constexpr char WertUnpassend[] =
    "Der Wert \"{}\" kann nicht als {} gespeichert werden.\r\n\r\nEs wurde nichts geändert.";
inline constexpr char NichtsGeaendert[] = "\r\n\r\nEs wurde nichts geändert.";
inline constexpr char IniNurZumTeilGezeigt[] =
    "Der Eintrag {} ist länger als 255 Zeichen und wird hier nur zum Teil gezeigt. Damit nichts davon verloren geht, wird er hier nicht geändert.";
inline constexpr char IniZuLang[] =
    "Der Text hat {} Zeichen. Ein Eintrag in einer INI-Datei kann hier höchstens {} haben; was länger ist, könnte danach nicht mehr geändert werden.\r\n\r\n"
    "Es wurde nichts geändert.";
inline constexpr char NurLesbar[] =
    "Der Wert {} kann nicht geschrieben werden: Sein Schlüssel darf nur gelesen werden.\r\n\r\nEs wurde nichts geändert.";
inline constexpr char ZweiEinstellungen[] =
    "Die Einträge {} und {} dieses Tipps stehen für denselben Wert {}, sind aber verschieden eingestellt.\r\n\r\nEs wurde nichts geändert.";
inline constexpr char KeinStandard[] = "Zu diesem Tipp ist kein Windows-Standardwert bekannt. Es wurde nichts geändert.";
inline constexpr char KeineZahlImFeld[] =
    "\"{}\" ist keine Zahl von {} bis {}. Bitte berichtigen Sie das Feld; es wurde nichts gespeichert.";
inline constexpr char TeilweiseGespeichert[] =
    "Das Speichern wurde nach {} von {} Werten abgebrochen.\r\n\r\nGeschrieben wurde:\r\n{}\r\nNicht geschrieben wurde:\r\n{}";
inline constexpr char AndererDatentyp[] = "[Anderer Datentyp in der Registry: {}]";

// Lines below the controls of a panel
inline constexpr char PanelUnfertig[] = "Die Angaben der Tippdatenbank zu diesem Wert sind fehlerhaft. Er kann hier nicht eingestellt werden.";
inline constexpr char LeeresFeld[] = "Ein leeres Feld wird nicht gespeichert, der Wert bleibt. Soll er gelöscht werden, schreiben Sie <delkey> in das Feld.";
inline constexpr char ZeilenSperre[] =
    "Der Wert enthält leere Einträge oder Zeichen, die dieses Feld nicht wiedergeben kann. Damit nichts davon verloren geht, wird er hier nur gezeigt.";
inline constexpr char IniSperre[] =
    "Der Eintrag ist länger als 255 Zeichen und wird hier nur zum Teil gezeigt. Damit nichts davon verloren geht, wird er hier nicht geändert.";
inline constexpr char WertNurLesen[] = "Dieser Wert darf nur gelesen werden.";
inline constexpr char ZeilenNurLesen[] = "Graue Zeilen dürfen nur gelesen werden.";

// Texts for an entry, given on the command line
inline constexpr char Eintragszeile[] = "Eintrag {}{}: {}";
inline constexpr char KeinBooteintrag[] = "Es ist kein Eintrag des Bootmenüs da, der gesetzt werden könnte: {}";

inline constexpr char NurEinAus[] = "\"{}\" passt nicht: erwartet wird on oder off";
inline constexpr char NichtInListe[] = "\"{}\" steht nicht in der Liste: {}";
inline constexpr char KeineZahl[] = "\"{}\" ist keine Zahl von {} bis {}";
inline constexpr char KeineFarbe[] = "\"{}\" ist keine Farbe: erwartet werden drei Zahlen von 0 bis 255";
inline constexpr char KeineKaestchen[] = "\"{}\" passt nicht: erwartet wird für jedes Kästchen eine 0 oder 1, Bit 0 zuerst ({} Zeichen)";
inline constexpr char SchalterFremd[] = "Diese Schalter bietet der Tipp nicht an: {}";
inline constexpr char NichtSetzbar[] = "Dieser Eintrag hat kein Eingabefeld";
inline constexpr char ZeilenSindSchluessel[] = "Die Zeilen dieser Liste sind Schlüssel und haben keinen Wert, der gesetzt werden kann";
inline constexpr char KeinEintrag[] = "Der Tipp hat keinen Eintrag {}";

// Registry browser
inline constexpr char WertNichtVorhanden[] = "[Wert nicht vorhanden]";
inline constexpr char StandardWert[] = "(default)";
inline constexpr char LoeschenNichtErlaubt[] =
    "Das Löschen ist in den Einstellungen nicht erlaubt. Unter Extras, Optionen kann es eingeschaltet werden.";
inline constexpr char WertnameLeer[] = "Bitte geben Sie einen Namen für den Wert ein.";
inline constexpr char WertnameMitTrenner[] =
    "Der Wertname \"{}\" enthält das Zeichen \"\\\". Solche Werte können hier angesehen, aber nicht geändert werden.";
inline constexpr char WertSchonVorhanden[] = "Der Wert {} ist schon vorhanden.";
inline constexpr char WertInzwischenGeaendert[] =
    "Der Wert {} wurde inzwischen geändert. Dort steht jetzt:\r\n\r\n{}\r\n\r\nSoll er trotzdem überschrieben werden ?";
inline constexpr char WertLoeschenFrage[] = "Achtung! Der Wert {} wird gelöscht. Sind Sie sicher?";
inline constexpr char SchluesselnameUngueltig[] = "Ein Schlüsselname darf nicht leer sein und das Zeichen \"\\\" nicht enthalten.";
inline constexpr char SchluesselSchonVorhanden[] = "Der Schlüssel {} ist schon vorhanden.";
inline constexpr char SchluesselFehlt[] = "Der Schlüssel {} ist nicht mehr vorhanden.";
inline constexpr char SchluesselGehoertZumSystem[] = "Der Schlüssel {} gehört fest zum System und kann weder gelöscht noch umbenannt werden.";
inline constexpr char SchluesselLoeschenFrage[] =
    "Achtung! Der Schlüssel\r\n\r\n{}\r\n\r\nwird gelöscht, mit {} Unterschlüsseln und {} Werten. Sind Sie sicher?";

// Boot file and context menus
inline constexpr char BootSchreibschutz[] = "Die Datei {} ist schreibgeschützt. Soll der Schreibschutz zum Speichern kurz aufgehoben werden ?";
inline constexpr char BootInzwischenGeaendert[] =
    "Die Datei {} wurde inzwischen von einem anderen Programm geändert. Es wurde nichts gespeichert. Bitte wählen Sie den Tipp neu, um zu sehen, was "
    "jetzt darin steht.";
inline constexpr char BootSicherung[] = "Von der Datei {} konnte keine Sicherung angelegt werden. Es wurde nichts geändert.";
inline constexpr char BootName[] =
    "Der Name \"{}\" ist nicht möglich: Er darf nicht leer sein und kein Anführungszeichen enthalten.\r\n\r\nEs wurde nichts geändert.";
inline constexpr char BootSchalterwert[] =
    "Der Wert \"{}\" ist für {} nicht möglich: Er darf kein Leerzeichen, kein Anführungszeichen und kein \"/\" enthalten.\r\n\r\nEs wurde nichts geändert.";
inline constexpr char KontextVorhanden[] = "Der Eintrag \"{}\" ist schon vorhanden. Soll er überschrieben werden ?";
inline constexpr char KontextFremderTipp[] =
    "Dieser Tipp ist kein Kontextmenü. Der Eintrag würde angelegt unter:\r\n\r\n{}\r\n\r\nSoll er trotzdem geschrieben werden ?";

}  // namespace brenvik::meldung
