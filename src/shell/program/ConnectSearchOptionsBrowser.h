#pragma once
// Hooks the search, the options, the start password and the registry browser in.
#include <functional>

#include "shell/program/WindowParts.h"

namespace brenvik {

class TipEngine;
struct SearchOrder;

void connectSearchOptionsBrowser(WindowParts& parts);

// What the commands do; all windows open through the context's port.
void showSearch(TipEngine& engine, SearchOrder& searchOrder);                       // auftrag: as it was left the last time
void showOptions(TipEngine& engine, const std::function<void()>& listFolderNew);
void showRegBrowser(TipEngine& engine, ChangeRecorder& recorder);

}  // namespace brenvik
