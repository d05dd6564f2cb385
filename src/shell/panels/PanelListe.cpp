#include "shell/panels/PanelListe.h"

#include <QHeaderView>
#include <QMenu>
#include <QPointer>

#include "frame/text/Texts.h"
#include "shell/main/RightRegion.h"

namespace brenvik {
namespace {

constexpr int ButtonNew = 26, ButtonEdit = 27, ButtonDelete = 5;
constexpr int LinesShown = 4;
constexpr int RowPadding = 6;

}  // namespace

ListenModel::ListenModel(Record record, Tick tick, int columns, QObject* parent)
    : QAbstractTableModel(parent), record_(std::move(record)), tick_(std::move(tick)), columns_(columns) {}

void ListenModel::refresh() {
    const Panel* panel = record_();
    const int rows = panel ? static_cast<int>(panel->lines.size()) : 0;
    if (rows == rows_) {
        if (rows > 0) emit dataChanged(index(0, 0), index(rows - 1, columns_ - 1));
        return;
    }
    beginResetModel();
    rows_ = rows;
    endResetModel();
}

const ListLine* ListenModel::rowAt(const QModelIndex& index) const {
    const Panel* panel = record_();
    if (!panel || !index.isValid() || static_cast<std::size_t>(index.row()) >= panel->lines.size()) return nullptr;
    return &panel->lines[static_cast<std::size_t>(index.row())];
}

QVariant ListenModel::data(const QModelIndex& index, int role) const {
    const ListLine* row = rowAt(index);
    if (!row) return {};
    if (role == Qt::CheckStateRole && index.column() == 0) return row->ticked ? Qt::Checked : Qt::Unchecked;
    if (role == Qt::SizeHintRole && index.column() == columns_ - 1) return QSize(10, rowHeight_);
    const std::string& text = index.column() == 0 ? row->text : row->subText;
    if (role == Qt::DisplayRole) return plainLine(text);
    if (role == Qt::ToolTipRole) return toolTipText(text);
    return {};
}

bool ListenModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !(flags(index) & Qt::ItemIsUserCheckable)) return false;
    tick_(index.row(), value.toInt() == Qt::Checked);
    emit dataChanged(index, index, {Qt::CheckStateRole});    // the record decides what stands there now
    return true;
}

Qt::ItemFlags ListenModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags flags = QAbstractTableModel::flags(index) | Qt::ItemNeverHasChildren;
    const Panel* panel = record_();
    const ListLine* row = rowAt(index);
    if (index.column() == 0 && panel && !panel->readOnly && row && !row->readOnly) flags |= Qt::ItemIsUserCheckable;
    if (row && row->readOnly) flags &= ~Qt::ItemIsEnabled;
    return flags;
}

QVariant ListenModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return section == 0 ? QStringLiteral("Schlüsselname") : QStringLiteral("Anzeigetext");
}

PanelListe::PanelListe(PanelHost& host, std::size_t place, QWidget* parent)
    : PanelView(host, place, "fraListe", parent), lvListe_(new QTreeView(this)) {
    const bool entries = kind_ == art::Kontext;
    model_ = new ListenModel([this] { return record(); }, user([this](int row, bool on) { host_.events.userTick(place_, row, on); }),
                             entries ? 2 : 1, this);
    lvListe_->setObjectName(QStringLiteral("lvListe"));
    lvListe_->setModel(model_);
    model_->setRowHeight(lvListe_->fontMetrics().lineSpacing() + RowPadding);
    lvListe_->setRootIsDecorated(false);
    lvListe_->setUniformRowHeights(true);
    lvListe_->setAlternatingRowColors(true);
    lvListe_->setHeaderHidden(!entries);
    lvListe_->setTabKeyNavigation(false);
    lvListe_->setMinimumHeight(lvListe_->fontMetrics().lineSpacing() * LinesShown + RowPadding * LinesShown + 30);
    lvListe_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);    // its minimum, or what is left of the region
    if (entries) {
        lvListe_->header()->setResizeContentsPrecision(200);
        lvListe_->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    }
    const int sides = rightregion::within(rightregion::fraListe, rightregion::lvListe) / 2;
    body_->setContentsMargins(sides, 7, sides, sides);
    body_->addWidget(lvListe_, 1);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);

    connect(lvListe_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            user([this](const QModelIndex& current, const QModelIndex&) {
                if (current.isValid()) host_.events.userSelectRow(place_, current.row());
            }));
    if (!entries) return;
    lvListe_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(lvListe_, &QTreeView::customContextMenuRequested, this, &PanelListe::contextMenu);
    connect(lvListe_, &QTreeView::doubleClicked, this,
            user([this](const QModelIndex& index) {
                if (index.column() > 0 && host_.record.Default) host_.events.clickDefault(host_.record.cmdDefault);
            }));
}

void PanelListe::draw(const Panel& panel) {
    setCaption("lblListe", panel, plainLine(panel.label));
    lvListe_->setAccessibleName(panel.label.empty() ? QStringLiteral("Liste") : plainLine(panel.label));
    model_->refresh();
    const int selected = panel.chosenRow;
    if (selected >= 0 && selected < model_->rowCount() && lvListe_->currentIndex().row() != selected)
        lvListe_->setCurrentIndex(model_->index(selected, 0));
}

// Also on an empty list, where a new entry could otherwise not be made.
void PanelListe::contextMenu(const QPoint& pos) {
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("mnuListe"));
    QAction* neu = menu.addAction(qt(strBVKButtons(ButtonNew)));
    QAction* edit = menu.addAction(qt(strBVKButtons(ButtonEdit)));
    QAction* remove = menu.addAction(qt(strBVKButtons(ButtonDelete)));
    edit->setEnabled(host_.record.Default);
    remove->setEnabled(host_.record.KeyDel);
    const QPointer<PanelListe> alive(this);
    const QAction* chosen = menu.exec(lvListe_->viewport()->mapToGlobal(pos));
    if (!alive || !record()) return;
    if (chosen == neu) host_.events.clickRegSave(strBVKButtons(ButtonNew));
    if (chosen == edit) host_.events.clickDefault(strBVKButtons(ButtonEdit));
    if (chosen == remove) host_.events.clickRegDel();
}

}  // namespace brenvik
