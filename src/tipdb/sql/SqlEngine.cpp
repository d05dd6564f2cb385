#include "tipdb/sql/SqlEngine.h"

#include <sqlite3.h>

#include <tuple>

#include "registry/Upcase.h"
#include "tipdb/DatabaseErrors.h"
#include "tipdb/sql/SqlError.h"
#include "tipdb/sql/SqlTable.h"
#include "tipdb/sql/Statement.h"
#include "tipdb/sql/TextComparison.h"

namespace brenvik {

namespace {

constexpr const char* Source = "SQL";
constexpr int MaxValueBytes = 64 << 20, StepsBetweenChecks = 1 << 20, MaxChecks = 1000;

std::string_view textOf(sqlite3_value* value) {
    const auto* chars = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {chars == nullptr ? "" : chars, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

int collate(void*, int leftSize, const void* left, int rightSize, const void* right) {
    return compareDatabaseTexts({static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
                                {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
}

void like(sqlite3_context* context, int, sqlite3_value** values) {
    if (sqlite3_value_type(values[0]) == SQLITE_NULL || sqlite3_value_type(values[1]) == SQLITE_NULL) return;
    sqlite3_result_int(context, likeDatabaseText(textOf(values[1]), textOf(values[0])) ? 1 : 0);
}

int onlyReading(void*, int action, const char*, const char*, const char*, const char*) {
    return action == SQLITE_SELECT || action == SQLITE_READ || action == SQLITE_FUNCTION ? SQLITE_OK : SQLITE_DENY;
}

// Ends a statement that would run practically for ever.
class StepLimit {
public:
    explicit StepLimit(sqlite3* db) : db_(db) { sqlite3_progress_handler(db, StepsBetweenChecks, check, &checks_); }
    ~StepLimit() { sqlite3_progress_handler(db_, 0, nullptr, nullptr); }
    StepLimit(const StepLimit&) = delete;
    StepLimit& operator=(const StepLimit&) = delete;

private:
    static int check(void* counter) { return ++*static_cast<int*>(counter) > MaxChecks ? 1 : 0; }
    sqlite3* db_;
    int checks_ = 0;
};

struct StatementCloser {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StatementPtr = std::unique_ptr<sqlite3_stmt, StatementCloser>;

std::vector<TableColumn> resultColumns(sqlite3_stmt* statement) {
    std::vector<TableColumn> columns;
    for (int i = 0; i < sqlite3_column_count(statement); ++i) {
        const char* type = sqlite3_column_decltype(statement, i);
        columns.push_back({sqlite3_column_name(statement, i), type == nullptr || std::string_view(type) != "INTEGER"});
    }
    return columns;
}

void addResultRow(sqlite3_stmt* statement, Table& out) {
    for (int i = 0; i < sqlite3_column_count(statement); ++i) {
        const int type = sqlite3_column_type(statement, i);
        if (type == SQLITE_NULL) out.addNull();
        else if (type == SQLITE_INTEGER) out.addNumber(sqlite3_column_int64(statement, i));
        else out.addText({reinterpret_cast<const char*>(sqlite3_column_text(statement, i)), static_cast<std::size_t>(sqlite3_column_bytes(statement, i))});
    }
}

}  // namespace

SqlEngine::SqlEngine(Records data) : data_(std::move(data)) {
    if (sqlite3_open_v2(":memory:", &db_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY | SQLITE_OPEN_NOMUTEX, nullptr) != SQLITE_OK) {
        sqlite3_close(db_);
        throw DatabaseErrors(dberr::Unspecified, "Die Datenbank im Speicher kann nicht angelegt werden.", Source);
    }
    sqlite3_limit(db_, SQLITE_LIMIT_LENGTH, MaxValueBytes);
    sqlite3_create_collation(db_, TextCollation, SQLITE_UTF8, nullptr, collate);
    sqlite3_create_function(db_, "like", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, like, nullptr, nullptr);
    for (const auto& table : data_.tables)
        if (registerTable(db_, *table) != SQLITE_OK) {
            sqlite3_close(db_);
            throw DatabaseErrors(dberr::Unspecified, "Die Tabelle \"" + table->name() + "\" ist nicht brauchbar: Ihre Spalten haben keine eindeutigen Namen.", Source);
        }
    sqlite3_set_authorizer(db_, onlyReading, nullptr);
}

SqlEngine::~SqlEngine() { sqlite3_close(db_); }

std::shared_ptr<const Table> SqlEngine::query(const std::string& sql) {
    if (const auto name = wholeTableOf(sql))
        for (const auto& table : data_.tables)
            if (sameName(table->name(), *name)) return table;
    return run(sql);
}

std::shared_ptr<const Table> SqlEngine::run(const std::string& sql) {
    const std::string plain = quoteIndexWord(sql);
    const std::string ordered = plain + " order by rowid";
    const auto prepare = [&](const std::string& text) {
        sqlite3_stmt* raw = nullptr;
        const char* rest = nullptr;
        const int rc = sqlite3_prepare_v2(db_, text.c_str(), static_cast<int>(text.size()), &raw, &rest);
        return std::make_tuple(rc, StatementPtr(raw), std::string_view(rest == nullptr ? "" : rest));
    };
    auto [rc, statement, rest] = prepare(wantsTableOrder(sql) ? ordered : plain);
    if (rc != SQLITE_OK) std::tie(rc, statement, rest) = prepare(plain);
    if (rc != SQLITE_OK) throw statementError(db_);
    if (statement == nullptr || rest.find_first_not_of(" \t\r\n;") != std::string_view::npos)
        throw DatabaseErrors(dberr::BadStatement, "Die Abfrage muß aus genau einer Anweisung bestehen.", Source);

    const StepLimit limit(db_);
    auto result = std::make_shared<Table>(firstTableOf(sql), resultColumns(statement.get()));
    int step = SQLITE_OK;
    while ((step = sqlite3_step(statement.get())) == SQLITE_ROW) addResultRow(statement.get(), *result);
    if (step != SQLITE_DONE) throw statementError(db_);
    return result;
}

}  // namespace brenvik
