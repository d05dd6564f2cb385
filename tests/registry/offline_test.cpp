// A Windows that is not running, in a folder: which hives it has, where they stand, and that changes arrive in their files.
#include <gtest/gtest.h>

#include "TempStore.h"
#include "hive/HiveTestSupport.h"
#include "registry/BVKRegistry.h"
#include "registry/HiveFilesImpl.h"
#include "registry/OfflineWindows.h"
#include "registry/RegTree.h"

using namespace brenvik;
using namespace brenvik::test;
namespace fs = std::filesystem;
using hivetest::load;
using Lines = std::vector<std::string>;

namespace {

constexpr const char* Anna = "S-1-5-21-1-2-3-1001";
constexpr const char* Bert = "S-1-5-21-1-2-3-1002";

RawValue expandSz(const std::string& text) { return fromText(text, regtype::ExpandSz); }

class OfflineTest : public testing::Test {
protected:
    void SetUp() override { build("WINDOWS/system32/CONFIG", "Dokumente und Einstellungen", "Lokale Einstellungen/Anwendungsdaten/Microsoft/Windows/USRCLASS.DAT"); }

    static void write(const fs::path& file, const Hive& hive) {
        fs::create_directories(file.parent_path());
        hivetest::save(file, writeHive(hive));
    }
    static void profile(Hive& software, const std::string& sid, const std::string& path) {
        software.findPath("Microsoft")->ensure("Windows NT").ensure("CurrentVersion").ensure("ProfileList").ensure(sid).set("ProfileImagePath", expandSz(path));
    }
    static Hive withValue(const std::string& name, const std::string& text) {
        Hive hive;
        hive.root.name = "R";
        hive.root.ensure("Software").set(name, sz(text));
        return hive;
    }

    void build(const std::string& config, const std::string& users, const std::string& classes) {
        Hive software;
        software.minorVersion = 5;
        software.root.ensure("Microsoft").ensure("Windows NT").ensure("CurrentVersion").set("SystemRoot", sz("D:\\WINDOWS"));
        HiveKey& machineClasses = software.root.ensure("Classes").ensure(".txt");
        machineClasses.set("", sz("maschine"));
        machineClasses.set("nur Maschine", sz("m"));
        profile(software, "S-1-5-18", "%systemroot%\\system32\\config\\systemprofile");
        profile(software, Bert, "D:\\" + users + "\\BERT");
        profile(software, Anna, "%SystemDrive%\\" + users + "\\Anna");
        profile(software, "S-1-5-21-1-2-3-1003", "E:\\fort");
        profile(software, "S-1-5-21-1-2-3-1004", "%SystemDrive%\\..\\..\\geheim");
        profile(software, std::string(Anna) + ".bak", "D:\\" + users + "\\Anna");
        write(disk / config / "software", software);

        Hive system;
        system.root.ensure("Select").set("Current", dword(2));
        for (const char* set : {"ControlSet001", "ControlSet002"}) {
            HiveKey& control = system.root.ensure(set);
            control.ensure("Control").ensure("ComputerName").ensure("ComputerName").set("ComputerName", sz(std::string("PC-") + set));
            control.ensure("Control").ensure("IDConfigDB").set("CurrentConfig", dword(12));
            control.ensure("Hardware Profiles").ensure("0012").ensure("System").set("w", sz(set));
        }
        write(disk / config / "SYSTEM", system);
        write(disk / config / "default", withValue("wer", "default"));
        Hive sam;
        sam.root.ensure("SAM");
        write(disk / config / "SAM", sam);

        write(disk / users / "Anna/ntuser.dat", withValue("wer", "Anna"));
        Hive userClasses;
        userClasses.root.ensure(".txt").set("", sz("Anna"));
        userClasses.root.ensure(".nur");
        write(disk / users / "Anna" / classes, userClasses);
        Hive bert = withValue("wer", "Bert");
        bert.root.ensure("Software").ensure("Classes").ensure(".bert").set("", sz("b"));
        write(disk / users / "Bert/NTUSER.DAT", bert);
    }
    // All files of the folder, with their bytes.
    std::map<std::string, Bytes> files() const {
        std::map<std::string, Bytes> all;
        for (const auto& entry : fs::recursive_directory_iterator(disk)) {
            if (entry.is_regular_file()) all[fs::relative(entry.path(), disk).string()] = load(entry.path());
        }
        return all;
    }

    TempDir folder;
    const fs::path disk = folder / "c";
};

}  // namespace

TEST_F(OfflineTest, EveryHiveStandsAtItsPlace) {
    const auto before = files();
    OfflineWindows windows(disk);
    EXPECT_EQ(joined(windows.subKeys(Root::LocalMachine, "")), "SAM|Software|System");
    EXPECT_EQ(joined(windows.subKeys(Root::Users, "")),
              std::string(".DEFAULT|S-1-5-18|") + Anna + "|" + Anna + "_Classes|" + Bert);
    EXPECT_EQ(joined(windows.subKeys(Root::LocalMachine, "System")), "ControlSet001|ControlSet002|CurrentControlSet|Select");
    EXPECT_EQ(storedComputerName(windows), "PC-ControlSet002");
    const struct {
        Root root;
        std::string key, name, expected;
    } cases[] = {
        {Root::CurrentUser, "Software", "wer", "Anna"},
        {Root::Users, std::string(Bert) + "\\SOFTWARE", "wer", "Bert"},
        {Root::Users, ".Default\\Software", "wer", "default"},
        {Root::Users, "S-1-5-18\\Software", "wer", "default"},
        {Root::CurrentConfig, "System", "w", "ControlSet002"},
        {Root::LocalMachine, "SYSTEM\\currentcontrolset\\Hardware Profiles\\0012\\System", "w", "ControlSet002"},
        {Root::ClassesRoot, ".txt", "", "Anna"},
        {Root::ClassesRoot, ".txt", "nur Maschine", "m"},
        {Root::CurrentUser, "Software\\Classes\\.txt", "", "Anna"},
        {Root::Users, std::string(Anna) + "_Classes\\.txt", "", "Anna"},
        {Root::DynData, "Software", "wer", "<none>"},
    };
    for (const auto& c : cases) EXPECT_EQ(textOf(windows, c.root, c.key, c.name), c.expected) << c.key;
    EXPECT_EQ(joined(windows.subKeys(Root::ClassesRoot, "")), ".nur|.txt");

    ASSERT_EQ(windows.profiles().size(), 2u);
    EXPECT_EQ(windows.profiles()[1].userName, "BERT");
    EXPECT_TRUE(windows.chooseUser("bert"));
    EXPECT_FALSE(windows.chooseUser("S-1-5-21-1-2-3-1003"));
    EXPECT_EQ(textOf(windows, Root::CurrentUser, "Software", "wer"), "Bert");
    EXPECT_EQ(textOf(windows, Root::ClassesRoot, ".bert", ""), "b");
    EXPECT_EQ(windows.notes().size(), 3u);   // SECURITY, the profile of another drive, the one outside of the folder
    EXPECT_EQ(files(), before);
    EXPECT_EQ(joined(OfflineWindows(disk / "WINDOWS").subKeys(Root::Users, "")), joined(windows.subKeys(Root::Users, "")));
}

TEST_F(OfflineTest, ChangesArriveInTheirFilesOnly) {
    auto expected = files();
    const std::string annas = "Dokumente und Einstellungen/Anna/ntuser.dat", software = "WINDOWS/system32/CONFIG/software";
    OfflineWindows windows(disk);
    windows.transaction([&] {
        windows.setValue(Root::CurrentUser, "Control Panel\\Desktop", ValueName::named("MenuShowDelay"), sz("200"));
        windows.setValue(Root::LocalMachine, "Software\\Neu", ValueName::unnamed(), sz("x"));
        windows.setValue(Root::ClassesRoot, ".txt", ValueName::named("a"), sz("bei Anna"));
        windows.setValue(Root::ClassesRoot, ".neu", ValueName::unnamed(), sz("bei allen"));
    });
    const std::string classes = "Dokumente und Einstellungen/Anna/Lokale Einstellungen/Anwendungsdaten/Microsoft/Windows/USRCLASS.DAT";
    auto now = files();
    for (const std::string& changed : {annas, software, classes}) {
        EXPECT_EQ(hivetest::lines(checkHive(now.at(changed))), Lines()) << changed;
        EXPECT_EQ(now.at(changed + ".bvk"), expected.at(changed)) << changed;
        for (auto* map : {&now, &expected}) map->erase(changed), map->erase(changed + ".bvk");
    }
    EXPECT_EQ(now, expected);

    OfflineWindows again(disk);
    EXPECT_EQ(textOf(again, Root::Users, std::string(Anna) + "\\Control Panel\\Desktop", "menushowdelay"), "200");
    EXPECT_EQ(textOf(again, Root::LocalMachine, "Software\\Neu", ""), "x");
    EXPECT_EQ(textOf(again, Root::Users, std::string(Anna) + "_Classes\\.txt", "a"), "bei Anna");
    EXPECT_EQ(textOf(again, Root::LocalMachine, "Software\\Classes\\.neu", ""), "bei allen");
    EXPECT_EQ(errorOf([&] { again.setValue(Root::LocalMachine, "Hardware\\X", ValueName::unnamed(), sz("")); }), 0x80040204u);
    EXPECT_EQ(errorOf([&] { again.createKey(Root::Users, "S-1-5-21-9"); }), 0x80040204u);
    EXPECT_FALSE(again.deleteKey(Root::LocalMachine, "System\\CurrentControlSet"));
    EXPECT_FALSE(again.deleteKey(Root::LocalMachine, "SAM"));
}

TEST_F(OfflineTest, WhenOneFileCannotBeWrittenNoneIs) {
    const auto before = files();
    OfflineWindows windows(disk);
    const fs::path software = disk / "WINDOWS/system32/CONFIG/software";
    fs::permissions(software, fs::perms::owner_read);
    EXPECT_TRUE(windows.writable());
    EXPECT_FALSE(windows.canOpen(Root::LocalMachine, "Software", KEY_ALL_ACCESS_MASK));
    EXPECT_EQ(errorOf([&] {
                  windows.transaction([&] {
                      windows.setValue(Root::CurrentUser, "Neu", ValueName::unnamed(), sz("x"));
                      windows.setValue(Root::LocalMachine, "Software\\Neu", ValueName::unnamed(), sz("x"));
                  });
              }),
              0x80040204u);
    auto now = files();
    now.erase("Dokumente und Einstellungen/Anna/ntuser.dat.bvk");
    EXPECT_EQ(now, before);
    EXPECT_FALSE(windows.keyExists(Root::CurrentUser, "Neu"));
}

TEST_F(OfflineTest, ADamagedHiveLeavesTheOthersReadable) {
    hivetest::save(disk / "WINDOWS/system32/CONFIG/SYSTEM", Bytes(5000, 7));
    OfflineWindows windows(disk);
    EXPECT_EQ(textOf(windows, Root::CurrentUser, "Software", "wer"), "Anna");
    EXPECT_EQ(errorOf([&] { windows.subKeys(Root::LocalMachine, "System"); }), 0x80040208u);
    hivetest::save(disk / "WINDOWS/system32/CONFIG/software", Bytes(5000, 7));
    OfflineWindows without(disk);
    EXPECT_TRUE(without.profiles().empty());
    EXPECT_EQ(without.notes().size(), 2u);
    EXPECT_EQ(textOf(without, Root::Users, ".DEFAULT\\Software", "wer"), "default");
    EXPECT_FALSE(without.keyExists(Root::CurrentUser, "Software"));
}

TEST_F(OfflineTest, TheServiceReachesItAsAMachine) {
    TempStore local;
    LocalMachines machines(local.store);
    reachOfflineWindows(machines);
    TraceLog trace;
    BVKRegistry registry(trace, machines);
    RegfHiveFiles hiveFiles;
    registry.setHiveFiles(&hiveFiles);
    const std::string machine = disk.string();
    EXPECT_EQ(registry.ConnectRemote(machine, 0x80000002), 0);
    EXPECT_EQ(registry.ConnectRemote(folder.path().string(), 0x80000002), 53);
    EXPECT_EQ(registry.ConnectRemote("SERVER", 0x80000002), 53);
    registry.SetPath(machine, "HKEY_USERS\\");
    EXPECT_EQ(registry.EnumSubKeys().size(), 5u);
    registry.SetPath(machine + "/", "HKCU\\Software\\wer");
    EXPECT_EQ(registry.ReadValue(false), "Anna");
    EXPECT_TRUE(registry.WriteValue("Anna 2", 1));
    registry.SetPath(machine, "HKU\\" + std::string(Anna) + "\\Software\\wer");
    EXPECT_EQ(registry.ReadValue(false), "Anna 2");

    registry.SetPath(machine, "HKLM\\System");
    ASSERT_TRUE(registry.SaveKey((folder / "system.bin").string()));
    const Hive saved = readHive(load(folder / "system.bin")).hive;
    EXPECT_EQ(hivetest::lines(checkHive(load(folder / "system.bin"))), Lines());
    EXPECT_EQ(saved.findPath("CurrentControlSet"), nullptr);
    registry.SetPath("", "HKLM\\System");
    ASSERT_TRUE(registry.RestoreKey(folder.path().string(), "system.bin"));
    EXPECT_EQ(storedComputerName(local.store), "PC-ControlSet002");
}

