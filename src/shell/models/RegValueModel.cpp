#include "shell/models/RegValueModel.h"

#include "registry/Upcase.h"
#include "shell/widgets/PlainText.h"
#include "shell/widgets/QtText.h"
#include "tipengine/Messages.h"

namespace brenvik {
namespace {

template <class Rows> auto rowAt(const Rows& rows, const QModelIndex& index) -> decltype(rows.data()) {
    return index.isValid() && static_cast<std::size_t>(index.row()) < rows.size() ? &rows[static_cast<std::size_t>(index.row())] : nullptr;
}

const std::string& shownName(const std::string& name) {
    static const std::string unnamed = messages::StandardWert;
    return name.empty() ? unnamed : name;
}

QVariant shown(const std::string& text, int role) { return role == Qt::ToolTipRole ? toolTipText(text) : plainLine(text); }

QVariant header(std::initializer_list<const char*> captions, int section, Qt::Orientation orientation, int role) {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || static_cast<std::size_t>(section) >= captions.size()) return {};
    return QString::fromUtf8(captions.begin()[section]);
}

}  // namespace

void RegValueModel::show(std::vector<BrowserValue> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
}

const BrowserValue* RegValueModel::at(const QModelIndex& index) const { return rowAt(rows_, index); }

QModelIndex RegValueModel::indexOf(const std::string& name) const {
    for (std::size_t i = 0; i < rows_.size(); ++i)
        if (sameName(rows_[i].KeyName, name)) return index(static_cast<int>(i), 0);
    return {};
}

QVariant RegValueModel::data(const QModelIndex& index, int role) const {
    const BrowserValue* row = at(index);
    if (!row) return {};
    if (role == TagRole) return row->tag == BrowserValue::Tag::ASC ? QStringLiteral("ASC") : row->tag == BrowserValue::Tag::DATA ? QStringLiteral("DATA") : QString();
    if (role == Qt::DecorationRole && index.column() == 0) {
        const bool text = row->typ == regtype::Sz || row->typ == regtype::ExpandSz || row->typ == regtype::MultiSz;
        return icons_.get(text ? QStringLiteral("wert") : QStringLiteral("wertbinaer"));
    }
    if (role != Qt::DisplayRole && (role != Qt::ToolTipRole || index.column() == 1)) return {};
    switch (index.column()) {
        case 0: return shown(shownName(row->KeyName), role);
        case 1: return qt(row->Type);
        default: return shown(row->Wert, role);
    }
}

QVariant RegValueModel::headerData(int section, Qt::Orientation orientation, int role) const {
    return header({"KeyName", "Type", "Wert"}, section, orientation, role);
}

void RegHitModel::clear() {
    beginResetModel();
    hits_.clear();
    endResetModel();
}

void RegHitModel::append(std::vector<BrowserHit> hits) {
    if (hits.empty()) return;
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(hits.size()) - 1);
    hits_.insert(hits_.end(), std::make_move_iterator(hits.begin()), std::make_move_iterator(hits.end()));
    endInsertRows();
}

const BrowserHit* RegHitModel::at(const QModelIndex& index) const { return rowAt(hits_, index); }

QVariant RegHitModel::data(const QModelIndex& index, int role) const {
    const BrowserHit* hit = at(index);
    if (!hit || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) return {};
    switch (index.column()) {
        case 0: return shown(hit->key, role);
        case 1: return hit->name ? shown(shownName(*hit->name), role) : QVariant();
        default: return shown(hit->text, role);
    }
}

QVariant RegHitModel::headerData(int section, Qt::Orientation orientation, int role) const {
    return header({"Schlüssel", "Wertname", "Daten"}, section, orientation, role);
}

}  // namespace brenvik
