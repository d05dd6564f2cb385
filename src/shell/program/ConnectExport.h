#pragma once
// Hooks the export commands into the main window. The window of the lists is one of the port's own.
#include "export/Export.h"

namespace brenvik {

class frmBVK_Prog;

void connectExport(frmBVK_Prog& windows, Export& exports);

}  // namespace brenvik
