#pragma once
// What SQLite says is English; here it is in the words of this program's reports.
#include <string>

#include "tipdb/DatabaseErrors.h"

struct sqlite3;

namespace brenvik {

// Why a statement over the tables in memory failed last; a table that is missing has a number of its own.
DatabaseErrors statementError(sqlite3* db);

// Why a file cannot be read, as half a sentence.
std::string fileReason(int resultCode);

}  // namespace brenvik
