// Place and layout of the main window: its limits, the splitters, the stored measures.
#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QShowEvent>
#include <algorithm>

#include "shell/main/RightRegion.h"
#include "shell/main/frmBVK_Prog.h"

namespace brenvik {
namespace {

// Twips
constexpr double SplitterVLower = 3400, SplitterVUpperMargin = 3400;
constexpr double SplitterHLower = 4300, SplitterHUpperMargin = 2300;
constexpr double RightMargin = 140;             // from the vertical splitter to the right region
// Pixels
constexpr int MinimumWidth = 700, MinimumHeight = 500;
const int Gap = toPixels(rightregion::Frames);

}  // namespace

void frmBVK_Prog::limitSize() {
    setMinimumSize(MinimumWidth, MinimumHeight);
    if (const QScreen* primary = QGuiApplication::primaryScreen()) setMaximumSize(primary->virtualSize().expandedTo(minimumSize()));
}

void frmBVK_Prog::makeSplitters() {
    imgSplitterV_ = new SplitterBar(Qt::Vertical, "imgSplitterV", "picSplitterV", [this] { return limitsV(); }, form_);
    imgSplitterH_ = new SplitterBar(Qt::Horizontal, "imgSplitterH", "picSplitterH", [this] { return limitsH(); }, form_);
    connect(imgSplitterV_, &SplitterBar::moved, this, [this](int x) { SizeControlsV(toTwips(x)); });
    connect(imgSplitterH_, &SplitterBar::moved, this, [this](int y) { SizeControlsH(toTwips(y)); });
}

SplitterLimits frmBVK_Prog::limitsV() const { return {toPixels(SplitterVLower), width() - toPixels(SplitterVUpperMargin)}; }

SplitterLimits frmBVK_Prog::limitsH() const { return {toPixels(SplitterHLower), height() - toPixels(SplitterHUpperMargin)}; }

void frmBVK_Prog::SizeControlsV(double x) {
    splitterVLeft_ = std::max(x, SplitterVLower);
    layoutForm();
}

void frmBVK_Prog::SizeControlsH(double y) {
    splitterHTop_ = std::max(y, SplitterHLower);
    layoutForm();
}

// The stored positions stay as they are when the window is too small for them, and take effect again when it grows.
void frmBVK_Prog::layoutForm() {
    if (!imgSplitterH_ || splitterVLeft_ <= 0 || splitterHTop_ <= 0) return;
    const int width = form_->width(), height = form_->height();
    const int top = cbrBVK_->layout()->heightForWidth(width);
    cbrBVK_->setGeometry(0, 0, width, top);
    const int status = sbrBVK_->layout()->heightForWidth(width);
    sbrBVK_->setGeometry(0, height - status, width, status);
    const int bottom = height - status - Gap, regionTop = top + Gap;

    const int x = limitsV().bounded(toPixels(splitterVLeft_));
    left_->setGeometry(0, regionTop, x, bottom - regionTop);
    const int splitter = toPixels(RightMargin);
    imgSplitterV_->setGeometry(x, regionTop, splitter, bottom - regionTop);
    const int right = x + splitter, rightWidth = std::max(0, width - right - Gap);

    fraSteuerung_->setVisible(record_.fraSteuerung);
    const int actions = record_.fraSteuerung ? fraSteuerung_->heightForWidth(rightWidth) : 0;
    const int infoBottom = bottom - (actions ? actions + Gap : 0);
    const SplitterLimits limits = limitsH();
    int y = limits.bounded(toPixels(splitterHTop_));
    // Where the window is too small for the stored position, the description is left readable.
    if (toPixels(splitterHTop_) > limits.upper) y = std::max(limits.lower, std::min(y, infoBottom - fraInfo_->minimumSizeHint().height() - splitter));
    panels_->setGeometry(right, regionTop, rightWidth, std::max(0, y - regionTop));
    imgSplitterH_->setGeometry(right, y, rightWidth, splitter);
    const int infoTop = y + splitter;
    fraInfo_->setGeometry(right, infoTop, rightWidth, std::max(0, infoBottom - infoTop));
    if (actions) fraSteuerung_->setGeometry(right, bottom - actions, rightWidth, actions);
}

bool frmBVK_Prog::eventFilter(QObject* watched, QEvent* event) {
    const bool again = watched == form_ && (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest);
    if (again) layoutForm();
    return QMainWindow::eventFilter(watched, event);
}

void frmBVK_Prog::applySettings(const MainWindowSettings& stored) {
    move(toPixels(stored.MainLeft), toPixels(stored.MainTop));
    resize(toPixels(stored.MainWidth), toPixels(stored.MainHeight));
    if (stored.MainMaximised) moveOntoScreen();
    ownPlace_ = QRect(pos(), size());
    if (stored.MainMaximised) setWindowState(windowState() | Qt::WindowMaximized);
    for (std::size_t i = 0; i < stored.Buttons.size(); ++i) cbrBVK_->arrange(QLatin1String(MainWindowSettings::ButtonBars[i]), stored.Buttons[i]);
    for (std::size_t i = 0; i < stored.Band.size(); ++i) cbrBVK_->applyBand(i, stored.Band[i]);
    menus_->action(QStringLiteral("mnuFavShow"))->setChecked(stored.Band[2].Visible);
    menus_->action(QStringLiteral("mnuFavButton"))->setChecked(stored.Band[3].Visible);
    NavBar();
    SizeControlsV(stored.SplitterVLeft);
    SizeControlsH(stored.SplitterHTop);
}

MainWindowSettings frmBVK_Prog::presentSettings() const {
    MainWindowSettings present;
    // Of a window that fills the screen the place it comes back to.
    const QRect place = isMaximized() || isFullScreen() ? ownPlace_ : QRect(pos(), size());
    present.MainMaximised = isMaximized();
    present.MainLeft = toTwips(place.x());
    present.MainTop = toTwips(place.y());
    present.MainWidth = toTwips(place.width());
    present.MainHeight = toTwips(place.height());
    present.SplitterVLeft = splitterVLeft_;
    present.SplitterHTop = splitterHTop_;
    for (std::size_t i = 0; i < present.Buttons.size(); ++i) present.Buttons[i] = cbrBVK_->arrangement(QLatin1String(MainWindowSettings::ButtonBars[i]));
    for (std::size_t i = 0; i < present.Band.size(); ++i) present.Band[i] = cbrBVK_->band(i);
    return present;
}

// A window that is being maximised is told of its new place before or after its new state, as the window system likes. So
// what counts as a place of its own is where it still is a little later.
void frmBVK_Prog::watchPlace() {
    constexpr int SettledMs = 300;
    settled_.setSingleShot(true);
    settled_.setInterval(SettledMs);
    connect(&settled_, &QTimer::timeout, this, [this] {
        if (isVisible() && !isMaximized() && !isFullScreen() && !isMinimized()) ownPlace_ = QRect(pos(), size());
    });
}

void frmBVK_Prog::moveEvent(QMoveEvent* event) {
    QMainWindow::moveEvent(event);
    settled_.start();
}

void frmBVK_Prog::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    settled_.start();
}

void frmBVK_Prog::showEvent(QShowEvent* event) {
    if (!isMaximized()) moveOntoScreen();
    QMainWindow::showEvent(event);
    if (!focusWidget()) tvBVKDB_->setFocus();       // not the first control, which would end the program at a touch of the space bar
}

// A stored place on no screen (another monitor then, or nonsense) would open a window that nobody can reach.
void frmBVK_Prog::moveOntoScreen() {
    constexpr int Reachable = 60;
    const QRect title(pos(), QSize(width(), Reachable));
    for (const QScreen* candidate : QGuiApplication::screens()) {
        const QRect seen = candidate->availableGeometry().intersected(title);
        if (seen.width() >= Reachable && seen.height() >= Reachable / 2 && title.top() >= candidate->availableGeometry().top()) return;
    }
    const QScreen* primary = QGuiApplication::primaryScreen();
    if (!primary) return;
    const QRect area = primary->availableGeometry();
    resize(size().boundedTo(area.size()).expandedTo(minimumSize()));
    move(area.center() - QPoint(width() / 2, height() / 2));
}

}  // namespace brenvik
