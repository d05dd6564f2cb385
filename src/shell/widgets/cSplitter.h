#pragma once
// The divider between the two panes of the registry browser.
#include "shell/widgets/SplitterBar.h"

namespace brenvik {

class cSplitter : public SplitterBar {
    Q_OBJECT
public:
    cSplitter(const char* name, QWidget* form);

    Qt::Orientation Orientation() const { return Qt::Vertical; }     // the bar's own
    int BorderSize() const { return borderSize_; }                   // what either pane keeps, in pixels
    void setBorderSize(int pixels) { borderSize_ = pixels; }
    SplitterLimits limits() const;                                   // where the bar may stand in the form

signals:
    void SplitComplete(int position);

private:
    int borderSize_ = 120;
};

}  // namespace brenvik
