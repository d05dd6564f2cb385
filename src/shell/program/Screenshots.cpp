#include "shell/program/Screenshots.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QPainter>
#include <QPixmap>
#include <QWidget>

namespace brenvik {

bool saveScreenshot(QWidget& window, const QString& file, double scale) {
    const bool shown = window.isVisible();
    if (!shown) window.show();
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    const double ratio = window.devicePixelRatioF() * scale;
    QPixmap picture(window.size() * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(window.palette().color(QPalette::Window));
    window.render(&picture);
    if (!shown) window.hide();
    QDir().mkpath(QFileInfo(file).absolutePath());
    return picture.save(file, "PNG");
}

}  // namespace brenvik
