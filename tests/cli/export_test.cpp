// The export commands, driven as a user would; files read back with our own import, and applied to another home.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "frame/Codepage.h"
#include "support/Kommando.h"
#include "support/TempDir.h"

namespace brenvik::test {
namespace {

class ExportCli : public ::testing::Test {
protected:
    Ergebnis cli(std::vector<std::string> arguments, const std::string& home = "heim") {
        arguments.insert(arguments.begin(), {"--home", (dir / home).string()});
        return run(std::filesystem::path(BRENVIK_PROGRAMM_DIR) / "brenvik-cli", arguments);
    }
    std::string path(const std::string& name) { return (dir / name).string(); }
    TempDir dir;
};

constexpr const char* Desktop = "HKCU\\Control Panel\\Desktop\\";

TEST_F(ExportCli, FormenUndAusgabe) {
    const Ergebnis told = cli({"export", "reg", "109"});
    EXPECT_EQ(told.code, 0);
    EXPECT_EQ(told.err, "");
    EXPECT_NE(told.out.find("\r\n; [109] - Bildschirmschoner ein- und ausschalten\r\n[HKEY_CURRENT_USER\\Control Panel\\Desktop]\r\n\"ScreenSaveActive\"=\"1\"\r\n"), std::string::npos);
    const Ergebnis list = cli({"export", "reg", "109", "114", "109", "-o", path("l.reg")});
    EXPECT_EQ(list.out, "");
    EXPECT_NE(list.err.find("REG-File wurde unter: " + path("l.reg") + " gespeichert\n"), std::string::npos);
    EXPECT_NE(list.err.find("(mit --checked)"), std::string::npos);
    EXPECT_NE(bytesOf(dir / "l.reg").find("; ------ Listen Ende ------\r\n"), std::string::npos);

    EXPECT_EQ(cli({"export", "reg", "--checked", "109", "--set", "109=off", "-o", path("c.reg")}).code, 0);
    EXPECT_EQ(cli({"registry", "read", std::string(Desktop) + "ScreenSaveActive"}).out, "1\n");   // --set is for the file alone
    EXPECT_EQ(cli({"registry", "import", path("c.reg")}).code, 0);
    EXPECT_EQ(cli({"registry", "read", std::string(Desktop) + "ScreenSaveActive"}).out, "0\n");
    EXPECT_EQ(cli({"export", "reg", "--regedit4", "109"}).out.substr(0, 10), "REGEDIT4\r\n");
    EXPECT_EQ(cli({"export", "polfile", "109"}).out.substr(0, 4), "PReg");
    EXPECT_NE(cli({"export", "reg-add", "109"}).out.find("\r\nreg add \"HKCU\\Control Panel\\Desktop\" /v \"ScreenSaveActive\" /t REG_SZ /d \"0\" /f"), std::string::npos);
    EXPECT_NE(cli({"export", "adm", "116"}).out.find("POLICY \"NoDesktop\""), std::string::npos);
    EXPECT_EQ(cli({"export", "admx", path("vorlage"), "116"}).code, 0);
    EXPECT_NE(bytesOf(dir / "vorlage/de-DE/brenvik.adml").find("<string id=\"Tipp_116_1\">"), std::string::npos);
}

TEST_F(ExportCli, ListeAufEinenAnderenRechner) {
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

TEST_F(ExportCli, FalscheAufrufe) {
    dir.put("kaputt.toml", "format = 1\n[[tipp]]\nnummer = 31999\n");
    const struct {
        std::vector<std::string> arguments;
        int code;
        const char* err;
    } faelle[] = {{{"export", "reg", "31999"}, 1, "Tipp 31999: Den Tipp gibt es nicht\n"},
                  {{"export", "adm", "109"}, 1, "Tipp 109: Er ist nicht für Vorlagen freigegeben\n"},
                  {{"export", "reg", "109", "--set", "109=vielleicht"}, 1, "Tipp 109: \"vielleicht\" passt nicht: erwartet wird on oder off\n"},
                  {{"export", "reg", "109", "--set", "110=off"}, 1, nullptr},
                  {{"export", "reg", "109", "-o", path("fehlt/x.reg")}, 1, nullptr},
                  {{"export", "reg"}, 2, nullptr},
                  {{"export", "polfile", "109", "--class", "server"}, 2, nullptr},
                  {{"list", "load", path("kaputt.toml")}, 1,
                   "Zeile 2: Den Tipp 31999 gibt es in der Datenbank nicht\nDie Liste wurde nicht geladen, nichts wurde geändert.\n"}};
    for (const auto& fall : faelle) {
        const Ergebnis e = cli(fall.arguments);
        EXPECT_EQ(e.code, fall.code) << e.err;
        EXPECT_EQ(e.out, "");
        if (fall.err != nullptr) {
            EXPECT_EQ(e.err, fall.err);
        }
        EXPECT_EQ(e.err.find("gespeichert"), std::string::npos);
    }
}

}  // namespace
}  // namespace brenvik::test
