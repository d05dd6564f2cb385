#pragma once
#include <QString>

class QWidget;

namespace brenvik {

// Renders a window into a PNG at the given scale; shows it for that if it is not shown. False: it could not be written.
bool saveScreenshot(QWidget& window, const QString& file, double scale = 1.0);

}  // namespace brenvik
