#include "lists/JournalTabellen.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include "frame/DateiSystem.h"
#include "frame/Errors.h"
#include "frame/HostDatei.h"
#include "lists/Meldungen.h"

namespace brenvik {
namespace {

constexpr std::int64_t ApplicationId = 0x42564B4A;   // "BVKJ"
constexpr std::int64_t FormatVersion = 1;
constexpr std::uintmax_t LeastSpace = 64 << 10;
constexpr int WaitMs = 5000;                         // for another process of ours

// Numbers of changes are never used twice: users name a change by its number.
constexpr const char* SchemaSql = R"(
CREATE TABLE aenderung(
  nummer INTEGER PRIMARY KEY AUTOINCREMENT, zeit TEXT NOT NULL, rechner TEXT NOT NULL, lokal TEXT NOT NULL, benutzer TEXT NOT NULL,
  sid TEXT NOT NULL, art INTEGER NOT NULL, tipp INTEGER NOT NULL, ueberschrift TEXT NOT NULL, zeile TEXT, hebtauf INTEGER NOT NULL,
  aufgehobendurch INTEGER NOT NULL DEFAULT 0, ausgeblendet INTEGER NOT NULL DEFAULT 0, nurzeile INTEGER NOT NULL DEFAULT 0);
CREATE INDEX aenderung_zeile ON aenderung(zeile) WHERE zeile IS NOT NULL;
CREATE TABLE wert(
  aenderung INTEGER NOT NULL, nr INTEGER NOT NULL, pfad TEXT NOT NULL, tipp INTEGER NOT NULL, alttyp INTEGER, alt BLOB, neutyp INTEGER,
  neu BLOB, geschrieben INTEGER NOT NULL, PRIMARY KEY(aenderung, nr)) WITHOUT ROWID;
CREATE TABLE paar(aenderung INTEGER NOT NULL, nr INTEGER NOT NULL, pfad TEXT NOT NULL, PRIMARY KEY(aenderung, nr)) WITHOUT ROWID;
CREATE TABLE neuerschluessel(aenderung INTEGER NOT NULL, pfad TEXT NOT NULL);
CREATE INDEX neuerschluessel_aenderung ON neuerschluessel(aenderung);
CREATE TABLE schluessel(aenderung INTEGER NOT NULL, nr INTEGER NOT NULL, pfad TEXT NOT NULL, geloescht INTEGER NOT NULL, angelegt INTEGER NOT NULL,
  PRIMARY KEY(aenderung, nr));
CREATE TABLE unterschluessel(
  aenderung INTEGER NOT NULL, nr INTEGER NOT NULL, folge INTEGER NOT NULL, unter TEXT NOT NULL, klasse BLOB NOT NULL, geschrieben INTEGER NOT NULL,
  rechte BLOB NOT NULL, PRIMARY KEY(aenderung, nr, folge));
CREATE TABLE unterwert(
  aenderung INTEGER NOT NULL, nr INTEGER NOT NULL, folge INTEGER NOT NULL, unter TEXT NOT NULL, name TEXT NOT NULL, typ INTEGER NOT NULL,
  bytes BLOB NOT NULL, PRIMARY KEY(aenderung, nr, folge));
CREATE TABLE datei(
  aenderung INTEGER NOT NULL, nr INTEGER NOT NULL, datei TEXT NOT NULL, vorhanden INTEGER NOT NULL, inhalt BLOB NOT NULL, neu BLOB NOT NULL,
  geschrieben INTEGER NOT NULL, PRIMARY KEY(aenderung, nr));
PRAGMA application_id = 0x42564B4A;
PRAGMA user_version = 1;
)";

[[noreturn]] void refuse(const std::filesystem::path& file, const char* why) {
    throw NumberedError(errnum::PathFileAccess, fmt::format(meldung::JournalFehler, utf8FromPath(file), why));
}

// Its companion files cannot even be made then, which looks like lacking rights.
bool isFull(const std::filesystem::path& file) {
    std::error_code error;
    const auto space = std::filesystem::space(file.parent_path(), error);
    return !error && space.available < LeastSpace;
}

void makeTables(sqlite::Database& database) {
    database.execute("BEGIN IMMEDIATE");
    try {
        if (database.number("SELECT count(*) FROM sqlite_master") == 0) database.execute(SchemaSql);   // another process may have been quicker
        database.execute("COMMIT");
    } catch (...) {
        sqlite3_exec(database.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

}  // namespace

std::string journalFailure(const std::filesystem::path& file, const sqlite::Error& error) {
    std::string why;
    switch (error.code) {
        case SQLITE_NOTADB: case SQLITE_CORRUPT: why = meldung::JournalKeines; break;
        case SQLITE_FULL: why = meldung::JournalVoll; break;
        case SQLITE_PERM: case SQLITE_AUTH: case SQLITE_CANTOPEN: case SQLITE_READONLY: case SQLITE_IOERR: why = isFull(file) ? meldung::JournalVoll : meldung::JournalRechte; break;
        case SQLITE_BUSY: case SQLITE_LOCKED: why = meldung::JournalGesperrt; break;
        default: why = fmt::format(meldung::JournalSonst, error.what());
    }
    return fmt::format(meldung::JournalFehler, utf8FromPath(file), why);
}

std::unique_ptr<sqlite::Database> openJournal(const std::filesystem::path& file) {
    // SQLite gives its companion files the rights of this one.
    if (host::makePrivate(file)) refuse(file, meldung::JournalRechte);
    auto database = std::make_unique<sqlite::Database>(utf8FromPath(file), SQLITE_OPEN_READWRITE);
    sqlite3_busy_timeout(database->handle(), WaitMs);
    database->execute("PRAGMA trusted_schema = OFF");
    database->execute("PRAGMA cell_size_check = ON");
    database->execute("PRAGMA journal_mode = WAL");
    database->execute("PRAGMA synchronous = NORMAL");
    if (database->number("SELECT count(*) FROM sqlite_master") == 0) makeTables(*database);
    if (database->number("PRAGMA application_id") != ApplicationId) refuse(file, meldung::JournalKeines);
    if (database->number("PRAGMA user_version") > FormatVersion) refuse(file, meldung::JournalNeuer);
    return database;
}

}  // namespace brenvik
