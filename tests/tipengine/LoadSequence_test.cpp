// The load sequence on the shipped data: what happens, in which order, with which pauses.
#include <gtest/gtest.h>

#include "frame/Errors.h"
#include "support/ScriptedPort.h"
#include "support/TempDir.h"
#include "support/TestPlatform.h"
#include "tipengine/Program.h"

namespace brenvik::test {

using Lines = std::vector<std::string>;

class LoadSequence : public testing::Test, public StartWindow {
protected:
    void make(const std::string& machine = {}) {
        program = std::make_unique<Program>(port, platform, ProgramOptions{dir / "heim", std::filesystem::path(BRENVIK_PROGRAMM_DIR), machine}, observer, recorder);
        program->openHome();
        ctx().trace.setFile(dir / "log");
        steps.startPassword = [this] { return note("startPasswort"), passes; };
        steps.LoadFHListe = [this] { note("LoadFHListe"); };
        steps.LoadRegBackupListe = [this] { note("LoadRegBackupListe"); };
        steps.Account_Connect = [this](const std::string& pc, const std::string& account, const std::string& password) { note("Account_Connect " + pc + " " + account + " " + password); };
    }
    bool run() { return runLoadSequence(*program, *this, steps); }
    Context& ctx() { return program->context(); }
    void note(const std::string& line) {
        for (; pauses < port.sleeps.size(); ++pauses) lines.push_back("sleep " + std::to_string(port.sleeps[pauses]));
        lines.push_back(line);
    }

    void Update(int percent) override { note(std::to_string(percent) + " " + ctx().strStartInfo); }
    void showInfo() override { note("showInfo " + ctx().strStartInfo); }
    void closeInfo() override { note("closeInfo"); }
    void loadWindowSettings() override { note("settings"); }
    void setCaption() override { note("caption " + ctx().strBS); }
    void selectTab(int tab) override { note("tab " + std::to_string(tab) + (ctx().blnTabInit ? " guarded" : "")); }
    void showMain() override { note("showMain " + std::to_string(ctx().frmBVK_Prog.tvBVKDB.size() > 100)); }
    void NavBar() override { note("NavBar"); }

    TempDir dir;
    ScriptedPort port;
    TestPlatform platform;
    WindowObserver observer;
    ChangeRecorder recorder;
    std::unique_ptr<Program> program;
    LoadSteps steps;
    Lines lines;
    std::size_t pauses = 0;
    bool passes = true;
};

const Lines UpToThePassword{"showInfo Lade Grundeinstellungen...", "10 Lade Grundeinstellungen...", "settings", "40 Lade Grundeinstellungen...",
                            "80 Aktuelles Betriebsystem bestimmen...", "sleep 50", "caption Windows XP", "50 Passwortabfrage...", "sleep 50", "startPasswort"};
const Lines UpToTheRights{"60 Lade Favoriten und History...", "sleep 50", "LoadFHListe", "LoadRegBackupListe", "tab 1 guarded", "70 Lade Datenbank...", "sleep 50",
                          "80 Treebaum einlesen...", "85 Prüfen ob USER Administrative Rechte besitzt..."};
const Lines End{"100 Fertig...", "closeInfo", "showMain 1", "NavBar"};

Lines operator+(Lines left, const Lines& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

TEST_F(LoadSequence, GoesItsStagesInOrder) {
    make();
    EXPECT_TRUE(run());
    EXPECT_EQ(lines, (UpToThePassword + UpToTheRights + Lines{"sleep 50"} + End));
    EXPECT_EQ(ctx().strRechnername, ctx().strLokalerRechner);
    EXPECT_EQ(ctx().strUserSID, "S-1-5-21-1844237615-1960408961-725345543-1003");
    EXPECT_EQ(ctx().strProfilSID, ctx().strUserSID);
    EXPECT_TRUE(ctx().blnAdmin);
    EXPECT_FALSE(ctx().blnTabInit);
}

TEST_F(LoadSequence, AWrongPasswordEndsIt) {
    make();
    passes = false;
    EXPECT_FALSE(run());
    EXPECT_EQ(lines, UpToThePassword);
}

TEST_F(LoadSequence, AMissingDatabaseEndsIt) {
    make();
    ctx().programPath = dir.path();
    port.expectBox("wurde nicht gefunden");
    EXPECT_FALSE(run());
    EXPECT_EQ(lines.back(), "70 Lade Datenbank...");
}

TEST_F(LoadSequence, AStageThatFailsIsReportedAndTheNextOneFollows) {
    make();
    steps.LoadFHListe = []() -> void { throw NumberedError(errnum::FileNotFound, ""); };
    port.expectBox("Es ist ein Fehler in der Funktion: Form_Load aufgetreten mit der Fehlernummer: 53");
    EXPECT_TRUE(run());
    EXPECT_EQ(Lines(lines.end() - 4, lines.end()), End);
}

TEST_F(LoadSequence, AMachineThatDoesNotAnswerIsToldAndTheLocalOneIsWorkedOn) {
    make();
    ctx().strParamPC = "Server1";
    ctx().strParamUser = "Admin";
    ctx().strParamPasswort = "Geheim";
    port.expectBox("Auf die Registry des Rechners kann nicht zugegriffen werden !!!\r\n\r\nGrund: Der Rechner wurde nicht gefunden");
    EXPECT_TRUE(run());
    EXPECT_EQ(lines, (UpToThePassword + UpToTheRights + Lines{"sleep 50", "90 Teste Rechnerverbindung...", "Account_Connect Server1 Admin Geheim"} + End));
    EXPECT_EQ(ctx().strRechnername, ctx().strLokalerRechner);
    EXPECT_TRUE(ctx().blnLokal);
}

}  // namespace brenvik::test
