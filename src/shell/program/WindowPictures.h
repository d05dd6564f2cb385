#pragma once
// Pictures of every window of the program, for the documentation and for whoever changes a window's looks.
#include <filesystem>

#include "shell/program/WindowParts.h"

namespace brenvik {

// Writes them as PNG, in light and dark, at the scale of this process. Throws NumberedError if a picture cannot be written or
// a window does not open.
void takeScreenshots(WindowParts& parts, const std::filesystem::path& folder);

// The same in a second process at 2x, unless this process runs at a scale of its own choice. The home must be closed by now.
void takeScreenshotsAtDoubleScale(const std::filesystem::path& folder, const std::filesystem::path& home);

}  // namespace brenvik
