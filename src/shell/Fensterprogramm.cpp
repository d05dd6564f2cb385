#include "shell/Fensterprogramm.h"

#include <QApplication>

#include "frame/Errors.h"
#include "shell/Farben.h"
#include "shell/Fensterteile.h"
#include "shell/MaschinenEvents.h"
#include "shell/QtPort.h"
#include "shell/QtText.h"
#include "shell/Screenshots.h"
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

// One picture of the window for each panel kind of the database, in light and dark; at 2x where the program runs at
// QT_SCALE_FACTOR=2.
void takeScreenshots(QApplication& application, Programm& program, frmBVK_Prog& window, const std::filesystem::path& folder) {
    Context& ctx = program.context();
    const auto save = [&](const std::string& name) {
        for (const ColourMode mode : {ColourMode::Light, ColourMode::Dark}) {
            setColourMode(application, mode);
            const std::string file = name + (mode == ColourMode::Dark ? "-dunkel" : "-hell") + (window.devicePixelRatioF() >= 2 ? "@2x" : "") + ".png";
            if (!saveScreenshot(window, qt((folder / file).string()))) throw NumberedError(errnum::PathFileAccess, "Das Bild " + file + " kann nicht geschrieben werden.");
        }
    };
    window.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);    // whatever screen the pictures are taken on
    window.resize(980, 720);
    window.show();
    save("start");
    std::array<bool, 12> seen{};
    for (const auto& row : ctx.udtTippListe) {
        program.maschine().showTippByNumber(row.Index);
        const auto& panels = ctx.frmBVK_Prog.panels;
        if (panels.empty() || seen.at(static_cast<std::size_t>(panels[0].Ausgabeart))) continue;
        seen[static_cast<std::size_t>(panels[0].Ausgabeart)] = true;
        save("art" + std::to_string(panels[0].Ausgabeart));
    }
}

// Every area hooks its windows and commands in, in a line of its own.
void verbinde(Fensterteile& teile) {
    TippMaschine& engine = teile.programm.maschine();
    teile.fenster.setCommand(Befehl::AndereDBLaden, [&engine] { engine.mnuandereDBLoad(); });
    teile.fenster.setCommand(Befehl::BVKDBLaden, [&engine] { engine.mnuBVKDBLoad(); });
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
    verbinde(parts);

    program.loadSettings();
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
        std::filesystem::create_directories(options.screenshots);
        takeScreenshots(application, program, window, options.screenshots);
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
        return run(application, options, port);
    } catch (const std::exception& error) {
        port.tell(error.what(), box::Critical);
        return 1;
    }
}

}  // namespace brenvik
