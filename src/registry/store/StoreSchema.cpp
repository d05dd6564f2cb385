#include "registry/store/StoreSchema.h"

#include <sqlite3.h>

#include <algorithm>
#include <iterator>

#include "registry/store/StoreFile.h"

namespace brenvik {

namespace {

constexpr std::int64_t ApplicationId = 0x42564B52;   // "BVKR"
constexpr std::int64_t FormatVersion = 1;

struct Table {
    const char* name;
    const char* sql;
};

// Folded names are upper-cased UTF-16 with the high byte first, so that bytes compare as units do. Key numbers are
// never used twice, so that a remembered number can never mean another key.
constexpr Table tables[] = {
    {"descriptor", "CREATE TABLE descriptor(id INTEGER PRIMARY KEY, bytes BLOB NOT NULL UNIQUE)"},
    {"key", R"(CREATE TABLE key(
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  parent INTEGER NOT NULL,
  folded BLOB NOT NULL,
  name TEXT NOT NULL,
  class BLOB,
  written INTEGER NOT NULL DEFAULT 0,
  descriptor INTEGER REFERENCES descriptor(id),
  readonly INTEGER NOT NULL DEFAULT 0, flags INTEGER NOT NULL DEFAULT 0, userflags INTEGER NOT NULL DEFAULT 0,
  UNIQUE(parent, folded)))"},
    {"value", R"(CREATE TABLE value(
  id INTEGER PRIMARY KEY,
  key INTEGER NOT NULL,
  folded BLOB NOT NULL,
  name TEXT NOT NULL,
  type INTEGER NOT NULL,
  bytes BLOB NOT NULL,
  UNIQUE(key, folded)))"},
};

// As it was before keys had flags; the engine makes the present text of it.
constexpr Table earlierTables[] = {
    {"key", R"(CREATE TABLE key(
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  parent INTEGER NOT NULL,
  folded BLOB NOT NULL,
  name TEXT NOT NULL,
  class BLOB,
  written INTEGER NOT NULL DEFAULT 0,
  descriptor INTEGER REFERENCES descriptor(id),
  readonly INTEGER NOT NULL DEFAULT 0,
  UNIQUE(parent, folded)))"},
};

// The engine's own; statistics come from maintenance by hand and only guide it.
constexpr Table engineTables[] = {
    {"sqlite_sequence", "CREATE TABLE sqlite_sequence(name,seq)"},
    {"sqlite_stat1", "CREATE TABLE sqlite_stat1(tbl,idx,stat)"},
    {"sqlite_stat4", "CREATE TABLE sqlite_stat4(tbl,idx,neq,nlt,ndlt,sample)"},
};

template <std::size_t Count>
bool isOneOf(const Table (&known)[Count], std::string_view name, std::string_view sql) {
    return std::any_of(std::begin(known), std::end(known), [&](const Table& table) { return name == table.name && sql == table.sql; });
}

[[noreturn]] void refuse(const std::filesystem::path& file, const std::string& what) {
    const std::u8string name = file.u8string();
    throw StoreOpenError(file, "Die Registrydatei \"" + std::string(name.begin(), name.end()) + "\" " + what);
}

}  // namespace

void createSchema(sqlite::Database& database) {
    database.execute(("PRAGMA application_id = " + std::to_string(ApplicationId)).c_str());
    database.execute(("PRAGMA user_version = " + std::to_string(FormatVersion)).c_str());
    for (const Table& table : tables) database.execute(table.sql);
    database.execute("INSERT INTO key(id, parent, folded, name) VALUES (1, 0, x'01', 'HKEY_LOCAL_MACHINE'), (2, 0, x'02', 'HKEY_USERS')");
}

void checkSchema(sqlite::Database& database, const std::filesystem::path& file) {
    if (database.number("PRAGMA application_id") != ApplicationId) throw sqlite::Error(SQLITE_NOTADB, "application_id");
    if (database.number("PRAGMA user_version") > FormatVersion) refuse(file, "stammt von einer neueren Version des Programms. Benutzen Sie die neuere Version.");
    std::size_t own = 0;
    {
        sqlite::Statement statement(database.handle(), "SELECT type, name, sql FROM sqlite_master");
        auto row = statement.run();
        while (row.step()) {
            const std::string type = row.text(0), name = row.text(1), sql = row.text(2);
            const bool isOwn = type == "table" && (isOneOf(tables, name, sql) || isOneOf(earlierTables, name, sql));
            const bool isEngines = (type == "table" && isOneOf(engineTables, name, sql)) || (type == "index" && row.isNull(2));
            if (!isOwn && !isEngines) refuse(file, "enthält etwas, das nicht von diesem Programm stammt, und wird nicht benutzt (" + type + " \"" + name.substr(0, 60) + "\"). Spielen Sie eine Sicherung der Datei zurück, oder benennen Sie die Datei um, dann legt das Programm eine neue an.");
            own += isOwn ? 1 : 0;
        }
    }
    // A row with the number that stands above the roots would close a circle.
    const bool whole = own == std::size(tables) && database.number("SELECT count(*) FROM key WHERE id IN (1, 2) AND parent = 0") == 2 &&
                       database.number("SELECT count(*) FROM key WHERE id <= 0") == 0;
    if (!whole) throw sqlite::Error(SQLITE_CORRUPT, "schema");
}

void completeSchema(sqlite::Database& database) {
    const auto complete = [&] { return database.number("SELECT count(*) FROM pragma_table_info('key') WHERE name IN ('flags', 'userflags')") == 2; };
    if (complete()) return;
    if (sqlite3_db_readonly(database.handle(), "main") != 0) return database.execute("CREATE TEMP VIEW key AS SELECT *, 0 AS flags, 0 AS userflags FROM main.key");
    database.execute("BEGIN IMMEDIATE");
    if (!complete()) {   // another process was quicker
        database.execute("ALTER TABLE key ADD COLUMN flags INTEGER NOT NULL DEFAULT 0");
        database.execute("ALTER TABLE key ADD COLUMN userflags INTEGER NOT NULL DEFAULT 0");
    }
    database.execute("COMMIT");
}

}  // namespace brenvik
