#include "shell/program/LoadWindow.h"

#include "registry/Settings.h"
#include "registry/ValueOperations.h"
#include "shell/widgets/Colours.h"
#include "shell/widgets/Dialogs.h"
#include "shell/widgets/Twips.h"

namespace brenvik {

void LoadWindow::Update(int percent) {
    if (info_) info_->Update(percent);
}

void LoadWindow::showInfo() {
    setColourMode(application_, colourModeOf(ReadRegistryKey(ctx_, std::string(SettingsPath) + "Farbschema", ctx_.einstellungen.ColourScheme)));
    if (!withInfo_) return;
    const MainWindowSettings place = loadWindowPlace(ctx_);
    info_ = std::make_unique<frmBVK_Info>(ctx_);
    FormZentrieren({toPixels(place.MainLeft), toPixels(place.MainTop), toPixels(place.MainWidth), toPixels(place.MainHeight)}, *info_);
    info_->show();
}

void LoadWindow::selectTab(int tab) {
    ctx_.frmBVK_Prog.tbsTree = tab;
    main_.showTab();
}

// The machine is named before anything of it is chosen.
void LoadWindow::showMain() {
    ctx_.frmBVK_Prog.sbrBVK[0] = "PC: " + ctx_.machineDisplay();
    main_.windowChanged();
    main_.show();
}

}  // namespace brenvik
