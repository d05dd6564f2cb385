#include <CLI/CLI.hpp>
#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "cli/UsageError.h"
#include "frame/UserPort.h"
#include "frame/Version.h"
#include "frame/platform/HostTerminal.h"
#include "frame/program/CommandLineText.h"
#include "shell/QtPort.h"
#include "shell/program/WindowProgram.h"
#include "shell/widgets/Colours.h"
#include "shell/widgets/Icons.h"

namespace {

// An exception must not leave an event handler; what came this far is a fault that nobody expected.
class Application : public QApplication {
public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override {
        try {
            return QApplication::notify(receiver, event);
        } catch (const std::exception& error) {
            brenvik::QtPort().tell(std::string("Interner Fehler: ") + error.what(), brenvik::box::Critical);
            return false;
        }
    }
};

// While the window system is being looked for: its complaints are the window system's own words, and where there is none
// at all it would end the process hard.
void endWithoutDisplay(QtMsgType kind, const QMessageLogContext&, const QString&) {
    if (kind != QtFatalMsg) return;
    std::fputs("Es ist keine grafische Oberfläche zu erreichen, das Fenster kann nicht geöffnet werden. Ohne Fenster arbeitet brenvik-cli.\n", stderr);
    std::fflush(stderr);
    std::_Exit(1);
}

struct Invocation {
    std::string home, machine, profile, screenshots;
    std::optional<int> passwordDescriptor;
    std::vector<std::string> rest;      // what is none of ours: the window system's options and the program's own switches
};

// Takes our options off the command line. Answers the exit code if the program has nothing more to do.
std::optional<int> takeOptions(Invocation& call, int argc, char** argv) {
    CLI::App app{"Brenvik: Einstellungen einer Windows-Installation ansehen und ändern", "brenvik"};
    app.set_version_flag("--version", std::string("brenvik ") + BRENVIK_VERSION, "Version ausgeben");
    app.set_help_flag("-h,--help", "Diese Hilfe ausgeben");
    app.add_option("--home", call.home, "Verzeichnis, in dem Brenvik seine Daten hält")->type_name("DIR");
    app.add_option("--machine", call.machine, "Rechner, dessen Registry gemeint ist: ein Name oder der Ordner, in dem ein Windows liegt")->type_name("NAME");
    app.add_option("--user", call.profile, "Benutzer des Rechners, dessen HKEY_CURRENT_USER gemeint ist: Name oder SID")->type_name("NAME")->needs("--machine");
    app.add_option("--screenshots", call.screenshots, "Bilder der Fenster in dieses Verzeichnis schreiben und enden")->type_name("DIR");
    app.add_option("--password-fd", call.passwordDescriptor, "Das Passwort zu /U: als erste Zeile aus diesem Deskriptor lesen; anders als /PW: steht es dann in keiner Prozessliste")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber);
    app.footer("Eigene Schalter des Programms, in dieser Reihenfolge: [/PC:<Rechnername>] [/U:<Account> /PW:<Passwort>] [/DEBUG], oder /?");
    app.allow_windows_style_options(false);
    app.allow_extras();
    brenvik::cli::germanHelp(app);
    const auto refuse = [](const std::string& problem) {
        std::fprintf(stderr, "%s\nbrenvik --help nennt, was möglich ist.\n", problem.c_str());
        return 2;
    };
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return error.get_exit_code() == 0 ? app.exit(error) : refuse(brenvik::cli::usageProblem(app, error));
    }
    call.rest = app.remaining();
    for (const std::string& argument : call.rest)
        if (argument.rfind("--", 0) == 0) return refuse("Unbekannte Angabe: " + argument);
    return std::nullopt;
}

}  // namespace

int main(int argc, char** argv) {
    Invocation call;
    if (const auto done = takeOptions(call, argc, argv)) return *done;
    brenvik::hidePassword(argc, argv);
    std::optional<std::string> password;
    if (call.passwordDescriptor) {
        password = brenvik::host::readSecretLine(*call.passwordDescriptor);
        if (!password) return std::fprintf(stderr, "Aus dem Deskriptor %d kann kein Passwort gelesen werden.\n", *call.passwordDescriptor), 1;
    }

    std::vector<char*> words{argv[0]};
    for (std::string& word : call.rest) words.push_back(word.data());
    words.push_back(nullptr);
    int count = static_cast<int>(words.size()) - 1;
    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    qInstallMessageHandler(endWithoutDisplay);
    Application application(count, words.data());
    qInstallMessageHandler(nullptr);
    QApplication::setApplicationName(QStringLiteral("brenvik"));
    QApplication::setDesktopFileName(QStringLiteral("brenvik"));
    QApplication::setWindowIcon(brenvik::IconSet::program());
    QTranslator german;      // texts of Qt's own dialogs, where the system has them
    if (german.load(QStringLiteral("qtbase_de"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) QApplication::installTranslator(&german);
    brenvik::setColourMode(application, brenvik::ColourMode::System);

    brenvik::WindowOptions options;
    options.program.home = call.home;
    options.program.machine = call.machine;
    options.program.profile = call.profile;
    options.commandLineText = QApplication::arguments().mid(1).join(QLatin1Char(' ')).toStdString();
    options.screenshots = call.screenshots;
    options.passwort = std::move(password);
    return brenvik::runWindowProgram(application, options);
}
