// Several processes that write the same files, and processes that end in the midst of it: what was acknowledged is there,
// and what belongs together comes together.
#include <gtest/gtest.h>

#include <deque>

#include "Child.h"
#include "TempStore.h"
#include "frame/files/FileSystem.h"
#include "frame/files/FreshFile.h"
#include "hive/HiveTestSupport.h"
#include "registry/hivefile/HiveStore.h"

using namespace brenvik;
using namespace brenvik::test;
namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

namespace {

constexpr Root Machine = Root::LocalMachine;

// The hives of one registry in two folders, as SOFTWARE and a user's are.
struct TwoHives {
    TwoHives() {
        for (const fs::path& file : {first, second}) {
            fs::create_directories(file.parent_path());
            Hive hive;
            hive.root.name = "R";
            hive.root.set("stand", dword(0));
            hivetest::save(file, writeHive(hive));
        }
    }
    std::unique_ptr<HiveStore> open() const {
        auto store = std::make_unique<HiveStore>();
        store->mount(Machine, "Eins", std::make_shared<HiveFile>(first));
        store->mount(Machine, "Zwei", std::make_shared<HiveFile>(second));
        return store;
    }
    // "1 1": what a store opened now tells of the two; or its complaint.
    std::string now() const {
        const auto store = open();
        try {
            const std::string one = textOf(*store, Machine, "Eins", "stand");
            return one + " " + textOf(*store, Machine, "Zwei", "stand");
        } catch (const RegError& error) {
            return error.what();
        }
    }
    Lines remains() const {
        Lines names;
        for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
            const std::string name = entry.path().filename().string();
            if (entry.is_regular_file() && name != "EINS" && name != "ZWEI" && !name.ends_with(".bvk")) names.push_back(name);
        }
        return names;
    }
    TempDir folder;
    const fs::path first = folder / "c/config/EINS", second = folder / "c/Users/anna/ZWEI";
};

}  // namespace

TEST(HiveWriters, NoAcknowledgedWriteIsLost) {
    constexpr std::uint32_t Writers = 4, Each = 12;
    TempDir folder;
    const fs::path file = folder / "x.hiv";
    hivetest::save(file, writeHive(hivetest::sampleHive(5, 20)));
    std::deque<Child> children;
    for (std::uint32_t writer = 0; writer < Writers; ++writer) {
        children.emplace_back([&](const auto& acknowledge) {
            auto store = openHiveFile(file);
            for (std::uint32_t step = 0, tries = 0; step < Each; ++tries) {
                if (tries > 5000) throw std::runtime_error("never its turn");
                const std::uint32_t number = writer * 1000 + step;
                try {
                    store->setValue(Machine, "Viele", ValueName::named("w" + std::to_string(number)), dword(number));
                } catch (const RegError& error) {
                    if (error.number != regerr::NoAssignment) throw;
                    continue;   // refused: somebody else was quicker
                }
                acknowledge(number);
                ++step;
            }
        });
    }
    std::vector<std::uint32_t> all;
    for (Child& child : children) {
        for (const std::uint32_t number : child.told()) all.push_back(number);
        EXPECT_EQ(child.status, 0);
    }
    EXPECT_EQ(all.size(), Writers * Each);
    const auto store = openHiveFile(file);
    for (const std::uint32_t number : all) EXPECT_EQ(textOf(*store, Machine, "Viele", "w" + std::to_string(number)), std::to_string(number));
    EXPECT_EQ(hivetest::lines(checkHive(hivetest::load(file))), Lines());
    EXPECT_EQ(joined(folder.names()), "x.hiv|x.hiv.bvk");
}

TEST(HiveWriters, KilledInTheMidstTwoHivesStayTogether) {
    TwoHives hives;
    std::uint32_t next = 1;
    for (int round = 0; round < 40; ++round) {
        Child child([&](const auto& acknowledge) {
            const auto store = hives.open();
            for (std::uint32_t step = next;; ++step) {
                store->transaction([&] {
                    for (const char* key : {"Eins", "Zwei"}) store->setValue(Machine, key, ValueName::named("stand"), dword(step));
                });
                acknowledge(step);
            }
        });
        const std::uint32_t last = child.killedAfter(200 + round * 977 % 23000);
        const std::string done = std::to_string(last) + " " + std::to_string(last), under = std::to_string(last + 1) + " " + std::to_string(last + 1);
        const std::string now = hives.now();
        ASSERT_TRUE(now == done || now == under) << "round " << round << ": " << now << " instead of " << done;
        next = last + 2;
    }
    const auto store = hives.open();
    store->transaction([&] {
        for (const char* key : {"Eins", "Zwei"}) store->setValue(Machine, key, ValueName::named("stand"), dword(0));
    });
    EXPECT_EQ(hives.remains(), Lines()) << "the next writing sweeps what the killed ones left";
}

// The embedded store likewise: the write under way at the kill may have arrived without its acknowledgement, whole.
TEST(HiveWriters, KilledInTheMidstTheEmbeddedStoreHasWhatItAcknowledged) {
    TempDir folder;
    std::uint32_t next = 1;
    for (int round = 0; round < 20; ++round) {
        Child child([&](const auto& acknowledge) {
            SqliteStore store(folder / "registry.db");
            for (std::uint32_t step = next;; ++step) {
                const std::string key = "Paare\\K" + std::to_string(step);
                store.transaction([&] {
                    for (const char* name : {"a", "b"}) store.setValue(Machine, key, ValueName::named(name), dword(step));
                });
                store.setValue(Machine, "Einzeln", ValueName::named("v"), dword(step));
                acknowledge(step);
            }
        });
        const std::uint32_t last = child.killedAfter(500 + round * 311 % 9000);
        SqliteStore store(folder / "registry.db");
        const std::uint32_t found = static_cast<std::uint32_t>(std::stoul(textOf(store, Machine, "Einzeln", "v")));
        ASSERT_TRUE(found == last || found == last + 1) << "round " << round << ": " << found << " instead of " << last;
        const std::vector<std::string> pairs = store.subKeys(Machine, "Paare");
        ASSERT_GE(pairs.size(), found);
        for (const std::string& pair : pairs)
            ASSERT_EQ("K" + textOf(store, Machine, "Paare\\" + pair, "a") + textOf(store, Machine, "Paare\\" + pair, "b"), pair + pair.substr(1));
        next = static_cast<std::uint32_t>(pairs.size()) + 1;
    }
}

// Each place at which a process can end while it writes two hives.
TEST(HiveWriters, AnInterruptedChangeIsFinishedOrTakenBack) {
    struct Case {
        const char* what;
        std::function<void(const TwoHives&, const std::vector<HiveSwap>&)> until;
        const char* now;   // the beginning of it
    };
    const auto journal = [](const fs::path& hive) { return fs::path(hive.string() + ".bvk-journal"); };
    const auto foreign = [](const fs::path& hive) {
        Hive other = readHive(hivetest::load(hive)).hive;
        other.root.set("stand", dword(7));
        hivetest::save(hive, writeHive(other));
    };
    const Case cases[] = {
        {"files ready", [](const TwoHives&, const auto&) {}, "0 0"},
        {"only the second's journal there", [&](const TwoHives& h, const auto& swaps) { beginSwaps(swaps); fs::remove(journal(h.first)); }, "0 0"},
        {"planned", [](const TwoHives&, const auto& swaps) { beginSwaps(swaps); }, "1 1"},
        {"one in place", [](const TwoHives& h, const auto& swaps) { beginSwaps(swaps); fs::rename(swaps[0].fresh, h.first); }, "1 1"},
        {"the other in place", [](const TwoHives& h, const auto& swaps) { beginSwaps(swaps); fs::rename(swaps[1].fresh, h.second); }, "1 1"},
        {"both in place", [](const TwoHives& h, const auto& swaps) { beginSwaps(swaps); fs::rename(swaps[0].fresh, h.first); fs::rename(swaps[1].fresh, h.second); }, "1 1"},
        {"journals half gone", [&](const TwoHives& h, const auto& swaps) { beginSwaps(swaps); fs::rename(swaps[0].fresh, h.first); fs::rename(swaps[1].fresh, h.second); fs::remove(journal(h.second)); }, "1 1"},
        {"none in place, one changed since", [&](const TwoHives& h, const auto& swaps) { beginSwaps(swaps); foreign(h.second); }, "0 7"},
        {"one in place, the other changed since", [&](const TwoHives& h, const auto& swaps) { beginSwaps(swaps); fs::rename(swaps[0].fresh, h.first); foreign(h.second); },
         "Eine Änderung mehrerer Hivedateien wurde mittendrin abgebrochen"},
        {"journal damaged", [&](const TwoHives& h, const auto& swaps) { beginSwaps(swaps); std::ofstream(journal(h.first)) << "?"; }, "Die Hivedatei \""},
        {"journal is a link", [&](const TwoHives& h, const auto&) { fs::create_symlink(h.second, journal(h.first)); }, "Die Hivedatei \""},
        {"journal leads elsewhere", [&](const TwoHives& h, const auto& swaps) {
             HiveJournalRecord record{5, "", {{"../../fremd", swaps[0].fresh.filename().string(), 0, 0}}};
             std::ofstream(journal(h.first)) << writeJournal(record);
             std::ofstream(h.folder / "fremd") << "bleibt"; }, "Die Hivedatei \""},
        {"journal means a file of another name", [&](const TwoHives& h, const auto&) {
             HiveJournalRecord record{5, "", {{"EINS", "EINS.bvk", 0, 0}}};
             std::ofstream(journal(h.first)) << writeJournal(record); }, "Die Hivedatei \""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TwoHives hives;
        {
            HiveFile first(hives.first), second(hives.second);
            std::vector<HiveSwap> swaps;
            for (HiveFile* const file : {&first, &second}) {
                file->hive().root.set("stand", dword(1));
                file->prepare();
                swaps.push_back(file->swap());
            }
            c.until(hives, swaps);
            first.letGo();
            second.letGo();
        }
        EXPECT_EQ(hives.now().substr(0, std::string_view(c.now).size()), c.now);
        EXPECT_NE(textOf(*openHiveFile(hives.folder / "c/config/EINS.bvk"), Machine, "", "stand"), "1");
        if (std::string_view(c.what) == "journal damaged") {
            EXPECT_THROW(openHiveFile(hives.second), RegError) << "it may have stood";
        }
        if (c.now[0] == '1') {
            EXPECT_EQ(hives.remains(), Lines());
        }
        if (c.now[0] == 'E') {
            EXPECT_EQ(hives.now(), "1 7") << "told once";
        }
        if (fs::exists(hives.folder / "fremd")) {
            EXPECT_EQ(bytesOf(hives.folder / "fremd"), "bleibt");
        }
    }
}

// What a killed process leaves is swept by the next that writes the same file; what somebody makes just now, or any other file, is not.
TEST(FreshFiles, WhatAKilledProcessLeftIsSwept) {
    TempDir folder;
    const fs::path file = folder / "liste.txt";
    Child child([&](const auto& acknowledge) {
        for (const char* ending : {"", "-wal", "-shm"}) writeFile(freshNameBeside(file).string() + ending, "halb");
        writeFile(freshNameBeside(folder / "liste.txt.bvk"), "halb");
        acknowledge(1);
        ::pause();
    });
    child.killedAfter(0);
    ASSERT_EQ(folder.names().size(), 4u);
    writeFile(freshNameBeside(file), "wird gerade geschrieben");
    for (const char* name : {"liste.txt.neu", "liste.txt.1234.neu", "liste.txt.1-2-3.neu", "liste.txt.1-2-3-4-5.neu"}) writeFile(folder / name, "von anderswo");
    writeFileAtomic(file, "ganz");
    EXPECT_EQ(bytesOf(file), "ganz");
    const Lines names = folder.names();
    EXPECT_EQ(names.size(), 7u) << joined(names);   // the file, the one under way, the four foreign ones, that of another file
    EXPECT_EQ(leftBehind(file).size(), 0u);
    EXPECT_EQ(leftBehind(folder / "liste.txt.bvk").size(), 1u);
}
