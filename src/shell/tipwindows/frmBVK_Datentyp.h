#pragma once
// The registry holds another data type than the tip database says.
#include "frame/UserPort.h"
#include "shell/widgets/Dialogs.h"
#include "tipengine/WindowRequests.h"

namespace brenvik {

class frmBVK_Datentyp : public Dialog {
public:
    frmBVK_Datentyp(UserPort& port, DatentypRequest& request, QWidget* parent);

private:
    void sendMail();
    UserPort& port_;
    DatentypRequest& request_;
};

}  // namespace brenvik
