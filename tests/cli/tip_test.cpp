// The commands on Tips, driven as a user would: whole outputs, exit codes, and the value after a restart.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "support/Kommando.h"
#include "support/TempDir.h"

namespace brenvik::test {
namespace {

class Tip : public ::testing::Test {
protected:
    Ergebnis cli(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--home", (dir / "heim").string()});
        return run(std::filesystem::path(BRENVIK_PROGRAMM_DIR) / "brenvik-cli", arguments);
    }
    nlohmann::json show(int number) { return nlohmann::json::parse(cli({"--json", "tip", "show", std::to_string(number)}).out); }
    TempDir dir;
};

constexpr int Bildschirmschoner = 109;   // two check boxes, REG_SZ "1"/"0"

TEST_F(Tip, SetzenUeberlebtDenNeustart) {
    EXPECT_EQ(show(Bildschirmschoner)["entries"][0]["shown"], "on");
    const Ergebnis set = cli({"tip", "set", "109", "off"});
    EXPECT_EQ(set.code, 0);
    EXPECT_EQ(set.out, "");
    EXPECT_EQ(set.err, "Der Schlüssel wurde geändert/angelegt !\n");
    const auto after = show(Bildschirmschoner);
    EXPECT_EQ(after["entries"][0]["current"], "0");
    EXPECT_EQ(after["entries"][1]["current"], "0");
    EXPECT_EQ(cli({"registry", "read", "HKCU\\Control Panel\\Desktop\\ScreenSaveActive"}).out, "0\n");

    EXPECT_EQ(cli({"tip", "set", "109", "--entry", "1", "on", "--entry", "2", "on"}).code, 0);
    EXPECT_EQ(show(Bildschirmschoner)["entries"][1]["shown"], "on");
}

TEST_F(Tip, StandardUndLoeschenFragen) {
    cli({"tip", "set", "109", "off"});
    const Ergebnis asked = cli({"tip", "default", "109"});
    EXPECT_EQ(asked.code, 1);
    EXPECT_NE(asked.err.find("Soll die Aktion ausgeführt werden ? [Nein; mit --yes wird Ja geantwortet]"), std::string::npos);
    EXPECT_EQ(show(Bildschirmschoner)["entries"][0]["shown"], "off");
    EXPECT_EQ(cli({"--yes", "tip", "default", "109"}).code, 0);
    EXPECT_EQ(show(Bildschirmschoner)["entries"][0]["shown"], "on");

    EXPECT_EQ(cli({"--yes", "tip", "delete", "109"}).err, "Das Löschen von Registrywerten ist in den Einstellungen nicht erlaubt\n");
    EXPECT_EQ(cli({"registry", "write", "HKCU\\Software\\Brenvik\\Einstellungen\\LöschenAktiv", "REG_SZ", "True"}).code, 0);
    EXPECT_EQ(cli({"tip", "delete", "109"}).code, 1);
    EXPECT_EQ(cli({"--yes", "tip", "delete", "109"}).code, 0);
    EXPECT_EQ(show(Bildschirmschoner)["entries"][0]["status"], "[Registry Wert nicht vorhanden]");
}

TEST_F(Tip, FalscheAufrufe) {
    const struct {
        std::vector<std::string> arguments;
        int code;
        const char* err;
    } faelle[] = {
        {{"tip", "show", "31999"}, 1, "Den Tipp 31999 gibt es nicht\n"},
        {{"tip", "set", "109", "vielleicht"}, 1, "\"vielleicht\" passt nicht: erwartet wird on oder off\n"},
        {{"tip", "set", "109", "--entry", "9", "on"}, 1, "Der Tipp hat keinen Eintrag 9\n"},
        {{"tip", "set", "109", "--entry", "1", "--entry", "2", "on"}, 2, "Zu jedem --entry gehört genau ein TEXT\n"},
        {{"tip", "list", "--view", "os2"}, 2, nullptr},
        {{"tip"}, 2, nullptr},
        {{}, 2, nullptr},
        {{"registry", "write", "HKCU\\Software\\x", "REG_FALSCH", "1"}, 2, "Unbekannter Datentyp: REG_FALSCH\n"},
        {{"registry", "write", "HKCU\\Software\\x", "REG_DWORD", "zwei"}, 1, nullptr},
        {{"registry", "read", "HKXX\\x"}, 1, "Es wurde kein gültiger Hauptschlüssel angegeben\n"},
        {{"registry", "read", "HKCU\\Software\\fehlt"}, 1, "Der Wert ist nicht vorhanden: HKCU\\Software\\fehlt\n"},
    };
    for (const auto& fall : faelle) {
        const Ergebnis e = cli(fall.arguments);
        EXPECT_EQ(e.code, fall.code) << e.err;
        EXPECT_EQ(e.out, "");
        if (fall.err != nullptr) {
            EXPECT_EQ(e.err, fall.err);
        }
    }
}

TEST_F(Tip, ListenInAllenAnsichten) {
    const std::string alle = cli({"tip", "list"}).out;
    EXPECT_NE(alle.find("109  Bildschirmschoner ein- und ausschalten\n"), std::string::npos);
    const std::string abc = cli({"tip", "list", "--view", "abc"}).out;
    EXPECT_NE(abc.substr(0, 8), "Desktop\n");
    EXPECT_GT(std::count(abc.begin(), abc.end(), '\n'), 200);
    EXPECT_EQ(cli({"tip", "list", "--view", "win95"}).out.find("Bildschirmschoner ein- und"), std::string::npos);
    const auto neu = nlohmann::json::parse(cli({"--json", "tip", "list", "--view", "neu"}).out);
    EXPECT_EQ(neu[0]["text"], "1.0.0");
    EXPECT_GT(neu.size(), 3u);
    const std::string values = cli({"tip", "list", "--values"}).out;
    EXPECT_NE(values.find("ScreenSaveActive: on  [Registry Wert vorhanden]\n"), std::string::npos);
}

TEST_F(Tip, KaputterSpeicherUndFehlendeDatenbank) {
    std::filesystem::create_directories(dir / "heim");
    dir.put("heim/registry.db", "keine Datenbank, sondern ein Text, der lang genug ist, um einer zu sein ------------------------");
    const Ergebnis e = cli({"tip", "list"});
    EXPECT_EQ(e.code, 1);
    EXPECT_NE(e.err.find("registry.db"), std::string::npos);
    EXPECT_EQ(bytesOf(dir / "heim/registry.db").substr(0, 15), "keine Datenbank");
}

}  // namespace
}  // namespace brenvik::test
