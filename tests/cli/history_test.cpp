// history and drift, driven as a user would.
#include <sqlite3.h>

#include <fstream>

#include "CliFixture.h"
#include "registry/store/Sqlite.h"

namespace brenvik::test {
namespace {

class HistoryCli : public CliFixture {};

constexpr const char* Sicher = "HKCU\\Control Panel\\Desktop\\ScreenSaverIsSecure";

TEST_F(HistoryCli, DriftHasThreeAnswers) {
    EXPECT_EQ(cli({"tip", "set", "109", "--entry", "2", "on"}).code, 0);
    const CommandRun asSet = cli({"drift"});
    EXPECT_EQ(std::to_string(asSet.code) + asSet.out, "0Alle Werte, die das Programm gesetzt hat, stehen noch so da.\n");
    EXPECT_EQ(cli({"registry", "write", Sicher, "REG_SZ", "9"}).code, 0);
    const CommandRun differs = cli({"--json", "drift"});
    EXPECT_EQ(differs.code, 3);
    const auto tip = nlohmann::json::parse(differs.out)[0], value = tip["values"][0];
    EXPECT_EQ(tip["tip"], 109);   // not the row of its second value
    EXPECT_EQ(value["state"].get<std::string>() + value["set"]["data"].get<std::string>() + value["now"]["data"].get<std::string>(), "differs19");
    EXPECT_NE(cli({"drift"}).out.find("Anders als gesetzt: 1\n"), std::string::npos);
    EXPECT_EQ(parsed({"drift", "--all"})[0]["values"].size(), 1u);

    const CommandRun refused = cli({"history", "undo", "1", "--exact"});   // somebody else's 9 stays
    EXPECT_EQ(refused.code, 1);
    EXPECT_NE(refused.err.find("jetzt: REG_SZ \"9\"  (von anderer Seite)"), std::string::npos) << refused.err;
    EXPECT_EQ(cli({"history", "undo", "1", "--exact", "--keep"}).code, 1);   // all of it stays: nothing was taken back
    EXPECT_EQ(cli({"registry", "read", Sicher}).out, "9\n");
    EXPECT_EQ(cli({"--yes", "history", "undo", "1", "--exact"}).code, 0);
    EXPECT_EQ(cli({"registry", "read", Sicher}).out, "0\n");
    EXPECT_EQ(cli({"drift"}).code, 0);
    // A record that names no place says nothing about what stands there.
    sqlite::Database((dir / "heim/journal.db").string(), SQLITE_OPEN_READWRITE).execute("UPDATE wert SET pfad = ''");
    EXPECT_EQ(cli({"drift"}).code, 4);
    std::ofstream(dir / "heim/journal.db") << "keine Datenbank, aber lang genug dafür";   // said once
    const std::string said = cli({"drift"}).err;
    EXPECT_TRUE(said.find("kein Änderungsjournal") != std::string::npos && said.find("kein Änderungsjournal") == said.rfind("kein Änderungsjournal")) << said;
}

// Whatever was taken back or set anew in between: when all is taken back, what stood first stands again.
TEST_F(HistoryCli, AllTakenBackIsTheBeginning) {
    constexpr const char* Delay = "HKCU\\Control Panel\\Desktop\\MenuShowDelay";
    const auto yes = [&](std::vector<std::string> words) {
        words.insert(words.begin(), "--yes");
        EXPECT_EQ(cli(words).code, 0) << words.back();
    };
    const auto classes = [&] {
        EXPECT_EQ(cli({"--yes", "registry", "export", "HKLM\\Software\\Classes", (dir / "klassen.reg").string()}).code, 0);
        return bytesOf(dir / "klassen.reg");
    };
    const std::string before = classes(), boot = bytesOf(dir / "heim/drive_c/boot.ini");
    for (const char* tip : {"901", "2207"}) {
        const auto number = [&](int change) { return std::to_string(change + (tip == std::string("901") ? 0 : 6)); };
        yes({"tip", "set", tip, "10"});
        yes({"tip", "set", tip, "20"});
        yes({"history", "undo", number(2), "--exact"});
        yes({"tip", "set", tip, "30"});
        yes({"history", "undo", number(1), "--exact"});
        yes({"history", "undo", number(4), "--exact"});
    }
    EXPECT_EQ(cli({"registry", "read", Delay}).out, "400\n");
    EXPECT_EQ(bytesOf(dir / "heim/drive_c/boot.ini"), boot);
    EXPECT_EQ(cli({"drift"}).code, 0);
    // A row that the user's classes and the machine's both have goes from both, and comes back into both.
    EXPECT_EQ(cli({"registry", "write", "HKCU\\Software\\Classes\\Drive\\shell\\find\\Eigen", "REG_SZ", "user"}).code, 0);
    yes({"tip", "delete", "607", "--row", "find"});
    EXPECT_EQ(cli({"registry", "list", "HKLM\\Software\\Classes\\Drive\\shell\\find"}).code, 1);
    const auto history = parsed({"history", "list"});
    yes({"history", "undo", history.back()["number"].dump(), "--exact"});
    EXPECT_TRUE(classes() == before);
    EXPECT_EQ(cli({"registry", "read", "HKCU\\Software\\Classes\\Drive\\shell\\find\\Eigen"}).out, "user\n");
}

TEST_F(HistoryCli, ForgettingAndSecrets) {
    constexpr const char* Secret = "HKCU\\Software\\Probe\\DefaultPassword";
    EXPECT_EQ(cli({"registry", "write", Secret, "REG_SZ", "-"}, "heim", "geheim\n").code, 0);
    EXPECT_EQ(cli({"registry", "read", Secret}).out, "geheim\n");
    EXPECT_EQ(cli({"registry", "write", Secret, "REG_SZ", "-", "--value-fd", "99"}).code, 1);
    EXPECT_EQ(cli({"tip", "set", "109", "-"}, "heim", "off\r\n").code, 0);
    EXPECT_EQ(cli({"tip", "set", "109", "on"}).code, 0);
    EXPECT_EQ(cli({"history", "forget", "7"}).code, 1);
    EXPECT_EQ(cli({"history", "forget", "1"}).code, 1);   // asks
    EXPECT_EQ(cli({"--yes", "history", "forget", "1"}).code, 0);
    EXPECT_EQ(parsed({"history", "list"}).size(), 1u);
    EXPECT_EQ(cli({"history", "forget", "--before", "gestern"}).code, 2);
    EXPECT_EQ(cli({"--yes", "history", "forget", "--before", "2002-11-09"}).code, 0);
    EXPECT_EQ(parsed({"history", "list"}).size(), 1u);
    EXPECT_EQ(cli({"--yes", "history", "forget"}).code, 0);
    EXPECT_EQ(cli({"history", "list"}).out + bytesOf(dir / "heim/History.txt"), "");
}

// A copied home is a home of its own: nothing reaches back into the one it came from.
TEST_F(HistoryCli, ACopiedHomeStaysWithItsOwnFiles) {
    const auto ini = [&](const char* home) { return dir / home / "drive_c/WINDOWS/win.ini"; };
    EXPECT_EQ(cli({"registry", "write", "HKCU\\Software\\Brenvik\\Einstellungen\\BSSystemAktiv", "REG_SZ", "0"}).code, 0);
    const CommandRun set = cli({"tip", "set", "2109", "probe.exe"});
    ASSERT_EQ(set.code, 0) << set.err;
    const std::string changed = bytesOf(ini("heim"));
    EXPECT_NE(changed.find("probe.exe"), std::string::npos);
    std::filesystem::copy(dir / "heim", dir / "kopie", std::filesystem::copy_options::recursive);
    const CommandRun undone = cli({"history", "undo", "1", "--exact"}, "kopie");
    EXPECT_EQ(undone.code, 0) << undone.err;
    EXPECT_EQ(bytesOf(ini("heim")), changed);
    EXPECT_EQ(bytesOf(ini("kopie")).find("probe.exe"), std::string::npos);
}

}  // namespace
}  // namespace brenvik::test
