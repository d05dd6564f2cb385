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
    {"tbrExit", 1, 2, Command::Beenden, "beenden"},
    {"tbrSuchen", 2, 3, Command::Suchen, "suchen", true},
    {"tbrBackup", 13, 20, Command::Backup, "backup"},
    {"tbrBrowser", 14, 21, Command::RegBrowser, "browser"},
    {"tbrNetz", 3, 4, Command::Net, "netzwerk"},
    {"tbrProfil", 12, 18, Command::Profile, "profil"},
    {"tbrRegSave", 8, 11, Command::RegSave, "speichern", true},
    {"tbrRegDel", 9, 12, Command::RegDel, "loeschen"},
    {"tbrHistory", 7, 8, Command::History, "history", true},
};

constexpr ToolButton FileButtons[] = {
    {"tbrRegFileSave", 4, 5, Command::RegFileSave, "regdatei"},
    {"tbrAddRegListe", 5, 6, Command::AddRegListe, "regplus"},
    {"tbrSrvRegListe", 6, 7, Command::SrvRegListe, "regliste"},
    {"tbrADMFileSave", 15, 22, Command::ADMFileSave, "admdatei", true},
    {"tbrAddADMListe", 16, 23, Command::AddADMListe, "admplus"},
    {"tbrSrvADMListe", 17, 24, Command::SrvADMListe, "admliste"},
};

constexpr ToolButton FavouriteButtons[] = {
    {"FavAdd", 10, 0, Command::FavAdd, "favplus"},
    {"FavDel", 11, 1, Command::FavDel, "favminus"},
};

constexpr int IconSize = 24;
constexpr int TipLoadFavourite = 13, TipFavourites = 9;

}  // namespace

CoolBar::CoolBar(IconSet& icons, std::function<void(Command, const QString&)> run, QWidget* parent)
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
    ButtonOrder standard;
    for (const ToolButton* entry = first; entry != last; ++entry) {
        if (entry->separatorBefore) standard.push_back({"|"});
        standard.push_back({entry->name});
        const QString control = QLatin1String(entry->name);
        auto* action = new QAction(qt(strBVKToolbar(entry->caption)), this);
        action->setObjectName(control);
        action->setToolTip(qt(strBVKTips(entry->tip)));
        action->setData(static_cast<int>(entry->command));
        connect(action, &QAction::triggered, this, [this, command = entry->command, control] { run_(command, control); });
        actions_.insert(control, action);
        iconNames_.insert(control, QLatin1String(entry->icon));
    }
    bars_.insert(bar->objectName(), {standard, standard});
    fill(*bar, standard);
    return bar;
}

void CoolBar::fill(QToolBar& bar, const ButtonOrder& order) {
    bar.clear();
    for (const ButtonPlace& place : order) {
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
    const auto own = bars_.find(toolBar);
    if (!bar || own == bars_.end()) return;
    const ButtonOrder order = buttonOrder(text, own->standard);
    if (order == own->order) return;
    own->order = order;
    fill(*bar, order);
    emit heightChanged();
}

std::string CoolBar::arrangement(const QString& toolBar) const {
    const auto own = bars_.constFind(toolBar);
    return own == bars_.constEnd() || own->order == own->standard ? std::string() : buttonOrderText(own->order);
}

void CoolBar::arrangementMenu(QToolBar& bar, const QPoint& place) {
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("mnuSymbolleiste"));
    QAction* arrangeAction = menu.addAction(QStringLiteral("Symbolleiste &anpassen..."));
    if (menu.exec(bar.mapToGlobal(place)) == arrangeAction) askArrangement(bar.objectName());
}

void CoolBar::askArrangement(const QString& toolBar) {
    const Bar& own = bars_[toolBar];
    frmBVK_Symbolleiste window(own.order, own.standard, actions_, this);
    if (window.exec() == QDialog::Accepted) arrange(toolBar, buttonOrderText(window.order()));
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
    connect(tlbcmdFav_, &QToolButton::clicked, this, [this] { run_(Command::FavLaden, QStringLiteral("tlbcmdFav")); });
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

void CoolBar::show(const MainWindow& record, const std::function<bool(Command)>& possible) {
    for (QAction* action : actions_) action->setEnabled(possible(static_cast<Command>(action->data().toInt())));
    tlbcmdFav_->setEnabled(possible(Command::FavLaden));
    cboFavoriten_->setEnabled(possible(Command::FavLaden));
    if (!record.tipRegSave.empty()) button(QStringLiteral("tbrRegSave"))->setToolTip(qt(record.tipRegSave));
    if (!record.tipRegDel.empty()) button(QStringLiteral("tbrRegDel"))->setToolTip(qt(record.tipRegDel));
    for (const char* name : {"tbrNetz", "tbrProfil"}) {
        QAction* action = button(QLatin1String(name));
        if (action->isVisible() == record.blnNTFamilie) continue;
        action->setVisible(record.blnNTFamilie);
        emit heightChanged();
    }
}

void CoolBar::applyBand(std::size_t band, const BandSetting& stored) {
    QWidget& widget = *bands_.at(band);
    stored_[band] = stored;
    widget.setMinimumSize(toPixels(stored.MinWidth), toPixels(stored.MinHeight));
    if (band > 0) flow_->setRowStart(&widget, stored.NewRow);
    setBandVisible(band, stored.Visible);
}

BandSetting CoolBar::band(std::size_t band) const {
    BandSetting own = stored_.at(band);
    if (bands_[band]->isVisible()) own.Width = toTwips(bands_[band]->width());
    return own;
}

void CoolBar::setBandVisible(std::size_t band, bool on) {
    stored_.at(band).Visible = on;
    bands_[band]->setVisible(on);
    emit heightChanged();
}

}  // namespace brenvik
