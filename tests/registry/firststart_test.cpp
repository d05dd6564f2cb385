// A new home: the registry and the drive it starts with.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <set>

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

std::set<std::string> namesIn(const fs::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) names.insert(entry.path().filename().string());
    return names;
}

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
    EXPECT_EQ(namesIn(home), (std::set<std::string>{"drive_c", "drive_c.456.neu", "drive_c.ganz"}));
    EXPECT_EQ(fs::status(home / "drive_c/WINDOWS").permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(home / "drive_c/WINDOWS/win.ini").permissions(), fs::perms::owner_read | fs::perms::owner_write);
    writeFile(home / "drive_c/WINDOWS/win.ini", "changed");
    EXPECT_FALSE(copyDriveC(data, home));
    EXPECT_EQ(bytesOf(home / "drive_c/WINDOWS/win.ini"), "changed");
    fs::remove(home / "drive_c/WINDOWS/win.ini");
    EXPECT_TRUE(missingOnDriveC(data, home).empty()) << "what the user deletes later is his business";
}

// Several processes at the same moment: each does its work, and one drive is there, whole.
TEST(FirstStart, SeveralAtATime) {
    const fs::path data = fs::path(BRENVIK_SOURCE_DIR) / "data";
    TempDir reference;
    ASSERT_TRUE(copyDriveC(data, reference.path()));
    for (int round = 0; round < 20; ++round) {
        TempDir home;
        int gate[2];
        ASSERT_EQ(::pipe(gate), 0);
        std::vector<pid_t> children;
        for (int i = 0; i < 4; ++i) {
            children.push_back(::fork());
            if (children.back() != 0) continue;
            ::close(gate[1]);
            char byte = 0;
            (void)!::read(gate[0], &byte, 1);   // ends when the parent closes its side
            try {
                copyDriveC(data, home.path());
                SqliteStore store(home / "registry.db");
                fillEmptyStore(store, data / "registry");
                _exit(store.isEmpty() ? 3 : 0);
            } catch (const std::exception&) {
                _exit(2);
            }
        }
        ::close(gate[0]);
        ::close(gate[1]);
        for (const pid_t child : children) {
            int status = 0;
            ::waitpid(child, &status, 0);
            EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "round " << round << ": " << status;
        }
        EXPECT_EQ(treeOf(home / "drive_c"), treeOf(reference / "drive_c")) << "round " << round;
        for (const std::string& name : namesIn(home.path())) EXPECT_FALSE(name.ends_with("neu")) << name;
    }
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
    EXPECT_EQ(namesIn(folder / "fremd"), std::set<std::string>{"x"});
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
