#include "shell/main/CoolBar.h"

#include <QHBoxLayout>
#include <QLayout>
#include <QMenu>
#include <iterator>

#include "frame/text/Texts.h"
#include "shell/widgets/QtText.h"
#include "shell/widgets/Twips.h"
#include "shell/windows/frmBVK_Symbolleiste.h"

namespace brenvik {
namespace {

constexpr ToolButton NavButtons[] = {
    {"tbrExit", 1, 2, Befehl::Beenden, "beenden"},
    {"tbrSuchen", 2, 3, Befehl::Suchen, "suchen", true},
    {"tbrBackup", 13, 20, Befehl::Backup, "backup"},
    {"tbrBrowser", 14, 21, Befehl::RegBrowser, "browser"},
    {"tbrNetz", 3, 4, Befehl::Netz, "netzwerk"},
    {"tbrProfil", 12, 18, Befehl::Profil, "profil"},
    {"tbrRegSave", 8, 11, Befehl::RegSave, "speichern", true},
    {"tbrRegDel", 9, 12, Befehl::RegDel, "loeschen"},
    {"tbrHistory", 7, 8, Befehl::History, "history", true},
};

constexpr ToolButton FileButtons[] = {
    {"tbrRegFileSave", 4, 5, Befehl::RegFileSave, "regdatei"},
    {"tbrAddRegListe", 5, 6, Befehl::AddRegListe, "regplus"},
    {"tbrSrvRegListe", 6, 7, Befehl::SrvRegListe, "regliste"},
    {"tbrADMFileSave", 15, 22, Befehl::ADMFileSave, "admdatei", true},
    {"tbrAddADMListe", 16, 23, Befehl::AddADMListe, "admplus"},
    {"tbrSrvADMListe", 17, 24, Befehl::SrvADMListe, "admliste"},
};

constexpr ToolButton FavouriteButtons[] = {
    {"FavAdd", 10, 0, Befehl::FavAdd, "favplus"},
    {"FavDel", 11, 1, Befehl::FavDel, "favminus"},
};

constexpr int IconSize = 24;
constexpr int TipLoadFavourite = 13, TipFavourites = 9;

}  // namespace

CoolBar::CoolBar(IconSet& icons, std::function<void(Befehl, const QString&)> run, QWidget* parent)
    : QFrame(parent), icons_(icons), run_(std::move(run)), flow_(new FlowLayout(this, 2)) {
    setObjectName(QStringLiteral("cbrBVK"));
    flow_->setContentsMargins(2, 2, 2, 2);
    flow_->setStretchLast(true);
    bands_[0] = addToolBar("tbrBVKNav", "Programm", std::begin(NavButtons), std::end(NavButtons));
    bands_[1] = addToolBar("tbrFiles", "Dateien und Listen", std::begin(FileButtons), std::end(FileButtons));
    bands_[2] = makeFavouriteBand();
    bands_[3] = addToolBar("tbrFavoriten", "Favoriten", std::begin(FavouriteButtons), std::end(FavouriteButtons));
    for (QWidget* band : bands_) flow_->addWidget(band);
    refreshIcons();
}

QToolBar* CoolBar::addToolBar(const char* name, const char* accessibleName, const ToolButton* first, const ToolButton* last) {
    auto* bar = new QToolBar(this);
    bar->setObjectName(QLatin1String(name));
    bar->setAccessibleName(QLatin1String(accessibleName));
    bar->setIconSize({IconSize, IconSize});
    bar->setMovable(false);
    bar->layout()->setContentsMargins(0, 0, 0, 0);
    bar->layout()->setSpacing(0);
    bar->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(bar, &QToolBar::customContextMenuRequested, this, [this, bar](const QPoint& place) { arrangementMenu(*bar, place); });
    Knopfordnung standard;
    for (const ToolButton* entry = first; entry != last; ++entry) {
        if (entry->separatorBefore) standard.push_back({"|"});
        standard.push_back({entry->name});
        const QString control = QLatin1String(entry->name);
        auto* action = new QAction(qt(strBVKToolbar(entry->caption)), this);
        action->setObjectName(control);
        action->setToolTip(qt(strBVKTips(entry->tip)));
        action->setData(static_cast<int>(entry->befehl));
        connect(action, &QAction::triggered, this, [this, befehl = entry->befehl, control] { run_(befehl, control); });
        actions_.insert(control, action);
        iconNames_.insert(control, QLatin1String(entry->icon));
    }
    leisten_.insert(bar->objectName(), {standard, standard});
    fill(*bar, standard);
    return bar;
}

void CoolBar::fill(QToolBar& bar, const Knopfordnung& order) {
    bar.clear();
    for (const KnopfPlatz& place : order) {
        if (!place.visible) continue;
        if (place.isSeparator()) {
            bar.addSeparator();
            continue;
        }
        QAction* action = actions_.value(qt(place.key));
        bar.addAction(action);
        QWidget* button = bar.widgetForAction(action);
        button->setObjectName(action->objectName());
        button->setFocusPolicy(Qt::TabFocus);
        button->setAccessibleName(action->text());
        button->setAccessibleDescription(action->toolTip());
    }
}

void CoolBar::arrange(const QString& toolBar, const std::string& text) {
    auto* bar = findChild<QToolBar*>(toolBar);
    const auto own = leisten_.find(toolBar);
    if (!bar || own == leisten_.end()) return;
    const Knopfordnung order = knopfordnung(text, own->standard);
    if (order == own->order) return;
    own->order = order;
    fill(*bar, order);
    emit heightChanged();
}

std::string CoolBar::arrangement(const QString& toolBar) const {
    const auto own = leisten_.constFind(toolBar);
    return own == leisten_.constEnd() || own->order == own->standard ? std::string() : knopfordnungText(own->order);
}

void CoolBar::arrangementMenu(QToolBar& bar, const QPoint& place) {
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("mnuSymbolleiste"));
    QAction* arrangeAction = menu.addAction(QStringLiteral("Symbolleiste &anpassen..."));
    if (menu.exec(bar.mapToGlobal(place)) == arrangeAction) askArrangement(bar.objectName());
}

void CoolBar::askArrangement(const QString& toolBar) {
    const Leiste& own = leisten_[toolBar];
    frmBVK_Symbolleiste window(own.order, own.standard, actions_, this);
    if (window.exec() == QDialog::Accepted) arrange(toolBar, knopfordnungText(window.order()));
}

QWidget* CoolBar::makeFavouriteBand() {
    auto* picToolbar = new QWidget(this);
    picToolbar->setObjectName(QStringLiteral("picToolbar"));
    auto* row = new QHBoxLayout(picToolbar);
    row->setContentsMargins(4, 2, 4, 2);
    tlbcmdFav_ = new QToolButton(picToolbar);
    tlbcmdFav_->setObjectName(QStringLiteral("tlbcmdFav"));
    tlbcmdFav_->setAutoRaise(true);
    tlbcmdFav_->setFocusPolicy(Qt::TabFocus);
    tlbcmdFav_->setToolTip(qt(strBVKTips(TipLoadFavourite)));
    tlbcmdFav_->setAccessibleName(qt(strBVKTips(TipLoadFavourite)));
    connect(tlbcmdFav_, &QToolButton::clicked, this, [this] { run_(Befehl::FavLaden, QStringLiteral("tlbcmdFav")); });
    cboFavoriten_ = new QComboBox(picToolbar);
    cboFavoriten_->setObjectName(QStringLiteral("cboFavoriten"));
    cboFavoriten_->setToolTip(qt(strBVKTips(TipFavourites)));
    cboFavoriten_->setAccessibleName(qt(strBVKTips(TipFavourites)));
    cboFavoriten_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboFavoriten_->setMinimumContentsLength(20);
    row->addWidget(tlbcmdFav_);
    row->addWidget(cboFavoriten_, 1);
    return picToolbar;
}

void CoolBar::refreshIcons() {
    for (auto it = iconNames_.cbegin(); it != iconNames_.cend(); ++it) actions_.value(it.key())->setIcon(icons_.get(it.value()));
    tlbcmdFav_->setIcon(icons_.get(QStringLiteral("favoriten")));
}

void CoolBar::NavBar(bool withText) {
    for (QWidget* band : bands_) {
        auto* bar = qobject_cast<QToolBar*>(band);
        if (!bar) continue;
        // Beside the combo box of the favourites there is one line of height and no more.
        const Qt::ToolButtonStyle text = band == bands_[3] ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonTextUnderIcon;
        bar->setToolButtonStyle(withText ? text : Qt::ToolButtonIconOnly);
    }
    flow_->invalidate();
    emit heightChanged();
}

void CoolBar::show(const Hauptfenster& record, const std::function<bool(Befehl)>& possible) {
    for (QAction* action : actions_) action->setEnabled(possible(static_cast<Befehl>(action->data().toInt())));
    tlbcmdFav_->setEnabled(possible(Befehl::FavLaden));
    cboFavoriten_->setEnabled(possible(Befehl::FavLaden));
    if (!record.tipRegSave.empty()) button(QStringLiteral("tbrRegSave"))->setToolTip(qt(record.tipRegSave));
    if (!record.tipRegDel.empty()) button(QStringLiteral("tbrRegDel"))->setToolTip(qt(record.tipRegDel));
    for (const char* name : {"tbrNetz", "tbrProfil"}) {
        QAction* action = button(QLatin1String(name));
        if (action->isVisible() == record.blnNTFamilie) continue;
        action->setVisible(record.blnNTFamilie);
        emit heightChanged();
    }
}

void CoolBar::applyBand(std::size_t band, const BandEinstellung& stored) {
    QWidget& widget = *bands_.at(band);
    stored_[band] = stored;
    widget.setMinimumSize(toPixels(stored.MinWidth), toPixels(stored.MinHeight));
    if (band > 0) flow_->setRowStart(&widget, stored.NewRow);
    setBandVisible(band, stored.Visible);
}

BandEinstellung CoolBar::band(std::size_t band) const {
    BandEinstellung own = stored_.at(band);
    if (bands_[band]->isVisible()) own.Width = toTwips(bands_[band]->width());
    return own;
}

void CoolBar::setBandVisible(std::size_t band, bool on) {
    stored_.at(band).Visible = on;
    bands_[band]->setVisible(on);
    emit heightChanged();
}

}  // namespace brenvik
