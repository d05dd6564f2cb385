#pragma once
// What a home gets when it is new: the registry of a small Windows and its C: drive, from the data that lie in the
// folder "erststart" beside the program.
#include <filesystem>
#include <string>
#include <vector>

#include "registry/store/RegStore.h"

namespace brenvik {

class SqliteStore;

// Merges the folder's *.reg files in the order of their names into an empty store, in one transaction. False: the store
// was not empty and is as it was. Throws NumberedError with a German message that names the file; the store stays empty.
bool fillEmptyStore(SqliteStore& store, const std::filesystem::path& firstStartFolder);

// Makes the home if it is not there, its owner's alone; a folder that holds other things too keeps its rights. Answers why it cannot be made, empty if it is there.
// Throws StoreOpenError if a file of the program is a link there.
std::string privateHome(const std::filesystem::path& home);
void privateFiles(const std::filesystem::path& home);

// Copies the folder's drive_c to the home if the home has none. False: it had one, or another start made one meanwhile.
// Throws NumberedError.
bool copyDriveC(const std::filesystem::path& firstStartFolder, const std::filesystem::path& home);

// The shipped files that the home's drive lacks, as Windows paths: two early starts at a time could leave it incomplete.
// Asked until completeDriveC or confirmDriveC said that the drive is as it shall be; files deleted later are the user's business.
std::vector<std::string> missingOnDriveC(const std::filesystem::path& firstStartFolder, const std::filesystem::path& home);
void completeDriveC(const std::filesystem::path& firstStartFolder, const std::filesystem::path& home);   // touches no file that is there; throws NumberedError
void confirmDriveC(const std::filesystem::path& home);

}  // namespace brenvik
