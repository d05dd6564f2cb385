#include "shell/panels/PanelView.h"

#include <QEvent>
#include <QWheelEvent>

#include "shell/panels/PanelHeader.h"

namespace brenvik {
namespace {

class WheelGuard : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* control = qobject_cast<QWidget*>(watched);
        if (event->type() != QEvent::Wheel || !control || control->hasFocus()) return QObject::eventFilter(watched, event);
        event->ignore();
        return true;
    }
};

}  // namespace

void guardWheel(QWidget& control) {
    control.setFocusPolicy(Qt::StrongFocus);
    control.installEventFilter(new WheelGuard(&control));
}

PanelView::PanelView(PanelHost& host, std::size_t place, const char* frameName, QWidget* parent)
    : QFrame(parent), host_(host), body_(new QVBoxLayout(this)), place_(place), header_(new PanelHeader(this)) {
    if (const Panel* panel = record()) {
        kind_ = panel->Ausgabeart;
        index_ = panel->index;
    }
    const bool onePerTip = kind_ >= art::Drive && kind_ <= art::Kontext;
    setObjectName(onePerTip ? QLatin1String(frameName) : element(frameName));
    setFrameShape(QFrame::StyledPanel);
    body_->setContentsMargins(10, 7, 10, 9);
    body_->setSpacing(5);
    body_->addWidget(header_);
    header_->setPlace(place);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

// A view that waits for its deletion may outlive the window, and a change of style still asks it.
const Panel* PanelView::record() const { return !detached_ && place_ < host_.record.panels.size() ? &host_.record.panels[place_] : nullptr; }

bool PanelView::fits(const Panel& panel) const { return panel.Ausgabeart == kind_ && panel.index == index_; }

void PanelView::drawPanel(const Panel& panel) {
    const bool outer = drawing_;
    drawing_ = true;
    draw(panel);
    header_->setStatus(panel.status);
    setHint(panel.hint);
    drawing_ = outer;
}

void PanelView::setHint(const std::string& text) {
    if (!hint_ && text.empty()) return;
    if (!hint_) {
        hint_ = new QLabel(this);
        hint_->setObjectName(elementName("lblHinweis", place_));
        hint_->setWordWrap(true);
        hint_->setTextFormat(Qt::PlainText);
        body_->addWidget(hint_);
    }
    hint_->setText(qt(text));
    hint_->setVisible(!text.empty());
}

void PanelView::detach() {
    detached_ = true;
    hide();
    setParent(nullptr);
    deleteLater();
}

void PanelView::setCaption(const char* labelName, const Panel& panel, const QString& caption) {
    const bool onePerTip = kind_ >= art::Drive && kind_ <= art::Kontext;
    header_->caption()->setObjectName(onePerTip ? QLatin1String(labelName) : element(labelName));
    header_->caption()->setText(caption);
    header_->setStatus(panel.status);
}

void PanelView::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() != QEvent::PaletteChange || detached_) return;
    if (const Panel* panel = record(); panel && fits(*panel)) drawPanel(*panel);
}

}  // namespace brenvik
