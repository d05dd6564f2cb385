#pragma once
// Turns checked sources into the tables of the tip database and writes them as a SQLite file, the same bytes for the
// same sources.
#include <filesystem>

#include "Model.h"

namespace brenvik::tipbuild {

void writeDatabase(const Stock& stock, const std::filesystem::path& file);  // throws NumberedError

}  // namespace brenvik::tipbau
