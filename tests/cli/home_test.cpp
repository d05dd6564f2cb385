// The home as the command line meets it: copied, moved, unwritable, missing, begun by several at a time.
#include "CliFixture.h"

namespace brenvik::test {
namespace {

namespace fs = std::filesystem;

class Home : public CliFixture {
protected:
    CommandRun cli(const std::string& home, const Words& arguments) { return CliFixture::cli(arguments, home); }
    // A line for the shell; $0 is the program.
    CommandRun shell(const std::string& line, const Words& arguments = {}) {
        Words words{"-c", line, program};
        words.insert(words.end(), arguments.begin(), arguments.end());
        return run("/bin/sh", words);
    }
    std::string screenSaver(const std::string& home) { return cli(home, {"registry", "read", "HKCU\\Control Panel\\Desktop\\ScreenSaveActive"}).out; }
};

// As the first normal end of an earlier version left it: with the folders of the home in full.
TEST_F(Home, ACopyWorksOnItsOwnLists) {
    for (const auto& [name, below] : {std::pair{"History", "/"}, {"Favorite", "/"}, {"RegBackupRestore", "/Backup"}})
        EXPECT_EQ(cli("a", {"registry", "write", std::string("HKCU\\Software\\Brenvik\\Pfade\\") + name, "REG_SZ", path("a") + below}).code, 0);
    EXPECT_EQ(cli("a", {"tip", "set", "109", "off"}).code, 0);
    const std::string before = bytesOf(dir / "a/History.txt");
    fs::copy(dir / "a", dir / "b", fs::copy_options::recursive);
    EXPECT_EQ(cli("b", {"tip", "set", "109", "on"}).code, 0);
    EXPECT_EQ(bytesOf(dir / "a/History.txt"), before);
    EXPECT_NE(bytesOf(dir / "b/History.txt"), before);

    fs::rename(dir / "a", dir / "c");
    const CommandRun list = cli("c", {"history", "list"});
    EXPECT_EQ(list.err, "");
    EXPECT_NE(list.out.find("109"), std::string::npos) << list.out;
    EXPECT_EQ(cli("c", {"--yes", "history", "undo", "1"}).code, 0);
    EXPECT_EQ(screenSaver("c") + screenSaver("b"), "1\n1\n");
    EXPECT_FALSE(fs::exists(dir / "a"));
}

TEST_F(Home, WhatNeedsNoHomeMakesNone) {
    EXPECT_EQ(cli("a", {"registry", "save", "HKCU\\Control Panel", path("h.hiv")}).code, 0);
    for (const char* home : {"keines", "h.hiv/keines"}) {
        const CommandRun list = cli(home, {"registry", "list", path("h.hiv") + ":"});
        EXPECT_EQ(list.err, "");
        EXPECT_NE(list.out.find("Desktop\\"), std::string::npos);
        EXPECT_EQ(cli(home, {"registry", "write", path("h.hiv") + ":\\Neu\\x", "REG_SZ", "1"}).code, 0);
    }
    EXPECT_EQ(dir.names(), (Words{"a", "h.hiv", "h.hiv.bvk"}));
}

TEST_F(Home, WhereNoHomeCanBeItIsShownAndSaid) {
    dir.put("datei", "");
    const std::string why = "Der Ordner \"" + path("datei/heim") + "\" kann nicht angelegt werden: Der Pfad führt durch eine Datei. Gezeigt wird,";
    const CommandRun read = cli("datei/heim", {"tip", "show", "109"});
    EXPECT_EQ(read.code, 0);
    EXPECT_NE(read.out.find("ScreenSaveActive"), std::string::npos);
    EXPECT_NE(read.err.find(why), std::string::npos) << read.err;
    const CommandRun written = cli("datei/heim", {"registry", "write", "HKCU\\Software\\x", "REG_SZ", "1"});
    EXPECT_EQ(written.code, 1);
    EXPECT_NE(written.err.find(why), std::string::npos) << written.err;
}

// On a full disk all can be read, and what cannot be written says why.
TEST_F(Home, AFullDiskIsReported) {
    EXPECT_EQ(cli("a", {"tip", "set", "109", "off"}).code, 0);
    const auto full = [&](const std::string& command) { return shell("trap '' XFSZ; (ulimit -f 0; \"$0\" --home \"$1\" " + command + " 2>&1; echo \"[$?]\") | cat", {path("a")}).out; };
    EXPECT_EQ(full("registry read 'HKCU\\Control Panel\\Desktop\\ScreenSaveActive'"), "0\n[0]\n");
    EXPECT_NE(full("tip show 109").find("ScreenSaveActive"), std::string::npos);
    const std::string refused = full("tip set 109 on");
    EXPECT_NE(refused.find("weil der Datenträger voll ist"), std::string::npos) << refused;
    EXPECT_NE(refused.find("[1]"), std::string::npos) << refused;
    EXPECT_EQ(screenSaver("a"), "0\n");
    const std::string list = full("history list"), forgotten = full("--yes history forget 1");
    EXPECT_EQ(list.substr(list.rfind("Tipp 109")), "Tipp 109   Bildschirmschoner ein- und ausschalten\n[0]\n") << list;
    EXPECT_NE(forgotten.find("kann nicht geschrieben werden, weil der Datenträger voll ist"), std::string::npos) << forgotten;
    EXPECT_NE(full("registry save HKCU \"$1.hiv\"").find("kann nicht geschrieben werden: Der Datenträger ist voll.\n[1]"), std::string::npos);
    EXPECT_EQ(cli("a", {"history", "list"}).out, list.substr(0, list.rfind("[0]")).substr(list.find("    1  ")));
}

TEST_F(Home, SeveralFirstStartsAtATime) {
    for (int round = 0; round < 3; ++round) {
        const CommandRun all = shell("for i in 1 2 3 4; do \"$0\" --home \"$1\" tip show 109 >\"$1.$i\" 2>&1 & p=\"$p $!\"; done; for i in $p; do wait $i || echo falsch; done; cat \"$1\".?", {path("h" + std::to_string(round))});
        EXPECT_EQ(all.out.find("falsch"), std::string::npos) << all.out;
        const std::string one = cli("h" + std::to_string(round), {"tip", "show", "109"}).out;
        EXPECT_EQ(all.out, one + one + one + one);
        for (const std::string& name : dir.names("h" + std::to_string(round))) EXPECT_FALSE(name.ends_with("neu")) << name;
    }
}

TEST_F(Home, IsAppliedWithoutAReader) {
    EXPECT_EQ(cli("a", {"list", "save", path("l.toml"), "109", "--set", "109=off"}).code, 0);
    EXPECT_NE(shell("\"$0\" --home \"$1\" --yes apply \"$2\" | true", {path("a"), path("l.toml")}).err.find("Die Ausgabe konnte nicht geschrieben werden"), std::string::npos);
    EXPECT_EQ(screenSaver("a"), "0\n");
}

TEST_F(Home, TheLogIsKeptWhenWanted) {
    EXPECT_EQ(cli("a", {"tip", "show", "109"}).code, 0);
    EXPECT_FALSE(fs::exists(dir / "a/brenvik.log"));
    EXPECT_EQ(cli("a", {"--debug", "tip", "show", "109"}).code, 0);
    const std::string log = bytesOf(dir / "a/brenvik.log");
    for (const char* line : {" Brenvik\n", " Version: ", " Programmverzeichnis: ", " Prozedur: BSErmitteln -Start-\n", " Prozedur: LoadDB -Ende-\n"}) EXPECT_NE(log.find(line), std::string::npos) << line;
    EXPECT_EQ(fs::status(dir / "a/brenvik.log").permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(dir / "a/registry.db").permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(dir / "a").permissions(), fs::perms::owner_all);
}

}  // namespace
}  // namespace brenvik::test
