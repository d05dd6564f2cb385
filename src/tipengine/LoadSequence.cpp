#include "tipengine/LoadSequence.h"

#include "frame/Reports.h"
#include "frame/text/Texts.h"
#include "tipengine/Program.h"

namespace brenvik {
namespace {

class Sequence {
public:
    Sequence(Program& program, StartWindow& window, const LoadSteps& steps)
        : program_(program), ctx_(program.context()), window_(window), steps_(steps) {}

    bool run() {
        ctx_.trace.write("Prozedur: frmBVK_Prog -Start-");
        ctx_.blnTabInit = false;
        ctx_.trace.write("Prozedur: fillstrBVKTexte -Start-");   // the tables stand ready
        ctx_.trace.write("Prozedur: fillstrBVKTexte -Ende-");
        settings();
        system();
        if (!password()) return false;
        lists();
        if (!database()) return false;
        finish();
        return true;
    }

private:
    void stage(int text, int percent) {
        level(ctx_, text);
        window_.Update(percent);
        ctx_.port.letEventsRun();
    }
    void stageWithPause(int text, int percent) {
        stage(text, percent);
        ctx_.port.sleepMs(shortPauseMs);
    }
    void step(const std::function<void()>& work) { reportAndGoOn(ctx_, "Form_Load", work); }

    void settings() {
        level(ctx_, 148);
        step([&] { window_.showInfo(); });
        step([&] { program_.engine().FrameStartEinstellungen(); });
        window_.Update(10);
        const ProcTrace trace(ctx_.trace, "Load_BVKEinstellungen");
        step([&] { program_.loadSettings(); });
        step([&] { window_.loadWindowSettings(); });
        window_.Update(40);
    }
    void system() {
        stageWithPause(177, 80);
        step([&] { program_.recogniseSystem(); });
        step([&] { window_.setCaption(); });
    }
    bool password() {
        stageWithPause(149, 50);
        return !steps_.startPassword || steps_.startPassword();
    }
    void lists() {
        stageWithPause(150, 60);
        if (steps_.LoadFHListe) step(steps_.LoadFHListe);
        if (steps_.LoadRegBackupListe) step(steps_.LoadRegBackupListe);
        ctx_.blnTabInit = true;
        step([&] { window_.selectTab(ctx_.einstellungen.TreeAktiv); });
        ctx_.blnTabInit = false;
    }
    bool database() {
        stageWithPause(151, 70);
        if (!program_.loadDatabase()) return false;
        stage(221, 80);
        step([&] { program_.engine().tree().TreeEinlesen(); });
        return true;
    }
    void finish() {
        step([&] { program_.fitToSystem(window_, steps_.Account_Connect); });
        level(ctx_, 153);
        window_.Update(100);
        step([&] { program_.takeProfile(); });
        window_.closeInfo();
        window_.showMain();
        step([&] { window_.NavBar(); });
        ctx_.trace.write("MenüIcons laden");
    }

    Program& program_;
    Context& ctx_;
    StartWindow& window_;
    const LoadSteps& steps_;
};

}  // namespace

void level(FrameContext& ctx, int text) {
    ctx.strStartInfo = strBVKTexte(text);
    ctx.trace.write("--- " + ctx.strStartInfo);
}

bool runLoadSequence(Program& program, StartWindow& windows, const LoadSteps& steps) { return Sequence(program, windows, steps).run(); }

}  // namespace brenvik
