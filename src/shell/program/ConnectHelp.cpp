#include "shell/program/ConnectHelp.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPointer>
#include <QUrl>

#include "frame/Messages.h"
#include "frame/files/FileSystem.h"
#include "frame/program/HelpTopics.h"
#include "frame/program/Product.h"
#include "shell/QtPort.h"
#include "shell/main/frmBVK_Prog.h"
#include "shell/tipwindows/frmBVK_KeyInfo.h"
#include "shell/tipwindows/frmBVK_OSFreigabe.h"
#include "shell/widgets/QtText.h"
#include "shell/windows/frmBVK_About.h"
#include "shell/windows/frmBVK_Hilfe.h"
#include "shell/windows/frmBVK_OSInfo.h"
#include "tipengine/Program.h"

namespace brenvik {
namespace {

// The one help window, and F1 in every window of the program. Lives as long as the main window.
class HelpService : public QObject {
public:
    explicit HelpService(const WindowParts& parts) : QObject(&parts.windows), parts_(parts) { parts.application.installEventFilter(this); }
    ~HelpService() override { delete window_; }

    void show(const std::string& file, int topic) {
        if (!isOwnHelp(file)) return parts_.port.tell("Die Hilfedatei \"" + file + "\" wurde nicht gefunden.", box::Exclamation);
        frmBVK_Hilfe& window = windowInFront();
        window.showTopic(topic);
        window.show();
        window.raise();
        window.activateWindow();
    }
    void showOwn(int topic) { show(std::string(product::HelpFile), topic); }

    void showForTip() {
        const Context& ctx = parts_.program.context();
        if (!ctx.blnTippGeladen) return showOwn(helpTopic::General);
        const Tipp& tipp = ctx.aktuellerTipp;
        showOwn(topicOfTip(tipp.HilfeNummer, tipp.Eintrag.size() > 1 ? tipp.Eintrag[1].Ausgabeart : 0));
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1 || !watched->isWidgetType()) return false;
        const QWidget* window = static_cast<QWidget*>(watched)->window();
        if (window == window_ || qobject_cast<const QMessageBox*>(window)) return false;
        if (window == &parts_.windows)
            showForTip();
        else
            showOwn(topicOfWindow(window->objectName()));
        return true;
    }

private:
    // A modal window blocks all others but its own children: while one is open the help belongs to it.
    frmBVK_Hilfe& windowInFront() {
        QWidget* owner = QApplication::activeModalWidget();
        if (!window_) {
            const auto open = [port = &parts_.port](const std::string& address) { return port->openAddress(address); };
            window_ = new frmBVK_Hilfe(parts_.program.context().programPath / "hilfe", open, owner);
            window_->setAttribute(Qt::WA_QuitOnClose, false);
        } else if (window_->parentWidget() != owner && !(owner && window_->isAncestorOf(owner))) {
            giveTo(owner);
        }
        if (auto* dialog = qobject_cast<QDialog*>(owner))
            connect(dialog, &QDialog::finished, window_, [this, dialog] {
                if (window_->parentWidget() == dialog) giveTo(nullptr);
            });
        return *window_;
    }
    void giveTo(QWidget* owner) {
        const bool visible = window_->isVisible();
        const QRect place = window_->geometry();
        window_->setParent(owner, Qt::Window);
        window_->setGeometry(place);
        window_->setVisible(visible);
    }

    WindowParts parts_;
    QPointer<frmBVK_Hilfe> window_;
};

void openAddress(QtPort& port, std::string_view address) {
    if (!port.openAddress(std::string(address))) port.tell("Die Adresse " + std::string(address) + " konnte nicht geöffnet werden.", box::Exclamation);
}

void connectHelpMenu(const WindowParts& parts, HelpService& help) {
    frmBVK_Prog& window = parts.windows;
    const Context& ctx = parts.program.context();
    window.setCommand(Command::BVKInfo, [&help] { help.showOwn(helpTopic::Info); });
    window.setCommand(Command::BVKContents, [&help] { help.showOwn(helpTopic::Contents); });
    window.setCommand(Command::TipHelp, [&help] { help.showForTip(); });
    const auto companion = [&ctx] { return ctx.einstellungen.strOstranaPfad + ctx.einstellungen.Ostrana_Name; };
    window.setCommand(Command::OSTInfo, [&help, companion] { help.show(companion(), product::OstranaContext); });
    window.setCommand(Command::OSTInhalt, [&help, companion] { help.show(companion(), helpTopic::Contents); });
    const auto web = [&](Command command, std::string_view address) {
        window.setCommand(command, [port = &parts.port, address] { openAddress(*port, address); });
    };
    web(Command::OSTHome, product::OstranaUrl);
    web(Command::OSTDownload, product::OstranaDownloadUrl);
    web(Command::OSTShop, product::OstranaShopUrl);
    window.setCommand(Command::EMail, [port = &parts.port] { openAddress(*port, "Mailto:" + std::string(product::Mail)); });
}

std::string addressOf(const std::filesystem::path& file) { return utf8(QUrl::fromLocalFile(qt(utf8FromPath(file))).toString(QUrl::FullyEncoded)); }

void connectFiles(const WindowParts& parts) {
    frmBVK_Prog& window = parts.windows;
    const Context& ctx = parts.program.context();
    QtPort& port = parts.port;
    window.setCommand(Command::Log, [&ctx, &port] {
        const auto log = ctx.homePath / product::LogFile;
        std::error_code ignored;
        if (!std::filesystem::is_regular_file(log, ignored)) return port.tell(messages::NoLog, box::Information);
        openAddress(port, addressOf(log));
    });
    window.setCommand(Command::ProgramFolder, [&ctx, &port] { openAddress(port, addressOf(ctx.homePath)); });
}

void connectInformation(const WindowParts& parts) {
    frmBVK_Prog& window = parts.windows;
    Context& ctx = parts.program.context();
    window.setCommand(Command::KeyInfo, [&] { frmBVK_KeyInfo(ctx, ctx.aktuellerTipp, &window).exec(); });
    window.setCommand(Command::BSFreigabe, [&] { frmBVK_OSFreigabe(ctx.aktuellerTipp, &window).exec(); });
    window.setCommand(Command::SystemInfo, [&] { frmBVK_OSInfo(ctx, &window).exec(); });
    window.setCommand(Command::About, [&] { frmBVK_About(ctx.strProgVersion, &window).exec(); });
}

}  // namespace

void connectHelp(WindowParts& parts) {
    auto* help = new HelpService(parts);
    parts.port.onHelp([help = QPointer<HelpService>(help)](const std::string& file, int topic) {
        if (help) help->show(file, topic);
    });
    connectHelpMenu(parts, *help);
    connectFiles(parts);
    connectInformation(parts);
}

}  // namespace brenvik
