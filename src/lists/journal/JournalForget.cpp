// What is to be known of a change no more.
#include <fmt/format.h>

#include "lists/journal/Journal.h"
#include "lists/journal/JournalTables.h"

namespace brenvik {

// Earlier changes of what these wrote are no longer watched: nobody would know that it was the program that overwrote them.
void forgetChanges(sqlite::Database& database, const std::vector<std::int64_t>& numbers) {
    const auto execute = [&](const char* sql) { database.execute(sql); };
    execute("CREATE TEMP TABLE IF NOT EXISTS weg(nummer INTEGER PRIMARY KEY)");
    execute("CREATE TEMP TABLE IF NOT EXISTS wegwert(rechner TEXT COLLATE NOCASE, pfad TEXT COLLATE NOCASE, name TEXT COLLATE NOCASE, letzte INTEGER, PRIMARY KEY(rechner, pfad, name))");
    execute("DELETE FROM temp.weg; DELETE FROM temp.wegwert");
    sqlite::Statement take(database.handle(), "INSERT OR IGNORE INTO temp.weg VALUES (?)");
    for (const std::int64_t nummer : numbers) take.run().bind(1, nummer).step();
    do execute("INSERT OR IGNORE INTO temp.weg SELECT nummer FROM aenderung WHERE hebtauf != 0 AND hebtauf IN temp.weg");   // and what took them back
    while (database.number("SELECT changes()") > 0);
    execute("INSERT OR REPLACE INTO temp.wegwert SELECT a.rechner, w.pfad, ifnull(w.name, ''), max(w.aenderung) FROM wert w JOIN aenderung a ON a.nummer = w.aenderung "
            "WHERE w.geschrieben AND w.aenderung IN temp.weg GROUP BY a.rechner COLLATE NOCASE, w.pfad COLLATE NOCASE, ifnull(w.name, '') COLLATE NOCASE");
    execute("UPDATE wert SET geschrieben = 2 WHERE geschrieben = 1 AND EXISTS(SELECT 1 FROM temp.wegwert f JOIN aenderung a ON a.nummer = wert.aenderung "
            "WHERE f.rechner = a.rechner AND f.pfad = wert.pfad AND f.name = ifnull(wert.name, '') AND f.letzte > wert.aenderung)");
    execute("UPDATE wert SET geschrieben = 2 WHERE geschrieben = 1 AND EXISTS(SELECT 1 FROM schluessel k WHERE k.aenderung IN temp.weg AND k.aenderung > wert.aenderung "
            "AND substr(wert.pfad || '\\', 1, length(k.pfad) + 1) = k.pfad || '\\' COLLATE NOCASE)");
    execute("UPDATE datei SET geschrieben = 2 WHERE geschrieben = 1 AND EXISTS(SELECT 1 FROM datei f WHERE f.aenderung IN temp.weg AND f.aenderung > datei.aenderung "
            "AND f.datei = datei.datei COLLATE NOCASE)");
    for (const char* table : {"wert", "paar", "neuerschluessel", "schluessel", "unterschluessel", "unterwert", "datei"})
        execute(fmt::format("DELETE FROM {} WHERE aenderung IN temp.weg", table).c_str());
    execute("DELETE FROM aenderung WHERE nummer IN temp.weg");
}

std::vector<std::string> Journal::hideLines(const std::vector<std::int64_t>& numbers) {
    std::vector<std::string> lines;
    transaction([&] {
        for (const std::int64_t nummer : numbers) {
            const auto change = head(nummer);
            if (!change || !change->zeile || change->undoneBy != 0 || change->hiddenOnes) continue;
            lines.push_back(*change->zeile);
            hide(nummer);
        }
    });
    return lines;
}

}  // namespace brenvik
