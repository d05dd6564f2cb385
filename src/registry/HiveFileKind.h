#pragma once
// What differs between the kinds of files that a HiveFile can work on. One without a kind is a hive of the NT family.
#include <string>

#include "registry/hive/HiveReader.h"

namespace brenvik {

class HiveFileKind {
public:
    virtual ~HiveFileKind() = default;
    virtual HiveReading read(hivefmt::ByteSpan file, HiveMode mode) = 0;              // throws HiveError
    virtual std::string whyNotWritten(hivefmt::ByteSpan file) = 0;                    // German; empty: it may be written
    virtual Bytes write(hivefmt::ByteSpan file, const Hive& wanted, Hive& written) = 0;   // written: as the new file tells it; throws RegError
};

}  // namespace brenvik
