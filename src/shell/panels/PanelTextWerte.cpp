#include "shell/panels/PanelTextWerte.h"

namespace brenvik {

PanelTextWerte::PanelTextWerte(PanelHost& host, std::size_t place, const Panel& panel, QWidget* parent)
    : PanelView(host, place, "fraTextWerte", parent), txtTextWerte_(new TextField(element("txtTextWerte"), panel.multiLine, this)) {
    body_->addWidget(txtTextWerte_);
    connect(txtTextWerte_, &TextField::edited, this, user([this](const QString& text) { host_.events.userText(place_, utf8(text)); }));
}

bool PanelTextWerte::fits(const Panel& panel) const {
    return PanelView::fits(panel) && panel.multiLine == txtTextWerte_->severalLines();
}

void PanelTextWerte::draw(const Panel& panel) {
    setCaption("lblTextWerte", panel, plainLine(panel.label));
    txtTextWerte_->setFieldAccessibleName(plainLine(panel.label));
    txtTextWerte_->setValue(panel.text, panel.readOnly);
}

}  // namespace brenvik
