// A new home: the registry and the drive it starts with.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

#include "TempStore.h"
#include "registry/machine/FirstStart.h"

using namespace brenvik;
using namespace brenvik::test;
namespace fs = std::filesystem;

namespace {

const std::string V5 = "Windows Registry Editor Version 5.00\n";

// Every file with its content, every folder, every link.
std::string treeOf(const fs::path& folder) {
    std::vector<std::string> lines;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string name = entry.path().lexically_relative(folder).string();
        lines.push_back(entry.is_symlink() ? name + "@" : entry.is_directory() ? name + "/" : name + "=" + bytesOf(entry.path()));
    }
    std::sort(lines.begin(), lines.end());
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
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
    for (const char* left : {"drive_c.neu/half", "drive_c.123.neu/half", "drive_c.456.neu/under way"}) writeFile(home / left, "");
    for (const char* old : {"drive_c.neu", "drive_c.123.neu"}) fs::last_write_time(home / old, fs::file_time_type::clock::now() - std::chrono::hours(48));
    EXPECT_TRUE(copyDriveC(data, home));
    EXPECT_EQ(bytesOf(home / "drive_c/WINDOWS/win.ini"), "[windows]\r\n");
    EXPECT_EQ(joined(folder.names("home")), "drive_c|drive_c.456.neu|drive_c.ganz");
    EXPECT_EQ(fs::status(home / "drive_c/WINDOWS").permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(home / "drive_c/WINDOWS/win.ini").permissions(), fs::perms::owner_read | fs::perms::owner_write);
    writeFile(home / "drive_c/WINDOWS/win.ini", "changed");
    EXPECT_FALSE(copyDriveC(data, home));
    EXPECT_EQ(bytesOf(home / "drive_c/WINDOWS/win.ini"), "changed");
    fs::remove(home / "drive_c/WINDOWS/win.ini");
    EXPECT_TRUE(missingOnDriveC(data, home).empty()) << "what the user deletes later is his business";
}

TEST(FirstStart, AnIncompleteDriveIsCompletedAndNothingTouched) {
    TempDir folder;
    const fs::path data = folder / "erststart", home = folder / "home";
    for (const char* name : {"boot.ini", "WINDOWS/win.ini", "WINDOWS/system.ini", "Dokumente/a.txt"}) writeFile(data / "drive_c" / name, "neu");
    writeFile(home / "drive_c/windows/SYSTEM.INI", "eigen");
    writeFile(folder / "fremd/x", "");
    fs::create_directory_symlink(folder / "fremd", home / "drive_c/Dokumente");
    EXPECT_EQ(missingOnDriveC(data, home), (std::vector<std::string>{"C:\\WINDOWS\\win.ini", "C:\\boot.ini"}));
    completeDriveC(data, home);
    EXPECT_EQ(treeOf(home / "drive_c"), "Dokumente@\nboot.ini=neu\nwindows/\nwindows/SYSTEM.INI=eigen\nwindows/win.ini=neu\n");
    EXPECT_EQ(joined(folder.names("fremd")), "x");
    EXPECT_TRUE(missingOnDriveC(data, home).empty());
}

TEST(FirstStart, AHomeIsItsOwnersAlone) {
    TempDir folder;
    EXPECT_EQ(privateHome(folder / "neu/heim"), "");
    EXPECT_EQ(fs::status(folder / "neu/heim").permissions(), fs::perms::owner_all);
    for (const auto& [name, closed] : {std::pair{"registry.db", true}, {"drive_c", true}, {"Bilder", false}}) {
        const fs::path home = folder / (std::string("mit ") + name);
        writeFile(home / name, "");
        fs::permissions(home, fs::perms::owner_all | fs::perms::group_read | fs::perms::others_read);
        EXPECT_EQ(privateHome(home), "");
        EXPECT_EQ(fs::status(home).permissions() == fs::perms::owner_all, closed) << name;
    }
    writeFile(folder / "datei", "");
    EXPECT_EQ(privateHome(folder / "datei/heim"), "Der Ordner \"" + (folder / "datei/heim").string() + "\" kann nicht angelegt werden: Der Pfad führt durch eine Datei.");
}
