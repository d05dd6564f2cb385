// The one table from panel kind to its view.
#include "shell/panels/PanelAuswahl.h"
#include "shell/panels/PanelCheckBox.h"
#include "shell/panels/PanelDrive.h"
#include "shell/panels/PanelFarbe.h"
#include "shell/panels/PanelListe.h"
#include "shell/panels/PanelSchalter.h"
#include "shell/panels/PanelTextWerte.h"
#include "shell/panels/PanelZahlenWerte.h"

namespace brenvik {

PanelView* makePanelView(PanelHost& host, std::size_t place, const Panel& panel, QWidget* parent) {
    switch (panel.Ausgabeart) {
        case art::CheckBox: return new PanelCheckBox(host, place, parent);
        case art::TextWerte: return new PanelTextWerte(host, place, panel, parent);
        case art::ZahlenWerte: return new PanelZahlenWerte(host, place, parent);
        case art::AuswahlBox: return new PanelAuswahlBox(host, place, parent);
        case art::OptionsAuswahl: return new PanelOptionsAuswahl(host, place, parent);
        case art::Drive: return new PanelDrive(host, place, parent);
        case art::Farbe: return new PanelFarbe(host, place, parent);
        case art::Liste:
        case art::Kontext: return new PanelListe(host, place, parent);
        case art::BootINI: return new PanelBootINI(host, place, panel, parent);
        case art::BitMaske: return new PanelBitMaske(host, place, panel, parent);
        default: return nullptr;
    }
}

}  // namespace brenvik
