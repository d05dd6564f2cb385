// The embedded registry: names, roots, links, limits, transactions.
#include <gtest/gtest.h>

#include <chrono>
#include <random>

#include "TempStore.h"
#include "hive/HiveTestSupport.h"
#include "registry/hivefile/HiveStore.h"
#include "registry/store/MemoryStore.h"

using namespace brenvik;
using namespace brenvik::test;

namespace {

constexpr const char* Sid = "S-1-5-21-1844237615-1960408961-725345543-1003";
const auto Unnamed = ValueName::unnamed();

}  // namespace

TEST(SqliteStore, RootsLeadToTheirPlaces) {
    TempStore t;
    t.store.createKey(Root::Users, ".DEFAULT");
    t.store.createKey(Root::Users, "S-1-5-18");
    t.store.createKey(Root::Users, "S-1-5-21-7-1003_Classes");
    t.store.setValue(Root::CurrentUser, "Software\\A", ValueName::named("v"), sz("first"));
    EXPECT_EQ(textOf(t.store, Root::Users, std::string(Sid) + "\\Software\\A", "v"), "first");
    EXPECT_EQ(t.store.currentUserSid(), Sid);
    t.store.setValue(Root::CurrentConfig, "Software", Unnamed, sz("config"));
    EXPECT_EQ(textOf(t.store, Root::LocalMachine, "SYSTEM\\ControlSet001\\Hardware Profiles\\CURRENT\\software", ""), "config");
    for (const Root root : {Root::CurrentUser, Root::LocalMachine, Root::Users, Root::DynData, Root::CurrentConfig, Root::ClassesRoot}) {
        EXPECT_TRUE(t.store.keyExists(root, ""));
        EXPECT_TRUE(t.store.canOpen(root, "", KEY_QUERY_VALUE_MASK));
        EXPECT_FALSE(t.store.deleteKey(root, ""));
    }
    EXPECT_EQ(joined(t.store.subKeys(Root::DynData, "")), "");
    EXPECT_FALSE(t.store.canOpen(Root::DynData, "", KEY_ALL_ACCESS_MASK));
    EXPECT_EQ(errorOf([&] { t.store.createKey(Root::DynData, "x"); }), 0x80040204u);
    EXPECT_EQ(errorOf([&] { t.store.setValue(Root::DynData, "", Unnamed, sz("x")); }), 0x80040204u);
}

TEST(SqliteStore, CurrentControlSetFollowsSelect) {
    TempStore t;
    const auto control = ValueName::named("v");
    t.store.setValue(Root::LocalMachine, "System\\CURRENTCONTROLSET\\Control", control, sz("one"));
    EXPECT_EQ(joined(t.store.subKeys(Root::LocalMachine, "SYSTEM")), "ControlSet001|CurrentControlSet");
    EXPECT_EQ(textOf(t.store, Root::LocalMachine, "system\\controlset001\\control", "v"), "one");
    t.store.setValue(Root::LocalMachine, "System\\ControlSet002\\Control", control, sz("two"));
    t.store.setValue(Root::LocalMachine, "System\\Select", ValueName::named("current"), dword(2));
    EXPECT_EQ(textOf(t.store, Root::LocalMachine, "System\\CurrentControlSet\\Control", "v"), "two");
    EXPECT_FALSE(t.store.deleteKey(Root::LocalMachine, "System\\CurrentControlSet"));
    t.store.deleteValue(Root::LocalMachine, "System\\Select", ValueName::named("Current"));
    EXPECT_EQ(textOf(t.store, Root::LocalMachine, "System\\CurrentControlSet\\Control", "v"), "one");
    EXPECT_TRUE(t.store.keyExists(Root::LocalMachine, "System\\CurrentControlSet"));
    EXPECT_FALSE(t.store.keyExists(Root::LocalMachine, "System\\CurrentControlSetX"));
    for (const std::uint32_t odd : {0u, 1000u, 0x10001u}) {
        t.store.setValue(Root::LocalMachine, "System\\Select", ValueName::named("Current"), dword(odd));
        EXPECT_EQ(textOf(t.store, Root::LocalMachine, "System\\CurrentControlSet\\Control", "v"), "one") << odd;
    }
}

TEST(SqliteStore, ClassesAreTheUsersOverTheMachines) {
    TempStore t;
    const auto set = [&](Root root, const char* key, const char* name, const char* text) { t.store.setValue(root, key, ValueName::named(name), sz(text)); };
    set(Root::LocalMachine, "Software\\Classes\\.txt", "", "machine");
    set(Root::LocalMachine, "Software\\Classes\\.txt", "only", "machine");
    set(Root::LocalMachine, "Software\\Classes\\.doc", "", "machine");
    set(Root::CurrentUser, "Software\\Classes\\.TXT\\Shell", "", "user");
    set(Root::CurrentUser, "Software\\Classes\\.txt", "", "user");
    set(Root::CurrentUser, "Software\\Classes\\.own", "", "user");

    EXPECT_EQ(joined(t.store.subKeys(Root::ClassesRoot, "")), ".doc|.own|.TXT");
    EXPECT_EQ(joined(t.store.subKeys(Root::ClassesRoot, ".txt")), "Shell");
    std::string values;
    for (const NamedValue& v : t.store.values(Root::ClassesRoot, ".txt")) values += "[" + v.name.text() + "]" + toText(v.value);
    EXPECT_EQ(values, "[]user[only]machine");
    EXPECT_EQ(textOf(t.store, Root::ClassesRoot, ".txt", ""), "user");
    EXPECT_EQ(textOf(t.store, Root::ClassesRoot, ".txt", "ONLY"), "machine");

    set(Root::ClassesRoot, ".txt", "new", "x");        // the key is the user's too
    EXPECT_EQ(textOf(t.store, Root::CurrentUser, "Software\\Classes\\.txt", "new"), "x");
    EXPECT_EQ(textOf(t.store, Root::LocalMachine, "Software\\Classes\\.txt", "new"), "<none>");
    set(Root::ClassesRoot, ".doc", "new", "x");        // the key is the machine's alone
    EXPECT_EQ(textOf(t.store, Root::LocalMachine, "Software\\Classes\\.doc", "new"), "x");
    t.store.createKey(Root::ClassesRoot, ".own\\deep");
    EXPECT_TRUE(t.store.keyExists(Root::LocalMachine, "Software\\Classes\\.own\\deep"));

    EXPECT_TRUE(t.store.deleteValue(Root::ClassesRoot, ".txt", Unnamed));
    EXPECT_EQ(textOf(t.store, Root::ClassesRoot, ".txt", ""), "machine");
    EXPECT_FALSE(t.store.deleteKey(Root::ClassesRoot, ".txt"));
    EXPECT_TRUE(t.store.deleteKey(Root::ClassesRoot, ".txt\\shell"));
    EXPECT_TRUE(t.store.deleteKey(Root::ClassesRoot, ".txt"));
    EXPECT_FALSE(t.store.keyExists(Root::CurrentUser, "Software\\Classes\\.txt"));
    EXPECT_EQ(textOf(t.store, Root::ClassesRoot, ".txt", "only"), "machine");
}

TEST(SqliteStore, Limits) {
    TempStore t;
    const std::string longest(255, 'k'), tooLong(256, 'k');
    std::string astral;
    for (int i = 0; i < 128; ++i) astral += "\xF0\x9F\x98\x80";   // 256 units
    t.store.createKey(Root::LocalMachine, "S\\" + longest);
    EXPECT_TRUE(t.store.keyExists(Root::LocalMachine, "s\\" + longest));
    std::string deep = "d", tooDeep;
    for (int i = 1; i < 512; ++i) deep += "\\d";
    tooDeep = deep + "\\d";
    t.store.createKey(Root::LocalMachine, deep);
    EXPECT_TRUE(t.store.keyExists(Root::LocalMachine, deep));
    for (const std::string& key : {"S\\" + tooLong, "S\\" + astral, std::string("S\\\\x"), std::string("S\\"), std::string("\\S"), tooDeep}) {
        EXPECT_EQ(errorOf([&] { t.store.createKey(Root::LocalMachine, key); }), 0x80040202u) << key.substr(0, 20);
        EXPECT_FALSE(t.store.keyExists(Root::LocalMachine, key)) << key.substr(0, 20);
    }
    const std::string name(16383, 'n');
    t.store.setValue(Root::LocalMachine, "S", ValueName::named(name), dword(1));
    EXPECT_TRUE(t.store.hasValue(Root::LocalMachine, "S", ValueName::named(name)));
    EXPECT_EQ(errorOf([&] { t.store.setValue(Root::LocalMachine, "S", ValueName::named(name + "n"), dword(1)); }), 0x80040207u);

    Bytes big(16u * 1024 * 1024);
    for (std::size_t i = 0; i < big.size(); ++i) big[i] = static_cast<std::uint8_t>(i * 7 + (i >> 8));
    t.store.setValue(Root::LocalMachine, "S", ValueName::named("big"), {0x12345678, big});
    EXPECT_EQ(t.store.value(Root::LocalMachine, "S", ValueName::named("BIG")), (RawValue{0x12345678, big}));
    big.push_back(0);
    EXPECT_EQ(errorOf([&] { t.store.setValue(Root::LocalMachine, "S", ValueName::named("big"), {3, big}); }), 0x80040207u);
    big.pop_back();
    EXPECT_EQ(t.store.value(Root::LocalMachine, "S", ValueName::named("BIG")), (RawValue{0x12345678, big}));
}

TEST(SqliteStore, ReadOnlyKeys) {
    TempStore t;
    t.store.setValue(Root::CurrentUser, "S\\K", ValueName::named("v"), sz("x"));
    t.store.setReadOnly(Root::CurrentUser, "S\\K", true);
    EXPECT_TRUE(t.store.canOpen(Root::CurrentUser, "S", KEY_ALL_ACCESS_MASK));
    const std::function<void()> writes[] = {
        [&] { t.store.setValue(Root::CurrentUser, "S\\K", ValueName::named("v"), sz("y")); },
        [&] { t.store.createKey(Root::CurrentUser, "S\\K\\Sub"); },
        [&] { t.store.deleteValue(Root::CurrentUser, "S\\K", ValueName::named("v")); },
        [&] { t.store.deleteKey(Root::CurrentUser, "S\\K"); },
    };
    for (const auto& write : writes) EXPECT_EQ(errorOf(write), 0x80040204u);
    EXPECT_EQ(textOf(t.store, Root::CurrentUser, "S\\K", "v"), "x");
    t.store.setReadOnly(Root::CurrentUser, "S\\K", false);
    EXPECT_TRUE(t.store.canOpen(Root::CurrentUser, "S\\K", KEY_ALL_ACCESS_MASK));
    t.store.createKey(Root::CurrentUser, "S\\K\\Sub");
}

TEST(SqliteStore, ConnectionsSeeEachOther) {
    TempStore a;
    SqliteStore b(a.folder / "registry.db");
    a.store.setValue(Root::LocalMachine, "S\\K", ValueName::named("v"), sz("1"));
    EXPECT_EQ(textOf(b, Root::LocalMachine, "S\\K", "v"), "1");
    // Both know the key now; each takes it away and makes it anew in turn.
    b.setValue(Root::LocalMachine, "S\\K", ValueName::named("v"), sz("2"));
    EXPECT_EQ(textOf(a.store, Root::LocalMachine, "S\\K", "v"), "2");
    EXPECT_TRUE(b.deleteKey(Root::LocalMachine, "S\\K"));
    EXPECT_FALSE(a.store.keyExists(Root::LocalMachine, "S\\K"));
    a.store.setValue(Root::LocalMachine, "S\\K", ValueName::named("w"), sz("3"));
    EXPECT_EQ(textOf(b, Root::LocalMachine, "S\\K", "v"), "<none>");
    EXPECT_EQ(textOf(b, Root::LocalMachine, "S\\K", "w"), "3");
    EXPECT_TRUE(a.store.deleteKey(Root::LocalMachine, "S\\K"));
    b.setValue(Root::LocalMachine, "S\\K", ValueName::named("x"), sz("4"));   // into a key that another has deleted
    EXPECT_EQ(textOf(a.store, Root::LocalMachine, "S\\K", "x"), "4");
    b.setValue(Root::LocalMachine, "System\\ControlSet003\\C", ValueName::named("v"), sz("three"));
    b.setValue(Root::LocalMachine, "System\\Select", ValueName::named("Current"), dword(3));
    EXPECT_EQ(textOf(a.store, Root::LocalMachine, "System\\CurrentControlSet\\C", "v"), "three");
    // What one has not finished the other does not see.
    a.store.transaction([&] {
        a.store.setValue(Root::LocalMachine, "S\\K", ValueName::named("x"), sz("5"));
        EXPECT_EQ(textOf(b, Root::LocalMachine, "S\\K", "x"), "4");
    });
    EXPECT_EQ(textOf(b, Root::LocalMachine, "S\\K", "x"), "5");
}

TEST(SqliteStore, DetailsOfKeys) {
    TempStore t;
    t.store.createKey(Root::LocalMachine, "S\\A");
    t.store.createKey(Root::LocalMachine, "S\\B");
    const auto made = t.store.details(Root::LocalMachine, "S\\A")->written;
    EXPECT_NEAR(static_cast<double>(made) / 1e7 - 11644473600.0,
                std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count(), 60.0);
    const KeyDetails details{{'C', 0}, 116444736000000000u, {1, 0, 4, 0x80}, true, 0x10, 0x0103};
    t.store.setDetails(Root::LocalMachine, "S\\A", details);
    t.store.setDetails(Root::LocalMachine, "S\\B", {{}, 5, {1, 0, 4, 0x80}, false});
    const auto read = t.store.details(Root::LocalMachine, "s\\a");
    ASSERT_TRUE(read);
    EXPECT_TRUE(*read == details);
    EXPECT_FALSE(t.store.details(Root::LocalMachine, "S\\C"));
    t.store.setValue(Root::LocalMachine, "S\\B", Unnamed, sz("x"));   // writing moves the time, and nothing else
    EXPECT_GE(t.store.details(Root::LocalMachine, "S\\B")->written, made);
    EXPECT_EQ(t.store.details(Root::LocalMachine, "S\\B")->descriptor, details.descriptor);
    sqlite::Database file((t.folder / "registry.db").string(), 1);
    EXPECT_EQ(file.number("SELECT count(*) FROM descriptor"), 1);
}

// Trees that grow here and there, with changes that are taken back, in three stores that share no code.
TEST(Stores, GrowAlikeAndAreWalkedAsTheyAre) {
    struct Writing final : TreeSink {
        void enter(std::string_view name, const KeyDetails& details) override {
            text.append("[").append(name);
            if (withDetails) text.append(std::to_string(details.descriptor.size() + details.className.size()));
        }
        void value(std::string_view name, const RawValue& value) override { text.append(name).append("=").append(bytesText(value.bytes)).append(";"); }
        void leave() override { text += "]"; }
        std::string text;
        bool withDetails = true;
    };
    TempStore t;
    MemoryStore other;
    const std::filesystem::path file = t.folder / "x.hiv";
    hivetest::save(file, writeHive(Hive()));
    const auto hive = openHiveFile(file);
    std::mt19937 random(3);
    const auto change = [&](std::uint32_t i) {
        // Two cases of one name, unpaired surrogates, zeros and signs that mean something to others.
        static const std::string names[] = {"Größe σ", "GRÖßE Σ", "_", "B", "a", "\xED\xA0\x80", std::string("a\0b", 3), "%'\"?*"};
        std::string key = "T";
        for (std::uint32_t depth = random() % 5; depth > 0; --depth) key += "\\" + names[random() % 5];
        const auto name = random() % 9 == 0 ? Unnamed : ValueName::named(names[random() % 8]);
        for (RegStore* const store : {static_cast<RegStore*>(&t.store), static_cast<RegStore*>(&other), hive.get()}) {
            if (i % 7 == 0) store->deleteValue(Root::LocalMachine, key, name);
            else if (i % 11 == 0) store->deleteKey(Root::LocalMachine, key);
            else if (i % 13 == 0) store->createKey(Root::LocalMachine, key);
            else if (i % 97 == 0 && store == &t.store && store->keyExists(Root::LocalMachine, key)) store->setDetails(Root::LocalMachine, key, {{'C', 0}, i, Bytes(i % 5, 1), false});
            else if (i % 97 == 0) continue;
            else store->setValue(Root::LocalMachine, key, name, dword(i));
        }
    };
    const auto together = [&](const std::function<void()>& work) { t.store.transaction([&] { other.transaction([&] { hive->transaction(work); }); }); };
    for (std::uint32_t i = 0; i < 3000; ++i) {
        const bool wholeTakenBack = i % 5 == 0;
        EXPECT_EQ(errorOf([&] {
                      together([&] {
                          for (const std::uint32_t end = i + random() % 40; i < end; ++i) change(i);
                          EXPECT_EQ(errorOf([&] {
                                        together([&] {
                                            for (int more = 0; more < 10; ++more) change(i + 1);
                                            throw NumberedError(42, "stop");
                                        });
                                    }),
                                    42u);
                          change(i);
                          if (wholeTakenBack) throw NumberedError(43, "stop");
                      });
                  }),
                  wholeTakenBack ? 43u : 0u);
    }
    EXPECT_EQ(hivetest::lines(checkHive(hivetest::load(file))), std::vector<std::string>());
    const auto reopened = openHiveFile(file);
    for (const char* top : {"T", "T\\_", "", "none"}) {
        Writing walk, single, bare;
        t.store.walk(Root::LocalMachine, top, walk);
        t.store.RegStore::walk(Root::LocalMachine, top, single);
        EXPECT_EQ(walk.text, single.text) << top;
        EXPECT_EQ(walk.text.empty(), top == std::string("none"));
        bare.withDetails = false;
        t.store.walk(Root::LocalMachine, top, bare);
        for (RegStore* const store : {static_cast<RegStore*>(&other), hive.get(), reopened.get()}) {
            Writing same;
            same.withDetails = false;
            store->walk(Root::LocalMachine, top, same);
            EXPECT_TRUE(bare.text == same.text) << top;
        }
    }
}
