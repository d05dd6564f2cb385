#include "tipdb/RecordSet.h"

#include <charconv>

#include "tipdb/DatabaseErrors.h"

namespace brenvik {

const Table& RecordSet::openRows() const {
    if (!rows_) throw NumberedError(dberr::Closed, "Die Datensatzgruppe ist geschlossen.");
    return *rows_;
}

std::size_t RecordSet::columnOf(int ordinal) const {
    if (ordinal < 0 || static_cast<std::size_t>(ordinal) >= openRows().columns().size())
        throw LocatedError(dberr::NoSuchField, "Tabelle " + rows_->name() + ": Die Spalte " + std::to_string(ordinal) + " gibt es nicht.");
    return static_cast<std::size_t>(ordinal);
}

const Cell& RecordSet::field(int ordinal) const {
    const std::size_t column = columnOf(ordinal);
    if (row_ >= rows_->rows()) throw NumberedError(dberr::NoCurrentRow, "Es gibt keinen aktuellen Datensatz.");
    return rows_->cell(row_, column);
}

void RecordSet::fail(std::int32_t number, int ordinal, const char* reason) const {
    throw LocatedError(number, rows_->place(row_, columnOf(ordinal)) + ": " + reason);
}

std::int64_t RecordSet::RecordCount() const { return static_cast<std::int64_t>(openRows().rows()); }
bool RecordSet::atBOF() const { return openRows().rows() == 0; }
bool RecordSet::atEOF() const { return row_ >= openRows().rows(); }

void RecordSet::MoveFirst() {
    openRows();
    row_ = 0;
}

void RecordSet::MoveNext() {
    if (atEOF()) throw NumberedError(dberr::NoCurrentRow, "Es gibt keinen weiteren Datensatz.");
    ++row_;
}

void RecordSet::MoveLast() {
    const std::size_t count = openRows().rows();
    row_ = count == 0 ? 0 : count - 1;
}

void RecordSet::moveToText(int ordinal, std::string_view value) {
    const std::size_t column = columnOf(ordinal);
    row_ = rows_->findText(column, value, row_);
}

void RecordSet::moveToNumber(int ordinal, std::int64_t value) {
    const std::size_t column = columnOf(ordinal);
    row_ = rows_->findNumber(column, value, row_);
}

bool RecordSet::isNull(int ordinal) const { return field(ordinal).art == Cell::Art::Null; }

bool RecordSet::isNullOrEmpty(int ordinal) const {
    const Cell& cell = field(ordinal);
    return cell.art == Cell::Art::Null || (cell.art == Cell::Art::Text && cell.length == 0);
}

std::string RecordSet::text(int ordinal) const {
    const Cell& cell = field(ordinal);
    if (cell.art == Cell::Art::Null) fail(dberr::NullValue, ordinal, "Unzulässige Verwendung von Null");
    return cell.art == Cell::Art::Number ? std::to_string(cell.number) : std::string(cell.text());
}

std::string RecordSet::textOrEmpty(int ordinal) const { return isNull(ordinal) ? std::string() : text(ordinal); }

std::int64_t RecordSet::wholeNumber(int ordinal) const {
    const Cell& cell = field(ordinal);
    if (cell.art == Cell::Art::Number) return cell.number;
    const std::string digits = text(ordinal);
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size()) fail(errnum::TypeMismatch, ordinal, "Typen unverträglich");
    return value;
}

bool RecordSet::flag(int ordinal) const {
    const Cell& cell = field(ordinal);
    if (cell.art == Cell::Art::Text && (cell.text() == "True" || cell.text() == "Wahr")) return true;
    if (cell.art == Cell::Art::Text && (cell.text() == "False" || cell.text() == "Falsch")) return false;
    return wholeNumber(ordinal) != 0;
}

}  // namespace brenvik
