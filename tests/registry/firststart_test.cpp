// A new home: the registry and the drive it starts with.
#include <gtest/gtest.h>

#include "TempStore.h"
#include "registry/FirstStart.h"
#include "registry/LocalMachines.h"

using namespace brenvik;
using namespace brenvik::test;
namespace fs = std::filesystem;

namespace {

const std::string V5 = "Windows Registry Editor Version 5.00\n";

std::string messageOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const NumberedError& error) {
        return error.what();
    }
    return "<none>";
}

}  // namespace

TEST(FirstStart, MergesInTheOrderOfNames) {
    TempStore t;
    const fs::path data = t.folder / "erststart";
    writeFile(data / "20_b.reg", V5 + "[HKEY_USERS\\S-1-5-21-1-2-3-1003\\Software]\n\"v\"=\"b\"\n");
    writeFile(data / "10_a.reg", V5 + "[HKEY_USERS\\.DEFAULT]\n[HKEY_USERS\\S-1-5-21-1-2-3-1003\\Software]\n\"v\"=\"a\"\n\"only\"=dword:1\n");
    writeFile(data / "notes.txt", "no registry");
    EXPECT_TRUE(fillEmptyStore(t.store, data));
    EXPECT_EQ(textOf(t.store, Root::CurrentUser, "Software", "v"), "b");
    EXPECT_EQ(textOf(t.store, Root::CurrentUser, "Software", "only"), "1");
    t.store.setValue(Root::CurrentUser, "Software", ValueName::named("v"), sz("mine"));
    EXPECT_FALSE(fillEmptyStore(t.store, data));   // never over what is there
    EXPECT_EQ(textOf(t.store, Root::CurrentUser, "Software", "v"), "mine");
}

TEST(FirstStart, BadDataLeavesTheStoreEmpty) {
    TempStore t;
    const fs::path data = t.folder / "erststart";
    EXPECT_EQ(messageOf([&] { fillEmptyStore(t.store, data); }), "Die Daten für den ersten Start fehlen im Ordner \"" + data.string() + "\". Installieren Sie das Programm neu.");
    writeFile(data / "1.reg", V5 + "[HKEY_LOCAL_MACHINE\\Software]\n");
    writeFile(data / "2.reg", V5 + "[HKEY_LOCAL_MACHINE\\Software]\n\nx\n");
    EXPECT_EQ(messageOf([&] { fillEmptyStore(t.store, data); }),
              "Die Datei \"" + (data / "2.reg").string() + "\" ist fehlerhaft. Zeile 4: Die Zeile ist weder ein Schlüssel noch ein Wert.");
    EXPECT_TRUE(t.store.isEmpty());
}

TEST(FirstStart, CopiesTheDriveOnce) {
    TempDir folder;
    const fs::path data = folder / "erststart", home = folder / "home";
    EXPECT_FALSE(copyDriveC(data, home));
    writeFile(data / "drive_c/WINDOWS/win.ini", "[windows]\r\n");
    writeFile(home / "drive_c.neu/half", "left by an interrupted start");
    EXPECT_TRUE(copyDriveC(data, home));
    EXPECT_EQ(bytesOf(home / "drive_c/WINDOWS/win.ini"), "[windows]\r\n");
    EXPECT_FALSE(fs::exists(home / "drive_c.neu"));
    EXPECT_FALSE(fs::exists(home / "drive_c/half"));
    writeFile(home / "drive_c/WINDOWS/win.ini", "changed");
    EXPECT_FALSE(copyDriveC(data, home));
    EXPECT_EQ(bytesOf(home / "drive_c/WINDOWS/win.ini"), "changed");
}

// The data that the program is shipped with.
TEST(FirstStart, ShippedData) {
    const fs::path data = fs::path(BRENVIK_SOURCE_DIR) / "data";
    TempStore t;
    ASSERT_TRUE(fillEmptyStore(t.store, data / "registry"));
    EXPECT_EQ(t.store.currentUserSid(), "S-1-5-21-1844237615-1960408961-725345543-1003");
    EXPECT_EQ(storedComputerName(t.store), "BRENVIK-PC");
    EXPECT_EQ(storedUserName(t.store, t.store.currentUserSid()), "Brenvik");
    EXPECT_EQ(textOf(t.store, Root::LocalMachine, "Software\\Microsoft\\Windows NT\\CurrentVersion", "CurrentVersion"), "5.1");
    EXPECT_TRUE(copyDriveC(data, t.folder / "home"));
    EXPECT_TRUE(fs::exists(t.folder / "home/drive_c/WINDOWS/win.ini"));
}
