#include "shell/program/ConnectExport.h"

#include "shell/main/frmBVK_Prog.h"

namespace brenvik {

void connectExport(frmBVK_Prog& windows, Export& exports) {
    // Each of them may change what the window offers.
    const auto on = [&](Command command, std::function<void()> work) {
        windows.setCommand(command, [&windows, work = std::move(work)] {
            work();
            windows.windowChanged();
        });
    };
    on(Command::RegFileSave, [&exports] { exports.RegFileSave(false); });
    on(Command::ADMFileSave, [&exports] { exports.ADMFileSave(false); });
    on(Command::AddRegListe, [&exports] { exports.addRegListe(); });
    on(Command::AddADMListe, [&exports] { exports.addADMListe(); });
    on(Command::SrvRegListe, [&exports] { exports.showRegListe(); });
    on(Command::SrvADMListe, [&exports] { exports.showADMListe(); });
    on(Command::ListLoad, [&exports] { exports.loadList(); });
}

}  // namespace brenvik
