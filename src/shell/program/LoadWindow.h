#pragma once
// The windows of the load sequence: frmBVK_Info and the main window.
#include <memory>

#include "shell/main/frmBVK_Prog.h"
#include "shell/windows/frmBVK_Info.h"
#include "tipengine/Context.h"
#include "tipengine/LoadSequence.h"

namespace brenvik {

class LoadWindow : public StartWindow {
public:
    // withInfo: the start window is shown (and waits for the user, if he wants it to).
    LoadWindow(QApplication& application, Context& ctx, frmBVK_Prog& main, bool withInfo)
        : application_(application), ctx_(ctx), main_(main), withInfo_(withInfo) {}

    void Update(int percent) override;
    void showInfo() override;
    void closeInfo() override { info_.reset(); }
    void loadWindowSettings() override { main_.applySettings(brenvik::loadWindowSettings(ctx_)); }
    void setCaption() override { main_.setVersion(ctx_.strProgVersion); }
    void selectTab(int tab) override;
    void showMain() override;
    void NavBar() override { main_.NavBar(); }

private:
    QApplication& application_;
    Context& ctx_;
    frmBVK_Prog& main_;
    bool withInfo_;
    std::unique_ptr<frmBVK_Info> info_;
};

}  // namespace brenvik
