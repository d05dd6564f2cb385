#include "registry/hive/HiveLog.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace brenvik {

using namespace hivefmt;

namespace {

constexpr std::uint32_t sector = 512, entryHeader = 40, referenceSize = 8;
constexpr std::uint64_t hashSeed = 0x82EF4D887A4E55C5;
constexpr std::uint32_t oldLogType = 1, oldLogTypeToo = 2, newLogType = 6;
namespace entry {
constexpr std::size_t Size = 4, Sequence = 12, BinsSize = 16, Pages = 20, BodyHash = 24, HeaderHash = 32;
}

struct Log {
    ByteSpan bytes;
    std::size_t index = 0;              // in what was given
    std::vector<std::size_t> entries;   // offsets of the new form's usable entries
    std::uint32_t first() const { return get32(bytes.data() + entries.front() + entry::Sequence); }
};

bool isBlank(ByteSpan bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte == 0; });
}

struct HashState {
    std::uint32_t low, high;
    void mix(std::uint32_t word) {
        low += word;
        high ^= low;
        low = std::rotl(low, 20) + high;
        high = std::rotl(high, 9) ^ low;
        low = std::rotl(low, 27) + high;
        high = std::rotl(high, 19);
    }
};

class Replay {
public:
    Replay(ByteSpan file, HiveRecovery& result) : recovery_(result) { result.hive.assign(file.begin(), file.end()); }

    void run(const std::vector<ByteSpan>& files) {
        std::vector<Log> newLogs, oldLogs;
        for (std::size_t i = 0; i < files.size(); ++i) sortIn({files[i], i, {}}, newLogs, oldLogs);
        if (!newLogs.empty()) replayNew(newLogs);
        if (recovery_.used.empty() && !gap_ && !oldLogs.empty()) replayOld(oldLogs);
    }

private:
    void fault(const Log& log, std::uint64_t offset, const char* text) { recovery_.findings.push_back({offset, true, text, log.index + 1}); }

    void sortIn(Log log, std::vector<Log>& newLogs, std::vector<Log>& oldLogs) {
        const ByteSpan file = log.bytes;
        if (isBlank(file)) return;   // made and not used yet
        const std::size_t known = newLogs.size() + oldLogs.size();
        if (!isHeader(file) || file.size() < 2 * sector) {
            fault(log, 0, "Die Protokolldatei hat keinen gültigen Kopf.");
        } else if (get32(file.data() + header::Sequence1) != get32(file.data() + header::Sequence2)) {
            fault(log, header::Sequence1, "Die Protokolldatei wurde nicht zu Ende geschrieben.");
        } else if (const std::uint32_t type = get32(file.data() + header::FileType); type == newLogType) {
            newLogs.push_back(std::move(log));
        } else if (type == oldLogType || type == oldLogTypeToo) {
            oldLogs.push_back(std::move(log));
        } else {
            fault(log, header::FileType, "Dies ist keine Protokolldatei.");
        }
        unreadable_ = unreadable_ || known == newLogs.size() + oldLogs.size();
    }

    // New form -------------------------------------------------------------------------------------------------------

    void replayNew(std::vector<Log>& logs) {
        headerLost_ = !isHeader(hive());
        const std::uint32_t from = headerLost_ ? 0 : get32(recovery_.hive.data() + header::Sequence2);
        for (Log& log : logs) collect(log, headerLost_ ? get32(log.bytes.data() + header::Sequence1) : from);
        logs.erase(std::remove_if(logs.begin(), logs.end(), [](const Log& log) { return log.entries.empty(); }), logs.end());
        if (logs.empty()) return;
        std::sort(logs.begin(), logs.end(), [](const Log& l, const Log& r) { return l.first() < r.first(); });
        gap_ = unreadable_ && (headerLost_ || logs.front().first() != from);
        if (gap_) return fault(logs.front(), logs.front().entries.front(), "Vor diesem Eintrag fehlen welche, die in einer unlesbaren Protokolldatei stehen können.");
        std::uint32_t last = 0;
        for (const Log& log : logs) {
            if (log.first() > brokenAt_ || (!recovery_.used.empty() && log.first() != last + 1)) {
                fault(log, sector, "Zwischen den Protokolldateien fehlen Einträge.");
                break;
            }
            if (!applyAll(log, last)) break;
        }
        if (!recovery_.used.empty()) close(last + 1);
    }

    // The unbroken run of entries from the wanted sequence number on; older ones in front have been written already, older
    // ones behind are left from before the log was last begun anew.
    void collect(Log& log, std::uint32_t from) {
        std::uint32_t expected = get32(log.bytes.data() + header::Sequence1);
        for (std::size_t at = sector; at + entryHeader <= log.bytes.size();) {
            const std::uint8_t* const e = log.bytes.data() + at;
            if (std::memcmp(e, "HvLE", 4) != 0) break;
            const std::uint32_t size = get32(e + entry::Size), sequence = get32(e + entry::Sequence);
            if (sequence != expected) {
                if (at == sector && expected >= from) brokenAt_ = std::min(brokenAt_, expected);
                break;
            }
            if (size < entryHeader || size % sector != 0 || size > log.bytes.size() - at ||
                get64(e + entry::HeaderHash) != logHash({e, 32}) || get64(e + entry::BodyHash) != logHash({e + entryHeader, size - entryHeader})) {
                fault(log, at, "Der Eintrag der Protokolldatei ist beschädigt.");
                if (expected >= from) brokenAt_ = std::min(brokenAt_, expected);
                break;
            }
            if (sequence >= from) log.entries.push_back(at);
            ++expected;
            at += size;
        }
    }

    bool applyAll(const Log& log, std::uint32_t& last) {
        for (const std::size_t at : log.entries) {
            const std::uint8_t* const e = log.bytes.data() + at;
            if (!apply(e)) {
                fault(log, at, "Der Eintrag der Protokolldatei nennt unmögliche Stellen.");
                return false;
            }
            if (headerLost_ && at == log.entries.front()) takeHeader(log.bytes);
            put32(recovery_.hive.data() + header::BinsSize, get32(e + entry::BinsSize));
            last = get32(e + entry::Sequence);
            recovery_.used.push_back({log.index, at, last, get32(e + entry::Pages)});
        }
        return true;
    }

    // Changes nothing if it answers false.
    bool apply(const std::uint8_t* e) {
        const std::uint32_t size = get32(e + entry::Size), bins = get32(e + entry::BinsSize), pages = get32(e + entry::Pages);
        if (pages > (size - entryHeader) / referenceSize) return false;
        std::uint64_t left = size - entryHeader - std::uint64_t{referenceSize} * pages, dirty = 0;
        for (std::uint32_t i = 0; i < pages; ++i) {
            const std::uint32_t offset = get32(e + entryHeader + referenceSize * i), length = get32(e + entryHeader + referenceSize * i + 4);
            if (length > left || std::uint64_t{offset} + length > bins) return false;
            left -= length;
            dirty += length;
        }
        if (!resizeBins(bins, dirty)) return false;
        const std::uint8_t* from = e + entryHeader + referenceSize * pages;
        for (std::uint32_t i = 0; i < pages; ++i) {
            const std::uint32_t offset = get32(e + entryHeader + referenceSize * i), length = get32(e + entryHeader + referenceSize * i + 4);
            std::copy(from, from + length, recovery_.hive.begin() + headerSize + offset);
            from += length;
        }
        return true;
    }

    // New bins are dirty as a whole, so a hive cannot grow by more than what is written to it.
    bool resizeBins(std::uint32_t bins, std::uint64_t dirty) {
        if (bins == 0 || bins % binAlignment != 0 || bins > largestBins) return false;
        const std::uint64_t wanted = std::uint64_t{headerSize} + bins;
        if (wanted > recovery_.hive.size() + dirty) return false;
        if (wanted > recovery_.hive.size()) recovery_.hive.resize(wanted);
        return true;
    }

    // Old form -------------------------------------------------------------------------------------------------------

    void replayOld(const std::vector<Log>& logs) {
        const bool headerLost = !isHeader(hive());
        const std::size_t stampAt = headerLost ? headerSize + bin::Timestamp : header::LastWritten;
        const std::uint64_t stamp = recovery_.hive.size() >= headerSize + binHeaderSize ? get64(recovery_.hive.data() + stampAt) : 0;
        const Log* best = nullptr;
        for (const Log& log : logs) {
            if (get64(log.bytes.data() + header::LastWritten) != stamp) {
                fault(log, header::LastWritten, "Die Protokolldatei gehört zu einem anderen Stand.");
            } else if (best == nullptr || get32(best->bytes.data() + header::Sequence1) < get32(log.bytes.data() + header::Sequence1)) {
                best = &log;
            }
        }
        if (best == nullptr) return;
        const Bytes before = recovery_.hive;
        std::uint32_t pages = 0;
        if (applyBitmap(*best, pages)) {
            const std::uint32_t bins = get32(best->bytes.data() + header::BinsSize), sequence = get32(best->bytes.data() + header::Sequence1);
            recovery_.used.push_back({best->index, sector, sequence, pages});
            takeHeader(best->bytes);
            put32(recovery_.hive.data() + header::BinsSize, bins);
            close(sequence);
        } else {
            recovery_.hive = before;
        }
    }

    bool applyBitmap(const Log& whole, std::uint32_t& taken) {
        const ByteSpan log = whole.bytes;
        const std::uint32_t bins = get32(log.data() + header::BinsSize);
        if (log.size() < sector + 4 || std::memcmp(log.data() + sector, "DIRT", 4) != 0 || bins > largestBins) {
            fault(whole, sector, "Der Protokolldatei fehlt das Verzeichnis der geänderten Seiten.");
            return false;
        }
        const std::uint32_t pages = bins / sector, bitmap = (pages + 7) / 8;
        std::size_t from = roundUp(sector + 4 + bitmap, sector);
        const std::uint8_t* const bits = log.data() + sector + 4;
        if (from > log.size()) {
            fault(whole, sector, "Die Protokolldatei ist abgeschnitten.");
            return false;
        }
        std::uint64_t dirty = 0;
        for (std::uint32_t i = 0; i < bitmap; ++i) dirty += sector * static_cast<std::uint32_t>(std::popcount(bits[i]));
        if (dirty > log.size() - from || !resizeBins(bins, dirty)) {
            fault(whole, sector, "Die Protokolldatei ist abgeschnitten.");
            return false;
        }
        for (std::uint32_t page = 0; page < pages; ++page) {
            if (((bits[page / 8] >> (page % 8)) & 1) == 0) continue;
            std::copy_n(log.begin() + static_cast<std::ptrdiff_t>(from), sector, recovery_.hive.begin() + headerSize + page * sector);
            from += sector;
            ++taken;
        }
        return binsAreWhole(whole, bins);
    }

    bool binsAreWhole(const Log& log, std::uint32_t bins) {
        for (std::uint32_t at = 0; at < bins;) {
            const std::uint8_t* const b = recovery_.hive.data() + headerSize + at;
            const std::uint32_t size = get32(b + bin::Size);
            if (std::memcmp(b, "hbin", 4) != 0 || get32(b + bin::Offset) != at || size == 0 || size % binAlignment != 0 || size > bins - at) {
                fault(log, sector, "Mit der Protokolldatei entstünde ein ungültiger Abschnitt.");
                return false;
            }
            at += size;
        }
        return true;
    }

    // Header ---------------------------------------------------------------------------------------------------------

    void takeHeader(ByteSpan log) {
        if (recovery_.hive.size() < headerSize) recovery_.hive.resize(headerSize);
        std::copy_n(log.begin(), sector, recovery_.hive.begin());
        put32(recovery_.hive.data() + header::FileType, 0);
    }

    void close(std::uint32_t sequence) {
        std::uint8_t* const b = recovery_.hive.data();
        put32(b + header::Sequence1, sequence);
        put32(b + header::Sequence2, sequence);
        put32(b + header::Checksum, headerChecksum(b));
    }

    ByteSpan hive() const { return {recovery_.hive.data(), recovery_.hive.size()}; }
    HiveRecovery& recovery_;
    std::uint32_t brokenAt_ = 0xFFFFFFFF;   // sequence number of the first entry that is wanted and damaged
    bool headerLost_ = false;               // the hive's
    bool unreadable_ = false, gap_ = false; // some log cannot be read; it may hold what has to come first
};

}  // namespace

std::uint64_t logHash(ByteSpan bytes) {
    HashState state{static_cast<std::uint32_t>(hashSeed), static_cast<std::uint32_t>(hashSeed >> 32)};
    std::size_t at = 0;
    for (; at + 4 <= bytes.size(); at += 4) state.mix(get32(bytes.data() + at));
    std::uint32_t rest = 0x80;
    for (std::size_t i = bytes.size(); i > at; --i) rest = (rest << 8) | bytes[i - 1];
    state.mix(rest);
    state.mix(0);
    return state.low | (static_cast<std::uint64_t>(state.high) << 32);
}

bool looksLikeHive(ByteSpan start) {
    if (start.size() >= 4 && std::memcmp(start.data(), "regf", 4) == 0) return true;
    return start.size() >= HiveStartSize && std::memcmp(start.data() + headerSize, "hbin", 4) == 0 && get32(start.data() + headerSize + bin::Offset) == 0;
}

bool isDirty(ByteSpan hive) {
    if (hive.size() < headerSize || !looksLikeHive(hive)) return false;
    return !isHeader(hive) || get32(hive.data() + header::Sequence1) != get32(hive.data() + header::Sequence2);
}

HiveRecovery replayLogs(ByteSpan hive, const std::vector<ByteSpan>& logs) {
    HiveRecovery recovery;
    Replay replay(hive, recovery);
    if (isDirty(hive)) replay.run(logs);
    return recovery;
}

}  // namespace brenvik
