#include "shell/models/RegTreeModel.h"

#include "registry/Upcase.h"
#include "shell/widgets/PlainText.h"

namespace brenvik {

struct RegTreeModel::Node {
    std::string name;
    Node* parent = nullptr;
    int row = 0;
    bool read = false, open = false;
    std::vector<std::unique_ptr<Node>> children;

    void add(std::string childName) {
        auto node = std::make_unique<Node>();
        node->name = std::move(childName);
        node->parent = this;
        node->row = static_cast<int>(children.size());
        children.push_back(std::move(node));
    }
};

RegTreeModel::RegTreeModel(const std::vector<std::string>& roots, SubKeys subKeys, IconSet& icons, QObject* parent)
    : QAbstractItemModel(parent), subKeys_(std::move(subKeys)), icons_(icons), top_(std::make_unique<Node>()) {
    top_->read = true;
    for (const std::string& root : roots) top_->add(root);
}

RegTreeModel::~RegTreeModel() = default;

RegTreeModel::Node* RegTreeModel::nodeOf(const QModelIndex& index) const {
    return index.isValid() ? static_cast<Node*>(index.internalPointer()) : top_.get();
}

QModelIndex RegTreeModel::indexOf(const Node& node) const {
    return &node == top_.get() ? QModelIndex() : createIndex(node.row, 0, const_cast<Node*>(&node));
}

std::string RegTreeModel::keyOf(const QModelIndex& index) const {
    std::string key;
    for (const Node* node = nodeOf(index); node != top_.get(); node = node->parent) key = key.empty() ? node->name : node->name + "\\" + key;
    return key;
}

QModelIndex RegTreeModel::index(int row, int column, const QModelIndex& parent) const {
    const Node* node = nodeOf(parent);
    if (row < 0 || column != 0 || static_cast<std::size_t>(row) >= node->children.size()) return {};
    return createIndex(row, 0, node->children[static_cast<std::size_t>(row)].get());
}

QModelIndex RegTreeModel::parent(const QModelIndex& child) const { return child.isValid() ? indexOf(*nodeOf(child)->parent) : QModelIndex(); }

int RegTreeModel::rowCount(const QModelIndex& parent) const { return static_cast<int>(nodeOf(parent)->children.size()); }

bool RegTreeModel::hasChildren(const QModelIndex& parent) const {
    const Node* node = nodeOf(parent);
    return !node->read || !node->children.empty();
}

bool RegTreeModel::canFetchMore(const QModelIndex& parent) const { return !nodeOf(parent)->read; }

void RegTreeModel::fetchMore(const QModelIndex& parent) {
    Node* node = nodeOf(parent);
    if (node->read) return;
    node->read = true;
    std::vector<std::string> names = subKeys_(keyOf(parent));
    if (names.empty()) return emit dataChanged(parent, parent);
    beginInsertRows(parent, 0, static_cast<int>(names.size()) - 1);
    node->children.reserve(names.size());
    for (std::string& name : names) node->add(std::move(name));
    endInsertRows();
}

void RegTreeModel::forget(const QModelIndex& index) {
    Node* node = nodeOf(index);
    if (!node->children.empty()) {
        beginRemoveRows(index, 0, static_cast<int>(node->children.size()) - 1);
        node->children.clear();
        endRemoveRows();
    }
    node->read = false;
}

void RegTreeModel::reload(const QModelIndex& index) {
    if (!index.isValid()) return;
    forget(index);
    fetchMore(index);
}

void RegTreeModel::opened(const QModelIndex& index) {
    nodeOf(index)->open = true;
    emit dataChanged(index, index, {Qt::DecorationRole});
}

void RegTreeModel::closed(const QModelIndex& index) {
    nodeOf(index)->open = false;
    forget(index);
    emit dataChanged(index, index, {Qt::DecorationRole});
}

QModelIndex RegTreeModel::child(const QModelIndex& parent, const std::string& name) {
    fetchMore(parent);
    const std::u16string wanted = foldName(name);
    for (const auto& node : nodeOf(parent)->children)
        if (compareNames(foldName(node->name), wanted) == 0) return indexOf(*node);
    return {};
}

QModelIndex RegTreeModel::find(const std::string& key) {
    QModelIndex place;
    for (std::size_t start = 0; start < key.size();) {
        const std::size_t end = std::min(key.find('\\', start), key.size());
        const QModelIndex next = child(place, key.substr(start, end - start));
        if (!next.isValid()) break;
        place = next;
        start = end + 1;
    }
    return place;
}

QVariant RegTreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const Node* node = nodeOf(index);
    if (role == Qt::DisplayRole) return plainLine(node->name);
    if (role == Qt::DecorationRole) return icons_.get(node->open ? QStringLiteral("regordneroffen") : QStringLiteral("regordner"));
    return {};
}

}  // namespace brenvik
