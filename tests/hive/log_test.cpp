// Hives that were not closed: what their logs hold comes in, in order, and nothing else does.
#include <functional>

#include "HiveTestSupport.h"
#include "registry/hive/HiveLog.h"

namespace brenvik {
namespace {

using namespace hivetest;
using namespace hivefmt;

constexpr std::size_t sector = 512;

// Two states of one hive with the same layout, and the pages in which they differ.
struct States {
    Bytes before, after;
    std::vector<std::uint32_t> pages;   // offsets from the first bin, of 4096 bytes each
};

Bytes stateOf(std::uint8_t value, std::uint32_t minor = 5) {
    Hive hive = sampleHive(minor, 50);
    hive.findPath("Viele\\Schl\xC3\xBCssel 3")->set("w", {4, {value, 0, 0, 0}});
    hive.findPath("Texte")->set("leer", {4, {value, 0, 0, 0}});
    return writeHive(hive);
}

void setHeader(Bytes& file, std::uint32_t first, std::uint32_t second, std::uint32_t type = 0) {
    put32(file.data() + header::Sequence1, first);
    put32(file.data() + header::Sequence2, second);
    put32(file.data() + header::FileType, type);
    put32(file.data() + header::Checksum, headerChecksum(file.data()));
}

States twoStates(std::uint8_t from = 1, std::uint8_t to = 2) {
    States states{stateOf(from), stateOf(to), {}};
    for (std::size_t at = headerSize; at < states.before.size(); at += 4096) {
        if (!std::equal(states.before.begin() + static_cast<std::ptrdiff_t>(at), states.before.begin() + static_cast<std::ptrdiff_t>(at) + 4096,
                        states.after.begin() + static_cast<std::ptrdiff_t>(at))) {
            states.pages.push_back(static_cast<std::uint32_t>(at - headerSize));
        }
    }
    return states;
}

Bytes logHeader(const Bytes& hive, std::uint32_t sequence, std::uint32_t type) {
    Bytes log(hive.begin(), hive.begin() + sector);
    setHeader(log, sequence, sequence, type);
    return log;
}

void sign(std::uint8_t* entry, std::size_t size) {
    put64(entry + 24, logHash({entry + 40, size - 40}));
    put64(entry + 32, logHash({entry, 32}));
}

void addEntry(Bytes& log, const Bytes& content, const std::vector<std::uint32_t>& pages, std::uint32_t sequence) {
    const std::size_t at = log.size();
    log.resize(at + roundUp(static_cast<std::uint32_t>(40 + pages.size() * (8 + 4096)), sector));
    std::uint8_t* const e = log.data() + at;
    std::memcpy(e, "HvLE", 4);
    put32(e + 4, static_cast<std::uint32_t>(log.size() - at));
    put32(e + 12, sequence);
    put32(e + 16, static_cast<std::uint32_t>(content.size() - headerSize));
    put32(e + 20, static_cast<std::uint32_t>(pages.size()));
    for (std::size_t i = 0; i < pages.size(); ++i) {
        put32(e + 40 + 8 * i, pages[i]);
        put32(e + 44 + 8 * i, 4096);
        std::copy_n(content.begin() + headerSize + pages[i], 4096, e + 40 + 8 * pages.size() + 4096 * i);
    }
    sign(e, log.size() - at);
}

Bytes oldLog(const States& states, std::uint32_t sequence) {
    Bytes log = logHeader(states.after, sequence, 1);
    const std::uint32_t bits = static_cast<std::uint32_t>((states.after.size() - headerSize) / sector);
    log.resize(sector + roundUp(4 + (bits + 7) / 8, sector));
    std::memcpy(log.data() + sector, "DIRT", 4);
    for (const std::uint32_t page : states.pages) {
        log[sector + 4 + page / sector / 8] = 0xFF;
        log.insert(log.end(), states.after.begin() + headerSize + page, states.after.begin() + headerSize + page + 4096);
    }
    return log;
}

struct Case {
    const char* what;
    std::function<void(Bytes& hive, Bytes& log1, Bytes& log2)> spoil;
    std::uint32_t replayed;
    int state;   // 0: still dirty, else the value that the hive then holds
};

TEST(HiveLog, NewFormReplaysAnUnbrokenRunAndNothingElse) {
    const States first = twoStates(1, 2), second = twoStates(2, 3);
    const Case table[] = {
        {"both logs", [](Bytes&, Bytes&, Bytes&) {}, 2, 3},
        {"second log missing", [](Bytes&, Bytes&, Bytes& l2) { l2.clear(); }, 1, 2},
        {"hive is clean", [](Bytes& h, Bytes&, Bytes&) { setHeader(h, 8, 8); }, 0, 1},
        {"first entry already in the hive", [](Bytes& h, Bytes&, Bytes&) { setHeader(h, 10, 9); }, 1, 3},
        {"second entry's body damaged", [](Bytes&, Bytes&, Bytes& l2) { l2[sector + 3000] ^= 1; }, 1, 2},
        {"second entry's head damaged", [](Bytes&, Bytes&, Bytes& l2) { l2[sector + 8] ^= 1; }, 1, 2},
        {"first entry damaged, the second must not come alone", [](Bytes&, Bytes& l1, Bytes&) { l1[sector + 3000] ^= 1; }, 0, 0},
        {"first entry's number damaged", [](Bytes&, Bytes& l1, Bytes&) { l1[sector + 12] ^= 1; }, 0, 0},
        {"hive was partly written, the log begins later", [](Bytes& h, Bytes& l1, Bytes&) { setHeader(h, 6, 5); l1.clear(); }, 1, 3},
        {"log not finished", [](Bytes&, Bytes& l1, Bytes& l2) { setHeader(l1, 8, 7, 6); l2.clear(); }, 0, 0},
        {"first log's first sector gone, the second must not come alone", [](Bytes&, Bytes& l1, Bytes&) { std::fill_n(l1.begin(), sector, std::uint8_t{0}); }, 0, 0},
        {"second log's first sector gone", [](Bytes&, Bytes&, Bytes& l2) { l2[3] ^= 1; }, 1, 2},
        {"first log never used", [](Bytes& h, Bytes& l1, Bytes&) { setHeader(h, 10, 9); l1.assign(4096, 0); }, 1, 3},
        {"hive's first block zeroed", [](Bytes& h, Bytes&, Bytes&) { std::fill_n(h.begin(), headerSize, std::uint8_t{0}); }, 2, 3},
        {"hive's first block zeroed, and a log's", [](Bytes& h, Bytes& l1, Bytes&) { std::fill_n(h.begin(), headerSize, std::uint8_t{0}); l1[3] ^= 1; }, 0, 0},
        {"hive's header lost", [](Bytes& h, Bytes&, Bytes&) { h[40] ^= 0x55; }, 2, 3},
        {"page outside the hive", [](Bytes&, Bytes& l1, Bytes& l2) { put32(l1.data() + sector + 40, 0x7FFFF000); sign(l1.data() + sector, l1.size() - sector); l2.clear(); }, 0, 0},
        {"more pages than there are", [](Bytes&, Bytes& l1, Bytes& l2) { put32(l1.data() + sector + 20, 0x10000000); sign(l1.data() + sector, l1.size() - sector); l2.clear(); }, 0, 0},
        {"hive would grow beyond what is written", [](Bytes&, Bytes& l1, Bytes& l2) { put32(l1.data() + sector + 16, 0x40000000); sign(l1.data() + sector, l1.size() - sector); l2.clear(); }, 0, 0},
        {"no logs at all", [](Bytes&, Bytes& l1, Bytes& l2) { l1.assign(100, 7); l2.clear(); }, 0, 0},
    };
    for (const Case& c : table) {
        SCOPED_TRACE(c.what);
        Bytes hive = first.before, log1 = logHeader(first.before, 8, 6), log2 = logHeader(first.before, 9, 6);
        setHeader(hive, 9, 8);
        addEntry(log1, first.after, first.pages, 8);
        addEntry(log2, second.after, second.pages, 9);
        addEntry(log2, first.before, first.pages, 4);   // left over from long ago
        c.spoil(hive, log1, log2);
        const HiveRecovery recovery = replayLogs(hive, {log2, log1});
        EXPECT_EQ(recovery.used.size(), c.replayed);
        if (c.state == 0) {
            EXPECT_TRUE(recovery.hive == hive);
            EXPECT_THROW(readHive(hive, {log1, log2}), HiveError);
        } else {
            const Hive read = readHive(hive, {log1, log2}).hive;
            EXPECT_EQ(dump(read), dump(readHive(stateOf(static_cast<std::uint8_t>(c.state))).hive));
            if (c.replayed != 0) {
                EXPECT_EQ(read.sequence, c.state == 3 ? 10u : 9u);
            }
        }
    }
}

TEST(HiveLog, OldFormIsOneSetOfPages) {
    const States states = twoStates();
    const std::pair<const char*, std::function<void(Bytes&, Bytes&)>> refused[] = {
        {"of another state", [](Bytes&, Bytes& log) { log[header::LastWritten] ^= 1; setHeader(log, 9, 9, 1); }},
        {"no bitmap", [](Bytes&, Bytes& log) { log[sector] = 'X'; }},
        {"truncated", [](Bytes&, Bytes& log) { log.resize(log.size() - 512); }},
        {"would break a bin", [](Bytes&, Bytes& log) { log[log.size() - 4096 * 2 + 1] ^= 0xFF; log[log.size() - 4096 + 1] ^= 0xFF; }},
    };
    Bytes hive = states.before;
    setHeader(hive, 9, 8);
    const Bytes log = oldLog(states, 9);
    EXPECT_EQ(dump(readHive(hive, {log}).hive), dump(readHive(states.after).hive));
    Bytes headless = hive;
    headless[header::Checksum] ^= 1;
    EXPECT_EQ(dump(readHive(headless, {log}).hive), dump(readHive(states.after).hive));
    for (const auto& [what, spoil] : refused) {
        SCOPED_TRACE(what);
        Bytes spoiltHive = hive, spoiltLog = log;
        spoil(spoiltHive, spoiltLog);
        const HiveRecovery recovery = replayLogs(spoiltHive, {spoiltLog});
        EXPECT_EQ(recovery.used.size(), 0u);
        EXPECT_TRUE(recovery.hive == spoiltHive);
        EXPECT_EQ(recovery.findings.size(), 1u);
        EXPECT_THROW(readHive(spoiltHive, {spoiltLog}), HiveError);
    }
}

}  // namespace
}  // namespace brenvik
