// The export commands in the real window: entries wait for what makes sense, the list's window shows and thins the list.
#include <QListWidget>

#include "WindowFixture.h"
#include "shell/program/ConnectExport.h"
#include "shell/tipwindows/frmBVK_TippFileSave.h"
#include "tipengine/EngineFixture.h"

namespace brenvik::test {

TEST(ExportWindow, TipsAreCollectedLookedAtAndDeleted) {
    EngineFixture probe({{.Index = 1, .Überschrift = "Eins", .Datentyp = 1, .Wertname = "Eins", .WertEin = "1", .WertAus = "0"},
                 {.Index = 2, .Überschrift = "Zwei", .Datentyp = 1, .Wertname = "Zwei", .WertEin = "1", .WertAus = "0"}});
    for (const char* name : {"Eins", "Zwei"}) probe.put(std::string("HKCU\\Software\\Probe\\") + name, 1, "0");
    frmBVK_Prog window(probe.ctx->frmBVK_Prog, probe.ctx->einstellungen, displayOrder);
    EventLog log;
    window.attach(log);
    ExportLists lists;
    Export exports(*probe.engine, lists);
    connectExport(window, exports);
    const auto action = [&](const char* name) { return window.menus().action(QLatin1String(name)); };

    EXPECT_FALSE(action("mnuRegFileSave")->isEnabled() || action("mnuAddRegListe")->isEnabled() || action("mnuSrvRegListe")->isEnabled());
    EXPECT_TRUE(action("mnuListeLaden")->isEnabled());   // a list can be loaded before any Tip was added
    probe.port.expectFile(std::nullopt);
    action("mnuListeLaden")->trigger();
    for (const char* title : {"Eins", "Zwei"}) {
        probe.show(title);
        window.windowChanged();
        EXPECT_TRUE(action("mnuRegFileSave")->isEnabled() && action("mnuADMFileSave")->isEnabled());
        action("mnuAddRegListe")->trigger();
    }
    EXPECT_EQ(window.findChild<QLabel*>(QStringLiteral("sbrBVK(3)"))->text(), QStringLiteral("Index: 2  |  Zur REG-Liste hinzugefügt (Tipps darin: 2)"));
    EXPECT_TRUE(action("mnuSrvRegListe")->isEnabled());
    EXPECT_FALSE(action("mnuSrvADMListe")->isEnabled());
    probe.port.onWindow("frmBVK_TippFileSave", [&](WindowRequest& request) {
        frmBVK_TippFileSave dialog(dynamic_cast<TippFileSaveRequest&>(request), &window);
        dialog.show();
        const auto button = [&](const char* name) { return dialog.findChild<QPushButton*>(QLatin1String(name)); };
        const auto* list = dialog.findChild<QListWidget*>(QStringLiteral("lvRegList"));
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("REG-File-Liste speichern..."));
        ASSERT_EQ(list->count(), 2);
        EXPECT_TRUE(button("cmdSave")->isDefault());
        probe.port.expectBox("Achtung: Soll der Eintrag: Eins gelöscht werden?", Answer::Yes);
        QTest::keyClick(dialog.findChild<QListWidget*>(QStringLiteral("lvRegList")), Qt::Key_Delete);
        ASSERT_EQ(list->count(), 1);
        EXPECT_EQ(list->item(0)->text(), QStringLiteral("Zwei"));
        probe.port.expectBox("Achtung: Alle Einträge", Answer::Yes);
        QTest::mouseClick(button("cmdDelAll"), Qt::LeftButton);   // counts the one row: the first element, which is gone already
        EXPECT_EQ(list->count(), 0);
        EXPECT_FALSE(button("cmdSave")->isEnabled() || button("cmdDel")->isEnabled() || button("cmdDelAll")->isEnabled());
        EXPECT_TRUE(button("cmdListeLaden")->isEnabled());
        QTest::mouseClick(button("cmdExit"), Qt::LeftButton);
        EXPECT_FALSE(dialog.isVisible());
    });
    action("mnuSrvRegListe")->trigger();
    EXPECT_EQ(probe.port.windows.size(), 1u);
    EXPECT_FALSE(action("mnuSrvRegListe")->isEnabled());
    EXPECT_FALSE(lists.RegListe[1].Geloescht);
}

}  // namespace brenvik::test
