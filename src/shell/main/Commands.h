#pragma once
// The commands of the main window. Menu entries, toolbar buttons and buttons name one; whoever builds a subsystem gives
// its command a handler with frmBVK_Prog::setCommand. A command without handler is there, but disabled.
#include <QString>

#include "tipengine/MainWindow.h"

namespace brenvik {

enum class Command {
    None,
    // Datei
    BVKDBLaden, LoadOtherDB, Backup, Beenden,
    // Bearbeiten; RegSave, RegDel and Default belong to the engine
    RegSave, RegDel, Default, Suchen, BSFreigabe,
    // View; the window's own
    FavBar, FavButtonBar, IconsMitText, IconsWithoutText,
    // File
    RegFileSave, ADMFileSave, AddRegListe, SrvRegListe, AddADMListe, SrvADMListe, ListLoad,
    // Extras
    SystemInfo, Regedit, Regedt32, RegBrowser, KeyInfo, Optionen,
    // Favoriten
    FavAdd, FavDel, FavManage, FavLaden,
    // Tools
    Gpedit, Dxdiag, Sigverif, Msinfo32, DrWatson16, DrWatson32, Eventvwr,
    // Hilfe
    BVKInfo, BVKContents, OSTInfo, OSTInhalt, OSTHome, OSTDownload, OSTShop, EMail, About, TipHelp, Log, ProgramFolder,
    // Toolbar only
    Net, Profile, History,
};

using EnableFlag = bool MainWindow::*;

// The flag of the record that a command waits for; none for commands that are always possible.
EnableFlag enableFlagOf(Command command);

struct MenuEntry {
    const char* parent;     // control name of the menu it stands in; empty: the menu bar
    const char* name;
    const char* caption;
    Command command;          // None: a sub menu
    const char* icon;
    bool separatorBefore = false;
};

struct ToolButton {
    const char* name;
    int caption;            // strBVKToolbar
    int tip;                // strBVKTips
    Command command;
    const char* icon;
    bool separatorBefore = false;
};

}  // namespace brenvik
