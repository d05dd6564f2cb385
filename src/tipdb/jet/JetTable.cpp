#include "tipdb/jet/JetTable.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <chrono>
#include <cmath>

#include "registry/Upcase.h"

namespace brenvik::jet {

namespace {

constexpr std::uint32_t CatalogPage = 2;
constexpr std::int64_t CatalogTableType = 1;
constexpr std::size_t MaxDefinitionPages = 64, MaxColumns = 255, MaxIndexes = 255;

enum class Type : std::uint8_t { Boolean = 1, Byte = 2, Int = 3, Long = 4, Currency = 5, Float = 6, Double = 7, DateTime = 8, Text = 10, Ole = 11, Memo = 12 };

struct Column {
    std::string name;
    Type type = Type::Text;
    unsigned number = 0;       // bit in the null mask
    unsigned variable = 0;     // place among the columns of variable length
    unsigned fixedOffset = 0;
    unsigned size = 0;
    bool fixed = false;

    bool isNumber() const { return type >= Type::Boolean && type <= Type::Double; }
};

struct Definition {
    std::vector<Column> columns;  // by number
    std::uint32_t rowCount = 0;
    std::uint32_t usedPages = 0, freePages = 0;  // pointers to usage maps: the table's pages, and those with room
    std::vector<std::uint32_t> columnMaps;       // the same of the columns with long values
    bool hasVariable = false;
};

std::vector<std::uint8_t> definitionBytes(const JetFile& file, std::uint32_t firstPage) {
    std::vector<std::uint8_t> bytes;
    std::size_t count = 0;
    for (std::uint32_t number = firstPage; number != 0;) {
        if (++count > MaxDefinitionPages) throw Damaged("eine Tabellendefinition hat kein Ende");
        const Slice p = file.page(number, JetFile::DefinitionPage);
        bytes.insert(bytes.end(), p.data + (count == 1 ? 0 : 8), p.data + p.size);
        number = p.u32(4);
    }
    return bytes;
}

// The list at the end of a definition: column number and two map pointers each, FFFF behind the last.
std::vector<std::uint32_t> columnMaps(Slice definition, std::size_t at) {
    std::vector<std::uint32_t> maps;
    for (; definition.u16(at) != 0xFFFF; at += 10) {
        maps.push_back(definition.u32(at + 2));
        maps.push_back(definition.u32(at + 6));
    }
    return maps;
}

Definition readDefinition(const JetFile& file, std::uint32_t firstPage) {
    const std::vector<std::uint8_t> bytes = definitionBytes(file, firstPage);
    const Slice d{bytes.data(), bytes.size()};
    const bool jet4 = file.isJet4();
    Definition result;
    result.rowCount = d.u32(jet4 ? 16 : 12);
    result.usedPages = d.u32(jet4 ? 55 : 35);
    result.freePages = d.u32(jet4 ? 59 : 39);
    const unsigned columnCount = d.u16(jet4 ? 45 : 25);
    const std::uint32_t logicalIndexCount = d.u32(jet4 ? 47 : 27), indexCount = d.u32(jet4 ? 51 : 31);
    if (columnCount == 0 || columnCount > MaxColumns || indexCount > MaxIndexes) throw Damaged("eine Tabellendefinition ist unsinnig");
    std::size_t at = jet4 ? 63 + indexCount * 12 : 43 + indexCount * 8;
    for (unsigned i = 0; i < columnCount; ++i, at += jet4 ? 25 : 18) {
        Column c;
        c.type = static_cast<Type>(d.u8(at));
        c.number = d.u16(at + (jet4 ? 5 : 1));
        c.variable = d.u16(at + (jet4 ? 7 : 3));
        c.fixed = (d.u8(at + (jet4 ? 15 : 13)) & 1) != 0;
        c.fixedOffset = d.u16(at + (jet4 ? 21 : 14));
        c.size = d.u16(at + (jet4 ? 23 : 16));
        result.hasVariable = result.hasVariable || !c.fixed;
        result.columns.push_back(c);
    }
    for (Column& c : result.columns) {
        const std::size_t length = jet4 ? d.u16(at) : d.u8(at);
        at += jet4 ? 2 : 1;
        c.name = file.name(d.part(at, length));
        at += length;
    }
    // The definitions of indexes, where there are any, stand before the list and are not read.
    if (indexCount == 0 && logicalIndexCount == 0) result.columnMaps = columnMaps(d, at);
    std::stable_sort(result.columns.begin(), result.columns.end(), [](const Column& a, const Column& b) { return a.number < b.number; });
    for (std::size_t i = 1; i < result.columns.size(); ++i)
        if (result.columns[i].number == result.columns[i - 1].number) throw Damaged("zwei Spalten haben dieselbe Nummer");
    return result;
}

// The parts of one stored row. Offsets of the variable columns stand behind the data, from the last to the first.
class RowParts {
public:
    RowParts(const JetFile& file, const Definition& definition, Slice row) : row_(row) {
        countBytes_ = file.isJet4() ? 2 : 1;
        columns_ = file.isJet4() ? row.u16(0) : row.u8(0);
        const std::size_t maskBytes = (columns_ + 7) / 8;
        if (maskBytes + countBytes_ > row.size) throw Damaged("eine Zeile ist zu kurz");
        dataEnd_ = row.size - maskBytes;
        mask_ = row.from(dataEnd_);
        if (!definition.hasVariable) return;
        if (file.isJet4()) readOffsetsJet4();
        else readOffsetsJet3();
    }

    bool isSet(const Column& c) const { return c.number < columns_ && (mask_.u8(c.number / 8) >> c.number % 8 & 1) != 0; }
    Slice fixedPart(const Column& c, std::size_t count) const { return row_.part(countBytes_ + c.fixedOffset, count); }
    bool hasVariable(const Column& c) const { return c.variable + 1 < offsets_.size(); }
    Slice variablePart(const Column& c) const {
        const unsigned start = offsets_[c.variable], end = offsets_[c.variable + 1];
        if (start > end || end > dataEnd_) throw Damaged("eine Spalte liegt außerhalb ihrer Zeile");
        return row_.part(start, end - start);
    }

private:
    void readOffsetsJet4() {
        if (dataEnd_ < 4) throw Damaged("eine Zeile ist zu kurz");
        const std::size_t count = row_.u16(dataEnd_ - 2);
        if (dataEnd_ < 2 + 2 * (count + 1)) throw Damaged("eine Zeile ist zu kurz");
        for (std::size_t i = 0; i <= count; ++i) offsets_.push_back(row_.u16(dataEnd_ - 4 - 2 * i));
    }
    // One byte for each offset; a table of jumps says from which column on another 256 is to be added.
    void readOffsetsJet3() {
        if (dataEnd_ < 3) throw Damaged("eine Zeile ist zu kurz");
        const std::size_t count = row_.u8(dataEnd_ - 1);
        std::size_t jumps = (row_.size - 1) / 256, used = 0;
        if (dataEnd_ < 2 + jumps + count) throw Damaged("eine Zeile ist zu kurz");
        const std::size_t last = dataEnd_ - 2 - jumps;
        if ((last - count) / 256 < jumps) --jumps;
        for (std::size_t i = 0; i <= count; ++i) {
            while (used < jumps && i == row_.u8(dataEnd_ - 2 - used)) ++used;
            offsets_.push_back(row_.u8(last - i) + static_cast<unsigned>(used) * 256);
        }
    }

    Slice row_, mask_;
    std::size_t countBytes_ = 0, columns_ = 0, dataEnd_ = 0;
    std::vector<unsigned> offsets_;
};

// A whole number is one, whatever the type of its column; another stays as text, which is refused, with its place, wherever a
// number is needed.
void addReal(double value, Table& out) {
    constexpr double Exact = 9e15;
    if (std::trunc(value) == value && std::abs(value) < Exact) return out.addNumber(static_cast<std::int64_t>(value));
    out.addText(fmt::format("{}", value));
}

// Ten thousandths.
void addCurrency(std::int64_t value, Table& out) {
    if (value % 10'000 == 0) return out.addNumber(value / 10'000);
    out.addText(fmt::format("{}", static_cast<double>(value) / 10'000));
}

// Days since 30.12.1899, with the time of the day behind the point; before that day the two count in opposite directions, and
// such a date stays the number that it is.
void addDate(double value, Table& out) {
    constexpr double Year10000 = 2'958'466, SecondsADay = 86'400;
    if (!(value >= 0 && value < Year10000)) return addReal(value, out);
    auto days = static_cast<int>(value);
    auto seconds = static_cast<int>(std::lround((value - days) * SecondsADay));
    days += seconds / static_cast<int>(SecondsADay);
    seconds %= static_cast<int>(SecondsADay);
    using namespace std::chrono;
    const year_month_day date(sys_days(year(1899) / 12 / 30) + std::chrono::days(days));
    std::string text = fmt::format("{:02}.{:02}.{:04}", static_cast<unsigned>(date.day()), static_cast<unsigned>(date.month()), static_cast<int>(date.year()));
    if (seconds != 0) text += fmt::format(" {:02}:{:02}:{:02}", seconds / 3600, seconds / 60 % 60, seconds % 60);
    out.addText(text);
}

void addFixed(const JetFile& file, const RowParts& parts, const Column& c, Table& out) {
    switch (c.type) {
        case Type::Byte: out.addNumber(parts.fixedPart(c, 1).u8(0)); return;
        case Type::Int: out.addNumber(static_cast<std::int16_t>(parts.fixedPart(c, 2).u16(0))); return;
        case Type::Long: out.addNumber(static_cast<std::int32_t>(parts.fixedPart(c, 4).u32(0))); return;
        case Type::Currency: addCurrency(static_cast<std::int64_t>(parts.fixedPart(c, 8).u64(0)), out); return;
        case Type::Float: addReal(std::bit_cast<float>(parts.fixedPart(c, 4).u32(0)), out); return;
        case Type::Double: addReal(std::bit_cast<double>(parts.fixedPart(c, 8).u64(0)), out); return;
        case Type::DateTime: addDate(std::bit_cast<double>(parts.fixedPart(c, 8).u64(0)), out); return;
        case Type::Text: out.addText(file.text(parts.fixedPart(c, c.size))); return;
        default: out.addNull();
    }
}

void addVariable(const JetFile& file, const RowParts& parts, const Column& c, Table& out) {
    if (!parts.hasVariable(c)) return out.addNull();
    const Slice bytes = parts.variablePart(c);
    if (c.type == Type::Text) return out.addText(file.text(bytes));
    if (c.type != Type::Memo && c.type != Type::Ole) return out.addNull();
    const std::vector<std::uint8_t> value = bytes.size == 0 ? std::vector<std::uint8_t>{} : file.longValue(bytes);
    if (c.type == Type::Ole) return out.addNull();  // followed to its end all the same: a broken chain is damage
    out.addText(file.text({value.data(), value.size()}));
}

void addRow(const JetFile& file, const Definition& definition, Slice row, Table& out) {
    file.spend(definition.columns.size());
    const RowParts parts(file, definition, row);
    for (const Column& c : definition.columns) {
        if (c.type == Type::Boolean) out.addNumber(parts.isSet(c) ? 1 : 0);
        else if (!parts.isSet(c)) out.addNull();
        else if (c.fixed) addFixed(file, parts, c, out);
        else addVariable(file, parts, c, out);
    }
}

void addPage(const JetFile& file, const Definition& definition, std::uint32_t definitionPage, std::uint32_t number, Table& out) {
    const Slice p = file.page(number);
    if (p.u8(0) == JetFile::IndexPage || p.u8(0) == JetFile::IndexLeafPage) return;
    if (file.page(number, JetFile::DataPage).u32(4) != definitionPage) throw Damaged("eine Datenseite gehört nicht zu ihrer Tabelle");
    const unsigned rows = p.u16(file.rowCountOffset());
    for (unsigned i = 0; i < rows; ++i) {
        const JetFile::Row row = file.row(number, i);
        if (row.hidden) continue;
        if (!row.moved) {
            addRow(file, definition, row.bytes, out);
            continue;
        }
        const std::uint32_t pointer = row.bytes.u32(0);
        const JetFile::Row target = file.row(pointer >> 8, pointer & 0xFF);
        if (target.moved || !target.hidden) throw Damaged("der neue Platz einer Zeile stimmt nicht");
        addRow(file, definition, target.bytes, out);
    }
}

// Maps that nobody needs for reading, but that show damage which reading alone would not meet.
void checkMaps(const JetFile& file, const Definition& definition, const std::vector<std::uint32_t>& pages) {
    const std::vector<std::uint32_t> withRoom = file.usageMap(definition.freePages);
    if (!std::includes(pages.begin(), pages.end(), withRoom.begin(), withRoom.end()))
        throw Damaged("die Seitenbelegung widerspricht sich");
    for (const std::uint32_t map : definition.columnMaps) file.usageMap(map);
}

}  // namespace

std::shared_ptr<const Table> readTable(const JetFile& file, std::uint32_t definitionPage, const std::string& name) {
    const Definition definition = readDefinition(file, definitionPage);
    std::vector<TableColumn> columns;
    for (const Column& c : definition.columns) columns.push_back({c.name, !c.isNumber()});
    auto table = std::make_shared<Table>(name, std::move(columns));
    table->reserveRows(std::min<std::size_t>(definition.rowCount, file.pages() * 64));
    const std::vector<std::uint32_t> pages = file.usageMap(definition.usedPages);
    checkMaps(file, definition, pages);
    for (const std::uint32_t number : pages) addPage(file, definition, definitionPage, number, *table);
    if (table->rows() != definition.rowCount)
        throw Damaged("es sind " + std::to_string(table->rows()) + " statt " + std::to_string(definition.rowCount) + " Zeilen");
    return table;
}

Catalogue::Catalogue(const JetFile& file) : objects_(readTable(file, CatalogPage, "MSysObjects")) {
    const auto& columns = objects_->columns();
    const auto place = [&](std::string_view name) {
        const auto hit = std::find_if(columns.begin(), columns.end(), [&](const TableColumn& c) { return c.name == name; });
        if (hit == columns.end()) throw Damaged("das Verzeichnis der Tabellen ist unvollständig");
        return static_cast<std::size_t>(hit - columns.begin());
    };
    id_ = place("Id");
    name_ = place("Name");
    type_ = place("Type");
}

std::optional<std::uint32_t> Catalogue::find(std::string_view table) const {
    for (std::size_t row = 0; row < objects_->rows(); ++row) {
        const Cell &id = objects_->cell(row, id_), &name = objects_->cell(row, name_), &type = objects_->cell(row, type_);
        if (type.art == Cell::Art::Number && type.number == CatalogTableType && id.art == Cell::Art::Number &&
            name.art == Cell::Art::Text && sameName(name.text(), table))
            return static_cast<std::uint32_t>(id.number) & 0x00FFFFFF;
    }
    return std::nullopt;
}

}  // namespace brenvik::jet
