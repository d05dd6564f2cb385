// Bad input to the engine: each is told, nothing is lost, and the program goes on.
#include "tipengine/EngineFixture.h"

namespace brenvik::test {
namespace {

constexpr const char* Pfad = "HKCU\\Software\\Probe\\Wert";

TEST(BadTips, AnUnknownKindIsReportedAndTheRestShown) {
    EngineFixture p({{.Index = 1, .Überschrift = "Tipp", .Ausgabeart = 99, .AnzahlWerte = 1}, {.Index = 2, .Ausgabeart = 2, .Datentyp = 1, .HauptIndex = 1}});
    p.port.expectBox("in der Funktion: DBTippsAusgeben aufgetreten mit der Fehlernummer: 5");
    p.show("Tipp");
    EXPECT_EQ(p.windows().panels.size(), 1u);
}

TEST(BadTips, AValueVanishesBetweenShowingAndSaving) {
    EngineFixture p({{.Index = 1, .Überschrift = "Tipp", .Ausgabeart = 2, .Datentyp = 1, .AnzahlWerte = 1},
             {.Index = 2, .Ausgabeart = 2, .Datentyp = 1, .Wertname = "B", .HauptIndex = 1}});
    p.put(Pfad, 1, "a");
    p.put("HKCU\\Software\\Probe\\B", 1, "b");
    p.show("Tipp");
    ASSERT_TRUE(p.store->deleteValue(Root::CurrentUser, "Software\\Probe", ValueName::named("Wert")));
    ASSERT_TRUE(p.store->deleteValue(Root::CurrentUser, "Software\\Probe", ValueName::named("B")));
    p.engine->input().userText(0, "neu");
    p.saveOk();
    EXPECT_EQ(p.get(Pfad), "1:neu");
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\B"), "-");   // what somebody else deleted does not come back
}

TEST(BadTips, AColourOfTwoPartsAndAMaskOfFortyBits) {
    std::string captions = "0";
    for (int k = 1; k < 40; ++k) captions += "#" + std::to_string(k);
    EngineFixture p({{.Index = 1, .Überschrift = "Farbe", .Ausgabeart = 7, .Datentyp = 1, .Anzeigetext = "F"},
             {.Index = 2, .Überschrift = "Maske", .Ausgabeart = 11, .Wertname = "M", .Anzeigetext = captions.c_str()}});
    p.put(Pfad, 1, "10 20");
    p.show("Farbe");
    EXPECT_FALSE(p.panel().colour.has_value());
    p.saveOk();
    EXPECT_EQ(p.get(Pfad), "1:10 20");
    p.port.expectBox("in der Funktion: DBTippsAusgeben aufgetreten mit der Fehlernummer: 6");
    p.show("Maske");
    EXPECT_EQ(p.panel().schalter.size(), 32u);
}

// What the database says of a number makes none: nothing can be set, and no number comes into being by saving.
TEST(BadTips, ANumberWithoutUsableBoundsOrDivisor) {
    const struct {
        const char *whenOff, *divisorText;
        bool box, stops;
    } cases[] = {{"<delkey>", nullptr, true, false}, {"null", nullptr, true, false}, {"1", "x", true, false}, {"1", "0", false, true}};
    for (const auto& given : cases) {
        SCOPED_TRACE(given.whenOff);
        EngineFixture p({{.Index = 1, .Überschrift = "Tipp", .Ausgabeart = 3, .Datentyp = 1, .WertEin = "10", .WertAus = given.whenOff, .Werteliste = given.divisorText, .AnzahlWerte = 1},
                 {.Index = 2, .Ausgabeart = 2, .Datentyp = 1, .Wertname = "B", .HauptIndex = 1}});
        const auto box = [&] {
            if (given.box) p.port.expectBox("in der Funktion: DBTippsAusgeben aufgetreten");
        };
        box();
        p.show("Tipp");
        const std::size_t panels = p.windows().panels.size();
        EXPECT_EQ(panels, given.stops ? 1u : 2u);
        EXPECT_TRUE(p.panel().readOnly);
        EXPECT_NE(p.engine->setEntryFromText(1, "5"), "");
        p.port.expectBox("geändert/angelegt");
        box();
        p.save();
        EXPECT_EQ(p.get(Pfad), "-");
        box();
        p.engine->inspectTip(1);
        EXPECT_EQ(p.windows().panels.size(), panels);
    }
}

TEST(BadTips, AColourWithSomethingBehindItIsNotTaken) {
    EngineFixture p({{.Überschrift = "Farbe", .Ausgabeart = 7, .Datentyp = 1, .Anzeigetext = "F"}});
    p.show("Farbe");
    for (const char* text : {"1 2 3 4", "1 2 3 Rest", "1 2", "1 2 256"}) EXPECT_NE(p.engine->setEntryFromText(1, text), "") << text;
    EXPECT_FALSE(p.ctx->blnGeaendert);
}

TEST(BadTips, AnIniFileWithNulsAndABootFileWithoutLineEnds) {
    EngineFixture p({{.Index = 1, .Überschrift = "INI", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "k", .INITipp = true, .Schlüssel = "s", .SchlüsselNT = "x.ini"},
             {.Index = 2, .Überschrift = "Boot", .Ausgabeart = 9, .Datentyp = 1, .Anzeigetext = "/SOS", .Werteliste = "C:", .INITipp = true,
              .Schlüssel = "operating systems", .SchlüsselNT = "boot.ini"}});
    const std::string nul("[s]\r\na=\0b\r\nk=v\0w\r\n", 18);
    const auto ini = p.dir.put("drive_c/WINDOWS/x.ini", nul);
    const auto boot = p.dir.put("drive_c/boot.ini", "[operating systems]" + std::string(2 << 20, 'x'));
    p.show("INI");
    EXPECT_EQ(p.panel().text, "v");
    p.save();
    EXPECT_EQ(bytesOf(ini), nul);
    p.show("Boot");
    EXPECT_TRUE(p.panel().selection.empty());
    p.save();
    EXPECT_EQ(bytesOf(boot).size(), (2u << 20) + 19);
}

TEST(BadTips, AListOfAHundredThousandKeys) {
    EngineFixture p({{.Überschrift = "Liste", .Ausgabeart = 8, .Datentyp = 1, .Wertname = nullptr}});
    p.store->transaction([&] {
        for (int k = 0; k < 100'000; ++k) p.store->createKey(Root::CurrentUser, "Software\\Probe\\k" + std::to_string(100'000 + k));
    });
    p.put("HKCU\\Software\\Probe\\k150000\\", 1, "Mitte");
    p.show("Liste");
    ASSERT_EQ(p.panel().lines.size(), 100'000u);
    EXPECT_EQ(p.panel().lines[50'000].subText, "Mitte");
    EXPECT_EQ(p.panel().lines.back().text, "k199999");
}

TEST(BadTips, AnotherDatabaseThatDoesNotFitLeavesTheOneThatIsOpen) {
    EngineFixture p({{.Überschrift = "Tipp", .Ausgabeart = 2, .Datentyp = 1}});
    const auto text = p.dir.put("text.mdb", "kein Datenbankformat");
    const auto own = p.dir / "RegDaten.mdb", other = p.dir / "andere.mdb";
    p.show("Tipp");
    // What was dropped is not on screen as if it stood in the registry: no file chosen, one that does not fit, none there.
    for (const std::optional<std::string>& choice : {std::optional<std::string>(), std::optional(text.string()), std::optional((p.dir / "fehlt.mdb").string())}) {
        p.engine->input().userText(0, "verworfen");
        p.port.expectBox("Sie haben Einstellungen geändert", Answer::No).expectFile(choice);
        if (choice) p.port.expectBox("wird nicht als Tipp-Datenbank geöffnet");
        p.engine->tree().mnuandereDBLoad();
        EXPECT_TRUE(p.port.done());
        EXPECT_EQ(p.panel().text, "");
        EXPECT_EQ(p.windows().lblDBTippU, "Tipp");
        EXPECT_EQ(p.ctx->udtTippListe.size(), 1u);
    }
    std::filesystem::rename(own, other);
    p.engine->input().userText(0, "verworfen");
    p.port.expectBox("Sie haben Einstellungen geändert", Answer::No).expectBox("Die Datei wurde nicht gefunden.");
    p.engine->tree().mnuBVKDBLoad();
    EXPECT_EQ(p.panel().text, "");
    p.port.expectFile(other.string());
    p.engine->tree().mnuandereDBLoad();
    EXPECT_TRUE(p.windows().panels.empty());
    EXPECT_EQ(p.windows().tvBVKDB.size(), 3u);
    EXPECT_EQ(p.windows().sbrBVK[1], "Einträge: 0 | Datenbank: andere.mdb");
    std::filesystem::copy_file(other, own);
    p.engine->tree().mnuBVKDBLoad();
    EXPECT_EQ(p.windows().sbrBVK[1], "Einträge: 0");
}

}  // namespace
}  // namespace brenvik::test
