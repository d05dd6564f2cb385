// Keys saved as hive files and brought back, and hive files as stores of their own.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <random>

#include "TempStore.h"
#include "frame/files/FileSystem.h"
#include "hive/HiveTestSupport.h"
#include "registry/BVKRegistry.h"
#include "registry/hivefile/HiveFilesImpl.h"
#include "registry/hivefile/HiveInPlace.h"
#include "registry/hivefile/HiveStore.h"
#include "registry/machine/LocalMachines.h"
#include "registry/store/RegTree.h"

using namespace brenvik;
using namespace brenvik::test;
namespace fs = std::filesystem;
using hivetest::load;
using hivetest::sampleHive;
using Lines = std::vector<std::string>;

namespace {

void plain(HiveKey& key) {
    key.flags &= hivefmt::nk::Travelling;
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
    Hive sample = sampleHive(3);
    sample.findPath("Namen\\a")->lastWrite = 0;   // a time like any other
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
    local.store.setValue(Root::LocalMachine, key, ValueName::unnamed(), sz("Wert"));
    const fs::path file = local.folder / "BVK.bin";
    registry.SetPath("", "HKLM\\" + key + "\\");
    EXPECT_FALSE(registry.SaveKey(utf8FromPath(file)));   // nobody here knows hive files
    EXPECT_FALSE(registry.RestoreKey(utf8FromPath(local.folder.path()), "registry.db"));
    registry.setHiveFiles(&files);
    EXPECT_TRUE(registry.SaveKey(utf8FromPath(file)));
    const Bytes bytes = load(file);
    EXPECT_FALSE(registry.SaveKey(utf8FromPath(file)));
    EXPECT_EQ(load(file), bytes);
    local.store.setValue(Root::LocalMachine, key, ValueName::unnamed(), sz("anders"));
    registry.SetPath("", "HKLM\\" + key);
    for (const char* root : {"HKLM", "HKLM\\"}) {   // never all there is
        registry.SetPath("", root);
        EXPECT_EQ(errorOf([&] { registry.RestoreKey(utf8FromPath(local.folder.path()), "BVK.bin"); }), 0x80040202u);
    }
    registry.SetPath("", "HKLM\\" + key);
    EXPECT_TRUE(registry.RestoreKey(utf8FromPath(local.folder.path()), "BVK.bin"));
    EXPECT_EQ(textOf(local.store, Root::LocalMachine, key, ""), "Wert");
    EXPECT_EQ(errorOf([&] { files.save(local.store, Root::LocalMachine, key, local.folder / "kein Ordner" / "x.bin"); }), 0x80040207u);
}

// A sound file is told alike, and a damaged one refused with the same words.
TEST(HiveInPlace, TellsWhatTheTreeTells) {
    const auto outcome = [](const std::function<void(TreeSink&)>& tell) -> Lines {
        Hive hive;
        HiveTreeSink sink(hive, hive.root, 0);
        try {
            tell(sink);
        } catch (const HiveError& error) {
            return {error.what()};
        }
        return carried(hive);
    };
    std::size_t damaged = 0;
    const auto compare = [&](const Bytes& bytes, const std::string& what) {
        const Lines tree = outcome([&](TreeSink& sink) {
            const Hive hive = readHive(bytes).hive;
            walkHiveKey(hive, hive.root, sink);
        });
        const Lines inPlace = outcome([&](TreeSink& sink) {
            requireSoundHive(bytes);
            tellHive(bytes, sink);
        });
        EXPECT_EQ(inPlace, tree) << what;
        damaged += tree.size() == 1;
    };
    Hive pair = sampleHive(3, 5);
    pair.root.values = {{"Zwilling 1", {4, {1, 2, 3, 4}}}, {"Zwilling 2", {4, {5, 6, 7, 8}}}};
    Bytes twins = writeHive(pair);
    const std::string_view second = "Zwilling 2", same = "ZWILLING 1";
    std::copy(same.begin(), same.end(), std::search(twins.begin(), twins.end(), second.begin(), second.end()));
    compare(twins, "twins");
    EXPECT_EQ(damaged, 1u);
    Hive small = sampleHive(5, 5);
    compare(writeHive(small), "sample");
    EXPECT_EQ(damaged, 1u);
    small.root.erase("Gro\xC3\x9F");
    small.root.find("Texte")->values.pop_back();   // its name is long
    const Bytes sample = writeHive(small);
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        Bytes changed = sample;
        const std::size_t at = 4096 + random() % (sample.size() - 4096);
        changed[at] ^= static_cast<std::uint8_t>(1 + random() % 255);
        compare(changed, "byte " + std::to_string(at));
    }
    EXPECT_GT(damaged, 50u);
    if (hivetest::genuineFolder().empty()) GTEST_SKIP() << "BRENVIK_TESTDATA is not set";
    for (const auto& file : fs::recursive_directory_iterator(hivetest::genuineFolder())) {
        if (const Bytes bytes = file.is_regular_file() ? load(file) : Bytes(); bytes.size() > 4 && bytes[0] == 'r' && bytes[1] == 'e') compare(bytes, file.path().filename().string());
    }
}

// Who listens to a walk may look into the same store, which builds the tree under it.
TEST_F(HiveFilesTest, AWalkOutlivesQuestionsToItsStore) {
    hivetest::save(local.folder / "a.hiv", writeHive(sampleHive(3)));
    const auto store = openHiveFile(local.folder / "a.hiv");
    struct Asking final : TreeSink {
        explicit Asking(RegStore& asked) : store(asked) {}
        void enter(std::string_view, const KeyDetails&) override { ++keys; }
        void value(std::string_view name, const RawValue&) override { found += name == "leer" && store.hasValue(Root::LocalMachine, "Texte", ValueName::named("leer")); }
        void leave() override {}
        RegStore& store;
        std::size_t keys = 0;
        int found = 0;
    } listener(*store);
    store->walk(Root::LocalMachine, "", listener);
    EXPECT_EQ(listener.keys, count(sampleHive(3).root).keys);
    EXPECT_EQ(listener.found, 1);
    EXPECT_EQ(told(*store, Root::LocalMachine, ""), carried(sampleHive(3)));   // by the tree now
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

namespace {

class HiveStoreTest : public testing::Test {
protected:
    void SetUp() override {
        hivetest::save(file, writeHive(sampleHive(3, 20)));
        store = openHiveFile(file);
    }
    // What stands on the disk now; the file must be as a writer should leave it.
    Lines onDisk() const { return carried(hiveIn(file)); }
    std::string text(const std::string& key, const std::string& name) { return textOf(*store, Root::LocalMachine, key, name); }

    TempDir folder;
    const fs::path file = folder / "probe.hiv";
    const Root root = Root::LocalMachine;
    std::unique_ptr<RegStore> store;
};

}  // namespace

TEST_F(HiveStoreTest, TransactionsAreWrittenOnceOrTakenBack) {
    const Lines before = onDisk();
    const Bytes bytes = load(file);
    const auto changeAll = [&] {
        store->setValue(root, "Texte", ValueName::unnamed(), sz("x"));
        store->setValue(root, "Texte", ValueName::named("frisch"), sz("x"));
        store->deleteValue(root, "Texte", ValueName::named("leer"));
        store->setDetails(root, "Texte", {{'K', 0}, 5, defaultDescriptor(), false, 0x10, 7});
        store->deleteKey(root, "Namen\\a");
        store->setValue(root, "Ganz\\Neu", ValueName::unnamed(), sz("x"));
        store->clear(root, "Viele");
        const Hive other = sampleHive(5, 3);
        store->fill(root, "Gro\xC3\x9F", [&](TreeSink& sink) { walkHiveKey(other, other.root, sink); });
    };
    EXPECT_EQ(errorOf([&] {
                  store->transaction([&] {
                      changeAll();
                      throw RegError(regerr::NoAssignment, "Abbruch");
                  });
              }),
              0x80040207u);
    EXPECT_EQ(told(*store, root, ""), before);
    EXPECT_EQ(load(file), bytes);

    store->transaction([&] {
        store->setValue(root, "Texte", ValueName::named("bleibt"), sz("1"));
        EXPECT_NE(errorOf([&] {
                      store->transaction([&] {
                          changeAll();
                          store->setValue(root, "Texte", ValueName::named("bleibt"), sz("2"));
                          throw RegError(regerr::NoAssignment, "Abbruch");
                      });
                  }),
                  0u);
        EXPECT_EQ(load(file), bytes);
    });
    Hive expected = sampleHive(3, 20);
    expected.findPath("Texte")->set("bleibt", sz("1"));
    expected.findPath("Texte")->lastWrite = store->details(root, "Texte")->written;
    EXPECT_GT(store->details(root, "Texte")->written, std::uint64_t{0x01DA000000000000});   // the time of now
    EXPECT_EQ(onDisk(), carried(expected));
    EXPECT_EQ(hiveIn(file).sequence, readHive(bytes).hive.sequence + 1);

    store->transaction([&] { store->setValue(root, "Texte", ValueName::named("bleibt"), sz("1")); });   // nothing new
    EXPECT_EQ(hiveIn(file).sequence, readHive(bytes).hive.sequence + 1);
    store->transaction(changeAll);
    EXPECT_EQ(told(*store, root, ""), onDisk());
    EXPECT_EQ(load(fs::path(file) += ".bvk"), bytes);
}

TEST_F(HiveStoreTest, AFileChangedUnderneathIsNotOverwritten) {
    const auto rival = openHiveFile(file);
    rival->setValue(root, "Texte", ValueName::unnamed(), sz("von anderen"));
    const Bytes theirs = load(file);
    EXPECT_EQ(text("Texte", ""), "a");
    const auto mine = [&] { store->setValue(root, "Texte", ValueName::named("meins"), sz("1")); };
    const std::string refusal = messageOf(mine);
    EXPECT_NE(refusal.find("wurde inzwischen von einem anderen Programm ge\xC3\xA4ndert"), std::string::npos) << refusal;
    EXPECT_EQ(load(file), theirs);
    EXPECT_EQ(text("Texte", ""), "von anderen");
    EXPECT_EQ(text("Texte", "meins"), "<none>");
    mine();
    EXPECT_EQ(openHiveFile(file)->value(root, "Texte", ValueName::named("meins")), sz("1"));

    // changed between the change in memory and its end
    const auto swap = [&] {
        store->transaction([&] {
            store->setValue(root, "Texte", ValueName::named("meins"), sz("2"));
            hivetest::save(file, theirs);
        });
    };
    EXPECT_EQ(errorOf(swap), 0x80040207u);
    EXPECT_EQ(load(file), theirs);
    EXPECT_EQ(joined(folder.names()), "probe.hiv|probe.hiv.bvk");
}

TEST_F(HiveStoreTest, ReadOnlyFilesAndRefusedContentChangeNothing) {
    const Bytes bytes = load(file);
    setReadOnly(file, true);
    EXPECT_FALSE(store->writable());
    EXPECT_FALSE(store->canOpen(root, "Texte", KEY_ALL_ACCESS_MASK));
    EXPECT_TRUE(store->canOpen(root, "Texte", KEY_QUERY_VALUE_MASK));
    EXPECT_EQ(errorOf([&] { store->setValue(root, "Texte", ValueName::unnamed(), sz("x")); }), 0x80040204u);
    EXPECT_EQ(text("Texte", ""), "a");
    setReadOnly(file, false);
    EXPECT_EQ(errorOf([&] { store->createKey(root, std::string(256, 'k')); }), 0x80040202u);
    EXPECT_EQ(errorOf([&] { store->setValue(root, "T", ValueName::named(std::string(16384, 'n')), sz("")); }), 0x80040207u);
    EXPECT_EQ(errorOf([&] { store->setValue(Root::Users, "T", ValueName::unnamed(), sz("")); }), 0x80040204u);
    std::string deep = "t";
    for (int i = 1; i < 512; ++i) deep += "\\t";
    EXPECT_EQ(errorOf([&] { store->createKey(root, deep); }), 0x80040202u);
    EXPECT_EQ(load(file), bytes);
    EXPECT_EQ(joined(folder.names()), "probe.hiv");

    hivetest::save(file, Bytes(bytes.begin(), bytes.end() - 4096));
    EXPECT_EQ(errorOf([&] { openHiveFile(file); }), 0x80040208u);
    const auto salvaged = openHiveFile(file, {true});
    EXPECT_EQ(textOf(*salvaged, root, "Texte", ""), "a");
    EXPECT_FALSE(salvaged->writable());
    EXPECT_NE(errorOf([&] { salvaged->setValue(root, "Texte", ValueName::unnamed(), sz("x")); }), 0u);
    EXPECT_EQ(errorOf([&] { openHiveFile(folder / "fehlt.hiv"); }), 0x80040208u);
}

TEST_F(HiveStoreTest, ADirtyHiveShowsWhatItsLogsHold) {
    if (hivetest::genuineFolder().empty()) GTEST_SKIP() << "BRENVIK_TESTDATA is not set";
    const fs::path genuine = hivetest::genuineFolder() / "schmutzig", dirty = folder / "NewDirtyHive";
    for (const char* ending : {"", ".LOG1", ".LOG2"}) {
        const fs::path source = genuine / (std::string("NewDirtyHive") + ending);
        hivetest::save(folder / source.filename(), load(source));
    }
    const auto opened = openHiveFile(dirty);
    EXPECT_EQ(told(*opened, root, ""), carried(readHive(load(genuine / "RecoveredHive_Windows10")).hive));
    EXPECT_EQ(load(dirty), load(genuine / "NewDirtyHive"));
    opened->setValue(root, "Neu", ValueName::unnamed(), sz("x"));
    EXPECT_EQ(hivetest::lines(checkHive(load(dirty))), Lines());
    EXPECT_EQ(told(*openHiveFile(dirty), root, ""), told(*opened, root, ""));
    for (const char* ending : {"", ".LOG1", ".LOG2"}) {
        EXPECT_EQ(load(folder / ("NewDirtyHive" + std::string(ending) + ".bvk")), load(genuine / ("NewDirtyHive" + std::string(ending))));
    }
}

TEST_F(HiveStoreTest, CopiesAreNoMoreOpenThanTheFile) {
    const auto mode = [](const fs::path& of) { return static_cast<unsigned>(fs::status(of).permissions()); };
    const fs::path copy = folder / "probe.hiv.bvk";
    for (const auto& [before, after] : {std::pair{0640u, 0640u}, {0600u, 0600u}, {04646u, 0644u}}) {
        fs::remove(copy);
        fs::permissions(file, static_cast<fs::perms>(before));
        openHiveFile(file)->setValue(root, "Texte", ValueName::named("m"), dword(before));
        EXPECT_EQ(mode(file), after);
        EXPECT_EQ(mode(copy), after);
    }
    if (::geteuid() == 0) {   // else nobody can give a file away
        fs::remove(copy);
        ASSERT_EQ(::chown(file.c_str(), 65534, 65533), 0);
        openHiveFile(file)->setValue(root, "Texte", ValueName::named("m"), dword(1));
        for (const fs::path& each : {file, copy}) {
            struct stat facts{};
            ASSERT_EQ(::stat(each.c_str(), &facts), 0);
            EXPECT_EQ(facts.st_uid, 65534u);
            EXPECT_EQ(facts.st_gid, 65533u);
        }
    }
    // Something else in its place is no safety copy.
    for (const bool link : {true, false}) {
        fs::remove(copy);
        link ? fs::create_symlink("probe.hiv", copy) : static_cast<void>(fs::create_directory(copy));
        const Bytes before = load(file);
        const auto opened = openHiveFile(file);
        const std::string refusal = messageOf([&] { opened->setValue(root, "Texte", ValueName::named("anders"), dword(1)); });
        EXPECT_NE(refusal.find("probe.hiv.bvk\" kann nicht angelegt werden, weil dort ein Verweis"), std::string::npos) << refusal;
        EXPECT_EQ(load(file), before);
    }
}

// A link may lead to any file of the host, whose content would come into the hive and the copies.
TEST_F(HiveStoreTest, ALogThatIsALinkIsNotRead) {
    Bytes dirty = load(file);
    hivefmt::put32(dirty.data() + hivefmt::header::Sequence1, 50);
    hivefmt::put32(dirty.data() + hivefmt::header::Checksum, hivefmt::headerChecksum(dirty.data()));
    hivetest::save(file, dirty);
    writeFile(folder / "geheim", "nicht von hier");
    fs::create_symlink("geheim", folder / "probe.hiv.LOG1");
    const std::string refusal = messageOf([&] { openHiveFile(file); });
    EXPECT_NE(refusal.find("probe.hiv.LOG1\" ist ein Verweis"), std::string::npos) << refusal;
    EXPECT_EQ(joined(folder.names()), "geheim|probe.hiv|probe.hiv.LOG1");
}

TEST_F(HiveFilesTest, ASavedRootKeepsItsName) {
    hivetest::save(local.folder / "a.hiv", writeHive(sampleHive(3, 2)));
    const auto hive = openHiveFile(local.folder / "a.hiv");
    local.store.createKey(Root::LocalMachine, "Software");
    const struct {
        RegStore& store;
        std::string key, name;
    } cases[] = {{*hive, "", "Wurzel"}, {*hive, "Texte", "Texte"}, {local.store, "", "HKEY_LOCAL_MACHINE"}};
    for (const auto& c : cases) {
        fs::remove(local.folder / "b.hiv");
        ASSERT_TRUE(files.save(c.store, Root::LocalMachine, c.key, local.folder / "b.hiv"));
        EXPECT_EQ(hiveIn(local.folder / "b.hiv").root.name, c.name);
    }
}
