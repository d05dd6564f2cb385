#include "shell/main/PanelArea.h"

#include <QScrollBar>
#include <QStyle>
#include <algorithm>

#include "frame/program/Product.h"
#include "shell/main/RightRegion.h"
#include "shell/widgets/Icons.h"
#include "shell/widgets/PlainText.h"

namespace brenvik {

using rightregion::Frames, rightregion::within;

namespace {

constexpr int LogoSize = 96;
constexpr int PanelsLeft = 13;      // pixels; what is left on the other side is as wide as the scroll bar

}  // namespace

PanelArea::PanelArea(const MainWindow& record, QWidget* parent)
    : QWidget(parent), record_(record), stack_(new QStackedLayout(this)), empty_(new QWidget(this)) {
    makeLogo();
    makeOutput();
    stack_->addWidget(fraBVKLogo_);
    stack_->addWidget(fraBVKAusgabe_);
    stack_->addWidget(empty_);
}

void PanelArea::makeLogo() {
    fraBVKLogo_ = new QFrame(this);
    fraBVKLogo_->setObjectName(QStringLiteral("fraBVKLogo"));
    fraBVKLogo_->setFrameShape(QFrame::StyledPanel);
    auto* imgBVKLogo = new QLabel(fraBVKLogo_);
    imgBVKLogo->setObjectName(QStringLiteral("imgBVKLogo"));
    imgBVKLogo->setPixmap(IconSet::programPixmap(LogoSize, devicePixelRatioF()));
    imgBVKLogo->setAlignment(Qt::AlignCenter);
    auto* title = new QLabel(qt(product::Titel), fraBVKLogo_);
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.8);
    large.setBold(true);
    title->setFont(large);
    title->setAlignment(Qt::AlignCenter);
    auto* lblBVKLogo = new QLabel(qt(product::Rights), fraBVKLogo_);
    lblBVKLogo->setObjectName(QStringLiteral("lblBVKLogo"));
    lblBVKLogo->setWordWrap(true);
    lblBVKLogo->setAlignment(Qt::AlignCenter);
    auto* box = new QVBoxLayout(fraBVKLogo_);
    box->addStretch(1);
    for (QWidget* widget : {imgBVKLogo, title, lblBVKLogo}) box->addWidget(widget);
    box->addStretch(1);
}

void PanelArea::makeOutput() {
    fraBVKAusgabe_ = new QFrame(this);
    fraBVKAusgabe_->setObjectName(QStringLiteral("fraBVKAusgabe"));
    fraBVKAusgabe_->setFrameShape(QFrame::StyledPanel);
    lblDBTippU_ = new QLabel(fraBVKAusgabe_);
    lblDBTippU_->setObjectName(QStringLiteral("lblDBTippU"));
    lblDBTippU_->setWordWrap(true);
    lblDBTippU_->setTextFormat(Qt::PlainText);
    lblDBTippU_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblDBTippU_->setContentsMargins(PanelsLeft - 3, 6, 4, 6);    // above the panels
    QFont heading = lblDBTippU_->font();
    heading.setBold(true);
    heading.setPointSizeF(heading.pointSizeF() * 1.2);
    lblDBTippU_->setFont(heading);

    fraEinstellungen_ = new QWidget;
    fraEinstellungen_->setObjectName(QStringLiteral("fraEinstellungen"));
    panelsBox_ = new QVBoxLayout(fraEinstellungen_);
    panelsBox_->setContentsMargins(0, 0, 0, 0);
    panelsBox_->setSpacing(8);

    scroll_ = new QScrollArea(fraBVKAusgabe_);
    scroll_->setWidgetResizable(true);
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setFocusPolicy(Qt::NoFocus);
    scroll_->verticalScrollBar()->setObjectName(QStringLiteral("sbvBVKAusgabe"));
    scroll_->setWidget(fraEinstellungen_);

    auto* box = new QVBoxLayout(fraBVKAusgabe_);
    box->setContentsMargins(0, 2, 0, 8);
    box->setSpacing(2);
    auto* headingRow = new QHBoxLayout;
    const int sides = within(Frames, rightregion::lblDBTippU);
    headingRow->setContentsMargins(sides - sides / 2, 0, sides / 2, 0);
    headingRow->addWidget(lblDBTippU_);
    scrollRow_ = new QHBoxLayout;
    scrollRow_->addWidget(scroll_);
    box->addLayout(headingRow);
    box->addLayout(scrollRow_, 1);
}

// Panels leave room for the scroll bar whether it is needed or not, so that they keep their width; a list scrolls by
// itself and takes that room.
void PanelArea::fitPanels() {
    const bool list = std::any_of(views_.begin(), views_.end(), [](const PanelView* view) { return view && view->growsToFill(); });
    const int left = list ? within(Frames, rightregion::fraListe) / 2 : PanelsLeft;
    scrollRow_->setContentsMargins(left, 0, 0, 0);
    const int region = width() + toPixels(Frames);
    const int fitting = region - toPixels(list ? rightregion::fraListe : rightregion::fraEinstellungen);
    fraEinstellungen_->setMaximumWidth(std::max(fitting, fraEinstellungen_->minimumSizeHint().width()));
}

void PanelArea::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fitPanels();
}

void PanelArea::attach(WindowEvents& events) { host_ = std::make_unique<PanelHost>(PanelHost{record_, events}); }

PanelView* PanelArea::makeView(std::size_t place) {
    if (!host_) return nullptr;
    const Panel& panel = record_.panels[place];
    PanelView* view = makePanelView(*host_, place, panel, fraEinstellungen_);
    if (view) view->drawPanel(panel);
    return view;
}

void PanelArea::rebuild() {
    fraEinstellungen_->setUpdatesEnabled(false);
    for (PanelView* view : views_)
        if (view) view->detach();
    views_.clear();
    while (QLayoutItem* item = panelsBox_->takeAt(0)) delete item;
    bool filled = false;
    for (std::size_t place = 0; place < record_.panels.size(); ++place) {
        PanelView* view = makeView(place);
        views_.append(view);
        if (!view) continue;
        panelsBox_->addWidget(view, view->growsToFill() ? 1 : 0);
        view->setVisible(true);
        filled = filled || view->growsToFill();
    }
    if (!filled) panelsBox_->addStretch(1);
    fitPanels();
    fraEinstellungen_->setUpdatesEnabled(true);
    scroll_->verticalScrollBar()->setValue(0);
    showRegion();
}

void PanelArea::refresh(std::size_t place) {
    if (place >= record_.panels.size() || place >= static_cast<std::size_t>(views_.size())) return;
    PanelView* view = views_[static_cast<qsizetype>(place)];
    if (!view) return;
    const Panel& panel = record_.panels[place];
    if (view->fits(panel))
        view->drawPanel(panel);
    else
        replaceView(place, makeView(place));
}

void PanelArea::replaceView(std::size_t place, PanelView* view) {
    PanelView*& present = views_[static_cast<qsizetype>(place)];
    if (view) {
        panelsBox_->insertWidget(panelsBox_->indexOf(present), view, view->growsToFill() ? 1 : 0);
        view->setVisible(true);
    }
    panelsBox_->removeWidget(present);
    present->detach();
    present = view;
}

void PanelArea::showRegion() {
    lblDBTippU_->setText(plainLine(record_.lblDBTippU));
    lblDBTippU_->setVisible(!record_.lblDBTippU.empty());
    QWidget* shown = record_.fraBVKLogo ? static_cast<QWidget*>(fraBVKLogo_) : record_.fraEinstellungen ? fraBVKAusgabe_ : empty_;
    if (stack_->currentWidget() != shown) stack_->setCurrentWidget(shown);
}

QList<QWidget*> PanelArea::tabChain() const {
    QList<QWidget*> chain;
    for (const PanelView* view : views_) {
        if (!view) continue;
        for (QWidget* child : view->findChildren<QWidget*>())
            if (child->focusPolicy() & Qt::TabFocus && !child->focusProxy() && child->window() == window()) chain.append(child);   // not a combo box's list
    }
    return chain;
}

}  // namespace brenvik
