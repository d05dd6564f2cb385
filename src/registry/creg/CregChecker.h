#pragma once
// Verifies a registry file of the 9x family down to what no reader needs and Windows relies on: sizes, flags and checksums, the tiling
// of the slot table, links, both kinds of free lists, counts and numbers, one record for each key.
#include <vector>

#include "registry/creg/CregFormat.h"
#include "registry/hive/HiveFinding.h"

namespace brenvik {

// A file with a fault is not written. Findings that are no faults concern single keys (registry/creg/CregWriter.h).
std::vector<HiveFinding> checkCreg(cregfmt::ByteSpan file);

}  // namespace brenvik
