#include "shell/Screenshots.h"

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
    QPixmap picture(window.size() * scale);
    picture.setDevicePixelRatio(scale);
    picture.fill(window.palette().color(QPalette::Window));
    window.render(&picture);
    if (!shown) window.hide();
    QDir().mkpath(QFileInfo(file).absolutePath());
    return picture.save(file, "PNG");
}

}  // namespace brenvik
