#pragma once
// The commands of the main window. Menu entries, toolbar buttons and buttons name one; whoever builds a subsystem gives
// its command a handler with frmBVK_Prog::setCommand. A command without handler is there, but disabled.
#include <QString>

#include "tipengine/MainWindow.h"

namespace brenvik {

enum class Befehl {
    Keiner,
    // Datei
    BVKDBLaden, AndereDBLaden, Backup, Beenden,
    // Bearbeiten; RegSave, RegDel and Default belong to the engine
    RegSave, RegDel, Default, Suchen, BSFreigabe,
    // Ansicht; the window's own
    FavLeiste, FavButtonleiste, IconsMitText, IconsOhneText,
    // File
    RegFileSave, ADMFileSave, AddRegListe, SrvRegListe, AddADMListe, SrvADMListe, ListeLaden,
    // Extras
    SystemInfo, Regedit, Regedt32, RegBrowser, KeyInfo, Optionen,
    // Favoriten
    FavAdd, FavDel, FavVerwalten, FavLaden,
    // Tools
    Gpedit, Dxdiag, Sigverif, Msinfo32, DrWatson16, DrWatson32, Eventvwr,
    // Hilfe
    BVKInfo, BVKInhalt, OSTInfo, OSTInhalt, OSTHome, OSTDownload, OSTShop, EMail, About, TippHilfe, Protokoll, Programmordner,
    // Toolbar only
    Netz, Profil, History,
};

using EnableFlag = bool Hauptfenster::*;

// The flag of the record that a command waits for; none for commands that are always possible.
EnableFlag enableFlagOf(Befehl befehl);

struct MenuEntry {
    const char* parent;     // control name of the menu it stands in; empty: the menu bar
    const char* name;
    const char* caption;
    Befehl befehl;          // Keiner: a sub menu
    const char* icon;
    bool separatorBefore = false;
};

struct ToolButton {
    const char* name;
    int caption;            // strBVKToolbar
    int tip;                // strBVKTips
    Befehl befehl;
    const char* icon;
    bool separatorBefore = false;
};

}  // namespace brenvik
