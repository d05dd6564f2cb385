#pragma once
// Asks the user to send in the figures of a system that was not recognised.
#include "shell/Infofenster.h"
#include "tipengine/Fensteranfragen.h"

namespace brenvik {

class frmBVK_OSErkennung : public Infofenster {
public:
    frmBVK_OSErkennung(const OSErkennungAnfrage& request, QWidget* parent);
};

}  // namespace brenvik
