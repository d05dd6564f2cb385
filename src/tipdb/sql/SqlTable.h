#pragma once
// Shows a table in memory to the SQL engine under its own name.
#include "tipdb/Table.h"

struct sqlite3;

namespace brenvik {

inline constexpr const char* TextCollation = "JETTEXT";

// The table must outlive the connection.
int registerTable(sqlite3* db, const Table& table);

}  // namespace brenvik
