#include "shell/panels/UpDown.h"

#include <QVBoxLayout>
#include <algorithm>

namespace brenvik {

UpDown::UpDown(const QString& objectName, QWidget* parent) : QWidget(parent) {
    setObjectName(objectName);
    auto* box = new QVBoxLayout(this);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(0);
    box->addWidget(arrow(Qt::UpArrow, "updUp", +1));
    box->addWidget(arrow(Qt::DownArrow, "updDown", -1));
}

// The field itself steps with the arrow keys; a stop of the tab key at each arrow would only be in the way.
QToolButton* UpDown::arrow(Qt::ArrowType type, const char* name, int step) {
    auto* button = new QToolButton(this);
    button->setObjectName(QLatin1String(name));
    button->setArrowType(type);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setAccessibleName(step > 0 ? tr("Mehr") : tr("Weniger"));
    button->setFixedSize(20, 13);
    connect(button, &QToolButton::clicked, this, [this, step] { stepBy(step); });
    return button;
}

void UpDown::setRange(std::int32_t minimum, std::int32_t maximum) {
    minimum_ = minimum;
    maximum_ = std::max(minimum, maximum);
}

void UpDown::setValue(std::int32_t value) { value_ = std::clamp(value, minimum_, maximum_); }

void UpDown::stepBy(std::int64_t steps) {
    const std::int64_t wanted = std::clamp<std::int64_t>(std::int64_t{value_} + steps, minimum_, maximum_);
    if (wanted == value_) return;
    value_ = static_cast<std::int32_t>(wanted);
    emit stepped(value_);
}

}  // namespace brenvik
