#include "shell/windows/InfoWindows.h"

#include "frame/text/Texts.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int ButtonOk = 8;

}  // namespace

InfoWindows::InfoWindows(const char* name, int titleText, QWidget* parent)
    : Dialog(name, tableText(titleText), parent), grid_(new QGridLayout), buttons_(new QHBoxLayout) {
    auto* box = new QVBoxLayout(this);
    box->setSpacing(12);
    box->addLayout(grid_);
    box->addStretch(1);
    box->addLayout(buttons_);
    grid_->setColumnStretch(1, 1);
    grid_->setVerticalSpacing(6);
    grid_->setHorizontalSpacing(10);
}

QString InfoWindows::tableText(int number) { return qt(strBVKTexte(number)).replace(QStringLiteral("\r\n"), QStringLiteral("\n")).trimmed(); }

void InfoWindows::addRow(QWidget* widget) { grid_->addWidget(widget, grid_->rowCount(), 0, 1, 2); }

QLineEdit* InfoWindows::line(const char* captionName, int captionText, const char* valueName, const QString& value) {
    QLabel* caption = text(captionName, captionText);
    caption->setWordWrap(false);
    auto* shown = new QLineEdit(value, this);
    shown->setObjectName(QString::fromUtf8(valueName));
    shown->setReadOnly(true);
    shown->setCursorPosition(0);
    shown->setAccessibleName(caption->text());
    caption->setBuddy(shown);
    const int row = grid_->rowCount();
    grid_->addWidget(caption, row, 0);
    grid_->addWidget(shown, row, 1);
    return shown;
}

QPushButton* InfoWindows::closeButton(const char* name) {
    QPushButton* close = button(name, qt(strBVKButtons(ButtonOk)));
    close->setDefault(true);
    close->setFocus();
    buttons_->addStretch(1);
    buttons_->addWidget(close);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    return close;
}

}  // namespace brenvik
