// What the user does in a panel reaches the engine once and rightly; what the program does reaches it never.
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSlider>
#include <QTreeView>

#include "WindowFixture.h"
#include "shell/panels/PanelView.h"
#include "shell/panels/TextField.h"
#include "shell/panels/UpDown.h"
#include "shell/widgets/WrapButton.h"

namespace brenvik::test {

struct UserAct {
    const char* name;
    std::int16_t kind;
    std::function<void(QWidget& window)> act;
    Lines expected;
};

class PanelActs : public WindowFixture, public testing::WithParamInterface<UserAct> {};

template <class T> T& in(QWidget& window, const char* name) { return *window.findChild<T*>(QString::fromUtf8(name)); }

const UserAct Acts[] = {
    {"Check", 1, [](QWidget& w) { QTest::mouseClick(&in<QCheckBox>(w, "chkCheckBox(0)"), Qt::LeftButton); }, {"check 0 on"}},
    {"CheckKey", 1, [](QWidget& w) { QTest::keyClick(&in<QCheckBox>(w, "chkCheckBox(0)"), Qt::Key_Space); }, {"check 0 on"}},
    {"Text", 2, [](QWidget& w) { in<QLineEdit>(w, "txtTextWerte(0)").setText("grün"); }, {"text 0 grün"}},
    {"Slider", 3, [](QWidget& w) { in<QSlider>(w, "sliZahlenWerte(0)").setValue(70); }, {"number 0 70"}},
    {"UpDown", 3, [](QWidget& w) { QTest::mouseClick(&in<QWidget>(in<UpDown>(w, "updZahlenWerte(0)"), "updUp"), Qt::LeftButton); }, {"number 0 51"}},
    {"ArrowKey", 3, [](QWidget& w) { QTest::keyClick(&in<QLineEdit>(w, "txtZahlenWerte(0)"), Qt::Key_Down); }, {"number 0 49"}},
    {"Number", 3, [](QWidget& w) { in<QLineEdit>(w, "txtZahlenWerte(0)").setText("9x"); }, {"numberText 0 9x"}},
    {"Combo", 4, [](QWidget& w) { QTest::keyClick(&in<QComboBox>(w, "cboAuswahlBox(0)"), Qt::Key_Down); }, {"choose 0 1"}},
    {"Option", 5, [](QWidget& w) { QTest::mouseClick(&in<QRadioButton>(w, "opbOptionsAuswahl2(0)"), Qt::LeftButton); }, {"choose 0 1"}},
    {"PathChoice", 6, [](QWidget& w) { QTest::keyClick(&in<QComboBox>(w, "cboDrive"), Qt::Key_End); }, {"choose 0 1"}},
    {"PathText", 6, [](QWidget& w) { in<QLineEdit>(w, "txtDrive").setText("D:\\neu"); }, {"text 0 D:\\neu"}},
    {"Browse", 6, [](QWidget& w) { QTest::mouseClick(&in<QPushButton>(w, "cmdDrive"), Qt::LeftButton); }, {"browse 0"}},
    {"ColourChoice", 7, [](QWidget& w) { QTest::keyClick(&in<QComboBox>(w, "cboFarbe"), Qt::Key_Down); }, {"choose 0 1"}},
    {"Colour", 7, [](QWidget& w) { QTest::mouseClick(&in<QPushButton>(w, "cmdFarbe"), Qt::LeftButton); }, {"colour 0"}},
    {"Tick", 8,
     [](QWidget& w) {
         auto& list = in<QTreeView>(w, "lvListe");
         list.model()->setData(list.model()->index(1, 0), Qt::Unchecked, Qt::CheckStateRole);
     },
     {"tick 0 1 off"}},
    {"Row", 10, [](QWidget& w) { auto& list = in<QTreeView>(w, "lvListe"); list.setCurrentIndex(list.model()->index(1, 0)); }, {"row 0 1"}},
    {"TickByKey", 10,
     [](QWidget& w) {
         auto& list = in<QTreeView>(w, "lvListe");
         list.setCurrentIndex(list.model()->index(0, 0));
         QTest::keyClick(&list, Qt::Key_Space);
     },
     {"row 0 0", "tick 0 0 on"}},
    {"BootEntry", 9, [](QWidget& w) { QTest::keyClick(&in<QComboBox>(w, "cboBootINI"), Qt::Key_Down); }, {"choose 0 1"}},
    {"BootTitle", 9, [](QWidget& w) { in<QLineEdit>(w, "txtBINI").setText("Neu"); }, {"title 0 Neu"}},
    {"BootSwitch", 9, [](QWidget& w) { QTest::mouseClick(&in<QCheckBox>(w, "chkBootINI(1)"), Qt::LeftButton); }, {"switch 0 1 on"}},
    {"BootValue", 9, [](QWidget& w) { in<QLineEdit>(w, "txtBootINI(1)").setText("64"); }, {"switchText 0 1 64"}},
    {"Bit", 11, [](QWidget& w) { QTest::mouseClick(&in<QCheckBox>(w, "chkBitMaske(1)"), Qt::LeftButton); }, {"switch 0 1 off"}},
};

TEST_P(PanelActs, ReachTheEngineOnceAndDrawingNever) {
    showPanels({panelOfKind(GetParam().kind)});
    record.panels[0].status = {"[Registry Wert nicht vorhanden]", StatusColour::Missing};
    window.panelChanged(0);
    EXPECT_EQ(log.take(), Lines{});
    EXPECT_EQ(control<QLabel>("lblStatus(0)").text(), "[Registry Wert nicht vorhanden]");

    GetParam().act(window);
    EXPECT_EQ(log.take(), GetParam().expected);

    showPanels({});
    EXPECT_EQ(log.take(), Lines{});
}

// A save while the box is being clicked takes the panels away and builds others: nothing may crash, nothing old answers.
TEST_P(PanelActs, MayReplaceThePanelUnderTheUsersHand) {
    showPanels({panelOfKind(GetParam().kind)});
    log.reaction = [this](const std::string&) {
        log.reaction = nullptr;
        record.panels = {panelOfKind(art::CheckBox)};
        window.panelsChanged();
    };
    GetParam().act(window);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(log.take().size(), 1u);
    EXPECT_EQ(window.findChildren<PanelView*>().size(), 1);
    EXPECT_FALSE(control<QCheckBox>("chkCheckBox(0)").isChecked());
}

INSTANTIATE_TEST_SUITE_P(All, PanelActs, testing::ValuesIn(Acts), [](const auto& one) { return std::string(one.param.name); });

TEST_F(WindowFixture, PanelsShowTheirRecord) {
    Panel number = panelOfKind(art::ZahlenWerte);
    number.Min = -5;
    number.Max = 2'000'000'000;
    number.Value = 1234;
    number.numberText = "12345x";
    number.numberInvalid = true;
    Panel check = panelOfKind(art::CheckBox);
    check.index = 3;
    check.chkBeschriftung = "Kopieren & Einfügen";
    check.ticked = true;
    check.readOnly = true;
    Panel combo = panelOfKind(art::AuswahlBox);
    combo.chosen = -1;
    Panel lines = panelOfKind(art::TextWerte);
    lines.multiLine = true;
    lines.text = "eins\nzwei";
    showPanels({number, check, combo, lines, panelOfKind(art::OptionsAuswahl)});
    EXPECT_EQ(control<QSlider>("sliZahlenWerte(0)").value(), 1234);
    EXPECT_EQ(control<QSlider>("sliZahlenWerte(0)").maximum(), 2'000'000'000);
    EXPECT_GE(control<QSlider>("sliZahlenWerte(0)").tickInterval(), 2'000'000'000 / 25) << "each tick is drawn on its own";
    EXPECT_EQ(control<QLineEdit>("txtZahlenWerte(0)").text(), "12345x");
    EXPECT_TRUE(control<QCheckBox>("chkCheckBox(3)").isChecked());
    EXPECT_FALSE(control<QCheckBox>("chkCheckBox(3)").isEnabled());
    EXPECT_EQ(control<QCheckBox>("chkCheckBox(3)").text(), "Kopieren && Einfügen");
    EXPECT_EQ(control<QComboBox>("cboAuswahlBox(0)").currentIndex(), -1);
    EXPECT_EQ(control<QPlainTextEdit>("txtTextWerte(0)").toPlainText(), "eins\nzwei");
    for (const char* option : {"opbOptionsAuswahl1(0)", "opbOptionsAuswahl2(0)", "opbOptionsAuswahl3(0)"})
        EXPECT_FALSE(control<QRadioButton>(option).isChecked());
    EXPECT_FALSE(control<QRadioButton>("opbOptionsAuswahl4(0)").isVisible());
}

TEST_F(WindowFixture, ATextStaysUnderTheCursorWhileTheEngineEchoesIt) {
    showPanels({panelOfKind(art::TextWerte)});
    log.reaction = [this](const std::string& line) {
        if (line.rfind("text 0 ", 0) != 0) return;
        record.panels[0].text = line.substr(7);
        window.panelChanged(0);
    };
    auto& field = control<QLineEdit>("txtTextWerte(0)");
    field.setCursorPosition(1);
    QTest::keyClick(&field, 'x');
    EXPECT_EQ(field.text(), "axlt");
    EXPECT_EQ(field.cursorPosition(), 2);
}

// Shown in part it could be saved in part.
TEST_F(WindowFixture, ATextTooLongToEditIsNeverEditable) {
    Panel text = panelOfKind(art::TextWerte);
    text.text.assign(TextField::LongestShown, 'a');
    showPanels({text});
    EXPECT_EQ(control<QLineEdit>("txtTextWerte(0)").text().size(), static_cast<qsizetype>(TextField::LongestShown));
    EXPECT_FALSE(control<QLineEdit>("txtTextWerte(0)").isReadOnly());
    record.panels[0].text += 'a';
    window.panelChanged(0);
    EXPECT_TRUE(control<QLineEdit>("txtTextWerte(0)").isReadOnly());
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(WindowFixture, AMillionRowsStayResponsive) {
    Panel list = panelOfKind(art::Liste);
    list.lines.assign(100'000, {"Zeile", "", false});
    showPanels({list});
    EXPECT_EQ(control<QTreeView>("lvListe").model()->rowCount(), 100'000);
    record.panels.clear();           // the engine has begun with the next Tip, the view is still there
    EXPECT_FALSE(control<QTreeView>("lvListe").model()->index(5, 0).data().isValid());
}

TEST_F(WindowFixture, PanelsComeBetweenTreeAndActionRowInTabOrder) {
    showPanels({panelOfKind(art::CheckBox), panelOfKind(art::ZahlenWerte)});
    QStringList names;
    QWidget* widget = &control<QWidget>("tvBVKDB");
    do {
        if (widget->focusPolicy() & Qt::TabFocus && !widget->objectName().startsWith("qt_") && !widget->objectName().isEmpty()) names << widget->objectName();
        widget = widget->nextInFocusChain();
    } while (widget->objectName() != "txtInfo");
    EXPECT_EQ(names.join(' '), "tvBVKDB chkCheckBox(0) sliZahlenWerte(0) txtZahlenWerte(0) cmdRegSave cmdRegDel cmdKeyInfo cmdDefault");
}

}  // namespace brenvik::test
