#include <sys/stat.h>

#include <fmt/format.h>

#include "frame/files/FileSystem.h"
#include "lists/ListsFixture.h"
#include "tipengine/WindowRequests.h"

using namespace brenvik;
using namespace brenvik::test;

namespace {
const char* const BackExactly = "Alle Werte stehen wieder genau so da";
const char* const Restored = "wurde wiederhergestellt";
}  // namespace

// Every kind of change: the whole registry and every file stand as before, then as after, then as before again.
TEST(Undo, EveryKindOfChangeGoesExactlyBackAndForth) {
    using Art = Change::Art;
    const Zeile menuRow{.Index = 1, .Überschrift = "Tipp", .Ausgabeart = 10, .Datentyp = 1, .Wertname = nullptr, .Hauptschlüssel = "HKCR", .Schlüssel = "Directory\\shell"};
    const Zeile ini{.Index = 1, .Überschrift = "Tipp", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "load", .INITipp = true, .Hauptschlüssel = nullptr, .Schlüssel = "windows", .SchlüsselNT = "win.ini"};
    const Zeile boot{.Index = 1, .Überschrift = "Tipp", .Ausgabeart = 9, .Datentyp = 1, .Wertname = nullptr, .Anzeigetext = "/SOS#/fastdetect", .Werteliste = "C:", .INITipp = true,
                     .Hauptschlüssel = nullptr, .Schlüssel = "operating systems", .SchlüsselNT = "boot.ini"};
    std::vector<Zeile> three = ThreeValues;
    three[0].Überschrift = "Tipp", three[0].Standardwert = "<delkey>", three[1].Standardwert = "7", three[2].Standardwert = "s";
    const Zeile liste{.Index = 1, .Überschrift = "Tipp", .Ausgabeart = 8, .Datentyp = 1, .Wertname = nullptr};
    Zeile typ = three[0];
    typ.AnzahlWerte = 0, typ.TypAnpassen = 1;
    const auto menu = [](ListsFixture& p) {
        p.put("HKCR\\Directory\\shell\\eins\\", 1, "Eins");
        p.put("HKCR\\Directory\\shell\\eins\\Command\\", 2, "notepad.exe");
        p.put("HKCR\\Directory\\shell\\eins\\Command\\Tief\\Wert", 3, "01 02");
    };
    const auto values = [](ListsFixture& p) {
        p.put("HKCU\\Software\\Probe\\A", 2, "%alt%");
        p.put("HKCU\\Software\\Probe\\B", 4, "26");
    };
    const auto edit = [](const char* name) {
        return [name](ListsFixture& p) {
            p.port.onWindow("frmBVK_Bearbeiten", [name](WindowRequest& w) {
                auto& d = dynamic_cast<BearbeitenRequest&>(w);
                d.txtKeyName = name, d.txtBeschreibung = "Anders", d.txtBefehl = "calc.exe";
                d.save(d);
            });
            p.port.expectBox("in der Registry gespeichert");
            p.engine->input().userSelectRow(0, 0);
        };
    };
    const auto press = [](ListsFixture& p) {
        p.port.expectBox("gelöscht", Answer::Yes);
        p.engine->clickRegDel();
    };
    const auto file = [](const char* name, const char* content) { return [=](ListsFixture& p) { p.dir.put(std::string("drive_c/") + name, content); }; };
    const struct {
        const char* name;
        Art art;
        std::vector<Zeile> rows;
        std::function<void(ListsFixture&)> before, change;
    } cases[] = {
        {"Speichern", Art::Speichern, three, values, [](ListsFixture& p) { p.engine->input().userText(0, "neu"), p.engine->input().userText(1, "FF"), p.engine->input().userText(2, "c"), p.saveOk(); }},
        {"Standard", Art::Standard, three, values, [](ListsFixture& p) {
             p.port.expectBox("Windows Standardwerte", Answer::Yes).expectBox("geändert/angelegt");
             p.engine->Default_Einstellungen();
         }},
        {"Löschen", Art::Loeschen, three, values, press},
        {"Datentyp", Art::TypeAdapted, {typ}, [](ListsFixture& p) { p.put("HKCU\\Software\\Probe\\A", 3, "01 02"); }, [](ListsFixture&) {}},
        {"Menü weg", Art::ContextMenu, {menuRow}, menu, [&](ListsFixture& p) { p.engine->input().userTick(0, 0, true), press(p); }},
        {"Menü neu", Art::ContextMenu, {menuRow}, menu, [&](ListsFixture& p) { edit("neu")(p), p.engine->clickRegSave(p.windows().cmdRegSave); }},
        {"Menü geändert", Art::ContextMenu, {menuRow}, menu, [&](ListsFixture& p) { edit("eins")(p), p.engine->clickDefault(p.windows().cmdDefault); }},
        {"Menü umbenannt", Art::ContextMenu, {menuRow}, menu, [&](ListsFixture& p) { edit("zwei")(p), p.engine->clickDefault(p.windows().cmdDefault); }},
        {"Listenschlüssel", Art::Key, {liste}, [](ListsFixture& p) {
             p.put("HKCU\\Software\\Probe\\eins\\Tief\\Wert", 7, std::string("a\0b", 3));
             KeyDetails link;
             link.flags = 16, link.userFlags = 3;
             p.store->setDetails(Root::Users, std::string(Sid) + "\\Software\\Probe\\eins\\Tief", link);
         },
         [&](ListsFixture& p) { p.engine->input().userTick(0, 0, true), press(p); }},
        {"INI", Art::IniDatei, {ini}, file("windows/win.ini", "; x\n[windows]\r\nload = alt\r\nrun=1"), [](ListsFixture& p) { p.engine->input().userText(0, "neu.exe"), p.save(); }},
        {"INI weg", Art::IniDatei, {ini}, file("windows/win.ini", "[windows]\r\nload=alt\r\n"), press},
        {"Boot", Art::BootFile, {boot}, file("boot.ini", "[operating systems]\r\nmulti(0)\\WINDOWS=\"XP\" /fastdetect\r\nkaputt\r\n"), [](ListsFixture& p) {
             p.port.onWindow("frmBVK_BootINI", [](WindowRequest& w) { dynamic_cast<BootINIRequest&>(w).reply = BootINIRequest::Reply::Overwrite; });
             p.engine->input().userSwitch(0, 0, true), p.save();
         }}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ListsFixture p(c.rows);
        c.before(p);
        const std::string before = p.wholeState();
        p.show("Tipp");
        c.change(p);
        const std::string after = p.wholeState();
        EXPECT_NE(after, before);
        ASSERT_EQ(p.lists->journal().heads().size(), 1u);
        EXPECT_EQ(p.lists->journal().heads()[0].art, c.art);
        for (const bool back : {true, false, true}) {
            p.port.expectBox(back ? BackExactly : Restored);
            EXPECT_TRUE(back ? p.exact(1) : p.redo(1)) << p.port.lastBox();
            EXPECT_EQ(p.wholeState(), back ? before : after);
        }
    }
}

TEST(Undo, ExactlyOnTheMachineOfTheChange) {
    ListsFixture p;
    SqliteStore there(p.dir / "dort.db");
    there.createKey(Root::Users, std::string(Sid) + "\\Software");
    bool reachable = true;
    RegistryTarget target([&]() -> RegStore& { return there; }, TargetFiles::none({}));
    p.machines->setFinder([&](const std::string& name) { return reachable && name == "DORT" ? &target : nullptr; });
    const auto remote = [&](const std::string& path) {
        p.ctx->objBVKReg.SetPath("DORT", "HKEY_USERS\\" + std::string(Sid) + path);
        const auto raw = p.ctx->objBVKReg.ReadRaw();
        return raw ? toText(*raw) : "-";
    };
    const auto select = [&](const char* machine) {
        ASSERT_EQ(p.ctx->objBVKReg.ConnectRemote(machine, 0x80000002), 0);
        p.ctx->strRechnername = machine;
        p.ctx->blnLokal = p.ctx->strRechnername == p.ctx->strLokalerRechner;
    };
    p.put("HKCU\\Software\\Probe\\A", 1, "hier");
    select("DORT");
    p.change("neu", "1", "c");
    EXPECT_EQ(remote("\\Software\\Probe\\A") + remote("\\Software\\Neu\\Tief\\C"), "neuc");
    select("PROBE-PC");
    reachable = false;
    p.port.expectBox("auf dem Rechner \"DORT\" gemacht, der gerade nicht bearbeitet wird", Answer::No);
    EXPECT_FALSE(p.exact(1));
    EXPECT_NE(p.drifted().find("unreadable 1 HKEY_USERS\\" + std::string(Sid) + "\\Software\\Probe\\A: REG_SZ \"neu\""), std::string::npos) << p.drifted();
    p.port.expectBox("auf dem Rechner \"DORT\"", Answer::Yes).expectBox("Der Rechner \"DORT\" ist nicht erreichbar. Es wurde nichts geändert.");
    EXPECT_FALSE(p.exact(1));
    reachable = true;
    there.setValue(Root::Users, std::string(Sid) + "\\Software\\Probe", ValueName::named("A"), fromText("fremd", 1));
    p.port.expectBox("auf dem Rechner \"DORT\"", Answer::Yes).expectBox(BackExactly);
    p.onConflicts(true, true);
    EXPECT_TRUE(p.exact(1)) << p.port.lastBox();
    EXPECT_EQ(p.conflicts, (std::vector<std::string>{"HKEY_USERS\\" + std::string(Sid) + "\\Software\\Probe\\A: (nicht vorhanden), REG_SZ \"neu\", REG_SZ \"fremd\" von anderer Seite"}));
    EXPECT_EQ(remote("\\Software\\Probe\\A") + remote("\\Software\\Neu\\Tief\\C"), "--");
    EXPECT_FALSE(there.keyExists(Root::Users, std::string(Sid) + "\\Software\\Neu"));
    EXPECT_EQ(p.values(), "1:hier - -");

    // Made here as another user: HKEY_CURRENT_USER is that one's still.
    p.change("neu", "2", "d");
    p.ctx->strEigeneSID = "S-1-5-21-1-2-3-2000";
    p.port.expectBox(BackExactly);
    EXPECT_TRUE(p.exact(p.lists->journal().heads().back().nummer)) << p.port.lastBox();
    EXPECT_EQ(p.values(), "1:hier - -");
}

TEST(Undo, NothingGoesTwiceAndTheJournalIsItsOwners) {
    ListsFixture p;
    p.change("neu", "1A", "c");
    p.port.expectBox("gibt nichts wiederherzustellen");
    EXPECT_FALSE(p.redo(1));
    p.port.expectBox(BackExactly).expectBox("schon zurückgesetzt");
    EXPECT_TRUE(p.exact(1));
    EXPECT_FALSE(p.exact(1));
    struct stat facts{};
    ASSERT_EQ(::stat((p.dir / JournalFile).c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777, 0600u);
}

TEST(Undo, ExactAsksBeforeChangesOfOthers) {
    ListsFixture p;
    p.change("neu", "1", "c");
    p.put("HKCU\\Software\\Probe\\A", 1, "fremd");
    p.put("HKCU\\Software\\Neu\\Tief\\D", 1, "bleibt");
    p.onConflicts(false, true);
    EXPECT_FALSE(p.exact(1));
    EXPECT_EQ(p.conflicts, (std::vector<std::string>{"HKEY_CURRENT_USER\\Software\\Probe\\A: (nicht vorhanden), REG_SZ \"neu\", REG_SZ \"fremd\" von anderer Seite"}));
    EXPECT_EQ(p.values(), "1:fremd 4:1 1:c");
    p.onConflicts(true, false);
    p.port.expectBox("wie vor der Änderung, bis auf 1, die");
    EXPECT_TRUE(p.exact(1));
    EXPECT_EQ(p.values() + p.get("HKCU\\Software\\Neu\\Tief\\D"), "1:fremd - -1:bleibt");
    p.port.expectBox(Restored);
    EXPECT_TRUE(p.redo(1));
    EXPECT_EQ(p.values(), "1:fremd 4:1 1:c");
    p.onConflicts(true, true);
    p.port.expectBox(BackExactly);
    EXPECT_TRUE(p.exact(1));
    EXPECT_EQ(p.values() + p.get("HKCU\\Software\\Neu\\Tief\\D"), "- - -1:bleibt");
}

TEST(Undo, ExactIsAllOrNothing) {
    ListsFixture p;
    p.change("neu", "1", "c");
    // What cannot be written back: the journal's value is larger than the store takes.
    sqlite::Database((p.dir / JournalFile).string(), 2).execute("UPDATE wert SET alttyp = 3, alt = zeroblob(17000000) WHERE nr = 2");
    const std::string before = p.values();
    p.port.expectBox("Es wurde nichts geändert.");
    EXPECT_FALSE(p.exact(1));
    EXPECT_EQ(p.values(), before);
    EXPECT_EQ(p.lists->journal().heads().size(), 1u);
}

TEST(Undo, TheOrdinaryUndoWritesTheTextBack) {
    ListsFixture p;
    p.put("HKCU\\Software\\Probe\\A", 1, "alt");
    p.show("Drei");
    p.engine->input().userText(0, "neu");
    p.engine->input().userText(2, "c");
    p.engine->setEntryFromText(2, "<delkey>");
    p.engine->input().userText(1, "");
    p.saveOk();
    p.port.expectBox("Die Änderung wurde wieder erfolgreich zurückgesetzt.");
    EXPECT_TRUE(p.told(1)) << p.port.lastBox();
    EXPECT_EQ(p.values(), "1:alt - -");
    p.port.expectBox(Restored);
    EXPECT_TRUE(p.redo(1));
    EXPECT_EQ(p.values(), "1:neu - 1:c");
}

TEST(Undo, WhatWouldNotBeExactIsTold) {
    ListsFixture p;
    p.put("HKCU\\Software\\Probe\\B", 4, "26");         // shown as 1A
    p.put("HKCU\\Software\\Probe\\A", 2, "%x%");
    p.change("neu", "FF", "c");
    p.port.expectBox("alter Wert: REG_EXPAND_SZ \"%x%\"\r\n   geschrieben würde: REG_SZ \"%x%\"", Answer::No).expectBox("trotzdem", Answer::No);
    EXPECT_FALSE(p.told(1));
    EXPECT_NE(p.port.boxes[p.port.boxes.size() - 2].text.find("geschrieben würde: nichts, \"1A\" ist kein solcher Wert"), std::string::npos);
    EXPECT_EQ(p.values(), "1:neu 4:255 1:c");
    p.port.expectBox("Soll stattdessen genau", Answer::Yes).expectBox(BackExactly);
    EXPECT_TRUE(p.told(1));
    EXPECT_EQ(p.values(), "2:%x% 4:26 -");
}

TEST(Undo, WithoutAPathNothingIsWritten) {
    std::vector<Zeile> rows = ThreeValues;
    rows.push_back({.Index = 4, .Überschrift = "Dateien", .Ausgabeart = 4, .Datentyp = 1, .Werteliste = "<filelist>"});
    rows.push_back({.Index = 5, .Überschrift = "Ohne Pfad", .Ausgabeart = 2, .Datentyp = 1, .Schlüssel = nullptr});
    const std::string lines[] = {"1#a#PROBE-PC#77#x#", "1#a#PROBE-PC#1#x#77#y#", "1#a#PROBE-PC#", "1#a#PROBE-PC##x#", "1#a#PROBE-PC#4#x#", "1#a#PROBE-PC#5#x#",
                                 "1#a#PROBE-PC#1#x#4#y#", "1#a#PROBE-PC" + std::string(10000, '#')};
    for (const std::string& line : lines) {
        ListsFixture p(rows);
        p.dir.put("History.txt", line + "\r\n");
        p.start();
        p.port.expectBox("Die Werte konnten nicht zurück gesetzt werden !!!");
        EXPECT_FALSE(p.told(0)) << line;
        EXPECT_EQ(p.values(), "- - -") << line;
    }
    ListsFixture p;
    p.dir.put("History.txt", "1#a#ANDERER#1#x#\r\n");
    p.start();
    p.port.expectBox("auf dem Rechner \"ANDERER\" gemacht. Zurückgesetzt wird auf dem Rechner \"PROBE-PC\"", Answer::No);
    EXPECT_FALSE(p.told(0));
    EXPECT_TRUE(p.port.boxes.back().flags & box::DefaultNo);
    p.port.expectBox("ANDERER", Answer::Yes).expectBox("erfolgreich zurückgesetzt");
    EXPECT_TRUE(p.told(0));
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\A"), "1:x");

    // The journal knows the path of a number that the database has no longer, or that is a file list by now.
    for (const char* number : {"77", "4"}) {
        ListsFixture known(rows);
        known.put("HKCU\\Software\\Probe\\A", 1, "alt");
        known.show("Drei");
        known.engine->input().userText(0, "neu");
        known.saveOk();
        UndoAnswer exactly(*known.ctx, known.lists->journal(), known.lists->history());
        TipValues numbers(*known.ctx);
        known.port.expectBox("erfolgreich zurückgesetzt");
        EXPECT_TRUE(Undo(*known.ctx, known.lists->journal(), exactly, numbers).execute("1#a#PROBE-PC#" + std::string(number) + "#alt#", 1)) << number;
        EXPECT_EQ(known.get("HKCU\\Software\\Probe\\A"), "1:alt");
    }
}

TEST(Undo, AForeignKeyIsAskedAbout) {
    ListsFixture p({{.Index = 1, .Überschrift = "Menü", .Ausgabeart = 10, .Wertname = "", .Hauptschlüssel = "HKCR", .Schlüssel = "Directory\\shell"}});
    p.put("HKCR\\Directory\\shell\\eins\\", 1, "Eins");
    const std::string before = p.wholeState();
    p.show("Menü");
    p.engine->input().userTick(0, 0, true);
    p.port.expectBox("Alle markierten Einträge werden gelöscht", Answer::Yes);
    p.engine->clickRegDel();
    p.put("HKCR\\Directory\\shell\\eins\\", 1, "Fremd");
    p.onConflicts(true, true);
    p.port.expectBox(BackExactly);
    EXPECT_TRUE(p.exact(1));
    EXPECT_EQ(p.conflicts, (std::vector<std::string>{"HKEY_LOCAL_MACHINE\\Software\\Classes\\Directory\\shell\\eins: Schlüssel mit 0 Unterschlüsseln und 1 Werten, (nicht vorhanden), "
                                                     "Schlüssel mit 0 Unterschlüsseln und 1 Werten von anderer Seite"}));
    EXPECT_EQ(p.wholeState(), before);
    EXPECT_EQ(p.file(), "");    // keys have no line
    p.port.onWindow("frmBVK_HistoryListe", [](WindowRequest& w) { EXPECT_TRUE(dynamic_cast<HistoryListeRequest&>(w).lines.empty()); });
    p.lists->historyWindows().open();
}

TEST(Undo, AnIniFileComesBackWhole) {
    ListsFixture p({{.Index = 1, .Überschrift = "Ini", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "load", .INITipp = true, .Schlüssel = "windows", .SchlüsselNT = "win.ini"}});
    const std::string old = "[windows]\r\nload=alt\r\n; Bemerkung\r\n";
    const auto file = p.dir.put("drive_c/WINDOWS/win.ini", old);
    p.show("Ini");
    p.engine->input().userText(0, "neu.exe");
    p.save();
    const std::string changed = bytesOf(file);
    EXPECT_NE(changed, old);
    p.port.onWindow("frmBVK_HistoryListe", [&](WindowRequest& w) {
        auto& list = dynamic_cast<HistoryListeRequest&>(w);
        ASSERT_EQ(list.lines.size(), 1u);
        EXPECT_EQ(list.zeile(0).überschrift, "Ini");
        list.show(0);
        EXPECT_TRUE(list.lines.empty());
        p.port.expectBox("Soll die zurückgesetzte Änderung", Answer::Yes).expectBox(Restored);
        list.restore();
        EXPECT_EQ(list.lines.size(), 1u);
    });
    p.port.onWindow("frmBVK_HistoryDaten", [&](WindowRequest& w) {
        auto& data = dynamic_cast<HistoryDatenRequest&>(w);
        EXPECT_FALSE(data.undoPossible);
        ASSERT_TRUE(data.exactPossible);
        p.port.expectBox(BackExactly);
        EXPECT_TRUE(data.undoExactly());
        EXPECT_EQ(bytesOf(file), old);
    });
    p.lists->historyWindows().open();
    EXPECT_EQ(bytesOf(file), changed);
    p.dir.put("drive_c/WINDOWS/win.ini", changed + "fremd=1\r\n");
    p.onConflicts(false, false);
    EXPECT_FALSE(p.exact(1));
    EXPECT_NE(p.conflicts.at(0).find("   + fremd=1"), std::string::npos);
    p.dir.put("drive_c/WINDOWS/win.ini", changed);
    setReadOnly(file, true);
    p.port.expectBox("ist schreibgeschützt. Soll der Schreibschutz", Answer::No).expectBox("Es wurde nichts geändert.");
    EXPECT_FALSE(p.exact(1));
    EXPECT_EQ(bytesOf(file), changed);
    p.port.expectBox("ist schreibgeschützt. Soll der Schreibschutz", Answer::Yes).expectBox(BackExactly);
    EXPECT_TRUE(p.exact(1));
    EXPECT_EQ(bytesOf(file), old);
    EXPECT_TRUE(isReadOnly(file));
}

TEST(Undo, WhatIsHalfSavedIsOfferedToBeTakenBack) {
    for (const Answer wish : {Answer::Yes, Answer::No}) {
        const std::string tooLong(300, 'k');                  // no key may be called so, which shows when it is made
        std::vector<Zeile> rows = ThreeValues;
        rows[2].Schlüssel = tooLong.c_str();
        ListsFixture p(rows);
        p.put("HKCU\\Software\\Probe\\A", 1, "alt");
        p.show("Drei");
        p.engine->input().userText(0, "neu");
        p.engine->input().userText(1, "1");
        p.engine->input().userText(2, "c");
        p.port.expectBox("Schlüssel").expectBox("Das Speichern wurde nach 2 von 3 Werten abgebrochen").expectBox("Sollen die schon geschriebenen Werte", wish);
        if (wish == Answer::Yes) p.port.expectBox(BackExactly);
        p.save();
        EXPECT_EQ(p.values(), wish == Answer::Yes ? "1:alt - -" : "1:neu 4:1 -");
        EXPECT_EQ(p.file().empty(), wish == Answer::Yes);
        EXPECT_EQ(p.panel(0).text, "neu");                    // what the user typed is still there
        EXPECT_TRUE(p.ctx->blnGeaendert);
    }
}

// What stands there by the program's own doing is no drift, whichever way it was done.
TEST(Drift, KnowsItsOwnWays) {
    ListsFixture p;
    p.put("HKCU\\Software\\Probe\\A", 1, "alt");
    p.change("neu", "1", "c");
    EXPECT_EQ(p.drifted(), "");
    p.put("HKCU\\Software\\Probe\\B", 4, "7");        // somebody else's, which the next save leaves as it is
    EXPECT_EQ(p.drifted(), "differs 1 HKEY_CURRENT_USER\\Software\\Probe\\B: REG_DWORD \"1\", REG_DWORD \"7\"|");
    p.show("Drei");
    p.engine->input().userText(0, "neuer");
    p.saveOk();
    EXPECT_EQ(p.drifted(), "differs 1 HKEY_CURRENT_USER\\Software\\Probe\\B: REG_DWORD \"1\", REG_DWORD \"7\"|");
    p.put("HKCU\\Software\\Probe\\B", 4, "1");
    p.port.expectBox(BackExactly).expectBox(BackExactly);
    EXPECT_TRUE(p.exact(2));
    EXPECT_EQ(p.drifted(), "");
    EXPECT_TRUE(p.exact(1));
    EXPECT_EQ(p.drifted() + p.values(), "1:alt - -");

    ListsFixture told;
    told.change("neu", "1", "c");
    told.port.expectBox("erfolgreich zurückgesetzt");
    EXPECT_TRUE(told.told(1)) << told.port.lastBox();
    EXPECT_EQ(told.drifted(), "");
    told.put("HKCU\\Software\\Probe\\A", 1, "fremd");
    EXPECT_EQ(told.drifted(), "differs 2 HKEY_CURRENT_USER\\Software\\Probe\\A: (nicht vorhanden), REG_SZ \"fremd\"|");
}

TEST(Drift, ADeletedKeyTakesItsValuesAlong) {
    ListsFixture p({{.Index = 1, .Überschrift = "Wert", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "W", .Schlüssel = "Software\\Probe\\eins"},
                   {.Index = 2, .Überschrift = "Liste", .Ausgabeart = 8, .Datentyp = 1, .Wertname = nullptr}});
    p.show("Wert");
    p.engine->input().userText(0, "x");
    p.saveOk();
    p.show("Liste");
    p.engine->input().userTick(0, 0, true);
    p.port.expectBox("gelöscht", Answer::Yes);
    p.engine->clickRegDel();
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\eins\\W") + p.drifted(), "-");
    p.put("HKCU\\Software\\Probe\\eins\\W", 1, "fremd");
    EXPECT_EQ(p.drifted(), "differs 2 HKEY_CURRENT_USER\\Software\\Probe\\eins\\W: (nicht vorhanden), REG_SZ \"fremd\"|");
    p.onConflicts(true, true);
    p.port.expectBox(BackExactly);
    EXPECT_TRUE(p.exact(2));
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\eins\\W") + p.drifted(), "1:x");
}

TEST(Drift, NamesLinesOfIniFiles) {
    ListsFixture p({{.Index = 1, .Überschrift = "Ini", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "load", .INITipp = true, .Hauptschlüssel = nullptr, .Schlüssel = "windows", .SchlüsselNT = "win.ini"}});
    p.dir.put("drive_c/windows/win.ini", "[Windows]\r\nrun=1\r\n");
    p.show("Ini");
    p.engine->input().userText(0, "a.exe");
    p.save();
    p.engine->input().userText(0, "b.exe");
    p.save();
    EXPECT_EQ(p.drifted(), "");
    const struct {
        const char *content, *drift;
    } cases[] = {{"[WINDOWS]\r\n LOAD = b.exe \r\nrun=anders\r\n", ""},
                 {"[windows]\r\nload=c.exe\r\n", "differs 2 C:\\windows\\win.ini [Windows] load: b.exe, c.exe|"},
                 {"", "differs 2 C:\\windows\\win.ini [Windows] load: b.exe, -|"}};
    for (const auto& c : cases) {
        p.dir.put("drive_c/windows/win.ini", c.content);
        EXPECT_EQ(p.drifted(), c.drift) << c.content;
    }
    p.onConflicts(true, true);
    p.port.expectBox(BackExactly);
    EXPECT_TRUE(p.exact(2));   // what stands there now by the undo is what was set
    EXPECT_EQ(p.drifted(), "");
    std::filesystem::resize_file(p.dir / "drive_c/windows/win.ini", 20u << 20);
    EXPECT_TRUE(p.drifted().starts_with("unreadable 3 C:\\windows\\win.ini")) << p.drifted();
}

TEST(Undo, ABrokenJournalHoldsNothingUp) {
    ListsFixture p;
    p.lists.reset();
    p.dir.put(JournalFile, std::string(5000, 'x'));
    p.port.expectBox("ist kein Änderungsjournal dieses Programms");   // once
    p.start();
    p.change("neu", "1", "c");
    EXPECT_EQ(p.values(), "1:neu 4:1 1:c");
    EXPECT_TRUE(bytesOf(p.dir / JournalFile) == std::string(5000, 'x'));
}
