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
class Hilfedienst : public QObject {
public:
    explicit Hilfedienst(const Fensterteile& teile) : QObject(&teile.fenster), teile_(teile) { teile.application.installEventFilter(this); }
    ~Hilfedienst() override { delete window_; }

    void show(const std::string& file, int thema) {
        if (!istEigeneHilfe(file)) return teile_.port.tell("Die Hilfedatei \"" + file + "\" wurde nicht gefunden.", box::Exclamation);
        frmBVK_Hilfe& window = windowInFront();
        window.showTopic(thema);
        window.show();
        window.raise();
        window.activateWindow();
    }
    void showOwn(int thema) { show(std::string(produkt::HilfeDatei), thema); }

    void showForTipp() {
        const Context& ctx = teile_.programm.context();
        if (!ctx.blnTippGeladen) return showOwn(hilfethema::Allgemein);
        const Tipp& tipp = ctx.aktuellerTipp;
        showOwn(themaDesTipps(tipp.HilfeNummer, tipp.Eintrag.size() > 1 ? tipp.Eintrag[1].Ausgabeart : 0));
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1 || !watched->isWidgetType()) return false;
        const QWidget* window = static_cast<QWidget*>(watched)->window();
        if (window == window_ || qobject_cast<const QMessageBox*>(window)) return false;
        if (window == &teile_.fenster)
            showForTipp();
        else
            showOwn(themaDesFensters(window->objectName()));
        return true;
    }

private:
    // A modal window blocks all others but its own children: while one is open the help belongs to it.
    frmBVK_Hilfe& windowInFront() {
        QWidget* owner = QApplication::activeModalWidget();
        if (!window_) {
            const auto open = [port = &teile_.port](const std::string& address) { return port->openAddress(address); };
            window_ = new frmBVK_Hilfe(teile_.programm.context().programmPfad / "hilfe", open, owner);
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

    Fensterteile teile_;
    QPointer<frmBVK_Hilfe> window_;
};

void openAddress(QtPort& port, std::string_view address) {
    if (!port.openAddress(std::string(address))) port.tell("Die Adresse " + std::string(address) + " konnte nicht geöffnet werden.", box::Exclamation);
}

void connectHelpMenu(const Fensterteile& teile, Hilfedienst& help) {
    frmBVK_Prog& window = teile.fenster;
    const Context& ctx = teile.programm.context();
    window.setCommand(Befehl::BVKInfo, [&help] { help.showOwn(hilfethema::Info); });
    window.setCommand(Befehl::BVKInhalt, [&help] { help.showOwn(hilfethema::Inhalt); });
    window.setCommand(Befehl::TippHilfe, [&help] { help.showForTipp(); });
    const auto companion = [&ctx] { return ctx.einstellungen.strOstranaPfad + ctx.einstellungen.Ostrana_Name; };
    window.setCommand(Befehl::OSTInfo, [&help, companion] { help.show(companion(), produkt::OstranaKontext); });
    window.setCommand(Befehl::OSTInhalt, [&help, companion] { help.show(companion(), hilfethema::Inhalt); });
    const auto web = [&](Befehl befehl, std::string_view address) {
        window.setCommand(befehl, [port = &teile.port, address] { openAddress(*port, address); });
    };
    web(Befehl::OSTHome, produkt::OstranaUrl);
    web(Befehl::OSTDownload, produkt::OstranaDownloadUrl);
    web(Befehl::OSTShop, produkt::OstranaShopUrl);
    window.setCommand(Befehl::EMail, [port = &teile.port] { openAddress(*port, "Mailto:" + std::string(produkt::Mail)); });
}

std::string addressOf(const std::filesystem::path& file) { return utf8(QUrl::fromLocalFile(qt(utf8FromPath(file))).toString(QUrl::FullyEncoded)); }

void connectFiles(const Fensterteile& teile) {
    frmBVK_Prog& window = teile.fenster;
    const Context& ctx = teile.programm.context();
    QtPort& port = teile.port;
    window.setCommand(Befehl::Protokoll, [&ctx, &port] {
        const auto log = ctx.heimPfad / produkt::LogDatei;
        std::error_code ignored;
        if (!std::filesystem::is_regular_file(log, ignored)) return port.tell(meldung::KeinProtokoll, box::Information);
        openAddress(port, addressOf(log));
    });
    window.setCommand(Befehl::Programmordner, [&ctx, &port] { openAddress(port, addressOf(ctx.heimPfad)); });
}

void connectInformation(const Fensterteile& teile) {
    frmBVK_Prog& window = teile.fenster;
    Context& ctx = teile.programm.context();
    window.setCommand(Befehl::KeyInfo, [&] { frmBVK_KeyInfo(ctx, ctx.aktuellerTipp, &window).exec(); });
    window.setCommand(Befehl::BSFreigabe, [&] { frmBVK_OSFreigabe(ctx.aktuellerTipp, &window).exec(); });
    window.setCommand(Befehl::SystemInfo, [&] { frmBVK_OSInfo(ctx, &window).exec(); });
    window.setCommand(Befehl::About, [&] { frmBVK_About(ctx.strProgVersion, &window).exec(); });
}

}  // namespace

void verbindeHilfe(Fensterteile& teile) {
    auto* help = new Hilfedienst(teile);
    teile.port.onHelp([help = QPointer<Hilfedienst>(help)](const std::string& file, int thema) {
        if (help) help->show(file, thema);
    });
    connectHelpMenu(teile, *help);
    connectFiles(teile);
    connectInformation(teile);
}

}  // namespace brenvik
