#pragma once
// Overwrite the chosen boot entry, or keep it and make another one under a new name.
#include <QLineEdit>

#include "frame/UserPort.h"
#include "shell/widgets/Dialogs.h"
#include "tipengine/WindowRequests.h"

namespace brenvik {

class frmBVK_BootINI : public Dialog {
public:
    frmBVK_BootINI(UserPort& port, BootINIRequest& request, QWidget* parent);

private:
    void cmdOK();
    UserPort& port_;
    BootINIRequest& request_;
    QLineEdit* txtBootWert_;
};

}  // namespace brenvik
