#include "shell/panels/PanelSchalter.h"

#include <QGridLayout>

namespace brenvik {
namespace {

void drawBox(WrapCheckBox& box, const SwitchField& field, bool readOnly) {
    box.setText(plainCaption(field.beschriftung));
    box.setAccessibleName(plainLine(field.beschriftung));
    box.setChecked(field.ticked);
    box.setEnabled(!readOnly);
}

}  // namespace

PanelBootINI::PanelBootINI(PanelHost& host, std::size_t place, const Panel& panel, QWidget* parent)
    : PanelView(host, place, "fraBootINI", parent), cboBootINI_(new Combo(QStringLiteral("cboBootINI"), this)), txtBINI_(new TextField(QStringLiteral("txtBINI"), false, this)) {
    body_->addWidget(cboBootINI_);
    body_->addWidget(txtBINI_);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(3);
    grid->setColumnStretch(1, 1);
    for (std::size_t j = 0; j < panel.schalter.size(); ++j) addSwitch(*grid, static_cast<int>(j), panel.schalter[j].withValue);
    body_->addLayout(grid);
    connect(cboBootINI_, &QComboBox::activated, this, user([this](int item) { host_.events.userChoose(place_, item); }));
    connect(txtBINI_, &TextField::edited, this, user([this](const QString& text) { host_.events.userBootTitle(place_, utf8(text)); }));
}

void PanelBootINI::addSwitch(QGridLayout& grid, int j, bool withValue) {
    Schalter own;
    own.chkBootINI = new WrapCheckBox(this);
    own.chkBootINI->setObjectName(elementName("chkBootINI", static_cast<std::size_t>(j)));
    grid.addWidget(own.chkBootINI, j, 0, 1, withValue ? 1 : 2, withValue ? Qt::AlignVCenter : Qt::Alignment());
    connect(own.chkBootINI, &QCheckBox::toggled, this, user([this, j](bool on) { host_.events.userSwitch(place_, j, on); }));
    if (withValue) {
        own.txtBootINI = new TextField(elementName("txtBootINI", static_cast<std::size_t>(j)), false, this);
        grid.addWidget(own.txtBootINI, j, 1);
        connect(own.txtBootINI, &TextField::edited, this,
                user([this, j](const QString& text) { host_.events.userSwitchText(place_, j, utf8(text)); }));
    }
    schalter_.append(own);
}

bool PanelBootINI::fits(const Panel& panel) const {
    if (!PanelView::fits(panel) || static_cast<std::size_t>(schalter_.size()) != panel.schalter.size()) return false;
    for (qsizetype j = 0; j < schalter_.size(); ++j)
        if ((schalter_[j].txtBootINI != nullptr) != panel.schalter[static_cast<std::size_t>(j)].withValue) return false;
    return true;
}

void PanelBootINI::draw(const Panel& panel) {
    setCaption("lblBootINI", panel, plainLine(panel.label));
    cboBootINI_->setAccessibleName(plainLine(panel.label));
    cboBootINI_->setChoices(panel.selection, panel.chosen);
    txtBINI_->setFieldAccessibleName(cboBootINI_->currentText());
    txtBINI_->setValue(panel.txtBINI, panel.readOnly);
    txtBINI_->setEnabled(panel.txtBINIAktiv && !panel.readOnly);
    for (qsizetype j = 0; j < schalter_.size(); ++j) {
        const SwitchField& field = panel.schalter[static_cast<std::size_t>(j)];
        drawBox(*schalter_[j].chkBootINI, field, panel.readOnly);
        TextField* value = schalter_[j].txtBootINI;
        if (!value) continue;
        value->setFieldAccessibleName(plainLine(field.beschriftung));
        value->setValue(field.wert, panel.readOnly);
    }
}

PanelBitMaske::PanelBitMaske(PanelHost& host, std::size_t place, const Panel& panel, QWidget* parent)
    : PanelView(host, place, "fraBitMaske", parent) {
    for (std::size_t j = 0; j < panel.schalter.size(); ++j) {
        auto* box = new WrapCheckBox(this);
        box->setObjectName(elementName("chkBitMaske", j));
        body_->addWidget(box);
        chkBitMaske_.append(box);
        connect(box, &QCheckBox::toggled, this,
                user([this, j](bool on) { host_.events.userSwitch(place_, static_cast<int>(j), on); }));
    }
}

bool PanelBitMaske::fits(const Panel& panel) const {
    return PanelView::fits(panel) && static_cast<std::size_t>(chkBitMaske_.size()) == panel.schalter.size();
}

void PanelBitMaske::draw(const Panel& panel) {
    setCaption("lblBitMaske", panel, plainLine(panel.label));
    for (qsizetype j = 0; j < chkBitMaske_.size(); ++j)
        drawBox(*chkBitMaske_[j], panel.schalter[static_cast<std::size_t>(j)], panel.readOnly);
}

}  // namespace brenvik
