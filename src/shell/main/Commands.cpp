#include "shell/main/Commands.h"

namespace brenvik {

EnableFlag enableFlagOf(Command command) {
    switch (command) {
        case Command::RegSave: return &MainWindow::KeySave;
        case Command::RegDel: return &MainWindow::KeyDel;
        case Command::Default: return &MainWindow::Default;
        case Command::RegFileSave:
        case Command::AddRegListe: return &MainWindow::RegFile;
        case Command::ADMFileSave:
        case Command::AddADMListe: return &MainWindow::ADMFile;
        case Command::KeyInfo: return &MainWindow::KeyInfo;
        case Command::SrvRegListe: return &MainWindow::RegListe;
        case Command::SrvADMListe: return &MainWindow::ADMListe;
        case Command::BSFreigabe: return &MainWindow::mnuBSFreigabe;
        case Command::History: return &MainWindow::tbrHistory;
        default: return nullptr;
    }
}

}  // namespace brenvik
