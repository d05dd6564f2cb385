#pragma once
// Commands that need no window of their own: another database, the tools of the system.
#include "shell/program/WindowParts.h"

namespace brenvik {

void connectDatabaseChoice(WindowParts& parts);
void connectTools(WindowParts& parts);

}  // namespace brenvik
