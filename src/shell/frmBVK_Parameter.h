#pragma once
// The help about the program's own switches.
#include "frame/Kommandozeile.h"
#include "shell/Dialoge.h"

namespace brenvik {

class frmBVK_Parameter : public Dialog {
public:
    frmBVK_Parameter(ParameterAnfrage& request, QWidget* parent);
};

}  // namespace brenvik
