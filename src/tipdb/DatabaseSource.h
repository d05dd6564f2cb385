#pragma once
// Reads the tables of a tip database file into memory. Jet 3, Jet 4 and SQLite files are told apart by their first bytes.
#include <filesystem>
#include <string>
#include <vector>

#include "tipdb/Table.h"

namespace brenvik {

// Reads those of the named tables that are there, whole or not at all: damage in one of them is a DatabaseErrors, as
// are an unknown format and a wrong password (dberr::AuthenticationFailed). A password for an unprotected file is ignored.
Records readDatabase(const std::filesystem::path& file, const std::string& password, const std::vector<std::string>& tables);

// The two formats, each given the whole content of its file.
Records readJetDatabase(std::string bytes, const std::string& password, const std::vector<std::string>& tables);
Records readSqliteDatabase(std::string bytes, const std::vector<std::string>& tables);

}  // namespace brenvik
