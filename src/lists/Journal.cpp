#include "lists/Journal.h"

#include <fmt/format.h>

#include "frame/Errors.h"
#include "lists/JournalTabellen.h"
#include "lists/Meldungen.h"

namespace brenvik {

using sqlite::Statement;

struct Journal::Tables {
    explicit Tables(const std::filesystem::path& file) : database(openJournal(file)) {}
    std::unique_ptr<sqlite::Database> database;
    sqlite3* db() { return database->handle(); }
    int depth = 0;

    Statement addChange{db(), "INSERT INTO aenderung(zeit, rechner, lokal, benutzer, sid, art, tipp, ueberschrift, zeile, hebtauf, nurzeile) "
                              "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) RETURNING nummer"};
    Statement addValue{db(), "INSERT OR REPLACE INTO wert VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"};
    Statement addPair{db(), "INSERT INTO paar VALUES (?, ?, ?)"};
    Statement addNewKey{db(), "INSERT INTO neuerschluessel VALUES (?, ?)"};
    Statement addKey{db(), "INSERT OR REPLACE INTO schluessel VALUES (?, ?, ?, ?, ?)"};
    Statement addSubKey{db(), "INSERT INTO unterschluessel VALUES (?, ?, ?, ?, ?, ?, ?)"};
    Statement addSubValue{db(), "INSERT INTO unterwert VALUES (?, ?, ?, ?, ?, ?, ?)"};
    Statement addFile{db(), "INSERT INTO datei VALUES (?, ?, ?, ?, ?, ?, ?)"};
    Statement markKey{db(), "UPDATE schluessel SET geloescht = ?3 WHERE aenderung = ?1 AND nr = ?2"};
    Statement markFile{db(), "UPDATE datei SET geschrieben = ?3 WHERE aenderung = ?1 AND nr = ?2"};
    Statement lineOf{db(), "UPDATE aenderung SET zeile = ?2 WHERE nummer = ?1"};
    Statement markTakenBack{db(), "UPDATE aenderung SET aufgehobendurch = ?2 WHERE nummer = ?1"};
    Statement hideChange{db(), "UPDATE aenderung SET ausgeblendet = 1 WHERE nummer = ?1"};
    Statement findLine{db(), "SELECT nummer FROM aenderung WHERE zeile = ? ORDER BY aufgehobendurch != 0, nummer DESC LIMIT 1"};
};

namespace {

constexpr const char* Columns = "SELECT nummer, zeit, rechner, lokal, benutzer, sid, art, tipp, ueberschrift, zeile, hebtauf, aufgehobendurch, ausgeblendet, nurzeile FROM aenderung ";

JournalKopf headFrom(const Statement::Use& row) {
    JournalKopf head;
    head.nummer = row.number(0);
    head.zeit = row.text(1), head.rechner = row.text(2), head.lokalerRechner = row.text(3), head.benutzer = row.text(4), head.sid = row.text(5);
    head.art = static_cast<Aenderung::Art>(row.number(6));
    head.tipp = static_cast<std::int32_t>(row.number(7));
    head.überschrift = row.text(8);
    if (!row.isNull(9)) head.zeile = row.text(9);
    head.hebtAuf = row.number(10), head.aufgehobenDurch = row.number(11);
    head.ausgeblendet = row.number(12) != 0, head.nurZeile = row.number(13) != 0;
    return head;
}

void bindRaw(Statement::Use& use, int index, const std::optional<RawValue>& value) {
    if (!value) {
        use.bindNull(index).bindNull(index + 1);
        return;
    }
    use.bind(index, static_cast<std::int64_t>(value->type)).bindBytes(index + 1, value->bytes.data(), value->bytes.size());
}

std::optional<RawValue> rawFrom(const Statement::Use& row, int column) {
    if (row.isNull(column)) return std::nullopt;
    return RawValue{static_cast<std::uint32_t>(row.number(column)), row.bytes(column + 1)};
}

std::string textBytes(const Statement::Use& row, int column) {
    const Bytes bytes = row.bytes(column);
    return {bytes.begin(), bytes.end()};
}

std::int64_t number(std::size_t value) { return static_cast<std::int64_t>(value); }

}  // namespace

Journal::Journal(std::filesystem::path file) : file_(std::move(file)) {}
Journal::~Journal() = default;

Journal::Tables& Journal::tables() {
    if (!tables_) tables_ = std::make_unique<Tables>(file_);
    return *tables_;
}

template <class Work> auto Journal::guarded(Work work) {
    try {
        return work(tables());
    } catch (const sqlite::Error& error) {
        throw NumberedError(errnum::PathFileAccess, journalFailure(file_, error));
    }
}

void Journal::transaction(const std::function<void()>& changes) {
    guarded([&](Tables& t) {
        if (t.depth > 0) return changes();
        t.database->execute("BEGIN IMMEDIATE");
        ++t.depth;
        try {
            changes();
            t.database->execute("COMMIT");
        } catch (...) {
            --t.depth;
            try {
                t.database->execute("ROLLBACK");
            } catch (const sqlite::Error&) {   // some failures have rolled it back already
            }
            throw;
        }
        --t.depth;
    });
}

void Journal::alone(const std::function<void()>& work) {
    bool begun = false;
    try {
        transaction([&] {
            begun = true;
            work();
        });
    } catch (const NumberedError&) {
        if (begun) throw;
        work();
    }
}

std::int64_t Journal::add(const JournalEintrag& entry) {
    std::int64_t id = 0;
    transaction([&] {
        Tables& t = tables();
        {
            auto use = t.addChange.run();
            use.bind(1, entry.zeit).bind(2, entry.rechner).bind(3, entry.lokalerRechner).bind(4, entry.benutzer).bind(5, entry.sid);
            use.bind(6, static_cast<std::int64_t>(entry.art)).bind(7, std::int64_t{entry.tipp}).bind(8, entry.überschrift);
            entry.zeile ? use.bind(9, *entry.zeile) : use.bindNull(9);
            use.bind(10, entry.hebtAuf).bind(11, std::int64_t{entry.nurZeile});
            use.step();
            id = use.number(0);
        }
        const Aenderung& change = entry.aenderung;
        for (std::size_t k = 0; k < change.werte.size(); ++k) written(id, k, change.werte[k]);
        for (std::size_t k = 0; k < entry.paare.size(); ++k) t.addPair.run().bind(1, id).bind(2, number(k)).bind(3, entry.paare[k]).step();
        for (const std::string& path : entry.neueSchluessel) t.addNewKey.run().bind(1, id).bind(2, path).step();
        for (std::size_t k = 0; k < change.schluessel.size(); ++k) {
            const SchluesselBild& key = change.schluessel[k];
            t.addKey.run().bind(1, id).bind(2, number(k)).bind(3, key.path).bind(4, std::int64_t{key.geloescht}).bind(5, std::int64_t{key.angelegt}).step();
            for (std::size_t n = 0; n < key.unterschluessel.size(); ++n) {
                const KeyDetails details = n < key.details.size() ? key.details[n] : KeyDetails{};
                t.addSubKey.run().bind(1, id).bind(2, number(k)).bind(3, number(n)).bind(4, key.unterschluessel[n])
                    .bindBytes(5, details.className.data(), details.className.size()).bind(6, static_cast<std::int64_t>(details.written))
                    .bindBytes(7, details.descriptor.data(), details.descriptor.size()).step();
            }
            for (std::size_t n = 0; n < key.werte.size(); ++n) {
                const auto& [unter, wert] = key.werte[n];
                t.addSubValue.run().bind(1, id).bind(2, number(k)).bind(3, number(n)).bind(4, unter).bind(5, wert.name.text())
                    .bind(6, static_cast<std::int64_t>(wert.value.type)).bindBytes(7, wert.value.bytes.data(), wert.value.bytes.size()).step();
            }
        }
        for (std::size_t k = 0; k < change.dateien.size(); ++k) {
            const DateiBild& file = change.dateien[k];
            t.addFile.run().bind(1, id).bind(2, number(k)).bind(3, file.datei).bind(4, std::int64_t{file.vorhanden})
                .bindBytes(5, file.inhalt.data(), file.inhalt.size()).bindBytes(6, file.neu.data(), file.neu.size()).bind(7, std::int64_t{file.geschrieben}).step();
        }
    });
    return id;
}

void Journal::written(std::int64_t nummer, std::size_t value, const WertAenderung& content) {
    guarded([&](Tables& t) {
        auto use = t.addValue.run();
        use.bind(1, nummer).bind(2, number(value)).bind(3, content.path).bind(4, std::int64_t{content.TippIndex});
        bindRaw(use, 5, content.alt);
        bindRaw(use, 7, content.neu);
        use.bind(9, std::int64_t{content.geschrieben}).step();
    });
}

void Journal::finish(std::int64_t nummer, const Aenderung& change) {
    transaction([&] {
        Tables& t = tables();
        for (std::size_t k = 0; k < change.werte.size(); ++k) written(nummer, k, change.werte[k]);
        for (std::size_t k = 0; k < change.schluessel.size(); ++k)
            t.markKey.run().bind(1, nummer).bind(2, number(k)).bind(3, std::int64_t{change.schluessel[k].geloescht}).step();
        for (std::size_t k = 0; k < change.dateien.size(); ++k)
            t.markFile.run().bind(1, nummer).bind(2, number(k)).bind(3, std::int64_t{change.dateien[k].geschrieben}).step();
    });
}

void Journal::remove(std::int64_t nummer) {
    transaction([&] {
        for (const char* table : {"wert", "paar", "neuerschluessel", "schluessel", "unterschluessel", "unterwert", "datei"})
            Statement(tables().db(), fmt::format("DELETE FROM {} WHERE aenderung = ?", table).c_str()).run().bind(1, nummer).step();
        Statement(tables().db(), "DELETE FROM aenderung WHERE nummer = ?").run().bind(1, nummer).step();
    });
}

void Journal::setLine(std::int64_t nummer, const std::string& zeile, const std::vector<std::string>& paare) {
    transaction([&] {
        tables().lineOf.run().bind(1, nummer).bind(2, zeile).step();
        for (std::size_t k = 0; k < paare.size(); ++k) tables().addPair.run().bind(1, nummer).bind(2, number(k)).bind(3, paare[k]).step();
    });
}

void Journal::takenBack(std::int64_t nummer, std::int64_t durch) {
    guarded([&](Tables& t) { t.markTakenBack.run().bind(1, nummer).bind(2, durch).step(); });
}

void Journal::hide(std::int64_t nummer) {
    guarded([&](Tables& t) { t.hideChange.run().bind(1, nummer).step(); });
}

std::vector<JournalKopf> Journal::heads() {
    return guarded([&](Tables& t) {
        std::vector<JournalKopf> heads;
        Statement all(t.db(), (std::string(Columns) + "ORDER BY nummer").c_str());
        for (auto row = all.run(); row.step();) heads.push_back(headFrom(row));
        return heads;
    });
}

std::vector<std::pair<JournalKopf, std::string>> Journal::withoutLine() {
    return guarded([&](Tables& t) {
        std::vector<std::pair<JournalKopf, std::string>> found;
        Statement heads(t.db(), fmt::format("{}WHERE zeile IS NULL AND aufgehobendurch = 0 AND ausgeblendet = 0 AND art < {} ORDER BY nummer", Columns,
                                            static_cast<int>(Aenderung::Art::Zuruecksetzen)).c_str());
        Statement next(t.db(), "SELECT zeile FROM aenderung WHERE nummer > ? AND zeile IS NOT NULL AND aufgehobendurch = 0 ORDER BY nummer LIMIT 1");
        for (auto row = heads.run(); row.step();) {
            JournalKopf head = headFrom(row);
            auto line = next.run();
            line.bind(1, head.nummer);
            found.emplace_back(std::move(head), line.step() ? line.text(0) : std::string());
        }
        return found;
    });
}

std::optional<JournalKopf> Journal::head(std::int64_t nummer) {
    return guarded([&](Tables& t) -> std::optional<JournalKopf> {
        Statement one(t.db(), (std::string(Columns) + "WHERE nummer = ?").c_str());
        auto row = one.run();
        row.bind(1, nummer);
        if (!row.step()) return std::nullopt;
        return headFrom(row);
    });
}

void Journal::readParts(JournalEintrag& entry) {
    Tables& t = tables();
    const auto each = [&](const char* sql, auto take) {
        Statement statement(t.db(), sql);
        auto row = statement.run();
        row.bind(1, entry.nummer);
        while (row.step()) take(row);
    };
    Aenderung& change = entry.aenderung;
    each("SELECT pfad, tipp, alttyp, alt, neutyp, neu, geschrieben FROM wert WHERE aenderung = ? ORDER BY nr", [&](auto& row) {
        change.werte.push_back({entry.rechner, row.text(0), static_cast<std::int16_t>(row.number(1)), rawFrom(row, 2), rawFrom(row, 4), row.number(6) != 0});
    });
    each("SELECT pfad FROM paar WHERE aenderung = ? ORDER BY nr", [&](auto& row) { entry.paare.push_back(row.text(0)); });
    each("SELECT pfad FROM neuerschluessel WHERE aenderung = ?", [&](auto& row) { entry.neueSchluessel.push_back(row.text(0)); });
    each("SELECT pfad, geloescht, angelegt FROM schluessel WHERE aenderung = ? ORDER BY nr", [&](auto& row) {
        change.schluessel.push_back({entry.rechner, row.text(0), {}, {}, row.number(1) != 0, row.number(2) != 0, {}});
    });
    each("SELECT nr, unter, klasse, geschrieben, rechte FROM unterschluessel WHERE aenderung = ? ORDER BY nr, folge", [&](auto& row) {
        SchluesselBild& key = change.schluessel.at(static_cast<std::size_t>(row.number(0)));
        key.unterschluessel.push_back(row.text(1));
        key.details.push_back({row.bytes(2), static_cast<std::uint64_t>(row.number(3)), row.bytes(4), false});
    });
    each("SELECT nr, unter, name, typ, bytes FROM unterwert WHERE aenderung = ? ORDER BY nr, folge", [&](auto& row) {
        change.schluessel.at(static_cast<std::size_t>(row.number(0))).werte.push_back(
            {row.text(1), {ValueName::named(row.text(2)), {static_cast<std::uint32_t>(row.number(3)), row.bytes(4)}}});
    });
    each("SELECT datei, inhalt, vorhanden, neu, geschrieben FROM datei WHERE aenderung = ? ORDER BY nr", [&](auto& row) {
        change.dateien.push_back({row.text(0), textBytes(row, 1), row.number(2) != 0, textBytes(row, 3), row.number(4) != 0});
    });
}

std::optional<JournalEintrag> Journal::entry(std::int64_t nummer) {
    const auto found = head(nummer);
    if (!found) return std::nullopt;
    JournalEintrag entry;
    static_cast<JournalKopf&>(entry) = *found;
    entry.aenderung.art = entry.art;
    entry.aenderung.tippÜberschrift = entry.überschrift;
    entry.aenderung.tippIndex = static_cast<std::int16_t>(entry.tipp);
    guarded([&](Tables&) { readParts(entry); });
    return entry;
}

std::int64_t Journal::byLine(const std::string& zeile) {
    return guarded([&](Tables& t) {
        auto row = t.findLine.run();
        row.bind(1, zeile);
        return row.step() ? row.number(0) : std::int64_t{0};
    });
}

std::int64_t Journal::adoptLine(const JournalKopf& head) {
    JournalEintrag entry;
    static_cast<JournalKopf&>(entry) = head;
    entry.nurZeile = true;
    return add(entry);
}

std::int64_t Journal::lastTakenBack() {
    return guarded([&](Tables& t) { return t.database->number("SELECT nummer FROM aenderung WHERE aufgehobendurch != 0 AND art < 8 ORDER BY aufgehobendurch DESC LIMIT 1"); });
}

std::vector<GesetzterWert> Journal::lastWritten() {
    static_assert(static_cast<int>(Aenderung::Art::Zuruecksetzen) == 8);
    return guarded([&](Tables& t) {
        std::vector<GesetzterWert> values;
        // Of several writes to a path the last counts, be it an undo. Only what a Tip set is asked for, not what a deleted key held.
        Statement all(t.db(), "SELECT a.nummer, w.tipp, a.ueberschrift, a.rechner, a.lokal, a.sid, w.pfad, w.neutyp, w.neu, max(a.nummer * 65536 + w.nr) "
                              "FROM wert w JOIN aenderung a ON a.nummer = w.aenderung WHERE w.geschrieben "
                              "GROUP BY CASE a.rechner WHEN '' THEN a.lokal ELSE a.rechner END, lower(w.pfad) ORDER BY w.tipp, a.nummer, w.nr");
        for (auto row = all.run(); row.step();)
            values.push_back({row.number(0), static_cast<std::int32_t>(row.number(1)), row.text(2), row.text(3), row.text(4), row.text(5), row.text(6), rawFrom(row, 7)});
        return values;
    });
}

void Journal::eachWrittenFile(const std::function<void(const JournalKopf&, const DateiBild&)>& take) {
    guarded([&](Tables& t) {
        Statement all(t.db(), "SELECT a.nummer, a.tipp, a.ueberschrift, d.datei, d.inhalt, d.vorhanden, d.neu "
                              "FROM datei d JOIN aenderung a ON a.nummer = d.aenderung WHERE d.geschrieben ORDER BY a.nummer, d.nr");
        for (auto row = all.run(); row.step();) {
            JournalKopf change;
            change.nummer = row.number(0), change.tipp = static_cast<std::int32_t>(row.number(1)), change.überschrift = row.text(2);
            take(change, {row.text(3), textBytes(row, 4), row.number(5) != 0, textBytes(row, 6), true});
        }
    });
}

}  // namespace brenvik
