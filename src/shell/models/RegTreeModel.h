#pragma once
// tvwReg: the keys of a registry, each read when it is opened and forgotten when it is closed. A key that was not read yet
// counts as one that has sub keys.
#include <QAbstractItemModel>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "shell/widgets/Icons.h"

namespace brenvik {

class RegTreeModel : public QAbstractItemModel {
public:
    using SubKeys = std::function<std::vector<std::string>(const std::string& key)>;

    RegTreeModel(const std::vector<std::string>& roots, SubKeys subKeys, IconSet& icons, QObject* parent = nullptr);
    ~RegTreeModel() override;

    std::string keyOf(const QModelIndex& index) const;       // full path; empty for no node
    QModelIndex child(const QModelIndex& parent, const std::string& name);   // reads the parent if need be; names ignore case
    QModelIndex find(const std::string& key);                // the key, or the last one on the way to it that is there
    void reload(const QModelIndex& index);                   // reads the sub keys anew
    void opened(const QModelIndex& index);
    void closed(const QModelIndex& index);                   // the sub keys are forgotten

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& = {}) const override { return 1; }
    bool hasChildren(const QModelIndex& parent = {}) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    struct Node;
    Node* nodeOf(const QModelIndex& index) const;
    QModelIndex indexOf(const Node& node) const;
    void forget(const QModelIndex& index);

    SubKeys subKeys_;
    IconSet& icons_;
    std::unique_ptr<Node> top_;     // above the roots
};

}  // namespace brenvik
