#include <sys/wait.h>
#include <unistd.h>

#include "frame/files/FileSystem.h"
#include "lists/ListsFixture.h"
#include "lists/Messages.h"

using namespace brenvik;
using namespace brenvik::test;

namespace {
constexpr const char* First = "09.11.2002#12:30:00#PROBE-PC#1#alt#2#<Key nicht vorhanden>#3#<Key nicht vorhanden>#\r\n";

void answer(ScriptedPort& port, std::function<void(HistoryListeRequest&)> work) {
    port.onWindow("frmBVK_HistoryListe", [work](WindowRequest& w) { work(dynamic_cast<HistoryListeRequest&>(w)); });
}
}  // namespace

TEST(History, OneSaveIsOneLine) {
    ListsFixture p;
    EXPECT_EQ(p.file() + p.file(FavouritesFile), "");   // both are made at the start
    EXPECT_FALSE(p.windows().tbrHistory);
    p.put("HKCU\\Software\\Probe\\A", 1, "alt");
    p.change("neu", "1A", "c");
    EXPECT_EQ(p.file(), First);
    EXPECT_TRUE(p.windows().tbrHistory);
    p.show("Drei");
    p.saveOk();                                         // nothing differs
    EXPECT_EQ(p.file(), First);
    p.show("Drei");
    p.engine->input().userText(0, "ä\r\nzweite Zeile");
    p.saveOk();
    p.show("Drei");
    p.engine->input().userText(0, "x");
    p.saveOk();
    EXPECT_EQ(p.file(), First + std::string("09.11.2002#12:30:00#PROBE-PC#1#neu#\r\n09.11.2002#12:30:00#PROBE-PC#1#\xE4#\r\n"));
    p.start();
    EXPECT_EQ(p.lists->history().udtHistory().size(), 3u);
    EXPECT_TRUE(p.windows().tbrHistory);
}

TEST(History, DeletionsCountOnlyAfterTheBackButton) {
    ListsFixture p;
    p.dir.put("History.txt", "1#a#PC#1#x#\r\n   \r\n2#b#PC#1#y#\n3#c#PC#9#z#");
    p.start();
    answer(p.port, [&](HistoryListeRequest& list) {
        ASSERT_EQ(list.lines.size(), 3u);
        EXPECT_EQ(list.zeile(0).datum + list.zeile(0).timeOfDay + list.zeile(0).rechnername + list.zeile(0).überschrift, "1aPCDrei");
        EXPECT_EQ(list.zeile(2).überschrift, "");
        p.port.expectBox("Achtung: Soll der Eintrag: \"2\" gelöscht werden?", Answer::Yes);
        list.loeschen(1);
        p.port.expectBox("\"3\" gelöscht", Answer::No);
        list.loeschen(1);
        EXPECT_TRUE(list.blnListeGeaendert);
    });   // closed another way: nothing is written
    p.lists->historyWindows().open();
    EXPECT_EQ(p.file(), "1#a#PC#1#x#\r\n   \r\n2#b#PC#1#y#\n3#c#PC#9#z#");
    p.put("HKCU\\Software\\Probe\\A", 1, "alt");
    p.show("Drei");
    p.engine->input().userText(0, "neu");
    p.saveOk();                                         // rewrites deleted ones too
    const std::string fourth = "09.11.2002#12:30:00#PROBE-PC#1#alt#\r\n";
    EXPECT_TRUE(p.file().starts_with("1#a#PC#1#x#\r\n2#b#PC#1#y#\r\n3#c#PC#9#z#\r\n" + fourth)) << p.file();
    answer(p.port, [&](HistoryListeRequest& list) {
        ASSERT_EQ(list.lines.size(), 3u);
        list.blnListeGeaendert = true;
        list.back();
    });
    p.lists->historyWindows().open();
    EXPECT_TRUE(p.file().starts_with("1#a#PC#1#x#\r\n3#c#PC#9#z#\r\n" + fourth)) << p.file();
    answer(p.port, [&](HistoryListeRequest& list) {
        p.port.expectBox("Alle Einträge werden gelöscht", Answer::Yes);
        list.deleteAll();
        EXPECT_FALSE(list.commandsActive);
        list.back();
    });
    p.lists->historyWindows().open();
    EXPECT_FALSE(p.windows().tbrHistory);
    EXPECT_EQ(p.file(), "");
}

TEST(History, LinesOfOthersAreUnited) {
    ListsFixture p;
    p.dir.put("History.txt", "1#a#PC#1#x#\r\n2#b#PC#1#y#\r\n3#c#PC#1#z#\r\n");
    p.start();
    p.lists->history().find(2)->Geloescht = true;
    p.dir.put("History.txt", "2#b#PC#1#y#\r\n3#c#PC#1#z#\r\n4#fremd#PC#1#f#\r\n");   // the first taken out, a fourth added
    EXPECT_TRUE(p.lists->history().HistorySave());
    EXPECT_EQ(p.file(), "3#c#PC#1#z#\r\n4#fremd#PC#1#f#\r\n");
}

TEST(History, AnotherFolderIsLoadedAndUnited) {
    ListsFixture p;
    p.dir.put("History.txt", "1#a#PC#1#x#\r\n");
    p.dir.put("anders/History.txt", "2#b#PC#1#y#\r\n");
    p.start();
    p.ctx->einstellungen.strHistoryPfad = (p.dir / "anders").string();   // without separator
    p.change("1", "2", "3");
    EXPECT_TRUE(p.file("anders/History.txt").starts_with("1#a#PC#1#x#\r\n2#b#PC#1#y#\r\n09.11.2002#")) << p.file("anders/History.txt");
    EXPECT_EQ(p.file(), "1#a#PC#1#x#\r\n");

    // Switched off at the start, and on again later: shown at once, written with the next change.
    setReadOnly(p.dir / HistoryFile, true);
    p.ctx->einstellungen.strHistoryPfad = p.dir.path().string() + "/";
    p.port.expectBox("Auf die Datei: History.txt", Answer::Cancel).expectBox("deaktiviert");
    p.start();
    setReadOnly(p.dir / HistoryFile, false);
    p.ctx->blnHistoryAktiv = true;
    p.lists->folderNew();
    EXPECT_TRUE(p.windows().historyVisible && p.windows().tbrHistory);
    p.change("4", "5", "6");
    EXPECT_TRUE(p.file().starts_with("1#a#PC#1#x#\r\n09.11.2002#")) << p.file();
}

// Several processes append at the same time; no line is lost.
TEST(History, TwoProgramsWriteAtATime) {
    constexpr int Each = 25, Before = 5000;
    TempDir shared;
    std::string lines;
    for (int k = 0; k < Before; ++k) lines += "1#a#PC#1#" + std::to_string(k) + "#\r\n";
    shared.put(HistoryFile, lines);
    const auto append = [&](const std::string& name) {
        ListsFixture p;
        p.ctx->homePath = shared.path();
        p.ctx->einstellungen.strHistoryPfad = shared.path().string() + "/";
        p.start();
        for (int k = 0; k < Each; ++k) {
            Change change;
            change.values = {{"", "HKCU\\x", 1, fromText(name + std::to_string(k), 1), fromText("neu", 1), true}};
            p.lists->begin(change);
            p.lists->finished(change);
        }
        return p.port.boxes.empty() ? 0 : 1;
    };
    std::vector<pid_t> children;
    for (const char* name : {"eins", "zwei"})
        if (children.push_back(::fork()); children.back() == 0) ::_exit(append(name));
    for (const pid_t child : children) {
        int status = 1;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    const std::string content = bytesOf(shared / HistoryFile);
    EXPECT_EQ(std::count(content.begin(), content.end(), '\n'), Before + 2 * Each);
}

TEST(History, WhatCannotBeWrittenHoldsNothingUp) {
    ListsFixture p;
    std::filesystem::permissions(p.dir / HistoryFile, std::filesystem::perms::owner_read);
    p.show("Drei");
    p.engine->input().userText(0, "neu");
    p.port.expectBox("Beim schreiben der History ist folgender Fehler aufgetreten:\r\n\r\nDie Datei ist schreibgeschütz !!!", Answer::Yes);
    p.saveOk();
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\A"), "1:neu");
    EXPECT_TRUE(p.lists->history().udtHistory().empty());
    // At the next start the list is asked about, and given up.
    p.port.expectBox("Auf die Datei: History.txt kann nicht zugegriffen werden !", Answer::Retry).expectFolder(std::nullopt);
    p.port.expectBox("Auf die Datei: History.txt", Answer::Cancel).expectBox("Achtung: Die History Liste wurde deaktiviert.");
    p.start();
    EXPECT_FALSE(p.ctx->blnHistoryAktiv || p.windows().historyVisible);
    EXPECT_TRUE(p.ctx->blnFavoritenAktiv);
    // Its values are in the journal all the same.
    EXPECT_EQ(p.lists->journal().heads().size(), 1u);
    p.port.expectBox("Alle Werte stehen wieder genau so da");
    EXPECT_TRUE(p.exact(1)) << p.port.lastBox();
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\A"), "-");
}

TEST(History, AVanishedFolderIsAskedFor) {
    ListsFixture p;
    p.ctx->einstellungen.strFavoritenPfad = "/gibt/es/nicht";
    p.port.expectBox("Auf das Verzeichnis /gibt/es/nicht/ kann nicht zugegriffen werden.").expectFolder(p.dir.path().string());
    p.start();
    EXPECT_EQ(p.ctx->einstellungen.strFavoritenPfad, p.dir.path().string() + "/");
    EXPECT_EQ(p.port.folderChoices.back().first, "Hilfedatei wurde im aktuellen Pfad nicht gefunden, bitte neues Verzeichnis auswählen...");
}

TEST(History, AFolderMissingForAWhileTakesNothingAlong) {
    ListsFixture p;
    p.dir.put("liste/History.txt", "1#a#PC#1#x#\r\n");
    p.ctx->einstellungen.strHistoryPfad = (p.dir / "liste").string() + "/";
    p.start();
    std::filesystem::rename(p.dir / "liste", p.dir / "fort");
    p.show("Drei");
    p.engine->input().userText(0, "neu");
    p.port.expectBox("Beim schreiben der History ist folgender Fehler aufgetreten:\r\n\r\n09.11.2002#12:30:00#PROBE-PC#1#<Key nicht vorhanden>#", Answer::Yes);
    p.saveOk();
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\A"), "1:neu");
    EXPECT_EQ(p.lists->history().udtHistory().size(), 1u);
    std::filesystem::rename(p.dir / "fort", p.dir / "liste");
    p.change("neuer", "1", "c");
    EXPECT_TRUE(p.file("liste/History.txt").starts_with("1#a#PC#1#x#\r\n09.11.2002#12:30:00#PROBE-PC#1#neu#")) << p.file("liste/History.txt");
}

TEST(History, AHugeFileStaysUntouched) {
    ListsFixture p;
    std::filesystem::resize_file(p.dir / HistoryFile, 200u << 20);
    p.port.expectBox("LoadHistory").expectBox("Auf die Datei: History.txt", Answer::Cancel).expectBox("History Liste wurde deaktiviert");
    p.start();
    p.change("neu", "1", "c");
    EXPECT_EQ(std::filesystem::file_size(p.dir / HistoryFile), 200u << 20);
    EXPECT_EQ(p.values(), "1:neu 4:1 1:c");
}

TEST(History, PasswordsDoNotStandInTheLog) {
    ListsFixture p({{.Index = 1, .Überschrift = "Drei", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "DefaultPassword"}});
    p.ctx->trace.setFile(p.dir / "log");
    p.ctx->trace.setDebug(true);
    p.put("HKCU\\Software\\Probe\\DefaultPassword", 1, "geheim1");
    std::filesystem::permissions(p.dir / HistoryFile, std::filesystem::perms::owner_read);
    p.show("Drei");
    p.engine->input().userText(0, "geheim2");
    p.port.expectBox("Beim schreiben der History", Answer::Yes);
    p.saveOk();
    EXPECT_NE(bytesOf(p.dir / "log").find("*****"), std::string::npos);
    EXPECT_EQ(bytesOf(p.dir / "log").find("geheim"), std::string::npos);
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\DefaultPassword"), "1:geheim2");
}
