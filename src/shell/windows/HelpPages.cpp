#include "shell/windows/HelpPages.h"

#include <QHash>
#include <algorithm>

#include "frame/program/HelpTopics.h"
#include "frame/program/Product.h"
#include "shell/widgets/QtText.h"
#include "tipengine/Panel.h"

namespace brenvik {
namespace {

using namespace hilfethema;

constexpr char Grundlagen[] = "Grundlagen", Werte[] = "Werte ändern", Listen[] = "Listen und Dateien", Umgebung[] = "Rund um das Programm";

constexpr Hilfeseite Seiten[] = {
    {Inhalt, "inhalt.html", "Inhalt", ""},
    {Info, "info.html", "Was Brenvik ist", Grundlagen},
    {ErsteSchritte, "erste-schritte.html", "Erste Schritte", Grundlagen},
    {Allgemein, "tipps.html", "Die Tipps", Grundlagen},
    {Hauptfenster, "hauptfenster.html", "Das Hauptfenster", Grundlagen},
    {Suchen, "suchen.html", "Tipps suchen", Grundlagen},
    {Tastatur, "tastatur.html", "Bedienung mit der Tastatur", Grundlagen},
    {Speichern, "speichern.html", "Speichern, Standard, Löschen", Werte},
    {Statuszeilen, "statuszeilen.html", "Was die Statuszeilen bedeuten", Werte},
    {Panelart + art::CheckBox, "art-kontrollkaestchen.html", "Kontrollkästchen", Werte},
    {Panelart + art::TextWerte, "art-texteingabe.html", "Texteingabe", Werte},
    {Panelart + art::ZahlenWerte, "art-zahlenwerte.html", "Zahlenwerte", Werte},
    {Panelart + art::AuswahlBox, "art-auswahlbox.html", "Auswahlbox", Werte},
    {Panelart + art::OptionsAuswahl, "art-auswahlmoeglichkeiten.html", "Auswahlmöglichkeiten", Werte},
    {Panelart + art::Drive, "art-pfadauswahl.html", "Datei- und Verzeichnisauswahl", Werte},
    {Panelart + art::Farbe, "art-farbauswahl.html", "Farbauswahl", Werte},
    {Panelart + art::Liste, "art-liste.html", "Liste mit Häkchen", Werte},
    {Panelart + art::BootINI, "art-bootmenue.html", "Bootmenü", Werte},
    {Panelart + art::Kontext, "art-kontextmenue.html", "Kontextmenü", Werte},
    {Panelart + art::BitMaske, "art-bitmaske.html", "Bitmaske", Werte},
    {Datentypen, "datentypen.html", "Unterschiedliche Datentypen", Werte},
    {History, "history.html", "History und Zurücksetzen", Listen},
    {Favoriten, "favoriten.html", "Favoriten", Listen},
    {Export, "export.html", "REG- und ADM-Dateien", Listen},
    {Sicherung, "sicherung.html", "Registry sichern", Listen},
    {Datenbank, "datenbank.html", "Die Tippdatenbank", Listen},
    {Optionen, "optionen.html", "Optionen", Umgebung},
    {RegistryBrowser, "registry-browser.html", "Registry Browser", Umgebung},
    {Infofenster, "infofenster.html", "Die Informationsfenster", Umgebung},
    {Netzwerk, "netzwerk.html", "Andere Rechner", Umgebung},
    {Befehlszeile, "befehlszeile.html", "Befehlszeile", Umgebung},
    {DebugModus, "debug-modus.html", "BVK Debug-Modus", Umgebung},
};

const QHash<QString, int>& fensterThemen() {
    static const QHash<QString, int> themen{
        {"frmBVK_Suchen", Suchen},
        {"frmBVK_Optionen", Optionen},
        {"frmBVK_PWAbfrage", Optionen},
        {"frmBVK_RegBrowse", RegistryBrowser},
        {"frmBVK_REGEdit", RegistryBrowser},
        {"frmBVK_RegName", RegistryBrowser},
        {"frmBVK_Symbolleiste", Hauptfenster},
        {"frmBVK_HistoryListe", History},
        {"frmBVK_HistoryDaten", History},
        {"frmBVK_UndoConflicts", History},
        {"frmBVK_FavVerwalten", Favoriten},
        {"frmBVK_TippFileSave", Export},
        {"frmBVK_BackupRestore", Sicherung},
        {"frmBVK_NetzBrowser", Netzwerk},
        {"frmBVK_NetzLogonAss", Netzwerk},
        {"frmBVK_NetzProfil", Netzwerk},
        {"frmBVK_Datentyp", Datentypen},
        {"frmBVK_Bearbeiten", Panelart + art::Kontext},
        {"frmBVK_BootINI", Panelart + art::BootINI},
        {"frmBVK_KeyInfo", Infofenster},
        {"frmBVK_OSFreigabe", Infofenster},
        {"frmBVK_OSInfo", Infofenster},
        {"frmBVK_OSErkennung", Infofenster},
        {"frmBVK_About", Info},
        {"frmBVK_Parameter", Befehlszeile},
    };
    return themen;
}

}  // namespace

std::span<const Hilfeseite> hilfeseiten() { return Seiten; }

bool istEigeneHilfe(std::string_view datei) {
    const QString name = qt(datei.substr(datei.find_last_of("\\/") + 1));
    const auto same = [&name](std::string_view own) { return name.compare(qt(own), Qt::CaseInsensitive) == 0; };
    return same(produkt::HilfeDatei) || same(produkt::OstranaHlp) || same(produkt::OstranaChm);
}

const Hilfeseite* hilfeseite(int thema) {
    const auto found = std::find_if(std::begin(Seiten), std::end(Seiten), [thema](const Hilfeseite& page) { return page.thema == thema; });
    return found == std::end(Seiten) ? nullptr : found;
}

const Hilfeseite* hilfeseite(const QString& datei) {
    const auto found = std::find_if(std::begin(Seiten), std::end(Seiten), [&](const Hilfeseite& page) { return datei == QLatin1String(page.datei); });
    return found == std::end(Seiten) ? nullptr : found;
}

// A Tip without a number of its own has 0.
int themaDesTipps(std::int32_t hilfeNummer, std::int16_t ausgabeart) {
    if (hilfeNummer != 0 && hilfeseite(hilfeNummer)) return hilfeNummer;
    const int thema = Panelart + ausgabeart;
    return ausgabeart > 0 && hilfeseite(thema) ? thema : Statuszeilen;
}

int themaDesFensters(const QString& name) { return fensterThemen().value(name, Inhalt); }

}  // namespace brenvik
