// Large amounts in the windows: they have to stay usable. The limits lie far above what a plain machine takes; the times
// are printed for whoever wants to know them.
#include <QElapsedTimer>
#include <QLineEdit>

#include "Dialogprobe.h"
#include "shell/MaschinenEvents.h"
#include "shell/VerbindeSucheOptionenBrowser.h"
#include "shell/frmBVK_RegBrowse.h"
#include "shell/frmBVK_Suchen.h"

namespace brenvik::test {
namespace {

constexpr int Keys = 100'000, Rows = 50'000, LimitMs = 30'000;

class Uhr {
public:
    Uhr() { time_.start(); }
    void lap(const char* what) {
        const qint64 took = time_.elapsed();
        std::printf("  %-28s %6lld ms\n", what, static_cast<long long>(took));
        EXPECT_LT(took, LimitMs) << what;
        time_.start();
    }

private:
    QElapsedTimer time_;
};

void fillKeys(RegStore& store, const std::string& key) {
    store.transaction([&] {
        for (int i = 0; i < Keys; ++i) store.createKey(Root::CurrentUser, key + "\\Schluessel" + std::to_string(i));
    });
}

TEST(GrosseMengen, KeysInTheRegistryBrowser) {
    Probe probe(std::vector<Zeile>{{.Überschrift = "Tipp"}});
    fillKeys(*probe.store, "Software\\Viele");
    const auto browser = makeRegBrowser(*probe.ctx, probe.recorder);
    RegBrowseAnfrage request(*browser);
    frmBVK_RegBrowse window(probe.port, request, nullptr);
    window.show();
    auto& tree = named<QTreeView>(window, "tvwReg");
    const std::string key = "HKEY_CURRENT_USER\\Software\\Viele";
    ASSERT_TRUE(window.goTo(key));
    Uhr uhr;
    tree.expand(tree.currentIndex());
    tree.grab();
    uhr.lap("open and paint");
    EXPECT_EQ(tree.model()->rowCount(tree.currentIndex()), Keys);
    tree.scrollToBottom();
    tree.grab();
    uhr.lap("scroll to the end and paint");
    EXPECT_TRUE(window.goTo(key + "\\Schluessel99999"));
    uhr.lap("go to the last by its path");
    QTest::keyClick(&tree, Qt::Key_Up);
    uhr.lap("one key up");
    EXPECT_TRUE(window.goTo(key));
    tree.collapse(tree.currentIndex());
    tree.grab();
    uhr.lap("close");
}

TEST(GrosseMengen, KeysInAListTip) {
    Probe probe({{.Index = 1, .Überschrift = "Text", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "Text"},
                 {.Index = 2, .Überschrift = "Liste", .Ausgabeart = 8, .Datentyp = 1, .Wertname = "", .Schlüssel = "Software\\Viele"}});
    fillKeys(*probe.store, "Software\\Viele");
    probe.put("HKLM\\SYSTEM\\CurrentControlSet\\Control\\ComputerName\\ComputerName\\ComputerName", 1, "PROBE-PC");
    frmBVK_Prog window(probe.fenster(), probe.ctx->einstellungen, displayOrder);
    TippMaschine engine(*probe.ctx, window, probe.recorder);
    MaschinenEvents events(engine);
    window.attach(events);
    engine.TreeEinlesen();
    window.show();
    Uhr uhr;
    ASSERT_TRUE(engine.showTippByHeading("Liste"));
    window.grab();
    uhr.lap("show the Tip and paint");
    auto& list = named<QTreeView>(window, "lvListe");
    ASSERT_EQ(list.model()->rowCount(), Keys);
    list.scrollToBottom();
    window.grab();
    uhr.lap("scroll to the end and paint");
    list.model()->setData(list.model()->index(Keys - 1, 0), Qt::Checked, Qt::CheckStateRole);
    window.grab();
    uhr.lap("tick the last");
    ASSERT_TRUE(engine.showTippByHeading("Text"));
    window.grab();
    uhr.lap("leave for another Tip");
}

TEST(GrosseMengen, RowsInTheSearch) {
    std::vector<std::string> headings;
    for (int i = 1; i <= Rows; ++i) headings.push_back("Tipp Nummer " + std::to_string(i));
    std::vector<Zeile> rows;
    for (int i = 1; i <= Rows; ++i)
        rows.push_back({.Index = i > 32'000 ? i - 32'000 : i, .Überschrift = headings[static_cast<std::size_t>(i - 1)].c_str(), .Ausgabeart = 2, .Datentyp = 1});
    Probe probe(rows);
    probe.port.onWindow("frmBVK_Suchen", driving<frmBVK_Suchen, SuchenAnfrage>(probe.port, [](frmBVK_Suchen& dialog) {
        for (const char* wanted : {"Nummer 4711", "Tipp"}) {
            named<QLineEdit>(dialog, "txtSuchText").setText(wanted);
            Uhr uhr;
            clickOn(dialog, "cmdSuchen");
            dialog.grab();
            uhr.lap(wanted);
        }
        EXPECT_EQ(named<QTreeView>(dialog, "lvSuchergebnis").model()->rowCount(), Rows);
    }));
    Suchauftrag order;
    zeigeSuche(*probe.engine, order);
}

}  // namespace
}  // namespace brenvik::test
