// Every kind of panel: what it shows for what stands in the registry, and what a save then writes, byte for byte.
#include "tipengine/EngineFixture.h"

namespace brenvik::test {
namespace {

constexpr const char* Pfad = "HKCU\\Software\\Probe\\Wert";
constexpr const char* Present = "[Registry Wert vorhanden]";
constexpr const char* Missing = "[Registry Wert nicht vorhanden]";
constexpr const char* Ignored = "[Aktueller Wert wird ignoriert]";

struct Case {
    const char* name;
    Zeile zeile;
    const char* before;            // "type:text", "-" for nothing
    const char *shown, *status;    // as the command line prints a panel; nullptr: not looked at
    const char* input = nullptr;   // nullptr: nothing is touched
    std::string after = {};        // empty: not saved
};

TEST(Kinds, ZeigenWasDastehtUndSchreibenGenauDasEingestellte) {
    const Case cases[] = {
        {"dword an", {.WertEin = "1", .WertAus = "0"}, "4:1", "on", Present},
        {"verkehrt herum", {.WertEin = "0", .WertAus = "1"}, "4:1", "off", Present},
        {"aus ist gelöscht", {.WertEin = "1", .WertAus = "<delkey>"}, "4:0", "off", Present},
        {"text ohne Schreibweise", {.Datentyp = 1, .WertEin = "YES", .WertAus = "NO"}, "1:yes", "on", Present},
        {"text fremd", {.Datentyp = 1, .WertEin = "YES", .WertAus = "NO"}, "1:vielleicht", "off", Ignored},
        {"binär an", {.Datentyp = 3, .WertEin = "01 00 00 00", .WertAus = "00 00 00 00"}, "3:01 00 00 00", "on", Present},
        {"dword als Hexzahl", {.Ausgabeart = 2}, "4:-1", "FFFFFFFF", Present},
        {"leerer benannter Wert", {.Ausgabeart = 2, .Datentyp = 1}, "1:", "", Present},
        {"expand für sz", {.Ausgabeart = 2, .Datentyp = 1}, "2:%windir%", "%windir%", Present},
        {"über dem Maximum", {.Ausgabeart = 3, .WertEin = "10", .WertAus = "0"}, "4:25", "25", Present},
        {"unter dem Minimum", {.Ausgabeart = 3, .WertEin = "10", .WertAus = "5"}, "4:3", "5", Present},
        {"binäre Summe", {.Ausgabeart = 3, .Datentyp = 3, .WertEin = "1000", .WertAus = "0"}, "3:FF FF 02", "512", Present},
        {"zahl fehlt", {.Ausgabeart = 3, .WertEin = "10", .WertAus = "5"}, "-", "5", Missing},
        {"auswahl über Teiltext", {.Ausgabeart = 4, .Datentyp = 4, .Anzeigetext = "145 (Standard)#255"}, "4:145", "145 (Standard)", Present},
        {"auswahl fremd", {.Ausgabeart = 4, .Datentyp = 1, .Anzeigetext = "eins#zwei"}, "1:neun", "", Present},
        {"option", {.Ausgabeart = 5, .Anzeigetext = "A#B#C", .Werteliste = "1#2#4"}, "4:4", "C", Present},
        {"option ohne Liste zählt ab 0", {.Ausgabeart = 5, .Anzeigetext = "A#B#C"}, "4:1", "B", Present},
        {"siebte Option gibt es nicht", {.Ausgabeart = 5, .Anzeigetext = "A#B#C#D#E#F#G"}, "4:6", "", Present},
        {"option oberhalb 2^31", {.Ausgabeart = 5, .Anzeigetext = "A#B", .Werteliste = "0#4294967295"}, "4:-1", "B", Present},
        {"laufwerk fehlt", {.Ausgabeart = 6, .Datentyp = 1, .Anzeigetext = "Ordner"}, "-", "", "[Kein Registry Wert vorhanden]"},
        {"maske", {.Ausgabeart = 11, .Anzeigetext = "A#B#C#D"}, "4:5", "1010", Present},
        {"binäre Maske", {.Ausgabeart = 11, .Datentyp = 3, .Anzeigetext = "A#B#C#D"}, "3:0C 3E", "0011", Present},
        {"an", {.WertEin = "1", .WertAus = "0"}, "4:0", "off", Present, "on", "4:1"},
        {"aus löscht", {.WertEin = "1", .WertAus = "<delkey>"}, "4:1", nullptr, nullptr, "off", "-"},
        {"fehlender Wert folgt dem Kästchen", {.WertEin = "1", .WertAus = "0"}, "-", "off", Missing, nullptr, "4:0"},
        {"fehlend und aus ist löschen", {.WertEin = "1", .WertAus = "<delkey>"}, "-", nullptr, nullptr, nullptr, "-"},
        {"fremder Wert bleibt unberührt", {.WertEin = "1", .WertAus = "0"}, "4:7", "off", Ignored, nullptr, "4:7"},
        {"Großschreibung bleibt unberührt", {.Datentyp = 1, .WertEin = "yes", .WertAus = "no"}, "1:YES", nullptr, nullptr, nullptr, "1:YES"},
        {"text", {.Ausgabeart = 2, .Datentyp = 1}, "1:alt", "alt", Present, "neu \"ö\" €", "1:neu \"ö\" €"},
        {"leerer Text lässt den Wert", {.Ausgabeart = 2, .Datentyp = 1}, "1:alt", nullptr, nullptr, "", "1:alt"},
        {"expand", {.Ausgabeart = 2, .Datentyp = 2}, "2:%a%", nullptr, nullptr, "%b%", "2:%b%"},
        {"hexadezimal", {.Ausgabeart = 2}, "4:1", nullptr, nullptr, "fFfFfFfF", "4:-1"},
        {"hexadezimal 10", {.Ausgabeart = 2}, "-", nullptr, nullptr, "10", "4:16"},
        {"zahl", {.Ausgabeart = 3, .Datentyp = 1, .WertEin = "1000", .WertAus = "0"}, "1:400", "400", Present, "250", "1:250"},
        {"zahl mit Teiler", {.Ausgabeart = 3, .Datentyp = 1, .WertEin = "60", .WertAus = "1", .Werteliste = "1000"}, "1:20000", "20", Present, "5", "1:5000"},
        {"krumme Zahl bleibt", {.Ausgabeart = 3, .Datentyp = 1, .WertEin = "60", .WertAus = "1", .Werteliste = "1000"}, "1:20499", nullptr, nullptr, nullptr, "1:20499"},
        {"negativer Teiler", {.Ausgabeart = 3, .Datentyp = 1, .WertEin = "182", .WertAus = "32", .Werteliste = "-15"}, "1:-1125", "75", Present, "100", "1:-1500"},
        {"binär 1", {.Ausgabeart = 3, .Datentyp = 3, .WertEin = "1000", .WertAus = "0"}, "-", nullptr, nullptr, "1", "3:01 00 00 00"},
        {"binär 2", {.Ausgabeart = 3, .Datentyp = 3, .WertEin = "1000", .WertAus = "0"}, "-", nullptr, nullptr, "2", "3:02"},
        {"binär 256", {.Ausgabeart = 3, .Datentyp = 3, .WertEin = "1000", .WertAus = "0"}, "-", nullptr, nullptr, "256", "3:FF 01"},
        {"binär 300", {.Ausgabeart = 3, .Datentyp = 3, .WertEin = "1000", .WertAus = "0"}, "-", nullptr, nullptr, "300", "3:FF 2D"},
        {"binär 510", {.Ausgabeart = 3, .Datentyp = 3, .WertEin = "1000", .WertAus = "0"}, "-", nullptr, nullptr, "510", "3:FF FF"},
        {"auswahl", {.Ausgabeart = 4, .Datentyp = 1, .Anzeigetext = "eins#zwei"}, "1:eins", "eins", Present, "zwei", "1:zwei"},
        {"auswahl über Teiltext bleibt", {.Ausgabeart = 4, .Datentyp = 1, .Anzeigetext = "100#200"}, "1:1", nullptr, nullptr, nullptr, "1:1"},
        {"option", {.Ausgabeart = 5, .Anzeigetext = "A#B", .Werteliste = "0#4294967295"}, "4:0", nullptr, nullptr, "B", "4:-1"},
        {"option mit Bit 31 als Text", {.Ausgabeart = 5, .Datentyp = 1, .Anzeigetext = "A#B", .Werteliste = "0#2147483648"}, "1:0", nullptr, nullptr, "B", "1:2147483648"},
        {"option mit Bit 31", {.Ausgabeart = 5, .Anzeigetext = "A#B", .Werteliste = "0#2147483648"}, "4:0", nullptr, nullptr, "B", "4:-2147483648"},
        {"option binär", {.Ausgabeart = 5, .Datentyp = 3, .Anzeigetext = "A#B", .Werteliste = "1#0"}, "3:1E 00 00 00", nullptr, nullptr, "B", "3:00 00 00 00"},
        {"option binär unberührt", {.Ausgabeart = 5, .Datentyp = 3, .Anzeigetext = "A#B", .Werteliste = "1#0"}, "3:1E 00 00 00", nullptr, nullptr, nullptr, "3:1E 00 00 00"},
        {"pfad", {.Ausgabeart = 6, .Datentyp = 1, .Anzeigetext = "Ordner"}, "1:C:\\Temp", "C:\\Temp", Present, "D:\\Neu", "1:D:\\Neu"},
        {"farbe", {.Ausgabeart = 7, .Datentyp = 1, .Anzeigetext = "F"}, "1:1 2 3", "1 2 3", Present, "255 0 128", "1:255 0 128"},
        {"farbe binär", {.Ausgabeart = 7, .Datentyp = 3, .Anzeigetext = "F"}, "3:01 02 03", nullptr, nullptr, "255 0 128", "3:FF 00 80"},
        {"farbe binär unberührt", {.Ausgabeart = 7, .Datentyp = 3, .Anzeigetext = "F"}, "3:01 02 03 00", nullptr, nullptr, nullptr, "3:01 02 03 00"},
        {"liste", {.Ausgabeart = 8, .Datentyp = 1, .Anzeigetext = "A"}, "-", nullptr, nullptr, "on", "1:no"},
        {"liste ab", {.Ausgabeart = 8, .Datentyp = 1, .Anzeigetext = "A"}, "1:No", "on", Present, "off", "-"},
        {"liste fremd", {.Ausgabeart = 8, .Datentyp = 1, .Anzeigetext = "A"}, "1:yes", "off", Present, nullptr, "1:yes"},
        {"mehrere Zeilen", {.Ausgabeart = 2, .Datentyp = 7}, "-", nullptr, nullptr, "eins\nzwei", std::string("7:eins\0zwei", 11)},
        {"maske lässt fremde Bits", {.Ausgabeart = 11, .Anzeigetext = "A#B"}, "4:-2147483647", "10", Present, "01", "4:-2147483646"},
        {"maske, neun Kästchen", {.Ausgabeart = 11, .Anzeigetext = "0#1#2#3#4#5#6#7#8"}, "4:0", nullptr, nullptr, "000000001", "4:256"},
        {"binäre Maske lässt weitere Bytes", {.Ausgabeart = 11, .Datentyp = 3, .Anzeigetext = "0#1#2#3#4#5#6#7"}, "3:9E 3E 07 80", nullptr, nullptr, "00000001", "3:80 3E 07 80"},
    };
    for (const Case& given : cases) {
        SCOPED_TRACE(given.name);
        Zeile zeile = given.zeile;
        zeile.Überschrift = "Tipp";
        EngineFixture p({zeile});
        p.putTyped(Pfad, given.before);
        p.show("Tipp");
        if (given.shown != nullptr) {
            EXPECT_EQ(p.engine->shownText(1), given.shown);
            EXPECT_EQ(p.engine->statusOf(1).text, given.status);
        }
        EXPECT_FALSE(p.ctx->blnGeaendert);
        EXPECT_EQ(p.get(Pfad), given.before);
        if (given.after.empty()) continue;
        if (given.input != nullptr) {
            EXPECT_EQ(p.engine->setEntryFromText(1, given.input), "");
        }
        p.saveOk();
        EXPECT_EQ(p.get(Pfad), given.after);
        EXPECT_FALSE(p.ctx->blnGeaendert);
    }
}

}  // namespace
}  // namespace brenvik::test
