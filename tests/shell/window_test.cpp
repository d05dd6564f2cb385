// Commands, tree, layout of the main window.
#include <QMenu>
#include <QPlainTextEdit>
#include <set>

#include "WindowFixture.h"
#include "shell/widgets/Twips.h"

namespace brenvik::test {

using Names = std::set<std::string>;

class Commands : public WindowFixture {
protected:
    Names enabled() {
        Names names;
        for (const QAction* action : window.findChildren<QAction*>())
            if (action->data().isValid() && action->isEnabled() && !action->objectName().isEmpty()) names.insert(utf8(action->objectName()));
        for (const char* button : {"cmdRegSave", "cmdRegDel", "cmdKeyInfo", "cmdDefault"})
            if (control<QPushButton>(button).isEnabled()) names.insert(button);
        return names;
    }
};

TEST_F(Commands, AreThereButDisabledUntilSomebodyHandlesThem) {
    EXPECT_EQ(enabled(), (Names{"mnuBeenden", "mnuFavShow", "mnuFavButton", "mnuIcoTXTOn", "mnuIcoTXTOff", "tbrExit"}));
}

TEST_F(Commands, AFlagServesAllControlsOfItsCommand) {
    for (int command = 0; command <= static_cast<int>(Command::History); ++command)
        if (enableFlagOf(static_cast<Command>(command))) window.setCommand(static_cast<Command>(command), [] {});
    const Names always = enabled();
    const std::pair<bool MainWindow::*, Names> pairs[] = {
        {&MainWindow::KeySave, {"tbrRegSave", "mnuRegSave", "cmdRegSave"}},
        {&MainWindow::KeyDel, {"cmdRegDel", "mnuRegDel", "tbrRegDel"}},
        {&MainWindow::Default, {"cmdDefault", "mnuDefault"}},
        {&MainWindow::RegFile, {"tbrRegFileSave", "tbrAddRegListe", "mnuAddRegListe", "mnuRegFileSave"}},
        {&MainWindow::ADMFile, {"tbrADMFileSave", "tbrAddADMListe", "mnuAddADMListe", "mnuADMFileSave"}},
        {&MainWindow::KeyInfo, {"cmdKeyInfo", "mnuKeyInfo"}},
        {&MainWindow::RegListe, {"mnuSrvRegListe", "tbrSrvRegListe"}},
        {&MainWindow::ADMListe, {"mnuSrvADMListe", "tbrSrvADMListe"}},
        {&MainWindow::mnuBSFreigabe, {"mnuBSFreigabe"}},
        {&MainWindow::tbrHistory, {"tbrHistory"}},
    };
    for (const auto& [flag, names] : pairs) {
        record.*flag = true;
        window.windowChanged();
        Names with = always;
        with.insert(names.begin(), names.end());
        EXPECT_EQ(enabled(), with);
        record.*flag = false;
    }
}

TEST_F(Commands, HandOnTheCaptionOfTheControlThatWasUsed) {
    record.fraSteuerung = record.KeySave = record.Default = record.KeyDel = true;
    window.windowChanged();
    EXPECT_EQ(window.menus().action("mnuRegSave")->text(), "Wert s&peichern...") << "until the first Tip";
    record.mnuRegSave = "Wert &speichern...";
    record.cmdRegSave = "&Neu";
    record.cmdDefault = "&Bearbeiten";
    record.mnuDefault = "Stan&dard...";
    window.windowChanged();
    log.take();
    window.menus().action("mnuRegSave")->trigger();
    window.coolBar().button("tbrRegSave")->trigger();
    QTest::mouseClick(&control<QPushButton>("cmdRegSave"), Qt::LeftButton);
    window.menus().action("mnuDefault")->trigger();
    QTest::mouseClick(&control<QPushButton>("cmdDefault"), Qt::LeftButton);
    window.coolBar().button("tbrRegDel")->trigger();
    EXPECT_EQ(log.take(), (Lines{"save Wert &speichern...", "save &Neu", "save &Neu", "default Stan&dard...", "default &Bearbeiten", "delete"}));
}

TEST_F(Commands, ControlSSavesThroughTheButtonAndControlFSearches) {
    int searches = 0;
    window.setCommand(Command::Suchen, [&] { ++searches; });
    record.fraSteuerung = true;
    window.windowChanged();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(log.take(), Lines{}) << "the button is disabled";
    QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(searches, 1);
}

TEST_F(Commands, WhatTheSystemHidesIsHidden) {
    record.hidden["System"] = {"mnusugverif", "mnuDrWotson16"};
    record.blnNTFamilie = false;
    window.windowChanged();
    for (const char* hidden : {"mnusugverif", "mnuDrWotson16", "mnuRegedt32"}) EXPECT_FALSE(window.menus().action(hidden)->isVisible()) << hidden;
    for (const char* hidden : {"tbrNetz", "tbrProfil"}) EXPECT_FALSE(window.coolBar().button(hidden)->isVisible()) << hidden;
    record.hidden.clear();
    record.blnNTFamilie = true;
    window.windowChanged();
    for (const char* shown : {"mnusugverif", "mnuDrWotson16", "mnuRegedt32"}) EXPECT_TRUE(window.menus().action(shown)->isVisible()) << shown;
    EXPECT_TRUE(window.coolBar().button("tbrNetz")->isVisible());
}

class Tree : public WindowFixture {
protected:
    Tree() {
        const int group = addNode(record, 0, "System", TreeNode::Art::Gruppe, 1);
        record.tvBVKDB[static_cast<std::size_t>(group)].Sorted = true;
        for (const char* text : {"Zeit", "ähnlich", "apfel", "Boot"}) addNode(record, group, text, TreeNode::Art::Tipp);
        const int gone = addNode(record, 0, "leer", TreeNode::Art::Gruppe, 1);
        record.tvBVKDB[0].kinder.pop_back();        // taken out again by the engine
        removed = gone;
        record.selectedNode = 3;
        window.treeChanged();
    }
    TipTreeView& tree() { return control<TipTreeView>("tvBVKDB"); }
    int removed = 0;
};

TEST_F(Tree, ShowsTheNodesInOrderAndSelectsWithoutAnEvent) {
    const QAbstractItemModel& model = *tree().model();
    const QModelIndex root = model.index(0, 0), group = model.index(0, 0, root);
    EXPECT_EQ(model.rowCount(root), 1) << "a node taken out is not shown";
    QStringList texts;
    for (int row = 0; row < model.rowCount(group); ++row) {
        texts << model.index(row, 0, group).data().toString();
        EXPECT_EQ(model.index(row, 0, group).parent(), group);
    }
    EXPECT_EQ(texts.join(' '), "ähnlich apfel Boot Zeit") ;
    EXPECT_EQ(tree().currentIndex().data().toString(), "ähnlich");
    EXPECT_TRUE(tree().isExpanded(root));
    EXPECT_TRUE(tree().isExpanded(group)) << "the selected node is made visible";
    record.selectedNode = 5;
    window.selectionChanged();
    EXPECT_EQ(tree().currentIndex().data().toString(), "Boot");
    record.tvBVKDB.clear();                          // the engine builds the next tree, events run meanwhile
    EXPECT_FALSE(tree().currentIndex().data().isValid());
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(Tree, AClickAndAReleasedKeyChooseANode) {
    tree().setFocus();
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, tree().visualRect(tree().currentIndex()).center());
    EXPECT_EQ(log.take(), Lines{"node 3"});
    QTest::keyClick(&tree(), Qt::Key_Down);
    EXPECT_EQ(log.take(), Lines{"node 4"});
    QTest::keyRelease(&tree(), Qt::Key_Tab);                          // the key that brought the focus here
    QTest::keyClick(&tree(), Qt::Key_Control);
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(WindowFixture, DescriptionStatusAndRegionsFollowTheRecord) {
    EXPECT_TRUE(control<QFrame>("fraBVKLogo").isVisible());
    EXPECT_FALSE(control<QFrame>("fraSteuerung").isVisible());
    record.sbrBVK = {"PC: X", "Tipp ist geeignet für: XP", "Index: 7"};
    record.txtInfo = "eins\r\nzwei";
    record.fraInfo = "Achtung";
    record.fraInfoFarbe = TextColour::Rot;
    record.lblDBTippU = "Überschrift";
    showPanels({panelOfKind(art::CheckBox)});
    EXPECT_FALSE(control<QFrame>("fraBVKLogo").isVisible());
    EXPECT_TRUE(control<QFrame>("fraSteuerung").isVisible());
    EXPECT_EQ(control<QPlainTextEdit>("txtInfo").toPlainText(), "eins\nzwei");
    EXPECT_EQ(control<QLabel>("fraInfo.Caption").text(), "Achtung");
    EXPECT_GT(control<QLabel>("fraInfo.Caption").palette().color(QPalette::WindowText).red(), 150);
    EXPECT_EQ(control<QLabel>("lblDBTippU").text(), "Überschrift");
    EXPECT_EQ(control<QLabel>("sbrBVK(2)").text(), "Tipp ist geeignet für: XP");
}

TEST_F(WindowFixture, SplittersKeepTheirLimits) {
    const auto left = [&] { return toTwips(control<SplitterBar>("imgSplitterV").x()); };
    const auto top = [&] { return toTwips(control<SplitterBar>("imgSplitterH").y()); };
    window.SizeControlsV(100);
    window.SizeControlsH(100);
    EXPECT_EQ(window.presentSettings().SplitterVLeft, 3400);
    EXPECT_EQ(window.presentSettings().SplitterHTop, 4300);
    const auto drag = [&](const char* name, QPoint by) {
        auto& splitter = control<SplitterBar>(name);
        const QPoint from(2, 2);
        QTest::mousePress(&splitter, Qt::LeftButton, {}, from);
        QTest::mouseMove(&splitter, from + by);
        const QPoint during = splitter.pos();
        QTest::mouseRelease(&splitter, Qt::LeftButton, {}, from + by);
        return during;
    };
    const QPoint before = control<SplitterBar>("imgSplitterV").pos();
    EXPECT_EQ(drag("imgSplitterV", {60, 0}), before) << "only the bar moves";
    EXPECT_NEAR(left(), 3400 + 60 * 15, 15);
    drag("imgSplitterV", {-5000, 0});
    EXPECT_NEAR(left(), 3400, 15);
    drag("imgSplitterV", {5000, 0});
    EXPECT_NEAR(left(), toTwips(window.width()) - 3400, 15);
    drag("imgSplitterH", {0, 5000});
    EXPECT_NEAR(top(), toTwips(window.height()) - 2300, 15);
    QTest::keyClick(&control<SplitterBar>("imgSplitterH"), Qt::Key_Up);
    EXPECT_NEAR(top(), toTwips(window.height()) - 2300 - 225, 15);
    EXPECT_EQ((SplitterLimits{226, 100}.bounded(150)), 226) << "the lower limit is tested first";
}

}  // namespace brenvik::test
