#pragma once
// Commands that need no window of their own: another database, the tools of the system.
#include "shell/program/WindowParts.h"

namespace brenvik {

void verbindeDatenbankwahl(Fensterteile& teile);
void verbindeWerkzeuge(Fensterteile& teile);

}  // namespace brenvik
