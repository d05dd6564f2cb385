// The tip compiler, driven as the build drives it: what it writes, and what it refuses with which words.
#include <gtest/gtest.h>

#include "World.h"
#include "frame/text/Conversions.h"
#include "support/CommandRun.h"

namespace brenvik::test {
namespace {

struct Output {
    int exit = -1;
    std::string text;  // both streams
};

Output run(const std::filesystem::path& folder, const std::string& arguments) {
    const CommandRun ran = test::run(BRENVIK_PROGRAMM_DIR "/tipdb-bauen", Split(arguments, " "), {"-C", folder.string()});
    return {ran.code, ran.err + ran.out};
}

const std::string Versions = "[[version]]\nversion = \"1.0.0\"\ndatum = \"02.03.2001\"\nformat = \"7\"\n[[version]]\nversion = \"1.2.18\"\ndatum = \"09.11.2002\"\nformat = \"8\"\n";

// Lines 1 to 5 of a.toml; the rest is the test's.
const std::string Group = "[gruppe]\nnummer = 3\nname = \"Oberfläche\"\nbeschreibung = \"Text\"\nreihenfolge = 10\n";

// Lines 6 to 12.
const std::string Tip = "[[tipp]]\nnummer = 301\ntitel = \"Menüs\"\nbeschreibung = \"Zeile 1\\nZeile 2\"\nsysteme = [\"98\", \"XP\"]\nneu = \"1.0.0\"\nneustart = \"desktop\"\n";

// Lines 13 to 17, without the kind.
std::string value(const std::string& rest) {
    return "[[tipp.wert]]\nwurzel = \"HKCU\"\nschluessel = 'Control Panel\\Desktop'\nname = \"X\"\ntyp = \"REG_SZ\"\n" + rest;
}

class TipBuild : public testing::Test {
protected:
    TipBuild() { dir.put("t/version.toml", Versions); }
    Output build(const std::string& text) {
        dir.put("t/a.toml", text);
        return run(dir.path(), "t R.mdb");
    }
    TempDir dir;
};

TEST_F(TipBuild, whatIsWritten) {
    dir.put("t/b.toml", "[gruppe]\nnummer = 1\nname = \"Unten\"\nbeschreibung = \"\"\noberhalb = 3\nreihenfolge = 1\n");
    dir.put("t/c.toml", "[gruppe]\nnummer = 7\nname = \"Vorn\"\nbeschreibung = \"Text\"\nreihenfolge = 5\n");
    const std::string source = Group + Tip +
                               "adm = true\ngruppen = [3, 1]\nhilfe = 205\nsymbol = 4\n"
                               "[[tipp.wert]]\nart = \"zahl\"\nwurzel = \"HKCU\"\nschluessel = 'Control Panel\\Desktop'\nname = \"MenuShowDelay\"\ntyp = \"REG_SZ\"\nein = \"10\"\naus = \"0\"\nwerte = \"100\"\nstandard = \"400\"\nanzeige = \"Zehntel\"\n"
                               "[[tipp.wert]]\nnummer = 305\nart = \"haken\"\nwurzel = \"HKLM\"\nschluessel = 'Software\\X'\nschluessel_nt = 'Software\\NT'\nname = \"\"\ntyp = \"REG_DWORD\"\nein = \"1\"\naus = \"<delkey>\"\nbeschriftung = \"Größe\"\n";
    const Output out = build(source);
    EXPECT_EQ(out.text, "R.mdb: 3 Gruppen, 1 Tipp, 2 Zeilen, Version 1.2.18\n");
    ASSERT_EQ(out.exit, 0);
    const std::string first = bytesOf(dir / "R.mdb");
    EXPECT_EQ(build(source).exit, 0);
    EXPECT_EQ(bytesOf(dir / "R.mdb"), first);

    World w;
    ASSERT_TRUE(w.load(dir / "R.mdb"));
    std::string tree;
    for (const Treebaum& t : w.ctx.udtTreebaum) tree += std::to_string(t.Vorgänger) + "/" + std::to_string(t.Ebene) + "/" + w.ctx.udtGruppen[static_cast<std::size_t>(t.Gruppe)].Name + " ";
    EXPECT_EQ(tree, "1/1/Vorn 1/1/Oberfläche 2/2/Unten ");
    std::string rows;
    RecordSet& rs = *w.ctx.objRS;
    for (rs.MoveFirst(); !rs.atEOF(); rs.MoveNext()) {
        for (int i = 0; i < 34; ++i) rows += rs.isNull(i) ? "-;" : rs.text(i) + ";";
        rows += "\n";
    }
    EXPECT_EQ(rows,
              "301;3,1;HKCU;Control Panel\\Desktop;-;MenuShowDelay;1;3;Menüs;-;Zeile 1\r\nZeile 2;205;1;-;10;Zehntel;0;100;400;0;4;-;0;1;0;0;0;1.0.0;2;0;-;1;1;0;\n"
              "305;3,1;HKLM;Software\\X;Software\\NT;;4;1;-;-;-;-;0;-;1;-;<delkey>;-;-;0;4;-;0;1;0;0;0;1.0.0;2;0;Größe;1;1;301;\n");
    EXPECT_EQ(run(dir.path(), "--check R.mdb").text, "R.mdb: 3 Gruppen, 1 Tipp, 2 Zeilen, Version 1.2.18; keine Beanstandungen\n");
}

TEST_F(TipBuild, whatIsRefused) {
    struct Case {
        std::string source;
        std::string told;  // the lines before the last
    };
    const std::string backslash = "in doppelten Anführungszeichen leitet \"\\\" ein Sonderzeichen ein; Texte mit \"\\\" stehen in einfachen Anführungszeichen";
    const std::string ownRoot = "Der Schlüssel beginnt ohne den Hauptschlüssel; der steht für sich.\n";
    const auto repeated = [](const std::string& text, int times) {
        std::string all;
        for (int i = 0; i < times; ++i) all += text;
        return all;
    };
    const auto rooted = [](const std::string& key) {
        return Group + Tip + "[[tipp.wert]]\nart = \"haken\"\ntyp = \"REG_SZ\"\nname = \"a\"\nwurzel = \"HKCU\"\nschluessel = '" + key + "'\n";
    };
    const std::string box = value("art = \"haken\"\n");
    const std::string kind = "t/a.toml:13: ";
    const auto number = [](const std::string& rest) { return value("art = \"zahl\"\n" + rest); };
    const Case cases[] = {
        // the form of the sources
        {"x = \n", "t/a.toml:1: Das ist kein gültiges TOML: zum Namen fehlt der Wert (Spalte 5).\n"},
        {"x = 'offen\n", "t/a.toml:1: Das ist kein gültiges TOML: der Text ist in seiner Zeile nicht zu Ende, ein Anführungszeichen fehlt (Spalte 11).\n"},
        {"\xEF\xBB\xBF[%]\n", "t/a.toml:1: Das ist kein gültiges TOML: die Überschrift des Abschnitts ist nicht zu lesen.\n"},
        {"# ä\nx = 'ä'\ngröße = 1\n", "t/a.toml:3: Das ist kein gültiges TOML: Umlaute und andere Zeichen außerhalb von ASCII stehen nur in Anführungszeichen.\n"},
        {"x = \"\xE4\"\n", "t/a.toml:1: Das ist kein gültiges TOML: die Datei ist nicht in UTF-8 geschrieben.\n"},
        {"x = \"HKCU\\Software\"\n", "t/a.toml:1: Das ist kein gültiges TOML: " + backslash + " (Spalte 11).\n"},
        {"a" + repeated(".a", 39'999) + " = 1\n", "t/a.toml:1: Das ist kein gültiges TOML: mehr als 16 Ebenen ineinander werden nicht gelesen.\n"},
        {"[grupe]\n", "t/a.toml:1: Der Abschnitt [gruppe] fehlt.\nt/a.toml:1: Das Feld \"grupe\" ist unbekannt.\n"},
        {Group + Tip + box + "wert = 5\n", "t/a.toml:19: Das Feld \"wert\" ist unbekannt.\n"},
        {Group + Tip, "t/a.toml:6: Der Tipp hat keinen Abschnitt [[tipp.wert]].\n"},
        {Group + "[[tipp]]\nnummer = 5\ntitel = 7\nbeschreibung = \"\"\nsysteme = [\"XP\"]\nneu = \"1.0.0\"\nneustart = \"nein\"\n" + box,
         "t/a.toml:8: titel: Hier wird ein Text erwartet.\nt/a.toml:8: Der Tipp hat keine Überschrift.\n"},
        {Group + Tip + "[[tipp.wert]]\nart = \"haken\"\n", "t/a.toml:13: Das Feld \"typ\" fehlt.\nt/a.toml:13: Der Hauptschlüssel \"\" ist keiner; möglich sind HKCU, HKLM, HKU, HKCR, HKCC, HKDD.\n"
                                                            "t/a.toml:13: Der Schlüssel fehlt.\n"},
        {Group + Tip + "[[tipp.wert]]\nart = \"haken\"\nwurzel = \"HKCU\"\nschluessel = 'x'\ntyp = \"REG_SZ\"\n", "t/a.toml:13: Der Wertname fehlt; der unbenannte Wert hat den leeren Namen \"\".\n"},
        {Group + Tip + value("art = \"checkbox\"\n"), "t/a.toml:18: art: \"checkbox\" ist unbekannt; möglich sind haken, text, zahl, auswahl, optionen, datei, farbe, liste, bootini, kontextmenue, bitmaske.\n"},
        {Group + Tip + box + "typanpassen = 1\n", "t/a.toml:19: typanpassen: Nur 0 ist möglich: vor einem Wechsel des Datentyps wird gefragt.\n"},
        // numbers, headings, groups, references
        {Group + Tip + box + Tip + value("art = \"haken\"\n"), "t/a.toml:20: Die Nummer 301 ist schon vergeben.\nt/a.toml:21: Die Überschrift \"Menüs\" ist schon die des Tipps 301.\n"},
        {Group + "[[tipp]]\nnummer = 40000\ntitel = \"oberFLÄCHE\"\nbeschreibung = \"\"\nsysteme = [\"XP\"]\nneu = \"3\"\nneustart = \"nein\"\n" + box,
         "t/a.toml:7: Index: 40000 liegt nicht zwischen 1 und 32767.\nt/a.toml:8: Die Überschrift \"oberFLÄCHE\" ist schon die einer Gruppe.\nt/a.toml:11: Die Version \"3\" steht nicht in der Tabelle Version.\n"},
        {Group + Tip + "gruppen = [3, 9, 3]\n" + value("art = \"haken\"\n"), "t/a.toml:13: Die Gruppe 9 gibt es nicht.\nt/a.toml:13: Die Gruppe 3 steht doppelt.\n"},
        {Group + "oberhalb = 8\n", "t/a.toml:1: Die Gruppe oberhalb mit der Nummer 8 gibt es nicht.\n"},
        {Group + "oberhalb = 3\n", "t/a.toml:1: Die Gruppe steht über mehrere Ebenen unter sich selbst.\n"},
        {Group + Tip + box + "verweis = 77\n", "t/a.toml:19: Der Verweis zeigt auf keine andere Zeile.\n"},
        {Group + Tip + box + "[[tipp.wert]]\nnummer = 302\nart = \"haken\"\nwurzel = \"HKCU\"\nschluessel = 'control panel\\desktop'\nname = \"x\"\ntyp = \"REG_SZ\"\n", "t/a.toml:24: Der Tipp hat diesen Wert schon.\n"},
        // texts
        {Group + Tip + box + "anzeige = \"" + std::string(1001, 'x') + "\"\n", "t/a.toml:19: Anzeigetext: Der Text ist mit 1001 Zeichen zu lang, erlaubt sind 1000.\n"},
        {Group + Tip + box + "beschriftung = \"Ω\"\n", "t/a.toml:19: Beschriftung: Der Text enthält Zeichen außerhalb von Windows-1252.\n"},
        {Group + Tip + box + "beschriftung = \"a\\tb\"\n", "t/a.toml:19: Beschriftung: Der Text enthält Steuerzeichen. In doppelten Anführungszeichen wird aus \"\\t\" und \"\\n\" eines; Texte mit \"\\\" stehen in einfachen.\n"},
        {Group + Tip + box + "beschriftung = \" a\"\n[[tipp]]\nnummer = 310\ntitel = \"  \"\nbeschreibung = \"\"\nsysteme = [\"XP\"]\nneu = \"1.0.0\"\nneustart = \"nein\"\n[[tipp.wert]]\nart = \"haken\"\nwurzel = \"HKCU\"\n"
         "schluessel = 'a\\b '\nschluessel_nt = ' c'\nname = \"x \"\ntyp = \"REG_SZ\"\n",
         "t/a.toml:22: Der Tipp hat keine Überschrift.\nt/a.toml:30: Schlüssel: Der Text beginnt oder endet mit einem Leerzeichen.\n"
         "t/a.toml:31: SchlüsselNT: Der Text beginnt oder endet mit einem Leerzeichen.\nt/a.toml:32: Wertname: Der Text beginnt oder endet mit einem Leerzeichen.\n"},
        // places
        {Group + Tip + "[[tipp.wert]]\nart = \"haken\"\ntyp = \"REG_SZ\"\nname = 'a\\b'\nwurzel = \"hkcu\"\nschluessel = 'a\\\\b\\'\n",
         "t/a.toml:16: Ein Wertname kann kein \"\\\" enthalten.\nt/a.toml:17: Der Hauptschlüssel \"hkcu\" ist keiner; möglich sind HKCU, HKLM, HKU, HKCR, HKCC, HKDD.\n"
         "t/a.toml:18: Der Schlüssel darf nicht mit \"\\\" beginnen oder enden und kein leeres Glied haben.\n"},
        {rooted("HKCU\\Software"), "t/a.toml:18: " + ownRoot},
        {rooted("HKCU/Software"), "t/a.toml:18: " + ownRoot + "t/a.toml:18: Die Glieder eines Schlüssels trennt \"\\\", nicht \"/\".\n"},
        {Group + Tip + "[[tipp.wert]]\nart = \"haken\"\ntyp = \"REG_SZ\"\nname = \"a\"\nwurzel = \"HKU\"\nschluessel = 'x[sid]\\a'\n",
         "t/a.toml:18: \"[SID]\" steht genau so, einmal und als ganzes Glied eines Schlüssels unter HKU oder HKLM.\n"},
        {Group + Tip + box + "ein = 'x[WindowsPfad]\\a'\n", "t/a.toml:19: \"[WindowsPfad]\" steht nur in WertEin und WertAus, genau so, einmal und am Anfang, mit \"\\\" dahinter.\n"},
        {Group + Tip + "ini = true\n" + value("art = \"text\"\n"), "t/a.toml:14: Der Name der INI-Datei fehlt (SchlüsselNT).\nt/a.toml:15: Ein INI-Tipp hat keinen Hauptschlüssel.\n"},
        // kinds, their values and types
        {Group + Tip + box + "ein = \"<delkey>\"\n", "t/a.toml:19: WertEin darf nicht \"<delkey>\" sein.\n"},
        {Group + Tip + box + "ein = \"Ja\"\naus = \"ja\"\nstandard = \"nein\"\n", "t/a.toml:20: WertEin und WertAus lassen sich nicht unterscheiden.\nt/a.toml:21: Der Standardwert \"nein\" ist keiner der Werte des Tipps.\n"},
        {Group + Tip + "[[tipp.wert]]\nart = \"haken\"\nwurzel = \"HKCU\"\nschluessel = 'x'\nname = \"X\"\ntyp = \"REG_DWORD\"\nein = \"0x1\"\naus = \"00\"\n",
         "t/a.toml:19: \"0x1\" ist kein Wert vom Typ REG_DWORD.\nt/a.toml:20: \"00\" ist kein Wert vom Typ REG_DWORD.\n"},
        {Group + Tip + "[[tipp.wert]]\nart = \"haken\"\nwurzel = \"HKCU\"\nschluessel = 'x'\nname = \"X\"\ntyp = \"REG_BINARY\"\nein = \"1 0\"\naus = \"00 01\"\n", "t/a.toml:19: \"1 0\" ist kein Wert vom Typ REG_BINARY.\n"},
        {Group + Tip + number("ein = \"5\"\naus = \"9\"\n"), "t/a.toml:20: Das Minimum 9 liegt nicht unter dem Maximum 5.\n"},
        {Group + Tip + number("ein = \"9\"\n"), kind + "Die Art zahl braucht in WertAus das Minimum als ganze Zahl.\n"},
        {Group + Tip + number("ein = \"9\"\naus = \"1\"\nwerte = \"0\"\n"), "t/a.toml:21: Der Teiler \"0\" ist keine ganze Zahl außer 0.\n"},
        {Group + Tip + number("ein = \"60\"\naus = \"1\"\nwerte = \"1000\"\nstandard = \"20\"\n"), "t/a.toml:22: Der Standardwert 20 liegt nicht im Bereich.\n"},
        {Group + Tip + value("art = \"auswahl\"\nanzeige = [\"10\", \"1\"]\nstandard = \"2\"\n"),
         "t/a.toml:19: Der Text \"1\" steckt im früheren Text \"10\" und würde nie gewählt; der kürzere steht vorn.\nt/a.toml:20: Der Standardwert \"2\" ist keiner der Werte des Tipps.\n"},
        {Group + Tip + value("art = \"optionen\"\nanzeige = [\"a\", \"b\", \"c\"]\nwerte = [\"1\", \"x\"]\nstandard = \"5\"\n"),
         "t/a.toml:20: Es sind 3 Texte, aber 2 Werte.\nt/a.toml:20: Der Wert \"x\" einer Option ist keine Zahl von 0 bis 4294967295.\nt/a.toml:21: Der Standardwert \"5\" ist keiner der Werte des Tipps.\n"},
        {Group + Tip + value("art = \"datei\"\nwerte = \"Bilder\"\n"), kind + "Die Art datei braucht Anzeigetext.\nt/a.toml:19: Ein Dateifilter hat die Form \"Name|*.ext\", auch mehrmals hintereinander.\n"},
        {Group + Tip + value("art = \"farbe\"\nanzeige = \"A\"\nstandard = \"1 2 300\"\n"), "t/a.toml:20: Eine Farbe hat die Form \"58 110 165\".\n"},
        {Group + Tip + value("art = \"bitmaske\"\nanzeige = [\"a\"]\n"), "t/a.toml:17: Der Datentyp REG_SZ paßt nicht zur Art bitmaske.\n"},
        {Group + Tip + value("art = \"text\"\nwerte = \"<filelist>\"\n"), "t/a.toml:19: Die Art text benutzt Werteliste nicht.\nt/a.toml:19: \"<filelist>\" steht genau so und nur im ersten Wert eines Tipps der Art liste.\n"},
        {Group + Tip + "adm = true\n" + value("art = \"farbe\"\nanzeige = \"A\"\n"), "t/a.toml:13: Als ADM lassen sich nur die Arten haken, text, zahl, datei und liste unter HKCU und HKLM exportieren.\n"},
        {Group + Tip + value("art = \"farbe\"\nanzeige = \"A\"\n") + "[[tipp.wert]]\nnummer = 302\nart = \"haken\"\nwurzel = \"HKCU\"\nschluessel = 'x'\nname = \"y\"\ntyp = \"REG_SZ\"\n",
         "t/a.toml:22: Die Arten datei, farbe, liste, bootini und kontextmenue lassen sich mit keiner anderen mischen.\n"},
    };
    dir.put("R.mdb", "unberührt");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.source.substr(c.source.size() > 160 ? c.source.size() - 160 : 0));
        const Output out = build(c.source);
        EXPECT_EQ(out.exit, 1);
        const auto lines = std::count(c.told.begin(), c.told.end(), '\n');
        EXPECT_EQ(out.text, c.told + std::to_string(lines) + " Fehler, R.mdb wurde nicht geschrieben.\n");
        EXPECT_EQ(bytesOf(dir / "R.mdb"), "unberührt");
    }
}

// What is worth a look is told, and the database is written all the same.
TEST_F(TipBuild, hints) {
    const auto tip = [](int number, const std::string& systems, const std::string& rest) {
        return "[[tipp]]\nnummer = " + std::to_string(number) + "\ntitel = \"T" + std::to_string(number) + "\"\nbeschreibung = \"\"\nsysteme = [" + systems +
               "]\nneu = \"1.0.0\"\nneustart = \"nein\"\n[[tipp.wert]]\nart = \"haken\"\ntyp = \"REG_SZ\"\nwurzel = \"HKCU\"\n" + rest;
    };
    const Output out = build(Group + tip(301, "\"98\", \"XP\"", "schluessel = 'A\\B'\nschluessel_nt = 'C'\nname = \"x\"\n") + tip(302, "\"95\", \"NT\"", "schluessel = 'a\\b'\nschluessel_nt = 'C'\nname = \"X\"\n") +
                             tip(303, "\"XP\"", "schluessel = 'c'\nname = \"X\"\n") + tip(304, "\"XP\"", "schluessel = 'MIME\\text/html'\nname = \"x\"\n"));
    EXPECT_EQ(out.text, "t/a.toml:46: Hinweis: Diesen Wert hat auch der Tipp 301.\nt/a.toml:58: Hinweis: Der Schlüssel enthält \"/\"; seine Glieder trennt nur \"\\\".\n"
                        "R.mdb: 1 Gruppe, 4 Tipps, 4 Zeilen, Version 1.2.18\n");
    EXPECT_EQ(out.exit, 0);
}

TEST_F(TipBuild, checkingForeignDatabases) {
    const Output jet3 = run(jetFile("").parent_path(), "--check jet3/RegDaten.mdb"), jet4 = run(jetFile("").parent_path(), "--check jet4/RegDaten.mdb");
    EXPECT_EQ(jet3.exit, 1);
    EXPECT_EQ(jet3.text, jet4.text);
    for (const char* line : {"RegDaten, Index 29: Die Überschrift \"Versteckte Dateien anzeigen\" ist schon die des Tipps 3.\n", "RegDaten, Index 27: Die Gruppe 99 gibt es nicht.\n",
                             "RegDaten, Index 35: Die Art -1 gibt es nicht.\n", "RegDaten, Index 15: AnzahlWerte ist 0, der Tipp hat aber 2 weitere Werte.\n", "Treebaum, Zeile 9: Die Gruppe 99 gibt es nicht.\n"})
        EXPECT_NE(jet3.text.find(line), std::string::npos) << line << jet3.text;
    EXPECT_LT(jet3.text.find("Index 3:"), jet3.text.find("Index 10:"));
    const Output damaged = run(jetFile("").parent_path(), "--check beschaedigt/ring-memo4.mdb");
    EXPECT_EQ(damaged.text, "tipdb-bauen: Die Datenbankdatei ist beschädigt (Tabelle RegDaten): ein langer Wert hat ein leeres Glied.\n");
    EXPECT_EQ(damaged.exit, 1);
    EXPECT_EQ(run(jetFile("").parent_path(), "--check jet4/RegDaten-pw.mdb").text, "tipdb-bauen: Das Kennwort der Datenbank ist ungültig.\n");
    EXPECT_EQ(run(jetFile("").parent_path(), "--check jet4/RegDaten-pw.mdb --password Kranich-Teich-9").text, jet4.text == "" ? "" : [&] {
        std::string text = jet4.text;
        text.replace(text.rfind("RegDaten.mdb"), 12, "RegDaten-pw.mdb");
        return text;
    }());
    bent(dir, "with recursive n(i) as (select 1 union all select i+1 from n where i<101) insert into Treebaum select 0, i, i, 1, 100+i from n");
    EXPECT_NE(run(dir.path(), "--check bent.mdb").text.find("\nTreebaum, Zeile 110: Ebene 101 ist zu tief, erlaubt sind 100.\n"), std::string::npos);
    EXPECT_EQ(run(dir.path(), "").exit, 2);
}

}  // namespace
}  // namespace brenvik::test
