#pragma once
// The folders of the list files, and whether the files in them can be written.
#include <string>

#include "tipengine/Context.h"

namespace brenvik {

inline constexpr const char* HistoryFile = "History.txt";
inline constexpr const char* FavouritesFile = "Favoriten.txt";

// The folder itself, or the one that the user chooses because it cannot be reached; the old one if the user cancels.
std::string FolderExit(FrameContext& ctx, const std::string& path);
// Whether the file can be opened for writing; makes it if it is not there.
bool FileWrite(FrameContext& ctx, const std::string& path);
std::string browseForListFolder(FrameContext& ctx, const std::string& present);

}  // namespace brenvik
