#include "registry/store/Sqlite.h"

#include <sqlite3.h>

#include <cerrno>

namespace brenvik::sqlite {

namespace {

void check(int code, sqlite3* database) {
    if (code == SQLITE_OK) return;
    if (database == nullptr) throw Error(code, sqlite3_errstr(code));
    const int primary = code & 0xFF, last = errno;
    const bool asked = primary == SQLITE_IOERR || primary == SQLITE_CANTOPEN || primary == SQLITE_FULL || primary == SQLITE_READONLY;
    const int system = sqlite3_system_errno(database);   // not kept for all that a commit does
    throw Error(code, sqlite3_errmsg(database), !asked ? 0 : system != 0 ? system : last);
}

}  // namespace

Statement::Statement(sqlite3* database, const char* sql) {
    check(sqlite3_prepare_v3(database, sql, -1, SQLITE_PREPARE_PERSISTENT, &handle_, nullptr), database);
}

Statement::~Statement() { sqlite3_finalize(handle_); }

Statement::Use::~Use() {
    sqlite3_reset(s_);
    sqlite3_clear_bindings(s_);
}

Statement::Use& Statement::Use::bind(int index, std::int64_t number) {
    check(sqlite3_bind_int64(s_, index, number), sqlite3_db_handle(s_));
    return *this;
}

Statement::Use& Statement::Use::bind(int index, std::string_view text) {
    // A null pointer would bind NULL instead of the empty text.
    check(sqlite3_bind_text(s_, index, text.empty() ? "" : text.data(), static_cast<int>(text.size()), SQLITE_STATIC), sqlite3_db_handle(s_));
    return *this;
}

Statement::Use& Statement::Use::bindBytes(int index, const void* bytes, std::size_t size) {
    check(sqlite3_bind_blob64(s_, index, size == 0 ? "" : bytes, size, SQLITE_STATIC), sqlite3_db_handle(s_));
    return *this;
}

Statement::Use& Statement::Use::bindNull(int index) {
    check(sqlite3_bind_null(s_, index), sqlite3_db_handle(s_));
    return *this;
}

bool Statement::Use::step() {
    const int code = sqlite3_step(s_);
    if (code == SQLITE_ROW) return true;
    if (code != SQLITE_DONE) check(code, sqlite3_db_handle(s_));
    return false;
}

std::int64_t Statement::Use::number(int column) const { return sqlite3_column_int64(s_, column); }

void Statement::Use::text(int column, std::string& into) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(s_, column));
    into.clear();
    if (text != nullptr) into.assign(text, static_cast<std::size_t>(sqlite3_column_bytes(s_, column)));
}

void Statement::Use::bytes(int column, Bytes& into) const {
    const auto* bytes = static_cast<const std::uint8_t*>(sqlite3_column_blob(s_, column));
    into.clear();
    if (bytes != nullptr) into.assign(bytes, bytes + sqlite3_column_bytes(s_, column));
}

void Statement::Use::blob(int column, std::string& into) const {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(s_, column));
    into.clear();
    if (bytes != nullptr) into.assign(bytes, static_cast<std::size_t>(sqlite3_column_bytes(s_, column)));
}

std::string Statement::Use::text(int column) const {
    std::string copy;
    text(column, copy);
    return copy;
}

Bytes Statement::Use::bytes(int column) const {
    Bytes copy;
    bytes(column, copy);
    return copy;
}

bool Statement::Use::isNull(int column) const { return sqlite3_column_type(s_, column) == SQLITE_NULL; }

Database::Database(const std::string& fileOrUri, int flags) {
    // Counting its memory would take a lock for each piece; nobody asks for the sums.
    [[maybe_unused]] static const int uncounted = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(fileOrUri.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    handle_.reset(opened);   // SQLite gives a handle even if opening fails, and wants it closed
    check(code, opened);
    sqlite3_extended_result_codes(opened, 1);
}

void Database::Close::operator()(sqlite3* database) const { sqlite3_close_v2(database); }

void Database::execute(const char* sql) { check(sqlite3_exec(handle(), sql, nullptr, nullptr, nullptr), handle()); }

std::int64_t Database::number(const char* sql) {
    Statement statement(handle(), sql);
    auto row = statement.run();
    return row.step() ? row.number(0) : 0;
}

std::string Database::text(const char* sql) {
    Statement statement(handle(), sql);
    auto row = statement.run();
    return row.step() ? row.text(0) : std::string();
}

}  // namespace brenvik::sqlite
