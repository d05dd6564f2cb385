// Whatever two transaction logs hold: they are replayed onto a dirty hive or left alone.
#include <algorithm>

#include "HiveSeed.h"
#include "TimeBound.h"
#include "registry/hive/HiveLog.h"
#include "registry/hive/HiveReader.h"

using namespace brenvik;
using namespace hivefmt;

namespace {

constexpr std::size_t sector = 512;

Bytes dirtyHive() {
    Bytes hive = seedHive(3);
    put32(hive.data() + header::Sequence2, 1);
    put32(hive.data() + header::Checksum, headerChecksum(hive.data()));
    return hive;
}

// Makes a plausible log of arbitrary bytes: header, signatures and hashes as they have to be.
void dress(Bytes& log, const Bytes& hive) {
    if (log.size() < 2 * sector) log.resize(2 * sector);
    const bool old = (log[8] & 1) != 0;
    const std::uint8_t bins = log[9];
    std::copy_n(hive.begin(), sector, log.begin());
    put32(log.data() + header::Sequence1, 1);
    put32(log.data() + header::Sequence2, 1);
    put32(log.data() + header::FileType, old ? 1 : 6);
    put32(log.data() + header::BinsSize, 4096u * bins);
    put32(log.data() + header::Checksum, headerChecksum(log.data()));
    if (old) std::memcpy(log.data() + sector, "DIRT", 4);
    std::uint32_t sequence = 1;
    for (std::size_t at = sector; !old && at + sector <= log.size(); ++sequence) {
        std::uint8_t* const e = log.data() + at;
        const std::uint32_t size = std::min<std::uint32_t>(roundUp(get16(e + 4), sector) + sector, static_cast<std::uint32_t>((log.size() - at) / sector * sector));
        std::memcpy(e, "HvLE", 4);
        put32(e + 4, size);
        put32(e + 12, sequence);
        put32(e + 16, 4096u * e[16]);
        put32(e + 20, e[20] % 8);
        put64(e + 24, logHash({e + 40, size - 40}));
        put64(e + 32, logHash({e, 32}));
        at += size;
    }
}

// A log with one entry that writes the first page of the hive again, in the old form or in the new.
Bytes seedLog(bool old) {
    const Bytes hive = dirtyHive();
    const std::size_t page = old ? 2 * sector : sector + 48;
    Bytes log(sector + roundUp(48 + binAlignment, sector), 0);
    log[8] = old ? 1 : 0;
    log[9] = static_cast<std::uint8_t>((hive.size() - headerSize) / binAlignment);
    if (old) {
        log[sector + 4] = 0xFF;
    } else {
        put32(log.data() + sector + 4, binAlignment);
        log[sector + 16] = log[9];
        log[sector + 20] = 1;
        put32(log.data() + sector + 44, binAlignment);
    }
    std::copy_n(hive.begin() + headerSize, binAlignment, log.begin() + static_cast<std::ptrdiff_t>(page));
    return log;
}

}  // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed) {
    if (size < 2 * sector) {
        const Bytes log = seedLog(seed % 2 == 0);
        size = std::min(log.size(), most);
        std::copy_n(log.begin(), size, data);
    }
    return LLVMFuzzerMutate(data, size, most);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Bytes hive = dirtyHive();
    const fuzz::Bound bound(5, 512);
    replayLogs(hive, {ByteSpan{data, size}});
    Bytes log(data, data + size);
    dress(log, hive);
    try {
        readHive(hive, {log, ByteSpan{data, size}});
    } catch (const HiveError&) {
    }
    readHive(hive, {log}, HiveMode::Salvage);
    return 0;
}
