#include "shell/panels/TextField.h"

#include <QVBoxLayout>

#include "shell/widgets/FieldText.h"
#include "shell/widgets/PlainText.h"
#include "shell/widgets/QtText.h"

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
        connect(lines_, &QPlainTextEdit::textChanged, this, [this] { emit edited(fieldText()); });
    } else {
        line_ = new QLineEdit(this);
        line_->setObjectName(objectName);
        line_->setMaxLength(FieldLimit);
        box->addWidget(line_);
        connect(line_, &QLineEdit::textChanged, this, [this](const QString& text) { emit edited(text); });
    }
    note_->setObjectName(QStringLiteral("lblTextFeld"));
    note_->setWordWrap(true);
    note_->setTextFormat(Qt::PlainText);
    note_->hide();
    box->addWidget(note_);
}

void TextField::setFieldAccessibleName(const QString& name) {
    if (line_) line_->setAccessibleName(name);
    if (lines_) lines_->setAccessibleName(name);
}

QString TextField::fieldText() const { return line_ ? line_->text() : brenvik::fieldText(*lines_); }

void TextField::setValue(const std::string& text, bool readOnly) {
    const bool inPart = text.size() > LongestShown;
    const QString shown = inPart ? qt(std::string_view(text).substr(0, PartShown)) + QStringLiteral(" …") : qt(text);
    if (fieldText() != shown) {
        if (line_) {
            line_->setText(shown);
            line_->setCursorPosition(0);
        } else {
            lines_->setPlainText(shown);
        }
    }
    const bool changed = !inPart && (fieldText() != shown || utf8(shown) != text);
    if (line_) line_->setReadOnly(readOnly || inPart || changed);
    if (lines_) lines_->setReadOnly(readOnly || inPart || changed);
    QString note = unseenNote(text);
    if (changed) note = QStringLiteral("Der Wert enthält Zeichen, die dieses Feld nicht wiedergeben kann. Damit nichts davon verloren geht, wird er hier nur gezeigt.");
    if (inPart) note = QStringLiteral("Der Wert ist mit %1 Zeichen zu lang, um hier bearbeitet zu werden; gezeigt wird sein Anfang.").arg(qt(text).size());
    note_->setText(note);
    note_->setVisible(!note.isEmpty());
}

}  // namespace brenvik
