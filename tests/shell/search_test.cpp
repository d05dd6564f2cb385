// The search through its window: what it finds, and the way from a hit to its Tip.
#include <QCheckBox>
#include <QLineEdit>

#include "DialogFixture.h"
#include "shell/program/ConnectSearchOptionsBrowser.h"
#include "shell/program/EngineEvents.h"
#include "shell/windows/frmBVK_Suchen.h"

namespace brenvik::test {
namespace {

class SearchWindow : public testing::Test {
protected:
    SearchWindow()
        : probe({{.Index = 7, .Überschrift = "Menüs schneller öffnen", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "MenuShowDelay"},
                 {.Index = 30, .Überschrift = "Fenster einrahmen", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "Rahmen", .Systems = "95"},
                 {.Index = 12, .Überschrift = "Menüs am Rand", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "MenuDropAlignment", .AnzahlWerte = 1},
                 {.Index = 40, .Überschrift = "Zahl", .Ausgabeart = 2, .Wertname = "Zahl"},
                 {.Index = 13, .Ausgabeart = 2, .Datentyp = 1, .Wertname = "MenuVersteckt", .HauptIndex = 12}}),
          window(probe.windows(), probe.ctx->einstellungen, displayOrder), engine(*probe.ctx, window, probe.recorder), events(engine) {
        probe.put("HKCU\\Software\\Probe\\MenuShowDelay", 1, "400");
        window.attach(events);
        engine.tree().TreeEinlesen();
        window.show();
    }
    void search(std::function<void(frmBVK_Suchen&)> act) {
        probe.port.onWindow("frmBVK_Suchen", driving<frmBVK_Suchen, SuchenRequest>(probe.port, std::move(act)));
        showSearch(engine, order);
    }
    static std::string hits(QWidget& dialog) {
        const auto& model = *named<QTreeView>(dialog, "lvSuchergebnis").model();
        std::string text;
        for (int row = 0; row < model.rowCount(); ++row)
            text += model.index(row, 0).data().toString().toStdString() + " " + model.index(row, 1).data().toString().toStdString() + "\n";
        return text;
    }
    QString shown() { return named<QLabel>(window, "lblDBTippU").text(); }
    EngineFixture probe;
    frmBVK_Prog window;
    TipEngine engine;
    EngineEvents events;
    SearchOrder order;
};

TEST_F(SearchWindow, HitsAreHeadRowsByNumber) {
    search([&](frmBVK_Suchen& dialog) {
        EXPECT_FALSE(named<QPushButton>(dialog, "cmdOK").isEnabled());
        auto& text = named<QLineEdit>(dialog, "txtSuchText");
        text.setText("menu");
        QTest::keyClick(&text, Qt::Key_Return);
        EXPECT_EQ(hits(dialog), "7 Menüs schneller öffnen\n12 Menüs am Rand\n");
        EXPECT_EQ(tabOrder(dialog, text), "txtSuchText cmdSuchen chkTabelle(0) chkTabelle(1) chkTabelle(2) chkOptionen(0) lvSuchergebnis cmdOK cmdAbbruch ");
        EXPECT_TRUE(named<QPushButton>(dialog, "cmdOK").isEnabled());
        named<QCheckBox>(dialog, "chkTabelle(0)").setChecked(false);
        clickOn(dialog, "cmdSuchen");
        EXPECT_EQ(hits(dialog), "");
        EXPECT_FALSE(named<QPushButton>(dialog, "cmdOK").isEnabled());
        text.setText("menüs am rand");
        clickOn(dialog, "chkOptionen(0)");
        clickOn(dialog, "cmdSuchen");
        EXPECT_EQ(hits(dialog), "12 Menüs am Rand\n");
        named<QCheckBox>(dialog, "chkTabelle(1)").setChecked(false);
        named<QCheckBox>(dialog, "chkTabelle(2)").setChecked(false);
        clickOn(dialog, "cmdSuchen");
        EXPECT_EQ(hits(dialog), "");
        clickOn(dialog, "cmdAbbruch");
    });
    EXPECT_EQ(shown(), "");
    search([&](frmBVK_Suchen& dialog) {
        EXPECT_EQ(named<QLineEdit>(dialog, "txtSuchText").text(), "menüs am rand") << "as it was left";
        EXPECT_FALSE(named<QCheckBox>(dialog, "chkTabelle(1)").isChecked());
        clickOn(dialog, "chkTabelle(1)");
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    search([&](frmBVK_Suchen& dialog) { EXPECT_TRUE(named<QCheckBox>(dialog, "chkTabelle(1)").isChecked()) << "left by Esc"; });
}

TEST_F(SearchWindow, AHitThatTheTabHidesIsShown) {
    named<TabStrip>(window, "tbsTree").findChildren<QToolButton*>().at(8)->click();
    EXPECT_EQ(probe.windows().tbsTree, 9);
    search([&](frmBVK_Suchen& dialog) {
        named<QLineEdit>(dialog, "txtSuchText").setText("einrahmen");
        clickOn(dialog, "cmdSuchen");
        QTest::keyClick(&named<QTreeView>(dialog, "lvSuchergebnis"), Qt::Key_Return);
    });
    EXPECT_EQ(probe.windows().tbsTree, 1);
    EXPECT_EQ(shown(), "Fenster einrahmen");
    const auto& tree = probe.windows();
    EXPECT_EQ(tree.tvBVKDB.at(static_cast<std::size_t>(tree.selectedNode)).text, "Fenster einrahmen");
}

TEST_F(SearchWindow, WhatCannotBeSavedStaysWithItsTip) {
    ASSERT_TRUE(engine.tree().showTipByHeading("Zahl"));
    auto& tree = named<QTreeView>(window, "tvBVKDB");
    const QModelIndex own = tree.currentIndex();
    auto& text = named<QLineEdit>(window, "txtTextWerte(0)");
    text.setText("keine Zahl");
    const auto refused = [&] { probe.port.expectBox("Sollen die Veränderungen gespeichert werden ?", Answer::Yes).expectBox("Erwartet wird eine Hexadezimalzahl"); };
    refused();
    search([&](frmBVK_Suchen& dialog) {
        named<QLineEdit>(dialog, "txtSuchText").setText("Rand");
        clickOn(dialog, "cmdSuchen");
        clickOn(dialog, "cmdOK");
    });
    refused();
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualRect(tree.model()->index(0, 0)).center());
    EXPECT_TRUE(probe.port.done());
    EXPECT_EQ(shown(), "Zahl");
    EXPECT_EQ(text.text(), "keine Zahl");
    EXPECT_EQ(tree.currentIndex(), own);
}

TEST_F(SearchWindow, AnApostropheEndsInTheDatabaseReport) {
    search([&](frmBVK_Suchen& dialog) {
        named<QLineEdit>(dialog, "txtSuchText").setText("' or Index > 0 or Überschrift Like '");
        probe.port.expectBox("RS.Source: Select Index, ", Answer::No);
        named<QLineEdit>(dialog, "txtSuchText").setText("it's");
        clickOn(dialog, "cmdSuchen");
        EXPECT_EQ(hits(dialog), "");
        EXPECT_EQ(named<QLabel>(dialog, "lblTreffer").text(), "Die Suche ist gescheitert. Einen Apostroph geben Sie bitte doppelt ein: ''");
        named<QLineEdit>(dialog, "txtSuchText").setText("it''s");
        clickOn(dialog, "cmdSuchen");
        EXPECT_EQ(named<QLabel>(dialog, "lblTreffer").text(), "0 Tipps gefunden");
    });
}

}  // namespace
}  // namespace brenvik::test
