#pragma once
// Verifies a hive file down to what no reader needs and Windows relies on: checksum and sequence numbers, bins and cells, order,
// hashes and hints of key lists, counts, parents, greatest lengths, big data, security cells with their counts and ring,
// cells that nothing refers to.
#include <vector>

#include "registry/hive/HiveFinding.h"
#include "registry/hive/HiveFormat.h"

namespace brenvik {

// Empty: everything is as a writer should leave it. Findings that are no faults are common in files that Windows has used
// for long. A file that is no hive gives the one finding that says so.
std::vector<HiveFinding> checkHive(hivefmt::ByteSpan file);

}  // namespace brenvik
