#pragma once
// Hooks history and favourites in: their commands, windows, menu and band.
#include "lists/Listen.h"
#include "shell/Fensterteile.h"

namespace brenvik {

void verbindeListen(Fensterteile& teile, Listen& listen);   // both outlive the window's events

}  // namespace brenvik
