// The windows of the start, and the one that arranges a toolbar.
#include <QContextMenuEvent>
#include <QElapsedTimer>
#include <QProgressBar>
#include <QTimer>

#include "WindowFixture.h"
#include "shell/tipwindows/frmBVK_Parameter.h"
#include "shell/windows/frmBVK_Info.h"
#include "shell/windows/frmBVK_OSErkennung.h"
#include "shell/windows/frmBVK_Symbolleiste.h"
#include "support/ScriptedPort.h"
#include "support/TestPlatform.h"

namespace brenvik::test {
namespace {

QString textOf(const QWidget& window, const char* label) { return window.findChild<QLabel*>(QLatin1String(label))->text(); }

struct StartWindow : testing::Test {
    StartWindow() {
        ctx.strProgVersion = "1.2.3";
        ctx.strStartInfo = "Lade Grundeinstellungen...";
    }
    ScriptedPort port;
    TestPlatform platform;
    FrameContext ctx{port, platform};
};

}  // namespace

TEST_F(StartWindow, TellsWhatIsLoaded) {
    frmBVK_Info info(ctx);
    info.show();
    EXPECT_EQ(textOf(info, "lblBVKVersion"), "Programm Version: 1.2.3");
    EXPECT_EQ(textOf(info, "lblBVKDate"), "09.11.2002");
    EXPECT_EQ(textOf(info, "lblStart"), "Lade Programmmodule:");
    EXPECT_EQ(textOf(info, "lblStartInfo"), "Lade Grundeinstellungen...");
    EXPECT_TRUE(textOf(info, "lblBVKInfoText").startsWith("Achtung: Für etwaige Schäden"));
    ctx.strStartInfo = "Lade Datenbank...";
    info.Update(70);
    EXPECT_EQ(textOf(info, "lblStartInfo"), "Lade Datenbank...");
    EXPECT_EQ(info.findChild<QProgressBar*>("ProgressBar1")->value(), 70);
    info.Update(50);
    EXPECT_EQ(info.findChild<QProgressBar*>("ProgressBar1")->value(), 50) << "the bar goes back as it is told";
}

TEST_F(StartWindow, ThePauseEndsAtAClickOrAKey) {
    const std::function<void(QWidget&)> acts[] = {[](QWidget& w) { QTest::mouseClick(&w, Qt::LeftButton); }, [](QWidget& w) { QTest::keyClick(&w, Qt::Key_Space); }};
    for (const auto& act : acts) {
        frmBVK_Info info(ctx);
        info.show();
        QElapsedTimer time;
        time.start();
        QTimer::singleShot(100, &info, [&] { act(info); });
        info.Update(100);
        EXPECT_GE(time.elapsed(), 90);
        EXPECT_LT(time.elapsed(), frmBVK_Info::PauseMs / 2);
        EXPECT_EQ(port.eventRuns, 1);
        port.eventRuns = 0;
    }
}

TEST_F(StartWindow, WithoutShowInfoThereIsNoPause) {
    ctx.einstellungen.ShowInfo = false;
    frmBVK_Info info(ctx);
    QElapsedTimer time;
    time.start();
    info.Update(100);
    EXPECT_LT(time.elapsed(), 1000);
}

TEST(Centring, PutsAWindowIntoTheMiddleOfAnotherAndOntoTheScreen) {
    QWidget window;
    window.resize(200, 100);
    FormZentrieren({100, 50, 400, 300}, window);
    EXPECT_EQ(window.pos(), QPoint(200, 150));
    FormZentrieren({50'000, 50'000, 400, 300}, window);
    EXPECT_TRUE(QGuiApplication::primaryScreen()->geometry().contains(window.geometry()));
}

TEST(ParameterWindow, ShowsTheSwitchesAndCloses) {
    ParameterRequest request;
    frmBVK_Parameter window(request, nullptr);
    window.show();
    EXPECT_EQ(textOf(window, "lblInfo"), "Sie können den Brenvik mit folgenden Parametern aufrufen:");
    EXPECT_EQ(textOf(window, "lblBVKStart"), "BVK.EXE [/PC:<Rechnername>] [/U:<Account> /PW:<Passwort>]");
    EXPECT_EQ(textOf(window, "lblParam2"), "/U:<Account");
    EXPECT_TRUE(textOf(window, "lblParam3TXT").endsWith("Beispiel: /U:Dom1\\Admin /PW:Test"));
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_FALSE(window.isVisible());
}

TEST(OSDetection, ShowsTheFigures) {
    OSErkennungRequest request;
    request.version.dwMajorVersion = 7;
    request.version.dwMinorVersion = 3;
    request.version.dwBuildNumber = 99;
    request.version.dwPlatformId = 5;
    frmBVK_OSErkennung window(request, nullptr);
    window.show();
    EXPECT_EQ(window.windowTitle(), "BS Version wurde nicht erkannt");
    EXPECT_EQ(textOf(window, "lblOSVersionAnz") + textOf(window, "lblOSMajorAnz") + textOf(window, "lblOSMinorAnz") + textOf(window, "lblOSBuildAnz") + textOf(window, "lblOSIDAnz"),
              "14873995");
    EXPECT_EQ(textOf(window, "lblOSID"), "Platform-ID:");
    QTest::mouseClick(window.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
    EXPECT_FALSE(window.isVisible());
}

TEST(ButtonOrders, ComeBackFromTheirTexts) {
    const ButtonOrder standard{{"a"}, {"b"}, {"|"}, {"c"}};
    EXPECT_EQ(buttonOrderText(standard), "a,b,|,c");
    const std::pair<const char*, const char*> cases[] = {{"", "a,b,|,c"}, {"c,|,-a,b", "c,|,-a,b"}, {"c", "c,a,b"}, {"x,b,b,-b", "b,a,c"}, {"-a,-b,-c", "a,b,|,c"},
                                                         {"|,|", "a,b,|,c"}, {",,c;a", "a,b,|,c"}};
    for (const auto& [text, result] : cases) EXPECT_EQ(buttonOrderText(buttonOrder(text, standard)), result) << text;
}

TEST_F(WindowFixture, AToolbarIsArrangedInItsWindow) {
    auto& bar = control<QToolBar>("tbrFavoriten");
    QTimer::singleShot(0, qApp, [] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        QTimer::singleShot(0, qApp, [] {
            auto* dialog = dynamic_cast<frmBVK_Symbolleiste*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            auto* list = dialog->findChild<QListWidget*>("lstButtons");
            EXPECT_EQ(list->count(), 2);
            list->setCurrentRow(1);
            dialog->findChild<QPushButton*>("cmdUp")->click();
            list->item(0)->setCheckState(Qt::Unchecked);
            EXPECT_TRUE(dialog->findChild<QPushButton*>("cmdOK")->isEnabled());
            list->item(1)->setCheckState(Qt::Unchecked);
            EXPECT_FALSE(dialog->findChild<QPushButton*>("cmdOK")->isEnabled()) << "one button stays";
            list->item(1)->setCheckState(Qt::Checked);
            dialog->findChild<QPushButton*>("cmdOK")->click();
        });
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().first()).center());
    });
    QContextMenuEvent event(QContextMenuEvent::Mouse, {2, 2}, bar.mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(&bar, &event);
    EXPECT_EQ(window.coolBar().arrangement("tbrFavoriten"), "-FavDel,FavAdd");
    EXPECT_EQ(bar.actions().size(), 1);
    EXPECT_EQ(bar.widgetForAction(bar.actions().first())->objectName(), "FavAdd");
}

}  // namespace brenvik::test
