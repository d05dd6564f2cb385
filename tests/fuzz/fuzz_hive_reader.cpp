// Whatever a hive file holds: it is read or refused, in place as well as into a tree, what is read can be written, and what is
// written is good.
#include <algorithm>
#include <cstdlib>

#include "HiveSeed.h"
#include "TimeBound.h"
#include "registry/hive/HiveChecker.h"
#include "registry/hive/HiveReader.h"
#include "registry/hivefile/HiveInPlace.h"

using namespace brenvik;

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed) {
    if (size < hivefmt::headerSize + 4096) {
        const Bytes hive = seedHive(seed % 2 == 0 ? 3 : 5);
        size = std::min(hive.size(), most);
        std::copy_n(hive.begin(), size, data);
    }
    size = LLVMFuzzerMutate(data, size, most);
    if (size >= hivefmt::headerSize && seed % 8 != 0) hivefmt::put32(data + hivefmt::header::Checksum, hivefmt::headerChecksum(data));
    return size;
}

static bool isSound(hivefmt::ByteSpan file) {
    try {
        requireSoundHive(file);
        return true;
    } catch (const HiveError&) {
        return false;
    }
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const hivefmt::ByteSpan file{data, size};
    const fuzz::Bound bound(5, 512);
    checkHive(file);
    for (const HiveMode mode : {HiveMode::Strict, HiveMode::Salvage}) {
        try {
            const Hive hive = readHive(file, mode).hive;
            if (mode == HiveMode::Strict && !isSound(file)) std::abort();
            if (hive.minorVersion < 3 || hive.minorVersion > 6) continue;
            if (!checkHive(writeHive(hive)).empty()) std::abort();
        } catch (const HiveError&) {
            if (mode == HiveMode::Strict && isSound(file)) std::abort();
            if (mode == HiveMode::Salvage && size >= hivefmt::headerSize && std::memcmp(data, "regf", 4) == 0) std::abort();
        }
    }
    return 0;
}
