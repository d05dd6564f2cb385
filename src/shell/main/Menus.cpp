#include "shell/main/Menus.h"

#include <algorithm>

#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr MenuEntry Entries[] = {
    {"", "mnuDatei", "&Datei", Command::None, ""},
    {"mnuDatei", "mnuDBLoad", "Datenbank &laden", Command::None, "datenbank"},
    {"mnuDBLoad", "mnuBVKDBLoad", "&BVK DB Laden", Command::BVKDBLaden, "datenbank"},
    {"mnuDBLoad", "mnuandereDBLoad", "&Andere DB Laden", Command::LoadOtherDB, "ordner"},
    {"mnuDatei", "mnuBackupRestore", "&Registry Sichern/Herstellen", Command::Backup, "backup"},
    {"mnuDatei", "mnuBeenden", "Programm &Beenden", Command::Beenden, "beenden", true},

    {"", "mnuBearbeiten", "&Bearbeiten", Command::None, ""},
    {"mnuBearbeiten", "mnuRegSave", "Wert s&peichern...", Command::RegSave, "speichern"},
    {"mnuBearbeiten", "mnuRegDel", "Wert &löschen...", Command::RegDel, "loeschen"},
    {"mnuBearbeiten", "mnuDefault", "Stan&dard...", Command::Default, "standard"},
    {"mnuBearbeiten", "mnuRegSuchen", "&Suchen", Command::Suchen, "suchen", true},
    {"mnuBearbeiten", "mnuBSFreigabe", "&Freigegeben für folgende BS...", Command::BSFreigabe, "systeme"},

    {"", "mnuAnsicht", "&Ansicht", Command::None, ""},
    {"mnuAnsicht", "mnuFavShow", "Favoriten &Leiste anzeigen", Command::FavBar, ""},
    {"mnuAnsicht", "mnuFavButton", "Favoriten &Buttonleiste", Command::FavButtonBar, ""},
    {"mnuAnsicht", "mnuButtonIcons", "&Button Icons", Command::None, "text", true},
    {"mnuButtonIcons", "mnuIcoTXTOn", "Icons mit Text", Command::IconsMitText, ""},
    {"mnuButtonIcons", "mnuIcoTXTOff", "Icons ohne Text", Command::IconsWithoutText, ""},

    {"", "mnuFile", "F&ile", Command::None, ""},
    {"mnuFile", "mnuRegFileSave", "REG File vom aktuellen Tipp erstellen", Command::RegFileSave, "regdatei"},
    {"mnuFile", "mnuADMFileSave", "ADM File vom aktuellen Tipp erstellen", Command::ADMFileSave, "admdatei"},
    {"mnuFile", "mnuAddRegListe", "Tipp zur REG-File Liste &hinzufügen", Command::AddRegListe, "regplus", true},
    {"mnuFile", "mnuSrvRegListe", "REG-File Liste speichern", Command::SrvRegListe, "regliste"},
    {"mnuFile", "mnuAddADMListe", "Tipp zur ADM-File Liste hinzufügen", Command::AddADMListe, "admplus", true},
    {"mnuFile", "mnuSrvADMListe", "ADM-File Liste speichern", Command::SrvADMListe, "admliste"},
    {"mnuFile", "mnuListeLaden", "Liste &laden...", Command::ListLoad, "ordner", true},

    {"", "mnuExtras", "E&xtras", Command::None, ""},
    {"mnuExtras", "mnuSystemInfo", "&System Info", Command::SystemInfo, "systeminfo"},
    {"mnuExtras", "mnuRegedit", "&Regedit", Command::Regedit, "regedit"},
    {"mnuExtras", "mnuRegedt32", "Regedit&32", Command::Regedt32, "regedit"},
    {"mnuExtras", "mnuBvkReg", "BVK Registry &Browser", Command::RegBrowser, "browser"},
    {"mnuExtras", "mnuKeyInfo", "&Key Info", Command::KeyInfo, "schluessel"},
    {"mnuExtras", "mnuOptionen", "&Optionen...", Command::Optionen, "optionen", true},

    {"", "mnuFav", "&Favoriten", Command::None, ""},
    {"mnuFav", "mnuFavAdd", "Favorite &hinzufügen", Command::FavAdd, "favplus"},
    {"mnuFav", "mnuFavDel", "Favoriten &verwalten...", Command::FavManage, "favoriten"},
    {"mnuFav", "mnuFavListe", "&Favoriten", Command::None, "favoriten", true},

    {"", "mnuTools", "&Tools", Command::None, ""},
    {"mnuTools", "mnugpedit", "Gruppenrichtlinie", Command::Gpedit, "richtlinie"},
    {"mnuTools", "mnudxdiag", "Directx-Diagnoseprogramm", Command::Dxdiag, "diagnose"},
    {"mnuTools", "mnusugverif", "Dateisignaturverifizierung", Command::Sigverif, "signatur"},
    {"mnuTools", "mnumsinfo32", "Systeminformationen", Command::Msinfo32, "systeminfo"},
    {"mnuTools", "mnuDrWotson", "Dr. Watson (Fehlermeldungen)", Command::None, "fehlerbericht"},
    {"mnuDrWotson", "mnuDrWotson16", "Dr. Watson 16", Command::DrWatson16, ""},
    {"mnuDrWotson", "mnuDrwtsn32", "Dr. Watson 32", Command::DrWatson32, ""},
    {"mnuTools", "mnueventvwr", "Ereignisanzeige", Command::Eventvwr, "ereignisse"},

    {"", "mnuHilfe", "&Hilfe", Command::None, ""},
    {"mnuHilfe", "mnuBVKInfo", "&Brenvik (Info)", Command::BVKInfo, "hilfe"},
    {"mnuHilfe", "mnuBVKInhalt", "Brenvik (Inhalt)", Command::BVKContents, "inhalt"},
    {"mnuHilfe", "mnuOSTInfo", "&Ostrana (Info)", Command::OSTInfo, "hilfe", true},
    {"mnuHilfe", "mnuOSTInhalt", "Ost&rana (Inhalt)", Command::OSTInhalt, "inhalt"},
    {"mnuHilfe", "mnuInternet", "&Internet", Command::None, "internet", true},
    {"mnuInternet", "mnuOSTHome", "Ostrana &Homepage", Command::OSTHome, "internet"},
    {"mnuInternet", "mnuOSTDL", "Ostrana &Download", Command::OSTDownload, "herunterladen"},
    {"mnuInternet", "mnuOSTShop", "Ostrana &Shop", Command::OSTShop, "laden"},
    {"mnuHilfe", "mnuEMail", "&eMail an den Autor", Command::EMail, "email"},
    {"mnuHilfe", "mnuProtokoll", "&Protokoll öffnen", Command::Log, "", true},
    {"mnuHilfe", "mnuProgrammordner", "Ord&ner des Programms zeigen", Command::ProgramFolder, "ordner"},
    {"mnuHilfe", "mnuAbout", "&About", Command::About, "info", true},
};

bool isCheckable(Command command) {
    return command == Command::FavBar || command == Command::FavButtonBar || command == Command::IconsMitText || command == Command::IconsWithoutText;
}

}  // namespace

Menus::Menus(QMenuBar& bar, IconSet& icons, std::function<void(Command, const QString&)> run) : icons_(icons), run_(std::move(run)) {
    for (const MenuEntry& entry : Entries) add(entry, bar);
    refreshIcons();
}

void Menus::add(const MenuEntry& entry, QMenuBar& bar) {
    QMenu* parent = menus_.value(QString::fromUtf8(entry.parent));
    const QString name = QString::fromUtf8(entry.name), caption = QString::fromUtf8(entry.caption);
    if (parent && entry.separatorBefore) parent->addSeparator();
    QAction* action = nullptr;
    if (entry.command == Command::None) {
        QMenu* menu = parent ? parent->addMenu(caption) : bar.addMenu(caption);
        menu->setObjectName(name + QStringLiteral(".Menu"));
        menus_.insert(name, menu);
        action = menu->menuAction();
    } else {
        action = parent->addAction(caption);
        action->setCheckable(isCheckable(entry.command));
        const Command command = entry.command;
        QObject::connect(action, &QAction::triggered, &bar, [this, command, name] { run_(command, name); });
        action->setData(static_cast<int>(command));
    }
    action->setObjectName(name);
    action->setMenuRole(QAction::NoRole);
    actions_.insert(name, action);
    iconNames_.insert(name, QString::fromUtf8(entry.icon));
}

void Menus::refreshIcons() {
    for (auto it = iconNames_.cbegin(); it != iconNames_.cend(); ++it) actions_.value(it.key())->setIcon(icons_.get(it.value()));
}

void Menus::show(const MainWindow& record, const std::function<bool(Command)>& possible) {
    for (QAction* action : actions_)
        if (action->data().isValid()) action->setEnabled(possible(static_cast<Command>(action->data().toInt())));
    if (!record.mnuRegSave.empty()) action(QStringLiteral("mnuRegSave"))->setText(qt(record.mnuRegSave));
    if (!record.mnuDefault.empty()) action(QStringLiteral("mnuDefault"))->setText(qt(record.mnuDefault));
    for (auto it = actions_.cbegin(); it != actions_.cend(); ++it)
        it.value()->setVisible(!record.isHidden(utf8(it.key())));
    if (!record.blnNTFamilie) action(QStringLiteral("mnuRegedt32"))->setVisible(false);
    action(QStringLiteral("mnuFavListe"))->setEnabled(!menu(QStringLiteral("mnuFavListe"))->isEmpty());
}

}  // namespace brenvik
