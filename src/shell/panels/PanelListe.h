#pragma once
// The list with tick boxes: values of a Tip (kind 8) or entries of a context menu (kind 10, two columns).
#include <QAbstractTableModel>
#include <QTreeView>
#include <functional>

#include "shell/panels/PanelView.h"

namespace brenvik {

class ListenModel : public QAbstractTableModel {
public:
    using Record = std::function<const Panel*()>;
    using Tick = std::function<void(int row, bool on)>;
    ListenModel(Record record, Tick tick, int columns, QObject* parent);

    void setRowHeight(int pixels) { rowHeight_ = pixels; }
    void refresh();    // keeps selection and scroll position where the number of rows is the same
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : columns_; }
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const ListLine* rowAt(const QModelIndex& index) const;
    Record record_;
    Tick tick_;
    int rows_ = 0;
    int rowHeight_ = 18;
    int columns_;
};

class PanelListe : public PanelView {
public:
    PanelListe(PanelHost& host, std::size_t place, QWidget* parent);
    bool growsToFill() const override { return true; }

protected:
    void draw(const Panel& panel) override;

private:
    void contextMenu(const QPoint& pos);
    QTreeView* lvListe_;
    ListenModel* model_;
};

}  // namespace brenvik
