// What a call says that cannot be carried out: which words, which exit code, nothing on stdout, and nothing is changed.
#include "CliFixture.h"

namespace brenvik::test {
namespace {

TEST_F(CliFixture, WrongCalls) {
    dir.put("kaputt.toml", "format = 1\n[[tipp]]\nnummer = 31999\n");
    dir.put("kaputt.reg", "kein Text von hier");
    dir.put("kaputt.hiv", "regf und sonst nichts");
    const std::string help = "\nbrenvik-cli --help nennt, was möglich ist.\n", noReg = "Die Datei kaputt.reg kann nicht gelesen werden:\nZeile 1: Die Datei beginnt weder mit "
                             "\"REGEDIT4\" noch mit \"Windows Registry Editor Version 5.00\".\n";
    const struct {
        Words arguments;
        int code;
        std::string err;   // empty: whatever it says
    } cases[] = {
        {{}, 2, "Es fehlt der Befehl." + help},
        {{"unfug"}, 2, "Unbekannter Befehl: unfug" + help},
        {{"registry", "unfug"}, 2, "Unbekannter Befehl: unfug" + help},
        {{"registry", "find"}, 2, "Es fehlt: TEXT" + help},
        {{"registry", "read", "HKCU\\a", "b", "c"}, 2, "Unbekannte Angabe: b c" + help},
        {{"registry", "list", "HKCU", "--unfug"}, 2, "Unbekannte Angabe: --unfug" + help},
        {{"tip", "show", "eins"}, 2, "Ungültige Angabe: \"eins\" ist keine ganze Zahl von 1 bis 2147483647" + help},
        {{"--machine"}, 2, "Zu wenige oder zu viele Angaben: --machine" + help},
        {{"--machine", ".", "--user", "", "tip", "list"}, 2, "Ungültige Angabe: Hinter --user steht nichts." + help},
        {{"--machine", "", "tip", "list"}, 2, "Ungültige Angabe: Hinter --machine steht nichts." + help},
        {{"tip", "show", "31999"}, 1, "Den Tipp 31999 gibt es nicht\n"},
        {{"tip", "set", "109", "vielleicht"}, 1, "\"vielleicht\" passt nicht: erwartet wird on oder off\n"},
        {{"tip", "set", "109", "--entry", "9", "on"}, 1, "Der Tipp hat keinen Eintrag 9\n"},
        {{"tip", "set", "109", "--entry", "65537", "on"}, 1, "Der Tipp hat keinen Eintrag 65537\n"},   // not entry 1
        {{"tip", "set", "109", "--entry", "4294967297", "on"}, 2, "Ungültige Angabe: \"4294967297\" ist keine ganze Zahl von 1 bis 2147483647" + help},
        {{"tip", "show", "4294967405"}, 2, {}},
        {{"export", "reg", "4294967405"}, 2, {}},
        {{"export", "reg", "109", "--set", "109:65537=off"}, 1, "Tipp 109: Der Tipp hat keinen Eintrag 65537\n"},
        {{"history", "show", "99999999999999999999"}, 2, {}},
        {{"tip", "new", "607", "   ", "--command", "x"}, 1, "Ein Schlüsselname darf nicht leer sein und das Zeichen \"\\\" nicht enthalten.\n"},
        {{"tip", "set", "109", "--entry", "1", "--entry", "2", "on"}, 2, "Zu jedem --entry gehört genau ein TEXT\n"},
        {{"tip", "list", "--view", "os2"}, 2, {}},
        {{"registry", "write", "HKCU\\Software\\x", "REG_FALSCH", "1"}, 2, "Unbekannter Datentyp: REG_FALSCH\n"},
        {{"registry", "write", "HKCU\\Software\\x", "REG_DWORD", "zwei"}, 1, {}},
        {{"registry", "read", "HKXX\\x"}, 1, "Es wurde kein gültiger Hauptschlüssel angegeben\n"},
        {{"registry", "read", "HKCU\\Software\\fehlt"}, 1, "Der Wert ist nicht vorhanden: HKCU\\Software\\fehlt\n"},
        {{"export", "reg", "31999"}, 1, "Tipp 31999: Den Tipp gibt es nicht\n"},
        {{"export", "adm", "109"}, 1, "Tipp 109: Er ist nicht für Vorlagen freigegeben\n"},
        {{"export", "reg", "109", "--set", "109=vielleicht"}, 1, "Tipp 109: \"vielleicht\" passt nicht: erwartet wird on oder off\n"},
        {{"export", "reg", "109", "--set", "110=off"}, 1, {}},
        {{"export", "reg", "109", "-o", path("fehlt/x.reg")}, 1, {}},
        {{"list", "save", "/dev/full", "109"}, 1, {}},
        {{"export", "admx", "/dev/full/x", "116"}, 1, "Der Ordner /dev/full/x/de-DE kann nicht angelegt werden. Der Pfad führt durch eine Datei.\n"},
        {{"export", "reg"}, 2, {}},
        {{"export", "polfile", "109", "--class", "server"}, 2, {}},
        {{"list", "load", path("kaputt.toml")}, 1,
         "Zeile 2: Den Tipp 31999 gibt es in der Datenbank nicht\nDie Liste wurde nicht geladen, nichts wurde geändert.\n"},
        {{"registry", "delete", "HKCU\\Software", "--value", "x", "--recursive"}, 2, "--value und --recursive schließen sich aus\n"},
        {{"registry", "delete", "HKLM", "--recursive"}, 1, "Ein Hauptschlüssel kann nicht gelöscht werden: HKLM\n"},
        {{"registry", "read", "HKLM"}, 1, "Der Pfad nennt keinen Wert.\n"},
        {{"registry", "write", "HKCU\\Software\\x", "REG_SZ"}, 2, "Es fehlt DATA oder --data-file\n"},
        {{"registry", "find", ""}, 2, "Der Suchtext ist leer.\n"},
        {{"registry", "check", "/fehlt"}, 2, "Die Datei \"/fehlt\" kann nicht gelesen werden: Die Datei oder ihr Ordner ist nicht vorhanden.\n"},
        {{"registry", "find", "x", "HKCU\\fehlt"}, 1, "Der Schlüssel ist nicht vorhanden: HKCU\\fehlt\n"},
        {{"registry", "list", "gibt/es/nicht.hiv:\\A"}, 1, "Die Datei ist nicht vorhanden: gibt/es/nicht.hiv:\\A\n"},
        {{"registry", "list", path("kaputt.reg")}, 1, noReg},
        {{"registry", "diff", "HKCU", path("kaputt.reg")}, 2, noReg},
        {{"registry", "--machine", "FREMD", "list", "HKLM"}, 1, "Der Rechner \"FREMD\" ist nicht erreichbar: er wurde nicht gefunden\n"},
        {{"registry", "export", "HKCU\\fehlt", path("x.reg")}, 1, "Der Schlüssel ist nicht vorhanden: HKCU\\fehlt\n"},
        {{"registry", "list", path("kaputt.hiv")}, 1, {}},
    };
    for (const auto& c : cases) {
        const CommandRun e = cli(c.arguments);
        EXPECT_EQ(e.code, c.code) << e.err;
        EXPECT_EQ(e.out, "");
        EXPECT_NE(e.err, "");
        if (!c.err.empty()) {
            EXPECT_EQ(e.err, c.err);
        }
        EXPECT_EQ(e.err.find("gespeichert"), std::string::npos);
    }
    EXPECT_EQ(bytesOf(dir / "kaputt.hiv"), "regf und sonst nichts");
    const CommandRun full = run("sh", {"-c", "exec \"$0\" --home \"$1\" export reg 109 >/dev/full", program, path("heim")});
    EXPECT_EQ(full.code, 1);
    EXPECT_EQ(full.err, "Die Ausgabe konnte nicht geschrieben werden. Der Datenträger ist voll.\n");
}

}  // namespace
}  // namespace brenvik::test
