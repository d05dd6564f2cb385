#include <sys/stat.h>

#include "lists/Listenprobe.h"

using namespace brenvik;
using namespace brenvik::test;

namespace {
const char* const Fertig = "Alle Werte stehen wieder genau so da";
const char* const Wieder = "wurde wiederhergestellt";
}  // namespace

TEST(Undo, GenauBringtTypUndBytesZurueckUndWiederVor) {
    Listenprobe p;
    p.put("HKCU\\Software\\Probe\\A", 2, "%alt%");
    const std::string before = p.values();
    p.change("neu", "1A", "c");
    const std::string after = p.values();
    EXPECT_EQ(before + "|" + after, "2:%alt% - -|1:neu 4:26 1:c");
    p.port.expectBox(Fertig);
    EXPECT_TRUE(p.exact(1));
    EXPECT_EQ(p.values(), before);
    EXPECT_FALSE(p.store->keyExists(Root::CurrentUser, "Software\\Neu"));   // made by the save, empty again
    p.port.expectBox("schon zurückgesetzt");
    EXPECT_FALSE(p.exact(1));
    p.port.expectBox(Wieder);
    EXPECT_TRUE(p.redo(1));
    EXPECT_EQ(p.values(), after);
    p.port.expectBox("gibt nichts wiederherzustellen");
    EXPECT_FALSE(p.redo(1));
    p.port.expectBox(Fertig);
    EXPECT_TRUE(p.exact(1));
    EXPECT_EQ(p.values(), before);

    struct stat facts{};
    ASSERT_EQ(::stat((p.dir / JournalDatei).c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777, 0600u);
}

TEST(Undo, GenauFragtVorFremdenAenderungen) {
    Listenprobe p;
    p.change("neu", "1", "c");
    p.put("HKCU\\Software\\Probe\\A", 1, "fremd");
    p.put("HKCU\\Software\\Neu\\Tief\\D", 1, "bleibt");
    p.port.expectBox("HKEY_CURRENT_USER\\Software\\Probe\\A\r\n   vorher: (nicht vorhanden)\r\n   nach der Änderung: REG_SZ \"neu\"\r\n   jetzt: REG_SZ \"fremd\"", Answer::No);
    EXPECT_FALSE(p.exact(1));
    EXPECT_EQ(p.values(), "1:fremd 4:1 1:c");
    p.port.expectBox("von anderer Seite", Answer::Yes).expectBox(Fertig);
    EXPECT_TRUE(p.exact(1));
    EXPECT_EQ(p.values() + p.get("HKCU\\Software\\Neu\\Tief\\D"), "- - -1:bleibt");
}

TEST(Undo, GenauIstAllesOderNichts) {
    Listenprobe p;
    p.change("neu", "1", "c");
    // What cannot be written back: the journal's value is larger than the store takes.
    sqlite::Database((p.dir / JournalDatei).string(), 2).execute("UPDATE wert SET alttyp = 3, alt = zeroblob(17000000) WHERE nr = 2");
    const std::string before = p.values();
    p.port.expectBox("Es wurde nichts geändert.");
    EXPECT_FALSE(p.exact(1));
    EXPECT_EQ(p.values(), before);
    EXPECT_EQ(p.lists->journal().heads().size(), 1u);
}

TEST(Undo, DasGewoehnlicheSchreibtDenTextZurueck) {
    Listenprobe p;
    p.put("HKCU\\Software\\Probe\\A", 1, "alt");
    p.show("Drei");
    p.engine->userText(0, "neu");
    p.engine->userText(2, "c");
    p.engine->setEntryFromText(2, "<delkey>");
    p.engine->userText(1, "");
    p.saveOk();
    p.port.expectBox("Die Änderung wurde wieder erfolgreich zurückgesetzt.");
    EXPECT_TRUE(p.told(1)) << p.port.lastBox();
    EXPECT_EQ(p.values(), "1:alt - -");
    p.port.expectBox(Wieder);
    EXPECT_TRUE(p.redo(1));
    EXPECT_EQ(p.values(), "1:neu - 1:c");
}

TEST(Undo, WasNichtGenauWaereWirdGesagt) {
    Listenprobe p;
    p.put("HKCU\\Software\\Probe\\B", 4, "26");         // shown as 1A
    p.put("HKCU\\Software\\Probe\\A", 2, "%x%");
    p.change("neu", "FF", "c");
    p.port.expectBox("alter Wert: REG_EXPAND_SZ \"%x%\"\r\n   geschrieben würde: REG_SZ \"%x%\"", Answer::No).expectBox("trotzdem", Answer::No);
    EXPECT_FALSE(p.told(1));
    EXPECT_NE(p.port.boxes[p.port.boxes.size() - 2].text.find("geschrieben würde: nichts, \"1A\" ist kein solcher Wert"), std::string::npos);
    EXPECT_EQ(p.values(), "1:neu 4:255 1:c");
    p.port.expectBox("Soll stattdessen genau", Answer::Yes).expectBox(Fertig);
    EXPECT_TRUE(p.told(1));
    EXPECT_EQ(p.values(), "2:%x% 4:26 -");
}

TEST(Undo, OhneWegWirdNichtsGeschrieben) {
    const std::string lines[] = {"1#a#PROBE-PC#77#x#", "1#a#PROBE-PC#1#x#77#y#", "1#a#PROBE-PC#", "1#a#PROBE-PC##x#"};
    for (const std::string& line : lines) {
        Listenprobe p;
        p.dir.put("History.txt", line + "\r\n");
        p.start();
        p.port.expectBox("Die Werte konnten nicht zurück gesetzt werden !!!");
        EXPECT_FALSE(p.told(0)) << line;
        EXPECT_EQ(p.values(), "- - -") << line;
    }
    Listenprobe p;
    p.dir.put("History.txt", "1#a#ANDERER#1#x#\r\n");
    p.start();
    p.port.expectBox("auf dem Rechner \"ANDERER\" gemacht. Zurückgesetzt wird auf dem Rechner \"PROBE-PC\"", Answer::No);
    EXPECT_FALSE(p.told(0));
    EXPECT_TRUE(p.port.boxes.back().flags & box::DefaultNo);
    p.port.expectBox("ANDERER", Answer::Yes).expectBox("erfolgreich zurückgesetzt");
    EXPECT_TRUE(p.told(0));
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\A"), "1:x");
}

TEST(Undo, GeloeschterSchluesselKommtGanzZurueck) {
    Listenprobe p({{.Index = 1, .Überschrift = "Menü", .Ausgabeart = 10, .Wertname = "", .Hauptschlüssel = "HKCR", .Schlüssel = "Directory\\shell"}});
    p.put("HKCR\\Directory\\shell\\eins\\", 1, "Eins");
    p.put("HKCR\\Directory\\shell\\eins\\Command\\", 2, "notepad.exe");
    p.put("HKCR\\Directory\\shell\\eins\\Command\\Tief\\Wert", 3, "01 02");
    p.show("Menü");
    p.engine->userTick(0, 0, true);
    p.port.expectBox("Alle markierten Einträge werden gelöscht", Answer::Yes);
    p.engine->clickRegDel();
    EXPECT_EQ(p.get("HKCR\\Directory\\shell\\eins\\Command\\"), "-");
    p.port.expectBox(Fertig);
    EXPECT_TRUE(p.exact(1)) << p.port.lastBox();
    const auto all = [&] {
        return p.get("HKCR\\Directory\\shell\\eins\\") + " " + p.get("HKCR\\Directory\\shell\\eins\\Command\\") + " " + p.get("HKCR\\Directory\\shell\\eins\\Command\\Tief\\Wert");
    };
    EXPECT_EQ(all(), "1:Eins 2:notepad.exe 3:01 02");
    p.port.expectBox(Wieder);
    EXPECT_TRUE(p.redo(1));
    EXPECT_EQ(all(), "- - -");
    EXPECT_FALSE(p.store->keyExists(Root::ClassesRoot, "Directory\\shell\\eins"));
    p.put("HKCR\\Directory\\shell\\eins\\", 1, "Fremd");
    p.port.expectBox("jetzt: Schlüssel mit 0 Unterschlüsseln und 1 Werten", Answer::Yes).expectBox(Fertig);
    EXPECT_TRUE(p.exact(1));
    EXPECT_EQ(all(), "1:Eins 2:notepad.exe 3:01 02");
    EXPECT_EQ(p.file(), "");    // keys have no line
    p.port.onWindow("frmBVK_HistoryListe", [](WindowRequest& w) { EXPECT_TRUE(dynamic_cast<HistoryListeAnfrage&>(w).zeilen.empty()); });
    p.lists->historyFenster().oeffnen();
}

TEST(Undo, IniDateiKommtGanzZurueck) {
    Listenprobe p({{.Index = 1, .Überschrift = "Ini", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "load", .INITipp = true, .Schlüssel = "windows", .SchlüsselNT = "win.ini"}});
    const std::string old = "[windows]\r\nload=alt\r\n; Bemerkung\r\n";
    const auto file = p.dir.put("drive_c/WINDOWS/win.ini", old);
    p.show("Ini");
    p.engine->userText(0, "neu.exe");
    p.save();
    const std::string changed = bytesOf(file);
    EXPECT_NE(changed, old);
    p.port.onWindow("frmBVK_HistoryListe", [&](WindowRequest& w) {
        auto& list = dynamic_cast<HistoryListeAnfrage&>(w);
        ASSERT_EQ(list.zeilen.size(), 1u);
        EXPECT_EQ(list.zeile(0).überschrift, "Ini");
        list.anzeigen(0);
        EXPECT_TRUE(list.zeilen.empty());
        p.port.expectBox("Soll die zurückgesetzte Änderung", Answer::Yes).expectBox(Wieder);
        list.wiederherstellen();
        EXPECT_EQ(list.zeilen.size(), 1u);
    });
    p.port.onWindow("frmBVK_HistoryDaten", [&](WindowRequest& w) {
        auto& data = dynamic_cast<HistoryDatenAnfrage&>(w);
        EXPECT_FALSE(data.undoMoeglich);
        ASSERT_TRUE(data.genauMoeglich);
        p.port.expectBox(Fertig);
        EXPECT_TRUE(data.genauZuruecksetzen());
        EXPECT_EQ(bytesOf(file), old);
    });
    p.lists->historyFenster().oeffnen();
    EXPECT_EQ(bytesOf(file), changed);
    p.dir.put("drive_c/WINDOWS/win.ini", changed + "fremd=1\r\n");
    p.port.expectBox("   + fremd=1", Answer::No);
    EXPECT_FALSE(p.exact(1));
}

TEST(Undo, HalbGespeichertesWirdZumZuruecknehmenAngeboten) {
    for (const Answer wish : {Answer::Yes, Answer::No}) {
        const std::string tooLong(300, 'k');                  // no key may be called so, which shows when it is made
        std::vector<Zeile> rows = DreiWerte;
        rows[2].Schlüssel = tooLong.c_str();
        Listenprobe p(rows);
        p.put("HKCU\\Software\\Probe\\A", 1, "alt");
        p.show("Drei");
        p.engine->userText(0, "neu");
        p.engine->userText(1, "1");
        p.engine->userText(2, "c");
        p.port.expectBox("Schlüssel").expectBox("Das Speichern wurde nach 2 von 3 Werten abgebrochen").expectBox("Sollen die schon geschriebenen Werte", wish);
        if (wish == Answer::Yes) p.port.expectBox(Fertig);
        p.save();
        EXPECT_EQ(p.values(), wish == Answer::Yes ? "1:alt - -" : "1:neu 4:1 -");
        EXPECT_EQ(p.file().empty(), wish == Answer::Yes);
        EXPECT_EQ(p.panel(0).text, "neu");                    // what the user typed is still there
        EXPECT_TRUE(p.ctx->blnGeaendert);
    }
}

TEST(Undo, DrifteNenntDenLetztenStand) {
    Listenprobe p;
    p.change("neu", "1", "c");
    p.show("Drei");
    p.engine->userText(0, "neuer");
    p.saveOk();
    const auto set = p.lists->journal().lastWritten();
    ASSERT_EQ(set.size(), 3u);
    EXPECT_EQ(toText(*set[0].wert) + "|" + set[0].überschrift + "|" + set[0].rechner, "neuer|Drei|PROBE-PC");
}

TEST(Undo, EinKaputtesJournalHaeltNichtsAuf) {
    Listenprobe p;
    p.lists.reset();
    p.dir.put(JournalDatei, std::string(5000, 'x'));
    p.port.expectBox("ist kein Änderungsjournal dieses Programms");   // once
    p.start();
    p.change("neu", "1", "c");
    EXPECT_EQ(p.values(), "1:neu 4:1 1:c");
    EXPECT_TRUE(bytesOf(p.dir / JournalDatei) == std::string(5000, 'x'));
}
