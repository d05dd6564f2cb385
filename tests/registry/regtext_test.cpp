// Reading REG files: what they mean, what is refused and where.
#include <gtest/gtest.h>

#include "TempStore.h"
#include "registry/RegPath.h"
#include "registry/Wtf8.h"
#include "registry/text/RegText.h"

using namespace brenvik;
using namespace brenvik::test;
using namespace std::string_literals;

namespace {

const std::string V5 = "Windows Registry Editor Version 5.00\r\n", V4 = "REGEDIT4\r\n";

// One line for each operation and problem.
std::string told(const RegText& text) {
    std::string lines;
    for (const RegOperation& op : text.operations) {
        static const char* const kinds[] = {"key", "-key", "set", "-value"};
        lines += std::to_string(op.line) + " " + kinds[static_cast<int>(op.kind)] + " " + shortRootName(op.root) + "|" + op.key;
        const bool isValue = op.kind == RegOperation::Kind::SetValue || op.kind == RegOperation::Kind::DeleteValue;
        if (isValue) lines += "|" + (op.name.isUnnamed() ? "@" : op.name.text());
        if (op.kind == RegOperation::Kind::SetValue) lines += " " + std::to_string(op.value.type) + ":" + bytesText(op.value.bytes);
        lines += "\n";
    }
    for (const RegTextProblem& problem : text.problems) lines += std::to_string(problem.line) + " ! " + problem.message + "\n";
    return lines;
}

std::string wide(const std::string& text) {
    std::string bytes = "\xFF\xFE";
    appendUtf16Le(bytes, toUtf16(text));
    return bytes;
}

}  // namespace

TEST(RegText, Meaning) {
    struct Case {
        const char* what;
        std::string text;
        const char* told;
    };
    const Case cases[] = {
        {"nothing", V5, ""},
        {"no line end", "REGEDIT4", ""},
        {"key", V5 + "\r\n[HKEY_LOCAL_MACHINE\\Software\\A b]\r\n", "3 key HKLM|Software\\A b\n"},
        {"root alone", V5 + "[HKEY_USERS]\n@=\"x\"\n", "3 set HKU||@ 1:78 00 00 00\n"},
        {"short root, trailing backslash", V5 + "[hkcu\\A\\]\n", "2 key HKCU|A\n"},
        {"brackets in names", V5 + "[HKCU\\A[1]\\B]x]\n", "2 key HKCU|A[1]\\B]x\n"},
        {"unnamed", V5 + "[HKCU\\A]\n@=\"ä\"\n", "2 key HKCU|A\n3 set HKCU|A|@ 1:E4 00 00 00\n"},
        {"empty name", V5 + "[HKCU\\A]\n\"\"=\"x\"\n", "2 key HKCU|A\n3 set HKCU|A|@ 1:78 00 00 00\n"},
        {"escapes", V5 + "[HKCU\\A]\n\"a\\\"=\\\\b\"=\"\\\\\\\"\"\n", "2 key HKCU|A\n3 set HKCU|A|a\"=\\b 1:5C 00 22 00 00 00\n"},
        {"text over lines", V5 + "[HKCU\\A]\r\n\"v\"=\"a\r\nb\"\r\n\"w\"=dword:1\r\n", "2 key HKCU|A\n3 set HKCU|A|v 1:61 00 0D 00 0A 00 62 00 00 00\n5 set HKCU|A|w 4:01 00 00 00\n"},
        {"dword", V5 + "[HKCU\\A]\n\"v\" = dword:FFfffff0 ; c\n", "2 key HKCU|A\n3 set HKCU|A|v 4:F0 FF FF FF\n"},
        {"hex", V5 + "[HKCU\\A]\n\"v\"=hex:01,a,FF,\n", "2 key HKCU|A\n3 set HKCU|A|v 3:01 0A FF\n"},
        {"hex with blanks", V5 + "[HKCU\\A]\n\"v\"=hex: 01,02 ,3, Ab,\\ \n 05,06,\n", "2 key HKCU|A\n3 set HKCU|A|v 3:01 02 03 AB 05 06\n"},
        {"hex empty", V5 + "[HKCU\\A]\n\"v\"=hex:\n\"w\"=hex(0):\n", "2 key HKCU|A\n3 set HKCU|A|v 3:\n4 set HKCU|A|w 0:\n"},
        {"hex wrapped", V5 + "[HKCU\\A]\r\n\"v\"=hex(b):01,02,\\\r\n  03,04,05,06,\\\r\n  07,08\r\n\"w\"=dword:2\r\n",
         "2 key HKCU|A\n3 set HKCU|A|v 11:01 02 03 04 05 06 07 08\n6 set HKCU|A|w 4:02 00 00 00\n"},
        {"hex types", V5 + "[HKCU\\A]\n\"v\"=hex(2):41,00,00,00\n\"w\"=hex(ffff0001):1\n", "2 key HKCU|A\n3 set HKCU|A|v 2:41 00 00 00\n4 set HKCU|A|w 4294901761:01\n"},
        {"ANSI data", V4 + "[HKCU\\A]\n\"v\"=hex(2):80,00\n\"w\"=hex(7):61,00,00\n\"x\"=hex:80\n\"\xE4\"=\"\x80\"\n",
         "2 key HKCU|A\n3 set HKCU|A|v 2:AC 20 00 00\n4 set HKCU|A|w 7:61 00 00 00 00 00\n5 set HKCU|A|x 3:80\n6 set HKCU|A|ä 1:AC 20 00 00\n"},
        {"ANSI under the new header", V5 + "[HKCU\\\xC4]\n", "2 key HKCU|Ä\n"},
        {"mark", "\xEF\xBB\xBF" + V5 + "[HKCU\\Ä]\n", "2 key HKCU|Ä\n"},
        {"deletions", V5 + "[-HKCU\\A\\B]\n[HKCU\\A]\n\"v\"=-\n@=-\n", "2 -key HKCU|A\\B\n3 key HKCU|A\n4 -value HKCU|A|v\n5 -value HKCU|A|@\n"},
        {"comments and blanks", V5 + "; a\n\n  ;b\n\t[HKCU\\A]  ; c\n  \"v\"=\"x\" ; d\n", "5 key HKCU|A\n6 set HKCU|A|v 1:78 00 00 00\n"},
        {"notes", V5 + "# a\n[HKCU\\A]\n  #b\n\"v\"=hex:01,\\ ; c\n\n  ; d\n# e\n\t\n  02,\\\n;f\n  03\n\"w\"=dword:2\n",
         "3 key HKCU|A\n5 set HKCU|A|v 3:01 02 03\n13 set HKCU|A|w 4:02 00 00 00\n"},
        {"a wrapped end", V5 + "[HKCU\\A]\n\"v\"=hex:01,\\\n\n; c\n\"w\"=hex:02,\\\n\n[HKCU\\B]\n", "2 key HKCU|A\n3 set HKCU|A|v 3:01\n6 set HKCU|A|w 3:02\n8 key HKCU|B\n"},
        {"old line ends", "REGEDIT4\r[HKCU\\A]\r\"v\"=dword:1\r", "2 key HKCU|A\n3 set HKCU|A|v 4:01 00 00 00\n"},
        {"UTF-16", wide(V5 + "[HKCU\\Ω\xF0\x9F\x98\x80\xED\xA0\x80]\r\n\"v\"=dword:1\r\n"), "2 key HKCU|Ω\xF0\x9F\x98\x80\xED\xA0\x80\n3 set HKCU|Ω\xF0\x9F\x98\x80\xED\xA0\x80|v 4:01 00 00 00\n"},
        {"UTF-16 without mark", wide(V5 + "[HKCU\\A]\r\n").substr(2), "2 key HKCU|A\n"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(told(parseRegText(c.text)), c.told) << c.what;
        RegText again;   // read a second time, and not kept between
        const RegTextFile file(c.text);
        file.each([&](const RegOperation& operation) { again.operations.push_back(operation); });
        EXPECT_EQ(told(again), c.told) << c.what;
    }
}

TEST(RegText, Refused) {
    const std::string key = V5 + "[HKCU\\A]\n", ok = "2 key HKCU|A\n";
    struct Case {
        const char* what;
        std::string text;
        std::string told;
    };
    const std::string noByte = "Ein Byte besteht aus ein oder zwei hexadezimalen Ziffern.\n";
    const Case cases[] = {
        {"nothing at all", "", "1 ! Die Datei beginnt weder mit \"REGEDIT4\" noch mit \"Windows Registry Editor Version 5.00\".\n"},
        {"other text", "hello\n", "1 ! Die Datei beginnt weder mit \"REGEDIT4\" noch mit \"Windows Registry Editor Version 5.00\".\n"},
        {"header with more", "REGEDIT44\n", "1 ! Die Datei beginnt weder mit \"REGEDIT4\" noch mit \"Windows Registry Editor Version 5.00\".\n"},
        {"half a unit", wide(V5) + "x", "1 ! Die Datei endet mitten in einem Zeichen.\n"},
        {"marked as UTF-8 and none", "\xEF\xBB\xBF" + key.substr(0, key.size() - 2) + "\xC0\xDA]\n",
         "1 ! Die Datei ist als UTF-8 gekennzeichnet, enthält aber ungültige Zeichen.\n"},
        {"big-endian", "\xFE\xFF\0W"s, "1 ! Die Datei ist in UTF-16 mit vertauschten Bytes geschrieben und kann nicht gelesen werden.\n"},
        {"value without key", V5 + "\"v\"=\"x\"\n", "2 ! Der Wert gehört zu keinem Schlüssel.\n"},
        {"value in a deleted key", V5 + "[-HKCU\\A]\n\"v\"=\"x\"\n", "2 -key HKCU|A\n3 ! Der Wert gehört zu keinem Schlüssel.\n"},
        {"unknown root, its values reported once", V5 + "[HKEY_NOWHERE\\A]\n\"v\"=\"x\"\n\"w\"=\"x\"\n[HKCU\\A]\n", "5 key HKCU|A\n2 ! \"HKEY_NOWHERE\" ist kein Hauptschlüssel.\n"},
        {"root deleted", V5 + "[-HKEY_CURRENT_USER]\n", "2 ! Ein Hauptschlüssel kann nicht gelöscht werden.\n"},
        {"key not closed", V5 + "[HKCU\\A\n\"v\"=\"x\"\n", "2 ! Die eckige Klammer des Schlüssels ist nicht geschlossen.\n"},
        {"empty key", V5 + "[]\n", "2 ! \"\" ist kein Hauptschlüssel.\n"},
        {"text behind key", V5 + "[HKCU\\A] x\n", "2 ! Hinter dem Eintrag steht noch etwas.\n"},
        {"name not closed", key + "\"v=1\n", ok + "3 ! Das schließende Anführungszeichen fehlt.\n"},
        {"no equals sign", key + "\"v\" \"x\"\n", ok + "3 ! Hinter dem Wertnamen fehlt das Gleichheitszeichen.\n"},
        {"text not closed, next line is read", key + "\"v\"=\"x\n@=dword:1\n", ok + "4 set HKCU|A|@ 4:01 00 00 00\n3 ! Das schließende Anführungszeichen fehlt.\n"},
        {"unescaped backslash", key + "\"v\"=\"C:\\new\"\n", ok + "3 ! Hinter einem umgekehrten Schrägstrich in Anführungszeichen darf nur ein weiterer oder ein Anführungszeichen stehen.\n"},
        {"no data", key + "\"v\"=\n", ok + "3 ! Die Daten des Wertes sind weder Text noch dword noch hex.\n"},
        {"unknown data", key + "\"v\"=qword:1\n", ok + "3 ! Die Daten des Wertes sind weder Text noch dword noch hex.\n"},
        {"long dword", key + "\"v\"=dword:123456789\n", ok + "3 ! Hinter dword: gehören ein bis acht hexadezimale Ziffern.\n"},
        {"empty dword", key + "\"v\"=dword:\n", ok + "3 ! Hinter dword: gehören ein bis acht hexadezimale Ziffern.\n"},
        {"dword of other digits", key + "\"v\"=dword:0x1\n", ok + "3 ! Hinter dword: gehören ein bis acht hexadezimale Ziffern.\n"},
        {"hex too wide", key + "\"v\"=hex:123\n", ok + "3 ! " + noByte},
        {"hex no digit", key + "\"v\"=hex:0g\n", ok + "3 ! " + noByte},
        {"hex hole", key + "\"v\"=hex:01,,02\n", ok + "3 ! " + noByte},
        {"hex without comma", key + "\"v\"=hex:01 02\n", ok + "3 ! Zwischen zwei Bytes fehlt das Komma.\n"},
        {"hex bad type", key + "\"v\"=hex(x):01\n\"w\"=hex():\n\"x\"=hex(123456789):\n\"y\"=hex2:01\n",
         ok + "3 ! Die Typangabe hinter hex ist ungültig.\n4 ! Die Typangabe hinter hex ist ungültig.\n5 ! Die Typangabe hinter hex ist ungültig.\n6 ! Die Typangabe hinter hex ist ungültig.\n"},
        {"hex ends in the middle", key + "\"v\"=hex:01,\\", ok + "3 ! Die Datei endet mitten in einem Wert.\n"},
        {"wrapped lines of a bad value are one fault", key + "\"v\"=hex:01,\\\n  zz,\\\n  03\n\"w\"=dword:1\n", ok + "6 set HKCU|A|w 4:01 00 00 00\n3 ! " + noByte},
        {"other lines", key + "v=1\n", ok + "3 ! Die Zeile ist weder ein Schlüssel noch ein Wert.\n"},
        {"zeros", key + "\0\0\n"s, ok + "3 ! Die Zeile ist weder ein Schlüssel noch ein Wert.\n"},
        {"zero in a text", key + "\"v\"=\"a\0b\"\n"s, ok + "3 ! Ein Text mit Nullzeichen kann nicht als Zeichenkette gespeichert werden.\n"},
    };
    for (const Case& c : cases) {
        const RegText whole = parseRegText(c.text);
        EXPECT_EQ(told(whole), c.told) << c.what;
        EXPECT_EQ(RegTextFile(c.text).each([](const RegOperation&) {}), whole.problems) << c.what;
    }
}

// Reading never takes time that grows faster than the text.
TEST(RegText, LongNonsense) {
    for (const std::string& unit : {"\""s, "[\n"s, "\"\\\n"s, "\"a\"=\"\n"s, "@=hex:\\\n"s, "00,\\\n;\n"s, ";\n\n#"s, "\\\n"s, "x\\\n"s, "[HKCU\\"s}) {
        std::string text = V5 + "[HKCU\\A]\n";
        while (text.size() < 2000000) text += unit;
        EXPECT_LE(parseRegText(text).problems.size(), MaxRegTextProblems);
    }
}

TEST(RegText, AppliedWholeOrNotAtAll) {
    TempStore t;
    t.store.setValue(Root::CurrentUser, "Old\\Deep\\er", ValueName::named("v"), sz("x"));
    t.store.setValue(Root::LocalMachine, "Software\\Classes\\.x\\Sub", ValueName::named("v"), sz("x"));
    t.store.setValue(Root::CurrentUser, "Software\\Classes\\.x\\sub", ValueName::named("v"), sz("x"));
    const auto apply = [&](const std::string& text) { applyOperations(t.store, parseRegText(V5 + text).operations); };
    const auto bad = [&] { apply("[-HKCU\\Old]\n[HKCU\\New]\n@=\"1\"\n[HKDD\\x]\n"); };
    EXPECT_EQ(errorOf(bad), 0x80040204u);
    EXPECT_EQ(messageOf(bad), "Zeile 5: HKEY_DYN_DATA kann nicht geändert werden.");
    EXPECT_EQ(textOf(t.store, Root::CurrentUser, "Old\\Deep\\er", "v"), "x");
    EXPECT_FALSE(t.store.keyExists(Root::CurrentUser, "New"));
    apply("[-HKCU\\Old]\n[-HKCU\\Absent]\n[HKCU\\New]\n@=\"1\"\n\"gone\"=-\n[-HKCR\\.x]\n");
    EXPECT_FALSE(t.store.keyExists(Root::CurrentUser, "Old"));
    EXPECT_FALSE(t.store.keyExists(Root::ClassesRoot, ".x"));
    EXPECT_EQ(textOf(t.store, Root::CurrentUser, "New", ""), "1");
}
