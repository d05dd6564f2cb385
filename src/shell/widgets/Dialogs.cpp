#include "shell/widgets/Dialogs.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <algorithm>

#include "shell/widgets/Icons.h"

namespace brenvik {
namespace {

class DeleteKey : public QObject {
public:
    DeleteKey(QAbstractItemView& list, QPushButton& button) : QObject(&list), button_(button) {}
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Delete) return QObject::eventFilter(watched, event);
        button_.click();
        return true;
    }

private:
    QPushButton& button_;
};

}  // namespace

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

void Dialog::fixSize(int width) {
    setFixedWidth(width);
    setFixedHeight(layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width) : sizeHint().height());
}

void deleteByKey(QAbstractItemView& list, QPushButton& button) { list.installEventFilter(new DeleteKey(list, button)); }

void FormZentrieren(const QRect& anchor, QWidget& window) {
    const QSize size = window.size();
    QPoint corner((anchor.width() - size.width()) / 2 + anchor.left(), (anchor.height() - size.height()) / 2 + anchor.top());
    const QScreen* screen = QGuiApplication::screenAt(anchor.center());
    if (!screen) screen = QGuiApplication::primaryScreen();
    if (screen) {
        const QRect area = screen->availableGeometry();
        corner.setX(std::max(area.left(), std::min(corner.x(), area.right() + 1 - size.width())));
        corner.setY(std::max(area.top(), std::min(corner.y(), area.bottom() + 1 - size.height())));
    }
    window.move(corner);
}

}  // namespace brenvik
