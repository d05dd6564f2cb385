#include "shell/program/WindowTour.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTabWidget>
#include <QTimer>
#include <map>

#include "browser/RegBrowser.h"
#include "export/TippFileSaveRequest.h"
#include "frame/Errors.h"
#include "frame/program/CommandLineText.h"
#include "frame/program/Detection.h"
#include "frame/program/HelpTopics.h"
#include "frame/program/Product.h"
#include "frame/program/StartPassword.h"
#include "frame/text/Texts.h"
#include "lists/ListWindows.h"
#include "registry/ValueOperations.h"
#include "shell/QtPort.h"
#include "shell/main/frmBVK_Prog.h"
#include "shell/tipwindows/frmBVK_RegName.h"
#include "shell/widgets/QtText.h"
#include "shell/windows/frmBVK_Info.h"
#include "tipengine/Program.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik {
namespace {

constexpr int PollMs = 20;
constexpr std::size_t FilterXP = 6;             // the shipped registry is an XP's
constexpr int TextSaveQuestion = 57, TextReadTree = 221, StageReadTree = 80;

// A modal window: how it is opened, and what is done in it so that there is something to see.
struct WindowPicture {
    const char* windows;                            // object name
    std::function<void(WindowParts&)> open;     // returns when the window is closed
    std::function<void(QDialog&)> prepare = nullptr;
    const char* addition = "";                        // to the name it is visited under
};

// Types a text into a field and confirms it.
std::function<void(QDialog&)> typed(const char* field, const char* text) {
    return [field, text](QDialog& window) {
        auto* edit = window.findChild<QLineEdit*>(QLatin1String(field));
        if (!edit) return;
        edit->setText(QString::fromUtf8(text));
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent key(type, Qt::Key_Return, Qt::NoModifier);
            QApplication::sendEvent(edit, &key);
        }
    };
}

std::function<void(QDialog&)> page(const char* widget) {
    return [widget](QDialog& window) {
        for (auto* tabs : window.findChildren<QTabWidget*>())
            if (auto* wanted = tabs->findChild<QWidget*>(QLatin1String(widget))) tabs->setCurrentWidget(wanted);
    };
}

std::function<void(WindowParts&)> menu(const char* entry) {
    return [entry](WindowParts& parts) { parts.windows.menus().action(QLatin1String(entry))->trigger(); };
}

template <class Request> std::function<void(WindowParts&)> request(Request example) {
    return [example](WindowParts& parts) {
        Request own = example;
        parts.port.showWindow(own);
    };
}

DatentypRequest typeConflict() {
    DatentypRequest request;
    request.tipNumber = "301";
    request.typeDatabase = "REG_DWORD";
    request.typeRegistry = "REG_SZ";
    request.contents = "400";
    return request;
}

BearbeitenRequest menuEntry() {
    BearbeitenRequest request;
    request.neu = false;
    request.txtKeyName = "editor";
    request.txtBeschreibung = "Mit dem Editor öffnen";
    request.txtBefehl = "notepad.exe \"%1\"";
    return request;
}

BootINIRequest bootEntry() {
    BootINIRequest request;
    request.txtBootWert = "Microsoft Windows XP Professional";
    return request;
}

REGEditRequest registryNumber() {
    REGEditRequest request;
    request.ItemKey = "HKEY_CURRENT_USER\\Control Panel\\Desktop";
    request.ItemName = "ForegroundLockTimeout";
    request.ItemWert = fromText("200000", regtype::Dword);
    return request;
}

RegNameRequest newKeyName() {
    RegNameRequest request;
    request.titel = "Neuer Schlüssel";
    request.question = "Name des neuen Schlüssels:";
    request.name = "Policies";
    return request;
}

TippFileSaveRequest exportList() {
    TippFileSaveRequest request;
    request.caption = "REG-File-Liste speichern...";
    request.lblInfo = "Folgende Einträge befinden sich in der Liste:";
    request.lvRegList = {"Bildschirmschoner ein- und ausschalten", "Wartezeit beim Öffnen der Untermenüs im Startmenü", "Desktop-Symbole ausblenden"};
    return request;
}

HistoryListeRequest historyList() {
    static constexpr const char* Headings[] = {"Schriftgröße der Menüs", "Verzögerung der Menüs", "Assistent zur Desktopbereinigung abschalten"};
    HistoryListeRequest request;
    for (std::int32_t row = 1; row <= 3; ++row) request.lines.push_back({row, 0});
    request.zeile = [](std::size_t row) {
        return HistoryListeRequest::Zeile{"09.11.2002", "12:3" + std::to_string(row) + ":00", "BRENVIK-PC", Headings[row % std::size(Headings)]};
    };
    request.commandsActive = request.redoPossible = true;
    return request;
}

HistoryDatenRequest historyValues() {
    HistoryDatenRequest request;
    request.lines = {{"MenuShowDelay", "400", "100", "HKEY_CURRENT_USER\\Control Panel\\Desktop\\MenuShowDelay"},
                      {"NoDesktopCleanupWizard", KeyNotThere, "1", "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Policies\\Explorer\\NoDesktopCleanupWizard"}};
    request.hint = "Die Änderung wurde auf dem Rechner \"BUERO-2\" gemacht; die aktuellen Werte sind die des Rechners \"BRENVIK-PC\".";
    request.undoPossible = request.exactPossible = true;
    return request;
}

UndoConflictsRequest undoConflicts() {
    UndoConflictsRequest request;
    request.rows = {{"HKEY_CURRENT_USER\\Control Panel\\Desktop\\MenuShowDelay", "REG_SZ \"400\"", "REG_SZ \"100\"", "REG_SZ \"50\"", "von anderer Seite"}};
    return request;
}

FavVerwaltenRequest favourites() {
    FavVerwaltenRequest request;
    request.lvFav = {"Farben der Menüs und der Markierung", "Schriftgröße der Menüs", "Verzögerung der Menüs"};
    return request;
}

// A window that lands gets its line here.
std::vector<WindowPicture> modalWindows() {
    return {
        {"frmBVK_KeyInfo", menu("mnuKeyInfo")},
        {"frmBVK_OSFreigabe", menu("mnuBSFreigabe")},
        {"frmBVK_OSInfo", menu("mnuSystemInfo")},
        {"frmBVK_About", menu("mnuAbout")},
        {"frmBVK_Datentyp", request(typeConflict())},
        {"frmBVK_Bearbeiten", request(menuEntry())},
        {"frmBVK_BootINI", request(bootEntry())},
        {"frmBVK_HistoryListe", request(historyList())},
        {"frmBVK_HistoryDaten", request(historyValues())},
        {"frmBVK_UndoConflicts", request(undoConflicts())},
        {"frmBVK_FavVerwalten", request(favourites())},
        {"frmBVK_Suchen", menu("mnuRegSuchen"), typed("txtSuchText", "Menü")},
        {"frmBVK_Optionen", menu("mnuOptionen"), page("seiteAllgemein"), "-1"},
        {"frmBVK_Optionen", menu("mnuOptionen"), page("seitePruefungen"), "-2"},
        {"frmBVK_Optionen", menu("mnuOptionen"), page("seiteRegDateien"), "-3"},
        {"frmBVK_Optionen", menu("mnuOptionen"), page("seiteVerzeichnisse"), "-4"},
        {"frmBVK_Optionen", menu("mnuOptionen"), page("seiteHilfedatei"), "-5"},
        {"frmBVK_Optionen", menu("mnuOptionen"), page("seiteKennwort"), "-6"},
        {"frmBVK_PWAbfrage", request(PWAbfrageRequest())},
        {"frmBVK_RegBrowse", menu("mnuBvkReg"), typed("txtPfad", "HKCU\\Control Panel\\Desktop")},
        {"frmBVK_REGEdit", request(registryNumber())},
        {"frmBVK_RegName", request(newKeyName())},
        {"frmBVK_TippFileSave", request(exportList())},
        {"frmBVK_Parameter", request(ParameterRequest())},
        {"frmBVK_OSErkennung", request(OSErkennungRequest())},
        {"frmBVK_Symbolleiste", [](WindowParts& parts) { parts.windows.coolBar().askArrangement(QStringLiteral("tbrBVKNav")); }},
        {"MessageBox", [](WindowParts& parts) { parts.port.QtPort::messageBox({strBVKTexte(TextSaveQuestion), box::YesNo + box::Question}); }},
    };
}

class Tour {
public:
    Tour(WindowParts& parts, const Visit& visit) : parts_(parts), visit_(visit) {}

    void all() {
        visitStart();
        visitMain();
        for (const WindowPicture& window : modalWindows()) visitModal(window);
        visitHelp();
    }

private:
    void visitStart() {
        FrameContext& ctx = parts_.program.context();
        ctx.strStartInfo = strBVKTexte(TextReadTree);
        frmBVK_Info window(ctx, false);
        window.Update(StageReadTree);
        window.show();
        visit_(window, "frmBVK_Info");
    }

    // The window without a Tip and with one Tip of each panel kind, the modal windows then with a Tip of several values.
    void visitMain() {
        frmBVK_Prog& window = parts_.windows;
        TipEngine& engine = parts_.program.engine();
        engine.tree().TreeEinlesen();
        engine.tree().selectNode(0);
        visit_(window, "start");
        for (const Kind* kind : allKinds()) {
            showTypical(kind->number);
            visit_(window, "art" + std::to_string(kind->number));
        }
        showTypical(art::ZahlenWerte);
    }

    void showTypical(std::int16_t kind) {
        TipEngine& engine = parts_.program.engine();
        if (typical_.empty()) findTypical();
        engine.tree().TreeEinlesen();      // shut groups, so that the pictures do not depend on their order
        engine.tree().showTipByNumber(typical_[kind]);
    }

    // Of each kind the Tip that has most to show, but no more than fits.
    void findTypical() {
        Context& ctx = parts_.program.context();
        std::map<std::int16_t, std::size_t> most;
        for (const auto& row : ctx.udtTippListe) {
            if (!row.Filter[FilterXP]) continue;
            parts_.program.engine().inspectTip(row.Index);
            const auto& panels = ctx.frmBVK_Prog.panels;
            if (panels.empty() || panels.size() > 3) continue;
            std::size_t content = 1 + panels.size() + panels[0].lines.size();
            for (const Panel& panel : panels) content += panel.status.colour == StatusColour::Gefunden;
            std::size_t& best = most[panels[0].Ausgabeart];
            if (content <= best) continue;
            best = content;
            typical_[panels[0].Ausgabeart] = row.Index;
        }
    }

    void visitModal(const WindowPicture& wanted) {
        bool visited = false;
        std::string failure;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
            auto* modal = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!modal) return;
            if (!visited && modal->objectName() == QLatin1String(wanted.windows)) {
                visited = true;
                timer.stop();       // the visit runs events
                try {
                    if (wanted.prepare) wanted.prepare(*modal);
                    visit_(*modal, wanted.windows + std::string(wanted.addition));
                } catch (const std::exception& error) {
                    failure = error.what();
                }
                timer.start(PollMs);
                modal->done(QDialog::Rejected);
            } else {
                modal->done(QDialog::Rejected);
            }
        });
        timer.start(PollMs);
        wanted.open(parts_);
        if (!failure.empty()) throw NumberedError(errnum::PathFileAccess, failure);
        if (!visited) throw NumberedError(errnum::PathFileAccess, "Das Fenster " + std::string(wanted.windows) + " hat sich nicht geöffnet.");
    }

    void visitHelp() {
        parts_.port.showHelp(std::string(product::HelpFile), helpTopic::FirstSteps);
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == QLatin1String("frmBVK_Hilfe")) {
                visit_(*window, "frmBVK_Hilfe");
                window->close();
            }
    }

    WindowParts& parts_;
    const Visit& visit_;
    std::map<std::int16_t, std::int32_t> typical_;      // panel kind -> number of the Tip
};

}  // namespace

void visitWindows(WindowParts& parts, const Visit& visit) { Tour(parts, visit).all(); }

}  // namespace brenvik
