#include "shell/panels/PanelDrive.h"

#include <QHBoxLayout>

#include "frame/text/Texts.h"

namespace brenvik {
namespace {

constexpr int ButtonFile = 11, ButtonFolder = 12;

}  // namespace

PanelDrive::PanelDrive(PanelHost& host, std::size_t place, QWidget* parent)
    : PanelView(host, place, "fraDrive", parent), cboDrive_(new Combo(QStringLiteral("cboDrive"), this)),
      txtDrive_(new TextField(QStringLiteral("txtDrive"), false, this)), cmdDrive_(new QPushButton(this)) {
    cmdDrive_->setObjectName(QStringLiteral("cmdDrive"));
    auto* row = new QHBoxLayout;
    row->addWidget(txtDrive_, 1);
    row->addWidget(cmdDrive_);
    body_->addWidget(cboDrive_);
    body_->addLayout(row);
    connect(cboDrive_, &QComboBox::activated, this, user([this](int item) { host_.events.userChoose(place_, item); }));
    connect(txtDrive_, &TextField::edited, this, user([this](const QString& text) { host_.events.userText(place_, utf8(text)); }));
    connect(cmdDrive_, &QPushButton::clicked, this, user([this](bool) { host_.events.userBrowse(place_); }));
}

void PanelDrive::draw(const Panel& panel) {
    setCaption("lblDrive", panel, panel.cmdDriveSichtbar ? plainLine(panel.label) : QString());
    cboDrive_->setAccessibleName(plainLine(panel.label));
    cboDrive_->setChoices(panel.selection, panel.chosen);
    txtDrive_->setFieldAccessibleName(cboDrive_->currentText());
    txtDrive_->setValue(panel.text, panel.readOnly);
    cmdDrive_->setText(qt(strBVKButtons(panel.fileFilter.empty() ? ButtonFolder : ButtonFile)));
    cmdDrive_->setVisible(panel.cmdDriveSichtbar);
    cmdDrive_->setEnabled(!panel.readOnly);
}

}  // namespace brenvik
