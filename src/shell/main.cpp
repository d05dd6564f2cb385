#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <exception>

#include "frame/UserPort.h"
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
    // PLACE FOR THE COMMAND LINE: fill `options` from argc and argv here (--home, --screenshots and the program's switches).
    return brenvik::runFensterprogramm(application, options);
}
