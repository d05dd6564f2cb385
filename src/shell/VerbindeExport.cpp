#include "shell/VerbindeExport.h"

#include "shell/frmBVK_Prog.h"

namespace brenvik {

void verbindeExport(Fensterteile& teile, Export& exporte) {
    frmBVK_Prog& window = teile.fenster;
    // Each of them may change what the window offers.
    const auto on = [&](Befehl befehl, std::function<void()> work) {
        window.setCommand(befehl, [&window, work = std::move(work)] {
            work();
            window.windowChanged();
        });
    };
    on(Befehl::RegFileSave, [&exporte] { exporte.RegFileSave(false); });
    on(Befehl::ADMFileSave, [&exporte] { exporte.ADMFileSave(false); });
    on(Befehl::AddRegListe, [&exporte] { exporte.addRegListe(); });
    on(Befehl::AddADMListe, [&exporte] { exporte.addADMListe(); });
    on(Befehl::SrvRegListe, [&exporte] { exporte.showRegListe(); });
    on(Befehl::SrvADMListe, [&exporte] { exporte.showADMListe(); });
}

}  // namespace brenvik
