#pragma once
// Writes a tree as a whole hive file.
#include <cstdint>
#include <string>

#include "registry/hive/Hive.h"

namespace brenvik {

struct HiveWriteOptions {
    std::uint32_t minorVersion = 0;   // 3 or 5; 0: that of the hive
    std::string fileName;             // at most 31 UTF-16 units of it, the end, are kept in the header; "": the hive's
    std::uint64_t lastWritten = 0;    // FILETIME; 0: the hive's
};

// The file's bytes. Throws HiveError if the tree cannot be a hive: names too long, empty, doubled or with a backslash,
// too deep, too large. Sub keys may stand in any order. The sequence number is one above the hive's.
Bytes writeHive(const Hive& hive, const HiveWriteOptions& options = {});

// Owner administrators; full rights for system and administrators, everyone may read. For trees that carry none at the root.
Bytes defaultDescriptor();

}  // namespace brenvik
