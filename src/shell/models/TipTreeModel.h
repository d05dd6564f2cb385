#pragma once
// The tree of groups and Tips, straight over the record's nodes: no item object per node. The structure is a snapshot
// that rebuild() takes, so that a repaint while the engine builds the next tree sees a consistent one.
#include <QAbstractItemModel>
#include <functional>
#include <vector>

#include "shell/widgets/Icons.h"
#include "tipengine/MainWindow.h"

namespace brenvik {

class TipTreeModel : public QAbstractItemModel {
public:
    using Order = std::function<std::vector<int>(const MainWindow&, int node)>;

    TipTreeModel(const MainWindow& record, Order displayOrder, IconSet& icons, QObject* parent = nullptr);

    void rebuild();
    QModelIndex indexOf(int node) const;
    int nodeOf(const QModelIndex& index) const { return index.isValid() ? static_cast<int>(index.internalId()) : -1; }

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& = {}) const override { return 1; }
    bool hasChildren(const QModelIndex& parent = {}) const override { return rowCount(parent) > 0; }
    QVariant data(const QModelIndex& index, int role) const override;

private:
    struct Place {
        int parent = -1, row = 0, firstChild = 0, children = 0;   // firstChild: place in order_
    };
    void placeBelow(int node);
    const TreeNode* nodeAt(const QModelIndex& index) const;

    const MainWindow& record_;
    Order displayOrder_;
    IconSet& icons_;
    std::vector<Place> places_;      // by node
    std::vector<int> order_;         // the children of all nodes, in the order shown
};

}  // namespace brenvik
