#include "shell/widgets/TabStrip.h"

#include <QEvent>
#include <algorithm>

#include "shell/widgets/QtText.h"

namespace brenvik {

TabStrip::TabStrip(QWidget* parent) : QWidget(parent), grid_(new QGridLayout(this)) {
    setObjectName(QStringLiteral("tbsTree"));
    setAccessibleName(QStringLiteral("Ansicht der Tipps"));
    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setSpacing(1);
    group_.setExclusive(true);
    connect(&group_, &QButtonGroup::idClicked, this, &TabStrip::tabClicked);
}

void TabStrip::addTab(const QString& caption, const QString& toolTip) {
    auto* button = new QToolButton(this);
    button->setObjectName(elementName("tbsTree", static_cast<std::size_t>(buttons_.size() + 1)));
    button->setText(caption);
    button->setToolTip(toolTip);
    button->setAccessibleDescription(toolTip);
    button->setCheckable(true);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    buttons_.append(button);
    group_.addButton(button, static_cast<int>(buttons_.size()));
    if (buttons_.size() == 1) button->setChecked(true);
    columns_ = 0;
    arrange();
}

void TabStrip::setSelected(int tab) {
    if (QAbstractButton* button = group_.button(tab)) button->setChecked(true);
}

void TabStrip::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange();
}

void TabStrip::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        columns_ = 0;
        arrange();
    }
}

// Rows of equal length: the fewest rows whose columns are all wide enough for the longest caption.
void TabStrip::arrange() {
    if (buttons_.isEmpty()) return;
    int widest = 1;
    for (const QToolButton* button : buttons_) widest = std::max(widest, button->sizeHint().width());
    const int count = static_cast<int>(buttons_.size());
    const int fitting = std::clamp((width() + grid_->spacing()) / (widest + grid_->spacing()), 1, count);
    const int rows = (count + fitting - 1) / fitting;
    const int columns = (count + rows - 1) / rows;
    if (columns == columns_) return;
    columns_ = columns;
    for (QToolButton* button : buttons_) grid_->removeWidget(button);
    for (int i = 0; i < count; ++i) grid_->addWidget(buttons_[i], i / columns, i % columns);
    updateGeometry();
}

}  // namespace brenvik
