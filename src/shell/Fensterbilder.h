#pragma once
// Pictures of every window of the program, for the documentation and for whoever changes a window's looks.
#include <filesystem>

#include "shell/Fensterteile.h"

namespace brenvik {

// Writes them as PNG, in light and dark: at 1x, and, by a second process, at 2x. Throws NumberedError if a picture cannot
// be written or a window does not open.
void takeScreenshots(Fensterteile& teile, const std::filesystem::path& folder);

}  // namespace brenvik
