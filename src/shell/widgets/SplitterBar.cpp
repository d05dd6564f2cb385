#include "shell/widgets/SplitterBar.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace brenvik {
namespace {

constexpr int MovingThickness = 4;
constexpr int KeyStep = 15;

}  // namespace

SplitterBar::SplitterBar(Qt::Orientation orientation, const char* name, const char* movingName, std::function<SplitterLimits()> limits,
                         QWidget* form)
    : QWidget(form), orientation_(orientation), limits_(std::move(limits)), moving_(new QFrame(form)) {
    setObjectName(QLatin1String(name));
    moving_->setObjectName(QLatin1String(movingName));
    moving_->setAutoFillBackground(true);
    moving_->setBackgroundRole(QPalette::Highlight);
    moving_->hide();
    setCursor(vertical() ? Qt::SplitHCursor : Qt::SplitVCursor);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(vertical() ? QStringLiteral("Teiler zwischen Baum und Einstellungen")
                                 : QStringLiteral("Teiler zwischen Einstellungen und Beschreibung"));
}

void SplitterBar::placeMovingBar(int position) {
    barPosition_ = position;
    if (vertical())
        moving_->setGeometry(position, y(), MovingThickness, height());
    else
        moving_->setGeometry(x(), position, width(), MovingThickness);
}

void SplitterBar::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    grip_ = vertical() ? event->pos().x() : event->pos().y();
    placeMovingBar(position());
    moving_->raise();
    moving_->show();
    dragging_ = true;
}

void SplitterBar::mouseMoveEvent(QMouseEvent* event) {
    if (!dragging_) return;
    const QPoint inForm = mapToParent(event->pos());
    placeMovingBar(limits_().bounded((vertical() ? inForm.x() : inForm.y()) - grip_));
}

void SplitterBar::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !dragging_) return;
    moving_->hide();
    dragging_ = false;
    emit moved(barPosition_);
}

void SplitterBar::keyPressEvent(QKeyEvent* event) {
    const int back = vertical() ? Qt::Key_Left : Qt::Key_Up, forth = vertical() ? Qt::Key_Right : Qt::Key_Down;
    if (event->key() != back && event->key() != forth) return QWidget::keyPressEvent(event);
    emit moved(limits_().bounded(position() + (event->key() == back ? -KeyStep : KeyStep)));
}

void SplitterBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(Qt::NoPen);
    painter.setBrush(hasFocus() ? palette().color(QPalette::Highlight) : palette().color(QPalette::PlaceholderText));
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF centre = QRectF(rect()).center();
    for (int i = -2; i <= 2; ++i) painter.drawEllipse(centre + (vertical() ? QPointF(0, i * 7) : QPointF(i * 7, 0)), 1.4, 1.4);
}

}  // namespace brenvik
