#pragma once
// Asks for the name of a key or value, new or changed.
#include <QLineEdit>

#include "frame/UserPort.h"
#include "shell/widgets/Dialogs.h"

namespace brenvik {

struct RegNameAnfrage : WindowRequest {
    std::string_view windowName() const override { return "frmBVK_RegName"; }
    std::string titel, frage, name;
    bool ok = false;
};

class frmBVK_RegName : public Dialog {
public:
    frmBVK_RegName(RegNameAnfrage& request, QWidget* parent);

private:
    RegNameAnfrage& request_;
    QLineEdit* txtName_;
};

}  // namespace brenvik
