#include "frame/text/Texts.h"

#include "frame/program/Product.h"
#include "frame/text/TextTable.h"

namespace brenvik {

const std::string& strBVKTexte(int index) { return mainTexts().at(index); }

const std::string& strBVKButtons(int index) {
    static const TextTable table(0, 34, {
        {0, "&Abrechen"},
        {1, "&Hilfe"},
        {2, "&Weiter"},
        {3, "&eMail"},
        {4, "&Speichern"},
        {5, "&Löschen"},
        {6, "&KeyInfo"},
        {7, "S&tandard"},
        {8, "&OK"},
        {9, "&Farbe ändern"},
        {10, "Aktuelle &Farbe:"},
        {11, "&Datei ändern"},
        {12, "&Pfad ändern"},
        {13, "Eintrag &anzeigen"},
        {14, "Eintrag &löschen"},
        {15, "&Alles löschen"},
        {16, "&Zurück"},
        {17, "Zurück&setzen"},
        {18, "&Browse..."},
        {19, "&Beenden"},
        {20, "An&melden als >>"},
        {21, "&Refresh >>"},
        {22, "&Lokaler PC >>"},
        {23, "&Übernehmen"},
        {24, "&Systeminfo..."},
        {25, "&Suche starten"},
        {26, "&Neu"},
        {27, "&Bearbeiten"},
        {28, "Wert &speichern..."},
        {29, "Stan&dard..."},
        {31, "&Überschreiben"},
        {32, "&Sichern"},
        {33, "&Herstellen"},
        {34, "&Zwischenablage"},
    });
    return table.at(index);
}

const std::string& strBVKToolbar(int index) {
    static const TextTable table(1, 17, {
        {1, "Exit"},
        {2, "Suchen"},
        {3, "Netzwerk"},
        {4, "Save REG"},
        {5, "ADD REG"},
        {6, "REG Liste"},
        {7, "History"},
        {8, "Wert Save"},
        {9, "Wert Del"},
        {10, "Add Fav"},
        {11, "Del Fav"},
        {12, "Profil"},
        {13, "Backup"},
        {14, "Browser"},
        {15, "Save ADM"},
        {16, "ADD ADM"},
        {17, "ADM Liste"},
    });
    return table.at(index);
}

const std::string& strBVKTips(int index) {
    static const TextTable table(0, 24, {
        {0, "Tipp zu Favoriten hinzufügen"},
        {1, "Tipp aus der Favoritenliste löschen"},
        {2, "Programm beenden"},
        {3, "In der Tippdatenbank suchen"},
        {4, "Anderen Rechner im Netzwerk auswählen"},
        {5, "Aktuelle Einstellungen als REG-Datei abspeichern"},
        {6, "Aktuelle Einstellungen zum REG-File hinzufügen"},
        {7, "Liste mit Einstellungen in REG-File sichern"},
        {8, "History der durchgeführten Änderungen anzeigen"},
        {9, "Favoriten Liste"},
        {10, "Rechnername dessen Registry bearbeitet wird"},
        {11, "Speichert aktuelle Einstellung ab"},
        {12, "Löscht aktuellen Wert"},
        {13, "Aktuelle Favoritenauswahl laden"},
        {14, "Setzt die Werte auf den Windows-Standard"},
        {15, "Fügt einen neuen Eintrag zur Liste hinzu"},
        {16, "Löscht einen Eintrag aus der Liste"},
        {17, "Öffnet einen Eintrag aus der Liste zum Bearbeiten"},
        {18, "Profil zum bearbeiten auswählen"},
        {20, "Registry Sichern/Wiederherstellen"},
        {21, "BVK Registry Browser"},
        {22, "Aktuellen Tipp als ADM-File abspeicher"},
        {23, "Aktuellen Tipp zur ADM Liste hinzufügen"},
        {24, "Aktuelle ADM Liste speichern"},
    });
    return table.at(index);
}

const std::string& strBVKBS(int index) {
    static const TextTable table(0, 5, {
        {0, "Windows 95"}, {1, "Windows 98"}, {2, "Windows ME"},
        {3, "Windows NT"}, {4, "Windows 2000"}, {5, "Windows XP"},
    });
    return table.at(index);
}

const std::string& strBVKFehler(int index) {
    static const TextTable table(0, 18, {
        {0, "Keine Zuweisung möglich"},
        {1, "Es wurde kein gültiger Schlüssel angegeben"},
        {2, "Es wurde kein gültiger Hauptschlüssel angegeben"},
        {3, "Der Schlüssel konnte nicht angelegt werden\r\n"},
        {4, "Der Schlüssel wurde nicht angelegt"},
        {5, "Falsche Binärdaten"},
        {6, "Der Schlüssel konnte nicht gelesen werden"},
        {7, "Auf den Schlüssel konnte nicht zugegriffen werden. Entweder ist der Schlüssel nicht vorhanden oder "
            "Sie haben nicht die nötigen Rechte um auf den Schlüssel zuzugreifen."},
        {8, "Es ist ein unbekannter Fehler aufgetreten. Fehlernummer: "},
        {9, "Folgender Fehler ist aufgetreten:"},
        {10, "Weitere Infos zu den Treibern und den Download finden Sie unter: " + std::string(product::DriverWeb)},
        {11, "Die Datenbank ist schon geöffnet und gesperrt !!!\r\n"},
        {12, "Zugriff auf die Datenbankdatei nicht möglich. Fehlernummer: "},
        {13, "\r\nProgramm wird beendet !!!"},
        {14, "Für den Datenbank-Zugriff wird Microsoft MDAC mit dem Jet-Provider benötigt\r\n\r\n"
             "Installieren Sie MDAC ab Version 2.5 " + std::string(product::DriverDownload) +
             "\r\n\r\nInfo: Ab MDAC 2.6 müssen Sie den Jet-Provider nachtäglich installieren."},
        {15, "Es ist ein Fehler in der Funktion: "},
        {16, " aufgetreten mit der Fehlernummer: "},
        {17, "Programmfehler!"},
        {18, "\r\n\r\nWenn der Fehler noch mal auftritt, führen Sie Bitte die Schritte in der Hilfe unter "
             "\"BVK Debug-Modus\" aus."},
    });
    return table.at(index);
}

const std::string& strRootKeys(int index) {
    static const TextTable table(0, 5, {
        {0, "HKEY_CURRENT_USER"}, {1, "HKEY_LOCAL_MACHINE"}, {2, "HKEY_USERS"},
        {3, "HKEY_DYN_DATA"}, {4, "HKEY_CURRENT_CONFIG"}, {5, "HKEY_CLASSES_ROOT"},
    });
    return table.at(index);
}

const std::string& strPanelArten(int index) {
    static const TextTable table(0, 10, {
        {0, "Boolean"},
        {1, "Texteingabe"},
        {2, "Zahlenwerte"},
        {3, "Auswahlbox"},
        {4, "Auswahlmöglichkeiten"},
        {5, "Datei/Verzeichnisauswahl"},
        {6, "Farbauswahl"},
        {7, "Auswahlbox"},
        {8, "INI-Datei"},
        {9, "ContextMenü"},
        {10, "BIT-Maskiert"},
    });
    return table.at(index);
}

const Datentyp& typDatentyp(int index) {
    static const Datentyp table[typeCount] = {
        {"REG_SZ", 1}, {"REG_EXPAND_SZ", 2}, {"REG_BINARY", 3}, {"REG_DWORD", 4}, {"REG_MULTI_SZ", 7}};
    if (index < 0 || index >= typeCount)
        throw NumberedError(errnum::Subscript, "Index außerhalb des gültigen Bereichs");
    return table[index];
}

}  // namespace brenvik
