// Keys saved as hive files and brought back, and hive files as stores of their own.
#include <gtest/gtest.h>

#include "TempStore.h"
#include "frame/DateiSystem.h"
#include "hive/HiveTestSupport.h"
#include "registry/BVKRegistry.h"
#include "registry/HiveFilesImpl.h"
#include "registry/LocalMachines.h"
#include "registry/RegTree.h"

using namespace brenvik;
using namespace brenvik::test;
namespace fs = std::filesystem;
using hivetest::load;
using hivetest::sampleHive;
using Lines = std::vector<std::string>;

namespace {

void plain(HiveKey& key) {
    key.flags = key.userFlags = 0;
    key.accessBits = 0;
    for (HiveKey& subKey : key.subKeys) plain(subKey);
}

// What a store carries from one file to another: all but the few bits of the file itself, and the root's name.
Lines carried(Hive hive) {
    plain(hive.root);
    hive.root.name.clear();
    return hivetest::dump(hive);
}

Hive hiveIn(const fs::path& file) {
    const Bytes bytes = load(file);
    EXPECT_EQ(hivetest::lines(checkHive(bytes)), Lines()) << file;
    return readHive(bytes).hive;
}

void put(RegStore& store, Root root, const std::string& key, const Hive& hive) {
    replaceTree(store, root, key, [&](TreeSink& sink) { walkHiveKey(hive, hive.root, sink); });
}

// Everything below a key, as the store tells it.
Lines told(RegStore& store, Root root, const std::string& key) {
    Hive hive;
    HiveTreeSink sink(hive, hive.root, 0);
    store.walk(root, key, sink);
    return carried(hive);
}

class HiveFilesTest : public testing::Test {
protected:
    TempStore local;
    RegfHiveFiles files;
    const std::string key = "Software\\Probe";
};

}  // namespace

TEST_F(HiveFilesTest, EverythingComesBackThroughTheEmbeddedStore) {
    const Hive sample = sampleHive(3);
    put(local.store, Root::LocalMachine, key, sample);
    ASSERT_TRUE(files.save(local.store, Root::LocalMachine, key, local.folder / "eins.hiv"));
    const Hive saved = hiveIn(local.folder / "eins.hiv");
    EXPECT_EQ(carried(saved), carried(sample));
    EXPECT_EQ(saved.root.name, "Probe");
    EXPECT_EQ(saved.minorVersion, 5u);   // for its big data

    ASSERT_TRUE(files.restore(local.store, Root::CurrentUser, "Kopie", local.folder / "eins.hiv"));
    EXPECT_EQ(told(local.store, Root::CurrentUser, "Kopie"), carried(sample));

    local.store.deleteValue(Root::CurrentUser, "Kopie\\Gro\xC3\x9F", ValueName::named("16345"));
    for (const char* large : {"32688", "32689", "70000"}) local.store.deleteValue(Root::CurrentUser, "Kopie\\Gro\xC3\x9F", ValueName::named(large));
    ASSERT_TRUE(files.save(local.store, Root::CurrentUser, "Kopie", local.folder / "zwei.hiv"));
    EXPECT_EQ(hiveIn(local.folder / "zwei.hiv").minorVersion, 3u);
}

TEST_F(HiveFilesTest, RestoringReplacesTheWholeContentOrNothing) {
    local.store.setValue(Root::LocalMachine, key, ValueName::named("alt"), sz("1"));
    local.store.setValue(Root::LocalMachine, key + "\\Alt\\Tief", ValueName::unnamed(), sz("2"));
    const Lines before = told(local.store, Root::LocalMachine, key);
    const Bytes good = writeHive(sampleHive(5, 50));

    Bytes damaged = good;
    damaged.resize(damaged.size() - 4096);
    hivetest::save(local.folder / "schaden.hiv", damaged);
    EXPECT_EQ(errorOf([&] { files.restore(local.store, Root::LocalMachine, key, local.folder / "schaden.hiv"); }), 0x80040208u);
    EXPECT_FALSE(files.restore(local.store, Root::LocalMachine, key, local.folder / "keine.hiv"));
    EXPECT_EQ(told(local.store, Root::LocalMachine, key), before);

    hivetest::save(local.folder / "gut.hiv", good);
    local.store.setReadOnly(Root::LocalMachine, key + "\\Alt\\Tief", true);
    EXPECT_EQ(errorOf([&] { files.restore(local.store, Root::LocalMachine, key, local.folder / "gut.hiv"); }), 0x80040204u);
    local.store.setReadOnly(Root::LocalMachine, key + "\\Alt\\Tief", false);
    EXPECT_EQ(told(local.store, Root::LocalMachine, key), before);

    // Larger than a store takes: found when half of it is in.
    Hive huge = sampleHive(5, 3);
    huge.root.ensure("zuletzt").set("w", {3, Bytes(MaxValueBytes + 1)});
    hivetest::save(local.folder / "riesig.hiv", writeHive(huge));
    EXPECT_EQ(errorOf([&] { files.restore(local.store, Root::LocalMachine, key, local.folder / "riesig.hiv"); }), 0x80040207u);
    EXPECT_EQ(told(local.store, Root::LocalMachine, key), before);

    ASSERT_TRUE(files.restore(local.store, Root::LocalMachine, key, local.folder / "gut.hiv"));
    EXPECT_EQ(told(local.store, Root::LocalMachine, key), carried(sampleHive(5, 50)));
}

TEST_F(HiveFilesTest, TheServiceSavesAndRestores) {
    LocalMachines machines(local.store);
    TraceLog trace;
    BVKRegistry registry(trace, machines);
    registry.setHiveFiles(&files);
    local.store.setValue(Root::LocalMachine, key, ValueName::unnamed(), sz("Wert"));
    const fs::path file = local.folder / "BVK.bin";
    registry.SetPath("", "HKLM\\" + key);
    EXPECT_TRUE(registry.SaveKey(utf8FromPath(file)));
    const Bytes bytes = load(file);
    EXPECT_FALSE(registry.SaveKey(utf8FromPath(file)));
    EXPECT_EQ(load(file), bytes);
    registry.SetPath("", "HKLM\\Software\\Fehlt");
    EXPECT_FALSE(registry.SaveKey(utf8FromPath(local.folder / "fehlt.bin")));
    local.store.setValue(Root::LocalMachine, key, ValueName::unnamed(), sz("anders"));
    registry.SetPath("", "HKLM\\" + key);
    EXPECT_TRUE(registry.RestoreKey(utf8FromPath(local.folder.path()), "BVK.bin"));
    EXPECT_EQ(textOf(local.store, Root::LocalMachine, key, ""), "Wert");
    const Lines names = local.folder.names();
    EXPECT_EQ(std::count_if(names.begin(), names.end(), [](const std::string& n) { return n.find(".neu") != std::string::npos; }), 0);
    EXPECT_EQ(errorOf([&] { files.save(local.store, Root::LocalMachine, key, local.folder / "kein Ordner" / "x.bin"); }), 0x80040207u);
}

TEST_F(HiveFilesTest, GenuineHivesComeBackWhole) {
    if (hivetest::genuineFolder().empty()) GTEST_SKIP() << "BRENVIK_TESTDATA is not set";
    for (const char* name : {"NTUSER.DAT", "nt__software.reg", "win2022_64__sam.reg", "win2022_64__security.reg", "BigDataHive", "ManySubkeysHive",
                             "ExtendedASCIIHive", "MultiSzHive", "StringValuesHive", "UpcaseHive"}) {
        const fs::path genuine = hivetest::genuineFolder() / name, copy = local.folder / (std::string(name) + ".neu.hiv");
        ASSERT_TRUE(files.restore(local.store, Root::LocalMachine, key, genuine)) << name;
        ASSERT_TRUE(files.save(local.store, Root::LocalMachine, key, copy)) << name;
        EXPECT_EQ(carried(hiveIn(copy)), carried(readHive(load(genuine)).hive)) << name;
    }
    ASSERT_TRUE(files.restore(local.store, Root::LocalMachine, key, hivetest::genuineFolder() / "schmutzig" / "NewDirtyHive"));
    EXPECT_EQ(told(local.store, Root::LocalMachine, key), carried(readHive(load(hivetest::genuineFolder() / "schmutzig" / "RecoveredHive_Windows10")).hive));
}

TEST_F(HiveFilesTest, TreesAreJoinedAndCopiedWithinOneStore) {
    put(local.store, Root::LocalMachine, key, sampleHive(3, 5));
    local.store.setValue(Root::LocalMachine, key + "\\Texte", ValueName::named("eigener"), sz("bleibt"));
    local.store.setValue(Root::CurrentUser, "Ziel\\Texte", ValueName::named("LEER"), sz("wird ersetzt"));
    local.store.setValue(Root::CurrentUser, "Ziel\\Eigen", ValueName::unnamed(), sz("bleibt"));
    ASSERT_TRUE(copyTree(local.store, Root::LocalMachine, key, local.store, Root::CurrentUser, "Ziel"));
    EXPECT_EQ(textOf(local.store, Root::CurrentUser, "Ziel\\Texte", "leer"), "");
    EXPECT_EQ(textOf(local.store, Root::CurrentUser, "Ziel\\Texte", "eigener"), "bleibt");
    EXPECT_EQ(textOf(local.store, Root::CurrentUser, "Ziel\\Eigen", ""), "bleibt");
    EXPECT_EQ(local.store.subKeys(Root::CurrentUser, "Ziel\\Viele").size(), 5u);
    ASSERT_TRUE(copyTree(local.store, Root::LocalMachine, key, local.store, Root::LocalMachine, key + "\\In sich"));
    EXPECT_EQ(textOf(local.store, Root::LocalMachine, key + "\\In sich\\Texte", "eigener"), "bleibt");
    EXPECT_FALSE(local.store.keyExists(Root::LocalMachine, key + "\\In sich\\In sich"));
    EXPECT_FALSE(copyTree(local.store, Root::LocalMachine, "Fehlt", local.store, Root::CurrentUser, "Fehlt"));
    EXPECT_FALSE(local.store.keyExists(Root::CurrentUser, "Fehlt"));
}
