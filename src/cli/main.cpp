#include <algorithm>
#include <iostream>
#include <iterator>

#include "cli/CliPort.h"
#include "cli/Commands.h"
#include "cli/UsageError.h"
#include "frame/Version.h"
#include "frame/files/FileSystem.h"
#include "frame/platform/HostTerminal.h"
#include "frame/program/Product.h"
#include "frame/text/ShownOutput.h"
#include "registry/machine/FirstStart.h"
#include "tipengine/values/Recorders.h"

using namespace brenvik;

namespace {

// Commands that only print may end when nobody reads on; all others do their work to the end.
bool onlyPrints(const CLI::App& app) {
    const CLI::App* command = &app;
    while (!command->get_subcommands().empty()) command = command->get_subcommands().front();
    constexpr std::string_view Printing[] = {"list", "show", "read", "find", "export", "diff", "drift", "load"};
    return std::find(std::begin(Printing), std::end(Printing), command->get_name()) != std::end(Printing);
}

// The same trace as the window's, from the beginning.
void startTrace(Program& program) {
    Context& ctx = program.context();
    if (const std::string problem = privateHome(ctx.homePath); !problem.empty()) throw NumberedError(errnum::PathFileAccess, problem);
    ctx.trace.setDebug(true);
    ctx.trace.write(product::Titel);
    ctx.trace.write("Version: " + ctx.strProgVersion);
    ctx.trace.write("Programmverzeichnis: " + utf8FromPath(ctx.programPath));
}

bool loadTips(Program& program) {
    program.offerMissingFiles(false);
    if (!program.loadDatabase()) return false;
    program.engine().FrameStartEinstellungen();
    program.engine().tree().TreeEinlesen();
    return true;
}

// Of a home that can only be read nothing need be said as long as nothing was to be written; the registry says it itself. One
// that lacks something shows less than there is.
void tellObstacle(Program& program, const cli::Invocation& call, CliPort& port, bool failed) {
    if (program.writeObstacle().empty()) return;
    const bool lacksFiles = program.homeMissing() || program.machines().store("").writable(), said = call.ownPlaces && failed;
    if (!said && (failed || lacksFiles)) port.tell(program.writeObstacle());
}

}  // namespace

int main(int argc, char** argv) {
    const ShownOutput out(std::cout), err(std::cerr);
    CLI::App app{"Brenvik: Einstellungen einer Windows-Installation ansehen und ändern", "brenvik-cli"};
    std::string home, machine, profile;
    bool debug = false;
    cli::Invocation call;
    app.set_version_flag("--version", std::string("brenvik-cli ") + BRENVIK_VERSION, "Version ausgeben");
    app.set_help_flag("-h,--help", "Diese Hilfe ausgeben");
    app.add_option("--home", home, "Verzeichnis, in dem Brenvik seine Daten hält")->type_name("DIR");
    app.add_option("--machine", machine, "Rechner, dessen Registry gemeint ist: ein Name oder der Ordner, in dem ein Windows liegt")->type_name("NAME");
    app.add_option("--user", profile, "Benutzer des Rechners, dessen HKEY_CURRENT_USER gemeint ist: Name oder SID")->type_name("NAME")->needs("--machine");
    // A script whose variable is empty must not work on what nobody named.
    for (const char* option : {"--home", "--machine", "--user"})
        app.get_option(option)->check([option](const std::string& text) { return text.empty() ? "Hinter " + std::string(option) + " steht nichts." : std::string(); });
    app.add_flag("--json", call.json, "Ausgabe als JSON");
    app.add_flag("--yes", call.yes, "Fragen mit Ja beantworten");
    app.add_flag("--debug", debug, "Das Protokoll brenvik.log im Heim führen");
    app.require_subcommand(1);
    app.fallthrough();
    cli::addTipCommands(app, call);
    cli::addRegistryCommands(app, call);
    cli::addHistoryCommands(app, call);
    cli::addExportCommands(app, call);
    cli::addListCommands(app, call);
    cli::germanHelp(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return app.exit(error);   // help and version
        std::cerr << cli::usageProblem(app, error) << "\nbrenvik-cli --help nennt, was möglich ist.\n";
        return 2;
    }
    if (!onlyPrints(app)) host::surviveBrokenPipes();
    try {
        CliPort port(call.yes, call.bootName, call.keep);
        const auto platform = makeNativePlatform();
        WindowObserver observer;
        Recorders recorders;
        Program program(port, *platform, {home, std::nullopt, {}, profile}, observer, recorders);
        Listen listen(program.engine());
        recorders.add(listen);
        call.listen = &listen;
        if (debug) startTrace(program);
        program.whenOpened([&] {
            program.loadSettings();
            program.detectSystem();
        });
        if (!call.ownPlaces || !machine.empty()) program.openHome();
        if (!machine.empty() && !cli::selectMachine(program, machine)) return 1;
        if (call.needsDatabase && !loadTips(program)) return 1;
        const int code = call.run(program);
        tellObstacle(program, call, port, code != 0);
        return code;
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
