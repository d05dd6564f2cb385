#pragma once
// A changed tree back into the registry file of the 9x family that it was read from: only where the two differ the file is changed.
#include "registry/creg/CregFormat.h"
#include "registry/creg/CregText.h"
#include "registry/hive/Hive.h"

namespace brenvik {

// The new file; equal to the old one where nothing differs. It has been checked, read again (readBack) and compared with what was
// wanted.
// Throws RegError: NoAccess for a file that may only be read (the checker's first fault says why), NoAssignment or NoKey for a
// change that it cannot take.
Bytes writeCreg(cregfmt::ByteSpan file, const Hive& wanted, const CregCodepage& codepage, Hive* readBack = nullptr);

// Why such a file may only be read (German); empty: it may be written.
std::string whyNotWritten(cregfmt::ByteSpan file);

}  // namespace brenvik
