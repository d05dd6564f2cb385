#pragma once
// What a home gets when it is new: the registry of a small Windows and its C: drive, from the data that lie in the
// folder "erststart" beside the program.
#include <filesystem>

#include "registry/RegStore.h"

namespace brenvik {

class SqliteStore;

// Merges the folder's *.reg files in the order of their names into an empty store, in one transaction. False: the store
// was not empty and is as it was. Throws NumberedError with a German message that names the file; the store stays empty.
bool fillEmptyStore(SqliteStore& store, const std::filesystem::path& firstStartFolder);

// Copies the folder's drive_c to the home if the home has none. False: it had one. Throws NumberedError.
bool copyDriveC(const std::filesystem::path& firstStartFolder, const std::filesystem::path& home);

}  // namespace brenvik
