#pragma once
// For which systems a Tip is meant.
#include "shell/windows/InfoWindows.h"
#include "tipdb/Tipp.h"

namespace brenvik {

class frmBVK_OSFreigabe : public InfoWindows {
public:
    frmBVK_OSFreigabe(const Tipp& tipp, QWidget* parent);
};

}  // namespace brenvik
