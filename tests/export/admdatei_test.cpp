// The told ADM form, whole files compared.
#include "Exportprobe.h"
#include "export/AdmDatei.h"

namespace brenvik::test {
namespace {

TippListWert panel(std::int16_t kind, std::int32_t type, const std::string& name, const std::string& off, const std::string& on, const std::string& info = "Info",
                   const std::string& standard = {}) {
    TippListWert value;
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
std::string block(std::vector<TippListWert> values, const std::string& description = {}, std::int16_t shown = 1) {
    TippListEintrag entry = listentipp(5, "T", std::move(values));
    entry.Beschreibung = description;
    AnsiText out;
    ADMDateiSchreiben(out, {entry}, {{"G", 1, "", -1, {}}}, shown);
    const std::string text = Exportprobe::lines(utf8FromAnsi(out.bytes()));
    const std::string begin = "              KEYNAME \"Software\\Probe\"\n", end = "         END CATEGORY\n";
    const std::size_t from = text.find(begin);
    return from == std::string::npos ? text : text.substr(from + begin.size(), text.find(end) - from - begin.size());
}

TEST(AdmDatei, Formen) {
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

TEST(AdmDatei, HilfetextBrichtUm) {
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

TEST(AdmFileSave, RahmenKlassenUndGruppen) {
    Exportprobe p({{.Index = 1, .Überschrift = "Der \"erste\"", .Datentyp = 1, .WertEin = "1", .WertAus = "0"},
                   {.Index = 2, .Überschrift = "Auswahl", .Ausgabeart = 4, .Datentyp = 1, .Anzeigetext = "x#y", .Hauptschlüssel = "HKLM", .Gruppen = "2"},
                   {.Index = 3, .Überschrift = "Fremd", .Datentyp = 1, .Hauptschlüssel = "HKCR"}}, 2);
    const std::string empty = "\nCATEGORY \"BVK-ADM-Datei\"\nEND CATEGORY\n\n; ------ Ende ------\n";
    const std::string head = std::string("; ADM-File für den MS Policy-Editor\n\n") + std::string(Kopf).substr(std::string(Kopf).find('\n') + 1) + "\nClass User\n; ------ Anfang ------\n";
    const auto write = [&](bool list) {
        p.file("x.adm");
        p.port.expectBox("x.adm wurde erstellt");
        p.exporte.ADMFileSave(list);
        return p.content("x.adm");
    };
    p.show("Fremd");
    EXPECT_EQ(write(false), head + empty + "CLASS MACHINE\n; ------ Anfang ------\n" + empty);
    EXPECT_TRUE(p.listen.ADMListe.empty());
    for (const char* title : {"Der \"erste\"", "Auswahl"}) {
        p.show(title);
        p.exporte.addADMListe();
    }
    p.listen.ADMListe[0].Geloescht = true;   // deleted entries are written all the same
    EXPECT_EQ(write(true),
              head + "\nCATEGORY \"BVK-ADM-Datei\"\n\n    CATEGORY \"Gruppe 1\"\n         ; [1] - Der erste\n         CATEGORY \"Der erste\"\n"
                     "              KEYNAME \"Software\\Probe\"\n              POLICY \"Wert\"\n                   VALUENAME \"Wert\"\n                   ValueON \"1\"\n"
                     "                   ValueOFF \"0\"\n                   Part \"Beschreibung \"Text End Part\n              END POLICY\n         END CATEGORY\n\n"
                     "    END CATEGORY\n\nEND CATEGORY\n\n; ------ Ende ------\nCLASS MACHINE\n; ------ Anfang ------\n\nCATEGORY \"BVK-ADM-Datei\"\n"
                     "\n    CATEGORY \"Gruppe 2\"\n         ; [2] - Auswahl\n    END CATEGORY\n\nEND CATEGORY\n\n; ------ Ende ------\n");
}

}  // namespace
}  // namespace brenvik::test
