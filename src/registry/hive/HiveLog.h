#pragma once
// Transaction logs of a hive that was not closed properly (.LOG, .LOG1, .LOG2): the old form is a bitmap of dirty pages
// ("DIRT"), the new one a chain of entries ("HvLE"). Replayed in memory; the files stay as they are.
#include <cstdint>
#include <vector>

#include "registry/hive/HiveFinding.h"
#include "registry/hive/HiveFormat.h"
#include "registry/store/RawValue.h"

namespace brenvik {

// Whether the header's checksum or its two sequence numbers tell of a write that was not finished, or the header is lost in front
// of bins that are there.
bool isDirty(hivefmt::ByteSpan hive);
bool looksLikeHive(hivefmt::ByteSpan start);   // by its first 4128 bytes: a header, or bins behind a lost one
inline constexpr std::size_t HiveStartSize = hivefmt::headerSize + hivefmt::binHeaderSize;

// What was taken from a log. The old form has one entry of all its pages, of 512 bytes each.
struct LogEntryUsed {
    std::size_t log = 0;          // index in what replayLogs was given
    std::uint64_t offset = 0;     // in the log
    std::uint32_t sequence = 0, pages = 0;
};

struct HiveRecovery {
    Bytes hive;                          // as it should be; the file unchanged if nothing was replayed
    std::vector<LogEntryUsed> used;      // in the order in which they came in
    std::vector<HiveFinding> findings;   // logs and entries that could not be used
};

// A clean hive is returned as it is: what its logs hold is in it already. Entries come in only as an unbroken run: where a log
// cannot be read that may hold the first of them, none of the others does. Never throws for what logs contain; a hive
// that is still dirty afterwards is refused by readHive.
HiveRecovery replayLogs(hivefmt::ByteSpan hive, const std::vector<hivefmt::ByteSpan>& logs);

// The keyed hash that protects log entries (Marvin32).
std::uint64_t logHash(hivefmt::ByteSpan bytes);

}  // namespace brenvik
