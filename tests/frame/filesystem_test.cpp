#include <algorithm>
#include <cerrno>

#include <gtest/gtest.h>

#include "frame/Reports.h"
#include "frame/files/FileSystem.h"
#include "support/ScriptedPort.h"
#include "support/TempDir.h"
#include "support/TestPlatform.h"

using namespace brenvik;
namespace fs = std::filesystem;
using Names = std::vector<std::string>;

namespace {

struct FileSystem : ::testing::Test {
    test::TempDir dir;
    test::ScriptedPort port;
    test::TestPlatform platform;
    FrameContext ctx{port, platform};
    void SetUp() override {
        ctx.homePath = dir.path();
        dir.put("drive_c/WINDOWS/win.ini", "[windows]\r\n");
        dir.put("drive_c/WINDOWS/system32/Desk.CPL", "x");
        dir.put("drive_c/WINDOWS/system32/appwiz.cpl", "x");
        dir.put("drive_c/WINDOWS/system32/main.exe", "x");
        fs::create_directory(dir / "drive_c/WINDOWS/system32/ordner.cpl");
        dir.put("drive_c/Dokumente/GRÖßE.TXT", "gross");
        dir.put("geheim.txt", "aussen");
    }
};

template <class Call> std::int32_t errorOf(Call call) {
    try {
        call();
    } catch (const NumberedError& error) {
        EXPECT_STRNE(error.what(), "");
        return error.number;
    }
    return 0;
}

}  // namespace

TEST_F(FileSystem, HostPathFindsSpellingsAndStaysInside) {
    const fs::path c = dir / "drive_c";
    const std::vector<std::pair<std::string, fs::path>> cases = {
        {"C:\\Windows\\WIN.INI", c / "WINDOWS/win.ini"},
        {"c:/windows/system32/desk.cpl", c / "WINDOWS/system32/Desk.CPL"},
        {"win.ini", c / "WINDOWS/win.ini"},
        {"neu.ini", c / "WINDOWS/neu.ini"},
        {"C:\\dokumente\\größe.txt", c / "Dokumente/GRÖßE.TXT"},
        {"C:\\Windows\\Neu Hier\\Datei.ini", c / "WINDOWS/Neu Hier/Datei.ini"},
        {"\\windows\\.\\x\\..\\win.ini", c / "WINDOWS/win.ini"},
        {"C:windows\\win.ini. .", c / "WINDOWS/win.ini"},
        {"C:\\..\\..\\geheim.txt", c / "geheim.txt"},
        {"../geheim.txt", c / "geheim.txt"},
        {"C:\\windows\\..\\..\\..\\etc\\passwd", c / "etc/passwd"},
        {"/etc/passwd", c / "etc/passwd"},
        {"C:\\", c}, {"C:", c},
        {"D:\\Daten\\a.txt", dir / "drive_d/Daten/a.txt"}};
    for (const auto& [windows, host] : cases) EXPECT_EQ(hostPath(ctx, windows), host) << windows;
    const std::string outside = (dir / "drive_c").string() + "/";
    for (const char* evil : {"..", "...", "....\\x", "C:..\\..\\x", "C:\\a/..\\../../x", "C:\\. .\\x", ".. \\.. \\x"}) {
        const std::string host = hostPath(ctx, evil).string() + "/";
        EXPECT_EQ(host.rfind(outside, 0), 0u) << evil << " -> " << host;
    }
    EXPECT_EQ(errorOf([&] { hostPath(ctx, "\\\\server\\c$\\x"); }), errnum::PathNotFound);
    EXPECT_EQ(errorOf([&] { hostPath(ctx, std::string_view("a\0b", 3)); }), errnum::InvalidCall);
    dir.put("drive_c/WINDOWS/WIN.INI", "zweite");  // both spellings: the exact one
    EXPECT_EQ(hostPath(ctx, "C:\\windows\\WIN.INI"), c / "WINDOWS/WIN.INI");
    EXPECT_EQ(hostPath(ctx, "C:\\windows\\Win.Ini"), c / "WINDOWS/WIN.INI");
}

// Links inside of a drive lead on; what would leave it, or lead nowhere, is refused, at whatever place of the path it stands.
TEST_F(FileSystem, NoLinkLeadsOutOfADrive) {
    const fs::path c = dir / "drive_c";
    dir.put("draussen/a.ini", "fremd");
    dir.put("drive_c/Ziel/innen.ini", "innen");
    fs::create_directory_symlink(c / "Ziel", c / "Weg");
    fs::create_symlink("Ziel/innen.ini", c / "kurz.ini");
    fs::create_directory_symlink(dir / "draussen", c / "Hinaus");
    fs::create_symlink("../draussen/a.ini", c / "fremd.ini");
    fs::create_symlink("nirgends", c / "leer.ini");
    const TargetFiles files = localFiles(ctx);
    EXPECT_EQ(files.find("C:\\weg\\INNEN.ini"), c / "Ziel/innen.ini");
    EXPECT_EQ(files.find("C:\\KURZ.ini"), c / "Ziel/innen.ini");
    EXPECT_EQ(files.windowsPath(files.find("C:\\weg\\innen.ini")), "C:\\Ziel\\innen.ini");
    for (const char* evil : {"C:\\hinaus\\a.ini", "C:\\Hinaus", "C:\\fremd.INI", "C:\\leer.ini", "C:\\hinaus\\neu.ini"}) {
        EXPECT_EQ(errorOf([&] { files.find(evil); }), errnum::PathNotFound) << evil;
        EXPECT_FALSE(files.exists(evil) || files.isFile(evil)) << evil;
    }
    const TargetFiles none = TargetFiles::none("weg");
    EXPECT_EQ(errorOf([&] { none.find("C:\\boot.ini"); }), errnum::PathNotFound);
    EXPECT_TRUE(none.matches("C:\\boot.ini").empty());
}

TEST_F(FileSystem, PathsThere) {
    EXPECT_EQ(userPath(ctx, "/etc/passwd"), fs::path("/etc/passwd"));
    EXPECT_EQ(userPath(ctx, "C:\\WINDOWS"), dir / "drive_c/WINDOWS");
    EXPECT_EQ(windowsPath(ctx, dir / "drive_c/WINDOWS/win.ini"), "C:\\WINDOWS\\win.ini");
    EXPECT_EQ(windowsPath(ctx, dir / "drive_c"), "C:\\");
    EXPECT_EQ(windowsPath(ctx, "/etc/passwd"), "/etc/passwd");
    EXPECT_EQ(joinPath("/a", "/b\\c"), fs::path("/a/b\\c"));
    EXPECT_EQ(utf8FromPath(pathFromUtf8("Größe")), "Größe");
}

TEST_F(FileSystem, Exists) {
    for (const char* there : {"c", "C", "c:", "c:\\", "win.ini", "C:\\WINDOWS", "c:\\windows\\SYSTEM32\\desk.cpl", "C:/Dokumente/Größe.txt"}) EXPECT_TRUE(ExistFileDirDrive(ctx, there)) << there;
    for (const char* missing : {"", "d", "d:", "nichts.ini", "C:\\geheim.txt", "C:\\..\\geheim.txt", "\\\\server\\x", "1", "ä"}) EXPECT_FALSE(ExistFileDirDrive(ctx, missing)) << missing;
    EXPECT_EQ(GetShortPath(ctx, "C:\\WINDOWS\\win.ini"), "C:\\WINDOWS\\win.ini");
    EXPECT_EQ(GetShortPath(ctx, "C:\\fehlt"), "");
}

TEST_F(FileSystem, DirList) {
    Names names{"alt"};
    EXPECT_EQ(DirList(ctx, localFiles(ctx), "C:\\WINDOWS\\system32\\*.cpl", names), 2);
    EXPECT_EQ(names, (Names{"", "appwiz.cpl", "desk.cpl"}));
    for (const char* none : {"C:\\WINDOWS\\system32\\*.xyz", "C:\\fehlt\\*.*", "C:\\WINDOWS\\system32\\ordner.*"}) EXPECT_EQ(DirList(ctx, localFiles(ctx), none, names), 0) << none;
    EXPECT_EQ(names.size(), 3u);
    EXPECT_EQ(DirList(ctx, localFiles(ctx), "C:\\WINDOWS\\system32\\*.*", names), 3);
    EXPECT_EQ(DirList(ctx, localFiles(ctx), "*.ini", names), 1);
    EXPECT_EQ(names, (Names{"", "win.ini"}));
}

TEST(Patterns, Fits) {
    for (const auto& [name, pattern] : std::vector<std::pair<std::string, std::string>>{{"a.cpl", "*.CPL"}, {"GRÖSSE", "gr?sse"}, {"a", "*.*"}, {"", "*"}, {"aXbXc", "a*X?"}, {"x", "?"}, {"aab", "*ab"}})
        EXPECT_TRUE(fitsPattern(name, pattern)) << name << ' ' << pattern;
    for (const auto& [name, pattern] : std::vector<std::pair<std::string, std::string>>{{"a.cp", "*.cpl"}, {"", "?"}, {"ab", "?"}, {"ab", "b*"}, {"ab", ""}, {"abc", "*b"}})
        EXPECT_FALSE(fitsPattern(name, pattern)) << name << ' ' << pattern;
    EXPECT_FALSE(fitsPattern(std::string(5000, 'a'), "*a*a*a*a*a*a*a*b"));
}

TEST_F(FileSystem, AtomicWriteReplacesOrLeavesAlone) {
    const fs::path file = dir / "drive_c/WINDOWS/win.ini";
    for (const auto& [before, after] : {std::pair{0640, 0640}, {0600, 0600}, {06775, 0775}, {0666, 0664}}) {   // neither setuid nor writing by everybody
        fs::permissions(file, static_cast<fs::perms>(before));
        writeFileAtomic(file, "neu");
        EXPECT_EQ(fs::status(file).permissions(), static_cast<fs::perms>(after));
    }
    EXPECT_EQ(readFile(file), "neu");
    writeFileAtomic(dir / "ganz neu", std::string_view("\0x", 2));
    EXPECT_EQ(readFile(dir / "ganz neu").size(), 2u);

    setReadOnly(file, true);
    EXPECT_TRUE(isReadOnly(file));
    EXPECT_EQ(errorOf([&] { writeFileAtomic(file, "verloren"); }), errnum::PathFileAccess);
    EXPECT_EQ(readFile(file), "neu");
    setReadOnly(file, false);
    EXPECT_FALSE(isReadOnly(file));

    fs::create_symlink(file, dir / "verweis");
    writeFileAtomic(dir / "verweis", "durch den Verweis");
    EXPECT_TRUE(fs::is_symlink(dir / "verweis"));
    EXPECT_EQ(readFile(file), "durch den Verweis");
    fs::create_symlink("noch nicht da", dir / "ins Leere");   // the link stays, what it names comes to be
    writeFileAtomic(dir / "ins Leere", "x");
    EXPECT_TRUE(fs::is_symlink(dir / "ins Leere"));
    EXPECT_EQ(readFile(dir / "noch nicht da"), "x");
    fs::create_symlink("kreis", dir / "kreis");
    EXPECT_NE(errorOf([&] { writeFileAtomic(dir / "kreis", "x"); }), 0);

    EXPECT_NE(errorOf([&] { writeFileAtomic(dir / "fehlt/x", "x"); }), 0);
    EXPECT_NE(errorOf([&] { writeFileAtomic(dir / "drive_c", "x"); }), 0);
    EXPECT_EQ(dir.names(), (Names{"drive_c", "ganz neu", "geheim.txt", "ins Leere", "kreis", "noch nicht da", "verweis"}));  // no remains
}

// However the host says that there is no room left.
TEST(FileSystemErrors, AFullDiskIsReported) {
    for (const int code : {ENOSPC, EFBIG, EDQUOT})
        EXPECT_EQ(errorNumberOf(std::system_error(std::error_code(code, std::generic_category()))), errnum::DiskFull) << code;
    EXPECT_EQ(errorNumberOf(std::system_error(std::make_error_code(std::errc::io_error))), errnum::PathFileAccess);
}

TEST_F(FileSystem, ReadIsBounded) {
    EXPECT_EQ(readFile(dir / "geheim.txt", 6), "aussen");
    EXPECT_EQ(errorOf([&] { readFile(dir / "geheim.txt", 5); }), errnum::OutOfMemory);
    EXPECT_EQ(errorOf([&] { readFile(dir / "nichts"); }), errnum::FileNotFound);
    EXPECT_EQ(errorOf([&] { readFile(dir / "drive_c"); }), errnum::Permission);
    EXPECT_EQ(errorOf([&] { readFile("/dev/zero"); }), errnum::Permission);
    EXPECT_EQ(errorOf([&] { setReadOnly(dir / "nichts", true); }), errnum::FileNotFound);
}

TEST_F(FileSystem, CopyAndDelete) {
    EXPECT_TRUE(DateiCopy(ctx, "C:\\windows\\win.ini", "C:\\Dokumente"));
    EXPECT_EQ(test::bytesOf(dir / "drive_c/Dokumente/win.ini"), "[windows]\r\n");
    EXPECT_TRUE(DateiCopy(ctx, "C:\\windows\\win.ini", "C:\\Dokumente\\größe.txt"));
    EXPECT_EQ(test::bytesOf(dir / "drive_c/Dokumente/GRÖßE.TXT"), "[windows]\r\n");
    for (const auto& [source, target] : std::vector<std::pair<std::string, std::string>>{{"C:\\fehlt", "C:\\x"}, {"win.ini", "C:\\fehlt\\x"}, {"win.ini", "\\\\s\\x"}}) {
        port.expectBox("Funktion wurden nicht ausgeführt!");
        EXPECT_FALSE(DateiCopy(ctx, source, target)) << source << ' ' << target;
    }
    EXPECT_TRUE(DateiDel(ctx, "C:\\Dokumente\\WIN.INI"));
    EXPECT_FALSE(fs::exists(dir / "drive_c/Dokumente/win.ini"));
    EXPECT_TRUE(DateiDel(ctx, "C:\\Dokumente\\WIN.INI"));
    EXPECT_TRUE(DateiDel(ctx, "C:\\Windows\\System32\\*.exe"));
    EXPECT_FALSE(DateiDel(ctx, "C:\\Windows"));  // a folder stays
    EXPECT_TRUE(fs::exists(dir / "drive_c/WINDOWS/system32/Desk.CPL"));
    setReadOnly(dir / "drive_c/WINDOWS/win.ini", true);
    EXPECT_FALSE(DateiDel(ctx, "win.ini"));
    EXPECT_TRUE(fs::exists(dir / "drive_c/WINDOWS/win.ini"));
}
