#pragma once
// A table in memory: what a database file holds, or what a statement answered. Rows keep the order in which they were
// added; a cell is null, a number or a text (UTF-8), and null is not the empty text. Texts live as long as the table.
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace brenvik {

struct Cell {
    enum class Art : std::uint8_t { Null, Number, Text };
    Art art = Art::Null;
    std::uint32_t length = 0;
    union {
        std::int64_t number = 0;
        const char* chars;
    };
    std::string_view text() const { return {chars, length}; }
};

struct TableColumn {
    std::string name;
    bool text = true;  // else a column of whole numbers; single cells may still differ in foreign databases
};

class Table {
public:
    Table(std::string name, std::vector<TableColumn> columns);

    const std::string& name() const { return name_; }
    const std::vector<TableColumn>& columns() const { return columns_; }
    std::size_t rows() const { return columns_.empty() ? 0 : cells_.size() / columns_.size(); }
    // Where a cell stands, for reports: "Table RegDaten, Index 35, Spalte Symbol". A table without numbers counts its rows from 1.
    std::string place(std::size_t row, std::size_t column) const;
    const Cell& cell(std::size_t row, std::size_t column) const { return cells_[row * columns_.size() + column]; }

    // Cells are added from left to right, row by row. Throws DatabaseErrors when the table outgrows the memory
    // that a tip database can reasonably need.
    void addNull();
    void addNumber(std::int64_t value);
    void addText(std::string_view value);
    void reserveRows(std::size_t count);

    // Row numbers, ascending, whose cell equals the value exactly. The first call for a column builds its index.
    using RowRange = std::pair<std::size_t, std::size_t>;  // into the column's index, see indexRow
    RowRange rowsWithNumber(std::size_t column, std::int64_t value) const;
    std::uint32_t indexRow(std::size_t column, std::size_t position) const;
    // First such row at or behind fromRow, rows() if there is none.
    std::size_t findNumber(std::size_t column, std::int64_t value, std::size_t fromRow) const;
    std::size_t findText(std::size_t column, std::string_view value, std::size_t fromRow) const;

private:
    using Key = std::pair<std::int64_t, std::uint32_t>;  // number or hash, row
    const std::vector<Key>& numberIndex(std::size_t column) const;
    const std::vector<Key>& textIndex(std::size_t column) const;
    void add(Cell cell);

    std::string name_;
    std::vector<TableColumn> columns_;
    std::vector<Cell> cells_;
    std::vector<std::unique_ptr<char[]>> chunks_;
    std::size_t chunkFree_ = 0;
    char* chunkNext_ = nullptr;
    std::size_t textBytes_ = 0;
    mutable std::map<std::size_t, std::vector<Key>> numberIndexes_, textIndexes_;
};

// Everything that was read from one database file.
struct Records {
    std::vector<std::shared_ptr<const Table>> tables;
};

}  // namespace brenvik
