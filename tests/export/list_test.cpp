// Collecting Tips, and the window of the lists.
#include "ExportFixture.h"

namespace brenvik::test {
namespace {

const std::vector<Zeile> Zwei{{.Index = 1, .Überschrift = "Eins", .Datentyp = 1, .Wertname = "Eins", .WertEin = "1", .WertAus = "0"},
                              {.Index = 2, .Überschrift = "Zwei", .Datentyp = 1, .Wertname = "Zwei", .WertEin = "1", .WertAus = "0"}};

TEST(AddTippToList, ErstLeerDannMitText) {
    Exportprobe p(Zwei);
    p.put("HKCU\\Software\\Probe\\Eins", 1, "0");
    p.show("Eins");
    p.exporte.addRegListe();
    EXPECT_TRUE(p.fenster().RegListe);
    EXPECT_FALSE(p.fenster().ADMListe);
    ASSERT_EQ(p.listen.RegListe.size(), 1u);
    const TippListEintrag& entry = p.listen.RegListe[0];
    EXPECT_EQ(entry.Anzahl, "0");
    EXPECT_EQ(entry.Baumpfad, "1");
    EXPECT_EQ(entry.Werte[0].Wert, "");
    EXPECT_EQ(entry.Werte[0].WertEin + entry.Werte[0].WertAus, "10");
    EXPECT_EQ(entry.Werte[0].gesammelt.wert, fromText("0", 1));   // beside the text, and raw
    EXPECT_EQ(p.fenster().sbrBVK[2], "Index: 1  |  Zur REG-Liste hinzugefügt (Tipps darin: 1)");
    p.engine->input().userCheck(0, true);
    p.exporte.addRegListe();
    EXPECT_EQ(p.fenster().sbrBVK[2], "Index: 1  |  In der REG-Liste stehen jetzt die neuen Werte (Tipps darin: 1)");
    EXPECT_EQ(p.listen.RegListe.size(), 1u);
    EXPECT_EQ(entry.Werte[0].Wert, "1");
    EXPECT_EQ(entry.Werte[0].gesammelt.wert, fromText("1", 1));
    EXPECT_TRUE(p.fenster().ADMListe);   // of the other list, and on purpose

    p.listen.ADMListe.clear();
    p.exporte.addADMListe();
    EXPECT_EQ(p.fenster().sbrBVK[2], "Index: 1  |  Zur ADM-Liste hinzugefügt (Tipps darin: 1)");
    p.listen.ADMListe[0].Geloescht = true;
    p.exporte.addADMListe();
    EXPECT_FALSE(p.listen.ADMListe[0].Geloescht);
    EXPECT_EQ(p.listen.ADMListe[0].Werte[0].Wert, "");   // texts are the REG list's
}

struct Fenster : Exportprobe {
    Fenster() : Exportprobe(Zwei) {
        for (const char* title : {"Eins", "Zwei"}) {
            show(title);
            exporte.addRegListe();
        }
        listen.RegListe.push_back(listentipp(9, "Zwei", {listenwert("K", 1, "w", "x")}));
    }
    void open(std::function<void(TippFileSaveAnfrage&)> user) {
        port.onWindow("frmBVK_TippFileSave", [user](WindowRequest& request) { user(dynamic_cast<TippFileSaveAnfrage&>(request)); });
        exporte.showRegListe();
    }
    std::string deleted() {
        std::string marks;
        for (const TippListEintrag& entry : listen.RegListe) marks += entry.Geloescht ? 'x' : '.';
        return marks;
    }
};

TEST(Listenfenster, EinzelnLoeschenNimmtGleicheTitelMit) {
    Fenster p;
    p.open([&](TippFileSaveAnfrage& w) {
        EXPECT_EQ(w.caption, "REG-File-Liste speichern...");
        EXPECT_EQ(w.lvRegList, (std::vector<std::string>{"Eins", "Zwei", "Zwei"}));
        p.port.expectBox("Achtung: Soll der Eintrag: Zwei gelöscht werden?", Answer::No);
        w.cmdDel(1);
        EXPECT_EQ(p.deleted(), "...");
        p.port.expectBox("Zwei", Answer::Yes);
        w.cmdDel(1);
        EXPECT_EQ(w.lvRegList, (std::vector<std::string>{"Eins", "Zwei"}));   // the other one of that title stays in view
        EXPECT_EQ(p.deleted(), ".xx");
        EXPECT_TRUE(w.aktiv && p.fenster().RegListe);
    });
    p.open([&](TippFileSaveAnfrage& w) {
        EXPECT_EQ(w.lvRegList, (std::vector<std::string>{"Eins"}));
        p.port.expectBox("Eins", Answer::Yes);
        w.cmdDel(0);
        EXPECT_FALSE(w.aktiv || p.fenster().RegListe);
    });
    p.open([](TippFileSaveAnfrage& w) { EXPECT_TRUE(w.lvRegList.empty() && w.aktiv); });
}

TEST(Listenfenster, AllesLoeschenZaehltDieZeilen) {
    Fenster p;
    p.listen.RegListe[0].Geloescht = true;
    p.open([&](TippFileSaveAnfrage& w) {
        p.port.expectBox("Achtung: Alle Einträge werden gelöscht. Sind Sie sicher?", Answer::Yes);
        w.cmdDelAll();
        EXPECT_TRUE(w.lvRegList.empty());
        EXPECT_FALSE(w.aktiv);
    });
    EXPECT_EQ(p.deleted(), "xx.");   // two rows from the front, not the two that were shown
    p.open([](TippFileSaveAnfrage& w) { EXPECT_EQ(w.lvRegList, (std::vector<std::string>{"Zwei"})); });
}

TEST(Listenfenster, SpeichertSchreibtUndLaedtListen) {
    Fenster p;
    p.put("HKCU\\Software\\Probe\\Eins", 1, "1");
    p.show("Eins");
    p.exporte.addRegListe();
    p.listen.RegListe.pop_back();   // of no Tip
    p.open([&](TippFileSaveAnfrage& w) {
        p.file("liste.reg");
        p.port.expectBox("liste.reg gespeichert").expectBox("anders an");
        w.cmdSave();
        p.file("liste.toml");
        p.port.expectBox("liste.toml gespeichert").expectBox("Ohne Wert in der Liste: 1. Beim Anwenden bleibt dort alles, wie es ist.\r\n\r\nHKEY_CURRENT_USER\\Software\\Probe\\Zwei");
        w.cmdListeSpeichern();
    });
    p.listen.RegListe.clear();
    p.port.expectFile(std::nullopt);
    p.exporte.loadListe();   // from the menu, also when no list has anything; the window opens for what was loaded
    const auto user = [&](TippFileSaveAnfrage& w) {
        EXPECT_EQ(w.lvRegList, (std::vector<std::string>{"Eins", "Zwei"}));
        p.dir.put("kaputt.toml", "format = 2\n");
        p.file("kaputt.toml");
        p.port.expectBox("Die Liste wurde nicht geladen");
        w.cmdListeLaden();
    };
    p.file("liste.toml");
    p.port.onWindow("frmBVK_TippFileSave", [user](WindowRequest& request) { user(dynamic_cast<TippFileSaveAnfrage&>(request)); });
    p.exporte.loadListe();
    EXPECT_TRUE(p.fenster().RegListe);
    ASSERT_EQ(p.listen.RegListe.size(), 2u);
    EXPECT_EQ(p.listen.RegListe[0].Werte[0].Wert, "1");
    EXPECT_EQ(p.ctx->aktuellerTipp.Überschrift, "Eins");   // what is on screen stays
}

}  // namespace
}  // namespace brenvik::test
