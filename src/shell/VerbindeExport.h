#pragma once
// Hooks the export commands and the window of the lists into the program.
#include "export/Export.h"
#include "shell/Fensterteile.h"

namespace brenvik {

void verbindeExport(Fensterteile& teile, Export& exporte);

}  // namespace brenvik
