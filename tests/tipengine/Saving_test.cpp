// What a save writes, byte for byte, and what it leaves alone.
#include <functional>

#include "tipengine/EngineFixture.h"

namespace brenvik::test {
namespace {

constexpr const char* Pfad = "HKCU\\Software\\Probe\\Wert";

TEST(Speichern, WhatDoesNotFitIsRefusedAndNothingWritten) {
    const struct {
        Zeile zeile;
        const char* input;
        const char* box;
    } cases[] = {
        {{.Ausgabeart = 2}, "xyz", "Erwartet wird eine Hexadezimalzahl"},
        {{.Ausgabeart = 2}, "123456789", "Erwartet wird eine Hexadezimalzahl"},
        {{.Ausgabeart = 3, .Datentyp = 3, .WertEin = "99999", .WertAus = "0"}, "32768", "nur Zahlen von 0 bis 32767"},
        {{.Ausgabeart = 2, .Datentyp = 7}, "eins\n\nzwei", "keine leere Zeile enthalten"},
        {{.Ausgabeart = 2, .Datentyp = 3}, "kein Byte", "kann nicht als REG_BINARY gespeichert werden"},
    };
    for (const auto& given : cases) {
        Zeile zeile = given.zeile;
        zeile.Überschrift = "Tipp";
        zeile.AnzahlWerte = 1;
        EngineFixture p({{zeile}, {.Index = 2, .Ausgabeart = 2, .Datentyp = 1, .Wertname = "Zweiter", .HauptIndex = 1}});
        p.put(Pfad, static_cast<std::uint32_t>(zeile.Datentyp), zeile.Datentyp == 3 ? "07" : "7");
        const std::string before = p.get(Pfad);
        p.show("Tipp");
        p.engine->setEntryFromText(1, given.input);
        p.engine->setEntryFromText(2, "neu");
        p.port.expectBox(given.box);
        p.save();
        EXPECT_EQ(p.get(Pfad), before);
        EXPECT_EQ(p.get("HKCU\\Software\\Probe\\Zweiter"), "-");
        EXPECT_TRUE(p.ctx->blnGeaendert);
        EXPECT_TRUE(p.recorder.begun.empty());
        EXPECT_FALSE(p.port.waiting());
    }
}

const std::vector<Zeile> Three = {
    {.Index = 1, .Überschrift = "Drei", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "A", .Standardwert = "a0", .AnzahlWerte = 2},
    {.Index = 2, .Ausgabeart = 2, .Datentyp = 1, .Wertname = "B", .Standardwert = "<delkey>", .HauptIndex = 1, .Schlüssel = "Software\\Zweiter"},
    {.Index = 3, .Ausgabeart = 2, .Datentyp = 1, .Wertname = "C", .HauptIndex = 1}};

TEST(Speichern, TheChangeKnowsTheRawValues) {
    EngineFixture p(Three);
    p.put("HKCU\\Software\\Probe\\A", 2, "alt");
    p.show("Drei");
    p.engine->input().userText(0, "neu");
    p.engine->input().userText(1, "auch");
    p.saveOk();
    ASSERT_EQ(p.recorder.ended.size(), 1u);
    const auto& values = p.recorder.ended[0].values;
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(values[0].path, "HKEY_CURRENT_USER\\Software\\Probe\\A");
    EXPECT_EQ(values[0].alt, fromText("alt", 2));
    EXPECT_EQ(values[0].neu, fromText("neu", 1));
    EXPECT_EQ(values[1].alt, std::nullopt);
    EXPECT_TRUE(values[0].written && values[1].written);
    EXPECT_EQ(p.platform.settingChanges.size(), 1u);

    p.engine->input().userText(0, "<DelKey>");   // in whatever letters
    p.saveOk();
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\A"), "-");
}

// Once something of it was written, the registry may only be read any more.
void lockAfterFirstWrite(EngineFixture& p) {
    p.recorder.onWritten = [&p] {
        for (const char* key : {"Software\\Probe", "Software\\Zweiter"}) p.store->setReadOnly(Root::CurrentUser, key, true);
    };
}

TEST(Speichern, AnAbortInTheMidstTellsWhatWasWritten) {
    EngineFixture p(Three);
    p.put("HKCU\\Software\\Probe\\A", 1, "alt");
    p.store->createKey(Root::CurrentUser, "Software\\Zweiter");
    p.show("Drei");
    p.engine->input().userText(0, "neu");
    p.engine->input().userText(1, "geht nicht");
    p.engine->input().userText(2, "später");
    lockAfterFirstWrite(p);
    p.port.expectBox("Auf den Schlüssel konnte nicht zugegriffen werden").expectBox("nach 1 von 3 Werten abgebrochen");
    p.save();
    const std::string root = "HKEY_CURRENT_USER\\Software\\";
    EXPECT_EQ(p.port.lastBox(), "Das Speichern wurde nach 1 von 3 Werten abgebrochen.\r\n\r\nGeschrieben wurde:\r\n" + root + "Probe\\A\r\n\r\nNicht geschrieben wurde:\r\n" +
                                    root + "Zweiter\\B\r\n" + root + "Probe\\C\r\n");
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\A") + p.get("HKCU\\Software\\Zweiter\\B") + p.get("HKCU\\Software\\Probe\\C"), "1:neu--");
    ASSERT_EQ(p.recorder.ended.size(), 1u);
    std::string written;
    for (const ValueChange& value : p.recorder.ended[0].values) written += value.written ? '1' : '0';
    EXPECT_EQ(written, "100");
    EXPECT_EQ(p.recorder.ended[0].values[0].alt, fromText("alt", 1));
    EXPECT_TRUE(p.ctx->blnGeaendert);
    EXPECT_FALSE(p.port.waiting());
    EXPECT_EQ(p.panel(0).status.text, "[Registry Wert vorhanden] - [Rechte: Lesen]");
    EXPECT_EQ(p.panel(1).status.text, "[Registry Wert nicht vorhanden]");
}

TEST(Speichern, WhatSomebodyElseChangedOrMadeMeanwhileStays) {
    for (const char* before : {"1:0", "-"}) {
        EngineFixture p({{.Index = 1, .Überschrift = "Tipp", .Datentyp = 1, .WertEin = "1", .WertAus = "0", .AnzahlWerte = 1},
                 {.Index = 2, .Ausgabeart = 2, .Datentyp = 1, .Wertname = "B", .HauptIndex = 1}});
        p.putTyped(Pfad, before);
        p.show("Tipp");
        p.put(Pfad, 1, "1");
        p.engine->input().userText(1, "neu");
        p.saveOk();
        EXPECT_EQ(p.get(Pfad), "1:1");
        EXPECT_TRUE(p.panel(0).ticked);
    }
}

TEST(Speichern, AListOfKeysHasNoValueOfItsOwn) {
    EngineFixture p({{.Überschrift = "Tipp", .Ausgabeart = 8, .Datentyp = 1, .Wertname = nullptr}});
    p.put("HKCU\\Software\\Probe\\eins\\Wert", 1, "x");
    p.show("Tipp");
    EXPECT_EQ(p.engine->shownText(1), "eins");
    EXPECT_NE(p.engine->setEntryFromText(1, "on"), "");
    p.engine->input().userTick(0, 0, true);   // chosen for deleting
    p.saveOk();
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\"), "-");
}

TEST(Speichern, AReadOnlyValueDoesNotHoldUpTheOthers) {
    EngineFixture p(Three);
    p.put("HKCU\\Software\\Probe\\A", 1, "a");
    p.put("HKCU\\Software\\Zweiter\\B", 1, "b");
    p.store->setReadOnly(Root::CurrentUser, "Software\\Zweiter", true);
    p.show("Drei");
    EXPECT_TRUE(!p.panel(0).readOnly && p.panel(1).readOnly && !p.panel(2).readOnly);
    p.engine->input().userText(0, "neu");
    p.saveOk();
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\A") + p.get("HKCU\\Software\\Zweiter\\B"), "1:neu1:b");
}

// One panel for several values, of which one may not be written: it is locked, and the others can be saved.
TEST(Speichern, RightsOfEachValueInASharedPanel) {
    for (const std::int16_t kind : {art::Drive, art::Farbe, art::Liste}) {
        SCOPED_TRACE(kind);
        const char* before = kind == art::Liste ? "no" : "1 2 3";
        EngineFixture p({{.Index = 1, .Überschrift = "Tipp", .Ausgabeart = kind, .Datentyp = 1, .Wertname = "A", .Anzeigetext = "a", .AnzahlWerte = 2},
                 {.Index = 2, .Ausgabeart = kind, .Datentyp = 1, .Wertname = "B", .Anzeigetext = "b", .HauptIndex = 1, .Schlüssel = "Software\\Zweiter"},
                 {.Index = 3, .Ausgabeart = kind, .Datentyp = 1, .Wertname = "C", .Anzeigetext = "c", .HauptIndex = 1, .Schlüssel = "Software\\Zweiter\\Neu"}});
        p.put("HKCU\\Software\\Probe\\A", 1, before);
        p.put("HKCU\\Software\\Zweiter\\B", 1, before);
        p.store->setReadOnly(Root::CurrentUser, "Software\\Zweiter", true);
        p.show("Tipp");
        EXPECT_TRUE(p.windows().KeySave);
        std::string locked;
        for (int row = 0; row < 3; ++row) {
            if (kind != art::Liste) p.engine->input().userChoose(0, row);
            locked += (kind == art::Liste ? p.panel().lines[static_cast<std::size_t>(row)].readOnly : p.panel().readOnly) ? '1' : '0';
        }
        EXPECT_EQ(locked, "011");
        EXPECT_FALSE(p.panel().hint.empty());
        if (kind == art::Liste) {
            p.engine->input().userTick(0, 1, false);
            EXPECT_TRUE(p.panel().lines[1].ticked);
        }
        const char* input = kind == art::Liste ? "off" : "4 5 6";
        EXPECT_EQ(p.engine->setEntryFromText(1, input), "");
        p.saveOk();
        const std::string after = kind == art::Liste ? "-" : "1:4 5 6";
        EXPECT_EQ(p.get("HKCU\\Software\\Probe\\A") + p.get("HKCU\\Software\\Zweiter\\B"), after + "1:" + before);
        if (kind == art::Liste) continue;
        p.recorder.begun.clear();
        for (const std::int16_t i : {1, 2}) EXPECT_EQ(p.engine->setEntryFromText(i, "7 8 9"), "");
        p.port.expectBox("Der Wert HKEY_CURRENT_USER\\Software\\Zweiter\\B kann nicht geschrieben werden");
        p.save();   // refused before the first value
        EXPECT_EQ(p.get("HKCU\\Software\\Probe\\A"), after);
        EXPECT_TRUE(p.recorder.begun.empty());
    }
}

TEST(Speichern, OfTwoEntriesOfOneValueTheOneThatWasSetCounts) {
    const struct {
        const char *before, *first, *second, *after;
    } cases[] = {
        {"4:0", "on", nullptr, "4:1"}, {"4:0", nullptr, "5", "4:5"}, {"-", "on", nullptr, "4:1"},      {"-", nullptr, "5", "4:5"}, {"4:1", "off", nullptr, "-"},
        {"-", nullptr, nullptr, "-"},  {"4:0", "on", "1", "4:1"},    {"4:0", "on", "2", "verschieden"}, {"4:0", "off", "2", "verschieden"},
    };
    for (const auto& given : cases) {
        SCOPED_TRACE(std::string(given.before) + " " + given.after);
        EngineFixture p({{.Index = 1, .Überschrift = "Tipp", .WertEin = "1", .WertAus = "<delkey>", .AnzahlWerte = 1},
                 {.Index = 2, .Ausgabeart = 2, .Wertname = "WERT", .HauptIndex = 1}});
        p.putTyped(Pfad, given.before);
        p.show("Tipp");
        if (given.first != nullptr) p.engine->setEntryFromText(1, given.first);
        if (given.second != nullptr) p.engine->setEntryFromText(2, given.second);
        const bool refused = std::string(given.after) == "verschieden";
        p.port.expectBox(refused ? "stehen für denselben Wert" : "geändert/angelegt");
        EXPECT_TRUE(p.engine->collectForExport());
        for (const auto& value : p.engine->collectedValues())
            if (!refused && value.wert) {
                EXPECT_EQ(std::to_string(value.wert->type) + ":" + toText(*value.wert), given.after);
            }
        p.save();
        EXPECT_EQ(p.get(Pfad), refused ? given.before : given.after);
        EXPECT_LE(p.recorder.ended.empty() ? 0u : p.recorder.ended[0].values.size(), 1u);
    }
}

TEST(Speichern, AValueNameWithASeparatorIsNoKey) {
    EngineFixture p({{.Überschrift = "Tipp", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "a\\b"}});
    const auto name = ValueName::named("a\\b");
    p.store->setValue(Root::CurrentUser, "Software\\Probe", name, fromText("alt", 1));
    p.show("Tipp");
    EXPECT_EQ(p.panel().text + p.panel().status.text, "alt[Registry Wert vorhanden]");
    p.engine->input().userText(0, "neu");
    p.saveOk();
    EXPECT_EQ(p.store->value(Root::CurrentUser, "Software\\Probe", name), fromText("neu", 1));
    EXPECT_FALSE(p.store->keyExists(Root::CurrentUser, "Software\\Probe\\a"));
    const ValueChange change = p.recorder.ended.at(0).values.at(0);
    EXPECT_EQ(placeOf(change).key + "|" + placeOf(change).name.text(), "Software\\Probe|a\\b");
    p.port.expectBox("Schlüssel wird gelöscht", Answer::Yes);
    p.engine->clickRegDel();
    EXPECT_FALSE(p.store->hasValue(Root::CurrentUser, "Software\\Probe", name));
}

TEST(Speichern, AClearedFieldTellsWhatHappens) {
    EngineFixture p({{.Überschrift = "Tipp", .Ausgabeart = 2, .Datentyp = 1}});
    p.show("Tipp");
    p.engine->input().userText(0, "x");
    p.engine->input().userText(0, "");
    EXPECT_EQ(p.panel().hint, "");   // nothing stands there that could stay
    p.put(Pfad, 1, "alt");
    p.engine->reloadTip();
    p.engine->input().userText(0, "");
    EXPECT_NE(p.panel().hint.find("<delkey>"), std::string::npos);
    p.saveOk();
    EXPECT_EQ(p.get(Pfad), "1:alt");
    EXPECT_EQ(p.panel().hint, "");
    p.engine->input().userText(0, "<delkey>");
    EXPECT_EQ(p.panel().hint, "");
    p.saveOk();
    EXPECT_EQ(p.get(Pfad), "-");
}

// What lines of a field cannot tell apart may not be edited there.
TEST(Speichern, AListThatWouldNotComeBackAsLinesIsLocked) {
    const struct {
        std::string text;
        bool locked;
    } cases[] = {{std::string("eins\0zwei", 9), false}, {std::string("eins\0\0zwei", 10), true}, {"eins\rzwei", true}, {"eins\nzwei", true}, {"\xC2\xA0", false}, {"", false}};
    EngineFixture p({{.Überschrift = "Tipp", .Ausgabeart = 2, .Datentyp = 7}});
    for (const auto& given : cases) {
        p.put(Pfad, 7, given.text);
        p.show("Tipp");
        EXPECT_EQ(p.panel().readOnly, given.locked) << given.text;
        EXPECT_EQ(p.panel().hint.empty(), !given.locked);
        p.saveOk();
        EXPECT_EQ(p.get(Pfad), "7:" + given.text);
    }
}

TEST(Speichern, AChosenFileStandsWithItsWindowsPath) {
    EngineFixture p({{.Überschrift = "Tipp", .Ausgabeart = 6, .Datentyp = 1, .Anzeigetext = "Bild", .Werteliste = "Bilder|*.bmp"}});
    const auto file = p.dir.put("drive_c/WINDOWS/neu.bmp", "");
    const struct {
        const char *present, *start;
    } cases[] = {{"C:\\windows\\alt.bmp", "drive_c/WINDOWS/alt.bmp"}, {"%x%\\a.bmp", "drive_c"}, {"\\\\server\\bild.bmp", "drive_c"}};
    for (const auto& given : cases) {
        p.put(Pfad, 1, given.present);
        p.show("Tipp");
        p.port.expectFile(file.string());
        p.engine->input().userBrowse(0);
        EXPECT_EQ(p.port.fileChoices.back().path, (p.dir / given.start).string());
        p.saveOk();
        EXPECT_EQ(p.get(Pfad), "1:C:\\WINDOWS\\neu.bmp");
    }
}

TEST(Speichern, ABinaryColourOfTheSameTextIsAnotherOne) {
    const struct {
        Rgb chosen;
        const char* after;
    } cases[] = {{{10, 20, 30}, "3:0A 14 1E"}, {{16, 32, 48}, "3:10 20 30 00"}};
    for (const auto& given : cases) {
        EngineFixture p({{.Überschrift = "Tipp", .Ausgabeart = 7, .Datentyp = 3, .Anzeigetext = "F"}});
        p.put(Pfad, 3, "10 20 30 00");
        p.show("Tipp");
        EXPECT_EQ(p.panel().colour, (Rgb{16, 32, 48}));
        p.port.expectColour(given.chosen);
        p.engine->input().userColour(0);
        p.saveOk();
        EXPECT_EQ(p.get(Pfad), given.after);
    }
}

TEST(Speichern, DefaultSetsDeletesAndSkips) {
    EngineFixture p(Three);
    for (const char* path : {"HKCU\\Software\\Probe\\A", "HKCU\\Software\\Zweiter\\B", "HKCU\\Software\\Probe\\C"}) p.put(path, 1, "alt");
    p.show("Drei");
    p.port.expectBox("Windows Standardwerte zurückgesetzt", Answer::No);
    p.engine->clickDefault(p.windows().cmdDefault);
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\A"), "1:alt");
    p.port.expectBox("Windows Standardwerte zurückgesetzt", Answer::Yes).expectBox("geändert/angelegt");
    p.engine->clickDefault(p.windows().cmdDefault);
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\A"), "1:a0");
    EXPECT_EQ(p.get("HKCU\\Software\\Zweiter\\B"), "-");
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\C"), "1:alt");

    EngineFixture none({{.Überschrift = "Tipp", .Ausgabeart = 2, .Datentyp = 1}});
    none.put(Pfad, 1, "alt");
    none.show("Tipp");
    none.port.expectBox("kein Windows-Standardwert bekannt");
    none.engine->clickDefault(none.windows().cmdDefault);
}

TEST(Speichern, MenuAndButtonCompareTheirOwnCaption) {
    EngineFixture p({{.Überschrift = "Tipp", .Ausgabeart = 2, .Datentyp = 1}});
    p.show("Tipp");
    int opened = 0;
    p.port.onWindow("frmBVK_Bearbeiten", [&](WindowRequest& w) { opened += dynamic_cast<BearbeitenRequest&>(w).neu ? 1 : 10; });
    p.engine->clickRegSave(p.windows().mnuRegSave);
    p.engine->clickDefault(p.windows().mnuDefault);
    EXPECT_EQ(opened, 11);
    // Input is settled before the window opens: dropped, or saved, or the window stays away.
    p.engine->input().userText(0, "verworfen");
    p.port.expectBox("Sie haben Einstellungen geändert", Answer::No);
    p.engine->clickRegSave(p.windows().mnuRegSave);
    EXPECT_EQ(p.get(Pfad) + p.panel().text, "-");
    p.engine->input().userText(0, "bleibt");
    p.port.expectBox("Sie haben Einstellungen geändert", Answer::Yes).expectBox("geändert/angelegt");
    p.engine->clickDefault(p.windows().mnuDefault);
    EXPECT_EQ(p.get(Pfad) + p.panel().text, "1:bleibtbleibt");
    p.store->setReadOnly(Root::CurrentUser, "Software\\Probe", true);
    p.engine->input().userText(0, "geht nicht");
    p.port.expectBox("Sie haben Einstellungen geändert", Answer::Yes).expectBox("kann nicht geschrieben werden");
    p.engine->clickRegSave(p.windows().mnuRegSave);
    EXPECT_EQ(opened, 22);
    EXPECT_EQ(p.panel().text, "geht nicht");
    p.store->setReadOnly(Root::CurrentUser, "Software\\Probe", false);
    p.ctx->blnGeaendert = false;
    p.port.onWindow("frmBVK_Bearbeiten", [&](WindowRequest& w) {   // on a Tip that has no menu
        auto& d = dynamic_cast<BearbeitenRequest&>(w);
        d.txtKeyName = "neu";
        d.txtBefehl = "cmd.exe";
        p.port.expectBox("Der Eintrag würde angelegt unter:\r\n\r\nHKEY_CURRENT_USER\\Software\\Probe\\neu\r\n", Answer::No);
        EXPECT_FALSE(d.save(d));
    });
    p.engine->clickRegSave(p.windows().mnuRegSave);
    EXPECT_FALSE(p.store->keyExists(Root::CurrentUser, "Software\\Probe\\neu"));
}

TEST(Loeschen, OnlyValuesNeverTheKey) {
    EngineFixture p({{.Index = 1, .Überschrift = "Tipp", .Ausgabeart = 2, .Datentyp = 1, .Wertname = nullptr, .AnzahlWerte = 1},
             {.Index = 2, .Ausgabeart = 2, .Datentyp = 1, .Wertname = "B", .HauptIndex = 1}});
    p.put("HKCU\\Software\\Probe\\", 1, "unbenannt");
    p.put("HKCU\\Software\\Probe\\B", 1, "b");
    p.put("HKCU\\Software\\Probe\\Fremd", 1, "f");
    p.show("Tipp");
    p.port.expectBox("Schlüssel wird gelöscht", Answer::Yes);
    p.engine->clickRegDel();
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\") + p.get("HKCU\\Software\\Probe\\B") + p.get("HKCU\\Software\\Probe\\Fremd"), "--1:f");
    ASSERT_EQ(p.recorder.ended.size(), 1u);
    EXPECT_EQ(p.recorder.ended[0].values.size(), 2u);
}

TEST(ContextMenu, EditingLosesNothing) {
    EngineFixture p({{.Überschrift = "Menü", .Ausgabeart = 10, .Datentyp = 1, .Wertname = nullptr, .Hauptschlüssel = "HKCR", .Schlüssel = "Directory\\shell"}});
    p.put("HKCR\\Directory\\shell\\eins\\", 1, "Erster");
    p.put("HKCR\\Directory\\shell\\eins\\Command\\", 2, "%windir%\\a.exe");
    p.put("HKCR\\Directory\\shell\\zwei\\Command\\", 1, "b.exe");
    std::string name, command;
    bool saved = false;
    p.port.onWindow("frmBVK_Bearbeiten", [&](WindowRequest& w) {
        auto& d = dynamic_cast<BearbeitenRequest&>(w);
        if (!name.empty()) d.txtKeyName = name;
        if (!command.empty()) d.txtBefehl = command;
        d.txtBeschreibung = "Anders";
        saved = d.save(d);
    });
    const auto edit = [&] {
        p.engine->input().userSelectRow(0, 0);
        p.engine->clickDefault(p.windows().cmdDefault);
    };
    p.show("Menü");
    p.port.expectBox("Änderungen wurde in der Registry gespeichert");
    edit();   // the text alone: the command keeps its variables, for which its type stands
    EXPECT_EQ(p.get("HKCR\\Directory\\shell\\eins\\") + "|" + p.get("HKCR\\Directory\\shell\\eins\\Command\\"), "1:Anders|2:%windir%\\a.exe");
    command = "%windir%\\c.exe";
    p.port.expectBox("Änderungen wurde in der Registry gespeichert");
    edit();
    EXPECT_EQ(p.get("HKCR\\Directory\\shell\\eins\\Command\\"), "2:%windir%\\c.exe");
    name = "ZWEI";   // another entry that is there
    p.port.expectBox("ist schon vorhanden", Answer::No);
    edit();
    EXPECT_FALSE(saved);
    EXPECT_EQ(p.get("HKCR\\Directory\\shell\\zwei\\Command\\"), "1:b.exe");
    name = "a\\b";
    p.port.expectBox("Ein Schlüsselname darf nicht leer sein");
    edit();
    EXPECT_FALSE(saved);
    EXPECT_EQ(p.get("HKCR\\Directory\\shell\\a\\b\\Command\\"), "-");
}

TEST(BroadCast, TheIconSizeGoesBackToWhatItWas) {
    EngineFixture p({{.Überschrift = "Tipp", .Ausgabeart = 2, .Datentyp = 1, .Neustart = 2}});
    const std::string size = "HKCU\\Control Panel\\Desktop\\WindowMetrics\\Shell Icon Size";
    p.show("Tipp");
    p.engine->input().userText(0, "x");
    p.saveOk();
    EXPECT_EQ(p.get(size), "-");
    p.put(size, 1, "48");
    p.engine->input().userText(0, "y");
    p.saveOk();
    EXPECT_EQ(p.get(size), "1:48");
    ASSERT_EQ(p.platform.settingChanges.size(), 4u);
    EXPECT_EQ(std::get<0>(p.platform.settingChanges[1]), 42u);
    p.put(size, 1, "2147483647");   // as large as it can be read
    p.engine->input().userText(0, "z");
    p.saveOk();
    EXPECT_EQ(p.get(size), "1:2147483647");
}

}  // namespace
}  // namespace brenvik::test
