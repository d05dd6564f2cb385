#pragma once
// Hooks the search, the options, the start password and the registry browser in.
#include <functional>

#include "shell/program/WindowParts.h"

namespace brenvik {

class TippMaschine;
struct Suchauftrag;

void verbindeSucheOptionenBrowser(Fensterteile& teile);

// What the commands do; all windows open through the context's port.
void zeigeSuche(TippMaschine& engine, Suchauftrag& auftrag);                       // auftrag: as it was left the last time
void zeigeOptionen(TippMaschine& engine, const std::function<void()>& listenOrdnerNeu);
void zeigeRegBrowser(TippMaschine& engine, ChangeRecorder& recorder);

}  // namespace brenvik
