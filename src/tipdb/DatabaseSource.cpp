#include "tipdb/DatabaseSource.h"

#include "frame/files/FileSystem.h"
#include "tipdb/DatabaseErrors.h"
#include "tipdb/jet/JetFile.h"
#include "tipdb/jet/JetTable.h"

namespace brenvik {

namespace {

constexpr std::uintmax_t MaxFileBytes = 256U << 20;
constexpr const char* Source = "Datenbankdatei";
constexpr char SqliteMagic[] = "SQLite format 3";  // with its final zero byte

std::string fileBytes(const std::filesystem::path& file) {
    std::error_code ec;
    if (!std::filesystem::is_regular_file(file, ec)) throw DatabaseErrors(errnum::PathFileAccess, "Die Datenbankdatei ist keine gewöhnliche Datei.", Source);
    try {
        return readFile(file, MaxFileBytes);
    } catch (const NumberedError& error) {
        throw DatabaseErrors(error.number, std::string("Die Datenbankdatei ist nicht lesbar: ") + error.what(), Source);
    }
}

bool looksLikeSqlite(std::string_view bytes) { return bytes.substr(0, sizeof SqliteMagic) == std::string_view(SqliteMagic, sizeof SqliteMagic); }

}  // namespace

Records readDatabase(const std::filesystem::path& file, const std::string& password, const std::vector<std::string>& tables) {
    std::string bytes = fileBytes(file);
    if (jet::JetFile::looksLikeJet(bytes)) return readJetDatabase(std::move(bytes), password, tables);
    if (looksLikeSqlite(bytes)) return readSqliteDatabase(std::move(bytes), tables);
    throw DatabaseErrors(dberr::Unspecified, "Das Format der Datenbankdatei wird nicht erkannt: Es ist weder eine Jet- noch eine SQLite-Datenbank.", Source);
}

Records readJetDatabase(std::string bytes, const std::string& password, const std::vector<std::string>& tables) {
    std::string table;
    try {
        const jet::JetFile file(std::move(bytes));
        if (!file.password().empty() && file.password() != password)
            throw DatabaseErrors(dberr::AuthenticationFailed, "Das Kennwort der Datenbank ist ungültig.", Source);
        Records data;
        table = "MSysObjects";
        const jet::Catalogue catalog(file);
        for (const std::string& name : tables) {
            table = name;
            if (const auto page = catalog.find(name)) data.tables.push_back(jet::readTable(file, *page, name));
        }
        return data;
    } catch (const jet::Damaged& error) {
        const std::string place = table.empty() ? "" : " (Tabelle " + table + ")";
        throw DatabaseErrors(dberr::Unspecified, std::string("Die Datenbankdatei ist beschädigt") + place + ": " + error.what() + ".", Source);
    }
}

}  // namespace brenvik
