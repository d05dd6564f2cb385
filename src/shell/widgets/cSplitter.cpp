#include "shell/widgets/cSplitter.h"

namespace brenvik {

cSplitter::cSplitter(const char* name, QWidget* form) : SplitterBar(Qt::Vertical, name, "picMoving", [this] { return limits(); }, form) {
    setAccessibleName(QStringLiteral("Teiler zwischen Schlüsseln und Werten"));
    connect(this, &SplitterBar::moved, this, &cSplitter::SplitComplete);
}

SplitterLimits cSplitter::limits() const { return {borderSize_, parentWidget()->width() - borderSize_ - Thickness}; }

}  // namespace brenvik
