#include "shell/panels/TextField.h"

#include <QVBoxLayout>

#include "shell/QtText.h"

namespace brenvik {
namespace {

constexpr int FieldLimit = 1'000'000;    // a line edit's own default would cut a text at 32767 characters
constexpr std::size_t PartShown = 2'000;
constexpr int LinesShown = 5;

}  // namespace

TextField::TextField(const QString& objectName, bool severalLines, QWidget* parent) : QWidget(parent), note_(new QLabel(this)) {
    auto* box = new QVBoxLayout(this);
    box->setContentsMargins(0, 0, 0, 0);
    if (severalLines) {
        lines_ = new QPlainTextEdit(this);
        lines_->setObjectName(objectName);
        lines_->setTabChangesFocus(true);
        lines_->setMinimumHeight(lines_->fontMetrics().lineSpacing() * LinesShown + 12);
        lines_->setMaximumHeight(lines_->minimumHeight());
        box->addWidget(lines_);
        connect(lines_, &QPlainTextEdit::textChanged, this, [this] { emit edited(lines_->toPlainText()); });
    } else {
        line_ = new QLineEdit(this);
        line_->setObjectName(objectName);
        line_->setMaxLength(FieldLimit);
        box->addWidget(line_);
        connect(line_, &QLineEdit::textChanged, this, [this](const QString& text) { emit edited(text); });
    }
    note_->setWordWrap(true);
    note_->hide();
    box->addWidget(note_);
}

void TextField::setFieldAccessibleName(const QString& name) {
    if (line_) line_->setAccessibleName(name);
    if (lines_) lines_->setAccessibleName(name);
}

void TextField::setValue(const std::string& text, bool readOnly) {
    const bool inPart = text.size() > LongestShown;
    const QString shown = inPart ? qt(std::string_view(text).substr(0, PartShown)) + QStringLiteral(" …") : qt(text);
    if (line_) {
        if (line_->text() != shown) {
            line_->setText(shown);
            line_->setCursorPosition(0);
        }
        line_->setReadOnly(readOnly || inPart);
    } else {
        if (lines_->toPlainText() != shown) lines_->setPlainText(shown);
        lines_->setReadOnly(readOnly || inPart);
    }
    note_->setVisible(inPart);
    if (inPart) note_->setText(QStringLiteral("Der Wert ist mit %1 Zeichen zu lang, um hier bearbeitet zu werden; gezeigt wird sein Anfang.").arg(qt(text).size()));
}

}  // namespace brenvik
