// The load sequence with the areas of the real window: what one of them decided stands when the next has had its turn.
#include "ProgramFixture.h"
#include "frame/program/StartPassword.h"
#include "shell/tipwindows/frmBVK_PWAbfrage.h"
#include "shell/windows/frmBVK_OSInfo.h"
#include "shell/windows/frmBVK_Optionen.h"
#include "support/CommandRun.h"

namespace brenvik::test {
namespace {

constexpr const char* NtVersion = "HKLM\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\";

class Start : public ProgramFixture {
protected:
    // A home that has been started once, with another system in its registry.
    void homeOf(const std::vector<std::pair<const char*, std::string>>& figures, bool numbers = false) {
        ASSERT_TRUE(start());
        for (const auto& [name, text] : figures) SaveRegistryKey(ctx(), std::string(NtVersion) + name, text, static_cast<std::int16_t>(numbers && std::string(name).find("Number") != std::string::npos && text.size() < 3 ? 4 : 1));
        end();
    }
    bool shown(const char* entry) { return window().menus().action(QLatin1String(entry))->isVisible(); }
};

TEST_F(Start, WhatTheListsHideStaysHidden) {
    homeOf({{"CurrentVersion", "4.0"}});
    std::filesystem::remove(home / "Favoriten.txt");
    std::filesystem::create_directories(home / "Favoriten.txt");
    port.expect("Auf die Datei: Favoriten.txt", Answer::Cancel).expect("Die Favoriten Liste wurde deaktiviert");
    ASSERT_TRUE(start());
    for (const char* entry : {"mnuFav", "mnuFavShow", "mnuFavButton", "mnugpedit", "mnudxdiag"}) EXPECT_FALSE(shown(entry)) << entry;
    for (const char* entry : {"mnuTools", "mnueventvwr", "mnuAnsicht"}) EXPECT_TRUE(shown(entry)) << entry;
    EXPECT_FALSE(control<QWidget>("tbrFavoriten").isVisible());
    EXPECT_TRUE(window().coolBar().button("tbrHistory")->isVisible());
}

TEST_F(Start, ASystemThatTheTableLacksIsCalledWhatItIs) {
    homeOf({{"CurrentVersion", "6.3"}, {"CurrentMajorVersionNumber", "10"}, {"CurrentMinorVersionNumber", "0"}, {"CurrentBuildNumber", "22631"}}, true);
    ASSERT_TRUE(start());
    EXPECT_EQ(ctx().intBS, 0);
    EXPECT_EQ(ctx().strBS, "Unbekanntes Betriebssystem");
    EXPECT_EQ(control<QLabel>("sbrBVK(1)").text(), "PC: BRENVIK-PC");
    frmBVK_OSInfo info(ctx(), nullptr);
    EXPECT_EQ(info.findChild<QLineEdit*>("txtOS")->text(), "Unbekanntes Betriebssystem (Windows 11)");
    EXPECT_EQ(info.findChild<QLineEdit*>("txtVersion")->text(), "10.0");
}

TEST_F(Start, TheShippedRegistryTellsTheBrowser) {
    ASSERT_TRUE(start());
    EXPECT_EQ(browserVersionText(ctx()), "6.00.2600");
}

TEST_F(Start, ASecondStartRaisesTheQuestionForThePassword) {
    ASSERT_TRUE(start());
    setStartPassword(ctx().einstellungen, true, "geheim", {2002, 11, 9, 12, 30, 0});
    saveCoreSettings(ctx());
    end();
    bool raised = false;
    port.registerWindow("frmBVK_PWAbfrage", [&](QtPort& asked, QWidget* parent, WindowRequest& request) {
        frmBVK_PWAbfrage question(asked, dynamic_cast<PWAbfrageRequest&>(request), parent);
        question.setModal(true);   // as exec() would; it comes after all that is shown beside it
        question.show();
        QWidget elsewhere;      // the user has turned to another window
        elsewhere.show();
        elsewhere.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&elsewhere));
        window().bringToFront({});
        raised = QTest::qWaitFor([&] { return question.isActiveWindow(); }, 5000);
        EXPECT_FALSE(window().isVisible());
    });
    EXPECT_FALSE(start()) << "nobody gave the password";
    EXPECT_TRUE(raised);
}

TEST_F(Start, AnIncompleteDriveIsOfferedToBeCompleted) {
    ASSERT_TRUE(start());
    end();
    for (const char* file : {"drive_c.ganz", "drive_c/boot.ini"}) std::filesystem::remove(home / file);
    home.put("drive_c/WINDOWS/win.ini", "eigen");
    port.expect("Es fehlen:\r\n\r\nC:\\boot.ini\r\n", Answer::Yes);
    ASSERT_TRUE(start());
    EXPECT_TRUE(std::filesystem::exists(home / "drive_c/boot.ini"));
    EXPECT_EQ(bytesOf(home / "drive_c/WINDOWS/win.ini"), "eigen");
    end();
    for (const char* file : {"drive_c.ganz", "drive_c/boot.ini"}) std::filesystem::remove(home / file);
    port.expect("Es fehlen:", Answer::No);
    ASSERT_TRUE(start());
    end();
    ASSERT_TRUE(start()) << "No is for good";
}

TEST_F(Start, AMaximisedWindowComesBackAsOneAndKeepsItsPlace) {
    ASSERT_TRUE(start());
    window().move(40, 50);
    window().resize(760, 620);
    QTest::qWait(400);
    for (int round = 0; round < 3; ++round) {
        window().showMaximized();
        EXPECT_TRUE(QTest::qWaitFor([&] { return window().isMaximized(); }));
        EXPECT_TRUE(window().close());
        end();
        ASSERT_TRUE(start());
        EXPECT_TRUE(window().isMaximized());
        const MainWindowSettings place = window().presentSettings();
        EXPECT_EQ((std::array{place.MainLeft, place.MainTop, place.MainWidth, place.MainHeight}), (std::array{600.0, 750.0, 11400.0, 9300.0})) << round;
    }
}

TEST_F(Start, AMistypedFolderLeavesTheListWhereItWas) {
    ASSERT_TRUE(start());
    inWindow<frmBVK_Optionen, OptionenRequest>("frmBVK_Optionen", [this](frmBVK_Optionen& dialog) {
        dialog.findChild<QLineEdit*>("txtHistoryPfad")->setText(qt((home / "vertippt").string()));
        dialog.findChild<QLineEdit*>("txtFavoritePfad")->clear();
        pressIn(dialog, "cmdOptOK");
    });
    port.expect("Auf die Datei: History.txt", Answer::Cancel).expect("Die Liste bleibt in ihrem bisherigen Verzeichnis: " + home.path().string() + "/");
    menu("mnuOptionen");
    EXPECT_TRUE(ctx().blnHistoryAktiv && window().coolBar().button("tbrHistory")->isVisible());
    EXPECT_EQ(ctx().einstellungen.strHistoryPfad, home.path().string() + "/");
    EXPECT_EQ(ctx().einstellungen.strFavoritenPfad, home.path().string() + "/") << "an emptied field means the standard folder";
}

TEST_F(Start, TheHelpMenuLeadsToTheLogAndTheHome) {
    ASSERT_TRUE(start());
    menu("mnuProtokoll");
    menu("mnuProgrammordner");
    EXPECT_EQ(port.addresses, (std::vector<std::string>{"file://" + (home / "brenvik.log").string(), "file://" + home.path().string()}));
    std::filesystem::remove(home / "brenvik.log");
    port.expect("Es gibt noch kein Protokoll");
    menu("mnuProtokoll");
}

TEST(WithoutADisplay, EndsWithOneLine) {
    TempDir dir;
    const CommandRun end = run(std::filesystem::path(BRENVIK_PROGRAMM_DIR) / "brenvik", {"--home", (dir / "heim").string()}, {"QT_QPA_PLATFORM=xcb", "DISPLAY=", "WAYLAND_DISPLAY="});
    EXPECT_EQ(end.code, 1);
    EXPECT_EQ(end.err, "Es ist keine grafische Oberfläche zu erreichen, das Fenster kann nicht geöffnet werden. Ohne Fenster arbeitet brenvik-cli.\n");
    EXPECT_FALSE(std::filesystem::exists(dir / "heim"));
}

}  // namespace
}  // namespace brenvik::test
