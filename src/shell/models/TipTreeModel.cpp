#include "shell/models/TipTreeModel.h"

#include "shell/widgets/PlainText.h"

namespace brenvik {

TipTreeModel::TipTreeModel(const MainWindow& record, Order displayOrder, IconSet& icons, QObject* parent)
    : QAbstractItemModel(parent), record_(record), displayOrder_(std::move(displayOrder)), icons_(icons) {}

void TipTreeModel::rebuild() {
    beginResetModel();
    places_.assign(record_.tvBVKDB.size(), {});
    order_.clear();
    order_.reserve(record_.tvBVKDB.size());
    for (std::size_t node = 0; node < places_.size(); ++node) placeBelow(static_cast<int>(node));
    endResetModel();
}

void TipTreeModel::placeBelow(int node) {
    Place& own = places_[static_cast<std::size_t>(node)];
    if (record_.tvBVKDB[static_cast<std::size_t>(node)].kinder.empty()) return;
    const std::vector<int> children = displayOrder_(record_, node);
    own.firstChild = static_cast<int>(order_.size());
    own.children = static_cast<int>(children.size());
    for (std::size_t row = 0; row < children.size(); ++row) {
        Place& child = places_.at(static_cast<std::size_t>(children[row]));
        child.parent = node;
        child.row = static_cast<int>(row);
        order_.push_back(children[row]);
    }
}

QModelIndex TipTreeModel::indexOf(int node) const {
    if (node < 0 || static_cast<std::size_t>(node) >= places_.size()) return {};
    const Place& place = places_[static_cast<std::size_t>(node)];
    if (node != 0 && place.parent < 0) return {};      // a node that was taken out of the tree
    return createIndex(place.row, 0, static_cast<quintptr>(node));
}

QModelIndex TipTreeModel::index(int row, int column, const QModelIndex& parentIndex) const {
    if (row < 0 || column != 0 || row >= rowCount(parentIndex)) return {};
    if (!parentIndex.isValid()) return createIndex(0, 0, quintptr{0});
    const Place& place = places_[parentIndex.internalId()];
    return createIndex(row, 0, static_cast<quintptr>(order_[static_cast<std::size_t>(place.firstChild + row)]));
}

QModelIndex TipTreeModel::parent(const QModelIndex& child) const {
    if (!child.isValid() || child.internalId() >= places_.size()) return {};
    return indexOf(places_[child.internalId()].parent);
}

int TipTreeModel::rowCount(const QModelIndex& parentIndex) const {
    if (!parentIndex.isValid()) return places_.empty() ? 0 : 1;
    return parentIndex.internalId() < places_.size() ? places_[parentIndex.internalId()].children : 0;
}

const TreeNode* TipTreeModel::nodeAt(const QModelIndex& index) const {
    return index.isValid() && index.internalId() < record_.tvBVKDB.size() ? &record_.tvBVKDB[index.internalId()] : nullptr;
}

QVariant TipTreeModel::data(const QModelIndex& index, int role) const {
    const TreeNode* node = nodeAt(index);
    if (!node) return {};
    switch (role) {
        case Qt::DisplayRole:
        case Qt::AccessibleTextRole: return plainLine(node->text);
        case Qt::ToolTipRole: return toolTipText(node->text);
        case Qt::DecorationRole: return icons_.tree(*node);
        default: return {};
    }
}

}  // namespace brenvik
