// The windows of history and favourites, on real lists.
#include <QListWidget>
#include <QTreeWidget>

#include "WindowFixture.h"
#include "lists/ListsFixture.h"
#include "shell/windows/frmBVK_FavVerwalten.h"
#include "shell/windows/frmBVK_HistoryDaten.h"
#include "shell/windows/frmBVK_HistoryListe.h"
#include "shell/windows/frmBVK_UndoConflicts.h"

namespace brenvik::test {
namespace {

std::string rowText(const QAbstractItemModel& model, int row) {
    std::string text;
    for (int column = 0; column < model.columnCount(); ++column) text += (column ? "|" : "") + model.index(row, column).data().toString().toStdString();
    return text;
}

void click(QWidget& window, const char* name) {
    auto* button = window.findChild<QPushButton*>(QString::fromUtf8(name));
    ASSERT_TRUE(button && button->isEnabled()) << name;
    QTest::mouseClick(button, Qt::LeftButton);
}

// The real window behind a request, for as long as the script runs.
template <class Window, class Request> void drive(ListsFixture& p, const char* name, std::function<void(Window&)> script) {
    p.port.onWindow(name, [script](WindowRequest& request) {
        Window window(dynamic_cast<Request&>(request), nullptr);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        script(window);
    });
}

TEST(HistoryWindows, AChangeIsShownTakenBackAndBroughtAgain) {
    ListsFixture p;
    p.put("HKCU\\Software\\Probe\\A", 2, "alt");
    p.change("neu", "1A", "c");
    drive<frmBVK_HistoryDaten, HistoryDatenRequest>(p, "frmBVK_HistoryDaten", [&](frmBVK_HistoryDaten& window) {
        auto& list = *window.findChild<QTreeWidget*>("lvHisDaten");
        EXPECT_EQ(rowText(*list.model(), 0), "A|alt|neu");
        EXPECT_EQ(rowText(*list.model(), 1), "B|<Key nicht vorhanden>|26");
        EXPECT_EQ(list.headerItem()->text(2), "Aktueller Wert");
        const auto* path = window.findChild<QLabel*>("lblPfad");
        EXPECT_EQ(path->text(), "HKEY_CURRENT_USER\\Software\\Probe\\A");
        list.setCurrentItem(list.topLevelItem(2));
        EXPECT_EQ(path->text(), "HKEY_CURRENT_USER\\Software\\Neu\\Tief\\C");
        EXPECT_EQ(window.windowTitle(), "Historyeintrag-Daten");
        p.port.expectBox("Alle Werte stehen wieder genau so da");
        click(window, "cmdDatenGenau");
        EXPECT_FALSE(window.isVisible());
    });
    drive<frmBVK_HistoryListe, HistoryListeRequest>(p, "frmBVK_HistoryListe", [&](frmBVK_HistoryListe& window) {
        auto& list = *window.findChild<QTreeView*>("lvHistory");
        EXPECT_EQ(window.windowTitle(), "Historylisten-Anzeige");
        ASSERT_EQ(list.model()->rowCount(), 1);
        EXPECT_EQ(rowText(*list.model(), 0), "09.11.2002|12:30:00|PROBE-PC|Drei");
        EXPECT_EQ(list.model()->headerData(3, Qt::Horizontal).toString(), "Überschrift");
        click(window, "cmdHisAnzeigen");
        EXPECT_EQ(list.model()->rowCount(), 0);
        EXPECT_EQ(p.values(), "2:alt - -");
        for (const char* name : {"cmdHisAnzeigen", "cmdHisDel", "cmdHisAllDel"}) EXPECT_FALSE(window.findChild<QPushButton*>(name)->isEnabled()) << name;
        p.port.expectBox("Soll die zurückgesetzte Änderung", Answer::Yes).expectBox("wurde wiederhergestellt");
        click(window, "cmdHisRedo");
        EXPECT_EQ(list.model()->rowCount(), 1);
        EXPECT_EQ(p.values(), "1:neu 4:26 1:c");
        p.port.expectBox("gelöscht werden?", Answer::Yes);
        QTest::keyClick(&list, Qt::Key_Delete);
        EXPECT_EQ(list.model()->rowCount(), 0);
        QTest::keyClick(&window, Qt::Key_Escape);          // writes nothing
        EXPECT_FALSE(window.isVisible());
    });
    const std::string before = p.file();
    p.lists->historyWindows().open();
    EXPECT_EQ(p.file(), before);
    drive<frmBVK_HistoryListe, HistoryListeRequest>(p, "frmBVK_HistoryListe", [&](frmBVK_HistoryListe& window) {
        EXPECT_EQ(window.findChild<QTreeView*>("lvHistory")->model()->rowCount(), 0);
        click(window, "cmdHisZurück");
        EXPECT_FALSE(window.isVisible());
    });
    p.lists->historyWindows().open();
}

// What was changed again stays unless it is ticked; Escape does nothing at all.
TEST(HistoryWindows, ConflictsAreSettledOneByOne) {
    ListsFixture p;
    p.change("neu", "1", "c");
    p.put("HKCU\\Software\\Probe\\A", 1, "fremd");
    p.put("HKCU\\Software\\Probe\\B", 4, "9");
    int round = 0;
    drive<frmBVK_UndoConflicts, UndoConflictsRequest>(p, "frmBVK_UndoConflicts", [&](frmBVK_UndoConflicts& window) {
        auto& list = *window.findChild<QTreeWidget*>("lvConflicts");
        ASSERT_EQ(list.topLevelItemCount(), 2);
        EXPECT_EQ(rowText(*list.model(), 0), "HKEY_CURRENT_USER\\Software\\Probe\\A|(nicht vorhanden)|REG_SZ \"neu\"|REG_SZ \"fremd\"|von anderer Seite");
        EXPECT_EQ(list.topLevelItem(0)->checkState(0), Qt::Unchecked);
        if (round++ == 0) return QTest::keyClick(&window, Qt::Key_Escape);
        list.topLevelItem(1)->setCheckState(0, Qt::Checked);
        click(window, "cmdProceed");
    });
    EXPECT_FALSE(p.exact(1));
    EXPECT_EQ(p.values(), "1:fremd 4:9 1:c");
    p.port.expectBox("bis auf 1");
    EXPECT_TRUE(p.exact(1));
    EXPECT_EQ(p.values(), "1:fremd - -");
}

TEST(FavouriteWindow, RowsGoAndOkWrites) {
    ListsFixture p;
    p.dir.put(FavouritesFile, "eins\r\nzwei\r\ndrei\r\n");
    p.start();
    int round = 0;
    drive<frmBVK_FavVerwalten, FavVerwaltenRequest>(p, "frmBVK_FavVerwalten", [&](frmBVK_FavVerwalten& window) {
        auto& list = *window.findChild<QListWidget*>("lvFav");
        EXPECT_EQ(window.windowTitle(), "Favoriten verwalten...");
        ASSERT_EQ(list.count(), 3);
        list.setCurrentRow(1);
        p.port.expectBox("Achtung: Soll der Eintrag: zwei gelöscht werden?", Answer::Yes);
        if (round == 0) QTest::keyClick(&list, Qt::Key_Delete);
        else click(window, "cmdLöschen");
        EXPECT_EQ(list.count(), 2);
        if (round++ == 0) QTest::keyClick(&window, Qt::Key_Escape);
        else click(window, "cmdOK");
        EXPECT_FALSE(window.isVisible());
    });
    p.lists->favoriten().manage();
    EXPECT_EQ(p.file(FavouritesFile), "eins\r\nzwei\r\ndrei\r\n");
    p.lists->favoriten().manage();
    EXPECT_EQ(p.file(FavouritesFile), "eins\rdrei");
}

}  // namespace
}  // namespace brenvik::test
