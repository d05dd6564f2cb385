#pragma once
// Hooks the help, the information windows and the addresses of the help menu in.
#include "shell/program/WindowParts.h"

namespace brenvik {

void connectHelp(WindowParts& parts);

}  // namespace brenvik
