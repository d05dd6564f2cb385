#include "shell/program/WindowPictures.h"

#include <QApplication>
#include <QProcess>

#include "frame/Errors.h"
#include "shell/main/frmBVK_Prog.h"
#include "shell/program/Screenshots.h"
#include "shell/program/WindowTour.h"
#include "shell/widgets/Colours.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr char ScaleVariable[] = "QT_SCALE_FACTOR";
constexpr int MainWidth = 980, MainHeight = 720;
constexpr double TreeWidth = 4500, PanelsHeight = 7200;      // twips

std::string pictureName(const QWidget& window, const std::string& name, ColourMode mode) {
    return name + (mode == ColourMode::Dark ? "-dunkel" : "-hell") + (window.devicePixelRatioF() >= 2 ? "@2x" : "") + ".png";
}

void save(QWidget& window, const std::filesystem::path& file) {
    if (!saveScreenshot(window, qt(file.string())))
        throw NumberedError(errnum::PathFileAccess, "Das Bild " + file.filename().string() + " kann nicht geschrieben werden.");
}

}  // namespace

void takeScreenshots(WindowParts& parts, const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    parts.windows.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);    // whatever screen the pictures are taken on
    parts.windows.resize(MainWidth, MainHeight);
    parts.windows.SizeControlsV(TreeWidth);
    parts.windows.SizeControlsH(PanelsHeight);
    parts.windows.show();
    for (const ColourMode mode : {ColourMode::Light, ColourMode::Dark}) {
        setColourMode(parts.application, mode);
        visitWindows(parts, [&](QWidget& window, const std::string& name) { save(window, folder / pictureName(window, name, mode)); });
    }
}

// The scale of a process is fixed when it starts.
void takeScreenshotsAtDoubleScale(const std::filesystem::path& folder, const std::filesystem::path& home) {
    if (qEnvironmentVariableIsSet(ScaleVariable)) return;
    QProcess second;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(ScaleVariable), QStringLiteral("2"));
    second.setProcessEnvironment(environment);
    second.setProcessChannelMode(QProcess::ForwardedChannels);
    second.start(QApplication::applicationFilePath(), {QStringLiteral("--screenshots"), qt(folder.string()), QStringLiteral("--home"), qt(home.string())});
    second.waitForFinished(-1);
    if (second.exitStatus() != QProcess::NormalExit || second.exitCode() != 0)
        throw NumberedError(errnum::PathFileAccess, "Die Bilder in doppelter Auflösung konnten nicht gemacht werden.");
}

}  // namespace brenvik
