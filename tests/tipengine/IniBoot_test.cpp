// Tips whose values lie in files: whole files before and after.
#include "frame/files/FileSystem.h"
#include "tipengine/EngineFixture.h"

namespace brenvik::test {
namespace {

Zeile iniRow() {
    return {.Überschrift = "INI", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "NullPort", .Standardwert = "None", .INITipp = true,
            .Hauptschlüssel = nullptr, .Schlüssel = "windows", .SchlüsselNT = "win.ini"};
}

TEST(IniTip, ChangesNothingButItsLine) {
    EngineFixture p({iniRow()});
    const auto file = p.dir.put("drive_c/windows/WIN.INI", "; Kommentar \xE4\r\n[Windows]\r\n  nullport = alt  \r\nload=x\r\n");
    p.show("INI");
    EXPECT_EQ(p.panel().text, "alt");
    EXPECT_EQ(p.panel().status.text, "[Wert in win.ini vorhanden]");
    p.save();   // nothing touched: not one byte differs, and no message comes
    EXPECT_EQ(bytesOf(file), "; Kommentar \xE4\r\n[Windows]\r\n  nullport = alt  \r\nload=x\r\n");
    p.engine->input().userText(0, "Grün");
    p.save();
    const std::string after = bytesOf(file);
    EXPECT_EQ(after.substr(0, 24), "; Kommentar \xE4\r\n[Windows]");
    EXPECT_NE(after.find("=Gr\xFCn\r\nload=x\r\n"), std::string::npos) << after;
    EXPECT_EQ(p.panel().text, "Grün");
    p.port.expectBox("Soll der Eintrag wirklich gelöscht werden ?", Answer::Yes);
    p.engine->clickRegDel();
    EXPECT_EQ(bytesOf(file), "; Kommentar \xE4\r\n[Windows]\r\nload=x\r\n");
    EXPECT_EQ(p.panel().status.text, "[Wert in win.ini nicht vorhanden]");
}

TEST(IniTip, WhatDoesNotFitOrCameFromOthersStaysAsItIs) {
    Zeile first = iniRow();
    first.AnzahlWerte = 1;
    Zeile second{.Index = 2, .Ausgabeart = 1, .Datentyp = 1, .Wertname = "Zweiter", .WertAus = "<delkey>", .HauptIndex = 1, .INITipp = true, .Hauptschlüssel = nullptr,
                 .Schlüssel = "windows", .SchlüsselNT = "win.ini"};
    EngineFixture p({first, second});
    const struct {
        std::string present, input;
        const char* box;
        bool locked;
    } cases[] = {{"a", "\xE6\x97\xA5", "die in einer INI-Datei nicht möglich sind", false},
                  {"a", std::string(256, 'x'), "Der Text hat 256 Zeichen", false},
                  {std::string(256, 'x'), "kurz", "länger als 255 Zeichen", true}};
    for (const auto& given : cases) {
        const std::string before = "[windows]\r\nNullPort=" + given.present + "\r\n";
        p.dir.put("drive_c/windows/win.ini", before);
        p.show("INI");
        EXPECT_EQ(p.panel().readOnly, given.locked);
        EXPECT_EQ(p.panel().hint.empty(), !given.locked);
        p.engine->input().userText(0, given.input);
        p.port.expectBox(given.box);
        p.save();
        EXPECT_EQ(bytesOf(p.dir / "drive_c/windows/win.ini"), before);
        p.ctx->blnGeaendert = false;
    }
    const auto file = p.dir.put("drive_c/windows/win.ini", "[windows]\r\nNullPort=a\r\n");
    p.show("INI");
    p.engine->input().userText(0, "b");
    p.dir.put("drive_c/windows/win.ini", "[windows]\r\nNullPort=a\r\nZweiter=von anderen\r\n");
    p.save();
    EXPECT_EQ(bytesOf(file), "[windows]\r\nNullPort=b\r\nZweiter=von anderen\r\n");
}

// The column of the other key names the file here, in panels for several entries too.
TEST(IniTip, APanelOfSeveralEntriesUsesTheirSectionAndFile) {
    const struct {
        std::int16_t art;
        const char *present, *shown, *input, *after;
    } cases[] = {{art::Drive, "C:\\a", "C:\\a", "D:\\b", "D:\\b"}, {art::Farbe, "1 2 3", "1 2 3", "4 5 6", "4 5 6"}, {art::Liste, "no", "on", "off", nullptr}};
    for (const auto& given : cases)
        for (const std::int16_t system : {6, 2}) {
            SCOPED_TRACE(std::to_string(given.art) + " auf " + std::to_string(system));
            Zeile first = iniRow();
            first.Ausgabeart = given.art;
            first.AnzahlWerte = 1;
            first.Schlüssel = "don't load";
            first.SchlüsselNT = "control.ini";
            first.Standardwert = nullptr;
            Zeile second = first;
            second.Index = 2;
            second.HauptIndex = 1;
            second.Überschrift = nullptr;
            second.Wertname = "main.cpl";
            EngineFixture p({first, second});
            p.ctx->intBS = system;
            const auto file = p.dir.put("drive_c/WINDOWS/control.ini", std::string("[don't load]\r\nNullPort=\r\nmain.cpl=") + given.present + "\r\n");
            p.show("INI");
            EXPECT_EQ(p.engine->shownText(2), given.shown);
            EXPECT_EQ(p.engine->setEntryFromText(2, given.input), "");
            p.save();
            EXPECT_EQ(bytesOf(file), "[don't load]\r\nNullPort=\r\n" + (given.after != nullptr ? std::string("main.cpl=") + given.after + "\r\n" : std::string()));
        }
}

TEST(IniTip, AMissingFileIsLookedForAndNotInvented) {
    EngineFixture p({iniRow()});
    p.port.expectBox("Die Datei win.ini konnte nicht gefunden werden", Answer::No);
    p.show("INI");
    EXPECT_EQ(p.panel().status.text, "[Datei: win.ini nicht vorhanden]");
    EXPECT_EQ(p.windows().fraInfo, "Datei nicht gefunden");
    EXPECT_FALSE(p.windows().KeySave);
    const auto found = p.dir.put("anderswo/meine.ini", "[windows]\r\nNullPort=da\r\n");
    p.port.expectBox("Die Datei win.ini konnte nicht gefunden werden", Answer::Yes).expectFile(found.string());
    p.engine->reloadTip();
    EXPECT_EQ(p.panel().text, "da");
}

TEST(IniTip, TheFolderOfTheFileIsTheOneNamed) {
    const struct {
        const char* folder;
        std::int16_t system;
        const char* status;
    } cases[] = {
        {nullptr, 6, "[Wert in win.ini vorhanden]"},
        {"C:\\windows", 6, "[Wert in C:\\windows\\win.ini vorhanden]"},
        {"%windir%", 6, "[Wert in C:\\WINDOWS\\win.ini vorhanden]"},
        {"%TEMP%", 6, "[Datei: C:\\Temp\\win.ini nicht vorhanden]"},
        {"%TEMP%", 2, "[Wert in C:\\WINDOWS\\win.ini vorhanden]"},   // always the Windows folder there
    };
    for (const auto& given : cases) {
        Zeile zeile = iniRow();
        zeile.Werteliste = given.folder;
        EngineFixture p({zeile});
        p.ctx->intBS = given.system;
        p.platform.variables["TEMP"] = "C:\\Temp";
        p.dir.put("drive_c/WINDOWS/win.ini", "[windows]\r\nNullPort=x\r\n");
        p.engine->inspectTip(1);
        EXPECT_EQ(p.panel().status.text, given.status);
    }
}

constexpr const char* Boot =
    "[boot loader]\r\ntimeout=30\r\n[operating systems]\r\n"
    "multi(0)disk(0)rdisk(0)partition(1)\\WINDOWS=\"Microsoft Windows XP\" /noexecute=optin /FASTDETECT\r\n"
    "C:\\CMDCONS\\BOOTSECT.DAT=\"Wiederherstellung\" /cmdcons\r\nkaputt\r\n";

class BootTip : public ::testing::Test {
protected:
    BootTip()
        : p({{.Überschrift = "Boot", .Ausgabeart = 9, .Datentyp = 1, .Wertname = nullptr, .Anzeigetext = "/SOS#/NOGUIBOOT#/MAXMEM=#/fastdetect",
              .Werteliste = "C:", .INITipp = true, .Hauptschlüssel = nullptr, .Schlüssel = "operating systems", .SchlüsselNT = "boot.ini"}}),
          file(p.dir.put("drive_c/boot.ini", Boot)) {
        p.port.onWindow("frmBVK_BootINI", [this](WindowRequest& w) {
            auto& d = dynamic_cast<BootINIRequest&>(w);
            d.reply = answer;
            if (answer == BootINIRequest::Reply::Name) d.txtBootWert = name;
        });
        p.show("Boot");
    }
    std::string replaced(std::string from, const std::string& what, const std::string& by) {
        return from.replace(from.find(what), what.size(), by);
    }
    EngineFixture p;
    std::filesystem::path file;
    BootINIRequest::Reply answer = BootINIRequest::Reply::Overwrite;
    std::string name = "Neuer Eintrag";
};

TEST_F(BootTip, ShowsTheSwitchesOfTheEntry) {
    EXPECT_EQ(p.panel().selection, (std::vector<std::string>{"Microsoft Windows XP", "Wiederherstellung", "Fehlerhafter Eintrag !!!"}));
    EXPECT_FALSE(p.panel().txtBINIAktiv);
    EXPECT_EQ(p.panel().txtBINI, "/noexecute=optin /FASTDETECT");
    std::string boxes;
    for (const auto& s : p.panel().schalter) boxes += s.ticked ? '1' : '0';
    EXPECT_EQ(boxes, "0001");
    p.engine->input().userChoose(0, 1);
    EXPECT_EQ(p.panel().txtBINI, "Wiederherstellung");
    EXPECT_FALSE(p.windows().KeyDel);
}

TEST_F(BootTip, OverwritingAndBackup) {
    p.engine->input().userSwitch(0, 0, true);
    p.engine->input().userSwitch(0, 2, true);
    p.engine->input().userSwitchText(0, 2, "128");
    p.save();
    EXPECT_EQ(bytesOf(file), replaced(Boot, "/noexecute=optin /FASTDETECT", "/noexecute=optin /SOS /MAXMEM=128 /fastdetect"));
    EXPECT_EQ(bytesOf(p.dir / "drive_c/boot.ini.bvk"), Boot);
}

// The title keeps every byte, wherever blanks, quotes and slashes stand.
TEST_F(BootTip, ATitleOfAnyFormStays) {
    const struct {
        const char *line, *titel, *after;
    } cases[] = {
        {"a=\"XP\" /fastdetect", "XP", "a=\"XP\" /SOS /fastdetect"},
        {"a=\"XP\"/PAE", "XP", "a=\"XP\" /PAE /SOS"},
        {"a=\"XP\"  /PAE", "XP", "a=\"XP\" /PAE /SOS"},
        {"a=\"XP w/ SP2\" /PAE", "XP w/ SP2", "a=\"XP w/ SP2\" /PAE /SOS"},
        {"a=\"XP w/ SP2\"", "XP w/ SP2", "a=\"XP w/ SP2\" /SOS"},
        {"a=XP /PAE", "XP", "a=XP /PAE /SOS"},
        {"a=XP/PAE", "X", "a=XP /PAE /SOS"},
        {"a=", "Fehlerhafter Eintrag !!!", "a= /SOS"},
    };
    for (const auto& given : cases) {
        SCOPED_TRACE(given.line);
        p.dir.put("drive_c/boot.ini", std::string("[operating systems]\r\n") + given.line + "\r\n");
        p.engine->reloadTip();
        EXPECT_EQ(p.panel().selection, std::vector<std::string>{given.titel});
        p.engine->input().userSwitch(0, 0, true);
        p.save();
        EXPECT_EQ(bytesOf(file), std::string("[operating systems]\r\n") + given.after + "\r\n");
    }
}

TEST_F(BootTip, WhatWasDroppedDoesNotClingToTheNextEntry) {
    p.dir.put("drive_c/boot.ini", replaced(Boot, "/cmdcons", "  /CMDCONS   /X"));
    p.engine->reloadTip();
    const std::string before = bytesOf(file);
    p.engine->input().userSwitch(0, 0, true);
    p.port.expectBox("Sie haben Einstellungen geändert", Answer::No);
    p.engine->input().userChoose(0, 1);
    p.save();
    EXPECT_EQ(bytesOf(file), before);
}

TEST_F(BootTip, ANewEntryThatWasNotWrittenDoesNotComeLater) {
    answer = BootINIRequest::Reply::Name;
    setReadOnly(file, true);
    p.engine->input().userSwitch(0, 0, true);
    p.port.expectBox("ist schreibgeschützt", Answer::No);
    p.save();
    setReadOnly(file, false);
    EXPECT_EQ(p.ctx->intBootEintrag, 1);
    name = "Anderer Name";
    p.save();   // what was given up does not come along
    const std::string with = std::string(Boot) + "multi(0)disk(0)rdisk(0)partition(1)\\WINDOWS=\"Anderer Name\" /noexecute=optin /SOS /fastdetect\r\n";
    EXPECT_EQ(bytesOf(file), with);
    p.dir.put("drive_c/boot.ini", Boot);
    p.engine->reloadTip();
    setReadOnly(file, true);
    p.engine->input().userSwitch(0, 0, true);
    p.port.expectBox("ist schreibgeschützt", Answer::No);
    p.save();
    setReadOnly(file, false);
    p.port.expectBox("Sie haben Einstellungen geändert", Answer::No);
    p.engine->input().userChoose(0, 1);
    answer = BootINIRequest::Reply::Overwrite;
    p.save();
    EXPECT_EQ(bytesOf(file), Boot);
}

TEST_F(BootTip, WhatSomebodyElseWroteMeanwhileStays) {
    const std::string others = std::string(Boot) + "D:\\=\"Anderes System\"\r\n";
    p.dir.put("drive_c/boot.ini", others);
    p.engine->input().userSwitch(0, 0, true);
    p.port.expectBox("inzwischen von einem anderen Programm geändert");
    p.save();
    EXPECT_EQ(bytesOf(file), others);
    EXPECT_TRUE(p.ctx->blnGeaendert);
    p.port.expectBox("Sie haben Einstellungen geändert", Answer::Yes).expectBox("inzwischen von einem anderen Programm geändert");
    p.engine->input().userChoose(0, 1);
    EXPECT_EQ(p.panel().chosen, 0);   // nor is the entry left
    EXPECT_TRUE(p.panel().schalter.at(0).ticked && p.ctx->blnGeaendert);
    EXPECT_EQ(bytesOf(file), others);
}

TEST_F(BootTip, ANameThatDoesNotFitTheFileIsRefused) {
    const struct {
        const char *name, *memory, *box;
    } cases[] = {{"\xE6\x97\xA5", "64", "die in einer INI-Datei nicht möglich sind"},
                  {"XP \"alt\"", "64", "kein Anführungszeichen"},
                  {"  ", "64", "darf nicht leer sein"},
                  {"XP", "6 4", "\"6 4\" ist für /MAXMEM= nicht möglich"},
                  {"XP", "64/SOS", "\"64/SOS\" ist für /MAXMEM= nicht möglich"}};
    EXPECT_NE(p.engine->setEntryFromText(1, "/SOS /FREMD"), "");
    answer = BootINIRequest::Reply::Name;
    p.engine->input().userSwitch(0, 2, true);
    for (const auto& given : cases) {
        name = given.name;
        p.engine->input().userSwitchText(0, 2, given.memory);
        p.port.expectBox(given.box);
        p.save();
        EXPECT_EQ(bytesOf(file), Boot);
        EXPECT_EQ(p.ctx->udtBootEintraege.size(), 4u);
    }
}

TEST_F(BootTip, AnAbortWritesNothing) {
    answer = BootINIRequest::Reply::Abort;
    p.engine->input().userSwitch(0, 0, true);
    p.save();
    p.port.expectBox("Sie haben Einstellungen geändert", Answer::Yes);
    p.engine->input().userChoose(0, 1);                 // nor is the input left behind
    EXPECT_EQ(p.panel().chosen, 0);
    EXPECT_TRUE(p.panel().schalter[0].ticked);
    EXPECT_EQ(bytesOf(file), Boot);
    EXPECT_TRUE(p.ctx->blnGeaendert);
}

}  // namespace
}  // namespace brenvik::test
