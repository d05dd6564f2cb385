#pragma once
// Hooks history and favourites in: their commands, windows, menu and band.
#include "lists/Lists.h"
#include "shell/program/WindowParts.h"

namespace brenvik {

void connectLists(WindowParts& parts, Listen& listen);   // both outlive the window's events

}  // namespace brenvik
