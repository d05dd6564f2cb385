#pragma once
// The two tables of the registry browser: the values of a key (lvwReg) and the hits of a search.
#include <QAbstractTableModel>

#include "browser/RegBrowser.h"
#include "shell/widgets/Icons.h"

namespace brenvik {

class RegWertModel : public QAbstractTableModel {
public:
    static constexpr int TagRole = Qt::UserRole;    // "ASC", "DATA" or nothing

    RegWertModel(IconSet& icons, QObject* parent) : QAbstractTableModel(parent), icons_(icons) {}
    void show(std::vector<BrowserWert> rows);
    const BrowserWert* at(const QModelIndex& index) const;
    QModelIndex indexOf(const std::string& name) const;      // ignores case
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : static_cast<int>(rows_.size()); }
    int columnCount(const QModelIndex& = {}) const override { return 3; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    IconSet& icons_;
    std::vector<BrowserWert> rows_;
};

class RegTrefferModel : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;
    void clear();
    void append(std::vector<BrowserTreffer> hits);
    const BrowserTreffer* at(const QModelIndex& index) const;
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : static_cast<int>(hits_.size()); }
    int columnCount(const QModelIndex& = {}) const override { return 3; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<BrowserTreffer> hits_;
};

}  // namespace brenvik
