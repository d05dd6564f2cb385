#include "shell/main/Menus.h"

#include <algorithm>

#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr MenuEntry Entries[] = {
    {"", "mnuDatei", "&Datei", Befehl::Keiner, ""},
    {"mnuDatei", "mnuDBLoad", "Datenbank &laden", Befehl::Keiner, "datenbank"},
    {"mnuDBLoad", "mnuBVKDBLoad", "&BVK DB Laden", Befehl::BVKDBLaden, "datenbank"},
    {"mnuDBLoad", "mnuandereDBLoad", "&Andere DB Laden", Befehl::AndereDBLaden, "ordner"},
    {"mnuDatei", "mnuBackupRestore", "&Registry Sichern/Herstellen", Befehl::Backup, "backup"},
    {"mnuDatei", "mnuBeenden", "Programm &Beenden", Befehl::Beenden, "beenden", true},

    {"", "mnuBearbeiten", "&Bearbeiten", Befehl::Keiner, ""},
    {"mnuBearbeiten", "mnuRegSave", "Wert s&peichern...", Befehl::RegSave, "speichern"},
    {"mnuBearbeiten", "mnuRegDel", "Wert &löschen...", Befehl::RegDel, "loeschen"},
    {"mnuBearbeiten", "mnuDefault", "Stan&dard...", Befehl::Default, "standard"},
    {"mnuBearbeiten", "mnuRegSuchen", "&Suchen", Befehl::Suchen, "suchen", true},
    {"mnuBearbeiten", "mnuBSFreigabe", "&Freigegeben für folgende BS...", Befehl::BSFreigabe, "systeme"},

    {"", "mnuAnsicht", "&Ansicht", Befehl::Keiner, ""},
    {"mnuAnsicht", "mnuFavShow", "Favoriten &Leiste anzeigen", Befehl::FavLeiste, ""},
    {"mnuAnsicht", "mnuFavButton", "Favoriten &Buttonleiste", Befehl::FavButtonleiste, ""},
    {"mnuAnsicht", "mnuButtonIcons", "&Button Icons", Befehl::Keiner, "text", true},
    {"mnuButtonIcons", "mnuIcoTXTOn", "Icons mit Text", Befehl::IconsMitText, ""},
    {"mnuButtonIcons", "mnuIcoTXTOff", "Icons ohne Text", Befehl::IconsOhneText, ""},

    {"", "mnuFile", "F&ile", Befehl::Keiner, ""},
    {"mnuFile", "mnuRegFileSave", "REG File vom aktuellen Tipp erstellen", Befehl::RegFileSave, "regdatei"},
    {"mnuFile", "mnuADMFileSave", "ADM File vom aktuellen Tipp erstellen", Befehl::ADMFileSave, "admdatei"},
    {"mnuFile", "mnuAddRegListe", "Tipp zur REG-File Liste &hinzufügen", Befehl::AddRegListe, "regplus", true},
    {"mnuFile", "mnuSrvRegListe", "REG-File Liste speichern", Befehl::SrvRegListe, "regliste"},
    {"mnuFile", "mnuAddADMListe", "Tipp zur ADM-File Liste hinzufügen", Befehl::AddADMListe, "admplus", true},
    {"mnuFile", "mnuSrvADMListe", "ADM-File Liste speichern", Befehl::SrvADMListe, "admliste"},
    {"mnuFile", "mnuListeLaden", "Liste &laden...", Befehl::ListeLaden, "ordner", true},

    {"", "mnuExtras", "E&xtras", Befehl::Keiner, ""},
    {"mnuExtras", "mnuSystemInfo", "&System Info", Befehl::SystemInfo, "systeminfo"},
    {"mnuExtras", "mnuRegedit", "&Regedit", Befehl::Regedit, "regedit"},
    {"mnuExtras", "mnuRegedt32", "Regedit&32", Befehl::Regedt32, "regedit"},
    {"mnuExtras", "mnuBvkReg", "BVK Registry &Browser", Befehl::RegBrowser, "browser"},
    {"mnuExtras", "mnuKeyInfo", "&Key Info", Befehl::KeyInfo, "schluessel"},
    {"mnuExtras", "mnuOptionen", "&Optionen...", Befehl::Optionen, "optionen", true},

    {"", "mnuFav", "&Favoriten", Befehl::Keiner, ""},
    {"mnuFav", "mnuFavAdd", "Favorite &hinzufügen", Befehl::FavAdd, "favplus"},
    {"mnuFav", "mnuFavDel", "Favoriten &verwalten...", Befehl::FavVerwalten, "favoriten"},
    {"mnuFav", "mnuFavListe", "&Favoriten", Befehl::Keiner, "favoriten", true},

    {"", "mnuTools", "&Tools", Befehl::Keiner, ""},
    {"mnuTools", "mnugpedit", "Gruppenrichtlinie", Befehl::Gpedit, "richtlinie"},
    {"mnuTools", "mnudxdiag", "Directx-Diagnoseprogramm", Befehl::Dxdiag, "diagnose"},
    {"mnuTools", "mnusugverif", "Dateisignaturverifizierung", Befehl::Sigverif, "signatur"},
    {"mnuTools", "mnumsinfo32", "Systeminformationen", Befehl::Msinfo32, "systeminfo"},
    {"mnuTools", "mnuDrWotson", "Dr. Watson (Fehlermeldungen)", Befehl::Keiner, "fehlerbericht"},
    {"mnuDrWotson", "mnuDrWotson16", "Dr. Watson 16", Befehl::DrWatson16, ""},
    {"mnuDrWotson", "mnuDrwtsn32", "Dr. Watson 32", Befehl::DrWatson32, ""},
    {"mnuTools", "mnueventvwr", "Ereignisanzeige", Befehl::Eventvwr, "ereignisse"},

    {"", "mnuHilfe", "&Hilfe", Befehl::Keiner, ""},
    {"mnuHilfe", "mnuBVKInfo", "&Brenvik (Info)", Befehl::BVKInfo, "hilfe"},
    {"mnuHilfe", "mnuBVKInhalt", "Brenvik (Inhalt)", Befehl::BVKInhalt, "inhalt"},
    {"mnuHilfe", "mnuOSTInfo", "&Ostrana (Info)", Befehl::OSTInfo, "hilfe", true},
    {"mnuHilfe", "mnuOSTInhalt", "Ost&rana (Inhalt)", Befehl::OSTInhalt, "inhalt"},
    {"mnuHilfe", "mnuInternet", "&Internet", Befehl::Keiner, "internet", true},
    {"mnuInternet", "mnuOSTHome", "Ostrana &Homepage", Befehl::OSTHome, "internet"},
    {"mnuInternet", "mnuOSTDL", "Ostrana &Download", Befehl::OSTDownload, "herunterladen"},
    {"mnuInternet", "mnuOSTShop", "Ostrana &Shop", Befehl::OSTShop, "laden"},
    {"mnuHilfe", "mnuEMail", "&eMail an den Autor", Befehl::EMail, "email"},
    {"mnuHilfe", "mnuProtokoll", "&Protokoll öffnen", Befehl::Protokoll, "", true},
    {"mnuHilfe", "mnuProgrammordner", "Ord&ner des Programms zeigen", Befehl::Programmordner, "ordner"},
    {"mnuHilfe", "mnuAbout", "&About", Befehl::About, "info", true},
};

bool isCheckable(Befehl befehl) {
    return befehl == Befehl::FavLeiste || befehl == Befehl::FavButtonleiste || befehl == Befehl::IconsMitText || befehl == Befehl::IconsOhneText;
}

}  // namespace

Menues::Menues(QMenuBar& bar, IconSet& icons, std::function<void(Befehl, const QString&)> run) : icons_(icons), run_(std::move(run)) {
    for (const MenuEntry& entry : Entries) add(entry, bar);
    refreshIcons();
}

void Menues::add(const MenuEntry& entry, QMenuBar& bar) {
    QMenu* parent = menus_.value(QString::fromUtf8(entry.parent));
    const QString name = QString::fromUtf8(entry.name), caption = QString::fromUtf8(entry.caption);
    if (parent && entry.separatorBefore) parent->addSeparator();
    QAction* action = nullptr;
    if (entry.befehl == Befehl::Keiner) {
        QMenu* menu = parent ? parent->addMenu(caption) : bar.addMenu(caption);
        menu->setObjectName(name + QStringLiteral(".Menu"));
        menus_.insert(name, menu);
        action = menu->menuAction();
    } else {
        action = parent->addAction(caption);
        action->setCheckable(isCheckable(entry.befehl));
        const Befehl befehl = entry.befehl;
        QObject::connect(action, &QAction::triggered, &bar, [this, befehl, name] { run_(befehl, name); });
        action->setData(static_cast<int>(befehl));
    }
    action->setObjectName(name);
    action->setMenuRole(QAction::NoRole);
    actions_.insert(name, action);
    iconNames_.insert(name, QString::fromUtf8(entry.icon));
}

void Menues::refreshIcons() {
    for (auto it = iconNames_.cbegin(); it != iconNames_.cend(); ++it) actions_.value(it.key())->setIcon(icons_.get(it.value()));
}

void Menues::show(const Hauptfenster& record, const std::function<bool(Befehl)>& possible) {
    for (QAction* action : actions_)
        if (action->data().isValid()) action->setEnabled(possible(static_cast<Befehl>(action->data().toInt())));
    if (!record.mnuRegSave.empty()) action(QStringLiteral("mnuRegSave"))->setText(qt(record.mnuRegSave));
    if (!record.mnuDefault.empty()) action(QStringLiteral("mnuDefault"))->setText(qt(record.mnuDefault));
    for (auto it = actions_.cbegin(); it != actions_.cend(); ++it)
        it.value()->setVisible(!record.istVersteckt(utf8(it.key())));
    if (!record.blnNTFamilie) action(QStringLiteral("mnuRegedt32"))->setVisible(false);
    action(QStringLiteral("mnuFavListe"))->setEnabled(!menu(QStringLiteral("mnuFavListe"))->isEmpty());
}

}  // namespace brenvik
