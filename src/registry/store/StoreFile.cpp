#include "registry/store/StoreFile.h"

#include <sqlite3.h>

#include <string>
#include <system_error>

#include "frame/files/FreshFile.h"
#include "registry/store/StorePicture.h"
#include "registry/store/StoreSchema.h"

namespace brenvik {

namespace fs = std::filesystem;

namespace {

std::string shown(const fs::path& file) {
    const std::u8string text = file.u8string();
    return "\"" + std::string(text.begin(), text.end()) + "\"";
}

std::string sqliteName(const fs::path& file) {
    const std::u8string text = file.u8string();
    return {text.begin(), text.end()};
}

// What stands against writing, as the end of a sentence; empty if the host's answer says nothing that a user could act on.
std::string obstacle(const std::error_code& error) {
    if (error == std::errc::no_space_on_device || error == std::errc::file_too_large) return "weil der Datenträger voll ist. Schaffen Sie Platz und versuchen Sie es noch einmal.";
    if (error == std::errc::read_only_file_system) return "weil der Datenträger schreibgeschützt ist.";
    if (error == std::errc::permission_denied || error == std::errc::operation_not_permitted) return "weil Ihnen das Recht dazu fehlt. Prüfen Sie die Rechte der Datei und ihres Ordners.";
    return {};
}

std::string causeOf(const sqlite::Error& error, const fs::path& file) {
    const std::string name = "Die Registrydatei " + shown(file);
    if (const std::string reason = obstacle({error.system, std::system_category()}); !reason.empty() && error.code == SQLITE_IOERR) return name + " kann nicht geschrieben werden, " + reason;
    switch (error.code) {
        case SQLITE_NOTADB: return name + " ist keine Registry dieses Programms. Benennen Sie die Datei um oder verschieben Sie sie, dann legt das Programm eine neue an.";
        case SQLITE_CORRUPT: return name + " ist beschädigt. Spielen Sie eine Sicherung der Datei zurück, oder benennen Sie die Datei um, dann legt das Programm eine neue an.";
        case SQLITE_BUSY:
        case SQLITE_LOCKED: return name + " wird von einem anderen Programm gesperrt. Beenden Sie das andere Programm und versuchen Sie es noch einmal.";
        case SQLITE_PERM:
        case SQLITE_AUTH:
        case SQLITE_CANTOPEN: return name + " kann nicht geöffnet werden. Prüfen Sie, ob Sie die Datei und ihren Ordner lesen und schreiben dürfen.";
        case SQLITE_READONLY: return name + " kann nicht geschrieben werden. Prüfen Sie die Rechte der Datei und ihres Ordners.";
        case SQLITE_FULL: return name + " kann nicht geschrieben werden, " + obstacle(std::make_error_code(std::errc::no_space_on_device));
        case SQLITE_NOMEM: return name + " ist zu groß für den Speicher.";
        case SQLITE_TOOBIG: return name + " enthält einen Eintrag, der größer ist, als er sein darf.";
        case SQLITE_IOERR: return name + " kann nicht gelesen oder geschrieben werden. Prüfen Sie den Datenträger (Fehler " + std::to_string(error.system) + ").";
        default: return name + " kann nicht benutzt werden (Fehler " + std::to_string(error.extended) + ").";
    }
}

void removeWithLogs(const fs::path& file) {
    for (const char* ending : {"", "-wal", "-shm", "-journal"}) {
        std::error_code ignored;
        fs::path part = file;
        fs::remove(part += ending, ignored);
    }
}

void fillNewFile(const fs::path& file) {
    sqlite::Database database(sqliteName(file), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    database.execute("BEGIN");
    createSchema(database);
    database.execute("COMMIT");
    database.execute("PRAGMA journal_mode = WAL");
}

// The new store is made whole under another name and then linked to its own, so that an interrupted start leaves no
// half a store, and a second process that was quicker keeps its file.
void createStoreFile(const fs::path& file) {
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    const fs::path fresh = freshNameBeside(file);
    try {
        fillNewFile(fresh);
    } catch (const sqlite::Error&) {
        removeWithLogs(fresh);
        throw;
    }
    fs::create_hard_link(fresh, file, error);
    if (error && !fs::exists(fs::symlink_status(file))) {   // a file system without hard links
        fs::rename(fresh, file, error);
        if (error) {
            removeWithLogs(fresh);
            throw sqlite::Error(SQLITE_CANTOPEN, error.message());
        }
    }
    fs::remove(fresh, error);
}

// No entry of ours is larger; what a file of another hand holds must not fill the memory.
constexpr int LargestEntry = 17 * 1024 * 1024, LongestStatement = 100000;

void prepareConnection(sqlite::Database& database, const StoreOptions& options) {
    sqlite3* const handle = database.handle();
    sqlite3_busy_timeout(handle, options.busyTimeoutMs);
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, LargestEntry);
    sqlite3_limit(handle, SQLITE_LIMIT_SQL_LENGTH, LongestStatement);
    for (const int feature : {SQLITE_DBCONFIG_ENABLE_TRIGGER, SQLITE_DBCONFIG_ENABLE_VIEW}) sqlite3_db_config(handle, feature, 0, nullptr);
    database.execute("PRAGMA synchronous = NORMAL");
    database.execute("PRAGMA cache_size = -65536");
    database.execute("PRAGMA wal_autocheckpoint = 16000");   // pages, 64 MB; each checkpoint waits for the disk, and closing makes one
    database.execute("PRAGMA trusted_schema = OFF");
    database.execute("PRAGMA cell_size_check = ON");
}

std::unique_ptr<sqlite::Database> openChecked(const fs::path& file, const StoreOptions& options, bool toWrite) {
    // A store is used by one thread only, which saves a lock for every call.
    const int flags = (toWrite ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY) | SQLITE_OPEN_NOMUTEX;
    auto database = std::make_unique<sqlite::Database>(sqliteName(file), flags);
    prepareConnection(*database, options);
    checkSchema(*database, file);
    if (!toWrite) completeSchema(*database);
    return database;
}

bool meansNoWriting(const sqlite::Error& error) {
    return error.code == SQLITE_CANTOPEN || error.code == SQLITE_READONLY || error.code == SQLITE_PERM || error.code == SQLITE_IOERR || error.code == SQLITE_FULL;
}

std::unique_ptr<sqlite::Database> openForReading(const fs::path& file, const StoreOptions& options) {
    try {
        return openChecked(file, options, false);
    } catch (const sqlite::Error& error) {
        if (!meansNoWriting(error)) throw;
    }
    auto picture = pictureOf(file);
    prepareConnection(*picture, options);
    checkSchema(*picture, file);
    completeSchema(*picture);
    return picture;
}

OpenedStore openToWrite(const fs::path& file, const StoreOptions& options) {
    std::string obstacles;
    try {
        auto database = openChecked(file, options, true);
        if (sqlite3_db_readonly(database->handle(), "main") == 0) {
            database->execute("PRAGMA journal_mode = WAL");
            completeSchema(*database);
            return {std::move(database), {}};
        }
    } catch (const sqlite::Error& error) {
        if (!meansNoWriting(error)) throw;
        obstacles = causeOf(error, file);
    }
    if (const std::string reason = obstacle(whyNotWritable(file)); !reason.empty()) obstacles = "Die Registrydatei " + shown(file) + " kann nicht geschrieben werden, " + reason;
    if (obstacles.empty()) obstacles = "Die Registrydatei " + shown(file) + " kann nur gelesen werden.";
    try {
        return {openForReading(file, options), obstacles};
    } catch (const sqlite::Error& error) {
        if (meansNoWriting(error) && error.system == 0) throw StoreOpenError(file, obstacles);
        throw;
    }
}

OpenedStore openInMemory(const StoreOptions& options) {
    auto database = std::make_unique<sqlite::Database>(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX);
    createSchema(*database);
    prepareConnection(*database, options);
    return {std::move(database), {}};
}

void checkFileKind(const fs::path& file) {
    std::error_code error;
    if (fs::is_directory(file, error)) {
        throw StoreOpenError(file, "Statt der Registrydatei " + shown(file) + " ist ein Ordner dieses Namens da. Benennen Sie den Ordner um, dann legt das Programm eine neue Registry an.");
    }
    const fs::file_type kind = fs::status(file, error).type();
    if (kind != fs::file_type::regular && kind != fs::file_type::not_found && kind != fs::file_type::none) {   // a pipe would be waited for
        throw StoreOpenError(file, "Statt der Registrydatei " + shown(file) + " ist etwas dieses Namens da, das keine Datei ist. Benennen Sie es um, dann legt das Programm eine neue Registry an.");
    }
    // SQLite takes an empty file for a new database and would throw away a journal beside it.
    if (fs::is_regular_file(file, error) && fs::file_size(file, error) == 0) {
        throw StoreOpenError(file, "Die Registrydatei " + shown(file) + " ist leer. Spielen Sie eine Sicherung der Datei zurück, oder benennen Sie die Datei um, dann legt das Programm eine neue an.");
    }
}

}  // namespace

OpenedStore openStoreFile(const fs::path& file, const StoreOptions& options) {
    if (options.inMemory) return openInMemory(options);
    try {
        if (!options.readOnly) sweepLeftBehind(file);
        if (options.create && !options.readOnly && !fs::exists(fs::symlink_status(file))) createStoreFile(file);
        checkFileKind(file);
        if (options.readOnly) return {openForReading(file, options), "Die Registry ist nur zum Lesen geöffnet."};
        return openToWrite(file, options);
    } catch (const sqlite::Error& error) {
        throw StoreOpenError(file, causeOf(error, file));
    } catch (const fs::filesystem_error& error) {
        const std::string reason = obstacle(error.code());
        throw StoreOpenError(file, "Die Registrydatei " + shown(file) + " kann nicht geöffnet werden" +
                                       (reason.empty() ? ". Prüfen Sie, ob Sie die Datei und ihren Ordner lesen und schreiben dürfen." : ", " + reason));
    }
}

RegError storeError(const sqlite::Error& error, const fs::path& file, std::int32_t number) { return RegError(number, causeOf(error, file)); }

}  // namespace brenvik
