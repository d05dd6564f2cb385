// The registry commands, driven as a user would: whole outputs, exit codes, and what is in the registry afterwards.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "frame/Codepage.h"
#include "support/Kommando.h"
#include "support/TempDir.h"

namespace brenvik::test {
namespace {

// All types, odd names, unnamed and empty values, and a dword of the wrong length.
constexpr const char* Bunt = R"(Windows Registry Editor Version 5.00

[HKEY_CURRENT_USER\Software\Bunt]
@="ohne Namen"
"Größe"="Ä \"in\" C:\\Ordner"
"Αθήνα"=dword:fffffffe
"a\\b"="Schrägstrich"
"a\"b"="Anführung"
"leer"=""
"nichts"=hex:
"kurz"=hex(4):01,02
"typ"=hex(7f):de,ad
"ohne Ende"=hex(1):41,00
"multi"=hex(7):65,00,69,00,6e,00,73,00,00,00,7a,00,77,00,65,00,69,00,00,00,00,00
"erw"=hex(2):25,00,57,00,25,00,00,00
"none"=hex(0):
"qword"=hex(b):01,00,00,00,00,00,00,00

[HKEY_CURRENT_USER\Software\Bunt\Ünter]
"x"="1"

[HKEY_CURRENT_USER\Software\Bunt\Ünter\leer]
)";

class Registry : public ::testing::Test {
protected:
    Ergebnis cli(std::vector<std::string> arguments, const char* home = "heim") {
        arguments.insert(arguments.begin(), {"--home", (dir / home).string()});
        return run(std::filesystem::path(BRENVIK_PROGRAMM_DIR) / "brenvik-cli", arguments);
    }
    // Runs it, expects success without a word on stderr, and answers what it printed.
    std::string out(const std::vector<std::string>& arguments, const char* home = "heim") {
        const Ergebnis e = cli(arguments, home);
        EXPECT_EQ(e.code, 0) << e.err;
        EXPECT_EQ(e.err, "");
        return e.out;
    }
    std::string path(const char* name) const { return (dir / name).string(); }
    void importText(const std::string& text) {
        dir.put("ein.reg", text);
        EXPECT_EQ(out({"registry", "import", path("ein.reg")}), "");
    }
    TempDir dir;
};

TEST_F(Registry, ListReadWriteDelete) {
    importText(Bunt);
    EXPECT_EQ(out({"registry", "list", "HKCU\\Software\\Bunt"}),
              "Ünter\\\n(Standard)\tREG_SZ\tohne Namen\nGröße\tREG_SZ\tÄ \"in\" C:\\Ordner\nΑθήνα\tREG_DWORD\t-2\na\\b\tREG_SZ\tSchrägstrich\n"
              "a\"b\tREG_SZ\tAnführung\nleer\tREG_SZ\t\nnichts\tREG_BINARY\t\nkurz\tREG_DWORD\t01 02\ntyp\t127\tDE AD\nohne Ende\tREG_SZ\tA\n"
              "multi\tREG_MULTI_SZ\teins|zwei\nerw\tREG_EXPAND_SZ\t%W%\nnone\tREG_NONE\t\nqword\t11\t01 00 00 00 00 00 00 00\n");
    const auto json = nlohmann::json::parse(out({"--json", "registry", "list", "HKCU\\Software\\Bunt\\"}));
    EXPECT_EQ(json["values"][7], (nlohmann::json{{"name", "kurz"}, {"type", "REG_DWORD"}, {"data", "01 02"}, {"raw", "01 02"}}));
    EXPECT_EQ(json["values"][9]["raw"], "41 00");
    EXPECT_EQ(json["values"][10]["data"], (nlohmann::json{"eins", "zwei"}));
    const struct {
        std::vector<std::string> arguments;
        const char* out;
    } reads[] = {
        {{"HKCU\\Software\\Bunt\\größe"}, "Ä \"in\" C:\\Ordner\n"},
        {{"HKCU\\Software\\Bunt\\"}, "ohne Namen\n"},
        {{"HKCU\\Software\\Bunt", "--value", "a\\b"}, "Schrägstrich\n"},
        {{"HKCU\\Software\\Bunt", "--value", ""}, "ohne Namen\n"},
        {{"HKCU\\Software\\Bunt\\multi"}, "eins\nzwei\n"},
    };
    for (const auto& read : reads) {
        std::vector<std::string> words{"registry", "read"};
        words.insert(words.end(), read.arguments.begin(), read.arguments.end());
        EXPECT_EQ(out(words), read.out);
    }
    out({"registry", "write", "HKCU\\Software\\Neu\\", "--value", "c\\d", "REG_DWORD", "0xff"});
    out({"registry", "write", "HKCU\\Software\\Neu\\", "REG_SZ", "<delkey>"});
    out({"registry", "write", "HKCU\\Software\\Neu\\Leer\\", "0", ""});
    EXPECT_EQ(out({"registry", "list", "HKCU\\Software\\Neu"}), "Leer\\\nc\\d\tREG_DWORD\t255\n(Standard)\tREG_SZ\t<delkey>\n");
    out({"registry", "delete", "HKCU\\Software\\Neu", "--value", "c\\d"});
    const Ergebnis refused = cli({"registry", "delete", "HKCU\\Software\\Neu\\"});
    EXPECT_EQ(refused.code, 1);
    EXPECT_EQ(refused.err, "Der Schlüssel hat Unterschlüssel und wurde nicht gelöscht (mit --recursive wird er es): HKCU\\Software\\Neu\\\n");
    EXPECT_EQ(cli({"registry", "delete", "HKCU\\Software\\Neu", "--recursive"}).code, 1);
    EXPECT_EQ(out({"registry", "list", "HKCU\\Software\\Neu"}), "Leer\\\n(Standard)\tREG_SZ\t<delkey>\n");
    EXPECT_EQ(cli({"--yes", "registry", "delete", "HKCU\\Software\\Neu", "--recursive"}).code, 0);
    EXPECT_EQ(cli({"registry", "list", "HKCU\\Software\\Neu"}).err, "Der Schlüssel ist nicht vorhanden: HKCU\\Software\\Neu\n");
}

TEST_F(Registry, ExportUndImportGebenDasselbe) {
    importText(Bunt);
    out({"registry", "export", "HKCU\\Software\\Bunt", path("aus.reg")});
    const std::string bytes = bytesOf(dir / "aus.reg");
    EXPECT_EQ(bytes.substr(0, 4), std::string("\xFF\xFEW\0", 4));
    out({"registry", "import", path("aus.reg")}, "zweites");
    out({"registry", "export", "HKCU\\Software\\Bunt", path("nochmal.reg")}, "zweites");
    EXPECT_EQ(bytesOf(dir / "nochmal.reg"), bytes);
    EXPECT_EQ(out({"registry", "diff", "HKCU\\Software\\Bunt", path("ein.reg")}, "zweites"), "");

    const Ergebnis lossy = cli({"registry", "export", "HKCU\\Software\\Bunt", path("alt.reg"), "--regedit4"});
    EXPECT_EQ(lossy.code, 1);   // Greek
    for (const std::string& name : dir.names()) EXPECT_NE(name.substr(0, 7), "alt.reg");   // nor what was written so far
    out({"registry", "export", "HKCU\\Software\\Bunt\\Ünter", path("alt.reg"), "--regedit4"});
    EXPECT_EQ(utf8FromAnsi(bytesOf(dir / "alt.reg")), "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Bunt\\Ünter]\r\n\"x\"=\"1\"\r\n\r\n[HKEY_CURRENT_USER\\Software\\Bunt\\Ünter\\leer]\r\n\r\n");
}

TEST_F(Registry, ProbelaufZeigtUndLaesst) {
    importText(Bunt);
    out({"registry", "export", "HKCU\\Software", path("vorher.reg")});
    dir.put("probe.reg", "REGEDIT4\n[HKEY_CURRENT_USER\\Software\\Bunt]\n\"leer\"=\"voll\"\n\"Αθήνα\"=-\n@=\"ohne Namen\"\n\"leer\"=dword:1\n"
                         "\"ohne Ende\"=\"A\"\n\"neu\"=\"n\"\n[-HKEY_CURRENT_USER\\Software\\Bunt\\\xDCnter]\n[HKEY_CURRENT_USER\\Software\\A\\B]\n");
    EXPECT_EQ(out({"registry", "import", path("probe.reg"), "--dry-run"}),
              "HKEY_CURRENT_USER\\Software\\Bunt\\\tleer\tREG_SZ  -> REG_DWORD 1\n"
              "HKEY_CURRENT_USER\\Software\\Bunt\\\tohne Ende\tREG_SZ A [41 00] -> REG_SZ A [41 00 00 00]\n"
              "HKEY_CURRENT_USER\\Software\\Bunt\\\tneu\t(nicht vorhanden) -> REG_SZ n\n"
              "HKEY_CURRENT_USER\\Software\\Bunt\\Ünter\\\twird gelöscht\n"
              "HKEY_CURRENT_USER\\Software\\Bunt\\Ünter\\\tx\tREG_SZ 1 -> (nicht vorhanden)\n"
              "HKEY_CURRENT_USER\\Software\\Bunt\\Ünter\\leer\\\twird gelöscht\n"
              "HKEY_CURRENT_USER\\Software\\A\\\twird angelegt\n"
              "HKEY_CURRENT_USER\\Software\\A\\B\\\twird angelegt\n");
    const auto json = nlohmann::json::parse(out({"--json", "registry", "import", path("probe.reg"), "--dry-run"}));
    EXPECT_EQ(json[0]["old"], (nlohmann::json{{"type", "REG_SZ"}, {"data", ""}}));
    EXPECT_EQ(json[2]["old"], nullptr);
    out({"registry", "export", "HKCU\\Software", path("nachher.reg")});
    EXPECT_EQ(bytesOf(dir / "nachher.reg"), bytesOf(dir / "vorher.reg"));
}

TEST_F(Registry, EinFehlerWeistDieGanzeDateiAb) {
    dir.put("f.reg", "REGEDIT4\n[HKEY_CURRENT_USER\\Software\\F]\n\"a\"=\"1\"\n\"b\"=dword:xyz\nUnsinn\n");
    const Ergebnis syntax = cli({"registry", "import", path("f.reg")});
    EXPECT_EQ(syntax.code, 1);
    EXPECT_EQ(syntax.err, path("f.reg") + ", Zeile 4: Hinter dword: gehören ein bis acht hexadezimale Ziffern.\n" + path("f.reg") +
                              ", Zeile 5: Die Zeile ist weder ein Schlüssel noch ein Wert.\nDie Datei wurde nicht eingelesen, nichts wurde geändert.\n");
    const std::string key(256, 'k'), name(16384, 'n');
    dir.put("g.reg", "REGEDIT4\n[HKEY_CURRENT_USER\\Software\\F]\n\"a\"=\"1\"\n\"" + name + "\"=\"1\"\n[HKEY_CURRENT_USER\\Software\\" + key + "]\n");
    for (const bool dry : {false, true}) {
        std::vector<std::string> words{"registry", "import", path("g.reg")};
        if (dry) words.emplace_back("--dry-run");
        const Ergebnis limits = cli(words);
        EXPECT_EQ(limits.code, 1);
        EXPECT_EQ(limits.out, "");
        EXPECT_EQ(limits.err, path("g.reg") + ", Zeile 4: Ein Wertname darf höchstens 16383 Zeichen haben.\n" + path("g.reg") +
                                  ", Zeile 5: Ein Schlüsselname darf höchstens 255 Zeichen haben.\nDie Datei wurde nicht eingelesen, nichts wurde geändert.\n");
    }
    EXPECT_EQ(cli({"registry", "list", "HKCU\\Software\\F"}).code, 1);
}

TEST_F(Registry, Finden) {
    importText(Bunt);
    const std::string key = "HKCU\\Software\\Bunt\\";
    const struct {
        std::vector<std::string> arguments;
        std::string out;
    } searches[] = {
        {{"GRÖSS", "HKCU\\Software\\Bunt"}, ""},
        {{"GRÖßE", "HKCU\\Software\\Bunt"}, key + "\tGröße\tREG_SZ\tÄ \"in\" C:\\Ordner\n"},
        {{"αθήΝΑ", "HKCU\\Software\\Bunt"}, key + "\tΑθήνα\tREG_DWORD\t-2\n"},
        {{"ünt", "HKCU\\Software\\Bunt"}, key + "Ünter\\\n"},
        {{"zwei", "HKCU\\Software\\Bunt"}, key + "\tmulti\tREG_MULTI_SZ\teins|zwei\n"},
        {{"DE a", "HKCU\\Software\\Bunt"}, key + "\ttyp\t127\tDE AD\n"},
        {{"leer", "HKCU\\Software\\Bunt", "--keys"}, key + "Ünter\\leer\\\n"},
        {{"leer", "HKCU\\Software\\Bunt", "--names"}, key + "\tleer\tREG_SZ\t\n"},
        {{"^Ä.*ORDNER$", "HKCU\\Software\\Bunt", "--regex"}, key + "\tGröße\tREG_SZ\tÄ \"in\" C:\\Ordner\n"},
        {{"^ü.T", "HKCU\\Software\\Bunt", "--regex"}, key + "Ünter\\\n"},
        {{"Schrägstrich"}, key + "\ta\\b\tREG_SZ\tSchrägstrich\n"},   // the whole registry, each place once
    };
    for (const auto& search : searches) {
        std::vector<std::string> words{"registry", "find"};
        words.insert(words.end(), search.arguments.begin(), search.arguments.end());
        EXPECT_EQ(out(words), search.out) << search.arguments[0];
    }
    EXPECT_EQ(out({"--json", "registry", "find", "erw", "HKCU\\Software\\Bunt"}),
              "{\"key\":\"HKCU\\\\Software\\\\Bunt\",\"name\":\"erw\",\"type\":\"REG_EXPAND_SZ\",\"data\":\"%W%\"}\n");
    EXPECT_EQ(out({"registry", "find", "zwei", path("ein.reg")}), path("ein.reg") + ":\\" + key + "\tmulti\tREG_MULTI_SZ\teins|zwei\n");
    EXPECT_EQ(cli({"registry", "find", "x", "HKCU\\Software\\Bunt\\Ünter", "--progress"}).err, "\r2 Schlüssel durchsucht, 1 Treffer\n");
    const Ergebnis bad = cli({"registry", "find", "(", "--regex"});
    EXPECT_EQ(bad.code, 2);
    EXPECT_EQ(bad.err, "\"(\" ist kein gültiger regulärer Ausdruck.\n");
}

// A value of the greatest size: no step of a recursive matcher may go as deep as a text is long.
TEST_F(Registry, GroessterWert) {
    dir.put("gross.txt", std::string(8 * 1024 * 1024 - 1, 'a'));
    out({"registry", "write", "HKCU\\Software\\Gross\\w", "REG_SZ", "--data-file", path("gross.txt")});
    EXPECT_EQ(out({"registry", "find", "^(a|b)*$", "HKCU\\Software\\Gross", "--regex"}), "");
    out({"registry", "export", "HKCU\\Software\\Gross", path("gross.reg")});
    out({"registry", "diff", "HKCU\\Software\\Gross", path("gross.reg")});
    dir.put("gross.txt", std::string(8 * 1024 * 1024, 'a'));
    const Ergebnis refused = cli({"registry", "write", "HKCU\\Software\\Gross\\w", "REG_SZ", "--data-file", path("gross.txt")});
    EXPECT_EQ(refused.code, 1);
    EXPECT_EQ(refused.err, "Ein Wert darf höchstens 16 MB groß sein.\n");
}

TEST_F(Registry, UnverstandeneAufrufe) {
    const struct {
        std::vector<std::string> words;
        std::string message;
    } calls[] = {
        {{}, "Es fehlt der Befehl."},
        {{"unfug"}, "Unbekannter Befehl: unfug"},
        {{"registry", "unfug"}, "Unbekannter Befehl: unfug"},
        {{"registry", "find"}, "Es fehlt: TEXT"},
        {{"registry", "read", "HKCU\\a", "b", "c"}, "Unbekannte Angabe: b c"},
        {{"registry", "list", "HKCU", "--unfug"}, "Unbekannte Angabe: --unfug"},
        {{"tip", "show", "eins"}, "Ungültige Angabe: NUMBER = eins"},
        {{"--machine"}, "Zu wenige oder zu viele Angaben: --machine"},
    };
    for (const auto& call : calls) {
        const Ergebnis e = cli(call.words);
        EXPECT_EQ(e.code, 2);
        EXPECT_EQ(e.err, call.message + "\nbrenvik-cli --help nennt, was möglich ist.\n");
        EXPECT_EQ(e.out, "");
    }
}

TEST_F(Registry, StrgCBeendetSauber) {
    // The expression takes the square of a text's length for each value, so that the signal comes in the midst.
    std::string text = "REGEDIT4\n[HKEY_CURRENT_USER\\Software\\Viel]\n";
    for (int i = 0; i < 1000; ++i) text += "\"w" + std::to_string(i) + "\"=\"" + std::string(1500, 'a') + "\"\n";
    importText(text);
    const Ergebnis e = run("/usr/bin/timeout", {"--preserve-status", "-s", "INT", "1", (std::filesystem::path(BRENVIK_PROGRAMM_DIR) / "brenvik-cli").string(), "--home",
                                                path("heim"), "registry", "find", "(a|b)*c", "HKCU\\Software\\Viel", "--regex"});
    EXPECT_EQ(e.code, 130);
    EXPECT_EQ(e.err, "Die Suche wurde abgebrochen.\n");
}

TEST_F(Registry, DiffKopieUndHives) {
    importText(Bunt);
    const std::string b = "HKCU\\Software\\Bunt", hive = path("h.hiv");
    out({"registry", "save", b, hive});
    EXPECT_EQ(out({"registry", "diff", b, hive}), "");
    EXPECT_EQ(out({"registry", "diff", path("ein.reg"), hive}), "");
    EXPECT_EQ(cli({"registry", "save", b, hive}).code, 1);
    out({"registry", "write", hive + ":\\Ünter\\x", "REG_SZ", "2"});
    out({"registry", "write", hive + ":\\", "--value", "ohne Ende", "REG_SZ", "A"});
    out({"registry", "write", hive + ":\\Neu\\y", "REG_DWORD", "7"});
    out({"registry", "delete", hive + ":\\leer"});
    const Ergebnis diff = cli({"registry", "diff", b, hive});
    EXPECT_EQ(diff.code, 1);
    EXPECT_EQ(diff.err, "");
    EXPECT_EQ(diff.out, "- \\\tleer\tREG_SZ\t\n- \\\tohne Ende\tREG_SZ\tA\t[41 00]\n+ \\\tohne Ende\tREG_SZ\tA\t[41 00 00 00]\n"
                        "+ Neu\\\n+ Neu\\\ty\tREG_DWORD\t7\n- Ünter\\\tx\tREG_SZ\t1\n+ Ünter\\\tx\tREG_SZ\t2\n");
    const Ergebnis json = cli({"--json", "registry", "diff", b + "\\Ünter", hive + ":\\Ünter"});
    EXPECT_EQ(json.code, 1);
    EXPECT_EQ(nlohmann::json::parse(json.out),
              nlohmann::json::parse(R"({"equal":false,"differences":[{"key":"","name":"x","a":{"type":"REG_SZ","data":"1"},"b":{"type":"REG_SZ","data":"2"}}]})"));
    const Ergebnis trouble = cli({"registry", "diff", b, "HKCU\\Software\\fehlt"});
    EXPECT_EQ(trouble.code, 2);
    EXPECT_EQ(trouble.err, "Der Schlüssel ist nicht vorhanden: HKCU\\Software\\fehlt\n");

    out({"registry", "copy", hive + ":\\", "HKCU\\Software\\Kopie"});
    EXPECT_EQ(out({"registry", "diff", hive, "HKCU\\Software\\Kopie"}), "");
    EXPECT_EQ(cli({"registry", "copy", b, "HKCU\\Software\\Kopie"}).code, 1);
    EXPECT_EQ(cli({"--yes", "registry", "copy", b + "\\Ünter", hive + ":\\Ünter"}).code, 0);
    EXPECT_EQ(out({"registry", "read", hive + ":\\Ünter\\x"}), "1\n");

    EXPECT_EQ(cli({"registry", "restore", "HKCU\\Software\\Kopie", hive}).code, 1);
    EXPECT_EQ(cli({"--yes", "registry", "restore", "HKCU\\Software\\Kopie", hive}).code, 0);
    EXPECT_EQ(out({"registry", "diff", hive, "HKCU\\Software\\Kopie"}), "");
}

// A folder with the hives of a Windows is a machine of its own; the local registry stays as it is.
TEST_F(Registry, OrdnerAlsRechner) {
    const std::filesystem::path config = dir / "win" / "Windows" / "System32" / "config";
    std::filesystem::create_directories(config);
    out({"registry", "write", "HKLM\\Software\\Firma\\w", "REG_SZ", "hier"});
    out({"registry", "save", "HKLM\\Software", (config / "SOFTWARE").string()});
    out({"registry", "save", "HKLM\\System", (config / "SYSTEM").string()});
    const auto there = [&](std::vector<std::string> words) {
        words.insert(words.begin(), {"--machine", path("win")});
        return out(words);
    };
    EXPECT_EQ(there({"registry", "read", "HKLM\\Software\\Firma\\w"}), "hier\n");
    there({"registry", "write", "HKLM\\Software\\Firma\\w", "REG_SZ", "dort"});
    EXPECT_EQ(out({"registry", "read", (config / "SOFTWARE").string() + ":\\Firma\\w"}), "dort\n");
    EXPECT_EQ(out({"registry", "read", "HKLM\\Software\\Firma\\w"}), "hier\n");
    EXPECT_EQ(there({"registry", "list", "HKLM\\System"}), "ControlSet001\\\nCurrentControlSet\\\nSelect\\\nSetup\\\n");
    // ... and a place like any other, as is the registry of another home.
    const std::string changed = "- Firma\\\tw\tREG_SZ\thier\n+ Firma\\\tw\tREG_SZ\tdort\n";
    EXPECT_EQ(cli({"registry", "diff", "HKLM\\Software", path("win") + ":\\HKLM\\Software"}).out, changed);
    EXPECT_EQ(cli({"registry", "diff", "HKLM\\System", path("win")}).code, 0);
    out({"registry", "write", "HKCU\\Software\\Firma\\w", "REG_SZ", "da"}, "zweites");
    const std::string other = (dir / "zweites" / "registry.db").string();
    out({"registry", "copy", "HKLM\\Software\\Firma", other + ":\\HKLM\\Software\\Firma"});
    const Ergebnis stores = cli({"registry", "diff", (dir / "heim" / "registry.db").string(), other});
    EXPECT_EQ(stores.code, 1) << stores.err;
    const std::string sid = stores.out.substr(2, stores.out.find("\\Software") - 2);
    EXPECT_EQ(stores.out, "+ " + sid + "\\Software\\Firma\\\n+ " + sid + "\\Software\\Firma\\\tw\tREG_SZ\tda\n");
    EXPECT_EQ(cli({"registry", "list", path("heim")}).err, "Im Ordner \"" + path("heim") + "\" ist kein Windows (Windows\\System32\\config\\SOFTWARE fehlt).\n");
}

// Damage is passed over only when asked, and the damaged file stays as it is.
TEST_F(Registry, Retten) {
    importText(Bunt);
    out({"registry", "save", "HKCU\\Software\\Bunt", path("h.hiv")});
    std::string bytes = bytesOf(dir / "h.hiv");
    bytes[bytes.find("nk\x20", 4096 + 200)] = 'x';   // the key "Ünter"
    dir.put("h.hiv", bytes);
    const std::string place = path("h.hiv"), fault = "Hier müsste ein Schlüssel stehen.\n";
    const Ergebnis strict = cli({"registry", "list", place}), read = cli({"registry", "read", place + ":\\größe", "--salvage"});
    EXPECT_EQ(strict.code, 1);
    EXPECT_EQ(strict.out, "");
    EXPECT_NE(strict.err.find(fault + "Mit --salvage"), std::string::npos) << strict.err;
    EXPECT_EQ(read.out, "Ä \"in\" C:\\Ordner\n");
    EXPECT_EQ(read.err.substr(0, place.size() + 13), place + ", Position 0x");
    EXPECT_EQ(cli({"registry", "save", "--salvage", place + ":", path("heil.hiv")}).code, 0);
    EXPECT_EQ(cli({"registry", "diff", "HKCU\\Software\\Bunt", path("heil.hiv")}).out, "- Ünter\\\n- Ünter\\\tx\tREG_SZ\t1\n- Ünter\\leer\\\n");
    EXPECT_EQ(cli({"registry", "copy", "--salvage", "HKCU\\Software\\Bunt", place + ":\\neu"}).code, 1);
    EXPECT_EQ(bytesOf(dir / "h.hiv"), bytes);
}

TEST_F(Registry, FalscheAufrufe) {
    dir.put("kaputt.reg", "kein Text von hier");
    dir.put("kaputt.hiv", "regf und sonst nichts");
    const struct {
        std::vector<std::string> arguments;
        int code;
        std::string err;
    } cases[] = {
        {{"delete", "HKCU\\Software", "--value", "x", "--recursive"}, 2, "--value und --recursive schließen sich aus\n"},
        {{"delete", "HKLM", "--recursive"}, 1, "Ein Hauptschlüssel kann nicht gelöscht werden: HKLM\n"},
        {{"read", "HKLM"}, 1, "Der Pfad nennt keinen Wert.\n"},
        {{"write", "HKCU\\Software\\x", "REG_SZ"}, 2, "Es fehlt DATA oder --data-file\n"},
        {{"find", ""}, 2, "Der Suchtext ist leer.\n"},
        {{"find", "x", "HKCU\\fehlt"}, 1, "Der Schlüssel ist nicht vorhanden: HKCU\\fehlt\n"},
        {{"list", "gibt/es/nicht.hiv:\\A"}, 1, "Die Datei ist nicht vorhanden: gibt/es/nicht.hiv:\\A\n"},
        {{"list", path("kaputt.reg")}, 1, "Die Datei kaputt.reg kann nicht gelesen werden:\nZeile 1: Die Datei beginnt weder mit \"REGEDIT4\" noch mit \"Windows Registry Editor Version 5.00\".\n"},
        {{"diff", "HKCU", path("kaputt.reg")}, 2, "Die Datei kaputt.reg kann nicht gelesen werden:\nZeile 1: Die Datei beginnt weder mit \"REGEDIT4\" noch mit \"Windows Registry Editor Version 5.00\".\n"},
        {{"--machine", "FREMD", "list", "HKLM"}, 1, "Der Rechner \"FREMD\" ist nicht erreichbar: er wurde nicht gefunden\n"},
        {{"export", "HKCU\\fehlt", path("x.reg")}, 1, "Der Schlüssel ist nicht vorhanden: HKCU\\fehlt\n"},
    };
    for (const auto& c : cases) {
        std::vector<std::string> words{"registry"};
        words.insert(words.end(), c.arguments.begin(), c.arguments.end());
        const Ergebnis e = cli(words);
        EXPECT_EQ(e.code, c.code) << e.err;
        EXPECT_EQ(e.err, c.err);
        EXPECT_EQ(e.out, "");
    }
    const Ergebnis hive = cli({"registry", "list", path("kaputt.hiv")});
    EXPECT_EQ(hive.code, 1);
    EXPECT_NE(hive.err.find("kaputt.hiv"), std::string::npos);
    EXPECT_EQ(bytesOf(dir / "kaputt.hiv"), "regf und sonst nichts");
}

}  // namespace
}  // namespace brenvik::test
