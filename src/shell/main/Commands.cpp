#include "shell/main/Commands.h"

namespace brenvik {

EnableFlag enableFlagOf(Befehl befehl) {
    switch (befehl) {
        case Befehl::RegSave: return &Hauptfenster::KeySave;
        case Befehl::RegDel: return &Hauptfenster::KeyDel;
        case Befehl::Default: return &Hauptfenster::Default;
        case Befehl::RegFileSave:
        case Befehl::AddRegListe: return &Hauptfenster::RegFile;
        case Befehl::ADMFileSave:
        case Befehl::AddADMListe: return &Hauptfenster::ADMFile;
        case Befehl::KeyInfo: return &Hauptfenster::KeyInfo;
        case Befehl::SrvRegListe: return &Hauptfenster::RegListe;
        case Befehl::SrvADMListe: return &Hauptfenster::ADMListe;
        case Befehl::BSFreigabe: return &Hauptfenster::mnuBSFreigabe;
        case Befehl::History: return &Hauptfenster::tbrHistory;
        default: return nullptr;
    }
}

}  // namespace brenvik
