#pragma once
#include <QString>

class QWidget;

namespace brenvik {

// Renders a window into a PNG, at its own pixel ratio times scale; shows it for that if it is not shown. Pictures are
// sharp only at the window's own ratio (QT_SCALE_FACTOR). False: the file could not be written.
bool saveScreenshot(QWidget& window, const QString& file, double scale = 1.0);

}  // namespace brenvik
