#include "lists/journal/JournalTables.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include "frame/Errors.h"
#include "frame/files/FileSystem.h"
#include "frame/platform/HostFile.h"
#include "lists/Messages.h"
#include "registry/store/StorePicture.h"

namespace brenvik {
namespace {

constexpr std::int64_t ApplicationId = 0x42564B4A;   // "BVKJ"
constexpr std::int64_t FormatVersion = 3;
constexpr int WaitMs = 5000;                         // for another process of ours
constexpr int LongestField = 64 << 20;               // more than any value or file that is recorded

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

// Of wert, name is apart from its key's path; none: the path holds it, as it was given to the registry service. Images below a
// number nr stand for the key before the change, those below -1 - nr for what it was afterwards; nachher: that is known.
// fertig: the change was not interrupted. zeilefehlt: its line belongs into History.txt and is not written yet.
constexpr const char* SecondSql = R"(
ALTER TABLE aenderung ADD COLUMN fertig INTEGER NOT NULL DEFAULT 1;
ALTER TABLE aenderung ADD COLUMN zeilefehlt INTEGER NOT NULL DEFAULT 0;
ALTER TABLE wert ADD COLUMN name TEXT;
ALTER TABLE schluessel ADD COLUMN nachher INTEGER NOT NULL DEFAULT 0;
CREATE INDEX aenderung_ohnezeile ON aenderung(nummer) WHERE zeile IS NULL AND aufgehobendurch = 0 AND ausgeblendet = 0 AND art < 8;
CREATE INDEX aenderung_tot ON aenderung(zeile) WHERE zeile IS NOT NULL AND (aufgehobendurch != 0 OR ausgeblendet != 0);
CREATE INDEX aenderung_offen ON aenderung(nummer) WHERE fertig = 0 OR zeilefehlt != 0;
INSERT INTO unterschluessel SELECT u.nummer, -1 - s.nr, s.folge, s.unter, s.klasse, s.geschrieben, s.rechte
  FROM aenderung u JOIN schluessel k ON k.aenderung = u.hebtauf AND NOT k.angelegt JOIN unterschluessel s ON s.aenderung = k.aenderung AND s.nr = k.nr;
INSERT INTO unterwert SELECT u.nummer, -1 - s.nr, s.folge, s.unter, s.name, s.typ, s.bytes
  FROM aenderung u JOIN schluessel k ON k.aenderung = u.hebtauf AND NOT k.angelegt JOIN unterwert s ON s.aenderung = k.aenderung AND s.nr = k.nr;
UPDATE schluessel SET nachher = 1 WHERE aenderung IN (SELECT nummer FROM aenderung WHERE hebtauf != 0);
PRAGMA user_version = 2;
)";

// Of unterschluessel: KeyDetails::flags and userFlags.
constexpr const char* ThirdSql = R"(
ALTER TABLE unterschluessel ADD COLUMN merkmale INTEGER NOT NULL DEFAULT 0;
ALTER TABLE unterschluessel ADD COLUMN eigene INTEGER NOT NULL DEFAULT 0;
PRAGMA user_version = 3;
)";

[[noreturn]] void refuse(const std::filesystem::path& file, const char* why) {
    throw NumberedError(errnum::PathFileAccess, fmt::format(messages::JournalError, utf8FromPath(file), why));
}

// The folder that stood for a drive, and so the Windows path of what lies below it: "/home/anna/drive_c/windows/win.ini".
std::string rebased(const std::string& file) {
    static constexpr std::string_view Drive = "/drive_";
    for (std::size_t at = file.rfind(Drive); at != std::string::npos && at > 0; at = file.rfind(Drive, at - 1)) {
        const std::size_t letter = at + Drive.size();
        if (letter + 1 >= file.size() || file[letter] < 'a' || file[letter] > 'z' || file[letter + 1] != '/') continue;
        std::string path = {static_cast<char>(file[letter] - 'a' + 'A'), ':'};
        for (const char c : file.substr(letter + 1)) path += c == '/' ? '\\' : c;
        return path;
    }
    return file;
}

// Former versions kept the host's path of a file, which is another one once the home was moved or copied.
void rebaseFiles(sqlite::Database& database) {
    std::vector<std::string> files;
    {
        sqlite::Statement all(database.handle(), "SELECT DISTINCT datei FROM datei");
        for (auto row = all.run(); row.step();) files.push_back(row.text(0));
    }
    sqlite::Statement change(database.handle(), "UPDATE datei SET datei = ?2 WHERE datei = ?1");
    for (const std::string& file : files)
        if (const std::string path = rebased(file); path != file) change.run().bind(1, file).bind(2, path).step();
}

// All steps from the first version on, so that a new journal and one that was brought up to date have the same tables.
void bringUpToDate(sqlite::Database& database) {
    database.execute("BEGIN IMMEDIATE");
    try {
        const auto isEmpty = [&] { return database.number("SELECT count(*) FROM sqlite_master") == 0; };
        if (isEmpty()) database.execute(SchemaSql);   // another process may have been quicker
        if (database.number("PRAGMA user_version") == 1) {
            rebaseFiles(database);
            database.execute(SecondSql);
        }
        if (database.number("PRAGMA user_version") == 2) database.execute(ThirdSql);
        database.execute("COMMIT");
    } catch (...) {
        sqlite3_exec(database.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

std::string schemaOf(sqlite::Database& database) {
    std::string all;
    sqlite::Statement entries(database.handle(), "SELECT type || char(10) || name || char(10) || tbl_name || char(10) || ifnull(sql, '') FROM sqlite_master "
                                                 "WHERE name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY type, name");
    for (auto row = entries.run(); row.step();) all += row.text(0) + "\n\n";
    return all;
}

// A trigger, a view or a computed column could make anything of what is read and written here.
bool hasOwnTables(sqlite::Database& database, std::int64_t version) {
    sqlite::Database model(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    model.execute(SchemaSql);
    if (version > 1) model.execute(SecondSql);
    if (version > 2) model.execute(ThirdSql);
    return schemaOf(database) == schemaOf(model);
}

bool meansNoWriting(const sqlite::Error& error) {
    return error.code == SQLITE_CANTOPEN || error.code == SQLITE_READONLY || error.code == SQLITE_PERM || error.code == SQLITE_IOERR || error.code == SQLITE_FULL;
}

// Whether it is ours; an empty one becomes it.
void checkAndComplete(sqlite::Database& database, const std::filesystem::path& file) {
    sqlite3_limit(database.handle(), SQLITE_LIMIT_LENGTH, LongestField);
    database.execute("PRAGMA trusted_schema = OFF");
    database.execute("PRAGMA cell_size_check = ON");
    const bool isNew = database.number("SELECT count(*) FROM sqlite_master") == 0;
    const std::int64_t version = database.number("PRAGMA user_version");
    if (!isNew && database.number("PRAGMA application_id") != ApplicationId) refuse(file, messages::JournalNone);
    if (version > FormatVersion) refuse(file, messages::JournalNewer);
    if (!isNew && !hasOwnTables(database, version)) refuse(file, messages::JournalNone);
    database.execute("PRAGMA journal_mode = WAL");
    database.execute("PRAGMA synchronous = NORMAL");
    if (version < FormatVersion) bringUpToDate(database);
}

// Nothing if the file cannot be had for writing.
std::unique_ptr<sqlite::Database> openToWrite(const std::filesystem::path& file) {
    // SQLite gives its companion files the rights of this one. What a link leads to may be anything.
    std::error_code error;
    if (!std::filesystem::is_symlink(std::filesystem::symlink_status(file, error)) && host::makePrivate(file)) return nullptr;
    auto database = std::make_unique<sqlite::Database>(utf8FromPath(file), SQLITE_OPEN_READWRITE);
    if (sqlite3_db_readonly(database->handle(), "main") != 0) return nullptr;
    sqlite3_busy_timeout(database->handle(), WaitMs);
    database->execute("PRAGMA secure_delete = ON");      // what was forgotten is to be gone
    checkAndComplete(*database, file);
    return database;
}

// As it stands at this moment, in memory. To change that would lose the change without a word.
std::unique_ptr<sqlite::Database> openToRead(const std::filesystem::path& file) {
    std::error_code error;
    const bool missing = std::filesystem::status(file, error).type() == std::filesystem::file_type::not_found;
    auto picture = missing ? std::make_unique<sqlite::Database>(":memory:", SQLITE_OPEN_READWRITE) : pictureOf(file);
    checkAndComplete(*picture, file);
    picture->execute("PRAGMA query_only = ON");
    return picture;
}

}  // namespace

// Lengths are told without reading what is that long.
std::vector<std::int64_t> tooLongChanges(sqlite::Database& database) {
    static constexpr std::pair<const char*, const char*> Places[] = {{"wert", "alt"}, {"wert", "neu"}, {"datei", "inhalt"}, {"datei", "neu"},
                                                                     {"unterschluessel", "klasse"}, {"unterschluessel", "rechte"}, {"unterwert", "bytes"}};
    std::string sql;
    for (const auto& [table, column] : Places)
        sql += fmt::format("{}SELECT aenderung FROM {} WHERE length({}) > {}", sql.empty() ? "" : " UNION ", table, column, LongestField);
    std::vector<std::int64_t> numbers;
    sqlite::Statement all(database.handle(), sql.c_str());
    for (auto row = all.run(); row.step();) numbers.push_back(row.number(0));
    return numbers;
}

std::string journalFailure(const std::filesystem::path& file, const sqlite::Error& error) {
    std::string why;
    switch (error.code) {
        case SQLITE_NOTADB: case SQLITE_CORRUPT: why = messages::JournalNone; break;
        case SQLITE_FULL: why = messages::JournalFull; break;
        case SQLITE_PERM: case SQLITE_AUTH: case SQLITE_CANTOPEN: case SQLITE_READONLY: case SQLITE_IOERR:
            // On a full disk its companion files cannot even be made, which looks like lacking rights.
            why = host::meansDiskFull(whyNotWritable(file)) ? messages::JournalFull : messages::JournalRights; break;
        case SQLITE_BUSY: case SQLITE_LOCKED: why = messages::JournalLocked; break;
        default: why = fmt::format(messages::JournalElse, error.what());
    }
    return fmt::format(messages::JournalError, utf8FromPath(file), why);
}

std::unique_ptr<sqlite::Database> openJournal(const std::filesystem::path& file) {
    std::error_code error;
    const auto kind = std::filesystem::status(file, error);
    if (std::filesystem::exists(kind) && !std::filesystem::is_regular_file(kind)) refuse(file, messages::JournalNone);
    try {
        if (auto database = openToWrite(file)) return database;
    } catch (const sqlite::Error& failure) {
        if (!meansNoWriting(failure)) throw;
    }
    try {
        return openToRead(file);
    } catch (const std::filesystem::filesystem_error&) {   // its log, or where a copy of it would lie
        refuse(file, messages::JournalRights);
    }
}

bool isWritable(sqlite::Database& journal) { return journal.number("PRAGMA query_only") == 0; }

}  // namespace brenvik
