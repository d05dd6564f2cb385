#pragma once
// Reads a whole hive file into a tree that can be changed and written again.
#include <vector>

#include "registry/hive/Hive.h"
#include "registry/hive/HiveFinding.h"
#include "registry/hive/HiveFormat.h"

namespace brenvik {

struct HiveReading {
    Hive hive;
    std::vector<HiveFinding> findings;   // Salvage only: what was wrong and may be missing
};

// Strict: throws HiveError at the first fault; then nothing has been read. Salvage: what can be read; throws only if the
// file is no hive at all.
HiveReading readHive(hivefmt::ByteSpan file, HiveMode mode = HiveMode::Strict);

// The same for a file that may not have been closed properly: its transaction logs (in any order, empty ones allowed) are
// replayed first.
HiveReading readHive(hivefmt::ByteSpan file, const std::vector<hivefmt::ByteSpan>& logs, HiveMode mode = HiveMode::Strict);

}  // namespace brenvik
