// The registry commands, driven as a user would: whole outputs, exit codes, and what is in the registry afterwards.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "CliFixture.h"
#include "frame/text/Characters.h"
#include "frame/text/Codepage.h"
#include "frame/text/ShownText.h"
#include "hive/HiveTestSupport.h"

namespace brenvik::test {
namespace {

// All types, odd names, unnamed and empty values, and a dword of the wrong length.
constexpr const char* Motley = R"(Windows Registry Editor Version 5.00

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

class Registry : public CliFixture {
protected:
    void importText(const std::string& text) {
        dir.put("ein.reg", text);
        EXPECT_EQ(out({"registry", "import", path("ein.reg")}), "");
    }
};

TEST_F(Registry, ListReadWriteDelete) {
    importText(Motley);
    EXPECT_EQ(out({"registry", "list", "HKCU\\Software\\Bunt"}),
              "Ünter\\\n(Standard)\tREG_SZ\tohne Namen\nGröße\tREG_SZ\tÄ \"in\" C:\\Ordner\nΑθήνα\tREG_DWORD\t-2\na\\b\tREG_SZ\tSchrägstrich\n"
              "a\"b\tREG_SZ\tAnführung\nleer\tREG_SZ\t\nnichts\tREG_BINARY\t\nkurz\tREG_DWORD\t01 02\ntyp\t127\tDE AD\nohne Ende\tREG_SZ\tA\n"
              "multi\tREG_MULTI_SZ\teins|zwei\nerw\tREG_EXPAND_SZ\t%W%\nnone\tREG_NONE\t\nqword\t11\t01 00 00 00 00 00 00 00\n");
    const auto json = parsed({"registry", "list", "HKCU\\Software\\Bunt\\"});
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
    EXPECT_EQ(fails({"registry", "delete", "HKCU\\Software\\Neu\\"}), "Der Schlüssel hat Unterschlüssel und wurde nicht gelöscht (mit --recursive wird er es): HKCU\\Software\\Neu\\\n");
    EXPECT_EQ(cli({"registry", "delete", "HKCU\\Software\\Neu", "--recursive"}).code, 1);
    EXPECT_EQ(out({"registry", "list", "HKCU\\Software\\Neu"}), "Leer\\\n(Standard)\tREG_SZ\t<delkey>\n");
    EXPECT_EQ(cli({"--yes", "registry", "delete", "HKCU\\Software\\Neu", "--recursive"}).code, 0);
    EXPECT_EQ(cli({"registry", "list", "HKCU\\Software\\Neu"}).err, "Der Schlüssel ist nicht vorhanden: HKCU\\Software\\Neu\n");
}

TEST_F(Registry, ExportAndImportGiveTheSame) {
    importText(Motley);
    out({"registry", "export", "HKCU\\Software\\Bunt", path("aus.reg")});
    const std::string bytes = bytesOf(dir / "aus.reg");
    EXPECT_EQ(bytes.substr(0, 4), std::string("\xFF\xFEW\0", 4));
    out({"registry", "import", path("aus.reg")}, "zweites");
    out({"registry", "export", "HKCU\\Software\\Bunt", path("nochmal.reg")}, "zweites");
    EXPECT_EQ(bytesOf(dir / "nochmal.reg"), bytes);
    EXPECT_EQ(out({"registry", "diff", "HKCU\\Software\\Bunt", path("ein.reg")}, "zweites"), "");

    const CommandRun lossy = cli({"registry", "export", "HKCU\\Software\\Bunt", path("alt.reg"), "--regedit4"});
    EXPECT_EQ(lossy.code, 1);   // Greek
    EXPECT_EQ(lossy.err, "Ausgelassen: HKCU\\Software\\Bunt\\\tΑθήνα\n"
                         "Einträge, die sich in diesem Format nicht darstellen lassen und in der Datei fehlen: 1. Soll sie trotzdem geschrieben werden? [Nein; mit --yes wird Ja geantwortet]\n");
    for (const std::string& name : dir.names()) EXPECT_NE(name.substr(0, 7), "alt.reg");   // nor what was written so far
    out({"registry", "export", "HKCU\\Software\\Bunt\\Ünter", path("alt.reg"), "--regedit4"});
    EXPECT_EQ(utf8FromAnsi(bytesOf(dir / "alt.reg")), "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Bunt\\Ünter]\r\n\"x\"=\"1\"\r\n\r\n[HKEY_CURRENT_USER\\Software\\Bunt\\Ünter\\leer]\r\n\r\n");
}

TEST_F(Registry, ADryRunShowsAndLeavesAll) {
    importText(Motley);
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
    const auto json = parsed({"registry", "import", path("probe.reg"), "--dry-run"});
    EXPECT_EQ(json[0]["old"], (nlohmann::json{{"type", "REG_SZ"}, {"data", ""}}));
    EXPECT_EQ(json[2]["old"], nullptr);
    out({"registry", "export", "HKCU\\Software", path("nachher.reg")});
    EXPECT_EQ(bytesOf(dir / "nachher.reg"), bytesOf(dir / "vorher.reg"));
}

TEST_F(Registry, OneErrorRefusesTheWholeFile) {
    dir.put("f.reg", "REGEDIT4\n[HKEY_CURRENT_USER\\Software\\F]\n\"a\"=\"1\"\n\"b\"=dword:xyz\nUnsinn\n");
    EXPECT_EQ(fails({"registry", "import", path("f.reg")}), path("f.reg") + ", Zeile 4: Hinter dword: gehören ein bis acht hexadezimale Ziffern.\n" + path("f.reg") +
                              ", Zeile 5: Die Zeile ist weder ein Schlüssel noch ein Wert.\nDie Datei wurde nicht eingelesen, nichts wurde geändert.\n");
    const std::string key(256, 'k'), name(16384, 'n');
    dir.put("g.reg", "REGEDIT4\n[HKEY_CURRENT_USER\\Software\\F]\n\"a\"=\"1\"\n\"" + name + "\"=\"1\"\n[HKEY_CURRENT_USER\\Software\\" + key + "]\n");
    for (const bool dry : {false, true}) {
        std::vector<std::string> words{"registry", "import", path("g.reg")};
        if (dry) words.emplace_back("--dry-run");
        const CommandRun limits = cli(words);
        EXPECT_EQ(limits.code, 1);
        EXPECT_EQ(limits.out, "");
        EXPECT_EQ(limits.err, path("g.reg") + ", Zeile 4: Ein Wertname darf höchstens 16383 Zeichen haben.\n" + path("g.reg") +
                                  ", Zeile 5: Ein Schlüsselname darf höchstens 255 Zeichen haben.\nDie Datei wurde nicht eingelesen, nichts wurde geändert.\n");
    }
    EXPECT_EQ(cli({"registry", "list", "HKCU\\Software\\F"}).code, 1);
}

TEST_F(Registry, FindsByTextAndExpression) {
    importText(Motley);
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
    EXPECT_EQ(fails({"registry", "find", "(", "--regex"}, 2), "\"(\" ist kein gültiger regulärer Ausdruck.\n");
    out({"registry", "write", "HKCU\\Software\\Lang\\w", "REG_SZ", std::string(200, 'x')});
    const CommandRun e = cli({"registry", "find", "(x+x+)+y", "HKCU\\Software\\Lang", "--regex"});   // would take longer than the universe lasts
    EXPECT_EQ(e.code, 1);
    EXPECT_EQ(e.err.substr(0, e.err.find(": ")), "Der reguläre Ausdruck \"(x+x+)+y\" ist zu aufwendig");
}

// A value of the greatest size: no step of a recursive matcher may go as deep as a text is long.
TEST_F(Registry, TheLargestValue) {
    dir.put("gross.txt", std::string(8 * 1024 * 1024 - 1, 'a'));
    out({"registry", "write", "HKCU\\Software\\Gross\\w", "REG_SZ", "--data-file", path("gross.txt")});
    EXPECT_EQ(out({"registry", "find", "^(a|b)*$", "HKCU\\Software\\Gross", "--regex"}), "");
    out({"registry", "export", "HKCU\\Software\\Gross", path("gross.reg")});
    out({"registry", "diff", "HKCU\\Software\\Gross", path("gross.reg")});
    dir.put("gross.txt", std::string(8 * 1024 * 1024, 'a'));
    EXPECT_EQ(fails({"registry", "write", "HKCU\\Software\\Gross\\w", "REG_SZ", "--data-file", path("gross.txt")}), "Ein Wert darf höchstens 16 MB groß sein.\n");
}

TEST_F(Registry, ControlCEndsItCleanly) {
    // The expression takes the square of a text's length for each value, so that the signal comes in the midst.
    std::string text = "REGEDIT4\n[HKEY_CURRENT_USER\\Software\\Viel]\n";
    for (int i = 0; i < 1000; ++i) text += "\"w" + std::to_string(i) + "\"=\"" + std::string(1500, 'a') + "\"\n";
    importText(text);
    const CommandRun e = run("/usr/bin/timeout", {"--foreground", "--preserve-status", "-s", "INT", "1", program, "--home",
                                                path("heim"), "registry", "find", "(a|b)*c", "HKCU\\Software\\Viel", "--regex"});
    EXPECT_EQ(e.code, 130);
    EXPECT_EQ(e.err, "Die Suche wurde abgebrochen.\n");
}

TEST_F(Registry, DiffCopyAndHives) {
    importText(Motley);
    const std::string b = "HKCU\\Software\\Bunt", hive = path("h.hiv");
    out({"registry", "save", b, hive});
    EXPECT_EQ(out({"registry", "diff", b, hive}), "");
    EXPECT_EQ(out({"registry", "diff", path("ein.reg"), hive}), "");
    EXPECT_EQ(cli({"registry", "save", b, hive}).code, 1);
    out({"registry", "write", hive + ":\\Ünter\\x", "REG_SZ", "2"});
    out({"registry", "write", hive + ":\\", "--value", "ohne Ende", "REG_SZ", "A"});
    out({"registry", "write", hive + ":\\Neu\\y", "REG_DWORD", "7"});
    out({"registry", "delete", hive + ":\\leer"});
    const CommandRun diff = cli({"registry", "diff", b, hive});
    EXPECT_EQ(diff.code, 1);
    EXPECT_EQ(diff.err, "");
    EXPECT_EQ(diff.out, "- \\\tleer\tREG_SZ\t\n- \\\tohne Ende\tREG_SZ\tA\t[41 00]\n+ \\\tohne Ende\tREG_SZ\tA\t[41 00 00 00]\n"
                        "+ Neu\\\n+ Neu\\\ty\tREG_DWORD\t7\n- Ünter\\\tx\tREG_SZ\t1\n+ Ünter\\\tx\tREG_SZ\t2\n");
    const CommandRun json = cli({"--json", "registry", "diff", b + "\\Ünter", hive + ":\\Ünter"});
    EXPECT_EQ(json.code, 1);
    EXPECT_EQ(nlohmann::json::parse(json.out),
              nlohmann::json::parse(R"({"equal":false,"differences":[{"key":"","name":"x","a":{"type":"REG_SZ","data":"1"},"b":{"type":"REG_SZ","data":"2"}}]})"));
    EXPECT_EQ(fails({"registry", "diff", b, "HKCU\\Software\\fehlt"}, 2), "Der Schlüssel ist nicht vorhanden: HKCU\\Software\\fehlt\n");

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
TEST_F(Registry, AFolderAsTheMachine) {
    const std::filesystem::path config = dir / "win" / "Windows" / "System32" / "config";
    std::filesystem::create_directories(config);
    out({"registry", "write", "HKLM\\Software\\Firma\\w", "REG_SZ", "hier"});
    out({"registry", "save", "HKLM\\Software", (config / "SOFTWARE").string()});
    out({"registry", "save", "HKLM\\System", (config / "SYSTEM").string()});
    out({"registry", "write", "HKU\\.DEFAULT\\Firma\\w", "REG_SZ", "einmal"});
    out({"registry", "save", "HKU\\.DEFAULT", (config / "DEFAULT").string()});
    EXPECT_EQ(cli({"--yes", "registry", "delete", "HKU\\.DEFAULT\\Firma\\", "--recursive"}).code, 0);
    const auto there = [&](std::vector<std::string> words) {
        words.insert(words.begin(), {"--machine", path("win")});
        const CommandRun e = cli(words);
        EXPECT_EQ(e.code, 0) << e.err;
        EXPECT_EQ(e.err.substr(0, e.err.find("Zum Profil")), "Die Hivedatei SAM fehlt.\nDie Hivedatei SECURITY fehlt.\n");
        return e.out;
    };
    EXPECT_EQ(there({"registry", "read", "HKLM\\Software\\Firma\\w"}), "hier\n");
    there({"registry", "write", "HKLM\\Software\\Firma\\w", "REG_SZ", "dort"});
    EXPECT_EQ(out({"registry", "read", (config / "SOFTWARE").string() + ":\\Firma\\w"}), "dort\n");
    EXPECT_EQ(out({"registry", "read", "HKLM\\Software\\Firma\\w"}), "hier\n");
    EXPECT_EQ(there({"registry", "list", "HKLM\\System"}), "ControlSet001\\\nCurrentControlSet\\\nSelect\\\nSetup\\\n");
    // Files belong to the machine, too: its own boot menu is shown and written.
    const std::string boot = "[boot loader]\r\ntimeout=30\r\n[operating systems]\r\nmulti(0)disk(0)rdisk(0)partition(1)\\WINDOWS=\"Dort\" /FASTDETECT\r\n";
    dir.put("win/BOOT.INI", boot);
    const std::string local = bytesOf(dir / "heim/drive_c/boot.ini");
    EXPECT_NE(there({"tip", "show", "2207"}).find("30"), std::string::npos);
    there({"--yes", "tip", "set", "2207", "7"});
    EXPECT_EQ(bytesOf(dir / "win/BOOT.INI"), std::string(boot).replace(boot.find("30"), 2, "7"));
    EXPECT_EQ(bytesOf(dir / "heim/drive_c/boot.ini"), local);
    dir.put("win/hiberfil.sys", "hibr");
    EXPECT_EQ(cli({"--machine", path("win"), "tip", "set", "2207", "8"}).code, 1);
    EXPECT_EQ(bytesOf(dir / "win/BOOT.INI"), std::string(boot).replace(boot.find("30"), 2, "7"));
    std::filesystem::remove(dir / "win/hiberfil.sys");
    std::filesystem::rename(dir / "win/BOOT.INI", dir / "draussen.ini");
    std::filesystem::create_symlink("../draussen.ini", dir / "win/boot.ini");
    EXPECT_NE(cli({"--machine", path("win"), "tip", "show", "2207"}).out.find("nicht erreichbar"), std::string::npos);
    EXPECT_EQ(cli({"--machine", path("win"), "--yes", "tip", "set", "2207", "9"}).code, 1);
    EXPECT_EQ(bytesOf(dir / "draussen.ini"), std::string(boot).replace(boot.find("30"), 2, "7"));
    // ... and a place like any other, as is the registry of another home.
    const std::string changed = "- Firma\\\tw\tREG_SZ\thier\n+ Firma\\\tw\tREG_SZ\tdort\n";
    EXPECT_EQ(cli({"registry", "diff", "HKLM\\Software", path("win") + ":\\HKLM\\Software"}).out, changed);
    EXPECT_EQ(cli({"registry", "diff", "HKLM\\System", path("win")}).code, 0);
    EXPECT_EQ(run(program, {"--home", path("heim"), "registry", "diff", "HKLM\\Software", "win:\\HKLM\\Software"},
                  {"-C", dir.path().string()}).out, changed);
    EXPECT_EQ(there({"registry", "find", "einmal"}), "HKU\\.DEFAULT\\Firma\\\tw\tREG_SZ\teinmal\n");
    there({"registry", "export", "HKU", path("hku.reg")});
    EXPECT_EQ(out({"registry", "list", path("hku.reg") + ":\\HKU"}), ".DEFAULT\\\n");
    dir.put("win/Windows/System32/config/SYSTEM", "regf und sonst nichts");
    const CommandRun found = cli({"--machine", path("win"), "registry", "find", "dort", "HKLM"}), written = cli({"--machine", path("win"), "registry", "export", "HKLM", path("hklm.reg")});
    EXPECT_EQ(found.code, 1);
    EXPECT_EQ(found.out, "HKLM\\Software\\Firma\\\tw\tREG_SZ\tdort\n");
    EXPECT_NE(found.err.find("\nNicht lesbar: HKLM\\System\\\t"), std::string::npos) << found.err;
    EXPECT_EQ(written.code, 1);
    EXPECT_NE(written.err.find("\nNicht lesbar: HKLM\\System\\\t"), std::string::npos) << written.err;
    EXPECT_EQ(out({"registry", "diff", path("hklm.reg") + ":\\HKLM\\Software", path("win") + ":\\HKLM\\Software"}), "");
    out({"registry", "write", "HKCU\\Software\\Firma\\w", "REG_SZ", "da"}, "zweites");
    const std::string other = (dir / "zweites" / "registry.db").string();
    out({"registry", "copy", "HKLM\\Software\\Firma", other + ":\\HKLM\\Software\\Firma"});
    const CommandRun stores = cli({"registry", "diff", (dir / "heim" / "registry.db").string(), other});
    EXPECT_EQ(stores.code, 1) << stores.err;
    const std::string sid = stores.out.substr(2, stores.out.find("\\Software") - 2);
    EXPECT_EQ(stores.out, "+ " + sid + "\\Software\\Firma\\\n+ " + sid + "\\Software\\Firma\\\tw\tREG_SZ\tda\n");
    EXPECT_EQ(cli({"registry", "list", path("heim")}).err, "Im Ordner \"" + path("heim") + "\" ist kein Windows (Windows\\System32\\config\\SOFTWARE fehlt).\n");
}

TEST_F(Registry, CheckAndRecoverAHive) {
    importText(Motley);
    out({"registry", "save", "HKCU\\Software\\Bunt", path("h.hiv")});
    EXPECT_EQ(out({"registry", "check", path("h.hiv")}), "0 Fehler, 0 Hinweise\n");
    const std::string good = bytesOf(dir / "h.hiv");
    std::string bytes = good;
    bytes[bytes.find("nk\x20", 4096 + 200)] = 'x';
    dir.put("h.hiv", bytes);
    const CommandRun faulty = cli({"registry", "check", path("h.hiv")});
    EXPECT_EQ(faulty.code, 1);
    EXPECT_NE(faulty.out.find("\tHier müsste ein Schlüssel stehen.\n"), std::string::npos) << faulty.out;
    EXPECT_EQ(parsed({"registry", "check", path("h.hiv")})["dirty"], false);
    EXPECT_EQ(cli({"registry", "recover", path("h.hiv"), path("heil.hiv")}).code, 1);
    EXPECT_FALSE(std::filesystem::exists(path("heil.hiv")));
    EXPECT_EQ(cli({"registry", "recover", "--salvage", path("h.hiv"), path("heil.hiv")}).code, 0);
    EXPECT_EQ(cli({"registry", "diff", "HKCU\\Software\\Bunt", path("heil.hiv")}).out, "- Ünter\\\n- Ünter\\\tx\tREG_SZ\t1\n- Ünter\\leer\\\n");
    EXPECT_EQ(cli({"registry", "recover", path("h.hiv"), path("heil.hiv")}).err, "Die Datei ist schon vorhanden und bleibt, wie sie ist: " + path("heil.hiv") + "\n");
    EXPECT_EQ(cli({"registry", "check", path("ein.reg")}).code, 2);
    // The other commands pass damage over only when asked.
    const std::string place = path("h.hiv");
    const CommandRun strict = cli({"registry", "list", place}), read = cli({"registry", "read", place + ":\\größe", "--salvage"});
    EXPECT_EQ(std::to_string(strict.code) + strict.out, "1");
    EXPECT_NE(strict.err.find("Hier müsste ein Schlüssel stehen.\nMit --salvage"), std::string::npos) << strict.err;
    EXPECT_EQ(read.out, "Ä \"in\" C:\\Ordner\n");
    EXPECT_EQ(read.err.substr(0, place.size() + 13), place + ", Position 0x");
    EXPECT_EQ(cli({"registry", "save", "--salvage", place + ":", path("auch.hiv")}).code, 0);
    EXPECT_EQ(out({"registry", "diff", path("auch.hiv"), path("heil.hiv")}), "");
    EXPECT_EQ(cli({"registry", "copy", "--salvage", "HKCU\\Software\\Bunt", place + ":\\neu"}).code, 1);
    EXPECT_EQ(bytesOf(dir / "h.hiv"), bytes);

    const char* const data = std::getenv("BRENVIK_TESTDATA");
    if (data == nullptr || *data == 0) GTEST_SKIP() << "BRENVIK_TESTDATA is not set";
    const std::filesystem::path genuine = std::filesystem::path(data) / "hives" / "schmutzig";
    const std::string dirty = (genuine / "NewDirtyHive").string(), used = "NewDirtyHive.LOG";
    const CommandRun asIs = cli({"registry", "check", dirty}), withLogs = cli({"registry", "check", "--logs", dirty});
    EXPECT_EQ(asIs.code, 1);
    EXPECT_NE(asIs.err.find("mit --logs"), std::string::npos);
    EXPECT_EQ(withLogs.code, 0) << withLogs.out;
    EXPECT_EQ(out({"registry", "recover", dirty, path("neu.hiv")}), withLogs.out.substr(0, withLogs.out.find("Hinweis")));
    EXPECT_EQ(withLogs.out.substr(0, used.size()), used);
    EXPECT_EQ(bytesOf(dir / "neu.hiv"), bytesOf(genuine / "RecoveredHive_Windows10"));
    // Its first block lost, the logs have it.
    for (const char* ending : {"", ".LOG1", ".LOG2"}) dir.put(std::string("x") + ending, bytesOf(dirty + ending));
    dir.put("x", std::string(4096, '\0') + bytesOf(dirty).substr(4096));
    EXPECT_EQ(out({"registry", "diff", path("x"), path("neu.hiv")}), "");
}

#if !defined(__SANITIZE_ADDRESS__)
// Bytes, tree and new file are never all there at once.
TEST_F(Registry, OneWriteTakesLessThanFourTimesTheHive) {
    Hive hive = hivetest::sampleHive(5, 0);
    for (int i = 0; i < 600; ++i) {
        HiveKey& key = hivetest::put(hive.root, "Device Parameters " + std::to_string(i), 0);
        for (int k = 0; k < 40; ++k) {
            HiveKey& below = hivetest::put(key, "{4D36E96" + std::to_string(100 + k) + "-E325-11CE}", 0);
            for (unsigned v = 0; v < 4; ++v) below.values.push_back({"Value Name " + std::to_string(v), {3, Bytes(4 + 20 * v, 1)}});
        }
    }
    const Bytes bytes = writeHive(hive);
    hivetest::save(dir / "gross.hiv", bytes);
    const std::string home = path("heim"), value = path("gross.hiv") + ":\\Neu\\x";
    cli({"registry", "list", "HKCU"});
    const pid_t child = ::fork();
    if (child == 0) {
        ::execl(program.c_str(), program.c_str(), "--home", home.c_str(), "registry", "write", value.c_str(), "REG_SZ", "y", static_cast<char*>(nullptr));
        ::_exit(127);
    }
    int status = 0;
    rusage used{};
    ::wait4(child, &status, 0, &used);
    EXPECT_EQ(status, 0);
    EXPECT_LT(static_cast<double>(used.ru_maxrss) * 1024 / static_cast<double>(bytes.size()), 4.0) << bytes.size();
}
#endif

// What is written into a Windows that sleeps is undone when it wakes.
TEST_F(Registry, ASleepingWindowsIsAskedAbout) {
    const std::filesystem::path config = dir / "win" / "Windows" / "System32" / "config";
    std::filesystem::create_directories(config);
    out({"registry", "write", "HKLM\\Software\\Firma\\w", "REG_SZ", "vorher"});
    const std::string software = (config / "SOFTWARE").string();
    out({"registry", "save", "HKLM\\Software", software});
    const struct {
        std::string image;
        bool sleeps;
    } cases[] = {{"hibr", true}, {"HIBR", true}, {"RSTR", true}, {"HORM", true}, {"wake", false}, {"WAKE", false}, {std::string(4096, '\0'), false}, {"", false}};
    int number = 0;
    for (const auto& c : cases) {
        dir.put("win/hiberfil.sys", c.image);
        for (const auto& where : {std::vector<std::string>{"--machine", path("win"), "registry", "write", "HKLM\\Software\\Firma\\w"},
                                  std::vector<std::string>{"registry", "write", software + ":\\Firma\\w"}}) {
            std::vector<std::string> words = where;
            words.insert(words.end(), {"REG_SZ", std::to_string(++number)});
            const std::string before = bytesOf(software);
            const CommandRun refused = cli(words);
            EXPECT_EQ(refused.code, c.sleeps ? 1 : 0) << refused.err;
            EXPECT_EQ(refused.err.find("ist im Ruhezustand") != std::string::npos, c.sleeps) << refused.err;
            EXPECT_EQ(bytesOf(software) == before, c.sleeps);
            words.insert(words.begin(), "--yes");
            EXPECT_EQ(cli(words).code, 0);
        }
    }
}

// ESC, a C1 control, a mark of direction and half a character in names, data and what is typed.
TEST_F(Registry, NothingControlsTheTerminal) {
    const std::string evil = "a\x1B[2J\u009B3m\u202Efdp", marked = "a␛[2J‹U+009B›3m‹U+202E›fdp";
    const std::string place = "HKCU\\Software\\Bunt\\" + evil, notice = "HKLM\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon\\LegalNoticeCaption";
    importText("Windows Registry Editor Version 5.00\n[HKEY_CURRENT_USER\\Software\\Bunt\\" + evil + "]\n\"" + evil + "\"=\"" + evil + "\"\n\"halb\"=hex(1):41,00,00,d8,42,00,00,00\n");
    out({"registry", "write", notice, "REG_SZ", "vorher"});
    EXPECT_EQ(cli({"tip", "set", "1806", evil}).code, 0);
    out({"registry", "write", notice, "REG_SZ", evil + "\n2"});
    dir.put("neu.reg", "REGEDIT4\n[HKEY_CURRENT_USER\\Software\\Bunt\\x\x1By]\n");

    std::string seen;
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"registry", "list", place}, {"registry", "find", "fdp"}, {"registry", "diff", place, "HKCU\\Software"}, {"registry", "import", path("neu.reg"), "--dry-run"},
             {"registry", "read", place + "\\nichts"}, {"registry", "delete", place, "--recursive"}, {"tip", "show", "1806"}, {"tip", "list", "--values"},
             {"tip", "set", "1806", evil, "--dry-run"}, {"history", "list"}, {"history", "show", "1"}, {"history", "undo", "1", "--exact"}, {"drift"}, {evil}, {"--machine", evil, "tip", "list"}}) {
        const CommandRun ran = cli(arguments);
        seen += ran.out + ran.err;
    }
    for (std::size_t at = 0; at < seen.size();) {
        const std::size_t start = at;
        const char32_t c = characters::next(seen, at);
        ASSERT_FALSE((c < 0x20 && c != '\n' && c != '\t') || c == 0x7F || (c & characters::BadByte) || isUnseen(c)) << seen.substr(start > 200 ? start - 200 : 0, 300);
    }
    EXPECT_NE(seen.find(marked + "\tREG_SZ\t" + marked + "\n"), std::string::npos);
    EXPECT_NE(seen.find("   Anzeige: " + marked + "|2\n"), std::string::npos) << "a line break makes no line of its own";
    EXPECT_EQ(out({"registry", "read", place, "--value", evil}), evil + "\n") << "a script gets the value";
    const std::string text = out({"--json", "registry", "list", place});
    EXPECT_EQ(text.find(evil.substr(5)), std::string::npos);
    const auto json = nlohmann::json::parse(text);
    EXPECT_EQ(json["values"][0], (nlohmann::json{{"name", evil}, {"type", "REG_SZ"}, {"data", evil}}));
    EXPECT_EQ(json["values"][1], (nlohmann::json{{"name", "halb"}, {"type", "REG_SZ"}, {"data", "A\uFFFDB"}, {"raw", "41 00 00 D8 42 00 00 00"}, {"replaced", nlohmann::json::array({"data"})}}));
}

}  // namespace
}  // namespace brenvik::test
