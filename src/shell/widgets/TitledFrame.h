#pragma once
// A frame with a caption that wraps instead of being cut and can take a colour of its own.
#include <QFrame>
#include <QLabel>
#include <QVBoxLayout>

#include "shell/main/RightRegion.h"

namespace brenvik {

class TitledFrame : public QFrame {
public:
    TitledFrame(const char* name, QWidget* parent) : QFrame(parent), caption_(new QLabel(this)), body_(new QVBoxLayout(this)) {
        setObjectName(QLatin1String(name));
        setFrameShape(QFrame::StyledPanel);
        const int sides = rightregion::within(rightregion::Frames, rightregion::txtInfo);
        body_->setContentsMargins(sides - sides / 2, 5, sides / 2, 7);
        body_->setSpacing(4);
        caption_->setObjectName(QLatin1String(name) + QStringLiteral(".Caption"));
        caption_->setWordWrap(true);
        caption_->setTextFormat(Qt::PlainText);
        QFont bold = caption_->font();
        bold.setBold(true);
        caption_->setFont(bold);
        body_->addWidget(caption_);
    }
    QLabel* caption() const { return caption_; }
    QVBoxLayout* body() const { return body_; }

private:
    QLabel* caption_;
    QVBoxLayout* body_;
};

}  // namespace brenvik
