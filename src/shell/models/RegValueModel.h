#pragma once
// The two tables of the registry browser: the values of a key (lvwReg) and the hits of a search.
#include <QAbstractTableModel>

#include "browser/RegBrowser.h"
#include "shell/widgets/Icons.h"

namespace brenvik {

class RegValueModel : public QAbstractTableModel {
public:
    static constexpr int TagRole = Qt::UserRole;    // "ASC", "DATA" or nothing

    RegValueModel(IconSet& icons, QObject* parent) : QAbstractTableModel(parent), icons_(icons) {}
    void show(std::vector<BrowserValue> rows);
    const BrowserValue* at(const QModelIndex& index) const;
    QModelIndex indexOf(const std::string& name) const;      // ignores case
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : static_cast<int>(rows_.size()); }
    int columnCount(const QModelIndex& = {}) const override { return 3; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    IconSet& icons_;
    std::vector<BrowserValue> rows_;
};

class RegHitModel : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;
    void clear();
    void append(std::vector<BrowserHit> hits);
    const BrowserHit* at(const QModelIndex& index) const;
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : static_cast<int>(hits_.size()); }
    int columnCount(const QModelIndex& = {}) const override { return 3; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<BrowserHit> hits_;
};

}  // namespace brenvik
