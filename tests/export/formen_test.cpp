// The forms beside the told ones: checked REG files, command files, Registry.pol, ADMX.
#include "Exportprobe.h"
#include "export/AdmxVorlage.h"
#include "export/GeprueftesFormat.h"
#include "export/RegAddSkript.h"
#include "export/Richtliniendatei.h"

namespace brenvik::test {
namespace {

Exportsatz sample() {
    auto unset = listenwert("K", 1, "unberührt", "x"), other = listenwert("K", 4, "roh", "1");
    unset.gesammelt.beruehrt = false;   // what a panel shows for a value that is not there
    other.gesammelt.wert = RawValue{regtype::Sz, {'1', 0}};   // stands there without its end, and of another type
    return exportwerte({listentipp(7, "Titel", {listenwert("K", 1, "a\"", "C:\\x\"y%z%"), listenwert("K\\", 2, "", "%TEMP%"), unset,
                                                listenwert("L", 4, "d", "-2", "HKEY_LOCAL_MACHINE"), listenwert("L", 1, "weg", "<delkey>", "HKEY_LOCAL_MACHINE"),
                                                listenwert("K", 7, "m", std::string("A\0B", 3)), other})});
}

TEST(GeprueftesFormat, GanzeDatei) {
    EXPECT_EQ(Exportprobe::lines(utf8FromUtf16Le(GeprueftesFormat(sample(), RegTextWriter::Format::Version5, {"; Kopf"}).bytes).substr(3)),
              "Windows Registry Editor Version 5.00\n; Kopf\n\n; [7] - Titel\n\n[HKEY_CURRENT_USER\\K]\n\"a\\\"\"=\"C:\\\\x\\\"y%z%\"\n"
              "@=hex(2):25,00,54,00,45,00,4d,00,50,00,25,00,00,00\n\n[HKEY_LOCAL_MACHINE\\L]\n\"d\"=dword:fffffffe\n\"weg\"=-\n\n"
              "[HKEY_CURRENT_USER\\K]\n\"m\"=hex(7):41,00,00,00,42,00,00,00,00,00\n\"roh\"=hex(1):31,00\n\n");
    EXPECT_EQ(GeprueftesFormat(exportwerte({listentipp(1, "T", {listenwert("K", 1, "a", "Ω")})}), RegTextWriter::Format::Regedit4, {}).verloren, 1u);
}

TEST(RegDatei, TextDerKeinWertIstVerweigertDieDatei) {
    Exportprobe p({{.Index = 4, .Überschrift = "Hex", .Ausgabeart = 2}});
    p.put("HKCU\\Software\\Probe\\Wert", 4, "26");
    p.show("Hex");
    p.engine->userText(0, "keine Zahl");
    p.ctx->einstellungen.RegFileGeprueft = true;
    p.file("x.reg");
    p.port.expectBox("Tipp 4, Hex: Der Wert \"keine Zahl\" kann nicht gespeichert werden");
    p.exporte.RegFileSave(false);
    EXPECT_FALSE(std::filesystem::exists(p.dir / "x.reg"));
}

TEST(GeprueftesFormat, ZaehltWasAndersAnkommt) {
    const struct {
        const char* line;
        std::size_t count;
    } cases[] = {{"\"a\"=\"1\"", 0}, {"\"a\"=\"2\"", 1}, {"\"a\"=dword:1", 1}, {"", 1}, {"\"a\"=\"1\"\r\n\"b\"=\"2\"", 1}, {"\"a\"=hex(2):41,00,4200", 1}, {"\"a\"=\"C:\\x\"", 1}};
    const Exportsatz wanted = exportwerte({listentipp(1, "T", {listenwert("K", 1, "a", "1")})});
    for (const auto& c : cases) EXPECT_EQ(abweichungen("REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\K]\r\n" + std::string(c.line) + "\r\n", wanted), c.count) << c.line;
}

TEST(RegAddSkript, Zeilen) {
    const struct {
        const char *text, *argument;
    } cases[] = {{"a b", "\"a b\""},         {"C:\\x\\", "\"C:\\x\\\\\""},  {"100%", "\"100%%\""},  {"a&b^c", "\"a&b^c\""}, {"", "\"\""},
                 {"\"q\" & x", "^\"\\^\"q\\^\" ^& x^\""}, {"a\\\"", "^\"a\\\\\\^\"^\""}};
    for (const auto& c : cases) EXPECT_EQ(cmdArgument(c.text), c.argument) << c.text;
    const RegAddSkript refused = regAddSkript(sample(), {});
    EXPECT_EQ(refused.hindernisse, (std::vector<std::string>{"HKEY_CURRENT_USER\\K\\roh"}));   // no line can leave its end away
    EXPECT_EQ(refused.bytes, "");
    Exportsatz satz = sample();
    satz.tipps[0].werte.pop_back();
    satz.tipps[0].Titel = "Größe & mehr";
    EXPECT_EQ(Exportprobe::lines(utf8FromAnsi(regAddSkript(satz, {"; Kopf 100%"}).bytes)),
              "@echo off\nsetlocal DisableDelayedExpansion\nset \"BVK_FEHLER=0\"\nfor /f \"tokens=2 delims=:.\" %%C in ('chcp') do set \"BVK_CP=%%C\"\nchcp 1252 >nul\n"
              "rem Kopf 100\x20\n\nrem [7] - Größe   mehr\n"
              "reg add \"HKCU\\K\" /v ^\"a\\^\"^\" /t REG_SZ /d ^\"C:\\x\\^\"y%%z%%^\" /f >nul\nif errorlevel 1 set \"BVK_FEHLER=1\"\n"
              "reg add \"HKCU\\K\" /ve /t REG_EXPAND_SZ /d \"%%TEMP%%\" /f >nul\nif errorlevel 1 set \"BVK_FEHLER=1\"\n"
              "reg add \"HKLM\\L\" /v \"d\" /t REG_DWORD /d \"4294967294\" /f >nul\nif errorlevel 1 set \"BVK_FEHLER=1\"\n"
              "reg delete \"HKLM\\L\" /v \"weg\" /f >nul 2>nul\nreg query \"HKLM\\L\" /v \"weg\" >nul 2>nul\nif not errorlevel 1 set \"BVK_FEHLER=1\"\n"
              "reg add \"HKCU\\K\" /v \"m\" /t REG_MULTI_SZ /d \"A\\0B\" /f >nul\nif errorlevel 1 set \"BVK_FEHLER=1\"\n\nchcp %BVK_CP% >nul\n"
              "if not \"%BVK_FEHLER%\"==\"0\" echo Nicht alle Werte wurden geschrieben.\nexit /b %BVK_FEHLER%\n");
}

TEST(Richtliniendatei, Saetze) {
    const auto wide = [](const std::string& text) { return utf16LeFromUtf8(text); };
    using namespace std::string_literals;
    const Richtliniendatei machine = richtliniendatei(sample(), Root::LocalMachine);
    EXPECT_EQ(machine.bytes, "PReg\1\0\0\0"s + wide("[L\0;d\0;"s) + "\4\0\0\0"s + wide(";") + "\4\0\0\0"s + wide(";") + "\xFE\xFF\xFF\xFF"s + wide("]") + wide("[L\0;**del.weg\0;"s) +
                                 "\1\0\0\0"s + wide(";") + "\4\0\0\0"s + wide("; \0]"s));
    EXPECT_EQ(machine.andere, 4u);
    const auto command = listenwert("K", 1, "**DelVals", "x");
    EXPECT_EQ(richtliniendatei(exportwerte({listentipp(1, "T", {command})}), Root::CurrentUser).hindernisse.size(), 1u);
}

}  // namespace
}  // namespace brenvik::test
