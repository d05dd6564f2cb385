#include "tipdb/sql/SqlTable.h"

#include <sqlite3.h>

#include <new>
#include <string>
#include <tuple>

namespace brenvik {

namespace {

struct VirtualTable : sqlite3_vtab {
    const Table* table = nullptr;
};

struct Cursor : sqlite3_vtab_cursor {
    const Table* table = nullptr;
    int column = -1;                 // the index in use, -1: all rows
    std::size_t position = 0, end = 0;
    std::size_t row() const { return column < 0 ? position : table->indexRow(static_cast<std::size_t>(column), position); }
};

std::string quoted(const std::string& name) {
    std::string result = "\"";
    for (const char c : name) result += c == '"' ? std::string("\"\"") : std::string(1, c);
    return result + '"';
}

int connect(sqlite3* db, void* aux, int, const char* const*, sqlite3_vtab** out, char** error) {
    const auto* table = static_cast<const Table*>(aux);
    std::string declaration = "CREATE TABLE t(";
    for (const TableColumn& c : table->columns()) {
        if (declaration.back() != '(') declaration += ',';
        declaration += quoted(c.name) + (c.text ? std::string(" TEXT COLLATE ") + TextCollation : std::string(" INTEGER"));
    }
    const int rc = sqlite3_declare_vtab(db, (declaration + ")").c_str());
    if (rc != SQLITE_OK) {
        *error = sqlite3_mprintf("%s", sqlite3_errmsg(db));
        return rc;
    }
    auto* result = new (std::nothrow) VirtualTable;
    if (result == nullptr) return SQLITE_NOMEM;
    result->table = table;
    *out = result;
    return SQLITE_OK;
}

int disconnect(sqlite3_vtab* base) {
    delete static_cast<VirtualTable*>(base);
    return SQLITE_OK;
}

int bestIndex(sqlite3_vtab* base, sqlite3_index_info* info) {
    const Table& table = *static_cast<VirtualTable*>(base)->table;
    const bool byRow = info->nOrderBy == 1 && info->aOrderBy[0].iColumn < 0 && info->aOrderBy[0].desc == 0;
    info->orderByConsumed = byRow ? 1 : 0;  // both ways to read deliver ascending rows
    info->idxNum = -1;
    info->estimatedCost = static_cast<double>(table.rows()) + 1;
    info->estimatedRows = static_cast<sqlite3_int64>(table.rows());
    for (int i = 0; i < info->nConstraint; ++i) {
        const auto& c = info->aConstraint[i];
        if (!c.usable || c.op != SQLITE_INDEX_CONSTRAINT_EQ || c.iColumn < 0 || table.columns()[static_cast<std::size_t>(c.iColumn)].text) continue;
        info->idxNum = c.iColumn;
        info->aConstraintUsage[i].argvIndex = 1;  // the engine checks each row again
        info->estimatedCost = 10;
        info->estimatedRows = 5;
        return SQLITE_OK;
    }
    return SQLITE_OK;
}

int openCursor(sqlite3_vtab* base, sqlite3_vtab_cursor** out) {
    auto* cursor = new (std::nothrow) Cursor;
    if (cursor == nullptr) return SQLITE_NOMEM;
    cursor->table = static_cast<VirtualTable*>(base)->table;
    *out = cursor;
    return SQLITE_OK;
}

int closeCursor(sqlite3_vtab_cursor* base) {
    delete static_cast<Cursor*>(base);
    return SQLITE_OK;
}

int filter(sqlite3_vtab_cursor* base, int column, const char*, int, sqlite3_value** values) {
    auto& cursor = *static_cast<Cursor*>(base);
    cursor.column = -1;
    cursor.position = 0;
    cursor.end = cursor.table->rows();
    if (column < 0 || sqlite3_value_type(values[0]) != SQLITE_INTEGER) return SQLITE_OK;
    cursor.column = column;
    std::tie(cursor.position, cursor.end) = cursor.table->rowsWithNumber(static_cast<std::size_t>(column), sqlite3_value_int64(values[0]));
    return SQLITE_OK;
}

int next(sqlite3_vtab_cursor* base) {
    ++static_cast<Cursor*>(base)->position;
    return SQLITE_OK;
}

int atEnd(sqlite3_vtab_cursor* base) {
    const auto& cursor = *static_cast<Cursor*>(base);
    return cursor.position >= cursor.end ? 1 : 0;
}

int columnValue(sqlite3_vtab_cursor* base, sqlite3_context* context, int column) {
    const auto& cursor = *static_cast<Cursor*>(base);
    const Cell& cell = cursor.table->cell(cursor.row(), static_cast<std::size_t>(column));
    switch (cell.art) {
        case Cell::Art::Null: sqlite3_result_null(context); break;
        case Cell::Art::Number: sqlite3_result_int64(context, cell.number); break;
        case Cell::Art::Text: sqlite3_result_text(context, cell.chars, static_cast<int>(cell.length), SQLITE_STATIC); break;
    }
    return SQLITE_OK;
}

int rowNumber(sqlite3_vtab_cursor* base, sqlite3_int64* out) {
    *out = static_cast<sqlite3_int64>(static_cast<Cursor*>(base)->row()) + 1;
    return SQLITE_OK;
}

sqlite3_module makeModule() {
    sqlite3_module module{};
    module.xConnect = connect;  // no xCreate: the table is there without being created
    module.xBestIndex = bestIndex;
    module.xDisconnect = disconnect;
    module.xOpen = openCursor;
    module.xClose = closeCursor;
    module.xFilter = filter;
    module.xNext = next;
    module.xEof = atEnd;
    module.xColumn = columnValue;
    module.xRowid = rowNumber;
    return module;
}

}  // namespace

int registerTable(sqlite3* db, const Table& table) {
    static const sqlite3_module Module = makeModule();
    const int rc = sqlite3_create_module(db, table.name().c_str(), &Module, const_cast<Table*>(&table));
    // The first use declares the columns, which a connection that is limited to reading would refuse.
    return rc != SQLITE_OK ? rc : sqlite3_exec(db, ("SELECT 1 FROM " + quoted(table.name()) + " LIMIT 0").c_str(), nullptr, nullptr, nullptr);
}

}  // namespace brenvik
