// Reading of foreign SQLite files. The file is taken as bytes, so that nothing beside it is touched, and only ever asked for
// rows of real tables; step and size limits hold whatever its schema says.
#include <sqlite3.h>

#include <cmath>
#include <cstring>

#include "frame/text/Codepage.h"
#include "tipdb/DatabaseErrors.h"
#include "tipdb/DatabaseSource.h"
#include "tipdb/sql/SqlError.h"

namespace brenvik {

namespace {

constexpr const char* Source = "SQLite";
constexpr int MaxValueBytes = 64 << 20, MaxColumns = 255, StepsBetweenChecks = 1 << 20, MaxChecks = 400;
constexpr std::size_t WriteFormatAt = 18, ReadFormatAt = 19, HeaderBytes = 100;
constexpr char RollbackJournal = 1;

class SourceDatabase {
public:
    explicit SourceDatabase(std::string bytes) : bytes_(std::move(bytes)) {
        if (bytes_.size() < HeaderBytes) damaged("die Datei ist zu kurz");
        bytes_[WriteFormatAt] = bytes_[ReadFormatAt] = RollbackJournal;  // a journal beside the file is not looked for
        const int opened = sqlite3_open_v2(":memory:", &db_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY | SQLITE_OPEN_NOMUTEX, nullptr);
        closer_.reset(db_);
        if (opened != SQLITE_OK) fail();
        sqlite3_db_config(db_, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
        sqlite3_db_config(db_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
        sqlite3_limit(db_, SQLITE_LIMIT_LENGTH, MaxValueBytes);
        sqlite3_limit(db_, SQLITE_LIMIT_COLUMN, MaxColumns);
        sqlite3_progress_handler(db_, StepsBetweenChecks, [](void* self) { return ++static_cast<SourceDatabase*>(self)->checks_ > MaxChecks ? 1 : 0; }, this);
        const auto size = static_cast<sqlite3_int64>(bytes_.size());
        if (sqlite3_deserialize(db_, "main", reinterpret_cast<unsigned char*>(bytes_.data()), size, size, SQLITE_DESERIALIZE_READONLY) != SQLITE_OK) fail();
        execute("PRAGMA cell_size_check=ON");
        execute("PRAGMA mmap_size=0");
    }
    SourceDatabase(const SourceDatabase&) = delete;
    SourceDatabase& operator=(const SourceDatabase&) = delete;

    [[noreturn]] void fail() const { damaged(fileReason(sqlite3_errcode(db_))); }
    [[noreturn]] static void damaged(const std::string& why) {
        throw DatabaseErrors(dberr::Unspecified, "Die Datenbankdatei ist beschädigt: " + why + ".", Source);
    }

    // Calls take(statement) for each row.
    template <class Take> void rows(const std::string& sql, const std::string& argument, Take take) {
        sqlite3_stmt* raw = nullptr;
        if (sqlite3_prepare_v2(db_, sql.c_str(), -1, &raw, nullptr) != SQLITE_OK) fail();
        const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(raw, sqlite3_finalize);
        if (!argument.empty()) sqlite3_bind_text(raw, 1, argument.c_str(), -1, SQLITE_TRANSIENT);
        int rc = SQLITE_OK;
        while ((rc = sqlite3_step(raw)) == SQLITE_ROW) take(raw);
        if (rc != SQLITE_DONE) fail();
    }

private:
    void execute(const char* sql) {
        if (sqlite3_exec(db_, sql, nullptr, nullptr, nullptr) != SQLITE_OK) fail();
    }

    std::string bytes_;
    sqlite3* db_ = nullptr;
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> closer_{nullptr, sqlite3_close};
    int checks_ = 0;
};

std::string quoted(const std::string& name) {
    std::string result = "\"";
    for (const char c : name) result += c == '"' ? std::string("\"\"") : std::string(1, c);
    return result + '"';
}

std::string_view textAt(sqlite3_stmt* row, int column) {
    const auto* chars = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
    return {chars == nullptr ? "" : chars, static_cast<std::size_t>(sqlite3_column_bytes(row, column))};
}

bool isNumberType(std::string type) {
    for (char& c : type) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c);
    return type.find("INT") != std::string::npos || type.find("BOOL") != std::string::npos || type == "LONG" || type == "BYTE";
}

// Most texts are; a look at eight bytes at once is much cheaper than walking their characters.
bool isAscii(std::string_view text) {
    std::uint64_t seen = 0, word = 0;
    std::size_t i = 0;
    for (; i + sizeof word <= text.size(); i += sizeof word) {
        std::memcpy(&word, text.data() + i, sizeof word);
        seen |= word;
    }
    for (; i < text.size(); ++i) seen |= static_cast<std::uint8_t>(text[i]);
    return (seen & 0x8080808080808080U) == 0;
}

// Bytes that are no UTF-8 must not get inside.
void addText(Table& out, std::string_view text) {
    if (isAscii(text) || isUtf8(text)) out.addText(text);
    else out.addText(utf8FromUtf16(utf16FromUtf8(text)));
}

std::string_view textOf(sqlite3_value* value) {
    const auto* chars = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {chars == nullptr ? "" : chars, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

// The value is asked for once, which is much cheaper than a call by column number for each of its facts; that takes a
// connection that no other thread uses, and this one is our own.
void addCell(Table& out, sqlite3_stmt* row, int column) {
    sqlite3_value* cell = sqlite3_column_value(row, column);
    switch (sqlite3_value_type(cell)) {
        case SQLITE_NULL: out.addNull(); return;
        case SQLITE_INTEGER: out.addNumber(sqlite3_value_int64(cell)); return;
        case SQLITE_FLOAT: {
            const double value = sqlite3_value_double(cell);
            if (std::trunc(value) == value && std::abs(value) < 9e15) return out.addNumber(static_cast<std::int64_t>(value));
            return addText(out, textOf(cell));
        }
        case SQLITE_TEXT: addText(out, textOf(cell)); return;
        default: throw DatabaseErrors(dberr::Unspecified, "Die Tabelle \"" + out.name() + "\" enthält Binärdaten.", Source);
    }
}

std::shared_ptr<const Table> readTable(SourceDatabase& db, const std::string& storedName, const std::string& name) {
    std::vector<TableColumn> columns;
    bool withRowid = true;
    db.rows("SELECT name, type FROM pragma_table_info(?1)", storedName, [&](sqlite3_stmt* row) {
        columns.push_back({std::string(textAt(row, 0)), !isNumberType(std::string(textAt(row, 1)))});
    });
    db.rows("SELECT wr FROM pragma_table_list WHERE schema='main' AND name=?1", storedName, [&](sqlite3_stmt* row) { withRowid = sqlite3_column_int(row, 0) == 0; });
    if (columns.empty()) db.damaged("die Spalten der Tabelle \"" + name + "\" stehen nicht fest");
    auto table = std::make_shared<Table>(name, columns);
    db.rows("SELECT count(*) FROM " + quoted(storedName), "", [&](sqlite3_stmt* row) { table->reserveRows(static_cast<std::size_t>(sqlite3_column_int64(row, 0))); });
    const int count = static_cast<int>(columns.size());
    db.rows("SELECT * FROM " + quoted(storedName) + (withRowid ? " ORDER BY rowid" : ""), "", [&](sqlite3_stmt* row) {
        if (sqlite3_column_count(row) != count) db.damaged("die Zeilen der Tabelle \"" + name + "\" haben andere Spalten als sie selbst");
        for (int i = 0; i < count; ++i) addCell(*table, row, i);
    });
    return table;
}

}  // namespace

Records readSqliteDatabase(std::string bytes, const std::vector<std::string>& tables) {
    SourceDatabase db(std::move(bytes));
    Records data;
    for (const std::string& name : tables) {
        std::string storedName;
        db.rows("SELECT name FROM sqlite_schema WHERE type='table' AND rootpage>0 AND name=?1 COLLATE NOCASE", name,
                [&](sqlite3_stmt* row) { storedName = textAt(row, 0); });
        if (!storedName.empty()) data.tables.push_back(readTable(db, storedName, name));
    }
    return data;
}

}  // namespace brenvik
