#include "shell/panels/PanelAuswahl.h"

namespace brenvik {

PanelAuswahlBox::PanelAuswahlBox(PanelHost& host, std::size_t place, QWidget* parent)
    : PanelView(host, place, "fraAuswahlBox", parent), cboAuswahlBox_(new Combo(element("cboAuswahlBox"), this)) {
    body_->addWidget(cboAuswahlBox_);
    connect(cboAuswahlBox_, &QComboBox::activated, this, user([this](int item) { host_.events.userChoose(place_, item); }));
}

void PanelAuswahlBox::draw(const Panel& panel) {
    setCaption("lblAuswahlBox", panel, plainLine(panel.label));
    cboAuswahlBox_->setAccessibleName(plainLine(panel.label));
    cboAuswahlBox_->setChoices(panel.selection, panel.chosen);
    cboAuswahlBox_->setEnabled(!panel.readOnly);
}

PanelOptionsAuswahl::PanelOptionsAuswahl(PanelHost& host, std::size_t place, QWidget* parent)
    : PanelView(host, place, "fraOptionsAuswahl", parent), group_(new QButtonGroup(this)) {
    for (int j = 0; j < Options; ++j) {
        auto* option = new WrapRadioButton(this);
        option->setObjectName(elementName(qPrintable(QStringLiteral("opbOptionsAuswahl%1").arg(j + 1)), static_cast<std::size_t>(index_)));
        option->hide();
        body_->addWidget(option);
        group_->addButton(option, j);
        opbOptionsAuswahl_.append(option);
    }
    connect(group_, &QButtonGroup::idClicked, this, user([this](int item) { host_.events.userChoose(place_, item); }));
}

void PanelOptionsAuswahl::draw(const Panel& panel) {
    setCaption("lblOptionsAuswahl", panel, plainLine(panel.label));
    group_->setExclusive(false);    // an exclusive group could not show that no option is on
    for (int j = 0; j < Options; ++j) {
        WrapRadioButton* option = opbOptionsAuswahl_[j];
        const bool used = static_cast<std::size_t>(j) < panel.selection.size();
        option->setVisible(used);
        option->setChecked(used && j == panel.chosen);
        option->setEnabled(!panel.readOnly);
        if (!used) continue;
        option->setText(plainCaption(panel.selection[static_cast<std::size_t>(j)]));
        option->setAccessibleName(plainLine(panel.selection[static_cast<std::size_t>(j)]));
    }
    group_->setExclusive(true);
}

}  // namespace brenvik
