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
void connectEvents(WindowParts& parts, Listen& listen) {
    connectDatabaseChoice(parts);
    connectTools(parts);
    connectHelp(parts);
    connectSearchOptionsBrowser(parts);
    connectLists(parts, listen);
}

}  // namespace

WindowProgram::WindowProgram(QApplication& application, const WindowOptions& options, QtPort& port, Platform& platform)
    : options_(options), port_(port), program_(port, platform, options.program, relay_, recorders_),
      windows_(program_.context().frmBVK_Prog, program_.context().einstellungen, displayOrder), events_(program_.engine()),
      export_(program_.engine(), exportLists_), listen_(program_.engine()), parts_{application, port, program_, windows_, laden_, recorders_} {
    program_.openHome();
    FrameContext& ctx = program_.context();
    port.onNote([&ctx](const std::string& line) { ctx.trace.write(line); });
    connectEvents(parts_, listen_);
    connectExport(windows_, export_);
}

bool WindowProgram::start() {
    Context& ctx = program_.context();
    const bool forUser = options_.screenshots.empty();
    if (!startCheck(ctx, options_.commandLineText, [&] { return forUser && anotherInstance(); })) return false;
    if (options_.passwort) ctx.strParamPasswort = *options_.passwort;
    if (!program_.writeObstacle().empty()) port_.tell(messages::ReadOnly1 + program_.writeObstacle(), box::Exclamation);
    if (forUser) program_.offerMissingFiles(true);
    relay_.target = &windows_;
    windows_.attach(events_);
    windows_.onUnload([this] { unload(); });
    LoadWindow windows(parts_.application, ctx, windows_, forUser);
    if (runLoadSequence(program_, windows, laden_)) return true;
    exitCode_ = 1;
    return false;
}

bool WindowProgram::anotherInstance() {
    using Stand = host::SingleInstance::Stand;
    Context& ctx = program_.context();
    const auto token = [&](const char* name) { return ctx.platform.environment(name).value_or(""); };
    instance_ = host::makeSingleInstance(ctx.homePath);
    switch (instance_->logOn(SecondStartPatience, token("XDG_ACTIVATION_TOKEN"))) {
        case Stand::First: listenForOthers(); return false;
        case Stand::OtherCalled: return true;
        case Stand::OtherDoesNotAnswer:
            exitCode_ = 1;
            ctx.trace.write("--- Eine andere Instanz läuft und antwortet nicht");
            port_.tell(messages::FirstHangs, box::Exclamation);
            return true;
        case Stand::Unknown: ctx.trace.write("--- Ob eine andere Instanz läuft, ist nicht festzustellen"); return false;
    }
    return false;
}

void WindowProgram::listenForOthers() {
    const auto come = [this] {
        const auto token = instance_->fetch();
        if (token) windows_.bringToFront(QByteArray::fromStdString(*token));
    };
#ifdef Q_OS_WIN
    auto notifier = std::make_unique<QWinEventNotifier>(reinterpret_cast<Qt::HANDLE>(instance_->wakeHandle()));
    QObject::connect(notifier.get(), &QWinEventNotifier::activated, &windows_, come);
#else
    auto notifier = std::make_unique<QSocketNotifier>(instance_->wakeHandle(), QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, &windows_, come);
#endif
    notifier_ = std::move(notifier);
}

// What the window leaves behind, in this order. The question comes last: whatever the answer, all is saved.
void WindowProgram::unload() {
    Context& ctx = program_.context();
    ctx.einstellungen.TreeAktiv = ctx.intTreeAktiv;
    Save_BVKEinstellungen(ctx, windows_.presentSettings());
    DBClose(ctx);
    if (ctx.blnPrivilegien) ctx.objBVKReg.DisablePrivileges();
    if (!ctx.blnNeustartNoetig) return;
    const std::int16_t kind = newLogonKind(ctx.intBS);
    if (port_.ask(messages::LogOnAgain + std::string("\r\n\r\n") + sessionEndText(ctx, kind))) ShutDown(ctx, kind, 0);
}

static int run(QApplication& application, const WindowOptions& options, QtPort& port, Platform& platform) {
    WindowProgram program(application, options, port, platform);
    if (!program.start()) return program.exitCode();
    if (options.screenshots.empty()) return application.exec();
    takeScreenshots(program.parts(), options.screenshots);
    return 0;
}

int runWindowProgram(QApplication& application, WindowOptions options) {
    const bool pictures = !options.screenshots.empty();
    const std::unique_ptr<QtPort> port = pictures ? std::make_unique<PicturePort>() : std::make_unique<QtPort>();
    const auto platform = makeNativePlatform();
    try {
        std::optional<PrivateFolder> fresh;     // pictures show the program as shipped, not what stands in the user's home
        if (pictures && options.program.home.empty()) options.program.home = fresh.emplace("brenvik-bilder").path();
        const int code = run(application, options, *port, *platform);
        if (code == 0 && pictures) takeScreenshotsAtDoubleScale(options.screenshots, options.program.home);
        return code;
    } catch (const StoreOpenError& error) {
        port->tell(messages::ServiceMissing1 + utf8FromPath(platform->executableDirectory()) + messages::ServiceMissing2 + "\r\n\r\n" + error.what());
    } catch (const std::exception& error) {
        port->tell(error.what(), box::Critical);
    }
    return 1;
}

}  // namespace brenvik
