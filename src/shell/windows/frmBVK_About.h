#pragma once
#include "shell/windows/InfoWindows.h"

namespace brenvik {

class frmBVK_About : public InfoWindows {
public:
    frmBVK_About(const std::string& strProgVersion, QWidget* parent);
};

}  // namespace brenvik
