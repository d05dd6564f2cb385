#include "shell/program/LoadWindow.h"

#include "registry/Settings.h"
#include "registry/ValueOperations.h"
#include "shell/widgets/Colours.h"
#include "shell/widgets/Dialogs.h"
#include "shell/widgets/Twips.h"

namespace brenvik {

void Ladefenster::Update(int percent) {
    if (info_) info_->Update(percent);
}

void Ladefenster::showInfo() {
    setColourMode(application_, colourModeOf(ReadRegistryKey(ctx_, std::string(EinstellungenPfad) + "Farbschema", ctx_.einstellungen.Farbschema)));
    if (!withInfo_) return;
    const FensterEinstellungen place = loadWindowPlace(ctx_);
    info_ = std::make_unique<frmBVK_Info>(ctx_);
    FormZentrieren({toPixels(place.MainLeft), toPixels(place.MainTop), toPixels(place.MainWidth), toPixels(place.MainHeight)}, *info_);
    info_->show();
}

void Ladefenster::selectTab(int tab) {
    ctx_.frmBVK_Prog.tbsTree = tab;
    main_.showTab();
}

// The machine is named before anything of it is chosen.
void Ladefenster::showMain() {
    ctx_.frmBVK_Prog.sbrBVK[0] = "PC: " + ctx_.rechnerAnzeige();
    main_.windowChanged();
    main_.show();
}

}  // namespace brenvik
