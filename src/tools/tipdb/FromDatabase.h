#pragma once
// Brings the tables of a finished database into the form that the rules check.
#include <filesystem>

#include "Model.h"

namespace brenvik::tipbuild {

// Throws DatabaseErrors if the file cannot be read. Missing tables and cells that do not fit are complaints.
Stock readFinishedDatabase(const std::filesystem::path& file, const std::string& password, Complaints& complaints);

}  // namespace brenvik::tipbau
