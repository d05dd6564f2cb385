#pragma once
// Reads a registry file of the 9x family into the tree that hives are read into.
#include "registry/creg/CregFormat.h"
#include "registry/hive/HiveReader.h"

namespace brenvik {

inline constexpr std::uintmax_t MaxCregFile = 64u << 20;   // several times what these systems can hold

// Strict: throws HiveError at the first fault that makes the tree doubtful. Salvage: what can be read. Of siblings that have the
// same name the first is kept.
HiveReading readCreg(cregfmt::ByteSpan file, HiveMode mode = HiveMode::Strict);

}  // namespace brenvik
