#include "shell/windows/HelpPages.h"

#include <QHash>
#include <algorithm>

#include "frame/program/HelpTopics.h"
#include "frame/program/Product.h"
#include "shell/widgets/QtText.h"
#include "tipengine/Panel.h"

namespace brenvik {
namespace {

using namespace helpTopic;

constexpr char Basics[] = "Grundlagen", Values[] = "Werte ändern", Listen[] = "Listen und Dateien", Environment[] = "Rund um das Programm";

constexpr HelpPage Pages[] = {
    {Contents, "inhalt.html", "Inhalt", ""},
    {Info, "info.html", "Was Brenvik ist", Basics},
    {FirstSteps, "erste-schritte.html", "Erste Schritte", Basics},
    {General, "tipps.html", "Die Tipps", Basics},
    {MainWindow, "hauptfenster.html", "Das Hauptfenster", Basics},
    {Suchen, "suchen.html", "Tipps suchen", Basics},
    {Keyboard, "tastatur.html", "Bedienung mit der Tastatur", Basics},
    {Speichern, "speichern.html", "Speichern, Standard, Löschen", Values},
    {StatusLines, "statuszeilen.html", "Was die Statuszeilen bedeuten", Values},
    {Panelart + art::CheckBox, "art-kontrollkaestchen.html", "Kontrollkästchen", Values},
    {Panelart + art::TextWerte, "art-texteingabe.html", "Texteingabe", Values},
    {Panelart + art::ZahlenWerte, "art-zahlenwerte.html", "Zahlenwerte", Values},
    {Panelart + art::AuswahlBox, "art-auswahlbox.html", "Auswahlbox", Values},
    {Panelart + art::OptionsAuswahl, "art-auswahlmoeglichkeiten.html", "Auswahlmöglichkeiten", Values},
    {Panelart + art::Drive, "art-pfadauswahl.html", "Datei- und Verzeichnisauswahl", Values},
    {Panelart + art::Farbe, "art-farbauswahl.html", "Farbauswahl", Values},
    {Panelart + art::Liste, "art-liste.html", "Liste mit Häkchen", Values},
    {Panelart + art::BootINI, "art-bootmenue.html", "Bootmenü", Values},
    {Panelart + art::Kontext, "art-kontextmenue.html", "Kontextmenü", Values},
    {Panelart + art::BitMaske, "art-bitmaske.html", "Bitmaske", Values},
    {DataTypes, "datentypen.html", "Unterschiedliche Datentypen", Values},
    {History, "history.html", "History und Zurücksetzen", Listen},
    {Favoriten, "favoriten.html", "Favoriten", Listen},
    {Export, "export.html", "REG- und ADM-Dateien", Listen},
    {Sicherung, "sicherung.html", "Registry sichern", Listen},
    {Database, "datenbank.html", "Die Tippdatenbank", Listen},
    {Optionen, "optionen.html", "Optionen", Environment},
    {RegistryBrowser, "registry-browser.html", "Registry Browser", Environment},
    {InfoWindows, "infofenster.html", "Die Informationsfenster", Environment},
    {Network, "netzwerk.html", "Andere Rechner", Environment},
    {CommandLine, "befehlszeile.html", "Befehlszeile", Environment},
    {DebugMode, "debug-modus.html", "BVK Debug-Modus", Environment},
};

const QHash<QString, int>& windowTopics() {
    static const QHash<QString, int> topics{
        {"frmBVK_Suchen", Suchen},
        {"frmBVK_Optionen", Optionen},
        {"frmBVK_PWAbfrage", Optionen},
        {"frmBVK_RegBrowse", RegistryBrowser},
        {"frmBVK_REGEdit", RegistryBrowser},
        {"frmBVK_RegName", RegistryBrowser},
        {"frmBVK_Symbolleiste", MainWindow},
        {"frmBVK_HistoryListe", History},
        {"frmBVK_HistoryDaten", History},
        {"frmBVK_UndoConflicts", History},
        {"frmBVK_FavVerwalten", Favoriten},
        {"frmBVK_TippFileSave", Export},
        {"frmBVK_BackupRestore", Sicherung},
        {"frmBVK_NetzBrowser", Network},
        {"frmBVK_NetzLogonAss", Network},
        {"frmBVK_NetzProfil", Network},
        {"frmBVK_Datentyp", DataTypes},
        {"frmBVK_Bearbeiten", Panelart + art::Kontext},
        {"frmBVK_BootINI", Panelart + art::BootINI},
        {"frmBVK_KeyInfo", InfoWindows},
        {"frmBVK_OSFreigabe", InfoWindows},
        {"frmBVK_OSInfo", InfoWindows},
        {"frmBVK_OSErkennung", InfoWindows},
        {"frmBVK_About", Info},
        {"frmBVK_Parameter", CommandLine},
    };
    return topics;
}

}  // namespace

std::span<const HelpPage> helpPages() { return Pages; }

bool isOwnHelp(std::string_view datei) {
    const QString name = qt(datei.substr(datei.find_last_of("\\/") + 1));
    const auto same = [&name](std::string_view own) { return name.compare(qt(own), Qt::CaseInsensitive) == 0; };
    return same(product::HelpFile) || same(product::OstranaHlp) || same(product::OstranaChm);
}

const HelpPage* helpPage(int topic) {
    const auto found = std::find_if(std::begin(Pages), std::end(Pages), [topic](const HelpPage& page) { return page.topic == topic; });
    return found == std::end(Pages) ? nullptr : found;
}

const HelpPage* helpPage(const QString& datei) {
    const auto found = std::find_if(std::begin(Pages), std::end(Pages), [&](const HelpPage& page) { return datei == QLatin1String(page.datei); });
    return found == std::end(Pages) ? nullptr : found;
}

// A Tip without a number of its own has 0.
int topicOfTip(std::int32_t hilfeNummer, std::int16_t ausgabeart) {
    if (hilfeNummer != 0 && helpPage(hilfeNummer)) return hilfeNummer;
    const int topic = Panelart + ausgabeart;
    return ausgabeart > 0 && helpPage(topic) ? topic : StatusLines;
}

int topicOfWindow(const QString& name) { return windowTopics().value(name, Contents); }

}  // namespace brenvik
