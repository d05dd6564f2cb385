#pragma once
// The journal's file: opening, its tables, and the statements that are used again and again.
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "registry/store/Sqlite.h"

namespace brenvik {

// Opens the journal, makes it if it is not there. Where nothing can be written it is what the journal holds, only to be read.
// Throws sqlite::Error, or NumberedError for a file that is none.
std::unique_ptr<sqlite::Database> openJournal(const std::filesystem::path& file);
bool isWritable(sqlite::Database& journal);
// Takes changes with all that undid or redid them out of the tables, in a transaction of the caller's.
void forgetChanges(sqlite::Database& database, const std::vector<std::int64_t>& numbers);
std::vector<std::int64_t> tooLongChanges(sqlite::Database& database);
// What the user is told of a failure.
std::string journalFailure(const std::filesystem::path& file, const sqlite::Error& error);

}  // namespace brenvik
