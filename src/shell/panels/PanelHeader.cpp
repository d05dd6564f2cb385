#include "shell/panels/PanelHeader.h"

#include "shell/widgets/Colours.h"
#include "shell/widgets/PlainText.h"
#include "shell/widgets/QtText.h"

namespace brenvik {

PanelHeader::PanelHeader(QWidget* parent)
    : QWidget(parent), layout_(new QBoxLayout(QBoxLayout::LeftToRight, this)), caption_(new QLabel(this)), status_(new QLabel(this)) {
    layout_->setContentsMargins(0, 0, 0, 0);
    layout_->setSpacing(2);
    for (QLabel* label : {caption_, status_}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
        layout_->addWidget(label);
    }
    layout_->setStretch(0, 1);
    layout_->setStretch(1, 1);
    QFont bold = caption_->font();
    bold.setBold(true);
    caption_->setFont(bold);
    caption_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    status_->setTextInteractionFlags(Qt::TextSelectableByMouse);
}

void PanelHeader::setPlace(std::size_t place) { status_->setObjectName(elementName("lblStatus", place)); }

void PanelHeader::setStatus(const StatusLine& status) {
    status_->setText(plainLine(status.text));
    status_->setVisible(!status.text.empty());
    setTextColour(*status_, status.colour == StatusColour::Normal ? QColor() : statusColour(status.colour));
    arrange();
}

void PanelHeader::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange();
}

void PanelHeader::arrange() {
    const auto oneLine = [](const QLabel* label) { return label->fontMetrics().horizontalAdvance(label->text()) + 12; };
    const bool beside = oneLine(caption_) + oneLine(status_) + layout_->spacing() <= width();
    layout_->setDirection(beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    layout_->setStretch(0, beside ? oneLine(caption_) : 0);
    layout_->setStretch(1, beside ? oneLine(status_) : 0);
    status_->setAlignment(beside ? Qt::AlignRight | Qt::AlignTop : Qt::AlignLeft | Qt::AlignTop);
    caption_->setVisible(!caption_->text().isEmpty());
    if (QWidget* panel = parentWidget(); panel && panel->layout()) panel->layout()->invalidate();      // the height may be another one now
}

}  // namespace brenvik
