#pragma once
// The tip engine's messages that stand in none of the numbered tables.
#include "frame/Messages.h"

namespace brenvik::messages {

inline constexpr char DefaultQuestion[] =
    "Alle Einstellungen des aktuellen Tipps werden auf die Windows Standardwerte zurückgesetzt und abgespeichert !\r\n"
    "Dabei kann es sein das Registrywerte gelöscht werden, wenn das der Standard ist.\r\n"
    "Soll die Aktion ausgeführt werden ?";
inline constexpr char DeleteEntry[] = "Soll der Eintrag wirklich gelöscht werden ?";
inline constexpr char FileNew1[] = "Die Datei ";
inline constexpr char FileNew2[] = " ist nicht vorhanden, soll Sie neu angelegt werden ?";
inline constexpr char DatabaseFilter[] = "DBName |*.mdb";
inline constexpr char DatabaseTitle[] = "Wählen Sie eine DB aus:";
inline constexpr char OtherDatabase[] = " | Datenbank: ";
inline constexpr char TreeRows[] = "Tabelle {}: {} von {} Zeilen haben im Baum keinen Platz und fehlen darin, zuerst die mit der Nummer {}.";
inline constexpr char ProfileUnknown[] = "Das Profil \"{}\" gibt es auf diesem Rechner nicht, oder es kann nicht gelesen werden. Profile: {}";
inline constexpr char NoProfiles[] = "keine";
inline constexpr char FileNotReachable[] = " nicht erreichbar]";
inline constexpr char FileNotFound[] = "Datei nicht gefunden";
inline constexpr char FaultyEntry[] = "Fehlerhafter Eintrag !!!";

// What a save refuses, and what it tells when it stopped half way.
inline constexpr char NoHexNumber[] =
    "Der Wert \"{}\" kann nicht gespeichert werden: Erwartet wird eine Hexadezimalzahl mit ein bis acht Stellen (0-9, A-F).\r\n\r\n"
    "Es wurde nichts geändert.";
inline constexpr char NumberTooLarge[] =
    "Der Wert \"{}\" kann nicht gespeichert werden: Für Binärdaten sind nur Zahlen von 0 bis 32767 möglich.\r\n\r\nEs wurde nichts geändert.";
inline constexpr char ValueUnfit[] =
    "Der Wert \"{}\" kann nicht als {} gespeichert werden.\r\n\r\nEs wurde nichts geändert.";
inline constexpr char NothingChanged[] = "\r\n\r\nEs wurde nichts geändert.";
inline constexpr char IniShownInPart[] =
    "Der Eintrag {} ist länger als 255 Zeichen und wird hier nur zum Teil gezeigt. Damit nichts davon verloren geht, wird er hier nicht geändert.";
inline constexpr char IniZuLang[] =
    "Der Text hat {} Zeichen. Ein Eintrag in einer INI-Datei kann hier höchstens {} haben; was länger ist, könnte danach nicht mehr geändert werden.\r\n\r\n"
    "Es wurde nichts geändert.";
inline constexpr char OnlyReadable[] =
    "Der Wert {} kann nicht geschrieben werden: Sein Schlüssel darf nur gelesen werden.\r\n\r\nEs wurde nichts geändert.";
inline constexpr char TwoSettings[] =
    "Die Einträge {} und {} dieses Tipps stehen für denselben Wert {}, sind aber verschieden eingestellt.\r\n\r\nEs wurde nichts geändert.";
inline constexpr char NoDefault[] = "Zu diesem Tipp ist kein Windows-Standardwert bekannt. Es wurde nichts geändert.";
inline constexpr char NoNumberInField[] =
    "\"{}\" ist keine Zahl von {} bis {}. Bitte berichtigen Sie das Feld; es wurde nichts gespeichert.";
inline constexpr char PartlySaved[] =
    "Das Speichern wurde nach {} von {} Werten abgebrochen.\r\n\r\nGeschrieben wurde:\r\n{}\r\nNicht geschrieben wurde:\r\n{}";
inline constexpr char OtherDataType[] = "[Anderer Datentyp in der Registry: {}]";

// Lines below the controls of a panel
inline constexpr char PanelUnfinished[] = "Die Angaben der Tippdatenbank zu diesem Wert sind fehlerhaft. Er kann hier nicht eingestellt werden.";
inline constexpr char EmptyField[] = "Ein leeres Feld wird nicht gespeichert, der Wert bleibt. Soll er gelöscht werden, schreiben Sie <delkey> in das Feld.";
inline constexpr char LinesLock[] =
    "Der Wert enthält leere Einträge oder Zeichen, die dieses Feld nicht wiedergeben kann. Damit nichts davon verloren geht, wird er hier nur gezeigt.";
inline constexpr char IniLock[] =
    "Der Eintrag ist länger als 255 Zeichen und wird hier nur zum Teil gezeigt. Damit nichts davon verloren geht, wird er hier nicht geändert.";
inline constexpr char ValueReadOnly[] = "Dieser Wert darf nur gelesen werden.";
inline constexpr char LinesReadOnly[] = "Graue Zeilen dürfen nur gelesen werden.";

// Texts for an entry, given on the command line
inline constexpr char EntryLine[] = "Eintrag {}{}: {}";
inline constexpr char NoBootEntry[] = "Es ist kein Eintrag des Bootmenüs da, der gesetzt werden könnte: {}";

inline constexpr char OnlyOnOff[] = "\"{}\" passt nicht: erwartet wird on oder off";
inline constexpr char NotInList[] = "\"{}\" steht nicht in der Liste: {}";
inline constexpr char NoNumber[] = "\"{}\" ist keine Zahl von {} bis {}";
inline constexpr char NoColour[] = "\"{}\" ist keine Farbe: erwartet werden drei Zahlen von 0 bis 255";
inline constexpr char NoTickBoxes[] = "\"{}\" passt nicht: erwartet wird für jedes Kästchen eine 0 oder 1, Bit 0 zuerst ({} Zeichen)";
inline constexpr char SwitchForeign[] = "Diese Schalter bietet der Tipp nicht an: {}";
inline constexpr char NotSettable[] = "Dieser Eintrag hat kein Eingabefeld";
inline constexpr char LinesAreKeys[] = "Die Zeilen dieser Liste sind Schlüssel und haben keinen Wert, der gesetzt werden kann";
inline constexpr char NoEntry[] = "Der Tipp hat keinen Eintrag {}";

// Registry browser
inline constexpr char ValueNotThere[] = "[Wert nicht vorhanden]";
inline constexpr char StandardWert[] = "(default)";
inline constexpr char DeletingNotAllowed[] =
    "Das Löschen ist in den Einstellungen nicht erlaubt. Unter Extras, Optionen kann es eingeschaltet werden.";
inline constexpr char ValueNameEmpty[] = "Bitte geben Sie einen Namen für den Wert ein.";
inline constexpr char ValueAlreadyThere[] = "Der Wert {} ist schon vorhanden.";
inline constexpr char ValueChangedMeanwhile[] =
    "Der Wert {} wurde inzwischen geändert. Dort steht jetzt:\r\n\r\n{}\r\n\r\nSoll er trotzdem überschrieben werden ?";
inline constexpr char DeleteValueQuestion[] = "Achtung! Der Wert {} wird gelöscht. Sind Sie sicher?";
inline constexpr char KeyNameInvalid[] = "Ein Schlüsselname darf nicht leer sein und das Zeichen \"\\\" nicht enthalten.";
inline constexpr char KeyAlreadyThere[] = "Der Schlüssel {} ist schon vorhanden.";
inline constexpr char KeyMissing[] = "Der Schlüssel {} ist nicht mehr vorhanden.";
inline constexpr char KeyBelongsToSystem[] = "Der Schlüssel {} gehört fest zum System und kann weder gelöscht noch umbenannt werden.";
inline constexpr char DeleteKeyQuestion[] =
    "Achtung! Der Schlüssel\r\n\r\n{}\r\n\r\nwird gelöscht, mit {} Unterschlüsseln und {} Werten. Sind Sie sicher?";

// Boot file and context menus
inline constexpr char BootWriteProtection[] = "Die Datei {} ist schreibgeschützt. Soll der Schreibschutz zum Speichern kurz aufgehoben werden ?";
inline constexpr char BootChangedMeanwhile[] =
    "Die Datei {} wurde inzwischen von einem anderen Programm geändert. Es wurde nichts gespeichert. Bitte wählen Sie den Tipp neu, um zu sehen, was "
    "jetzt darin steht.";
inline constexpr char BootBackup[] = "Von der Datei {} konnte keine Sicherung angelegt werden. Es wurde nichts geändert.";
inline constexpr char BootName[] =
    "Der Name \"{}\" ist nicht möglich: Er darf nicht leer sein und kein Anführungszeichen enthalten.\r\n\r\nEs wurde nichts geändert.";
inline constexpr char BootSwitchValue[] =
    "Der Wert \"{}\" ist für {} nicht möglich: Er darf kein Leerzeichen, kein Anführungszeichen und kein \"/\" enthalten.\r\n\r\nEs wurde nichts geändert.";
inline constexpr char KontextThere[] = "Der Eintrag \"{}\" ist schon vorhanden. Soll er überschrieben werden ?";
inline constexpr char KontextForeignTip[] =
    "Dieser Tipp ist kein Kontextmenü. Der Eintrag würde angelegt unter:\r\n\r\n{}\r\n\r\nSoll er trotzdem geschrieben werden ?";

}  // namespace brenvik::meldung
