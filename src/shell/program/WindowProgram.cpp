#include "shell/program/WindowProgram.h"

#ifdef Q_OS_WIN
#include <QWinEventNotifier>
#else
#include <QSocketNotifier>
#endif

#include "frame/Messages.h"
#include "frame/files/FileSystem.h"
#include "frame/files/PrivateFolder.h"
#include "frame/program/SessionEnd.h"
#include "frame/program/StartCheck.h"
#include "frame/text/ShownText.h"
#include "registry/store/StoreFile.h"
#include "shell/program/ConnectHelp.h"
#include "shell/program/ConnectSearchOptionsBrowser.h"
#include "shell/program/ConnectTools.h"
#include "shell/program/LoadWindow.h"
#include "shell/program/WindowPictures.h"
#include "tipdb/LoadDB.h"

namespace brenvik {
namespace {

constexpr std::chrono::milliseconds SecondStartPatience{5000};

// Nobody sits there while pictures are taken.
class PicturePort : public QtPort {
public:
    Answer messageBox(const MessageBox& request) override {
        std::fputs((shownText(request.text, ShownAs::Lines) + "\n").c_str(), stderr);
        return restingAnswer(request.flags);
    }
};

// Every area hooks its windows and commands in, in a line of its own.
void verbinde(Fensterteile& teile, Listen& listen) {
    verbindeDatenbankwahl(teile);
    verbindeWerkzeuge(teile);
    verbindeHilfe(teile);
    verbindeSucheOptionenBrowser(teile);
    verbindeListen(teile, listen);
}

}  // namespace

Fensterprogramm::Fensterprogramm(QApplication& application, const FensterOptionen& options, QtPort& port, Platform& platform)
    : options_(options), port_(port), programm_(port, platform, options.programm, relay_, aufzeichnungen_),
      fenster_(programm_.context().frmBVK_Prog, programm_.context().einstellungen, displayOrder), events_(programm_.maschine()),
      export_(programm_.maschine(), exportlisten_), listen_(programm_.maschine()), teile_{application, port, programm_, fenster_, laden_, aufzeichnungen_} {
    programm_.openHome();
    FrameContext& ctx = programm_.context();
    port.onNote([&ctx](const std::string& line) { ctx.trace.write(line); });
    verbinde(teile_, listen_);
    verbindeExport(fenster_, export_);
}

bool Fensterprogramm::start() {
    Context& ctx = programm_.context();
    const bool forUser = options_.screenshots.empty();
    if (!startPruefung(ctx, options_.kommandozeile, [&] { return forUser && anotherInstance(); })) return false;
    if (options_.passwort) ctx.strParamPasswort = *options_.passwort;
    if (!programm_.schreibhindernis().empty()) port_.tell(meldung::NurLesen1 + programm_.schreibhindernis(), box::Exclamation);
    if (forUser) programm_.offerMissingFiles(true);
    relay_.target = &fenster_;
    fenster_.attach(events_);
    fenster_.onUnload([this] { unload(); });
    Ladefenster windows(teile_.application, ctx, fenster_, forUser);
    if (runLadefolge(programm_, windows, laden_)) return true;
    exitCode_ = 1;
    return false;
}

bool Fensterprogramm::anotherInstance() {
    using Stand = host::Einzelinstanz::Stand;
    Context& ctx = programm_.context();
    const auto token = [&](const char* name) { return ctx.platform.environment(name).value_or(""); };
    instanz_ = host::makeEinzelinstanz(ctx.heimPfad);
    switch (instanz_->anmelden(SecondStartPatience, token("XDG_ACTIVATION_TOKEN"))) {
        case Stand::Erste: listenForOthers(); return false;
        case Stand::AndereGerufen: return true;
        case Stand::AndereAntwortetNicht:
            exitCode_ = 1;
            ctx.trace.write("--- Eine andere Instanz läuft und antwortet nicht");
            port_.tell(meldung::ErsteHaengt, box::Exclamation);
            return true;
        case Stand::Unbekannt: ctx.trace.write("--- Ob eine andere Instanz läuft, ist nicht festzustellen"); return false;
    }
    return false;
}

void Fensterprogramm::listenForOthers() {
    const auto come = [this] {
        const auto token = instanz_->abholen();
        if (token) fenster_.bringToFront(QByteArray::fromStdString(*token));
    };
#ifdef Q_OS_WIN
    auto notifier = std::make_unique<QWinEventNotifier>(reinterpret_cast<Qt::HANDLE>(instanz_->wakeHandle()));
    QObject::connect(notifier.get(), &QWinEventNotifier::activated, &fenster_, come);
#else
    auto notifier = std::make_unique<QSocketNotifier>(instanz_->wakeHandle(), QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, &fenster_, come);
#endif
    notifier_ = std::move(notifier);
}

// What the window leaves behind, in this order. The question comes last: whatever the answer, all is saved.
void Fensterprogramm::unload() {
    Context& ctx = programm_.context();
    ctx.einstellungen.TreeAktiv = ctx.intTreeAktiv;
    Save_BVKEinstellungen(ctx, fenster_.presentSettings());
    DBClose(ctx);
    if (ctx.blnPrivilegien) ctx.objBVKReg.DisablePrivileges();
    if (!ctx.blnNeustartNoetig) return;
    const std::int16_t kind = neuanmeldungArt(ctx.intBS);
    if (port_.ask(meldung::NeuAnmelden + std::string("\r\n\r\n") + sitzungsendeText(ctx, kind))) ShutDown(ctx, kind, 0);
}

static int run(QApplication& application, const FensterOptionen& options, QtPort& port, Platform& platform) {
    Fensterprogramm program(application, options, port, platform);
    if (!program.start()) return program.exitCode();
    if (options.screenshots.empty()) return application.exec();
    takeScreenshots(program.teile(), options.screenshots);
    return 0;
}

int runFensterprogramm(QApplication& application, FensterOptionen options) {
    const bool pictures = !options.screenshots.empty();
    const std::unique_ptr<QtPort> port = pictures ? std::make_unique<PicturePort>() : std::make_unique<QtPort>();
    const auto platform = makeNativePlatform();
    try {
        std::optional<PrivateFolder> fresh;     // pictures show the program as shipped, not what stands in the user's home
        if (pictures && options.programm.home.empty()) options.programm.home = fresh.emplace("brenvik-bilder").path();
        const int code = run(application, options, *port, *platform);
        if (code == 0 && pictures) takeScreenshotsAtDoubleScale(options.screenshots, options.programm.home);
        return code;
    } catch (const StoreOpenError& error) {
        port->tell(meldung::DienstFehlt1 + utf8FromPath(platform->executableDirectory()) + meldung::DienstFehlt2 + "\r\n\r\n" + error.what());
    } catch (const std::exception& error) {
        port->tell(error.what(), box::Critical);
    }
    return 1;
}

}  // namespace brenvik
