#include "tipdb/Table.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <functional>

#include "tipdb/Limits.h"
#include "tipdb/Messages.h"

namespace brenvik {

namespace {

constexpr std::size_t FirstChunkBytes = 16U << 10, MaxChunkBytes = 4U << 20;
constexpr const char* NumberColumn = "Index";

std::int64_t hashOf(std::string_view text) {
    return static_cast<std::int64_t>(std::hash<std::string_view>{}(text));
}

}  // namespace

Table::Table(std::string name, std::vector<TableColumn> columns)
    : name_(std::move(name)), columns_(std::move(columns)) {}

void Table::add(Cell cell) {
    if (cells_.size() >= MaxTableCells) throw tooBig(fmt::format(messages::TableCells, name_), MaxTableCells);
    cells_.push_back(cell);
}

void Table::addNull() { add({}); }

void Table::addNumber(std::int64_t value) {
    Cell cell;
    cell.art = Cell::Art::Number;
    cell.number = value;
    add(cell);
}

void Table::addText(std::string_view value) {
    if (value.size() > MaxTextBytes) throw tooBig(fmt::format(messages::TextZuLang, place(rows(), cells_.size() % columns_.size()), value.size()), MaxTextBytes);
    if (value.size() > MaxTableBytes - textBytes_) throw tooBig(fmt::format(messages::TableTexts, name_), MaxTableBytes);
    textBytes_ += value.size();
    if (value.size() > chunkFree_) {
        chunkFree_ = std::max(std::clamp(textBytes_, FirstChunkBytes, MaxChunkBytes), value.size());
        chunks_.push_back(std::make_unique_for_overwrite<char[]>(chunkFree_));
        chunkNext_ = chunks_.back().get();
    }
    Cell cell;
    cell.art = Cell::Art::Text;
    cell.length = static_cast<std::uint32_t>(value.size());
    cell.chars = value.empty() ? "" : chunkNext_;
    if (!value.empty()) {
        std::memcpy(chunkNext_, value.data(), value.size());
        chunkNext_ += value.size();
        chunkFree_ -= value.size();
    }
    add(cell);
}

void Table::reserveRows(std::size_t count) { cells_.reserve(std::min(std::min(count, MaxTableCells) * columns_.size(), MaxTableCells)); }

std::string Table::place(std::size_t row, std::size_t column) const {
    const auto number = std::find_if(columns_.begin(), columns_.end(), [](const TableColumn& c) { return c.name == NumberColumn; });
    const std::size_t at = row * columns_.size() + static_cast<std::size_t>(number - columns_.begin());
    const bool numbered = number != columns_.end() && at < cells_.size() && cells_[at].art == Cell::Art::Number;
    return fmt::format("Tabelle {}, {} {}, Spalte {}", name_, numbered ? "Index" : "Zeile", numbered ? cells_[at].number : static_cast<std::int64_t>(row) + 1,
                       columns_[column].name);
}

const std::vector<Table::Key>& Table::numberIndex(std::size_t column) const {
    auto [place, isNew] = numberIndexes_.try_emplace(column);
    if (isNew) {
        for (std::size_t row = 0; row < rows(); ++row)
            if (cell(row, column).art == Cell::Art::Number)
                place->second.emplace_back(cell(row, column).number, static_cast<std::uint32_t>(row));
        std::sort(place->second.begin(), place->second.end());
    }
    return place->second;
}

const std::vector<Table::Key>& Table::textIndex(std::size_t column) const {
    auto [place, isNew] = textIndexes_.try_emplace(column);
    if (isNew) {
        for (std::size_t row = 0; row < rows(); ++row)
            if (cell(row, column).art == Cell::Art::Text)
                place->second.emplace_back(hashOf(cell(row, column).text()), static_cast<std::uint32_t>(row));
        std::sort(place->second.begin(), place->second.end());
    }
    return place->second;
}

Table::RowRange Table::rowsWithNumber(std::size_t column, std::int64_t value) const {
    const auto& index = numberIndex(column);
    const auto first = std::lower_bound(index.begin(), index.end(), Key{value, 0});
    const auto last = std::upper_bound(first, index.end(), Key{value, UINT32_MAX});
    return {static_cast<std::size_t>(first - index.begin()), static_cast<std::size_t>(last - index.begin())};
}

std::uint32_t Table::indexRow(std::size_t column, std::size_t position) const {
    return numberIndex(column)[position].second;
}

std::size_t Table::findNumber(std::size_t column, std::int64_t value, std::size_t fromRow) const {
    const auto& index = numberIndex(column);
    const auto hit = std::lower_bound(index.begin(), index.end(), Key{value, static_cast<std::uint32_t>(fromRow)});
    return hit != index.end() && hit->first == value ? hit->second : rows();
}

std::size_t Table::findText(std::size_t column, std::string_view value, std::size_t fromRow) const {
    const auto& index = textIndex(column);
    const std::int64_t hash = hashOf(value);
    auto hit = std::lower_bound(index.begin(), index.end(), Key{hash, static_cast<std::uint32_t>(fromRow)});
    for (; hit != index.end() && hit->first == hash; ++hit)
        if (cell(hit->second, column).text() == value) return hit->second;
    return rows();
}

}  // namespace brenvik
