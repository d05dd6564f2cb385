#include "shell/QtPort.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QColorDialog>
#include <QDateTime>
#include <QDesktopServices>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QKeyEvent>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QThread>
#include <QUrl>

#include "frame/Messages.h"
#include "frame/files/FileSystem.h"
#include "frame/platform/HostSound.h"
#include "frame/program/Product.h"
#include "shell/widgets/PlainText.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

// Where a box has no Cancel, neither Escape nor the close button may answer for the user.
class Box : public QMessageBox {
public:
    Box(QWidget* parent, bool canBeClosed) : QMessageBox(parent), canBeClosed_(canBeClosed) {}

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Escape && !canBeClosed_) return;
        QMessageBox::keyPressEvent(event);
    }
    void closeEvent(QCloseEvent* event) override {
        if (canBeClosed_) return QMessageBox::closeEvent(event);
        event->ignore();
    }

private:
    bool canBeClosed_;
};

// While a box is open the pointer is an arrow, also in the middle of a long operation.
class ArrowPointer {
public:
    explicit ArrowPointer(bool waiting) : waiting_(waiting) {
        if (waiting_) QApplication::restoreOverrideCursor();
    }
    ~ArrowPointer() {
        if (waiting_) QApplication::setOverrideCursor(Qt::WaitCursor);
    }
    ArrowPointer(const ArrowPointer&) = delete;
    ArrowPointer& operator=(const ArrowPointer&) = delete;

private:
    bool waiting_;
};

struct BoxButton {
    Answer answer;
    const char* caption;
    QMessageBox::ButtonRole role;
};
constexpr BoxButton Ok{Answer::OK, "OK", QMessageBox::AcceptRole}, Cancel{Answer::Cancel, "Abbrechen", QMessageBox::RejectRole},
    Yes{Answer::Yes, "&Ja", QMessageBox::YesRole}, No{Answer::No, "&Nein", QMessageBox::NoRole},
    Retry{Answer::Retry, "&Wiederholen", QMessageBox::AcceptRole};

std::vector<BoxButton> buttonsOf(int flags) {
    constexpr int ButtonMask = 0xF;
    switch (flags & ButtonMask) {
        case box::OKCancel: return {Ok, Cancel};
        case box::YesNoCancel: return {Yes, No, Cancel};
        case box::YesNo: return {Yes, No};
        case box::RetryCancel: return {Retry, Cancel};
        default: return {Ok};
    }
}

QMessageBox::Icon iconOf(int flags) {
    constexpr int IconMask = 0xF0;
    switch (flags & IconMask) {
        case box::Critical: return QMessageBox::Critical;
        case box::Question: return QMessageBox::Question;
        case box::Exclamation: return QMessageBox::Warning;
        case box::Information: return QMessageBox::Information;
        default: return QMessageBox::NoIcon;
    }
}

void germanLabels(QFileDialog& dialog, bool save) {
    dialog.setLabelText(QFileDialog::LookIn, QStringLiteral("Suchen in:"));
    dialog.setLabelText(QFileDialog::FileName, QStringLiteral("Dateiname:"));
    dialog.setLabelText(QFileDialog::FileType, QStringLiteral("Dateityp:"));
    dialog.setLabelText(QFileDialog::Accept, save ? QStringLiteral("&Speichern") : QStringLiteral("Ö&ffnen"));
    dialog.setLabelText(QFileDialog::Reject, QStringLiteral("Abbrechen"));
}

std::optional<std::string> runDialog(QFileDialog& dialog) {
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return utf8(dialog.selectedFiles().constFirst());
}

}  // namespace

QtPort::QtPort() { registerOwnWindows(*this); }

QWidget* QtPort::frontWindow() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    const auto accompanies = [](const QWidget* window) { return !window->testAttribute(Qt::WA_QuitOnClose); };   // the help
    if (QWidget* active = QApplication::activeWindow(); active && !accompanies(active)) return active;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->windowType() == Qt::Window && !accompanies(window)) return window;
    return nullptr;
}

Answer QtPort::restingAnswer(int flags) { return buttonsOf(flags).back().answer; }

Answer QtPort::messageBox(const MessageBox& request) {
    const ArrowPointer arrow(waiting_);
    const std::vector<BoxButton> wanted = buttonsOf(request.flags);
    const bool canBeClosed = wanted.size() == 1 || wanted.back().answer == Answer::Cancel;
    Box dialog(frontWindow(), canBeClosed);
    dialog.setObjectName(QStringLiteral("MessageBox"));
    dialog.setWindowTitle(request.title.empty() ? qt(product::Titel) : plainLine(request.title));
    dialog.setTextFormat(Qt::PlainText);
    dialog.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    dialog.setText(boxText(request.text));
    dialog.setIcon(iconOf(request.flags));
    std::vector<QPushButton*> buttons;
    for (const BoxButton& button : wanted) buttons.push_back(dialog.addButton(QString::fromUtf8(button.caption), button.role));
    if (request.flags & box::Help) {
        QPushButton* help = dialog.addButton(QStringLiteral("&Hilfe"), QMessageBox::HelpRole);
        help->disconnect();      // the box stays open while the user reads
        QObject::connect(help, &QPushButton::clicked, &dialog, [&] { showHelp(request.helpFile, request.helpContext); });
    }
    dialog.setDefaultButton(buttons[request.flags & box::DefaultNo && buttons.size() > 1 ? 1 : 0]);
    if (canBeClosed) dialog.setEscapeButton(buttons.back());
    dialog.exec();
    for (std::size_t i = 0; i < buttons.size(); ++i)
        if (dialog.clickedButton() == buttons[i]) return wanted[i].answer;
    return restingAnswer(request.flags);   // closed by the program's end
}

QStringList qtFileFilters(std::string_view filter) {
    const QStringList pieces = qt(filter).split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < pieces.size(); i += 2) {
        QStringList patterns;
        for (QString pattern : pieces[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
            pattern = pattern.trimmed();
            while (pattern.endsWith(QLatin1Char('.'))) pattern.chop(1);      // "*.COM." and "*.COM" mean the same
            patterns.append(pattern == QLatin1String("*.*") ? QStringLiteral("*") : pattern);
        }
        if (!patterns.isEmpty()) filters.append(pieces[i].trimmed() + QStringLiteral(" (") + patterns.join(QLatin1Char(' ')) + QLatin1Char(')'));
    }
    return filters;
}

namespace {

// "REG" of "REG-File (*.REG)|*.REG": what a name without one is given, before the question whether a file is to be replaced.
QString firstSuffix(std::string_view filter) {
    const QString pattern = qt(filter).section(QLatin1Char('|'), 1, 1).section(QLatin1Char(';'), 0, 0).trimmed();
    const QString suffix = pattern.startsWith(QLatin1String("*.")) ? pattern.mid(2) : QString();
    return suffix.contains(QLatin1Char('*')) ? QString() : suffix;
}

}  // namespace

std::optional<std::string> QtPort::chooseFile(const FileChoice& request) {
    const ArrowPointer arrow(waiting_);
    QFileDialog dialog(frontWindow(), qt(request.title));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(request.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(request.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    germanLabels(dialog, request.save);
    const QStringList filters = qtFileFilters(request.filter);
    if (!filters.isEmpty()) dialog.setNameFilters(filters);
    if (request.save) dialog.setDefaultSuffix(firstSuffix(request.filter));
    const QFileInfo start(qt(request.path));
    if (!request.path.empty()) {
        if (start.isDir()) {
            dialog.setDirectory(start.absoluteFilePath());
        } else {
            if (start.absoluteDir().exists()) dialog.setDirectory(start.absolutePath());
            dialog.selectFile(start.fileName());
        }
    }
    return runDialog(dialog);
}

std::optional<std::string> QtPort::chooseFolder(std::string_view title, std::string_view start) {
    const ArrowPointer arrow(waiting_);
    QFileDialog dialog(frontWindow(), title.empty() ? QString::fromUtf8(messages::ChooseFolder) : qt(title));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    germanLabels(dialog, false);
    dialog.setLabelText(QFileDialog::Accept, QStringLiteral("Aus&wählen"));
    if (QFileInfo(qt(start)).isDir()) dialog.setDirectory(qt(start));
    return runDialog(dialog);
}

std::optional<Rgb> QtPort::chooseColour(Rgb start) {
    const ArrowPointer arrow(waiting_);
    QColorDialog dialog(QColor(start.red, start.green, start.blue), frontWindow());
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    dialog.setWindowTitle(QStringLiteral("Farbe"));
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    const QColor chosen = dialog.selectedColor();
    const auto part = [](int value) { return static_cast<std::uint8_t>(value); };
    return Rgb{part(chosen.red()), part(chosen.green()), part(chosen.blue())};
}

void QtPort::showWindow(WindowRequest& request) {
    const ArrowPointer arrow(waiting_);
    const auto found = windows_.constFind(qt(request.windowName()));
    if (found == windows_.constEnd())
        tell("Das Fenster " + std::string(request.windowName()) + " steht in dieser Programmversion nicht zur Verfügung.", box::Exclamation);
    else
        (*found)(*this, frontWindow(), request);
}

void QtPort::setClipboard(std::string_view text) { QGuiApplication::clipboard()->setText(qt(text)); }

DateTime QtPort::now() {
    const QDateTime time = QDateTime::currentDateTime();
    const QDate d = time.date();
    const QTime t = time.time();
    return {d.year(), d.month(), d.day(), t.hour(), t.minute(), t.second()};
}

void QtPort::sleepMs(int milliseconds) {
    constexpr int Slice = 20;     // windows repaint while the program waits
    QElapsedTimer timer;
    timer.start();
    for (;;) {
        letEventsRun();
        const qint64 left = milliseconds - timer.elapsed();
        if (left <= 0) return;
        QThread::msleep(static_cast<unsigned long>(std::min<qint64>(left, Slice)));
    }
}

// Repaints and timers only: a click in the middle of a routine would run into it. It is not lost, it comes afterwards.
void QtPort::letEventsRun() { QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); }

void QtPort::playSound(const std::string& file) {
    if (file.empty() || !QFileInfo::exists(qt(file)) || host::playSound(pathFromUtf8(file))) return;
    if (!player_) {
        player_ = QString();
        for (const char* name : {"pw-play", "paplay", "aplay"})
            if (player_->isEmpty()) player_ = QStandardPaths::findExecutable(QLatin1String(name));
        if (player_->isEmpty() && note_) note_("--- Klang: Es ist kein Programm zum Abspielen da");
    }
    if (player_->isEmpty()) return;
    QProcess process;
    process.setProgram(*player_);
    process.setArguments({qt(file)});
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.startDetached();
}

void QtPort::waitPointer(bool on) {
    if (on == waiting_) return;
    waiting_ = on;
    if (on)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

bool QtPort::startProgram(const std::string& program, const std::vector<std::string>& arguments) {
    QStringList list;
    for (const std::string& argument : arguments) list.append(qt(argument));
    return QProcess::startDetached(qt(program), list);
}

bool QtPort::openAddress(const std::string& url) { return QDesktopServices::openUrl(QUrl(qt(url))); }

void QtPort::showHelp(const std::string& file, int context) {
    if (help_) return help_(file, context);
    tell("Die Hilfedatei \"" + file + "\" wurde nicht gefunden.", box::Exclamation);
}

}  // namespace brenvik
