#include "shell/windows/frmBVK_RegBrowse.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>

#include "shell/tipwindows/frmBVK_RegName.h"
#include "shell/widgets/PlainText.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr const char* Titel = "BVK Registry Browser (- Beta: 0.2 -)";
constexpr int RowsMeasured = 200;    // for the width of the column; measuring them all would take as long as reading them

}  // namespace

struct frmBVK_RegBrowse::Entry {
    const char* name;
    const char* caption;
    QKeySequence key;
    QWidget* onlyIn;                 // the view that the key belongs to; nullptr: the whole window
    std::function<void()> act;
};

frmBVK_RegBrowse::frmBVK_RegBrowse(UserPort& port, RegBrowseRequest& request, QWidget* parent)
    : Dialog("frmBVK_RegBrowse", QString::fromUtf8(Titel), parent), port_(port), browser_(request.browser), icons_(palette()),
      txtPfad_(new QLineEdit(this)), panes_(new QWidget(this)),
      keys_(new RegTreeModel(browser_.roots(), [this](const std::string& key) { return browser_.subKeys(key); }, icons_, this)),
      values_(new RegValueModel(icons_, this)), tvwReg_(new QTreeView(panes_)), lvwReg_(new QTreeView(panes_)),
      picSplitter_(new cSplitter("picSplitter", panes_)), fraSuche_(new RegSearchArea(browser_, this)), sbrReg_(label("sbrReg", {})) {
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setSizeGripEnabled(true);
    auto* box = new QVBoxLayout(this);
    auto* bar = new QMenuBar(this);
    makePanes();
    makeMenus(*bar);
    makeContextMenus();
    box->setMenuBar(bar);
    box->addLayout(makePathRow());
    box->addWidget(panes_, 2);
    box->addWidget(fraSuche_, 1);
    box->addWidget(sbrReg_);
    fraSuche_->hide();
    connect(fraSuche_, &RegSearchArea::chosen, this, [this](const BrowserHit& hit) { goTo(hit.key, hit.name); });
    connect(fraSuche_, &RegSearchArea::started, this, [this, bar] {
        for (QWidget* widget : std::initializer_list<QWidget*>{bar, panes_, txtPfad_}) widget->setEnabled(false);
        for (QAction* action : actions_) action->setEnabled(false);
    });
    connect(fraSuche_, &RegSearchArea::finished, this, [this, bar] {
        for (QWidget* widget : std::initializer_list<QWidget*>{bar, panes_, txtPfad_}) widget->setEnabled(true);
        enableEntries();
    });
    resize(880, 600);
    tvwReg_->setCurrentIndex(keys_->index(0, 0));
    tvwReg_->setFocus();
}

void frmBVK_RegBrowse::makePanes() {
    panes_->setMinimumHeight(160);
    panes_->installEventFilter(this);
    tvwReg_->setObjectName(QStringLiteral("tvwReg"));
    tvwReg_->setAccessibleName(QStringLiteral("Schlüssel"));
    tvwReg_->setModel(keys_);
    tvwReg_->setHeaderHidden(true);
    tvwReg_->setUniformRowHeights(true);
    tvwReg_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tvwReg_->header()->setResizeContentsPrecision(RowsMeasured);
    tvwReg_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    lvwReg_->setObjectName(QStringLiteral("lvwReg"));
    lvwReg_->setAccessibleName(QStringLiteral("Werte"));
    lvwReg_->setModel(values_);
    lvwReg_->setRootIsDecorated(false);
    lvwReg_->setUniformRowHeights(true);
    lvwReg_->setAlternatingRowColors(true);
    lvwReg_->setTabKeyNavigation(false);
    lvwReg_->header()->resizeSection(0, 180);
    lvwReg_->header()->resizeSection(1, 130);
    connect(tvwReg_, &QTreeView::expanded, this, [this](const QModelIndex& index) { keys_->opened(index); });
    connect(tvwReg_, &QTreeView::collapsed, this, [this](const QModelIndex& index) { keys_->closed(index); });
    connect(tvwReg_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { selectKey(); });
    connect(lvwReg_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { enableEntries(); });
    connect(lvwReg_, &QTreeView::activated, this, [this] { mnuAendern(); });
    connect(picSplitter_, &cSplitter::SplitComplete, this, &frmBVK_RegBrowse::m_cSplit_SplitComplete);
}

QLayout* frmBVK_RegBrowse::makePathRow() {
    auto* row = new QHBoxLayout;
    auto* lblPfad = new QLabel(QStringLiteral("&Pfad:"), this);
    lblPfad->setObjectName(QStringLiteral("lblPfad"));
    lblPfad->setBuddy(txtPfad_);
    txtPfad_->setObjectName(QStringLiteral("txtPfad"));
    txtPfad_->setAccessibleName(QStringLiteral("Pfad des Schlüssels"));
    connect(txtPfad_, &QLineEdit::returnPressed, this, [this] { goToTyped(); });
    row->addWidget(lblPfad);
    row->addWidget(txtPfad_, 1);
    return row;
}

QAction* frmBVK_RegBrowse::entry(QMenu& menu, const Entry& wanted) {
    QAction* action = menu.addAction(QString::fromUtf8(wanted.caption));
    action->setObjectName(QLatin1String(wanted.name));
    action->setShortcut(wanted.key);
    action->setShortcutContext(wanted.onlyIn ? Qt::WidgetShortcut : Qt::WindowShortcut);
    if (wanted.onlyIn) wanted.onlyIn->addAction(action);
    else addAction(action);
    connect(action, &QAction::triggered, this, [this, act = wanted.act] {
        browser_.click();
        act();
    });
    actions_.insert(action->objectName(), action);
    return action;
}

void frmBVK_RegBrowse::makeMenus(QMenuBar& bar) {
    QMenu* file = bar.addMenu(QStringLiteral("&Registry"));
    entry(*file, {"mnuExit", "&Beenden", {}, nullptr, [this] { reject(); }});
    QMenu* edit = bar.addMenu(QStringLiteral("&Bearbeiten"));
    entry(*edit, {"mnuAendern", "Wert ä&ndern...", {}, nullptr, [this] { mnuAendern(); }});
    QMenu* neu = edit->addMenu(QStringLiteral("Neu&er"));
    entry(*neu, {"mnuNewKey", "&Schlüssel...", {}, nullptr, [this] { newKey(); }});
    neu->addSeparator();
    entry(*neu, {"mnuNew1", "&Zeichenfolge (REG_SZ)...", {}, nullptr, [this] { newValue(regtype::Sz); }});
    entry(*neu, {"mnuNew2", "Zeichenfolge mit &Variablen (REG_EXPAND_SZ)...", {}, nullptr, [this] { newValue(regtype::ExpandSz); }});
    entry(*neu, {"mnuNew3", "&Binärwert (REG_BINARY)...", {}, nullptr, [this] { newValue(regtype::Binary); }});
    entry(*neu, {"mnuNew4", "Zah&l (REG_DWORD)...", {}, nullptr, [this] { newValue(regtype::Dword); }});
    entry(*neu, {"mnuNew7", "L&iste (REG_MULTI_SZ)...", {}, nullptr, [this] { newValue(regtype::MultiSz); }});
    edit->addSeparator();
    entry(*edit, {"mnuRenKey", "Schlüssel &umbenennen...", Qt::Key_F2, tvwReg_, [this] { renameKey(); }});
    entry(*edit, {"mnuRenValue", "Wert u&mbenennen...", Qt::Key_F2, lvwReg_, [this] { renameValue(); }});
    entry(*edit, {"mnuDelKey", "Schlüssel &löschen...", Qt::Key_Delete, tvwReg_, [this] { mnuDelKey(); }});
    entry(*edit, {"mnuDelValue", "Wert l&öschen...", Qt::Key_Delete, lvwReg_, [this] { deleteValue(); }});
    edit->addSeparator();
    entry(*edit, {"mnuCopyPath", "&Pfad kopieren", Qt::CTRL | Qt::SHIFT | Qt::Key_C, nullptr, [this] { copyPath(); }});
    entry(*edit, {"mnuFind", "Su&chen...", QKeySequence::Find, nullptr, [this] { fraSuche_->open(key()); }});
    QMenu* view = bar.addMenu(QStringLiteral("&Ansicht"));
    entry(*view, {"mnuRefresh", "&Aktualisieren", QKeySequence::Refresh, nullptr, [this] { refresh(); }});
}

void frmBVK_RegBrowse::makeContextMenus() {
    const auto add = [this](QTreeView& view, std::initializer_list<const char*> names) {
        view.setContextMenuPolicy(Qt::CustomContextMenu);
        auto* menu = new QMenu(&view);
        for (const char* name : names) {
            if (*name)
                menu->addAction(actions_.value(QLatin1String(name)));
            else
                menu->addSeparator();
        }
        connect(&view, &QWidget::customContextMenuRequested, menu, [menu, &view](const QPoint& place) { menu->popup(view.viewport()->mapToGlobal(place)); });
    };
    add(*tvwReg_, {"mnuNewKey", "mnuRenKey", "mnuDelKey", "", "mnuCopyPath", "mnuFind", "mnuRefresh"});
    add(*lvwReg_, {"mnuAendern", "mnuRenValue", "mnuDelValue", "", "mnuNew1", "mnuNew2", "mnuNew3", "mnuNew4", "mnuNew7", "", "mnuCopyPath"});
}

// --- layout ---

void frmBVK_RegBrowse::m_cSplit_SplitComplete(int position) {
    split_ = position;
    const int at = picSplitter_->limits().bounded(position), height = panes_->height(), right = at + cSplitter::Thickness;
    tvwReg_->setGeometry(0, 0, at, height);
    picSplitter_->setGeometry(at, 0, cSplitter::Thickness, height);
    lvwReg_->setGeometry(right, 0, panes_->width() - right, height);
}

// The panes are resized by the window and by the search that opens below them.
bool frmBVK_RegBrowse::eventFilter(QObject* watched, QEvent* event) {
    if (watched == panes_ && event->type() == QEvent::Resize) m_cSplit_SplitComplete(split_);
    return Dialog::eventFilter(watched, event);
}

void frmBVK_RegBrowse::changeEvent(QEvent* event) {
    Dialog::changeEvent(event);
    if (event->type() != QEvent::PaletteChange || !tvwReg_) return;
    icons_.setPalette(palette());
    tvwReg_->viewport()->update();
    lvwReg_->viewport()->update();
}

// --- what is shown ---

std::string frmBVK_RegBrowse::key() const { return keys_->keyOf(tvwReg_->currentIndex()); }
const BrowserValue* frmBVK_RegBrowse::chosenValue() const { return values_->at(lvwReg_->currentIndex()); }
bool frmBVK_RegBrowse::valuesInFront() const { return focusWidget() == lvwReg_ && chosenValue() != nullptr; }

void frmBVK_RegBrowse::selectKey() {
    txtPfad_->setText(qt(key()));
    fraSuche_->setKey(key());
    showValues();
}

void frmBVK_RegBrowse::showValues(const std::string& select) {
    values_->show(browser_.values(key()));
    const QModelIndex place = values_->indexOf(select);
    lvwReg_->setCurrentIndex(place.isValid() ? place : values_->index(0, 0));
    enableEntries();
    const int count = values_->rowCount() - (values_->at(values_->index(0, 0))->there ? 0 : 1);
    const QString unseen = unseenNote(key());       // in the path above
    sbrReg_->setText(QStringLiteral("PC: %1    %2").arg(plainLine(browser_.machine()), count == 1 ? QStringLiteral("1 Wert") : QStringLiteral("%1 Werte").arg(count)) +
                     (unseen.isEmpty() ? QString() : QStringLiteral("\nPfad: ") + unseen));
}

void frmBVK_RegBrowse::enableEntries() {
    const BrowserValue* value = chosenValue();
    const bool isKey = tvwReg_->currentIndex().isValid(), below = isKey && tvwReg_->currentIndex().parent().isValid();
    for (QAction* action : actions_) action->setEnabled(isKey);
    actions_.value(QStringLiteral("mnuAendern"))->setEnabled(value != nullptr);
    actions_.value(QStringLiteral("mnuRenValue"))->setEnabled(value && value->there && !value->KeyName.empty());
    actions_.value(QStringLiteral("mnuDelValue"))->setEnabled(value && value->there);
    actions_.value(QStringLiteral("mnuRenKey"))->setEnabled(below);
    actions_.value(QStringLiteral("mnuDelKey"))->setEnabled(below);
    actions_.value(QStringLiteral("mnuExit"))->setEnabled(true);
}

bool frmBVK_RegBrowse::goTo(const std::string& wanted, const std::optional<std::string>& value) {
    const QModelIndex place = keys_->find(wanted);
    for (QModelIndex above = place.parent(); above.isValid(); above = above.parent()) tvwReg_->expand(above);
    tvwReg_->setCurrentIndex(place);
    tvwReg_->scrollTo(place);
    const QModelIndex row = value ? values_->indexOf(*value) : QModelIndex();
    if (row.isValid()) {
        lvwReg_->setCurrentIndex(row);
        lvwReg_->scrollTo(row);
        lvwReg_->setFocus();
    } else {
        tvwReg_->setFocus();
    }
    return key().size() == wanted.size();
}

void frmBVK_RegBrowse::goToTyped() {
    const std::string wanted = browser_.longKey(utf8(txtPfad_->text().trimmed()));
    if (wanted.empty() || !browser_.exists(wanted)) {
        port_.tell("Den Schlüssel \"" + utf8(txtPfad_->text()) + "\" gibt es nicht.", box::Exclamation);
        return txtPfad_->setFocus();
    }
    goTo(wanted);
}

void frmBVK_RegBrowse::refresh() {
    const std::string present = key();
    const BrowserValue* value = chosenValue();
    const std::string name = value ? value->KeyName : std::string();
    const bool open = tvwReg_->isExpanded(tvwReg_->currentIndex());
    keys_->reload(tvwReg_->currentIndex());
    goTo(present, name);
    if (open) tvwReg_->expand(tvwReg_->currentIndex());
    showValues(name);
}

void frmBVK_RegBrowse::reject() {
    if (fraSuche_->running()) return fraSuche_->cancel();
    if (fraSuche_->isVisible() && fraSuche_->isAncestorOf(focusWidget())) {
        fraSuche_->hide();
        return tvwReg_->setFocus();
    }
    Dialog::reject();
}

// --- changes ---

std::optional<std::string> frmBVK_RegBrowse::askName(const char* title, const char* question, const std::string& name) {
    RegNameRequest request;
    request.titel = title;
    request.question = question;
    request.name = name;
    port_.showWindow(request);
    return request.ok ? std::optional(request.name) : std::nullopt;
}

void frmBVK_RegBrowse::mnuAendern() {
    const BrowserValue* chosen = chosenValue();
    if (!chosen) return;
    REGEditRequest request;
    request.ItemKey = key();
    request.ItemName = chosen->KeyName;
    request.ItemTyp = chosen->typ;
    request.ItemWert = browser_.value(request.ItemKey, request.ItemName);
    const auto before = request.ItemWert;
    request.save = [&](const std::string& name, const RawValue& value) { return browser_.writeValue(request.ItemKey, name, before, value); };
    port_.showWindow(request);
    showValues(request.ItemName);
}

void frmBVK_RegBrowse::newValue(std::uint32_t type) {
    REGEditRequest request;
    std::string made;
    request.neu = true;
    request.ItemKey = key();
    request.ItemTyp = type;
    request.save = [&](const std::string& name, const RawValue& value) {
        made = name;
        return browser_.writeValue(request.ItemKey, name, std::nullopt, value);
    };
    port_.showWindow(request);
    showValues(made);
    lvwReg_->setFocus();
}

void frmBVK_RegBrowse::newKey() {
    const std::string parent = key();
    const auto name = askName("Neuer Schlüssel", "Name des neuen Schlüssels:", {});
    if (!name || !browser_.newKey(parent, *name)) return;
    keys_->reload(tvwReg_->currentIndex());
    goTo(parent + "\\" + *name);
}

void frmBVK_RegBrowse::renameKey() {
    const QModelIndex place = tvwReg_->currentIndex();
    const std::string present = key();
    const std::string old = present.substr(present.rfind('\\') + 1);
    const auto name = askName("Schlüssel umbenennen", "Neuer Name des Schlüssels:", old);
    if (!name || *name == old || !browser_.renameKey(present, *name)) return;
    const std::string above = keys_->keyOf(place.parent());
    keys_->reload(place.parent());
    goTo(above + "\\" + *name);
}

void frmBVK_RegBrowse::renameValue() {
    const BrowserValue* chosen = chosenValue();
    if (!chosen) return;
    const std::string old = chosen->KeyName;
    const auto name = askName("Wert umbenennen", "Neuer Name des Wertes:", old);
    if (name && browser_.renameValue(key(), old, *name)) showValues(*name);
}

void frmBVK_RegBrowse::mnuDelKey() {
    const QModelIndex place = tvwReg_->currentIndex();
    const std::string above = keys_->keyOf(place.parent());
    if (!browser_.deleteKey(key())) return refresh();
    keys_->reload(place.parent());
    goTo(above);
}

void frmBVK_RegBrowse::deleteValue() {
    const BrowserValue* chosen = chosenValue();
    if (chosen && browser_.deleteValue(key(), std::string(chosen->KeyName))) showValues();
}

void frmBVK_RegBrowse::copyPath() {
    browser_.copyPath(key(), valuesInFront() ? std::optional(chosenValue()->KeyName) : std::nullopt);
}

}  // namespace brenvik
