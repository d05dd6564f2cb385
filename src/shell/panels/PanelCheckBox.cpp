#include "shell/panels/PanelCheckBox.h"

namespace brenvik {

PanelCheckBox::PanelCheckBox(PanelHost& host, std::size_t place, QWidget* parent)
    : PanelView(host, place, "fraCheckBox", parent), chkCheckBox_(new WrapCheckBox(this)) {
    chkCheckBox_->setObjectName(element("chkCheckBox"));
    body_->addWidget(chkCheckBox_);
    connect(chkCheckBox_, &QCheckBox::toggled, this, user([this](bool on) { host_.events.userCheck(place_, on); }));
}

void PanelCheckBox::draw(const Panel& panel) {
    setCaption("lblCheckBox", panel, plainLine(panel.label));
    chkCheckBox_->setText(plainCaption(panel.chkBeschriftung));
    chkCheckBox_->setAccessibleName(plainLine(panel.chkBeschriftung));
    chkCheckBox_->setAccessibleDescription(plainLine(panel.label));
    chkCheckBox_->setChecked(panel.ticked);
    chkCheckBox_->setEnabled(!panel.readOnly);
}

}  // namespace brenvik
