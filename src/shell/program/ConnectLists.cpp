#include "shell/program/ConnectLists.h"

#include <QSignalBlocker>

#include "shell/QtPort.h"
#include "shell/main/frmBVK_Prog.h"
#include "shell/widgets/PlainText.h"
#include "shell/windows/frmBVK_FavVerwalten.h"
#include "shell/windows/frmBVK_HistoryDaten.h"
#include "shell/windows/frmBVK_HistoryListe.h"
#include "shell/windows/frmBVK_UndoConflicts.h"
#include "tipengine/Program.h"

namespace brenvik {
namespace {

template <class Window, class Request> void registerWindow(QtPort& port, const char* name) {
    port.registerWindow(QLatin1String(name), [](QtPort&, QWidget* parent, WindowRequest& request) { Window(dynamic_cast<Request&>(request), parent).exec(); });
}

// A list that is switched off takes its controls along. The bands' own setting stays as the user chose it.
void showControls(frmBVK_Prog& window, MainWindow& record) {
    record.hidden["Favoriten"] = record.favouritesVisible ? std::vector<std::string>() : std::vector<std::string>{"mnuFav", "mnuFavShow", "mnuFavButton"};
    CoolBar& bar = window.coolBar();
    constexpr std::pair<const char*, const char*> Bands[] = {{"picToolbar", "mnuFavShow"}, {"tbrFavoriten", "mnuFavButton"}};
    for (const auto& [band, entry] : Bands)
        if (QWidget* widget = bar.findChild<QWidget*>(QLatin1String(band)))
            widget->setVisible(record.favouritesVisible && window.menus().action(QLatin1String(entry))->isChecked());
    bar.button(QStringLiteral("tbrHistory"))->setVisible(record.historyVisible);
    emit bar.heightChanged();
}

void showFavourites(frmBVK_Prog& window, Favoriten& favourites) {
    QComboBox* combo = window.coolBar().cboFavoriten();
    const QSignalBlocker quiet(combo);
    combo->clear();
    for (const std::string& item : favourites.strFavoriten()) combo->addItem(plainLine(item));
    combo->setCurrentIndex(favourites.chosen());

    QMenu* menu = window.menus().menu(QStringLiteral("mnuFavListe"));
    menu->clear();
    for (std::size_t k = 1; k < favourites.mnuFavPopA().size(); ++k) {
        QAction* action = menu->addAction(plainCaption(favourites.mnuFavPopA()[k]));
        const int index = static_cast<int>(k);
        action->setObjectName(QStringLiteral("mnuFavPopA(%1)").arg(index));
        QObject::connect(action, &QAction::triggered, &window, [&favourites, index] { favourites.clickMenu(index); }, Qt::QueuedConnection);
    }
}

}  // namespace

void connectLists(WindowParts& parts, Listen& listen) {
    frmBVK_Prog& window = parts.windows;
    MainWindow& record = parts.program.context().frmBVK_Prog;
    Favoriten& favourites = listen.favoriten();
    parts.recorders.add(listen);
    parts.laden.LoadFHListe = [&listen] { listen.LoadFHListe(); };
    parts.laden.listFolderNew = [&listen] { listen.folderNew(); };

    registerWindow<frmBVK_HistoryListe, HistoryListeRequest>(parts.port, "frmBVK_HistoryListe");
    registerWindow<frmBVK_HistoryDaten, HistoryDatenRequest>(parts.port, "frmBVK_HistoryDaten");
    registerWindow<frmBVK_UndoConflicts, UndoConflictsRequest>(parts.port, "frmBVK_UndoConflicts");
    registerWindow<frmBVK_FavVerwalten, FavVerwaltenRequest>(parts.port, "frmBVK_FavVerwalten");

    window.setCommand(Command::History, [&listen] { listen.historyWindows().open(); });
    window.setCommand(Command::FavAdd, [&favourites] { favourites.FavAdd(); });
    window.setCommand(Command::FavDel, [&favourites] { favourites.FavDel(); });
    window.setCommand(Command::FavManage, [&favourites] { favourites.manage(); });
    window.setCommand(Command::FavLaden, [&favourites] { favourites.FavAuswahlAnzeigen(); });
    QObject::connect(window.coolBar().cboFavoriten(), &QComboBox::activated, &window, [&favourites](int item) { favourites.choose(item); });
    listen.onChange([&window, &record, &favourites] {
        showControls(window, record);
        showFavourites(window, favourites);
        window.windowChanged();
    });
}

}  // namespace brenvik
