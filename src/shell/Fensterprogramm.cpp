#include "shell/Fensterprogramm.h"

#include <QApplication>
#include <QTemporaryDir>

#include "frame/Errors.h"
#include "shell/Farben.h"
#include "shell/Fensterbilder.h"
#include "shell/Fensterteile.h"
#include "shell/MaschinenEvents.h"
#include "shell/QtPort.h"
#include "shell/VerbindeExport.h"
#include "shell/VerbindeHilfe.h"
#include "shell/VerbindeSucheOptionenBrowser.h"
#include "shell/frmBVK_Prog.h"

namespace brenvik {
namespace {

// The engine wants its observer before there is a record to make the window from.
class ObserverRelay : public WindowObserver {
public:
    WindowObserver* target = nullptr;
    void treeChanged() override { if (target) target->treeChanged(); }
    void selectionChanged() override { if (target) target->selectionChanged(); }
    void panelsChanged() override { if (target) target->panelsChanged(); }
    void panelChanged(std::size_t place) override { if (target) target->panelChanged(place); }
    void windowChanged() override { if (target) target->windowChanged(); }
};

// Every area hooks its windows and commands in, in a line of its own.
void verbinde(Fensterteile& teile) {
    TippMaschine& engine = teile.programm.maschine();
    teile.fenster.setCommand(Befehl::AndereDBLaden, [&engine] { engine.mnuandereDBLoad(); });
    teile.fenster.setCommand(Befehl::BVKDBLaden, [&engine] { engine.mnuBVKDBLoad(); });
    verbindeHilfe(teile);
    verbindeSucheOptionenBrowser(teile);
}

int run(QApplication& application, const FensterOptionen& options, QtPort& port) {
    const auto platform = makeNativePlatform();
    ObserverRelay relay;
    Aufzeichnungen recorders;
    Programm program(port, *platform, options.programm, relay, recorders);
    Context& ctx = program.context();
    frmBVK_Prog window(ctx.frmBVK_Prog, ctx.einstellungen, displayOrder);
    MaschinenEvents events(program.maschine());
    Ladeschritte steps;
    Fensterteile parts{application, port, program, window, steps, recorders};
    Exportlisten exportLists;
    Export exports(program.maschine(), exportLists);
    verbinde(parts);
    verbindeExport(window, exports);

    program.loadSettings();
    setColourMode(application, colourModeOf(ctx.einstellungen.Farbschema));
    ctx.frmBVK_Prog.tbsTree = ctx.einstellungen.TreeAktiv;
    program.maschine().FrameStartEinstellungen();
    window.applySettings(loadWindowSettings(ctx));
    program.detectSystem();
    window.setVersion(ctx.strProgVersion);
    if (steps.LoadFHListe) steps.LoadFHListe();
    if (!program.loadDatabase()) return 1;
    relay.target = &window;
    window.attach(events);
    program.maschine().TreeEinlesen();
    if (!options.screenshots.empty()) {
        takeScreenshots(parts, options.screenshots);
        return 0;
    }
    window.onUnload([&] {
        ctx.einstellungen.TreeAktiv = ctx.intTreeAktiv;
        Save_BVKEinstellungen(ctx, window.presentSettings());
    });
    window.show();
    return application.exec();
}

}  // namespace

int runFensterprogramm(QApplication& application, const FensterOptionen& options) {
    QtPort port;
    try {
        if (options.screenshots.empty()) return run(application, options, port);
        const QTemporaryDir fresh;      // pictures show the program as shipped, not what stands in the user's home
        FensterOptionen own = options;
        if (own.programm.home.empty()) own.programm.home = fresh.path().toStdString();
        const int code = run(application, own, port);
        if (code == 0) takeScreenshotsAtDoubleScale(own.screenshots, own.programm.home);
        return code;
    } catch (const std::exception& error) {
        port.tell(error.what(), box::Critical);
        return 1;
    }
}

}  // namespace brenvik
