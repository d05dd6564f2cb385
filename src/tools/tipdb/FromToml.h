#pragma once
// Reads the text sources: one TOML file a group, and version.toml.
#include <filesystem>

#include "Model.h"

namespace brenvik::tipbuild {

// Reads version.toml and all other *.toml of the folder in the order of their names. What is not in the format (unknown
// fields, wrong kinds of values, missing fields) is complained about; the rest is filled in as far as it goes.
Stock readSources(const std::filesystem::path& folder, Complaints& complaints);

}  // namespace brenvik::tipbau
