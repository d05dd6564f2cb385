#include <iostream>

#include "cli/Aufruffehler.h"
#include "cli/Befehle.h"
#include "cli/CliPort.h"
#include "frame/Version.h"
#include "tipengine/Aufzeichnungen.h"

using namespace brenvik;

int main(int argc, char** argv) {
    CLI::App app{"Brenvik: Einstellungen einer Windows-Installation ansehen und ändern", "brenvik-cli"};
    std::string home, machine;
    cli::Aufruf call;
    app.set_version_flag("--version", std::string("brenvik-cli ") + BRENVIK_VERSION, "Version ausgeben");
    app.set_help_flag("-h,--help", "Diese Hilfe ausgeben");
    app.add_option("--home", home, "Verzeichnis, in dem Brenvik seine Daten hält")->type_name("DIR");
    app.add_option("--machine", machine, "Rechner, dessen Registry gemeint ist: ein Name oder der Ordner, in dem ein Windows liegt")->type_name("NAME");
    app.add_flag("--json", call.json, "Ausgabe als JSON");
    app.add_flag("--yes", call.yes, "Fragen mit Ja beantworten");
    app.require_subcommand(1);
    app.fallthrough();
    cli::addTippBefehle(app, call);
    cli::addRegistryBefehle(app, call);
    cli::addHistoryBefehle(app, call);
    cli::addExportBefehle(app, call);
    cli::addListenBefehle(app, call);
    cli::germanHelp(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return app.exit(error);   // help and version
        std::cerr << cli::usageProblem(app, error) << "\nbrenvik-cli --help nennt, was möglich ist.\n";
        return 2;
    }
    try {
        CliPort port(call.yes, call.bootName);
        const auto platform = makeNativePlatform();
        WindowObserver observer;
        Aufzeichnungen recorders;
        Programm programm(port, *platform, {home, std::nullopt}, observer, recorders);
        Listen listen(programm.maschine());
        recorders.add(listen);
        call.listen = &listen;
        programm.loadSettings();
        programm.detectSystem();
        if (!machine.empty() && !cli::selectMachine(programm, machine)) return 1;
        if (call.needsDatabase) {
            if (!programm.loadDatabase()) return 1;
            programm.maschine().FrameStartEinstellungen();
            programm.maschine().TreeEinlesen();
        }
        return call.run(programm);
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
