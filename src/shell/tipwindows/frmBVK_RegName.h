#pragma once
// Asks for the name of a key or value, new or changed.
#include <QLineEdit>

#include "frame/UserPort.h"
#include "shell/widgets/Dialogs.h"

namespace brenvik {

struct RegNameRequest : WindowRequest {
    std::string_view windowName() const override { return "frmBVK_RegName"; }
    std::string titel, question, name;
    bool ok = false;
};

class frmBVK_RegName : public Dialog {
public:
    frmBVK_RegName(RegNameRequest& request, QWidget* parent);

private:
    RegNameRequest& request_;
    QLineEdit* txtName_;
};

}  // namespace brenvik
