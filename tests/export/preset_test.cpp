// Lists as files, and applying them: all or nothing, each Tip with a record of its own.
#include "ExportFixture.h"
#include "export/Preset.h"

namespace brenvik::test {
namespace {

const std::vector<Zeile> Tipps{
    {.Index = 1, .Überschrift = "Haken", .Datentyp = 1, .Wertname = "Haken", .WertEin = "1", .WertAus = "<delkey>", .AnzahlWerte = 1},
    {.Index = 2, .Ausgabeart = 3, .Wertname = "Zahl", .WertEin = "100", .WertAus = "1", .HauptIndex = 1},
    {.Index = 3, .Überschrift = "Text", .Ausgabeart = 2, .Datentyp = 7, .Wertname = "Text", .Schlüssel = "Software\\Probe\\[SID]"},
    {.Index = 4, .Überschrift = "Alt", .Datentyp = 1, .Wertname = "Alt", .Systems = "95"},
    {.Index = 5, .Überschrift = "Maske", .Ausgabeart = 2, .Datentyp = 3, .Wertname = "Maske", .Hauptschlüssel = "HKLM", .Schlüssel = "SYSTEM\\Probe"}};

struct Preset : ExportFixture {
    Preset() : ExportFixture(Tipps) {}
    std::vector<std::string> problems(const std::string& text) { return ladePreset(*engine, text).problems; }
};

TEST(Preset, WritesReadsAndApplies) {
    Preset p;
    p.put("HKCU\\Software\\Probe\\Haken", 1, "1");
    p.put("HKCU\\Software\\Probe\\Zahl", 4, "7");
    p.put("HKCU\\Software\\Probe\\" + std::string(Sid) + "\\Text", 7, std::string("it's\0zwei\tä", 12));
    p.put("HKLM\\SYSTEM\\Probe\\Maske", 3, "0A FF");
    p.show("Haken");
    p.engine->input().userCheck(0, false);   // chosen, not saved
    p.exports.addRegListe();
    p.ctx->blnGeaendert = false;
    for (const char* title : {"Text", "Maske"}) {
        p.show(title);
        p.exports.addRegListe();
    }
    const PresetFile file = presetFile(*p.ctx, p.listen.RegListe);
    EXPECT_EQ(file.text,
              "# Einstellungen aus Brenvik. Anwenden: brenvik-cli apply DATEI --dry-run\n\nformat = 1\nprogramm = '1.2.3'\ndatenbank = '1.2.18'\n"
              "\n[[tipp]]\nnummer = 1\ntitel = 'Haken'\n\n  [[tipp.wert]]   # HKEY_CURRENT_USER\\Software\\Probe\n  nummer = 1\n  name = 'Haken'\n  geloescht = true\n"
              "\n  [[tipp.wert]]   # HKEY_CURRENT_USER\\Software\\Probe\n  nummer = 2\n  name = 'Zahl'\n  typ = 'REG_DWORD'\n  wert = 7\n"
              "\n[[tipp]]\nnummer = 3\ntitel = 'Text'\n\n  [[tipp.wert]]   # HKEY_CURRENT_USER\\Software\\Probe\\" + std::string(Sid) +
              "\n  nummer = 3\n  name = 'Text'\n  typ = 'REG_MULTI_SZ'\n  wert = [\"it's\", \"zwei\\tä\"]\n"
              "\n[[tipp]]\nnummer = 5\ntitel = 'Maske'\n\n  [[tipp.wert]]   # HKEY_LOCAL_MACHINE\\SYSTEM\\Probe\n  nummer = 5\n  name = 'Maske'\n  typ = 'REG_BINARY'\n"
              "  bytes = '0A FF'\n");

    p.put("HKCU\\Software\\Probe\\Zahl", 4, "8");
    p.put("HKCU\\Software\\Probe\\" + std::string(Sid) + "\\Text", 7, "anders");
    auto qword = listValue("Software\\Probe", 11, "Haken", "");   // a type that lists do not know is left out and named
    qword.gathered.wert = RawValue{regtype::Qword, Bytes(8)};
    EXPECT_EQ(presetFile(*p.ctx, {listTip(1, "Haken", {qword})}).withoutValue.size(), 1u);
    const PresetList loaded = ladePreset(*p.engine, file.text);
    EXPECT_TRUE(loaded.problems.empty());
    Application plan = application(*p.engine, loaded.liste);
    ASSERT_EQ(plan.changes.size(), 2u);   // the third stands as it should
    EXPECT_EQ(p.engine->writeTogether(plan.changes), "");
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\Haken"), "-");
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\Zahl"), "4:7");
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\" + std::string(Sid) + "\\Text"), "7:" + std::string("it's\0zwei\tä", 12));
    ASSERT_EQ(p.recorder.begun.size(), 2u);
    EXPECT_EQ(p.recorder.begun[0].tippIndex, 1);
    EXPECT_EQ(p.recorder.begun[0].values.size(), 2u);
    EXPECT_EQ(p.recorder.begun[0].values[1].alt, fromText("8", 4));
    EXPECT_FALSE(p.recorder.begun[0].values[1].written);
    EXPECT_TRUE(p.recorder.ended[1].values[0].written);
}

TEST(Preset, IsAppliedWholeOrNotAtAll) {
    Preset p;
    p.put("HKCU\\Software\\Probe\\Zahl", 4, "8");
    Change good, bad;
    good.values.push_back({"PROBE-PC", "HKCU\\Software\\Probe\\Zahl", 2, fromText("8", 4), fromText("9", 4), false});
    bad.values.push_back({"PROBE-PC", "HKCU\\" + std::string(300, 'x') + "\\Zahl", 2, {}, fromText("9", 4), false});
    std::vector<Change> changes{good, bad};
    EXPECT_NE(p.engine->writeTogether(changes).find("(Fehler "), std::string::npos);
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\Zahl"), "4:8");
    EXPECT_TRUE(p.recorder.begun.empty());   // what the store refuses shows before anything is recorded
}

TEST(Preset, ForeignFiles) {
    Preset p;
    const auto times = [](const std::string& text, int count) {
        std::string all;
        for (int i = 0; i < count; ++i) all += text;
        return all;
    };
    const std::string tipp = "format = 1\n[[tipp]]\nnummer = 1\n[[tipp.wert]]\n";
    const struct {
        std::string text, problem;
    } cases[] = {{"", "keine Liste"},
                 {"format = 1\n[[tipp", "Zeile 2: Die Datei ist keine gültige TOML-Datei (die Überschrift des Abschnitts ist nicht zu lesen (Spalte 7))"},
                 {std::string(MaxPreset + 1, '#'), "Zeile 1: Die Datei ist keine gültige TOML-Datei (die Datei ist größer als 4 MB)"},
                 {"\n# [[[[\na = '''\n]]'''\na" + times(".a", 40'000), "Zeile 5: Die Datei ist keine gültige TOML-Datei (mehr als 16 Ebenen"},
                 {"[a" + times(".\"a.b\"", 40'000), "mehr als 16 Ebenen"},
                 {"a = " + times("[", 40'000), "mehr als 16 Ebenen"},
                 {"a = " + times("{a=", 40'000), "mehr als 16 Ebenen"},
                 {"x = [\"\"\"a\"\"\"\", {b" + times(".b", 40'000) + "=1}]", "mehr als 16 Ebenen"},   // a text that ends in a quote
                 {"a = [" + times("1,", 500'000) + "]", "mehr als 400000 Werte"},
                 {"format = 1\nneu = 2\n", "Zeile 2: Das Feld \"neu\""},
                 {"format = 1\ntipp = 3\n", "Zeile 2: \"tipp\""},
                 {"format = 1\n[[tipp]]\nnummer = 99\n", "Den Tipp 99 gibt es"},
                 {"format = 1\n[[tipp]]\nnummer = 2\n", "Den Tipp 2 gibt es"},   // a row of another Tip
                 {"format = 1\n[[tipp]]\nnummer = 70000\n", "eine Zahl von 1 bis 32767"},
                 {"format = 1\n[[tipp]]\nnummer = 1\n[[tipp]]\nnummer = 1\n", "mehrmals"},
                 {tipp + "nummer = 1\nname = 'Fremd'\ngeloescht = true\n", "keinen Wert 1 mit dem Namen \"Fremd\""},
                 {tipp + "nummer = 1\nname = 'Haken'\n", "genau eines"},
                 {tipp + "nummer = 1\nname = 'Haken'\ntyp = 'REG_SZ'\nwert = '1'\nbytes = '00'\n", "genau eines"},
                 {tipp + "nummer = 1\nname = 'Haken'\ntyp = 'REG_DWORD'\nwert = 1\n", "anderen Datentyp"},
                 {tipp + "nummer = 1\nname = 'Haken'\ntyp = 'REG_SZ'\nwert = \"a\\u0000b\"\n", "Nullzeichen"},
                 {tipp + "nummer = 1\nname = 'Haken'\ntyp = 'REG_SZ'\nbytes = 'XY'\n", "XY"},
                 {tipp + "nummer = 2\nname = 'zahl'\ntyp = 'REG_DWORD'\nwert = 4294967296\n", "4294967295"}};
    for (const auto& c : cases) {
        const auto found = p.problems(c.text);
        ASSERT_FALSE(found.empty()) << c.text;
        EXPECT_NE(found[0].find(c.problem), std::string::npos) << found[0];
    }
    const auto older = ladePreset(*p.engine, "format = 1\n[[tipp]]\nnummer = 4\n[[tipp.wert]]\nnummer = 4\nname = 'Alt'\ntyp = 'REG_SZ'\nwert = '1'\n");
    EXPECT_NE(application(*p.engine, older.liste).problems.at(0).find("nicht geeignet"), std::string::npos);
}

}  // namespace
}  // namespace brenvik::test
