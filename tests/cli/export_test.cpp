// The export commands, driven as a user would; files read back with our own import, and applied to another home.
#include "CliFixture.h"
#include "frame/text/Codepage.h"

namespace brenvik::test {
namespace {

class ExportCli : public CliFixture {};

constexpr const char* Desktop = "HKCU\\Control Panel\\Desktop\\";

TEST_F(ExportCli, FormsAndOutput) {
    const CommandRun told = cli({"export", "reg", "109"});
    EXPECT_EQ(told.code, 0);
    EXPECT_EQ(told.err, "");
    EXPECT_NE(told.out.find("\r\n; [109] - Bildschirmschoner ein- und ausschalten\r\n[HKEY_CURRENT_USER\\Control Panel\\Desktop]\r\n\"ScreenSaveActive\"=\"1\"\r\n"), std::string::npos);
    const CommandRun list = cli({"export", "reg", "109", "114", "109", "-o", path("l.reg")});
    EXPECT_EQ(list.out, "");
    EXPECT_NE(list.err.find("REG-File wurde unter: " + path("l.reg") + " gespeichert\n"), std::string::npos);
    EXPECT_NE(list.err.find("Anzahl: 2.\n\nHKEY_CURRENT_USER\\Control Panel\\Desktop\\"), std::string::npos) << list.err;   // of each Tip the first value is left out
    EXPECT_NE(list.err.find("(mit --checked)"), std::string::npos);
    EXPECT_NE(bytesOf(dir / "l.reg").find("; ------ Listen Ende ------\r\n"), std::string::npos);

    EXPECT_EQ(cli({"export", "reg", "--checked", "109", "--set", "109=off", "-o", path("c.reg")}).code, 0);
    EXPECT_EQ(cli({"registry", "read", std::string(Desktop) + "ScreenSaveActive"}).out, "1\n");   // --set is for the file alone
    EXPECT_EQ(cli({"registry", "import", path("c.reg")}).code, 0);
    EXPECT_EQ(cli({"registry", "read", std::string(Desktop) + "ScreenSaveActive"}).out, "0\n");
    EXPECT_EQ(cli({"export", "reg", "--regedit4", "109"}).out.substr(0, 10), "REGEDIT4\r\n");
    const std::vector<std::string> greek{"export", "reg", "--regedit4", "109", "2719", "--set", "2719=Ω"};
    const CommandRun refused = cli(greek);
    EXPECT_EQ(refused.code, 1);
    EXPECT_EQ(refused.out, "");
    EXPECT_EQ(refused.err.substr(0, refused.err.find('\n')), "Läßt sich in diesem Format nicht darstellen: HKEY_CURRENT_USER\\Software\\Microsoft\\Command Processor\\AutoRun");
    std::vector<std::string> yes = greek;
    yes.insert(yes.begin(), "--yes");
    EXPECT_EQ(cli(yes).out.find("AutoRun"), std::string::npos);
    EXPECT_EQ(cli({"export", "polfile", "109"}).out.substr(0, 4), "PReg");
    EXPECT_NE(cli({"export", "reg-add", "109"}).out.find("\r\nreg add \"HKCU\\Control Panel\\Desktop\" /v \"ScreenSaveActive\" /t REG_SZ /d \"0\" /f"), std::string::npos);
    EXPECT_NE(cli({"export", "adm", "116"}).out.find("POLICY \"NoDesktop\""), std::string::npos);
    EXPECT_EQ(cli({"export", "admx", path("vorlage"), "116"}).code, 0);
    EXPECT_NE(bytesOf(dir / "vorlage/de-DE/brenvik.adml").find("<string id=\"Tipp_116_1\">"), std::string::npos);
}

TEST_F(ExportCli, AListForAnotherMachine) {
    EXPECT_EQ(cli({"list", "save", path("l.toml"), "109", "--set", "109:2=on"}).code, 0);
    EXPECT_EQ(cli({"list", "load", path("l.toml")}).out, "  109  Bildschirmschoner ein- und ausschalten\n       ScreenSaveActive: 1\n       ScreenSaverIsSecure: 1\n");
    cli({"tip", "set", "109", "off"}, "anderer");
    const auto dry = nlohmann::json::parse(cli({"--json", "apply", path("l.toml"), "--dry-run"}, "anderer").out);
    ASSERT_EQ(dry.size(), 1u);
    EXPECT_EQ(dry[0]["changes"].size(), 2u);
    EXPECT_EQ(dry[0]["changes"][0]["old"]["data"], "0");
    EXPECT_EQ(cli({"apply", path("l.toml")}, "anderer").code, 1);   // asks, and nobody says yes
    EXPECT_EQ(cli({"registry", "read", std::string(Desktop) + "ScreenSaveActive"}, "anderer").out, "0\n");
    EXPECT_EQ(cli({"--yes", "apply", path("l.toml")}, "anderer").code, 0);
    EXPECT_EQ(cli({"registry", "read", std::string(Desktop) + "ScreenSaveActive"}, "anderer").out, "1\n");
    EXPECT_EQ(cli({"apply", path("l.toml")}, "anderer").err, "Es ist nichts zu ändern, alle Werte stehen schon so da.\n");
}

// The hives of a Windows that does not run: written there, kept here, one record in the history for each Tip.
TEST_F(ExportCli, AListForASleepingWindows) {
    const std::filesystem::path config = dir / "win/Windows/System32/config", profile = dir / "win/Users/Anna";
    std::filesystem::create_directories(config);
    std::filesystem::create_directories(profile);
    cli({"registry", "write", "HKLM\\Software\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList\\S-1-5-21-1-2-3-1001\\ProfileImagePath", "REG_EXPAND_SZ", "%SystemDrive%\\Users\\Anna"});
    const std::filesystem::path hives[] = {config / "SOFTWARE", config / "SYSTEM", profile / "NTUSER.DAT"};
    const char* keys[] = {"HKLM\\Software", "HKLM\\System", "HKCU"};
    for (std::size_t k = 0; k < 3; ++k) ASSERT_EQ(cli({"registry", "save", keys[k], hives[k].string()}).code, 0);
    ASSERT_EQ(cli({"list", "save", path("l.toml"), "109", "221", "--set", "109=off", "--set", "221=600"}).code, 0);
    const std::vector<std::string> there{"--machine", path("win")};
    const auto at = [&](std::vector<std::string> words, const std::vector<std::string>& before) {
        words.insert(words.begin(), before.begin(), before.end());
        return cli(words);
    };
    const auto values = [&](const std::vector<std::string>& machine) {
        std::string text;
        for (const std::string& place : {std::string(Desktop) + "ScreenSaveActive", std::string("HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Max Cached Icons")})
            text += at({"registry", "read", place}, machine).out + "|";
        return text;
    };
    const auto bytes = [&] { return bytesOf(hives[0]) + bytesOf(hives[2]); };

    // One of the hives cannot be written: none is.
    const std::string untouched = bytes();
    std::filesystem::permissions(hives[0], std::filesystem::perms::owner_read);
    const CommandRun refused = at({"--yes", "apply", path("l.toml")}, there);
    EXPECT_EQ(refused.code, 1);
    EXPECT_NE(refused.err.find("Die Liste wurde nicht angewendet, nichts wurde geändert: Die Hivedatei"), std::string::npos) << refused.err;
    EXPECT_TRUE(bytes() == untouched);
    EXPECT_EQ(cli({"history", "list"}).out, "");
    std::filesystem::permissions(hives[0], std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);

    EXPECT_EQ(at({"--yes", "apply", path("l.toml")}, there).code, 0);
    EXPECT_EQ(values(there), "0\n|600\n|");
    EXPECT_EQ(values({}), "1\n||");
    const auto history = parsed({"history", "list"});
    ASSERT_EQ(history.size(), 2u);
    for (const std::size_t k : {0u, 1u}) EXPECT_EQ(history[k]["machine"].get<std::string>() + " " + history[k]["tip"].dump(), path("win") + (k == 0 ? " 109" : " 221"));
    const CommandRun unseen = cli({"drift"});   // nothing is connected to of its own accord
    EXPECT_EQ(unseen.code, 4);
    EXPECT_NE(unseen.out.find("nicht gelesen: der Rechner \"" + path("win") + "\" wird gerade nicht bearbeitet"), std::string::npos) << unseen.out;
    EXPECT_EQ(at({"drift"}, there).out, "Alle Werte, die das Programm gesetzt hat, stehen noch so da.\n");
    EXPECT_THAT(fails({"history", "undo", history[0]["number"].dump(), "--exact"}), testing::HasSubstr("am Windows im Ordner\n\n" + path("win")));
    for (const auto& change : history) EXPECT_EQ(at({"--yes", "history", "undo", change["number"].dump(), "--exact"}, there).code, 0);
    EXPECT_EQ(values(there), "1\n||");

    // A Tip for other systems is written there, but not without a word.
    const CommandRun other = at({"--yes", "tip", "set", "3667", "on"}, there);
    EXPECT_EQ(other.code, 0) << other.err;
    EXPECT_NE(other.err.find("\nAchtung: Der Tipp 3667 ist nicht für das System des Rechners \"" + path("win") +
                             "\" gedacht (Windows XP), sondern für: Windows 95, Windows 98, Windows ME\n"), std::string::npos) << other.err;
}

}  // namespace
}  // namespace brenvik::test
