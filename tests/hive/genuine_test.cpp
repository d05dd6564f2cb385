// Files that Windows wrote: complete on reading, unchanged after writing, and other readers say the same of both.
#include <algorithm>

#include "HiveTestSupport.h"

namespace brenvik {
namespace {

using namespace hivetest;

struct Clean {
    const char* file;
    HiveCounts counts;
    std::uint32_t minor;
};

const Clean cleanFiles[] = {
    {"NTUSER.DAT", {1127, 5602}, 3},          {"nt__software.reg", {2221, 3198}, 3}, {"win2022_64__sam.reg", {64, 75}, 5},
    {"win2022_64__security.reg", {126, 135}, 5}, {"BigDataHive", {2, 2}, 5},         {"ManySubkeysHive", {5003, 0}, 3},
    {"ExtendedASCIIHive", {2, 1}, 3},         {"MultiSzHive", {2, 2}, 3},            {"StringValuesHive", {2, 4}, 3},
    {"UpcaseHive", {4, 0}, 3},
};

#define NEED_GENUINE() \
    if (genuineFolder().empty()) GTEST_SKIP() << "BRENVIK_TESTDATA is not set"

bool anyFault(const std::vector<HiveFinding>& findings) {
    for (const HiveFinding& finding : findings) {
        if (finding.fault) return true;
    }
    return false;
}

TEST(GenuineHives, ReadCompletelyAndWrittenAgainUnchanged) {
    NEED_GENUINE();
    for (const Clean& clean : cleanFiles) {
        SCOPED_TRACE(clean.file);
        const Bytes file = load(genuineFolder() / clean.file);
        EXPECT_FALSE(anyFault(checkHive(file))) << "our checker finds faults in what Windows wrote";
        const Hive hive = readHive(file).hive;
        EXPECT_EQ(count(hive.root), clean.counts);
        EXPECT_EQ(hive.minorVersion, clean.minor);
        for (const std::uint32_t minor : {3u, 5u}) {
            HiveWriteOptions options;
            options.minorVersion = minor;
            const Bytes written = writeHive(hive, options);
            EXPECT_EQ(lines(checkHive(written)), std::vector<std::string>());
            EXPECT_EQ(dump(readHive(written).hive), dump(hive));
        }
    }
}

TEST(GenuineHives, ReglookupSeesNoDifference) {
    NEED_GENUINE();
    if (!installed("reglookup")) GTEST_SKIP() << "reglookup is not installed";
    const test::TempDir folder;
    for (const Clean& clean : cleanFiles) {
        SCOPED_TRACE(clean.file);
        save(folder / "a", load(genuineFolder() / clean.file));
        const std::string before = othersView("reglookup -s", folder / "a");
        save(folder / "a", writeHive(readHive(load(genuineFolder() / clean.file)).hive));
        ASSERT_FALSE(before.empty());
        EXPECT_TRUE(othersView("reglookup -s", folder / "a") == before) << "the written file reads differently";
    }
}

struct Damaged {
    const char* file;
    std::uint64_t offset;
    const char* text;
    HiveCounts salvaged;
};

TEST(GenuineHives, DamagedOnesAreRefusedByPlaceAndSalvagedOnlyWhenAsked) {
    NEED_GENUINE();
    const Damaged table[] = {
        {"WrongOrderHive", 0x1370, "nicht in der Reihenfolge", {11, 0}},
        {"BadListHive", 0x1484, "einen anderen als übergeordnet", {6, 0}},
        {"TruncatedHive", 0x28, "abgeschnitten", {2, 0}},
        {"SAMBadHBinHeader", 0x2000, "müsste ein Abschnitt beginnen", {68, 73}},
        {"regf__corrupt_sub_key_list.hiv", 0x5480, "müsste ein Schlüssel stehen", {100, 99}},
        {"schmutzig/NewDirtyHive", 4, "nicht abgeschlossen", {5, 2}},
    };
    for (const Damaged& damaged : table) {
        SCOPED_TRACE(damaged.file);
        const Bytes file = load(genuineFolder() / damaged.file);
        try {
            readHive(file);
            ADD_FAILURE() << "read without complaint";
        } catch (const HiveError& error) {
            EXPECT_EQ(error.offset, damaged.offset);
            EXPECT_NE(std::string(error.what()).find(damaged.text), std::string::npos) << error.what();
        }
        EXPECT_TRUE(anyFault(checkHive(file)));
        const HiveReading salvaged = readHive(file, HiveMode::Salvage);
        EXPECT_FALSE(salvaged.findings.empty());
        EXPECT_EQ(count(salvaged.hive.root).keys, damaged.salvaged.keys);
        EXPECT_EQ(count(salvaged.hive.root).values, damaged.salvaged.values);
        EXPECT_EQ(lines(checkHive(writeHive(salvaged.hive))), std::vector<std::string>()) << "what was salvaged can be written";
    }
}

}  // namespace
}  // namespace brenvik
