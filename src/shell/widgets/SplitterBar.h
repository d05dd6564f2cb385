#pragma once
// imgSplitterV and imgSplitterH: while the mouse drags one of them only a thin bar follows, within the limits; the
// layout is done once, when the mouse lets go. With the keyboard the arrow keys move it.
#include <QFrame>
#include <QWidget>
#include <functional>

namespace brenvik {

struct SplitterLimits {
    int lower = 0, upper = 0;      // pixels in the form; where both cannot be kept, the lower one holds
    int bounded(int position) const { return position < lower ? lower : (position > upper ? (upper < lower ? lower : upper) : position); }
};

class SplitterBar : public QWidget {
    Q_OBJECT
public:
    // orientation is the bar's own: a vertical bar stands between left and right.
    SplitterBar(Qt::Orientation orientation, const char* name, const char* movingName, std::function<SplitterLimits()> limits, QWidget* form);

    static constexpr int Thickness = 9;

signals:
    void moved(int position);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool vertical() const { return orientation_ == Qt::Vertical; }
    int position() const { return vertical() ? x() : y(); }
    void placeMovingBar(int position);

    Qt::Orientation orientation_;
    std::function<SplitterLimits()> limits_;
    QFrame* moving_;
    bool dragging_ = false;
    int grip_ = 0;                 // where on the splitter the mouse took it
    int barPosition_ = 0;
};

}  // namespace brenvik
