#pragma once
// Transaction logs of a hive that was not closed properly (.LOG, .LOG1, .LOG2): the old form is a bitmap of dirty pages
// ("DIRT"), the new one a chain of entries ("HvLE"). Replayed in memory; the files stay as they are.
#include <cstdint>
#include <vector>

#include "registry/RawValue.h"
#include "registry/hive/HiveFinding.h"
#include "registry/hive/HiveFormat.h"

namespace brenvik {

// Whether the header's checksum or its two sequence numbers tell of a write that was not finished.
bool isDirty(hivefmt::ByteSpan hive);

struct HiveRecovery {
    Bytes hive;                          // as it should be; the file unchanged if nothing was replayed
    std::uint32_t entriesReplayed = 0;   // a log of the old form counts as one
    std::vector<HiveFinding> findings;   // logs and entries that could not be used; offsets are those in the log
};

// A clean hive is returned as it is: what its logs hold is in it already. Never throws for what logs contain; a hive
// that is still dirty afterwards is refused by readHive.
HiveRecovery replayLogs(hivefmt::ByteSpan hive, const std::vector<hivefmt::ByteSpan>& logs);

// The keyed hash that protects log entries (Marvin32).
std::uint64_t logHash(hivefmt::ByteSpan bytes);

}  // namespace brenvik
