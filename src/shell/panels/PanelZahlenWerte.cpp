#include "shell/panels/PanelZahlenWerte.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <algorithm>

#include "shell/widgets/Colours.h"

namespace brenvik {
namespace {

// The style draws every tick on its own: with a small interval on a wide range it would not come to an end.
constexpr std::int64_t MostTicks = 25;
constexpr int LongestNumber = 64;    // characters shown of what stands there and is no number

int tickInterval(const Panel& panel) {
    const std::int64_t span = std::max<std::int64_t>(1, std::int64_t{panel.Max} - panel.Min);
    const std::int64_t interval = std::max<std::int64_t>({1, panel.TickFrequency, (span + MostTicks - 1) / MostTicks});
    return static_cast<int>(std::min<std::int64_t>(interval, INT32_MAX));
}

// It counts one tick beyond the end, in 32 bits: close to their limit it would begin again from below.
bool canHaveTicks(const Panel& panel, int interval) { return std::int64_t{panel.Max} + interval < INT32_MAX; }

}  // namespace

PanelZahlenWerte::PanelZahlenWerte(PanelHost& host, std::size_t place, QWidget* parent)
    : PanelView(host, place, "fraZahlenWerte", parent), sliZahlenWerte_(new QSlider(Qt::Horizontal, this)),
      txtZahlenWerte_(new QLineEdit(this)), updZahlenWerte_(new UpDown(element("updZahlenWerte"), this)), range_(new QLabel(this)) {
    sliZahlenWerte_->setObjectName(element("sliZahlenWerte"));
    guardWheel(*sliZahlenWerte_);
    txtZahlenWerte_->setObjectName(element("txtZahlenWerte"));
    txtZahlenWerte_->setAlignment(Qt::AlignRight);
    txtZahlenWerte_->setMaxLength(LongestNumber);
    txtZahlenWerte_->setFixedWidth(txtZahlenWerte_->fontMetrics().horizontalAdvance(QStringLiteral("-2147483648")) + 20);
    txtZahlenWerte_->installEventFilter(this);
    range_->setWordWrap(true);

    auto* row = new QHBoxLayout;
    row->setSpacing(2);
    row->addWidget(sliZahlenWerte_, 1);
    row->addSpacing(8);
    row->addWidget(txtZahlenWerte_);
    row->addWidget(updZahlenWerte_);
    body_->addLayout(row);
    body_->addWidget(range_);

    connect(sliZahlenWerte_, &QSlider::valueChanged, this, user([this](int value) { host_.events.userNumber(place_, value); }));
    connect(updZahlenWerte_, &UpDown::stepped, this, user([this](std::int32_t value) { host_.events.userNumber(place_, value); }));
    connect(txtZahlenWerte_, &QLineEdit::textChanged, this,
            user([this](const QString& text) { host_.events.userNumberText(place_, utf8(text)); }));
}

void PanelZahlenWerte::draw(const Panel& panel) {
    setCaption("lblZahlenWerte", panel, plainLine(panel.label));
    sliZahlenWerte_->setAccessibleName(plainLine(panel.label));
    txtZahlenWerte_->setAccessibleName(plainLine(panel.label));
    const int interval = tickInterval(panel);
    pageStep_ = interval;
    sliZahlenWerte_->setRange(panel.Min, std::max(panel.Min, panel.Max));
    sliZahlenWerte_->setTickInterval(interval);
    sliZahlenWerte_->setTickPosition(canHaveTicks(panel, interval) ? QSlider::TicksBelow : QSlider::NoTicks);
    sliZahlenWerte_->setPageStep(interval);
    sliZahlenWerte_->setValue(panel.Value);
    updZahlenWerte_->setRange(panel.Min, panel.Max);
    updZahlenWerte_->setValue(panel.Value);
    const QString text = qt(panel.numberText).left(LongestNumber);
    if (txtZahlenWerte_->text() != text) txtZahlenWerte_->setText(text);
    setTextColour(*txtZahlenWerte_, panel.numberInvalid ? warningColour() : QColor());
    setTextColour(*range_, panel.numberInvalid ? warningColour() : QColor());
    range_->setText(panel.numberInvalid
                        ? QStringLiteral("Keine Zahl von %1 bis %2; es gilt weiter %3.").arg(panel.Min).arg(panel.Max).arg(panel.Value)
                        : QStringLiteral("%1 bis %2").arg(panel.Min).arg(panel.Max));
    sliZahlenWerte_->setEnabled(!panel.readOnly);
    updZahlenWerte_->setEnabled(!panel.readOnly);
    txtZahlenWerte_->setReadOnly(panel.readOnly);
}

bool PanelZahlenWerte::eventFilter(QObject* watched, QEvent* event) {
    if (watched != txtZahlenWerte_ || event->type() != QEvent::KeyPress || !updZahlenWerte_->isEnabled())
        return PanelView::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Up: updZahlenWerte_->stepBy(1); return true;
        case Qt::Key_Down: updZahlenWerte_->stepBy(-1); return true;
        case Qt::Key_PageUp: updZahlenWerte_->stepBy(pageStep_); return true;
        case Qt::Key_PageDown: updZahlenWerte_->stepBy(-pageStep_); return true;
        default: return PanelView::eventFilter(watched, event);
    }
}

}  // namespace brenvik
