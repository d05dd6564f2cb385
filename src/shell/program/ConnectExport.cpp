#include "shell/program/ConnectExport.h"

#include "shell/main/frmBVK_Prog.h"

namespace brenvik {

void verbindeExport(frmBVK_Prog& fenster, Export& exporte) {
    // Each of them may change what the window offers.
    const auto on = [&](Befehl befehl, std::function<void()> work) {
        fenster.setCommand(befehl, [&fenster, work = std::move(work)] {
            work();
            fenster.windowChanged();
        });
    };
    on(Befehl::RegFileSave, [&exporte] { exporte.RegFileSave(false); });
    on(Befehl::ADMFileSave, [&exporte] { exporte.ADMFileSave(false); });
    on(Befehl::AddRegListe, [&exporte] { exporte.addRegListe(); });
    on(Befehl::AddADMListe, [&exporte] { exporte.addADMListe(); });
    on(Befehl::SrvRegListe, [&exporte] { exporte.showRegListe(); });
    on(Befehl::SrvADMListe, [&exporte] { exporte.showADMListe(); });
    on(Befehl::ListeLaden, [&exporte] { exporte.loadListe(); });
}

}  // namespace brenvik
