#include "shell/Dialoge.h"

#include "shell/Icons.h"

namespace brenvik {

Dialog::Dialog(const char* name, const QString& title, QWidget* parent) : QDialog(parent) {
    setObjectName(QString::fromUtf8(name));
    setWindowTitle(title);
    setWindowIcon(IconSet::program());
}

QLabel* Dialog::label(const char* name, const QString& text) {
    auto* label = new QLabel(text, this);
    label->setObjectName(QString::fromUtf8(name));
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QPushButton* Dialog::button(const char* name, const QString& caption) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(QString::fromUtf8(name));
    button->setAutoDefault(false);
    return button;
}

}  // namespace brenvik
