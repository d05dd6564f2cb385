#include "shell/main/frmBVK_Prog.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QShortcut>

#include "frame/program/Product.h"
#include "shell/widgets/Colours.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

struct Tab {
    const char* caption;
    const char* tip;
};
constexpr Tab Tabs[] = {
    {"Alle", "Alle Tipps nach Tipgruppen sortiert anzeigen"},
    {"ABC", "Alle Tipps Alphabetisch sortiert anzeigen"},
    {"Win95", "Nur Tipps für Windows 95 anzeigen"},
    {"Win98", "Nur Tipps für Windows 98 anzeigen"},
    {"Win ME", "Nur Tipps für Windows ME anzeigen"},
    {"Win NT", "Nur Tipps für Windows NT anzeigen"},
    {"Win 2k", "Nur Tipps für Windows 2000 anzeigen"},
    {"Neu", "Tipps nach Datenbank Version"},
    {"Win XP", "Nur Tipps für Windows XP anzeigen"},
};

constexpr std::size_t BandFavourites = 2, BandFavouriteButtons = 3;

}  // namespace

frmBVK_Prog::frmBVK_Prog(const MainWindow& record, Settings& settings, TipTreeModel::Order displayOrder)
    : record_(record), settings_(settings), icons_(palette()), form_(new QWidget(this)) {
    setObjectName(QStringLiteral("frmBVK_Prog"));
    setWindowIcon(IconSet::program());
    setWindowTitle(qt(product::Titel));
    const auto runner = [this](Command command, const QString& control) { run(command, control); };
    menus_ = std::make_unique<Menus>(*menuBar(), icons_, runner);
    form_->setObjectName(QStringLiteral("form"));
    setCentralWidget(form_);
    form_->installEventFilter(this);

    cbrBVK_ = new CoolBar(icons_, runner, form_);
    treeModel_ = new TipTreeModel(record_, std::move(displayOrder), icons_, this);
    makeLeft();
    panels_ = new PanelArea(record_, form_);
    fraInfo_ = new InfoFrame(form_);
    fraSteuerung_ = new ActionRow(icons_, runner, form_);
    sbrBVK_ = new StatusRow(form_);
    makeSplitters();
    connect(cbrBVK_, &CoolBar::heightChanged, this, &frmBVK_Prog::layoutForm);
    connect(fraInfo_->cmdHilfe(), &QPushButton::clicked, this, [this] { run(Command::TipHelp, QStringLiteral("cmdHilfe")); });
    ownCommands();
    makeShortcuts();
    watchPlace();
    limitSize();
    applySettings({});
}

frmBVK_Prog::~frmBVK_Prog() = default;

void frmBVK_Prog::makeLeft() {
    left_ = new QWidget(form_);
    tbsTree_ = new TabStrip(left_);
    for (const Tab& tab : Tabs) tbsTree_->addTab(QString::fromUtf8(tab.caption), QString::fromUtf8(tab.tip));
    tvBVKDB_ = new TipTreeView(*treeModel_, left_);
    auto* box = new QVBoxLayout(left_);
    box->setContentsMargins(4, 0, 0, 0);
    box->setSpacing(3);
    box->addWidget(tbsTree_);
    box->addWidget(tvBVKDB_, 1);
    connect(tbsTree_, &TabStrip::tabClicked, this, [this](int tab) {
        if (events_) events_->selectTab(tab);
        tbsTree_->setSelected(record_.tbsTree);
    });
    connect(tvBVKDB_, &TipTreeView::nodeChosen, this, [this](int node) {
        if (events_) events_->selectNode(node);
    });
}

void frmBVK_Prog::makeShortcuts() {
    auto* save = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_S), this);
    connect(save, &QShortcut::activated, fraSteuerung_->cmdRegSave(), &QPushButton::click);
    menus_->action(QStringLiteral("mnuRegSuchen"))->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_F));
}

void frmBVK_Prog::attach(WindowEvents& events) {
    events_ = &events;
    panels_->attach(events);
    treeChanged();
    panelsChanged();
    windowChanged();
}

void frmBVK_Prog::setVersion(const std::string& strProgVersion) {
    setWindowTitle(qt(std::string(product::Titel) + " - Version: " + strProgVersion + " -"));
}

void frmBVK_Prog::setCommand(Command command, std::function<void()> handler) {
    handlers_.insert(static_cast<int>(command), std::move(handler));
    if (events_) windowChanged();
}

void frmBVK_Prog::showTab() { tbsTree_->setSelected(record_.tbsTree); }

void frmBVK_Prog::bringToFront(const QByteArray& activationToken) {
    if (!activationToken.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", activationToken);   // where the window system looks for it
    if (isVisible()) setWindowState(windowState() & ~Qt::WindowMinimized);
    QWidgetList windows = QApplication::topLevelWidgets();     // while it loads, what it shows meanwhile
    if (isVisible()) windows = {this};
    windows.append(QApplication::activeModalWidget());
    for (QWidget* window : windows) {
        if (!window || !window->isVisible()) continue;
        window->raise();
        window->activateWindow();
    }
}

void frmBVK_Prog::ownCommands() {
    handlers_.insert(static_cast<int>(Command::Beenden), [this] { close(); });
    handlers_.insert(static_cast<int>(Command::FavBar), [this] { toggleBand(BandFavourites, "mnuFavShow"); });
    handlers_.insert(static_cast<int>(Command::FavButtonBar), [this] { toggleBand(BandFavouriteButtons, "mnuFavButton"); });
    handlers_.insert(static_cast<int>(Command::IconsMitText), [this] { setNavText(true); });
    handlers_.insert(static_cast<int>(Command::IconsWithoutText), [this] { setNavText(false); });
}

bool frmBVK_Prog::possible(Command command) const {
    const bool engines = command == Command::RegSave || command == Command::RegDel || command == Command::Default;
    if (engines ? events_ == nullptr : !handlers_.contains(static_cast<int>(command))) return false;
    const EnableFlag flag = enableFlagOf(command);
    return !flag || record_.*flag;
}

// What the engine compares with; a toolbar button stands for the button of the action row.
std::string frmBVK_Prog::captionOf(const QString& control) const {
    if (control == QLatin1String("mnuRegSave") || control == QLatin1String("mnuDefault")) return utf8(menus_->action(control)->text());
    const int button = control == QLatin1String("cmdDefault") ? 3 : 0;
    return utf8(fraSteuerung_->buttons()[static_cast<std::size_t>(button)]->text());
}

void frmBVK_Prog::run(Command command, const QString& control) {
    if (!events_ || !possible(command)) return;
    switch (command) {
        case Command::RegSave: return events_->clickRegSave(captionOf(control));
        case Command::Default: return events_->clickDefault(captionOf(control));
        case Command::RegDel: return events_->clickRegDel();
        default: break;
    }
    events_->click();
    const bool rebuilds = command == Command::Net || command == Command::Profile;
    if (rebuilds && !events_->beforeLeaving()) return;
    const auto handler = handlers_.value(static_cast<int>(command));
    if (handler) handler();
}

void frmBVK_Prog::toggleBand(std::size_t band, const char* menuEntry) {
    const bool on = !cbrBVK_->band(band).Visible;
    cbrBVK_->setBandVisible(band, on);
    menus_->action(QLatin1String(menuEntry))->setChecked(on);
}

void frmBVK_Prog::setNavText(bool on) {
    settings_.ShowNavText = on;
    NavBar();
}

void frmBVK_Prog::NavBar() {
    cbrBVK_->NavBar(settings_.ShowNavText);
    menus_->action(QStringLiteral("mnuIcoTXTOn"))->setChecked(settings_.ShowNavText);
    menus_->action(QStringLiteral("mnuIcoTXTOff"))->setChecked(!settings_.ShowNavText);
}

void frmBVK_Prog::treeChanged() {
    showTab();
    tvBVKDB_->showTree(record_.selectedNode);
}

void frmBVK_Prog::selectionChanged() { tvBVKDB_->showSelection(record_.selectedNode); }

void frmBVK_Prog::panelsChanged() {
    panels_->rebuild();
    orderTabs();
}

void frmBVK_Prog::panelChanged(std::size_t place) { panels_->refresh(place); }

void frmBVK_Prog::windowChanged() {
    const auto isPossible = [this](Command command) { return possible(command); };
    menus_->show(record_, isPossible);
    cbrBVK_->show(record_, isPossible);
    fraSteuerung_->show(record_, isPossible, icons_);
    fraInfo_->show(record_, possible(Command::TipHelp));
    sbrBVK_->show(record_);
    panels_->showRegion();
    layoutForm();
}

// Tree, panels, action row, description: the order in which a Tip is worked on.
void frmBVK_Prog::orderTabs() {
    QWidget* last = tvBVKDB_;
    const auto next = [&last](QWidget* widget) {
        QWidget::setTabOrder(last, widget);
        last = widget;
    };
    for (QWidget* widget : panels_->tabChain()) next(widget);
    for (QWidget* button : fraSteuerung_->buttons()) next(button);
    next(fraInfo_->txtInfo());
    next(fraInfo_->cmdHilfe());
    next(imgSplitterV_);
    next(imgSplitterH_);
}

void frmBVK_Prog::closeEvent(QCloseEvent* event) {
    if (events_ && !events_->beforeClose()) {
        event->ignore();
        return;
    }
    if (unload_) std::exchange(unload_, nullptr)();
    QMainWindow::closeEvent(event);
}

void frmBVK_Prog::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::PaletteChange || !menus_ || !events_) return;
    icons_.setPalette(palette());
    menus_->refreshIcons();
    cbrBVK_->refreshIcons();
    fraSteuerung_->refreshIcons(icons_);
    tvBVKDB_->viewport()->update();
    windowChanged();
}

}  // namespace brenvik
