#include "tipdb/sql/SqlError.h"

#include <sqlite3.h>

#include <optional>
#include <string_view>

namespace brenvik {
namespace {

constexpr const char* Source = "SQL";

std::optional<std::string> behind(std::string_view text, std::string_view start) {
    if (text.substr(0, start.size()) != start) return std::nullopt;
    return std::string(text.substr(start.size()));
}

// The piece in double quotes that the parser stumbled over.
std::optional<std::string> quotedBetween(std::string_view text, std::string_view start, std::string_view end) {
    if (text.size() < start.size() + end.size() || text.substr(0, start.size()) != start || text.substr(text.size() - end.size()) != end) return std::nullopt;
    return std::string(text.substr(start.size(), text.size() - start.size() - end.size()));
}

std::string statementReason(int code, std::string_view message) {
    if (code == SQLITE_AUTH || message.find(" may not be modified") != std::string_view::npos) return "Es darf nur gelesen werden.";
    if (code == SQLITE_INTERRUPT) return "Die Abfrage dauert zu lange.";
    if (code == SQLITE_NOMEM) return "Der Speicher reicht nicht.";
    if (code == SQLITE_TOOBIG) return "Ein Text ist zu lang.";
    if (const auto name = behind(message, "no such column: ")) return "Die Spalte \"" + *name + "\" gibt es nicht.";
    if (const auto name = behind(message, "no such function: ")) return "Die Funktion \"" + *name + "\" gibt es nicht.";
    if (const auto piece = quotedBetween(message, "near \"", "\": syntax error")) return "Sie ist ab \"" + *piece + "\" nicht zu verstehen.";
    if (const auto piece = quotedBetween(message, "unrecognized token: \"", "\"")) return "Sie ist ab \"" + *piece + "\" nicht zu verstehen.";
    if (message == "incomplete input") return "Sie ist nicht zu Ende.";
    return "Sie kann nicht ausgeführt werden (SQLite-Fehler " + std::to_string(code) + ").";
}

}  // namespace

DatabaseErrors statementError(sqlite3* db) {
    const std::string message = sqlite3_errmsg(db);
    if (const auto name = behind(message, "no such table: ")) return {dberr::NoTable, "Die Tabelle \"" + *name + "\" gibt es nicht.", Source};
    return {dberr::BadStatement, "Fehler in der Abfrage: " + statementReason(sqlite3_errcode(db), message), Source};
}

std::string fileReason(int resultCode) {
    switch (resultCode & 0xFF) {
        case SQLITE_CORRUPT: return "ihr innerer Aufbau stimmt nicht";
        case SQLITE_NOTADB: return "sie ist keine SQLite-Datenbank";
        case SQLITE_NOMEM: return "der Speicher reicht nicht";
        case SQLITE_TOOBIG: return "ein Text ist zu lang";
        case SQLITE_INTERRUPT: return "das Lesen dauert zu lange";
        default: return "sie läßt sich nicht lesen (SQLite-Fehler " + std::to_string(resultCode) + ")";
    }
}

}  // namespace brenvik
