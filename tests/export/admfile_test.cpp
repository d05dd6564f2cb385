// The told ADM form, whole files compared.
#include "ExportFixture.h"
#include "export/AdmFile.h"
#include "export/ExportFiles.h"

namespace brenvik::test {
namespace {

TipListValue panel(std::int16_t kind, std::int32_t type, const std::string& name, const std::string& off, const std::string& on, const std::string& info = "Info",
                   const std::string& standard = {}) {
    TipListValue value;
    value.Hauptschluessel = "HKEY_CURRENT_USER";
    value.Unterschluessel = "Software\\Probe";
    value.PanelArt = kind;
    value.Datentyp = type;
    value.Wertname = name;
    value.WertAus = off;
    value.WertEin = on;
    value.WertInfo = info;
    value.Standardwert = standard;
    return value;
}

// The lines between a Tip's KEYNAME and its end.
std::string block(std::vector<TipListValue> values, const std::string& description = {}, std::int16_t shown = 1) {
    TippListEintrag entry = listTip(5, "T", std::move(values));
    entry.Beschreibung = description;
    AnsiText out;
    ADMDateiSchreiben(out, {entry}, {{"G", 1, "", -1, {}}}, shown);
    const std::string text = ExportFixture::lines(utf8FromAnsi(out.bytes()));
    const std::string begin = "              KEYNAME \"Software\\Probe\"\n", end = "         END CATEGORY\n";
    const std::size_t from = text.find(begin);
    return from == std::string::npos ? text : text.substr(from + begin.size(), text.find(end) - from - begin.size());
}

TEST(AdmFile, PolicyForms) {
    EXPECT_EQ(block({panel(1, 1, "a", "<delkey>", "1"), panel(8, 4, "b", "0", "<delkey>")}, "Kurz und klar"),
              "              POLICY \"a\"\n                   VALUENAME \"a\"\n                   ValueON \"1\"\n"
              "                   Part \"Kurz und klar \"Text End Part\n              END POLICY\n"
              "              POLICY \"b\"\n                   VALUENAME \"b\"\n                   ValueOFF NUMERIC \"0\"\n"
              "                   Part \"Kurz und klar \"Text End Part\n              END POLICY\n");
    EXPECT_EQ(block({panel(2, 1, "a", "", ""), panel(6, 7, "b", "", ""), panel(2, 4, "c", "", ""), panel(4, 1, "d", "", "")}),
              "              POLICY \"a\"\n                   ValueON \"\"\n                   ValueOff \"\"\n                   Part \"Text:\" EDITTEXT\n"
              "                        VALUENAME \"a\"\n                   END PART\n              END POLICY\n"
              "              POLICY \"b\"\n                   Part \"Pfad:\" EDITTEXT\n                        VALUENAME \"b\"\n                    REQUIRED\n"
              "                    #if VERSION >= 2\n                         EXPANDABLETEXT\n                    #endif\n                   END PART\n              END POLICY\n"
              "              POLICY \"c\"\n                   ValueON NUMERIC \"\"\n                   ValueOff NUMERIC \"\"\n                   Part \"Text:\" EDITTEXT\n"
              "                        VALUENAME \"c\"\n                   END PART\n              END POLICY\n");
    EXPECT_EQ(block({panel(3, 4, "a", "1", "28999", "Se\"kunden", "7"), panel(3, 4, "b", "1", "29000"), panel(3, 4, "c", "1", "29001", "I", "<delkey>"), panel(3, 1, "d", "1", "5")}),
              "              POLICY \"Wert: a\"\n                   Part \"Sekunden\" Numeric Required \n                        Min 1 Max 28999\n"
              "                        ValueName \"a\"\n                        Default \"7\"\n                   End Part\n              END POLICY\n"
              "              POLICY \"Wert: c\"\n                   ValueON NUMERIC \"\"\n                   ValueOff NUMERIC \"\"\n"
              "                   Part \"Geben Sie den Wert I ein: (1 - 29001)\" EditText \n                        ValueName \"c\"\n                        REQUIRED\n"
              "                   End Part\n              END POLICY\n"
              "              POLICY \"Wert: d\"\n                   Part \"Geben Sie den Wert Info ein: (1 - 5)\" EditText \n                        ValueName \"d\"\n"
              "                        REQUIRED\n                   End Part\n              END POLICY\n");
}

TEST(AdmFile, HelpTextWraps) {
    const std::string long77(77, 'x'), long79(79, 'y');
    const auto help = [](const std::string& text, std::int16_t shown = 1) {
        const std::string lines = block({panel(1, 3, "a", "", "")}, text, shown);
        std::string parts;
        std::size_t at = 0;
        while ((at = lines.find("Part \"", at)) != std::string::npos) parts += "|" + lines.substr(at + 6, lines.find("\"Text", at) - at - 6), at += 6;
        return parts;
    };
    EXPECT_EQ(help(""), "");
    EXPECT_EQ(help(long77 + " a " + long79 + " b"), "|" + long77 + " |a |" + long79 + " |b ");
    EXPECT_EQ(help(long77.substr(1) + " a b"), "|" + long77.substr(1) + " a |b ");
    EXPECT_EQ(help("\"Ö\" 'x'"), "|Ö x ");
    EXPECT_EQ(help("Text", 8), "|Info ausblenden. Info: Text ");   // by the Tip on screen
}

// What the file says otherwise than the Tip is named; what would become words of its own refuses it.
TEST(AdmFile, NamesWhatItDoesNotSay) {
    auto elsewhere = panel(1, 1, "woanders", "0", "1"), scaled = panel(3, 4, "geteilt", "1", "5");
    elsewhere.Unterschluessel = "Software\\Anders";
    scaled.Werteliste = "1000";
    const auto unsaid = [](std::vector<TipListValue> values, const char* group = "1") {
        TippListEintrag entry = listTip(5, "T", std::move(values));
        entry.Baumpfad = group;
        AnsiText out;
        std::string names;
        for (const std::string& path : ADMDateiSchreiben(out, {entry}, {{"G", 1, "", -1, {}}}, 1)) names += path.substr(path.rfind('\\') + 1) + " ";
        return names;
    };
    EXPECT_EQ(unsaid({panel(1, 1, "a", "<delkey>", "1"), panel(1, 4, "b", "0", "1"), panel(2, 2, "c", "", ""), panel(8, 1, "d", "<delkey>", "no")}), "");
    EXPECT_EQ(unsaid({panel(1, 1, "a", "0", "1"), elsewhere, panel(1, 3, "bytes", "00", "01"), panel(2, 4, "zahl", "", ""), panel(2, 7, "liste", "", ""), panel(4, 1, "wahl", "", ""),
                      panel(1, 1, "q\"q", "0", "1"), panel(1, 1, "Ω", "0", "1"), panel(1, 1, "", "0", "1")}), "woanders bytes zahl liste wahl q\"q Ω  ");
    EXPECT_EQ(unsaid({panel(3, 4, "a", "1", "5"), scaled, panel(3, 4, "b", "1", "29000"), panel(3, 4, "c", "1", "29001"), panel(3, 1, "d", "1", "5")}), "geteilt b c ");
    EXPECT_EQ(unsaid({panel(1, 1, "a", "0", "1")}, "9"), "a ");

    ExportFixture p({Zeile{}});
    EXPECT_EQ(admFile(*p.ctx, {listTip(1, "T", {panel(1, 1, "a\r\nEND POLICY", "0", "1")})}).obstacle.substr(0, 35), "Die Datei wurde nicht geschrieben. ");
    EXPECT_EQ(admFile(*p.ctx, {listTip(1, "T", {panel(1, 1, "a", "0", "1\n")})}).bytes, "");
}

TEST(AdmFileSave, FrameClassesAndGroups) {
    ExportFixture p({{.Index = 1, .Überschrift = "Der \"erste\"", .Datentyp = 1, .WertEin = "1", .WertAus = "0"},
                   {.Index = 2, .Überschrift = "Auswahl", .Ausgabeart = 4, .Datentyp = 1, .Anzeigetext = "x#y", .Hauptschlüssel = "HKLM", .Gruppen = "2"},
                   {.Index = 3, .Überschrift = "Fremd", .Datentyp = 1, .Hauptschlüssel = "HKCR"}}, 2);
    const std::string empty = "\nCATEGORY \"BVK-ADM-Datei\"\nEND CATEGORY\n\n; ------ Ende ------\n";
    const std::string head = std::string("; ADM-File für den MS Policy-Editor\n\n") + std::string(ExportHead).substr(std::string(ExportHead).find('\n') + 1) + "\nClass User\n; ------ Anfang ------\n";
    const auto write = [&](bool list, const char* unsaid) {
        p.file("x.adm");
        p.port.expectBox("x.adm wurde erstellt").expectBox(std::string("nicht so setzen, wie es der Tipp tut. Anzahl: 1.\r\n\r\n") + unsaid);
        p.exports.ADMFileSave(list);
        return p.content("x.adm");
    };
    p.show("Fremd");
    EXPECT_EQ(write(false, "HKEY_CLASSES_ROOT\\Software\\Probe\\Wert"), head + empty + "CLASS MACHINE\n; ------ Anfang ------\n" + empty);
    EXPECT_TRUE(p.listen.ADMListe.empty());
    for (const char* title : {"Der \"erste\"", "Auswahl"}) {
        p.show(title);
        p.exports.addADMListe();
    }
    p.listen.ADMListe[0].Geloescht = true;   // deleted entries are written all the same
    EXPECT_EQ(write(true, "HKEY_LOCAL_MACHINE\\Software\\Probe\\Wert"),
              head + "\nCATEGORY \"BVK-ADM-Datei\"\n\n    CATEGORY \"Gruppe 1\"\n         ; [1] - Der erste\n         CATEGORY \"Der erste\"\n"
                     "              KEYNAME \"Software\\Probe\"\n              POLICY \"Wert\"\n                   VALUENAME \"Wert\"\n                   ValueON \"1\"\n"
                     "                   ValueOFF \"0\"\n                   Part \"Beschreibung \"Text End Part\n              END POLICY\n         END CATEGORY\n\n"
                     "    END CATEGORY\n\nEND CATEGORY\n\n; ------ Ende ------\nCLASS MACHINE\n; ------ Anfang ------\n\nCATEGORY \"BVK-ADM-Datei\"\n"
                     "\n    CATEGORY \"Gruppe 2\"\n         ; [2] - Auswahl\n    END CATEGORY\n\nEND CATEGORY\n\n; ------ Ende ------\n");
}

}  // namespace
}  // namespace brenvik::test
