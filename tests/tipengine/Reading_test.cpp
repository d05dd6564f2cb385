// What a panel shows for what stands in the registry, and which words go with it.
#include "tipengine/EngineFixture.h"

namespace brenvik::test {
namespace {

constexpr const char* Pfad = "HKCU\\Software\\Probe\\Wert";
constexpr const char* Fehlt = "[Registry Wert nicht vorhanden]";
constexpr const char* Ignoriert = "[Aktueller Wert wird ignoriert]";

TEST(Lesen, UnlesbareZahlenBleibenSichtbarUndUnberuehrt) {
    const struct {
        Zeile zeile;
        std::uint32_t type;
        const char* text;
        const char* shown;
    } faelle[] = {
        {{.Ausgabeart = 3, .Datentyp = 1, .WertEin = "10", .WertAus = "0"}, 1, "5.5.5", "5.5.5"},
        {{.Ausgabeart = 3, .Datentyp = 4, .WertEin = "10", .WertAus = "0"}, 4, "-1", "4294967295"},
    };
    for (const auto& fall : faelle) {
        Zeile zeile = fall.zeile;
        zeile.Überschrift = "Tipp";
        Probe p({zeile});
        p.put(Pfad, fall.type, fall.text);
        p.port.expectBox("Es ist ein Fehler in der Funktion: DBTippsAusgeben aufgetreten mit der Fehlernummer: ");
        p.show("Tipp");
        EXPECT_EQ(p.engine->shownText(1), fall.shown);
        const std::string before = p.get(Pfad);
        p.port.expectBox("Der Schlüssel wurde geändert/angelegt !").expectBox("Es ist ein Fehler in der Funktion: DBTippsAusgeben");
        p.save();
        EXPECT_EQ(p.get(Pfad), before);
    }
}

TEST(Lesen, WasDerTippDavorErlaubteGiltNichtWeiter) {
    Probe p({{.Index = 1, .Überschrift = "Da", .WertEin = "1", .WertAus = "0"},
             {.Index = 2, .Überschrift = "Fremd", .Wertname = "F", .WertEin = "1", .WertAus = "0", .Systeme = "95"}});
    p.put(Pfad, 4, "1");
    p.put("HKCU\\Software\\Probe\\F", 4, "1");
    p.show("Da");
    EXPECT_TRUE(p.fenster().KeyDel && p.fenster().RegFile);
    p.show("Fremd");   // not shown on this system, so there is nothing to delete or to export
    EXPECT_FALSE(p.fenster().KeyDel || p.fenster().RegFile);
    p.ctx->einstellungen.BSSystemAktiv = false;
    p.engine->reloadTipp();
    EXPECT_TRUE(p.fenster().fraSteuerung && p.fenster().KeyDel);
}

TEST(Lesen, IgnorierterWertNachNurLesbaremTippWirdBeimVerlassenGefragt) {
    Probe p({{.Index = 1, .Überschrift = "Nur lesen", .WertEin = "1", .WertAus = "0"},
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

TEST(Lesen, WertInUnlesbarerFormGiltNichtAlsFehlend) {
    for (const std::int16_t kind : {1, 7}) {   // with a status line of its own, and read silently
        Probe p({{.Überschrift = "Tipp", .Ausgabeart = kind, .WertEin = "1", .WertAus = "0", .Anzeigetext = "A"}});
        const RawValue stub{4, {1, 2}};
        p.store->setValue(Root::CurrentUser, "Software\\Probe", ValueName::named("Wert"), stub);
        p.port.expectBox("in der Funktion: ReadRecTipp");
        p.show("Tipp");
        EXPECT_EQ(p.panel().status.text, Ignoriert);
        EXPECT_TRUE(p.fenster().KeySave);
        p.port.expectBox("geändert/angelegt").expectBox("in der Funktion: ReadRecTipp");
        p.save();
        EXPECT_EQ(p.store->value(Root::CurrentUser, "Software\\Probe", ValueName::named("Wert")), stub);
    }
}

TEST(Lesen, NurLesbarerSchluesselSagtEs) {
    Probe p({{.Überschrift = "Tipp", .WertEin = "1", .WertAus = "0", .Standardwert = "0"}});
    p.put(Pfad, 4, "1");
    p.store->setReadOnly(Root::CurrentUser, "Software\\Probe", true);
    p.show("Tipp");
    EXPECT_EQ(p.panel().status.text, "[Registry Wert vorhanden] - [Rechte: Lesen]");
    EXPECT_FALSE(p.fenster().KeySave);
    EXPECT_FALSE(p.fenster().Default);
    EXPECT_FALSE(p.fenster().KeyDel);
}

TEST(Lesen, MehrereWerteOhneEigeneZeile) {
    const std::vector<Zeile> farben = {
        {.Index = 1, .Überschrift = "Farben", .Ausgabeart = 7, .Datentyp = 1, .Wertname = "A", .Anzeigetext = "a", .AnzahlWerte = 1},
        {.Index = 2, .Ausgabeart = 7, .Datentyp = 1, .Wertname = "B", .Anzeigetext = "b", .HauptIndex = 1}};
    Probe p(farben);
    p.put("HKCU\\Software\\Probe\\B", 1, "1 2 3");
    p.show("Farben");
    EXPECT_EQ(p.panel().status.text, "[Einige Registry Werte vorhanden]");
    EXPECT_FALSE(p.panel().farbe.has_value());
    p.engine->input().userChoose(0, 1);
    EXPECT_EQ(p.panel().farbe, (Rgb{1, 2, 3}));
    EXPECT_FALSE(p.ctx->blnGeaendert);
}

TEST(Lesen, AndererDatentypWirdGefragtUndNieVonSelbstGeloescht) {
    const Zeile zeile{.Überschrift = "Tipp", .WertEin = "1", .WertAus = "0"};
    {
        Probe p({zeile});
        p.put(Pfad, 3, "01 02");
        p.port.onWindow("frmBVK_Datentyp", [](WindowRequest& w) {
            auto& d = dynamic_cast<DatentypAnfrage&>(w);
            EXPECT_EQ(d.typDatenbank + "|" + d.typRegistry + "|" + d.inhalt, "REG_DWORD|REG_BINARY|01 02");
        });
        p.show("Tipp");
        EXPECT_EQ(p.panel().status.text, Ignoriert);
        EXPECT_EQ(p.get(Pfad), "3:01 02");
        p.saveOk();
        EXPECT_EQ(p.get(Pfad), "3:01 02");   // untouched: written back raw
    }
    {
        Probe p({zeile});
        p.put(Pfad, 3, "01 02");
        p.port.onWindow("frmBVK_Datentyp", [](WindowRequest& w) { dynamic_cast<DatentypAnfrage&>(w).weiter = true; });
        p.show("Tipp");
        EXPECT_EQ(p.panel().status.text, Fehlt);
        EXPECT_EQ(p.get(Pfad), "-");
        ASSERT_EQ(p.recorder.begun.size(), 1u);
        EXPECT_EQ(p.recorder.begun[0].werte[0].alt, (RawValue{3, {1, 2}}));
    }
    {
        Zeile silent = zeile;
        silent.TypAnpassen = 1;
        Probe p({silent});
        p.put(Pfad, 3, "01 02");
        p.engine->inspectTipp(1);   // a look changes nothing, even where adapting needs no question
        EXPECT_EQ(p.engine->statusOf(1).text, "[Anderer Datentyp in der Registry: REG_BINARY]");
        EXPECT_EQ(p.get(Pfad), "3:01 02");
        p.show("Tipp");
        EXPECT_EQ(p.get(Pfad), "-");
    }
}

TEST(Lesen, ZweiTextartenVertragenSich) {
    for (const auto& [system, after] : {std::pair{2, "2:neu"}, {6, "1:neu"}}) {   // Windows 98 takes over what stands there
        Probe p({{.Überschrift = "Tipp", .Ausgabeart = 2, .Datentyp = 1}});
        p.ctx->intBS = static_cast<std::int16_t>(system);
        p.put(Pfad, 2, "%windir%");
        p.show("Tipp");
        p.engine->input().userText(0, "neu");
        p.saveOk();
        EXPECT_EQ(p.get(Pfad), after);
    }
}

TEST(Lesen, WasDieAnzeigeAusloestIstKeineAenderung) {
    struct Echo : WindowObserver {
        TippMaschine* engine = nullptr;
        void panelChanged(std::size_t place) override { engine->input().userText(place, "Echo"); }
    } echo;
    Probe p({{.Überschrift = "Tipp", .Ausgabeart = 2, .Datentyp = 1}});
    TippMaschine engine(*p.ctx, echo, p.recorder);
    echo.engine = &engine;
    p.port.onEvents = [&] { engine.input().userText(0, "während der Ausgabe"); };
    p.show("Tipp");
    p.port.onEvents = {};
    EXPECT_EQ(p.panel().text, "");
    EXPECT_FALSE(p.ctx->blnGeaendert);
    engine.input().userText(0, "neu");
    EXPECT_EQ(p.panel().text, "neu");
}

TEST(Lesen, UnbenannterWertUndPlatzhalter) {
    Probe p({{.Index = 1, .Überschrift = "Leer", .Ausgabeart = 2, .Datentyp = 1, .Wertname = nullptr},
             {.Index = 2, .Überschrift = "SID", .Ausgabeart = 2, .Datentyp = 1, .Hauptschlüssel = "HKU", .Schlüssel = "[SID]\\Software\\Probe"}});
    p.put("HKCU\\Software\\Probe\\", 1, "");
    p.show("Leer");
    EXPECT_EQ(p.panel().status.text, Fehlt);
    p.put("HKCU\\Software\\Probe\\", 1, "da");
    p.engine->reloadTipp();
    EXPECT_EQ(p.panel().text, "da");
    p.put(std::string("HKU\\") + Sid + "\\Software\\Probe\\Wert", 1, "mein");
    p.show("SID");
    EXPECT_EQ(p.panel().text, "mein");
}

TEST(Lesen, UngeeigneterTippZeigtKeinePanels) {
    Probe p({{.Überschrift = "Tipp", .WertEin = "1", .WertAus = "0", .Systeme = "95"}});
    p.show("Tipp");
    EXPECT_TRUE(p.fenster().panels.empty());
    EXPECT_FALSE(p.fenster().fraSteuerung);
    EXPECT_EQ(p.fenster().fraInfo, "Achtung: Dieser Tip ist nicht für Ihr Betriebsystem geeignet !!!");
    EXPECT_EQ(p.fenster().sbrBVK[1], "Tipp ist geeignet für:  95");
    p.ctx->einstellungen.BSSystemAktiv = false;
    p.engine->reloadTipp();
    EXPECT_EQ(p.fenster().panels.size(), 1u);
    p.ctx->einstellungen.BSSystemAktiv = true;
    RegistryTarget other([&]() -> RegStore& { return *p.store; }, TargetFiles::none({}));
    p.machines->setFinder([&](const std::string&) { return &other; });
    p.ctx->strRechnername = "ANDERER";   // there the system is not checked
    p.engine->reloadTipp();
    EXPECT_EQ(p.fenster().panels.size(), 1u);
    EXPECT_EQ(p.fenster().fraInfo, "Betriebsystem wird bei Netzwerkzugriff nicht überprüft !!");
}

}  // namespace
}  // namespace brenvik::test
