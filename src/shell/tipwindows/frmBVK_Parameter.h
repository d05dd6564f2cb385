#pragma once
// The help about the program's own switches.
#include "frame/program/CommandLineText.h"
#include "shell/widgets/Dialogs.h"

namespace brenvik {

class frmBVK_Parameter : public Dialog {
public:
    frmBVK_Parameter(ParameterRequest& request, QWidget* parent);
};

}  // namespace brenvik
