// The commands on Tips, driven as a user would: whole outputs, exit codes, and the value after a restart.
#include "CliFixture.h"

namespace brenvik::test {
namespace {

class Tip : public CliFixture {
protected:
    nlohmann::json show(int number) { return parsed({"tip", "show", std::to_string(number)}); }
};

constexpr int ScreenSaver = 109;   // two check boxes, REG_SZ "1"/"0"
constexpr int TextTip = 2719;           // a text, REG_SZ

TEST_F(Tip, WhatIsSetSurvivesARestart) {
    EXPECT_EQ(show(ScreenSaver)["entries"][0]["shown"], "on");
    const CommandRun set = cli({"tip", "set", "109", "off"});
    EXPECT_EQ(set.code, 0);
    EXPECT_EQ(set.out, "");
    EXPECT_EQ(set.err, "Der Schlüssel wurde geändert/angelegt !\n");
    const auto after = show(ScreenSaver);
    EXPECT_EQ(after["entries"][0]["current"], "0");
    EXPECT_EQ(after["entries"][1]["current"], "0");
    EXPECT_EQ(cli({"registry", "read", "HKCU\\Control Panel\\Desktop\\ScreenSaveActive"}).out, "0\n");

    EXPECT_EQ(cli({"tip", "set", "109", "--entry", "1", "on", "--entry", "2", "on"}).code, 0);
    EXPECT_EQ(show(ScreenSaver)["entries"][1]["shown"], "on");
}

TEST_F(Tip, DefaultAndDeleteAsk) {
    cli({"tip", "set", "109", "off"});
    EXPECT_THAT(fails({"tip", "default", "109"}), testing::HasSubstr("Soll die Aktion ausgeführt werden ? [Nein; mit --yes wird Ja geantwortet]"));
    EXPECT_EQ(show(ScreenSaver)["entries"][0]["shown"], "off");
    EXPECT_EQ(cli({"--yes", "tip", "default", "109"}).code, 0);
    EXPECT_EQ(show(ScreenSaver)["entries"][0]["shown"], "on");

    EXPECT_EQ(cli({"--yes", "tip", "delete", "109"}).err, "Das Löschen von Registrywerten ist in den Einstellungen nicht erlaubt\n");
    EXPECT_EQ(cli({"registry", "write", "HKCU\\Software\\Brenvik\\Einstellungen\\LöschenAktiv", "REG_SZ", "True"}).code, 0);
    EXPECT_EQ(cli({"tip", "delete", "109"}).code, 1);
    EXPECT_EQ(cli({"--yes", "tip", "delete", "109"}).code, 0);
    EXPECT_EQ(show(ScreenSaver)["entries"][0]["status"], "[Registry Wert nicht vorhanden]");
    EXPECT_EQ(cli({"tip", "set", "109", "on"}).code, 0);
    const std::string last = show(ScreenSaver)["entries"][1]["name"];
    cli({"--yes", "registry", "delete", "HKCU\\Control Panel\\Desktop\\" + last});
    EXPECT_EQ(cli({"--yes", "tip", "delete", "109"}).err, "Der Tipp kann nicht gelöscht werden. Eintrag 2 (" + last + "): [Registry Wert nicht vorhanden]\n");
}

// Saving passes an empty text over, so that the command must not say it has saved one.
TEST_F(Tip, AnEmptyTextIsNotSaved) {
    const std::string why = "Ein leerer Text wird nicht gespeichert (Eintrag 1): der Wert bliebe, wie er ist. In Textfeldern löscht ihn der Text \"<delkey>\".\n";
    const auto tip = show(TextTip)["entries"][0];
    const std::string path = tip["root"].get<std::string>() + "\\" + tip["key"].get<std::string>() + "\\" + tip["name"].get<std::string>();
    EXPECT_EQ(cli({"tip", "set", std::to_string(TextTip), "etwas"}).code, 0);
    for (const std::vector<std::string>& command : {std::vector<std::string>{"tip", "set", std::to_string(TextTip), ""}, {"tip", "set", std::to_string(TextTip), "", "--dry-run"}}) {
        const CommandRun e = cli(command);
        EXPECT_EQ(e.code, 1);
        EXPECT_EQ(e.out + e.err, why);
    }
    EXPECT_EQ(cli({"export", "reg", std::to_string(TextTip), "--set", std::to_string(TextTip) + "="}).err, "Tipp " + std::to_string(TextTip) + ": " + why);
    EXPECT_EQ(cli({"registry", "read", path}).out, "etwas\n");
    EXPECT_EQ(cli({"tip", "set", std::to_string(TextTip), "<delkey>"}).code, 0);
    EXPECT_EQ(cli({"registry", "read", path}).code, 1);
    EXPECT_NE(cli({"tip", "set", "--help"}).out.find("<delkey>"), std::string::npos);
}

// Each step: arguments, exit code, last line on stderr.
struct Step {
    std::vector<std::string> arguments;
    int code;
    const char* err;
};

TEST_F(Tip, ContextMenuEntriesAreMadeChangedAndDeleted) {
    const std::string savedMessage = "Änderungen wurde in der Registry gespeichert !!!\n";
    const auto rows = [this] { return show(607)["entries"][0]["rows"].dump(); };
    const auto row = [](const char* name, const char* text, const char* command) { return nlohmann::json({{"name", name}, {"text", text}, {"command", command}}).dump(); };
    const std::string find = row("find", "Suchen...", "%SystemRoot%\\Explorer.exe");
    EXPECT_EQ(rows(), "[" + find + "]");
    EXPECT_EQ(show(607)["entries"][0]["found"], true);
    EXPECT_EQ(cli({"tip", "new", "607", "Probe", "--command", "cmd.exe /k \"%1\"", "--text", "Öffnen"}).err, savedMessage);
    EXPECT_EQ(rows(), "[" + find + "," + row("Probe", "Öffnen", "cmd.exe /k \"%1\"") + "]");
    EXPECT_EQ(cli({"tip", "edit", "607", "PROBE", "--text", ""}).err, savedMessage);
    EXPECT_EQ(rows(), "[" + find + "," + row("Probe", "", "cmd.exe /k \"%1\"") + "]");
    const Step nothingHappens[] = {
        {{"tip", "new", "607", "probe", "--command", "x"}, 1, "Der Eintrag \"probe\" ist schon vorhanden. Soll er überschrieben werden ? [Nein; mit --yes wird Ja geantwortet]\n"},
        {{"tip", "new", "607", "a\\b", "--command", "x"}, 1, "Ein Schlüsselname darf nicht leer sein und das Zeichen \"\\\" nicht enthalten.\n"},
        {{"tip", "new", "607", "  ", "--command", "x"}, 1, "Ein Schlüsselname darf nicht leer sein und das Zeichen \"\\\" nicht enthalten.\n"},
        {{"tip", "edit", "607", "Probe", "--command", ""}, 1, "Der Eintrag braucht einen Schlüsselnamen und einen Befehl\n"},
        {{"tip", "edit", "607", "fehlt", "--text", "x"}, 1, "Den Eintrag \"fehlt\" gibt es nicht\n"},
        {{"tip", "new", "109", "x", "--command", "y"}, 1, "Der Tipp ist kein Kontextmenü\n"},
        {{"tip", "set", "607", "x"}, 1, "Die Zeilen dieser Liste sind Schlüssel und haben keinen Wert, der gesetzt werden kann\n"},
        {{"tip", "default", "607"}, 1, "Der Tipp hat keinen Standardwert, oder er darf nicht geschrieben werden\n"},
        {{"tip", "delete", "607"}, 2, "Mit --row gehört der Name jeder Zeile dazu, die gelöscht werden soll\n"},
        {{"tip", "delete", "607", "--row", "Probe", "--row", "fehlt"}, 1, "Den Eintrag \"fehlt\" gibt es nicht\n"},
        {{"tip", "delete", "607", "--row", "Probe"}, 1, "Achtung! Alle markierten Einträge werden gelöscht..Sind Sie sicher? [Nein; mit --yes wird Ja geantwortet]\n"},
    };
    const std::string before = rows();
    for (const Step& s : nothingHappens) {
        const CommandRun e = cli(s.arguments);
        EXPECT_EQ(e.code, s.code);
        EXPECT_EQ(e.err, s.err);
        EXPECT_EQ(rows(), before);
    }
    EXPECT_EQ(cli({"--yes", "tip", "delete", "607", "--row", "Probe"}).code, 0);
    EXPECT_EQ(rows(), "[" + find + "]");
}

TEST_F(Tip, TheBootMenuIsOverwrittenOrGetsANewEntry) {
    cli({"tip", "show", "2201"});
    const auto file = dir / "heim/drive_c/boot.ini";
    const std::string before = bytesOf(file), windows = "multi(0)disk(0)rdisk(0)partition(1)\\WINDOWS=", xp = "\"Microsoft Windows XP Professional\" ";
    const std::string old = windows + xp + "/noexecute=optin /fastdetect", sos = windows + xp + "/SOS";
    EXPECT_EQ(cli({"--yes", "tip", "set", "2201", "/SOS", "--dry-run"}).out, file.string() + "\n   -" + old + "\n   +" + sos + "\n");
    EXPECT_EQ(cli({"tip", "set", "2201", "/SOS"}).code, 1);
    EXPECT_EQ(cli({"tip", "set", "2201", "/SOS", "--name", "Microsoft Windows XP Professional"}).err, "Name schon im Bootmenü vorhanden, bitte geben Sie einen anderen Namen an\n");
    EXPECT_EQ(bytesOf(file), before);
    EXPECT_EQ(cli({"tip", "set", "2201", "/SOS", "--name", "Mit Treibern"}).code, 0);
    EXPECT_EQ(bytesOf(file), before + windows + "\"Mit Treibern\" /SOS\r\n");
    EXPECT_EQ(cli({"--yes", "tip", "set", "2201", "Mit Treibern /PCILOCK"}).code, 0);
    EXPECT_EQ(bytesOf(file), before + windows + "\"Mit Treibern\" /PCILOCK\r\n");
    EXPECT_EQ(cli({"tip", "set", "2201", "/SOS", "--name", "Mit \"Treibern\""}).err.substr(0, 40), "Der Name \"Mit \"Treibern\"\" ist nicht mög");
    EXPECT_EQ(bytesOf(file), before + windows + "\"Mit Treibern\" /PCILOCK\r\n");
    EXPECT_EQ(cli({"tip", "delete", "2201"}).err, "Einträge des Bootmenüs werden hier nicht gelöscht\n");
    std::filesystem::remove(file);
    EXPECT_EQ(cli({"tip", "set", "2201", "/SOS"}).err, "Es ist kein Eintrag des Bootmenüs da, der gesetzt werden könnte: [Datei: C:\\boot.ini nicht vorhanden]\n");
}

TEST_F(Tip, ListsInAllViews) {
    const std::string everyTip = cli({"tip", "list"}).out;
    EXPECT_NE(everyTip.find("109  Bildschirmschoner ein- und ausschalten\n"), std::string::npos);
    const std::string abc = cli({"tip", "list", "--view", "abc"}).out;
    EXPECT_NE(abc.substr(0, 8), "Desktop\n");
    EXPECT_GT(std::count(abc.begin(), abc.end(), '\n'), 200);
    EXPECT_EQ(cli({"tip", "list", "--view", "win95"}).out.find("Bildschirmschoner ein- und"), std::string::npos);
    const auto neu = parsed({"tip", "list", "--view", "neu"});
    EXPECT_EQ(neu[0]["text"], "1.0.0");
    EXPECT_GT(neu.size(), 3u);
    EXPECT_NE(cli({"tip", "show", "3529"}).out.find("\nWirkt nach einer neuen Anmeldung\n"), std::string::npos);
    EXPECT_NE(cli({"tip", "show", "1801"}).out.find("\nWirkt nach einer neuen Anmeldung, spätestens nach einem Neustart\n"), std::string::npos);
    const std::string values = cli({"tip", "list", "--values"}).out;
    EXPECT_NE(values.find("ScreenSaveActive: on  [Registry Wert vorhanden]\n"), std::string::npos);
}

}  // namespace
}  // namespace brenvik::test
