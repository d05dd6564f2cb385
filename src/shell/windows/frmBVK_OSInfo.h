#pragma once
// Versions of system, browser component, program and database.
#include "shell/windows/InfoWindows.h"
#include "tipdb/TipdbContext.h"

namespace brenvik {

class frmBVK_OSInfo : public InfoWindows {
public:
    frmBVK_OSInfo(const TipdbContext& ctx, QWidget* parent);
};

// "6.00.2900", or the text for what is not known where there is no such component.
std::string browserVersionText(const FrameContext& ctx);

}  // namespace brenvik
