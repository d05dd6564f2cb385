#include <QApplication>
#include <QCommandLineParser>
#include <QLibraryInfo>
#include <QTranslator>
#include <cstdio>
#include <exception>

#include "frame/UserPort.h"
#include "frame/Version.h"
#include "shell/Farben.h"
#include "shell/Fensterprogramm.h"
#include "shell/Icons.h"
#include "shell/QtPort.h"

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

}  // namespace

int main(int argc, char** argv) {
    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    Application application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("brenvik"));
    QApplication::setDesktopFileName(QStringLiteral("brenvik"));
    QApplication::setWindowIcon(brenvik::IconSet::program());
    QTranslator german;      // texts of Qt's own dialogs, where the system has them
    if (german.load(QStringLiteral("qtbase_de"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) QApplication::installTranslator(&german);
    brenvik::setColourMode(application, brenvik::ColourMode::System);

    brenvik::FensterOptionen options;
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Brenvik: Einstellungen einer Windows-Installation ansehen und ändern"));
    const QCommandLineOption help(QStringLiteral("help"), QStringLiteral("Diese Hilfe ausgeben"));
    const QCommandLineOption version(QStringLiteral("version"), QStringLiteral("Version ausgeben"));
    const QCommandLineOption home(QStringLiteral("home"), QStringLiteral("Verzeichnis, in dem Brenvik seine Daten hält"), QStringLiteral("DIR"));
    const QCommandLineOption screenshots(QStringLiteral("screenshots"), QStringLiteral("Bilder des Fensters in dieses Verzeichnis schreiben und enden"),
                                         QStringLiteral("DIR"));
    parser.addOptions({help, version, home, screenshots});
    if (!parser.parse(QApplication::arguments())) {
        std::fprintf(stderr, "%s\n", qPrintable(parser.errorText()));
        return 2;
    }
    if (parser.isSet(help)) {
        std::printf("%s", qPrintable(parser.helpText()));
        return 0;
    }
    if (parser.isSet(version)) {
        std::printf("brenvik %s\n", BRENVIK_VERSION);
        return 0;
    }
    options.programm.home = parser.value(home).toStdString();
    options.screenshots = parser.value(screenshots).toStdString();
    return brenvik::runFensterprogramm(application, options);
}
