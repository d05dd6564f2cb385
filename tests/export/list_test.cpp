// Collecting Tips, and the window of the lists.
#include "ExportFixture.h"

namespace brenvik::test {
namespace {

const std::vector<Zeile> Two{{.Index = 1, .Überschrift = "Eins", .Datentyp = 1, .Wertname = "Eins", .WertEin = "1", .WertAus = "0"},
                              {.Index = 2, .Überschrift = "Zwei", .Datentyp = 1, .Wertname = "Zwei", .WertEin = "1", .WertAus = "0"}};

TEST(AddTippToList, EmptyAtFirstThenWithText) {
    ExportFixture p(Two);
    p.put("HKCU\\Software\\Probe\\Eins", 1, "0");
    p.show("Eins");
    p.exports.addRegListe();
    EXPECT_TRUE(p.windows().RegListe);
    EXPECT_FALSE(p.windows().ADMListe);
    ASSERT_EQ(p.listen.RegListe.size(), 1u);
    const TippListEintrag& entry = p.listen.RegListe[0];
    EXPECT_EQ(entry.Anzahl, "0");
    EXPECT_EQ(entry.Baumpfad, "1");
    EXPECT_EQ(entry.Values[0].Wert, "");
    EXPECT_EQ(entry.Values[0].WertEin + entry.Values[0].WertAus, "10");
    EXPECT_EQ(entry.Values[0].gathered.wert, fromText("0", 1));   // beside the text, and raw
    EXPECT_EQ(p.windows().sbrBVK[2], "Index: 1  |  Zur REG-Liste hinzugefügt (Tipps darin: 1)");
    p.engine->input().userCheck(0, true);
    p.exports.addRegListe();
    EXPECT_EQ(p.windows().sbrBVK[2], "Index: 1  |  In der REG-Liste stehen jetzt die neuen Werte (Tipps darin: 1)");
    EXPECT_EQ(p.listen.RegListe.size(), 1u);
    EXPECT_EQ(entry.Values[0].Wert, "1");
    EXPECT_EQ(entry.Values[0].gathered.wert, fromText("1", 1));
    EXPECT_TRUE(p.windows().ADMListe);   // of the other list, and on purpose

    p.listen.ADMListe.clear();
    p.exports.addADMListe();
    EXPECT_EQ(p.windows().sbrBVK[2], "Index: 1  |  Zur ADM-Liste hinzugefügt (Tipps darin: 1)");
    p.listen.ADMListe[0].Geloescht = true;
    p.exports.addADMListe();
    EXPECT_FALSE(p.listen.ADMListe[0].Geloescht);
    EXPECT_EQ(p.listen.ADMListe[0].Values[0].Wert, "");   // texts are the REG list's
}

struct ListWindow : ExportFixture {
    ListWindow() : ExportFixture(Two) {
        for (const char* title : {"Eins", "Zwei"}) {
            show(title);
            exports.addRegListe();
        }
        listen.RegListe.push_back(listTip(9, "Zwei", {listValue("K", 1, "w", "x")}));
    }
    void open(std::function<void(TippFileSaveRequest&)> user) {
        port.onWindow("frmBVK_TippFileSave", [user](WindowRequest& request) { user(dynamic_cast<TippFileSaveRequest&>(request)); });
        exports.showRegListe();
    }
    std::string deleted() {
        std::string marks;
        for (const TippListEintrag& entry : listen.RegListe) marks += entry.Geloescht ? 'x' : '.';
        return marks;
    }
};

TEST(ListWindows, DeletingOneTakesEqualTitlesAlong) {
    ListWindow p;
    p.open([&](TippFileSaveRequest& w) {
        EXPECT_EQ(w.caption, "REG-File-Liste speichern...");
        EXPECT_EQ(w.lvRegList, (std::vector<std::string>{"Eins", "Zwei", "Zwei"}));
        p.port.expectBox("Achtung: Soll der Eintrag: Zwei gelöscht werden?", Answer::No);
        w.cmdDel(1);
        EXPECT_EQ(p.deleted(), "...");
        p.port.expectBox("Zwei", Answer::Yes);
        w.cmdDel(1);
        EXPECT_EQ(w.lvRegList, (std::vector<std::string>{"Eins", "Zwei"}));   // the other one of that title stays in view
        EXPECT_EQ(p.deleted(), ".xx");
        EXPECT_TRUE(w.active && p.windows().RegListe);
    });
    p.open([&](TippFileSaveRequest& w) {
        EXPECT_EQ(w.lvRegList, (std::vector<std::string>{"Eins"}));
        p.port.expectBox("Eins", Answer::Yes);
        w.cmdDel(0);
        EXPECT_FALSE(w.active || p.windows().RegListe);
    });
    p.open([](TippFileSaveRequest& w) { EXPECT_TRUE(w.lvRegList.empty() && w.active); });
}

TEST(ListWindows, DeletingAllCountsTheLines) {
    ListWindow p;
    p.listen.RegListe[0].Geloescht = true;
    p.open([&](TippFileSaveRequest& w) {
        p.port.expectBox("Achtung: Alle Einträge werden gelöscht. Sind Sie sicher?", Answer::Yes);
        w.cmdDelAll();
        EXPECT_TRUE(w.lvRegList.empty());
        EXPECT_FALSE(w.active);
    });
    EXPECT_EQ(p.deleted(), "xx.");   // two rows from the front, not the two that were shown
    p.open([](TippFileSaveRequest& w) { EXPECT_EQ(w.lvRegList, (std::vector<std::string>{"Zwei"})); });
}

TEST(ListWindows, SavesWritesAndLoadsLists) {
    ListWindow p;
    p.put("HKCU\\Software\\Probe\\Eins", 1, "1");
    p.show("Eins");
    p.exports.addRegListe();
    p.listen.RegListe.pop_back();   // of no Tip
    p.open([&](TippFileSaveRequest& w) {
        p.file("liste.reg");
        p.port.expectBox("liste.reg gespeichert").expectBox("anders an");
        w.cmdSave();
        p.file("liste.toml");
        p.port.expectBox("liste.toml gespeichert").expectBox("Ohne Wert in der Liste: 1. Beim Anwenden bleibt dort alles, wie es ist.\r\n\r\nHKEY_CURRENT_USER\\Software\\Probe\\Zwei");
        w.cmdListeSpeichern();
    });
    p.listen.RegListe.clear();
    p.port.expectFile(std::nullopt);
    p.exports.loadList();   // from the menu, also when no list has anything; the window opens for what was loaded
    const auto user = [&](TippFileSaveRequest& w) {
        EXPECT_EQ(w.lvRegList, (std::vector<std::string>{"Eins", "Zwei"}));
        p.dir.put("kaputt.toml", "format = 2\n");
        p.file("kaputt.toml");
        p.port.expectBox("Die Liste wurde nicht geladen");
        w.cmdListeLaden();
    };
    p.file("liste.toml");
    p.port.onWindow("frmBVK_TippFileSave", [user](WindowRequest& request) { user(dynamic_cast<TippFileSaveRequest&>(request)); });
    p.exports.loadList();
    EXPECT_TRUE(p.windows().RegListe);
    ASSERT_EQ(p.listen.RegListe.size(), 2u);
    EXPECT_EQ(p.listen.RegListe[0].Values[0].Wert, "1");
    EXPECT_EQ(p.ctx->aktuellerTipp.Überschrift, "Eins");   // what is on screen stays
}

}  // namespace
}  // namespace brenvik::test
