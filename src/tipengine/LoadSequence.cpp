#include "tipengine/LoadSequence.h"

#include "frame/Reports.h"
#include "frame/text/Texts.h"
#include "tipengine/Program.h"

namespace brenvik {
namespace {

class Folge {
public:
    Folge(Programm& programm, Startfenster& window, const Ladeschritte& steps)
        : programm_(programm), ctx_(programm.context()), window_(window), steps_(steps) {}

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
        stufe(ctx_, text);
        window_.Update(percent);
        ctx_.port.letEventsRun();
    }
    void stageWithPause(int text, int percent) {
        stage(text, percent);
        ctx_.port.sleepMs(kurzePauseMs);
    }
    void step(const std::function<void()>& work) { reportAndGoOn(ctx_, "Form_Load", work); }

    void settings() {
        stufe(ctx_, 148);
        step([&] { window_.showInfo(); });
        step([&] { programm_.maschine().FrameStartEinstellungen(); });
        window_.Update(10);
        const ProcTrace trace(ctx_.trace, "Load_BVKEinstellungen");
        step([&] { programm_.loadSettings(); });
        step([&] { window_.loadWindowSettings(); });
        window_.Update(40);
    }
    void system() {
        stageWithPause(177, 80);
        step([&] { programm_.recogniseSystem(); });
        step([&] { window_.setCaption(); });
    }
    bool password() {
        stageWithPause(149, 50);
        return !steps_.startPasswort || steps_.startPasswort();
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
        if (!programm_.loadDatabase()) return false;
        stage(221, 80);
        step([&] { programm_.maschine().tree().TreeEinlesen(); });
        return true;
    }
    void finish() {
        step([&] { programm_.fitToSystem(window_, steps_.Account_Connect); });
        stufe(ctx_, 153);
        window_.Update(100);
        step([&] { programm_.takeProfile(); });
        window_.closeInfo();
        window_.showMain();
        step([&] { window_.NavBar(); });
        ctx_.trace.write("MenüIcons laden");
    }

    Programm& programm_;
    Context& ctx_;
    Startfenster& window_;
    const Ladeschritte& steps_;
};

}  // namespace

void stufe(FrameContext& ctx, int text) {
    ctx.strStartInfo = strBVKTexte(text);
    ctx.trace.write("--- " + ctx.strStartInfo);
}

bool runLadefolge(Programm& programm, Startfenster& fenster, const Ladeschritte& schritte) { return Folge(programm, fenster, schritte).run(); }

}  // namespace brenvik
