#include "registry/StoreFile.h"

#include <sqlite3.h>

#include <random>
#include <string>
#include <system_error>

namespace brenvik {

namespace fs = std::filesystem;

namespace {

constexpr std::int64_t ApplicationId = 0x42564B52;   // "BVKR"
constexpr std::int64_t FormatVersion = 1;

// Folded names are upper-cased UTF-16 with the high byte first, so that bytes compare as units do. Key numbers are
// never used twice, so that a remembered number can never mean another key.
constexpr const char* SchemaSql = R"(
PRAGMA application_id = 0x42564B52;
PRAGMA user_version = 1;
CREATE TABLE descriptor(id INTEGER PRIMARY KEY, bytes BLOB NOT NULL UNIQUE);
CREATE TABLE key(
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  parent INTEGER NOT NULL,
  folded BLOB NOT NULL,
  name TEXT NOT NULL,
  class BLOB,
  written INTEGER NOT NULL DEFAULT 0,
  descriptor INTEGER REFERENCES descriptor(id),
  readonly INTEGER NOT NULL DEFAULT 0,
  UNIQUE(parent, folded));
CREATE TABLE value(
  id INTEGER PRIMARY KEY,
  key INTEGER NOT NULL,
  folded BLOB NOT NULL,
  name TEXT NOT NULL,
  type INTEGER NOT NULL,
  bytes BLOB NOT NULL,
  UNIQUE(key, folded));
INSERT INTO key(id, parent, folded, name) VALUES (1, 0, x'01', 'HKEY_LOCAL_MACHINE'), (2, 0, x'02', 'HKEY_USERS');
)";

std::string shown(const fs::path& file) {
    const std::u8string text = file.u8string();
    return "\"" + std::string(text.begin(), text.end()) + "\"";
}

std::string sqliteName(const fs::path& file) {
    const std::u8string text = file.u8string();
    return {text.begin(), text.end()};
}

std::string causeOf(const sqlite::Error& error, const fs::path& file) {
    const std::string name = "Die Registrydatei " + shown(file);
    switch (error.code) {
        case SQLITE_NOTADB: return name + " ist keine Registry dieses Programms. Benennen Sie die Datei um oder verschieben Sie sie, dann legt das Programm eine neue an.";
        case SQLITE_CORRUPT: return name + " ist beschädigt. Spielen Sie eine Sicherung der Datei zurück, oder benennen Sie die Datei um, dann legt das Programm eine neue an.";
        case SQLITE_BUSY:
        case SQLITE_LOCKED: return name + " wird von einem anderen Programm gesperrt. Beenden Sie das andere Programm und versuchen Sie es noch einmal.";
        case SQLITE_PERM:
        case SQLITE_AUTH:
        case SQLITE_CANTOPEN: return name + " kann nicht geöffnet werden. Prüfen Sie, ob Sie die Datei und ihren Ordner lesen und schreiben dürfen.";
        case SQLITE_READONLY: return name + " kann nicht geschrieben werden. Prüfen Sie die Rechte der Datei und ihres Ordners.";
        case SQLITE_FULL: return name + " kann nicht geschrieben werden, weil der Datenträger voll ist. Schaffen Sie Platz und versuchen Sie es noch einmal.";
        case SQLITE_IOERR: return name + " kann nicht gelesen oder geschrieben werden. Prüfen Sie den Datenträger (" + error.what() + ").";
        default: return name + " kann nicht benutzt werden (" + error.what() + ").";
    }
}

// A name beside the file that nobody else uses.
fs::path freshName(const fs::path& file) {
    std::random_device random;
    fs::path fresh = file;
    fresh += ".neu" + std::to_string(random());
    return fresh;
}

// The new store is made whole under another name and then linked to its own, so that an interrupted start leaves no
// half a store, and a second process that was quicker keeps its file.
void createStoreFile(const fs::path& file) {
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    const fs::path fresh = freshName(file);
    {
        sqlite::Database database(sqliteName(fresh), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        database.execute("BEGIN");
        database.execute(SchemaSql);
        database.execute("COMMIT");
        database.execute("PRAGMA journal_mode = WAL");
    }
    fs::create_hard_link(fresh, file, error);
    if (error && !fs::exists(fs::symlink_status(file))) {   // a file system without hard links
        fs::rename(fresh, file, error);
        if (error) throw sqlite::Error(SQLITE_CANTOPEN, error.message());
    }
    fs::remove(fresh, error);
}

void checkFormat(sqlite::Database& database, const fs::path& file) {
    if (database.number("PRAGMA application_id") != ApplicationId) throw sqlite::Error(SQLITE_NOTADB, "application_id");
    if (database.number("PRAGMA user_version") > FormatVersion) {
        throw StoreOpenError(file, "Die Registrydatei " + shown(file) + " stammt von einer neueren Version des Programms. Benutzen Sie die neuere Version.");
    }
    const auto tables = database.number("SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name IN ('key', 'value', 'descriptor')");
    const auto roots = tables == 3 ? database.number("SELECT count(*) FROM key WHERE id IN (1, 2) AND parent = 0") : 0;
    if (roots != 2) throw sqlite::Error(SQLITE_CORRUPT, "schema");
}

void prepareConnection(sqlite::Database& database, const StoreOptions& options) {
    sqlite3_busy_timeout(database.handle(), options.busyTimeoutMs);
    database.execute("PRAGMA synchronous = NORMAL");
    database.execute("PRAGMA cache_size = -65536");
    database.execute("PRAGMA wal_autocheckpoint = 16000");   // pages, 64 MB; each checkpoint waits for the disk, and closing makes one
    database.execute("PRAGMA trusted_schema = OFF");
    database.execute("PRAGMA cell_size_check = ON");
}

OpenedStore openChecked(const fs::path& file, const StoreOptions& options) {
    // A store is used by one thread only, which saves a lock for every call.
    const int flags = (options.readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE) | SQLITE_OPEN_NOMUTEX;
    OpenedStore opened{std::make_unique<sqlite::Database>(sqliteName(file), flags), false};
    prepareConnection(*opened.database, options);
    checkFormat(*opened.database, file);
    opened.writable = sqlite3_db_readonly(opened.database->handle(), "main") == 0;
    if (opened.writable) opened.database->execute("PRAGMA journal_mode = WAL");
    return opened;
}

void checkFileKind(const fs::path& file) {
    std::error_code error;
    if (fs::is_directory(file, error)) {
        throw StoreOpenError(file, "Statt der Registrydatei " + shown(file) + " ist ein Ordner dieses Namens da. Benennen Sie den Ordner um, dann legt das Programm eine neue Registry an.");
    }
    // SQLite takes an empty file for a new database and would throw away a journal beside it.
    if (fs::is_regular_file(file, error) && fs::file_size(file, error) == 0) {
        throw StoreOpenError(file, "Die Registrydatei " + shown(file) + " ist leer. Spielen Sie eine Sicherung der Datei zurück, oder benennen Sie die Datei um, dann legt das Programm eine neue an.");
    }
}

}  // namespace

OpenedStore openStoreFile(const fs::path& file, const StoreOptions& options) {
    try {
        if (options.create && !options.readOnly && !fs::exists(fs::symlink_status(file))) createStoreFile(file);
        checkFileKind(file);
        return openChecked(file, options);
    } catch (const sqlite::Error& error) {
        throw StoreOpenError(file, causeOf(error, file));
    } catch (const fs::filesystem_error& error) {
        throw StoreOpenError(file, "Die Registrydatei " + shown(file) + " kann nicht geöffnet werden (" + error.code().message() + "). Prüfen Sie, ob Sie die Datei und ihren Ordner lesen und schreiben dürfen.");
    }
}

RegError storeError(const sqlite::Error& error, const fs::path& file, std::int32_t number) { return RegError(number, causeOf(error, file)); }

}  // namespace brenvik
