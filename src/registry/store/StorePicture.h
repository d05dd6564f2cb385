#pragma once
// Reading a file of the database engine where nothing can be written beside it (no right, a full or read-only disk): what it holds at this
// moment, in memory. The engine's own way of reading would need files of its own in the same folder.
#include <filesystem>
#include <memory>
#include <system_error>

#include "registry/store/Sqlite.h"

namespace brenvik {

// Takes along what is only in the file's log. Throws sqlite::Error; SQLITE_NOMEM: the file is too large for it.
std::unique_ptr<sqlite::Database> pictureOf(const std::filesystem::path& file);

// Why the file, which need not be there, or its folder cannot be written; no error if nothing stands against it.
std::error_code whyNotWritable(const std::filesystem::path& file);

std::filesystem::path sqliteLogOf(const std::filesystem::path& file);   // its write-ahead log

}  // namespace brenvik
