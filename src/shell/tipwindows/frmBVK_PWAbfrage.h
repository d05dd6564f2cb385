#pragma once
// Asks for the start password. Closing it any other way than by the right password leaves the request unpassed.
#include <QLineEdit>

#include "frame/program/StartPassword.h"
#include "shell/widgets/Dialogs.h"

namespace brenvik {

class frmBVK_PWAbfrage : public Dialog {
public:
    frmBVK_PWAbfrage(UserPort& port, PWAbfrageRequest& request, QWidget* parent);

private:
    void cmdOK();
    UserPort& port_;
    PWAbfrageRequest& request_;
    QLineEdit* txtPW_;
};

}  // namespace brenvik
