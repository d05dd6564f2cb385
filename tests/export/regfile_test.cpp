// The told REG form, whole files compared, and the boxes around it.
#include "ExportFixture.h"
#include "export/RegFile.h"
#include "frame/files/FileSystem.h"

namespace brenvik::test {
namespace {

std::string listFile(const TipList& list, bool classic) {
    AnsiText out;
    RegFileListeSchreiben(out, list, classic);
    return ExportFixture::lines(utf8FromAnsi(out.bytes()));
}

TEST(RegHexString, BothForms) {
    const struct {
        const char* text;
        const char *classic, *fresh;
    } cases[] = {{"AB", "41,42", "41,00,4200,00,00"}, {"", "", "00,00,00"}, {"\t", "09", "0900,00,00"}, {"ä€", "E4,80", "E4,00,8000,00,00"}, {"Ω", "3F", "3F00,00,00"}};
    for (const auto& c : cases) {
        AnsiText out;
        EXPECT_EQ(RegHexString(out, c.text, true), c.classic);
        EXPECT_EQ(out.missing(), std::string(c.text) == "Ω" ? 1u : 0u);
        EXPECT_EQ(RegHexString(out, c.text, false), c.fresh);
    }
}

TEST(RegFileExport, ATipOfAllTypes) {
    const TippListEintrag tipp = listTip(7, "Titel", {listValue("K", 1, "a\"", "C:\\x\"y"), listValue("K", 2, "b", "AB"), listValue("L", 3, "c", "0A FF"),
                                                         listValue("K", 4, "d", "26"), listValue("K", 7, "e", std::string("A\0B", 3)),
                                                         listValue("K", 11, "f", "1"), listValue("K", 0, "g", "<delkey>"), listValue("K", 4, "h", "<delkey>")});
    const std::string expected[] = {
        "\n; ------ Anfang ------\n\n; [7] - Titel\n[HKEY_CURRENT_USER\\K]\n\"a\"\"=\"C:\\x\"y\"\n\"b\"=hex(2):41,42\n\n[HKEY_CURRENT_USER\\L]\n\"c\"=hex:0A FF\n\n"
        "[HKEY_CURRENT_USER\\K]\n\"d\"=dword:26\n\"e\"=hex(7):41,00,42\n\"h\"=-\n\n; ------ Ende ------\n\n",
        "\n; ------ Anfang ------\n\n; [7] - Titel\n[HKEY_CURRENT_USER\\K]\n\"a\"\"=\"C:\\x\"y\"\n\"b\"=hex(2):41,00,4200,00,00\n\n[HKEY_CURRENT_USER\\L]\n\"c\"=hex:0A FF\n\n"
        "[HKEY_CURRENT_USER\\K]\n\"d\"=dword:26\n\"e\"=hex(7):41,00,00,00,4200,00,00\n\"h\"=-\n\n; ------ Ende ------\n\n"};
    for (const bool classic : {true, false}) {
        AnsiText out;
        RegFileTippSchreiben(out, tipp, classic);
        EXPECT_EQ(ExportFixture::lines(out.bytes()), expected[classic ? 0 : 1]);
    }
}

TEST(RegFileExport, AListWithoutItsFirstValueAndWithGaps) {
    TipList list{listTip(1, "Eins", {listValue("K", 1, "a", "1")}), listTip(2, "Weg", {listValue("K", 1, "a", "1")}),
                   listTip(3, "Drei", {listValue("K", 1, "a", "1"), listValue("L", 1, "b", "2"), listValue("M", 1, "c", "3")})};
    list[1].Geloescht = true;
    EXPECT_EQ(listFile(list, true),
              "\n; ------ Anfang [0] ------\n\n; [1] - Eins\n[HKEY_CURRENT_USER\\K]\n\n; ------ Ende [0] ------\n\n"
              "\n; ------ Anfang [2] ------\n\n; [3] - Drei\n[HKEY_CURRENT_USER\\K]\n\"b\"=\"2\"\n\n[HKEY_CURRENT_USER\\M]\n\"c\"=\"3\"\n\n; ------ Ende [2] ------\n\n"
              "\n; ------ Listen Ende ------\n\n");
    EXPECT_EQ(listFile({}, false), "\n; ------ Listen Ende ------\n\n");
}

// The index is compared as a text: from 2 on it is not below "10", and no further key line is written.
TEST(RegFileExport, AListComparesAsText) {
    std::vector<TipListValue> values;
    for (int i = 0; i <= 10; ++i) values.push_back(listValue("K" + std::to_string(i), 4, "w", std::to_string(i)));
    const std::string text = listFile({listTip(1, "Elf", values)}, true);
    EXPECT_NE(text.find("[HKEY_CURRENT_USER\\K2]\n\"w\"=dword:2\n\"w\"=dword:3\n"), std::string::npos);
    EXPECT_NE(text.find("\"w\"=dword:10\n\n; ------ Ende"), std::string::npos);
}

TEST(RegFileSave, CollectsAndTellsWhatArrivesChanged) {
    ExportFixture p({{.Index = 1, .Überschrift = "Zahl", .Ausgabeart = 3, .WertEin = "100", .WertAus = "1"},
                   {.Index = 2, .Überschrift = "Haken", .Datentyp = 1, .Wertname = "Haken", .WertEin = "1", .WertAus = "0"}});
    p.put("HKCU\\Software\\Probe\\Wert", 4, "50");
    p.put("HKCU\\Software\\Probe\\Haken", 1, "0");
    p.show("Haken");
    p.engine->input().userCheck(0, true);
    EXPECT_EQ(p.regFile(), std::string("REGEDIT4\n\n") + ExportHead + "\n; ------ Anfang ------\n\n; [2] - Haken\n[HKEY_CURRENT_USER\\Software\\Probe]\n\"Haken\"=\"1\"\n\n; ------ Ende ------\n\n");
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\Haken"), "1:0");   // only a file was written
    EXPECT_TRUE(p.ctx->blnGeaendert);
    p.port.expectBox("", Answer::No);   // leaving the changed Tip asks
    p.show("Zahl");
    p.ctx->einstellungen.RegFileClasic = false;
    const std::string text = p.regFile(2);
    EXPECT_EQ(text.substr(0, 37), "Windows Registry Editor Version 5.00\n");
    EXPECT_NE(text.find("\"Wert\"=dword:50\n"), std::string::npos);
    EXPECT_NE(p.port.lastBox().find("anders an, als sie hier stehen. Anzahl: 1.\r\n\r\nHKEY_CURRENT_USER\\Software\\Probe\\Wert\r\n\r\n"), std::string::npos);
    EXPECT_NE(p.port.lastBox().find("\"Geprüftes Format\""), std::string::npos);
    EXPECT_FALSE(p.ctx->blnGeaendert);
    p.ctx->einstellungen.RegFileChecked = true;
    p.regFile();
    EXPECT_NE(utf8FromUtf16Le(bytesOf(p.dir / "tipp.reg")).find("\"Wert\"=dword:00000032\r\n"), std::string::npos);
}

// A line end that would begin an entry of its own refuses the file; one that only breaks the text stays, as told, and is named.
TEST(RegFileSave, NothingBecomesLinesOfItsOwn) {
    const struct {
        const char *key, *name, *text, *refused;
    } cases[] = {{"K", "w", "1", nullptr}, {"K", "w", "zwei\r\nZeilen", nullptr}, {"K\n[-HKEY_CURRENT_USER\\L", "w", "1", "HKEY_CURRENT_USER\\K [-HKEY_CURRENT_USER\\L\\w\r\n"},
                 {"K", "w\r@", "1", "HKEY_CURRENT_USER\\K\\w @\r\n"}, {"K", "w", "1\"\r\n \t[-HKEY_CURRENT_USER\\L]", "HKEY_CURRENT_USER\\K\\w\r\n"},
                 {"K", "w", "1\"\n\n\"Run\"=\"x", "HKEY_CURRENT_USER\\K\\w\r\n"}};
    ExportFixture p({Zeile{}});
    for (const auto& c : cases)
        for (const bool list : {false, true}) {
            const ExportFile file = regFileExport(*p.ctx, {listTip(1, "T", {listValue(c.key, 1, c.name, c.text)})}, list, RegForm::Classic);
            EXPECT_EQ(file.obstacle.empty(), c.refused == nullptr) << file.obstacle;
            EXPECT_EQ(file.bytes.empty(), c.refused != nullptr);
            if (c.refused != nullptr) {
                EXPECT_TRUE(file.obstacle.ends_with(std::string("\r\n\r\n") + c.refused)) << file.obstacle;
            }
        }
}

TEST(RegFileSave, MissingCharactersAreCounted) {
    ExportFixture p({{.Index = 1, .Überschrift = "Text", .Ausgabeart = 2, .Datentyp = 1}});
    p.put("HKCU\\Software\\Probe\\Wert", 1, "aΩ日b");
    p.show("Text");
    EXPECT_NE(p.regFile(2).find("\"Wert\"=\"a??b\"\n"), std::string::npos);
    EXPECT_NE(p.port.lastBox().find("die es in diesem Format nicht gibt: 2."), std::string::npos);
}

TEST(RegFileSave, AbortsAndErrorsLeaveTheFile) {
    ExportFixture p({{.Index = 1, .Überschrift = "Haken", .Datentyp = 1, .WertEin = "1", .WertAus = "0"}});
    p.put("HKCU\\Software\\Probe\\Wert", 1, "0");
    p.show("Haken");
    p.port.expectFile(std::nullopt).expectBox("Speichern wurde durch den Benutzer abgebrochen!");
    p.exports.RegFileSave(false);
    // A file that may not be replaced stays, and the report has the error's number.
    setReadOnly(p.dir.put("alt.reg", "alter Inhalt"), true);
    for (const bool adm : {false, true}) {
        p.file("alt.reg");
        p.port.expectBox("75");
        adm ? p.exports.ADMFileSave(false) : p.exports.RegFileSave(false);
        EXPECT_EQ(bytesOf(p.dir / "alt.reg"), "alter Inhalt");
    }
    p.port.expectFile((p.dir / "fehlt/neu.reg").string()).expectBox("RegFileSave");
    p.exports.RegFileSave(false);
    EXPECT_EQ(p.port.lastBox().find("gespeichert"), std::string::npos);
    setReadOnly(p.dir / "alt.reg", false);
}

}  // namespace
}  // namespace brenvik::test
