#pragma once
// The figures of a system that was not recognised, for the user to send in.
#include "frame/program/Detection.h"
#include "shell/widgets/Dialogs.h"

namespace brenvik {

class frmBVK_OSErkennung : public Dialog {
public:
    frmBVK_OSErkennung(OSErkennungRequest& request, QWidget* parent);
};

}  // namespace brenvik
