// What the journal keeps, whom it believes, and how it goes on after an interruption.
#include <sqlite3.h>
#include <sys/stat.h>

#include <chrono>

#include "frame/files/FileSystem.h"
#include "frame/text/Conversions.h"
#include "lists/ListsFixture.h"
#include "tipengine/WindowRequests.h"

using namespace brenvik;
using namespace brenvik::test;

namespace {

const char* const BackExactly = "Alle Werte stehen wieder genau so da";
const Zeile MenuRow{.Index = 1, .Überschrift = "Menü", .Ausgabeart = 10, .Datentyp = 1, .Wertname = nullptr, .Hauptschlüssel = "HKCR", .Schlüssel = "Directory\\shell"};
const Zeile IniRow{.Index = 1, .Überschrift = "Ini", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "load", .INITipp = true, .Hauptschlüssel = nullptr, .Schlüssel = "windows", .SchlüsselNT = "win.ini"};

void sql(ListsFixture& p, const std::string& text) {
    sqlite::Database((p.dir / JournalFile).string(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE).execute(text.c_str());
}

void rename(ListsFixture& p, const char* name) {
    p.put("HKLM\\System\\CurrentControlSet\\Control\\ComputerName\\ComputerName\\ComputerName", 1, name);
    p.machines = std::make_unique<LocalMachines>(*p.store, "PROBE-PC");   // as at the next start
    auto fresh = std::make_unique<Context>(p.port, p.platform, *p.machines);
    fresh->homePath = fresh->programPath = p.dir.path();
    fresh->intBS = 6;
    fresh->einstellungen = p.ctx->einstellungen;
    fresh->strProfilSID = fresh->strUserSID = fresh->strEigeneSID = Sid;
    fresh->strLokalerRechner = fresh->strRechnername = p.machines->localName();
    EXPECT_EQ(LoadDB(*fresh, p.dir / "RegDaten.mdb"), LoadResult::Loaded);
    p.lists.reset();
    p.engine.reset();
    p.ctx = std::move(fresh);
    p.start();
}

}  // namespace

// Below HKCR two places are shown as one. Each goes back to where it was, the other stays.
TEST(Journal, BelowHKCREachPlaceHasItsPicture) {
    const struct {
        bool user, machine;
    } cases[] = {{true, false}, {false, true}, {true, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.user) + std::to_string(c.machine));
        ListsFixture p({MenuRow});
        p.put("HKLM\\Software\\Classes\\Directory\\shell\\andere\\", 1, "Bleibt");
        if (c.user) p.put("HKCU\\Software\\Classes\\Directory\\shell\\eins\\Command\\", 1, "user.exe");
        if (c.machine) p.put("HKLM\\Software\\Classes\\Directory\\shell\\eins\\Command\\", 2, "machine.exe"), p.put("HKLM\\Software\\Classes\\Directory\\shell\\eins\\x", 4, "7");
        const std::string before = p.wholeState();
        p.show("Menü");
        const auto& rows = p.panel().lines;
        const auto row = std::find_if(rows.begin(), rows.end(), [](const ListLine& r) { return r.text == "eins"; });
        ASSERT_NE(row, rows.end());
        p.engine->input().userTick(0, static_cast<int>(row - rows.begin()), true);
        p.port.expectBox("gelöscht", Answer::Yes).expectBox(BackExactly);
        p.engine->clickRegDel();
        EXPECT_NE(p.wholeState(), before);
        EXPECT_TRUE(p.exact(1));
        EXPECT_EQ(p.wholeState(), before);
    }
}

// A value of the machine's that is seen through the user's key, which lacks it: what is written lies in the user's.
TEST(Journal, AValueBelowHKCRHasAHistoryOfItsOwn) {
    ListsFixture p({{.Index = 1, .Überschrift = "Drei", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "W", .Hauptschlüssel = "HKCR", .Schlüssel = ".txt"}});
    p.put("HKLM\\Software\\Classes\\.txt\\W", 1, "maschine");
    p.put("HKCU\\Software\\Classes\\.txt\\X", 1, "x");
    const std::string before = p.wholeState();
    for (const bool told : {false, true}) {
        p.show("Drei");
        p.engine->input().userText(0, "neu");
        p.saveOk();
        EXPECT_EQ(p.get("HKCU\\Software\\Classes\\.txt\\W") + p.get("HKLM\\Software\\Classes\\.txt\\W"), "1:neu1:maschine");
        EXPECT_EQ(p.drifted(), "");
        if (told) p.port.expectBox("alter Wert: (nicht vorhanden)\r\n   geschrieben würde: REG_SZ \"maschine\"", Answer::Yes);
        p.port.expectBox(BackExactly);
        EXPECT_TRUE(told ? p.told(3) : p.exact(1)) << p.port.lastBox();
        EXPECT_EQ(p.wholeState() + p.drifted(), before);
        p.lists->history().deleteLine(p.lists->history().udtHistory().at(0).Zeile);
        p.lists->history().HistorySave();
    }
}

// What a save wrote as it stood is none of its change.
TEST(Journal, WhatWasWrittenUnchangedIsNoPartOfIt) {
    ListsFixture p;
    p.put("HKCU\\Software\\Probe\\B", 4, "1");
    p.show("Drei");
    p.engine->input().userText(0, "neu");
    p.engine->input().userText(2, "c");
    p.saveOk();
    p.put("HKCU\\Software\\Probe\\B", 4, "7");
    EXPECT_EQ(p.drifted(), "");
    p.port.expectBox(BackExactly);
    EXPECT_TRUE(p.exact(1));
    EXPECT_EQ(p.values(), "- 4:7 -");
}

TEST(Journal, TheMachineMayGetAnotherName) {
    ListsFixture p;
    p.change("neu", "1", "c");
    rename(p, "NEUER-NAME");
    EXPECT_EQ(p.ctx->strLokalerRechner, "NEUER-NAME");
    EXPECT_EQ(p.drifted(), "");
    p.port.expectBox(BackExactly);
    EXPECT_TRUE(p.exact(1)) << p.port.lastBox();
    EXPECT_EQ(p.values(), "- - -");
    p.change("a", "2", "d");
    rename(p, "DRITTER");
    p.port.expectBox("erfolgreich zurückgesetzt");   // and nobody asks about another computer
    EXPECT_TRUE(p.told(3)) << p.port.lastBox();
    EXPECT_EQ(p.values() + p.drifted(), "- - -");
}

TEST(Journal, LaterChangesOfOurOwnAreNamed) {
    ListsFixture p;
    p.change("eins", "1", "c");
    p.show("Drei");
    p.engine->input().userText(0, "zwei");
    p.saveOk();
    p.onConflicts(true, true);
    p.port.expectBox(BackExactly);
    EXPECT_TRUE(p.exact(1));
    EXPECT_EQ(p.conflicts, (std::vector<std::string>{"HKEY_CURRENT_USER\\Software\\Probe\\A: (nicht vorhanden), REG_SZ \"eins\", REG_SZ \"zwei\" durch die Änderung 2 vom 2002-11-09 12:30:00 (Drei)"}));
}

// Lines that went here do not come back with the text of an editor, now or at the next start; others do.
TEST(Journal, DeletedLinesStayAway) {
    ListsFixture p;
    p.dir.put("History.txt", "1#a#PC#1#x#\r\n2#b#PC#1#y#\r\n");
    p.start();
    p.change("neu", "1", "c");
    const std::string old = p.file();
    p.lists->history().find(1)->Geloescht = true;
    p.lists->history().deleteLine(p.lists->history().find(3)->Zeile);
    EXPECT_TRUE(p.lists->history().HistorySave());
    EXPECT_EQ(p.file(), "2#b#PC#1#y#\r\n");
    p.dir.put("History.txt", old + "3#c#PC#1#z#\r\n");
    p.show("Drei");
    p.engine->input().userText(0, "zwei");
    p.saveOk();
    EXPECT_EQ(p.file(), "2#b#PC#1#y#\r\n3#c#PC#1#z#\r\n09.11.2002#12:30:00#PROBE-PC#1#neu#\r\n");
    p.dir.put("History.txt", old);
    p.start();
    EXPECT_EQ(p.lists->history().udtHistory().size(), 1u);
    EXPECT_EQ(p.file(), "2#b#PC#1#y#\r\n");
    EXPECT_EQ(p.lists->notes().size(), 1u);
}

TEST(Journal, OfEqualLinesEachIsItsOwn) {
    ListsFixture p;
    for (const char* text : {"eins", "zwei"}) {
        p.put("HKCU\\Software\\Probe\\A", 1, "alt");
        p.show("Drei");
        p.engine->input().userText(0, text);
        p.saveOk();
    }
    ASSERT_EQ(p.lists->history().find(1)->Zeile, p.lists->history().find(2)->Zeile);
    p.port.onWindow("frmBVK_HistoryListe", [&](WindowRequest& w) { dynamic_cast<HistoryListeRequest&>(w).show(0); });
    p.port.onWindow("frmBVK_HistoryDaten", [&](WindowRequest& w) {
        auto& data = dynamic_cast<HistoryDatenRequest&>(w);
        EXPECT_EQ(data.lines.at(0).pfad, "HKEY_CURRENT_USER\\Software\\Probe\\A");
        p.onConflicts(false, false);
        EXPECT_FALSE(data.undoExactly());
    });
    p.lists->historyWindows().open();
    EXPECT_EQ(p.conflicts, (std::vector<std::string>{"HKEY_CURRENT_USER\\Software\\Probe\\A: REG_SZ \"alt\", REG_SZ \"eins\", REG_SZ \"zwei\" durch die Änderung 2 vom 2002-11-09 12:30:00 (Drei)"}));
}

TEST(Journal, WhereNothingWasToDoThatIsTold) {
    ListsFixture p({{.Index = 1, .Überschrift = "Drei", .Ausgabeart = 1, .Datentyp = 4, .Wertname = "A", .WertEin = "1", .WertAus = "<delkey>"}});
    p.show("Drei");
    p.engine->input().userCheck(0, true);
    p.engine->input().userCheck(0, false);
    p.saveOk();
    EXPECT_EQ(p.file(), "09.11.2002#12:30:00#PROBE-PC#1#<Key nicht vorhanden>#\r\n");
    p.port.expectBox("es war nichts zu schreiben");
    EXPECT_TRUE(p.exact(1));
    p.port.expectBox("es war nichts wiederherzustellen");
    EXPECT_TRUE(p.redo(1));
}

// Lines of changes that no panel made hold the same texts as those of a save.
TEST(Journal, LinesHaveTheFormOfTheDisplay) {
    ListsFixture p;
    p.put("HKCU\\Software\\Probe\\B", 4, "26");
    p.show("Drei");
    p.engine->input().userText(1, "FF");
    p.saveOk();
    Change applied;
    applied.tippIndex = 1;
    applied.values = {{"PROBE-PC", "HKCU\\Software\\Probe\\B", 2, fromText("26", 4), fromText("255", 4), true}};
    p.lists->begin(applied);
    p.lists->finished(applied);
    ASSERT_EQ(p.lists->history().udtHistory().size(), 2u);
    EXPECT_EQ(p.lists->history().udtHistory()[0].Zeile, p.lists->history().udtHistory()[1].Zeile);
}

TEST(Journal, PasswordsStandOnlyHereAndAreForgotten) {
    ListsFixture p({{.Index = 1, .Überschrift = "Drei", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "DefaultPassword"}});
    p.put("HKCU\\Software\\Probe\\DefaultPassword", 1, "geheim1");
    p.show("Drei");
    p.engine->input().userText(0, "geheim2");
    p.saveOk();
    EXPECT_EQ(p.file(), "09.11.2002#12:30:00#PROBE-PC#1#*****#\r\n");
    p.port.expectBox("erfolgreich zurückgesetzt").expectBox("wurde wiederhergestellt");
    EXPECT_TRUE(p.told(1)) << p.port.lastBox();
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\DefaultPassword"), "1:geheim1");
    EXPECT_TRUE(p.redo(1));
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\DefaultPassword"), "1:geheim2");
    const auto kept = [&] {
        std::string bytes;
        for (const std::string& name : p.dir.names())
            if (name.starts_with(JournalFile)) bytes += bytesOf(p.dir / name);
        return bytes.find(std::string("g\0e\0h\0e\0i\0m\0" "1", 13)) != std::string::npos;
    };
    EXPECT_TRUE(kept());
    p.port.onWindow("frmBVK_HistoryListe", [&](WindowRequest& w) {
        auto& list = dynamic_cast<HistoryListeRequest&>(w);
        p.port.expectBox("Soll sie vergessen werden ?", Answer::Yes);
        list.forget(0);
        EXPECT_TRUE(list.lines.empty());
        EXPECT_FALSE(list.redoPossible);
    });
    p.lists->historyWindows().open();
    EXPECT_FALSE(kept());
    EXPECT_EQ(p.file() + p.drifted(), "");
    EXPECT_TRUE(p.lists->journal().heads().empty());
    p.dir.put("History.txt", "09.11.2002#12:30:00#PROBE-PC#1#*****#\r\n");   // nobody knows it any more
    p.start();
    p.port.expectBox("Die Werte konnten nicht zurück gesetzt werden !!!");
    EXPECT_FALSE(p.told(0));
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\DefaultPassword"), "1:geheim2");
}

// What a forgotten change overwrote is not watched any more: nobody would know that it was the program.
TEST(Journal, WhatIsForgottenMakesNoDrift) {
    ListsFixture p;
    p.change("eins", "1", "c");
    p.change("zwei", "2", "d");
    p.lists->journal().forget({2});
    EXPECT_EQ(p.drifted(), "");
    EXPECT_EQ(p.lists->journal().heads().size(), 1u);
    p.put("HKCU\\Software\\Probe\\A", 1, "fremd");
    EXPECT_EQ(p.drifted(), "");
}

TEST(Journal, OlderJournalsAreTakenOver) {
    ListsFixture p;
    p.lists.reset();
    const std::string foreign = p.dir.put("fremd.ini", "[a]\r\nb=1\r\n").string();
    const auto ini = p.dir.put("drive_c/windows/win.ini", "[windows]\r\nload=neu\r\n");
    p.put("HKCU\\Software\\Probe\\A", 1, "alt");
    p.put("HKCU\\Software\\Probe\\eins\\W", 1, "x");
    std::filesystem::remove(p.dir / JournalFile);
    sql(p, Replace(bytesOf(std::filesystem::path(BRENVIK_TEST_DATA) / "journal_v1.sql"), "@FREMD@", foreign));
    p.start();
    EXPECT_EQ(p.drifted(), "unreadable 4 " + foreign + " [a] b: 1, -|");
    p.port.expectBox("Die Datei \"" + foreign + "\" liegt auf keinem Laufwerk");
    EXPECT_FALSE(p.exact(4));
    EXPECT_EQ(bytesOf(foreign), "[a]\r\nb=1\r\n");
    p.port.expectBox(BackExactly);
    EXPECT_TRUE(p.exact(3)) << p.port.lastBox();
    EXPECT_EQ(bytesOf(ini), "[windows]\r\nload=alt\r\n");
    p.port.expectBox("wurde wiederhergestellt").expectBox("wurde wiederhergestellt");
    EXPECT_TRUE(p.redo(1)) << p.port.lastBox();
    EXPECT_TRUE(p.redo(5)) << p.port.lastBox();
    EXPECT_EQ(p.values() + p.get("HKCU\\Software\\Probe\\eins\\W"), "1:neu - --");
}

// A journal says where files lie and on which machine; it is believed in neither.
TEST(Journal, AHostileJournalReachesNowhere) {
    ListsFixture p({IniRow});
    p.dir.put("drive_c/windows/win.ini", "[windows]\r\nload=alt\r\n");
    p.show("Ini");
    p.engine->input().userText(0, "neu.exe");
    p.save();
    const auto outside = p.dir.put("aussen/.bashrc", "alias a=b\n");
    std::filesystem::create_symlink(p.dir / "aussen", p.dir / "drive_c/windows/link");
    const std::string before = bytesOf(outside);
    for (const std::string& file : {outside.string(), std::string("C:\\windows\\link\\.bashrc"), std::string("C:\\..\\..\\aussen\\.bashrc"), std::string("\\\\SRV\\x\\.bashrc"),
                                    std::string("Z:\\.bashrc"), std::string("aussen/.bashrc"), std::string()})
        for (const char* there : {"1", "0"}) {
            sql(p, "UPDATE datei SET neu = CAST('alias a=b\n' AS BLOB), vorhanden = " + std::string(there) + ", datei = '" + file + "'");
            p.start();
            if (p.port.lenient = true; p.exact(1)) sql(p, "UPDATE aenderung SET aufgehobendurch = 0");
            p.drifted();
            EXPECT_EQ(bytesOf(outside), before) << file;
        }
    p.port.lenient = false;
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(p.dir / "aussen"), {}), 1);
    // A Run value into another Windows: it is named, and the preset answer is No.
    sql(p, "DELETE FROM datei; UPDATE aenderung SET rechner = '/mnt/anderes'; INSERT INTO wert VALUES(1, 0, 'HKEY_LOCAL_MACHINE\\Software\\Run', 1, 1, X'78000000', NULL, NULL, 1, 'boese')");
    p.start();
    p.port.expectBox("am Windows im Ordner\r\n\r\n/mnt/anderes\r\n\r\ngemacht", Answer::No);
    EXPECT_FALSE(p.exact(1));
    EXPECT_TRUE(p.port.boxes.back().flags & box::DefaultNo);
    EXPECT_EQ(p.drifted(), "unreadable 1 HKEY_LOCAL_MACHINE\\Software\\Run\\boese: (nicht vorhanden), (nicht vorhanden)|");
    // Longer than anything we write: named, and the other changes go their way without it.
    sql(p, "DELETE FROM wert; UPDATE aenderung SET rechner = ''; INSERT INTO aenderung SELECT 99, zeit, '', lokal, '', sid, 0, tipp, 'Zwei', NULL, 0, 0, 0, 0, 1, 0 FROM aenderung WHERE nummer = 1;"
           "INSERT INTO wert VALUES(1, 0, 'HKEY_LOCAL_MACHINE\\Software\\Run', 1, 1, zeroblob(70000000), NULL, NULL, 1, 'x')");
    p.start();
    p.port.expectBox("Die Änderung 1 hält im Änderungsjournal mehr als 64 MiB").expectBox("nichts zu schreiben");
    EXPECT_FALSE(p.exact(1));
    EXPECT_TRUE(p.exact(99));
    EXPECT_EQ(p.drifted(), "unreadable 1 Änderung 1: (nicht vorhanden), (nicht vorhanden)|");
    // Tables that are none of ours are not touched.
    sql(p, "CREATE TRIGGER t AFTER INSERT ON aenderung BEGIN DELETE FROM wert; END");
    p.port.expectBox("ist kein Änderungsjournal dieses Programms");
    p.start();
}

// An undo that was interrupted behind its last write, and a redo before its line was there.
TEST(Journal, WhatWasInterruptedIsEnteredLater) {
    ListsFixture p;
    p.change("neu", "1", "c");
    const std::string line = p.file();
    p.port.expectBox(BackExactly);
    EXPECT_TRUE(p.exact(1));
    sql(p, "UPDATE aenderung SET aufgehobendurch = 0; UPDATE aenderung SET fertig = 0 WHERE nummer = 2; UPDATE wert SET geschrieben = 0 WHERE aenderung = 2");
    p.start();
    EXPECT_EQ(p.lists->notes(), (std::vector<std::string>{"Das Zurücksetzen der Änderung 1 wurde unterbrochen und ist jetzt nachgetragen.",
                                                          "Die History wurde mit dem Änderungsjournal abgeglichen: 1 Zeilen heraus, 0 hinein."}));
    EXPECT_EQ(p.file() + p.drifted(), "");
    EXPECT_EQ(p.lists->journal().head(1)->undoneBy, 2);
    p.port.expectBox("wurde wiederhergestellt");
    EXPECT_TRUE(p.redo(1));
    EXPECT_EQ(p.file(), "");        // as if killed before the list was written
    p.start();
    EXPECT_EQ(p.file(), line);
    EXPECT_EQ(p.lists->notes().size(), 1u);
    p.start();
    EXPECT_EQ(p.lists->notes().size(), 0u);
    // A save whose last mark is missing.
    sql(p, "UPDATE aenderung SET fertig = 0 WHERE nummer = 1; UPDATE wert SET geschrieben = 0 WHERE aenderung = 1");
    p.start();
    p.put("HKCU\\Software\\Probe\\A", 1, "fremd");
    EXPECT_EQ(p.drifted(), "differs 3 HKEY_CURRENT_USER\\Software\\Probe\\A: REG_SZ \"neu\", REG_SZ \"fremd\"|");
}

// As many changes without a line as somebody makes in years: start and list window take one pass.
TEST(Journal, ManyChangesWithoutALine) {
    ListsFixture p;
    p.change("neu", "1", "c");
    sql(p, "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 60000) "
           "INSERT INTO aenderung(zeit, rechner, lokal, benutzer, sid, art, tipp, ueberschrift, hebtauf) SELECT '2002-11-09 12:30:00', '', 'PROBE-PC', '', '', 5, 1, 'x', 0 FROM n");
    const auto begun = std::chrono::steady_clock::now();
    p.start();
    EXPECT_TRUE(p.windows().tbrHistory);
    p.port.onWindow("frmBVK_HistoryListe", [&](WindowRequest& w) { EXPECT_EQ(dynamic_cast<HistoryListeRequest&>(w).lines.size(), 60001u); });
    p.lists->historyWindows().open();
    EXPECT_LT(std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count(), 5.0);   // 150 s when each looked for its neighbour
}
