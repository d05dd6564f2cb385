// A Windows 98 and an ME that are not running, in a folder: what stands where, that changes arrive in the right file by the way that
// these files ask for, and what is said and asked.
#include <gtest/gtest.h>

#include <algorithm>

#include "CregSeed.h"
#include "hive/HiveTestSupport.h"
#include "registry/CregFile.h"
#include "registry/creg/CregChecker.h"
#include "registry/creg/CregReader.h"
#include "registry/machine/OfflineWindows.h"
#include "registry/store/MemoryStore.h"
#include "registry/store/RegLinks.h"
#include "registry/store/RegTree.h"

using namespace brenvik;
using namespace brenvik::hivetest;
namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

namespace {

struct Entry {
    const char *key, *name, *text;
};

Bytes fileOf(std::initializer_list<Entry> entries) {
    Hive hive = readCreg(emptyCreg(4)).hive;
    for (const Entry& e : entries) {
        HiveKey* key = &hive.root;
        std::string rest = e.key;
        for (std::size_t end = 0; end != std::string::npos; rest = end == std::string::npos ? "" : rest.substr(end + 1)) {
            end = rest.find('\\');
            key = &key->ensure(rest.substr(0, end));
        }
        if (e.name != nullptr) key->set(e.name, fromText(e.text, regtype::Sz));
    }
    return writeCreg(emptyCreg(4), hive, Western);
}

class Windows9xTest : public testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(windows / "Profiles/anna");
        fs::create_directories(windows / "Profiles/bert");
        fs::create_directories(windows / "Profiles/carl");
        std::ofstream(drive / "msdos.sys") << "[Options]\r\nWinDir=C:\\FALSCH\r\n[Paths]\r\nWinDir=C:\\win98\r\n";
        save(windows / "system.dat", fileOf({{"Software\\Microsoft\\Windows\\CurrentVersion", "VersionNumber", "4.10.2222"},
                                             {"Software\\Microsoft\\Windows\\CurrentVersion\\ProfileList\\Anna", "ProfileImagePath", "C:\\WIN98\\Profiles\\anna"},
                                             {"Software\\Microsoft\\Windows\\CurrentVersion\\ProfileList\\Dora", nullptr, nullptr},
                                             {"Software\\CLASSES\\.txt", "", "txtfile"}, {"System\\CurrentControlSet\\Control\\Nls\\Codepage", "ACP", "1252"},
                                             {"System\\CurrentControlSet\\Control\\IDConfigDB", "CurrentConfig", "0002"}, {"Config\\0002\\Display", "Aufl", "800,600"}}));
        save(windows / "USER.DAT", fileOf({{".DEFAULT\\Software\\X", "wer", "niemand"}}));
        save(windows / "Profiles/anna/USER.DAT", fileOf({{"Software\\X", "wer", "anna"}}));
        save(windows / "Profiles/bert/User.dat", fileOf({{"bert\\Software\\X", "wer", "bert"}, {"Rest", "a", "b"}}));
        save(windows / "Profiles/carl/USER.DAT", fileOf({{"eins\\Software", nullptr, nullptr}, {"zwei\\Software", nullptr, nullptr}}));
        reachOfflineWindows(machines, [this](const std::string& question) { questions.push_back(question); return answer; });
    }
    TargetSystem& target() { return machines.target(drive.string()); }
    RegStore& store() { return target().store(); }
    std::string text(Root root, const char* key, const char* name) {
        const auto value = store().value(root, key, ValueName::named(name));
        return value ? toText(*value) : "<none>";
    }

    const test::TempDir folder;
    const fs::path drive = fs::canonical(folder.path()), windows = drive / "WIN98";
    MemoryStore local;
    LocalMachines machines{local};
    Lines questions;
    bool answer = true;
};

}  // namespace

TEST_F(Windows9xTest, EverythingStandsInItsPlace) {
    const struct {
        Root root;
        const char *key, *name, *value;
        Root realRoot;
        const char* realKey;
    } places[] = {
        {Root::LocalMachine, "Software\\Classes\\.txt", "", "txtfile", Root::LocalMachine, "Software\\Classes\\.txt"},
        {Root::ClassesRoot, ".TXT", "", "txtfile", Root::LocalMachine, "Software\\Classes\\.TXT"},
        {Root::CurrentConfig, "Display", "aufl", "800,600", Root::LocalMachine, "Config\\0002\\Display"},
        {Root::Users, ".default\\Software\\X", "wer", "niemand", Root::Users, ".default\\Software\\X"},
        {Root::Users, "bert\\Software\\X", "wer", "bert", Root::Users, "bert\\Software\\X"},
        {Root::CurrentUser, "Software\\X", "WER", "anna", Root::Users, "Anna\\Software\\X"},
        {Root::LocalMachine, "System\\CurrentControlSet\\Control\\Nls\\Codepage", "ACP", "1252", Root::LocalMachine, "System\\CurrentControlSet\\Control\\Nls\\Codepage"},
    };
    for (const auto& p : places) {
        EXPECT_EQ(text(p.root, p.key, p.name), p.value) << p.key;
        EXPECT_EQ(store().realKey(p.root, p.key), (RealKey{p.realRoot, p.realKey})) << p.key;
    }
    EXPECT_EQ(store().subKeys(Root::Users, ""), (Lines{".DEFAULT", "Anna", "bert"}));
    EXPECT_EQ(store().subKeys(Root::LocalMachine, ""), (Lines{"Config", "Software", "System"}));
    EXPECT_EQ(target().systemName(), "Windows 98");
    EXPECT_EQ(target().files().windowsFolder(), "C:\\win98");
    EXPECT_TRUE(target().files().isFile("c:\\Win98\\User.dat"));
    Lines users;
    for (const TargetProfile& p : target().profiles()) users.push_back(p.userName + (p.missing.empty() ? "" : " fehlt"));
    EXPECT_EQ(users, (Lines{"Anna", "Dora fehlt", "bert", "carl fehlt"}));
    EXPECT_THROW(store().keyExists(Root::Users, "carl\\eins"), RegError);
    EXPECT_EQ(target().notes().size(), 3u);
    EXPECT_TRUE(target().chooseProfile("BERT"));
    EXPECT_FALSE(target().chooseProfile("dora"));
    EXPECT_EQ(text(Root::CurrentUser, "Software\\X", "wer"), "bert");
    MemoryStore copy;   // a walk tells what stands below, over the files' borders
    copyTree(store(), Root::Users, "bert", copy, Root::Users, "bert");
    EXPECT_TRUE(copy.keyExists(Root::Users, "bert\\Software\\X") && !copy.keyExists(Root::Users, "bert\\Rest"));
}

TEST_F(Windows9xTest, ChangesOfTwoFilesArriveAndGoBackExactly) {
    target().chooseProfile("bert");
    const Bytes system = load(windows / "system.dat"), user = load(windows / "Profiles/bert/User.dat");
    const auto set = [&](const char* version, const char* who) {
        store().transaction([&] {
            store().setValue(Root::LocalMachine, "Software\\Microsoft\\Windows\\CurrentVersion", ValueName::named("VersionNumber"), fromText(version, regtype::Sz));
            store().setValue(Root::CurrentUser, "Software\\X", ValueName::named("wer"), fromText(who, regtype::Sz));
        });
    };
    answer = false;
    EXPECT_THROW(set("4.90.3000", "nein"), RegError);
    EXPECT_TRUE(load(windows / "system.dat") == system && !fs::exists(windows / "system.dat.bvk"));
    answer = true;
    fs::permissions(windows / "system.dat", fs::perms::owner_write, fs::perm_options::remove);   // as such a Windows marks it
    set("4.90.3000", "otto");
    ASSERT_EQ(questions.size(), 2u);
    EXPECT_NE(questions[1].find("noch nicht erprobt. Die Datei"), std::string::npos);
    EXPECT_EQ(load(windows / "system.dat.bvk"), system);
    EXPECT_EQ(target().systemName(), "Windows ME");
    for (const fs::path& file : {windows / "system.dat", windows / "Profiles/bert/User.dat"}) {
        EXPECT_EQ(lines(checkCreg(load(file))), Lines()) << file;
        EXPECT_FALSE(fs::exists(file.string() + ".bvk-journal"));
    }
    EXPECT_EQ(fs::status(windows / "system.dat").permissions() & fs::perms::owner_write, fs::perms::none);
    set("4.10.2222", "bert");
    EXPECT_EQ(load(windows / "system.dat"), system);
    EXPECT_EQ(load(windows / "Profiles/bert/User.dat"), user);
    EXPECT_EQ(questions.size(), 2u);

    save(windows / "USER.DAT", fileOf({{".DEFAULT", "fremd", "x"}}));   // by another program
    EXPECT_EQ(text(Root::Users, ".DEFAULT", "fremd"), "x");
    save(windows / "USER.DAT", fileOf({{".DEFAULT", "fremd", "yy"}}));
    EXPECT_THROW(store().createKey(Root::Users, ".DEFAULT\\Neu"), RegError);
    EXPECT_EQ(text(Root::Users, ".DEFAULT", "fremd"), "yy");
    EXPECT_THROW(store().setValue(Root::CurrentUser, "Software\\X", ValueName::named("wer"), fromText("\xD0\x96", regtype::Sz)), RegError);
    EXPECT_EQ(text(Root::CurrentUser, "Software\\X", "wer"), "bert");
    EXPECT_FALSE(store().deleteKey(Root::Users, "bert"));
}

TEST_F(Windows9xTest, WithoutProfilesAndMsdosSysAndWithClassesOfTheirOwn) {
    fs::remove(drive / "msdos.sys");
    fs::remove_all(windows / "Profiles");
    save(windows / "CLASSES.DAT", fileOf({{".neu", "", "neufile"}}));
    EXPECT_EQ(text(Root::CurrentUser, "Software\\X", "wer"), "niemand");
    EXPECT_EQ(text(Root::ClassesRoot, ".neu", ""), "neufile");
    EXPECT_EQ(text(Root::ClassesRoot, ".txt", ""), "<none>");
    EXPECT_EQ(store().subKeys(Root::LocalMachine, "Software"), (Lines{"CLASSES", "Microsoft"}));
    store().setValue(Root::ClassesRoot, ".neu\\shell", ValueName::unnamed(), fromText("auf", regtype::Sz));
    EXPECT_NE(readCreg(load(windows / "CLASSES.DAT")).hive.findPath(".neu\\shell"), nullptr);
    EXPECT_FALSE(store().deleteKey(Root::LocalMachine, "Software"));

    Bytes broken = load(windows / "USER.DAT");
    broken[12] ^= 1;   // the checksum of its header counts
    save(windows / "USER.DAT", broken);
    const auto file = openCregFile(windows / "USER.DAT", {.ask = [](const std::string&) { return true; }});
    EXPECT_EQ(toText(*file->value(Root::LocalMachine, ".DEFAULT\\Software\\X", ValueName::named("wer"))), "niemand");
    EXPECT_FALSE(file->writable());
    try {
        file->createKey(Root::LocalMachine, ".DEFAULT\\Neu");
        FAIL();
    } catch (const RegError& error) {
        EXPECT_NE(std::string(error.what()).find("Prüfsumme des Dateikopfs"), std::string::npos) << error.what();
    }
    EXPECT_EQ(load(windows / "USER.DAT"), broken);
}
