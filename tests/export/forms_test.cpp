// The forms beside the told ones: checked REG files, command files, Registry.pol, ADMX.
#include "ExportFixture.h"
#include "export/AdmxTemplate.h"
#include "export/CheckedFormat.h"
#include "export/PolicyFile.h"
#include "export/RegAddScript.h"

namespace brenvik::test {
namespace {

ExportRecord sample() {
    auto unset = listValue("K", 1, "unberührt", "x"), other = listValue("K", 4, "roh", "1");
    unset.gathered.touched = false;   // what a panel shows for a value that is not there
    other.gathered.wert = RawValue{regtype::Sz, {'1', 0}};   // stands there without its end, and of another type
    return exportValues({listTip(7, "Titel", {listValue("K", 1, "a\"", "C:\\x\"y%z%"), listValue("K\\", 2, "", "%TEMP%"), unset,
                                                listValue("L", 4, "d", "-2", "HKEY_LOCAL_MACHINE"), listValue("L", 1, "weg", "<delkey>", "HKEY_LOCAL_MACHINE"),
                                                listValue("K", 7, "m", std::string("A\0B", 3)), other})});
}

TEST(CheckedFormat, TheWholeFile) {
    EXPECT_EQ(ExportFixture::lines(utf8FromUtf16Le(CheckedFormat(sample(), RegTextWriter::Format::Version5, {"; Kopf"}).bytes).substr(3)),
              "Windows Registry Editor Version 5.00\n; Kopf\n\n; [7] - Titel\n\n[HKEY_CURRENT_USER\\K]\n\"a\\\"\"=\"C:\\\\x\\\"y%z%\"\n"
              "@=hex(2):25,00,54,00,45,00,4d,00,50,00,25,00,00,00\n\n[HKEY_LOCAL_MACHINE\\L]\n\"d\"=dword:fffffffe\n\"weg\"=-\n\n"
              "[HKEY_CURRENT_USER\\K]\n\"m\"=hex(7):41,00,00,00,42,00,00,00,00,00\n\"roh\"=hex(1):31,00\n\n");
}

// Names with line ends, which importers read differently, and what Windows-1252 lacks: named and not in the file.
TEST(CheckedFormat, LeavesOutWhatItCannotSay) {
    const ExportRecord item = exportValues({listTip(1, "T\r\n[-HKEY_CURRENT_USER\\K]", {listValue("K", 1, "a", "Ω"), listValue("K\\Ω", 1, "b", "1"), listValue("K", 1, "c\r\n@=\"x", "1"),
                                                           listValue("K]\n[-HKEY_CURRENT_USER\\Software", 4, "d", "<delkey>"), listValue("K", 1, "gut", "x\r\ny")})});
    const std::vector<std::string> names{"HKEY_CURRENT_USER\\K\\c\r\n@=\"x", "HKEY_CURRENT_USER\\K]\n[-HKEY_CURRENT_USER\\Software\\d"},
        more{names[0], names[1], "HKEY_CURRENT_USER\\K\\a", "HKEY_CURRENT_USER\\K\\Ω\\b"};
    const CheckedFile fresh = CheckedFormat(item, RegTextWriter::Format::Version5, {}), old = CheckedFormat(item, RegTextWriter::Format::Regedit4, {});
    EXPECT_EQ(fresh.missing, names);
    EXPECT_EQ(old.missing, more);
    EXPECT_EQ(ExportFixture::lines(old.bytes), "REGEDIT4\n\n; [1] - T  [-HKEY_CURRENT_USER\\K]\n\n[HKEY_CURRENT_USER\\K]\n\"gut\"=hex(1):78,0d,0a,79,00\n\n");
}

TEST(RegFileExport, ATextThatIsNoValueRefusesTheFile) {
    ExportFixture p({{.Index = 4, .Überschrift = "Hex", .Ausgabeart = 2}});
    p.put("HKCU\\Software\\Probe\\Wert", 4, "26");
    p.show("Hex");
    p.engine->input().userText(0, "keine Zahl");
    p.ctx->einstellungen.RegFileChecked = true;
    p.file("x.reg");
    p.port.expectBox("Tipp 4, Hex: Der Wert \"keine Zahl\" kann nicht gespeichert werden");
    p.exports.RegFileSave(false);
    EXPECT_FALSE(std::filesystem::exists(p.dir / "x.reg"));
}

TEST(CheckedFormat, NamesWhatArrivesChanged) {
    const struct {
        const char *line, *paths;
    } cases[] = {{"\"a\"=\"1\"", ""}, {"\"a\"=\"2\"", "K\\a"}, {"\"a\"=dword:1", "K\\a"}, {"", "K\\a"}, {"\"a\"=\"1\"\r\n\"b\"=\"2\"", "K\\b"}, {"\"a\"=hex(2):41,00,4200", "K\\a"},
                 {"\"a\"=\"C:\\x\"", "K\\a"}, {"\"A\"=\"1\"\r\n\"b\"=-", "K\\b"}, {"\"a\"=\"1\"\r\n[-HKEY_CURRENT_USER\\k]", "K\\a k\\"},
                 {"\"a\"=\"1\"\r\n[-HKEY_CURRENT_USER\\L]", "L\\"}, {"\"a\"=\"1\"\r\n[HKEY_CURRENT_USER\\K\\M]", "K\\M\\"}, {"\"a\"=\"1\"\r\n[HKEY_CURRENT_USER]", ""}};
    const ExportRecord wanted = exportValues({listTip(1, "T", {listValue("K", 1, "a", "1")})});
    for (const auto& c : cases) {
        std::string paths;
        for (const std::string& path : differences("REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\K]\r\n" + std::string(c.line) + "\r\n", wanted))
            paths += (paths.empty() ? "" : " ") + path.substr(std::string("HKEY_CURRENT_USER\\").size());
        EXPECT_EQ(paths, c.paths) << c.line;
    }
}

TEST(RegAddScript, Lines) {
    const struct {
        const char *text, *argument;
    } cases[] = {{"a b", "\"a b\""},         {"C:\\x\\", "\"C:\\x\\\\\""},  {"100%", "\"100%%\""},  {"a&b^c", "\"a&b^c\""}, {"", "\"\""},
                 {"\"q\" & x", "^\"\\^\"q\\^\" ^& x^\""}, {"a\\\"", "^\"a\\\\\\^\"^\""}};
    for (const auto& c : cases) EXPECT_EQ(cmdArgument(c.text), c.argument) << c.text;
    const RegAddScript refused = regAddScript(sample(), {});
    EXPECT_EQ(refused.obstacles, (std::vector<std::string>{"HKEY_CURRENT_USER\\K\\roh"}));   // no line can leave its end away
    EXPECT_EQ(refused.bytes, "");
    // A query for the unnamed value answers 0 as long as its key is there.
    EXPECT_NE(ExportFixture::lines(regAddScript(exportValues({listTip(1, "T", {listValue("K", 1, "", "<delkey>")})}), {}).bytes)
                  .find("\nreg delete \"HKCU\\Software\\Brenvik-Kopie\" /f >nul 2>nul\nreg delete \"HKCU\\K\" /ve /f >nul 2>nul\n"
                        "if errorlevel 1 reg copy \"HKCU\\K\" \"HKCU\\Software\\Brenvik-Kopie\" /f >nul 2>nul\n"
                        "reg delete \"HKCU\\Software\\Brenvik-Kopie\" /ve /f >nul 2>nul\nif not errorlevel 1 set \"BVK_FEHLER=1\"\n"
                        "reg delete \"HKCU\\Software\\Brenvik-Kopie\" /f >nul 2>nul\n"), std::string::npos);
    ExportRecord item = sample();
    item.tipps[0].values.pop_back();
    item.tipps[0].Titel = "Größe & mehr";
    EXPECT_EQ(ExportFixture::lines(utf8FromAnsi(regAddScript(item, {"; Kopf 100%"}).bytes)),
              "@echo off\nsetlocal DisableDelayedExpansion\nset \"BVK_FEHLER=0\"\nfor /f \"tokens=2 delims=:.\" %%C in ('chcp') do set \"BVK_CP=%%C\"\nchcp 1252 >nul\n"
              "rem Kopf 100\x20\n\nrem [7] - Größe   mehr\n"
              "reg add \"HKCU\\K\" /v ^\"a\\^\"^\" /t REG_SZ /d ^\"C:\\x\\^\"y%%z%%^\" /f >nul\nif errorlevel 1 set \"BVK_FEHLER=1\"\n"
              "reg add \"HKCU\\K\" /ve /t REG_EXPAND_SZ /d \"%%TEMP%%\" /f >nul\nif errorlevel 1 set \"BVK_FEHLER=1\"\n"
              "reg add \"HKLM\\L\" /v \"d\" /t REG_DWORD /d \"4294967294\" /f >nul\nif errorlevel 1 set \"BVK_FEHLER=1\"\n"
              "reg delete \"HKLM\\L\" /v \"weg\" /f >nul 2>nul\nreg query \"HKLM\\L\" /v \"weg\" >nul 2>nul\nif not errorlevel 1 set \"BVK_FEHLER=1\"\n"
              "reg add \"HKCU\\K\" /v \"m\" /t REG_MULTI_SZ /d \"A\\0B\" /f >nul\nif errorlevel 1 set \"BVK_FEHLER=1\"\n\nchcp %BVK_CP% >nul\n"
              "if not \"%BVK_FEHLER%\"==\"0\" echo Nicht alle Werte wurden geschrieben.\nexit /b %BVK_FEHLER%\n");
}

TEST(PolicyFile, EveryRecordByteForByte) {
    const auto wide = [](const std::string& text) { return utf16LeFromUtf8(text); };
    using namespace std::string_literals;
    const PolicyFile machine = policyFile(sample(), Root::LocalMachine);
    EXPECT_EQ(machine.bytes, "PReg\1\0\0\0"s + wide("[L\0;d\0;"s) + "\4\0\0\0"s + wide(";") + "\4\0\0\0"s + wide(";") + "\xFE\xFF\xFF\xFF"s + wide("]") + wide("[L\0;**del.weg\0;"s) +
                                 "\1\0\0\0"s + wide(";") + "\4\0\0\0"s + wide("; \0]"s));
    EXPECT_EQ(machine.otherRoots.size(), 4u);
    for (const std::string& name : {std::string("**DelVals"), std::string("a\nb"), std::string(260, 'x')})
        EXPECT_EQ(policyFile(exportValues({listTip(1, "T", {listValue("K", 1, name, "x")})}), Root::CurrentUser).obstacles.size(), 1u) << name;
}

TEST(AdmxTemplate, NamesItCannotHoldAreLeftOut) {
    std::vector<TipListValue> values;
    for (const std::string& name : {std::string("gut & <so>"), std::string("a\nb"), std::string("a\tb"), std::string("\x01"), std::string("a\\b"), std::string("**del.x"), std::string(256, 'x')})
        values.push_back(listValue("K", 1, name, "x"));
    values.push_back(listValue("K\nL", 1, "a", "x"));
    const AdmxTemplate files = admxTemplate({listTip(1, "T", values)}, {}, "1");
    EXPECT_EQ(files.policies, 1u);
    EXPECT_EQ(files.leftOut.size(), values.size() - 1);
    EXPECT_NE(files.admx.find(" valueName=\"gut &amp; &lt;so&gt;\""), std::string::npos);
}

}  // namespace
}  // namespace brenvik::test
