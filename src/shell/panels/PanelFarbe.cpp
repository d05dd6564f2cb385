#include "shell/panels/PanelFarbe.h"

#include <QHBoxLayout>
#include <QPainter>

#include "frame/text/Texts.h"

namespace brenvik {
namespace {

constexpr int ButtonChange = 9, ButtonPresent = 10;

}  // namespace

ColourField::ColourField(QWidget* parent) : QFrame(parent) {
    setFixedSize(72, 26);
    setFrameShape(QFrame::StyledPanel);
}

void ColourField::setColour(const std::optional<Rgb>& colour) {
    colour_ = colour;
    const QString text = colour ? QStringLiteral("Rot %1, Grün %2, Blau %3").arg(colour->red).arg(colour->green).arg(colour->blue)
                                : QStringLiteral("Keine Farbe");
    setToolTip(text);
    setAccessibleName(text);
    update();
}

void ColourField::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect inner = rect().adjusted(0, 0, -1, -1);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(colour_ ? QBrush(QColor(colour_->red, colour_->green, colour_->blue)) : QBrush(palette().color(QPalette::Mid), Qt::BDiagPattern));
    painter.drawRect(inner);
}

PanelFarbe::PanelFarbe(PanelHost& host, std::size_t place, QWidget* parent)
    : PanelView(host, place, "fraFarbe", parent), cboFarbe_(new Combo(QStringLiteral("cboFarbe"), this)),
      cmdFarbSET_(new ColourField(this)), cmdFarbe_(new QPushButton(qt(strBVKButtons(ButtonChange)), this)) {
    cmdFarbSET_->setObjectName(QStringLiteral("cmdFarbSET"));
    cmdFarbe_->setObjectName(QStringLiteral("cmdFarbe"));
    auto* lblFarbe = new QLabel(qt(strBVKButtons(ButtonPresent)), this);
    lblFarbe->setObjectName(QStringLiteral("lblFarbe"));
    lblFarbe->setBuddy(cmdFarbe_);
    auto* row = new QHBoxLayout;
    row->addWidget(lblFarbe);
    row->addWidget(cmdFarbSET_);
    row->addSpacing(8);
    row->addWidget(cmdFarbe_);
    row->addStretch(1);
    body_->addWidget(cboFarbe_);
    body_->addLayout(row);
    connect(cboFarbe_, &QComboBox::activated, this, user([this](int item) { host_.events.userChoose(place_, item); }));
    connect(cmdFarbe_, &QPushButton::clicked, this, user([this](bool) { host_.events.userColour(place_); }));
}

void PanelFarbe::draw(const Panel& panel) {
    setCaption("lblFarbeTitel", panel, plainLine(panel.label));
    cboFarbe_->setAccessibleName(plainLine(panel.label));
    cboFarbe_->setChoices(panel.selection, panel.chosen);
    cmdFarbSET_->setColour(panel.colour);
    cmdFarbe_->setEnabled(!panel.readOnly);
}

}  // namespace brenvik
