#pragma once
// The journal's file: opening, its tables, and the statements that are used again and again.
#include <filesystem>

#include "registry/Sqlite.h"

namespace brenvik {

// Opens the journal, makes it if it is not there. Throws sqlite::Error, or NumberedError for a file that is none.
std::unique_ptr<sqlite::Database> openJournal(const std::filesystem::path& file);
// What the user is told of a failure.
std::string journalFailure(const std::filesystem::path& file, const sqlite::Error& error);

}  // namespace brenvik
