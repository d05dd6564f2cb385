// What holds in every window: no text is cut, every control can be reached by keyboard and says what it is.
#include <QAccessible>
#include <QComboBox>
#include <QDirIterator>
#include <QGroupBox>
#include <QMenu>
#include <QMenuBar>
#include <QButtonGroup>
#include <QRegularExpression>
#include <QTabBar>
#include <set>

#include "ProgramFixture.h"
#include "shell/program/WindowTour.h"

namespace brenvik::test {
namespace {

using Names = std::set<std::string>;

std::string nameOf(const QObject& object) { return object.objectName().isEmpty() ? object.metaObject()->className() : utf8(object.objectName()); }

bool isInner(const QWidget& widget) { return widget.objectName().startsWith("qt_") || widget.inherits("QTabBar") || qobject_cast<QComboBox*>(widget.parentWidget()); }

QList<QWidget*> controls(QWidget& window) {
    QList<QWidget*> found;
    for (QWidget* widget : window.findChildren<QWidget*>())
        if (widget->isVisible() && widget->isEnabled() && widget->window() == &window && (widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy() && !isInner(*widget))
            found.append(widget);
    return found;
}

// What the Tab key reaches, beginning where the window begins.
Names reachedByTab(QWidget& window, int most) {
    Names names;
    for (int i = 0; i < most; ++i) {
        QWidget* focus = window.focusWidget();
        if (focus) names.insert(nameOf(*focus));
        QTest::keyClick(focus ? focus : &window, Qt::Key_Tab);
    }
    return names;
}

void checkKeyboard(QWidget& window, const std::string& where) {
    const QList<QWidget*> all = controls(window);
    const Names reached = reachedByTab(window, 2 * static_cast<int>(all.size()) + 4);
    for (QWidget* widget : all) {
        const auto* option = qobject_cast<QAbstractButton*>(widget);
        const auto* group = option ? option->group() : nullptr;      // within which the arrow keys lead on
        const auto isReached = [&](const QAbstractButton* one) { return reached.contains(nameOf(*one)); };
        const bool byGroup = group ? std::ranges::any_of(group->buttons(), isReached) : option && option->autoExclusive() && !option->isChecked();
        EXPECT_TRUE(byGroup || reached.contains(nameOf(*widget))) << where << ": Tab never comes to " << nameOf(*widget);
        const QAccessibleInterface* told = QAccessible::queryAccessibleInterface(widget);
        EXPECT_TRUE(told && !told->text(QAccessible::Name).isEmpty()) << where << ": " << nameOf(*widget) << " has no accessible name";
    }
}

// --- mnemonics ---

class Mnemonics {
public:
    explicit Mnemonics(std::string where) : where_(std::move(where)) {}
    void add(const QString& caption, const QObject& owner) {
        const QKeySequence key = QKeySequence::mnemonic(caption);
        if (key.isEmpty()) return;
        const std::string letter = utf8(key.toString().right(1));
        const auto [first, fresh] = owners_.emplace(letter, nameOf(owner));
        EXPECT_TRUE(fresh || told(letter)) << where_ << ": " << letter << " belongs to " << first->second << " and " << nameOf(owner);
    }

private:
    // Captions that are given as they stand; the key goes round among their owners.
    bool told(const std::string& letter) const {
        static const std::set<std::string> given{"frmBVK_Prog H", "frmBVK_Prog T", "frmBVK_Prog F", "frmBVK_Prog D", "frmBVK_Prog B", "frmBVK_Optionen B", "frmBVK_HistoryListe A", "mnuAnsicht.Menu B", "mnuBearbeiten.Menu S"};
        return given.contains(where_ + " " + letter);
    }
    std::string where_;
    std::map<std::string, std::string> owners_;
};

void checkMnemonics(QWidget& window) {
    Mnemonics own(nameOf(window));
    for (const auto* bar : window.findChildren<QMenuBar*>())
        for (const QAction* action : bar->actions())
            if (action->isVisible()) own.add(action->text(), *action);
    for (const auto* button : window.findChildren<QAbstractButton*>())
        if (button->isVisible() && !qobject_cast<const QToolButton*>(button)) own.add(button->text(), *button);
    for (const auto* label : window.findChildren<QLabel*>())
        if (label->isVisible() && label->buddy()) own.add(label->text(), *label);
    for (const auto* frame : window.findChildren<QGroupBox*>())
        if (frame->isVisible()) own.add(frame->title(), *frame);
    for (const auto* tabs : window.findChildren<QTabBar*>())
        for (int i = 0; i < tabs->count(); ++i) own.add(tabs->tabText(i), *tabs);
    for (const auto* menu : window.findChildren<QMenu*>()) {
        Mnemonics entries(nameOf(*menu));
        for (const QAction* action : menu->actions())
            if (action->isVisible()) entries.add(action->text(), *action);
    }
}

// --- texts ---

QString plain(QString caption) { return caption.remove(QRegularExpression("&(?!&)")); }

void checkTexts(QWidget& window, const std::string& where) {
    const auto cut = [&](const QWidget& widget, const QString& text) { ADD_FAILURE() << where << ": \"" << utf8(text) << "\" is cut (" << nameOf(widget) << " " << widget.width() << "x" << widget.height() << ", needs " << widget.heightForWidth(widget.width()) << ")"; };
    for (const auto* label : window.findChildren<QLabel*>()) {
        if (!label->isVisible() || label->text().isEmpty()) continue;
        if (label->wordWrap() ? label->height() < label->heightForWidth(label->width()) : label->width() < label->minimumSizeHint().width()) cut(*label, label->text());
    }
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
        if (!button->isVisible() || button->text().isEmpty()) continue;
        const auto* tool = qobject_cast<const QToolButton*>(button);
        if (tool && tool->toolButtonStyle() == Qt::ToolButtonIconOnly) continue;
        const bool wraps = button->hasHeightForWidth();
        const int width = wraps ? 0 : button->fontMetrics().size(Qt::TextShowMnemonic, plain(button->text())).width();
        if (button->width() < width || button->height() < (wraps ? button->heightForWidth(button->width()) : button->fontMetrics().height())) cut(*button, button->text());
    }
    for (const auto* tabs : window.findChildren<QTabBar*>())
        for (int i = 0; i < tabs->count(); ++i)
            if (tabs->tabRect(i).width() < tabs->fontMetrics().horizontalAdvance(plain(tabs->tabText(i))) || tabs->tabRect(i).right() > tabs->width()) cut(*tabs, tabs->tabText(i));
}

TEST_F(ProgramFixture, EveryWindowIsWholeAndGoesByKeyboard) {
    ASSERT_TRUE(start());
    window().setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    Names seen;
    visitWindows(program->parts(), [&](QWidget& shown, const std::string& where) {
        seen.insert(nameOf(shown));
        const bool main = &shown == &window();
        for (const QSize size : {main ? window().minimumSize() : shown.size(), main ? QSize(980, 720) : shown.size()}) {
            shown.resize(size);
            for (int i = 0; i < 3; ++i) QCoreApplication::sendPostedEvents();      // a caption that wraps asks for its height anew
            checkTexts(shown, where + " at " + std::to_string(shown.width()));
        }
        checkMnemonics(shown);
        shown.activateWindow();
        if (where != "frmBVK_Info") checkKeyboard(shown, where);
    });
    for (QDirIterator headers(QStringLiteral(BRENVIK_SOURCE_DIR "/src/shell"), {"frmBVK_*.h"}, QDir::Files, QDirIterator::Subdirectories); headers.hasNext();) {
        headers.next();
        const QString header = headers.fileName();
        EXPECT_TRUE(seen.contains(utf8(header.chopped(2)))) << utf8(header) << " is in no picture";
    }
}

}  // namespace
}  // namespace brenvik::test
