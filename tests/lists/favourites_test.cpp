#include "frame/files/FileSystem.h"
#include "lists/ListsFixture.h"

using namespace brenvik;
using namespace brenvik::test;
using Texts = std::vector<std::string>;

namespace {
const std::vector<Zeile> Tipps = {{.Index = 1, .Überschrift = "Äpfel & Birnen"}, {.Index = 2, .Überschrift = "beta"}, {.Index = 3, .Überschrift = "Alpha"}};
}

TEST(Favoriten, AddedInOrderAndOnlyOnce) {
    ListsFixture p(Tipps);
    Favoriten& f = p.lists->favoriten();
    int changes = 0;
    p.lists->onChange([&] { ++changes; });
    for (const char* heading : {"beta", "Äpfel & Birnen", "Alpha"}) {
        p.show(heading);
        f.FavAdd();
    }
    EXPECT_EQ(f.strFavoriten(), (Texts{"Alpha", "Äpfel & Birnen", "beta"}));
    EXPECT_EQ(f.mnuFavPopA(), (Texts{"", "Alpha", "Äpfel & Birnen", "beta"}));
    EXPECT_EQ(p.file(FavouritesFile), "Alpha\r\n\xC4pfel & Birnen\r\nbeta\r\n");
    EXPECT_GT(changes, 2);
    EXPECT_EQ(f.chosen(), 0);
    p.port.expectBox("Eintrag schon in den Favoriten vorhanden");
    f.FavAdd();
    EXPECT_EQ(p.file(FavouritesFile), "Alpha\r\n\xC4pfel & Birnen\r\nbeta\r\n");
    p.ctx->einstellungen.SoundOn = true;
    f.choose(2);    // does nothing until the list is loaded again, but the button shows it
    EXPECT_EQ(p.windows().lblDBTippU, "Alpha");
    f.FavAuswahlAnzeigen();
    EXPECT_EQ(p.windows().lblDBTippU, "beta");
    f.clickMenu(2);
    EXPECT_EQ(p.windows().lblDBTippU, "Äpfel & Birnen");
    p.port.expectBox("Unbekannter Eintrag");
    f.clickMenu(4);
    EXPECT_EQ(p.port.sounds.size(), 3u) << "the combo once, the menu twice; the button's comes from the window";
}

TEST(Favoriten, DeletingAndManaging) {
    ListsFixture p(Tipps);
    p.dir.put(FavouritesFile, "  beta  \r\rAlpha\n\r\nnicht im Baum");   // one end of line after the other
    p.start();
    Favoriten& f = p.lists->favoriten();
    EXPECT_EQ(f.strFavoriten(), (Texts{"beta", "Alpha", "nicht im Baum"}));
    p.show("Alpha");
    f.choose(2);
    EXPECT_EQ(p.windows().lblDBTippU, "Alpha");      // changes nothing in the tree
    f.choose(0);
    EXPECT_EQ(p.windows().lblDBTippU, "beta");
    p.port.expectBox("Achtung: Soll der Eintrag: beta gelöscht werden?", Answer::No);
    f.FavDel();
    p.port.expectBox("Achtung: Soll der Eintrag: beta gelöscht werden?", Answer::Yes);
    f.FavDel();
    EXPECT_EQ(p.file(FavouritesFile), "Alpha\r\nnicht im Baum\r\n");
    p.dir.put(FavouritesFile, "Alpha\r\nbeta\r\nfremd\r\nnicht im Baum\r\n");   // from an editor with its older text
    p.port.onWindow("frmBVK_FavVerwalten", [&](WindowRequest& w) {
        auto& window = dynamic_cast<FavVerwaltenRequest&>(w);
        EXPECT_EQ(window.lvFav, (Texts{"Alpha", "nicht im Baum"}));
        p.port.expectBox("Soll der Eintrag: Alpha gelöscht", Answer::Yes);
        window.loeschen(0);
        window.ok();
    });
    f.manage();
    EXPECT_EQ(p.file(FavouritesFile), "nicht im Baum\rfremd");
    EXPECT_EQ(f.strFavoriten(), (Texts{"nicht im Baum", "fremd"}));
    p.port.expectBox("nicht im Baum gelöscht", Answer::Yes).expectBox("fremd gelöscht", Answer::Yes).expectBox("Keine Einträge zum Löschen vorhanden");
    f.FavDel();
    f.FavDel();
    f.FavDel();
    EXPECT_EQ(p.file(FavouritesFile), "");
}

TEST(Favoriten, WhatCannotBeWrittenStays) {
    ListsFixture p(Tipps);
    p.dir.put(FavouritesFile, "Alpha\r\n");
    p.start();
    std::filesystem::permissions(p.dir / FavouritesFile, std::filesystem::perms::owner_read);
    p.show("beta");
    p.port.expectBox("Beim speichern der Favoriten ist folgender Fehler aufgetreten:");
    p.lists->favoriten().FavAdd();
    EXPECT_EQ(p.file(FavouritesFile), "Alpha\r\n");
    EXPECT_EQ(p.lists->favoriten().strFavoriten(), (Texts{"Alpha"}));
    p.port.expectBox("Auf die Datei: Favoriten.txt kann nicht zugegriffen werden !", Answer::Cancel).expectBox("Die Favoriten Liste wurde deaktiviert !");
    p.start();
    EXPECT_FALSE(p.windows().favouritesVisible);
    EXPECT_TRUE(p.ctx->blnHistoryAktiv);
}

TEST(Favoriten, AnotherFolderAndSwitchedOnAgain) {
    ListsFixture p(Tipps);
    p.dir.put(FavouritesFile, "Alpha\r\n");
    p.dir.put("anders/Favoriten.txt", "beta\r\n");
    p.start();
    Favoriten& f = p.lists->favoriten();
    p.ctx->einstellungen.strFavoritenPfad = (p.dir / "anders").string();   // without separator
    p.lists->folderNew();
    EXPECT_EQ(f.mnuFavPopA(), (Texts{"", "Alpha", "beta"}));
    p.port.expectBox("gelöscht werden?", Answer::No);
    f.FavDel();                                                            // forgets none of them
    p.show("Äpfel & Birnen");
    f.FavAdd();
    EXPECT_EQ(p.file("anders/Favoriten.txt") + "|" + p.file(FavouritesFile), "Alpha\r\n\xC4pfel & Birnen\r\nbeta\r\n|Alpha\r\n");

    setReadOnly(p.dir / FavouritesFile, true);
    p.ctx->einstellungen.strFavoritenPfad = p.dir.path().string();
    p.port.expectBox("Auf die Datei: Favoriten.txt", Answer::Cancel).expectBox("deaktiviert");
    p.start();
    setReadOnly(p.dir / FavouritesFile, false);
    p.ctx->blnFavoritenAktiv = true;                                       // as choosing a folder in the options does
    p.lists->folderNew();
    EXPECT_TRUE(p.windows().favouritesVisible);
    EXPECT_EQ(p.lists->favoriten().strFavoriten(), (Texts{"Alpha"}));
    p.lists->favoriten().choose(0);
    EXPECT_EQ(p.windows().lblDBTippU, "Alpha");
}
