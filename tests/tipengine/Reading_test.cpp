// What a panel shows for what stands in the registry, and which words go with it.
#include "tipengine/EngineFixture.h"

namespace brenvik::test {
namespace {

constexpr const char* Pfad = "HKCU\\Software\\Probe\\Wert";
constexpr const char* Missing = "[Registry Wert nicht vorhanden]";
constexpr const char* Ignored = "[Aktueller Wert wird ignoriert]";

TEST(Reading, UnreadableNumbersStayVisibleAndUntouched) {
    const struct {
        Zeile zeile;
        std::uint32_t type;
        const char* text;
        const char* shown;
    } cases[] = {
        {{.Ausgabeart = 3, .Datentyp = 1, .WertEin = "10", .WertAus = "0"}, 1, "5.5.5", "5.5.5"},
        {{.Ausgabeart = 3, .Datentyp = 4, .WertEin = "10", .WertAus = "0"}, 4, "-1", "4294967295"},
    };
    for (const auto& given : cases) {
        Zeile zeile = given.zeile;
        zeile.Überschrift = "Tipp";
        EngineFixture p({zeile});
        p.put(Pfad, given.type, given.text);
        p.port.expectBox("Es ist ein Fehler in der Funktion: DBTippsAusgeben aufgetreten mit der Fehlernummer: ");
        p.show("Tipp");
        EXPECT_EQ(p.engine->shownText(1), given.shown);
        const std::string before = p.get(Pfad);
        p.port.expectBox("Der Schlüssel wurde geändert/angelegt !").expectBox("Es ist ein Fehler in der Funktion: DBTippsAusgeben");
        p.save();
        EXPECT_EQ(p.get(Pfad), before);
    }
}

TEST(Reading, WhatTheTipBeforeAllowedIsAllowedNoLonger) {
    EngineFixture p({{.Index = 1, .Überschrift = "Da", .WertEin = "1", .WertAus = "0"},
             {.Index = 2, .Überschrift = "Fremd", .Wertname = "F", .WertEin = "1", .WertAus = "0", .Systems = "95"}});
    p.put(Pfad, 4, "1");
    p.put("HKCU\\Software\\Probe\\F", 4, "1");
    p.show("Da");
    EXPECT_TRUE(p.windows().KeyDel && p.windows().RegFile);
    p.show("Fremd");   // not shown on this system, so there is nothing to delete or to export
    EXPECT_FALSE(p.windows().KeyDel || p.windows().RegFile);
    p.ctx->einstellungen.BSSystemAktiv = false;
    p.engine->reloadTip();
    EXPECT_TRUE(p.windows().fraSteuerung && p.windows().KeyDel);
}

TEST(Reading, AnIgnoredValueAfterAReadOnlyTipIsAskedAboutOnLeaving) {
    EngineFixture p({{.Index = 1, .Überschrift = "Nur lesen", .WertEin = "1", .WertAus = "0"},
             {.Index = 2, .Überschrift = "Fremd", .Wertname = "F", .WertEin = "1", .WertAus = "0", .Schlüssel = "Software\\Zweiter"}});
    p.put(Pfad, 4, "1");
    p.put("HKCU\\Software\\Zweiter\\F", 4, "7");
    p.store->setReadOnly(Root::CurrentUser, "Software\\Probe", true);
    p.show("Nur lesen");
    p.show("Fremd");
    p.engine->input().userCheck(0, true);
    p.port.expectBox("Sie haben Einstellungen geändert", Answer::Yes).expectBox("geändert/angelegt");
    p.show("Nur lesen");
    EXPECT_EQ(p.get("HKCU\\Software\\Zweiter\\F"), "4:1");
}

TEST(Reading, AValueOfUnreadableFormDoesNotCountAsMissing) {
    for (const std::int16_t kind : {1, 7}) {   // with a status line of its own, and read silently
        EngineFixture p({{.Überschrift = "Tipp", .Ausgabeart = kind, .WertEin = "1", .WertAus = "0", .Anzeigetext = "A"}});
        const RawValue stub{4, {1, 2}};
        p.store->setValue(Root::CurrentUser, "Software\\Probe", ValueName::named("Wert"), stub);
        p.port.expectBox("in der Funktion: ReadRecTipp");
        p.show("Tipp");
        EXPECT_EQ(p.panel().status.text, Ignored);
        EXPECT_TRUE(p.windows().KeySave);
        p.port.expectBox("geändert/angelegt").expectBox("in der Funktion: ReadRecTipp");
        p.save();
        EXPECT_EQ(p.store->value(Root::CurrentUser, "Software\\Probe", ValueName::named("Wert")), stub);
    }
}

TEST(Reading, AReadOnlyKeyIsToldToBeOne) {
    EngineFixture p({{.Überschrift = "Tipp", .WertEin = "1", .WertAus = "0", .Standardwert = "0"}});
    p.put(Pfad, 4, "1");
    p.store->setReadOnly(Root::CurrentUser, "Software\\Probe", true);
    p.show("Tipp");
    EXPECT_EQ(p.panel().status.text, "[Registry Wert vorhanden] - [Rechte: Lesen]");
    EXPECT_FALSE(p.windows().KeySave);
    EXPECT_FALSE(p.windows().Default);
    EXPECT_FALSE(p.windows().KeyDel);
}

TEST(Reading, SeveralValuesWithoutARowOfTheirOwn) {
    const std::vector<Zeile> colourRows = {
        {.Index = 1, .Überschrift = "Farben", .Ausgabeart = 7, .Datentyp = 1, .Wertname = "A", .Anzeigetext = "a", .AnzahlWerte = 1},
        {.Index = 2, .Ausgabeart = 7, .Datentyp = 1, .Wertname = "B", .Anzeigetext = "b", .HauptIndex = 1}};
    EngineFixture p(colourRows);
    p.put("HKCU\\Software\\Probe\\B", 1, "1 2 3");
    p.show("Farben");
    EXPECT_EQ(p.panel().status.text, "[Einige Registry Werte vorhanden]");
    EXPECT_FALSE(p.panel().colour.has_value());
    p.engine->input().userChoose(0, 1);
    EXPECT_EQ(p.panel().colour, (Rgb{1, 2, 3}));
    EXPECT_FALSE(p.ctx->blnGeaendert);
}

TEST(Reading, AnotherDataTypeIsAskedAboutAndNeverDeletedUnasked) {
    const Zeile zeile{.Überschrift = "Tipp", .WertEin = "1", .WertAus = "0"};
    {
        EngineFixture p({zeile});
        p.put(Pfad, 3, "01 02");
        p.port.onWindow("frmBVK_Datentyp", [](WindowRequest& w) {
            auto& d = dynamic_cast<DatentypRequest&>(w);
            EXPECT_EQ(d.typeDatabase + "|" + d.typeRegistry + "|" + d.contents, "REG_DWORD|REG_BINARY|01 02");
        });
        p.show("Tipp");
        EXPECT_EQ(p.panel().status.text, Ignored);
        EXPECT_EQ(p.get(Pfad), "3:01 02");
        p.saveOk();
        EXPECT_EQ(p.get(Pfad), "3:01 02");   // untouched: written back raw
    }
    {
        EngineFixture p({zeile});
        p.put(Pfad, 3, "01 02");
        p.port.onWindow("frmBVK_Datentyp", [](WindowRequest& w) { dynamic_cast<DatentypRequest&>(w).weiter = true; });
        p.show("Tipp");
        EXPECT_EQ(p.panel().status.text, Missing);
        EXPECT_EQ(p.get(Pfad), "-");
        ASSERT_EQ(p.recorder.begun.size(), 1u);
        EXPECT_EQ(p.recorder.begun[0].values[0].alt, (RawValue{3, {1, 2}}));
    }
    {
        Zeile silent = zeile;
        silent.TypAnpassen = 1;
        EngineFixture p({silent});
        p.put(Pfad, 3, "01 02");
        p.engine->inspectTip(1);   // a look changes nothing, even where adapting needs no question
        EXPECT_EQ(p.engine->statusOf(1).text, "[Anderer Datentyp in der Registry: REG_BINARY]");
        EXPECT_EQ(p.get(Pfad), "3:01 02");
        p.show("Tipp");
        EXPECT_EQ(p.get(Pfad), "-");
    }
}

TEST(Reading, TwoKindsOfTextGetAlong) {
    for (const auto& [system, after] : {std::pair{2, "2:neu"}, {6, "1:neu"}}) {   // Windows 98 takes over what stands there
        EngineFixture p({{.Überschrift = "Tipp", .Ausgabeart = 2, .Datentyp = 1}});
        p.ctx->intBS = static_cast<std::int16_t>(system);
        p.put(Pfad, 2, "%windir%");
        p.show("Tipp");
        p.engine->input().userText(0, "neu");
        p.saveOk();
        EXPECT_EQ(p.get(Pfad), after);
    }
}

TEST(Reading, WhatTheDisplaySetsOffIsNoChange) {
    struct Echo : WindowObserver {
        TipEngine* engine = nullptr;
        void panelChanged(std::size_t place) override { engine->input().userText(place, "Echo"); }
    } echo;
    EngineFixture p({{.Überschrift = "Tipp", .Ausgabeart = 2, .Datentyp = 1}});
    TipEngine engine(*p.ctx, echo, p.recorder);
    echo.engine = &engine;
    p.port.onEvents = [&] { engine.input().userText(0, "während der Ausgabe"); };
    p.show("Tipp");
    p.port.onEvents = {};
    EXPECT_EQ(p.panel().text, "");
    EXPECT_FALSE(p.ctx->blnGeaendert);
    engine.input().userText(0, "neu");
    EXPECT_EQ(p.panel().text, "neu");
}

TEST(Reading, AnUnnamedValueAndPlaceholders) {
    EngineFixture p({{.Index = 1, .Überschrift = "Leer", .Ausgabeart = 2, .Datentyp = 1, .Wertname = nullptr},
             {.Index = 2, .Überschrift = "SID", .Ausgabeart = 2, .Datentyp = 1, .Hauptschlüssel = "HKU", .Schlüssel = "[SID]\\Software\\Probe"}});
    p.put("HKCU\\Software\\Probe\\", 1, "");
    p.show("Leer");
    EXPECT_EQ(p.panel().status.text, Missing);
    p.put("HKCU\\Software\\Probe\\", 1, "da");
    p.engine->reloadTip();
    EXPECT_EQ(p.panel().text, "da");
    p.put(std::string("HKU\\") + Sid + "\\Software\\Probe\\Wert", 1, "mein");
    p.show("SID");
    EXPECT_EQ(p.panel().text, "mein");
}

TEST(Reading, AnUnsuitableTipShowsNoPanels) {
    EngineFixture p({{.Überschrift = "Tipp", .WertEin = "1", .WertAus = "0", .Systems = "95"}});
    p.show("Tipp");
    EXPECT_TRUE(p.windows().panels.empty());
    EXPECT_FALSE(p.windows().fraSteuerung);
    EXPECT_EQ(p.windows().fraInfo, "Achtung: Dieser Tip ist nicht für Ihr Betriebsystem geeignet !!!");
    EXPECT_EQ(p.windows().sbrBVK[1], "Tipp ist geeignet für:  95");
    p.ctx->einstellungen.BSSystemAktiv = false;
    p.engine->reloadTip();
    EXPECT_EQ(p.windows().panels.size(), 1u);
    p.ctx->einstellungen.BSSystemAktiv = true;
    RegistryTarget other([&]() -> RegStore& { return *p.store; }, TargetFiles::none({}));
    p.machines->setFinder([&](const std::string&) { return &other; });
    p.ctx->strRechnername = "ANDERER";   // there the system is not checked
    p.engine->reloadTip();
    EXPECT_EQ(p.windows().panels.size(), 1u);
    EXPECT_EQ(p.windows().fraInfo, "Betriebsystem wird bei Netzwerkzugriff nicht überprüft !!");
}

}  // namespace
}  // namespace brenvik::test
