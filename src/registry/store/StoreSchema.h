#pragma once
// The tables of a store file: how they are made, and whether a file has them as they were made and nothing else. A file
// may come from anywhere, and what else its schema can hold (triggers, views, generated columns) runs when it is used.
#include <filesystem>

#include "registry/store/Sqlite.h"

namespace brenvik {

void createSchema(sqlite::Database& database);
// Throws StoreOpenError for what another hand has added and for a newer version, sqlite::Error for what is missing.
void checkSchema(sqlite::Database& database, const std::filesystem::path& file);
// Stores of earlier versions lack the columns for the flags of keys; those versions can do with them. A database that may only be
// read gets them for this connection.
void completeSchema(sqlite::Database& database);

}  // namespace brenvik
