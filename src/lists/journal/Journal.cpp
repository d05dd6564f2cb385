#include "lists/journal/Journal.h"

#include <fmt/format.h>

#include <algorithm>
#include <unordered_map>

#include "frame/Errors.h"
#include "lists/Messages.h"
#include "lists/journal/JournalTables.h"

namespace brenvik {

using sqlite::Statement;

struct Journal::Tables {
    explicit Tables(const std::filesystem::path& file) : database(openJournal(file)) {}
    std::unique_ptr<sqlite::Database> database;
    bool writable = isWritable(*database);
    sqlite3* db() { return database->handle(); }
    int depth = 0;

    Statement addChange{db(), "INSERT INTO aenderung(zeit, rechner, lokal, benutzer, sid, art, tipp, ueberschrift, zeile, hebtauf, nurzeile, fertig) "
                              "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) RETURNING nummer"};
    Statement addValue{db(), "INSERT OR REPLACE INTO wert VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"};
    Statement addPair{db(), "INSERT INTO paar VALUES (?, ?, ?)"};
    Statement addNewKey{db(), "INSERT INTO neuerschluessel VALUES (?, ?)"};
    Statement addKey{db(), "INSERT OR REPLACE INTO schluessel VALUES (?, ?, ?, ?, ?, ?)"};
    Statement addSubKey{db(), "INSERT INTO unterschluessel VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"};
    Statement addSubValue{db(), "INSERT INTO unterwert VALUES (?, ?, ?, ?, ?, ?, ?)"};
    Statement dropSubKeys{db(), "DELETE FROM unterschluessel WHERE aenderung = ? AND nr = ?"};
    Statement dropSubValues{db(), "DELETE FROM unterwert WHERE aenderung = ? AND nr = ?"};
    Statement addFile{db(), "INSERT INTO datei VALUES (?, ?, ?, ?, ?, ?, ?)"};
    Statement markKey{db(), "UPDATE schluessel SET geloescht = ?3, nachher = ?4 WHERE aenderung = ?1 AND nr = ?2"};
    Statement markFinished{db(), "UPDATE aenderung SET fertig = 1 WHERE nummer = ?"};
    Statement markFile{db(), "UPDATE datei SET geschrieben = ?3 WHERE aenderung = ?1 AND nr = ?2"};
    Statement markTakenBack{db(), "UPDATE aenderung SET aufgehobendurch = ?2, zeilefehlt = (?2 = 0 AND zeile IS NOT NULL) WHERE nummer = ?1"};
    Statement hideChange{db(), "UPDATE aenderung SET ausgeblendet = 1 WHERE nummer = ?1"};
    Statement findLine{db(), "SELECT nummer FROM aenderung WHERE zeile = ? ORDER BY aufgehobendurch != 0 OR ausgeblendet, nummer DESC LIMIT 1 OFFSET ?"};
    Statement countLine{db(), "SELECT count(*), coalesce(sum(aufgehobendurch = 0 AND ausgeblendet = 0), 0) FROM aenderung WHERE zeile = ?"};
};

namespace {

constexpr int FirstUndo = static_cast<int>(Change::Art::Undo);
constexpr const char* Columns = "SELECT nummer, zeit, rechner, lokal, benutzer, sid, art, tipp, ueberschrift, zeile, hebtauf, aufgehobendurch, ausgeblendet, nurzeile FROM aenderung ";

JournalHeader headFrom(const Statement::Use& row) {
    JournalHeader head;
    head.nummer = row.number(0);
    head.zeit = row.text(1), head.machineName = row.text(2), head.localMachine = row.text(3), head.benutzer = row.text(4), head.sid = row.text(5);
    head.art = static_cast<Change::Art>(row.number(6));
    head.tipp = static_cast<std::int32_t>(row.number(7));
    head.überschrift = row.text(8);
    if (!row.isNull(9)) head.zeile = row.text(9);
    head.undoes = row.number(10), head.undoneBy = row.number(11);
    head.hiddenOnes = row.number(12) != 0, head.lineOnly = row.number(13) != 0;
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
std::int64_t afterwards(std::int64_t place) { return -1 - place; }   // where the image of a key as it was left stands

bool knowsAfterwards(const JournalEntry& entry, std::size_t key) { return key < entry.afterwards.size() && entry.afterwards[key]; }

constexpr const char* ValueColumns = "pfad, tipp, alttyp, alt, neutyp, neu, geschrieben, name";
ValueChange valueFrom(const Statement::Use& row, int column, const std::string& machine) {
    ValueChange value{machine, row.text(column), static_cast<std::int16_t>(row.number(column + 1)), rawFrom(row, column + 2), rawFrom(row, column + 4),
                        row.number(column + 6) != 0, std::nullopt};
    if (!row.isNull(column + 7)) value.name = row.text(column + 7);
    return value;
}

// Goes on only where the row of the change is there.
class PartList {
public:
    PartList(sqlite3* database, const std::string& sql) : statement_(database, sql.c_str()), row_(statement_.run()) { more_ = row_.step(); }
    // The rows of one change; changes are asked for in the order of their numbers.
    template <class Take> void of(std::int64_t change, Take take) {
        for (; more_ && row_.number(0) <= change; more_ = row_.step())
            if (row_.number(0) == change) take(row_);
    }

private:
    Statement statement_;
    Statement::Use row_;
    bool more_ = false;
};

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

bool Journal::writable() {
    return guarded([](Tables& t) { return t.writable; });
}

void Journal::transaction(const std::function<void()>& changes) {
    if (tables_ && !tables_->writable) tables_.reset();   // by now it may be possible
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

std::int64_t Journal::add(const JournalEntry& entry) {
    std::int64_t id = 0;
    transaction([&] {
        Tables& t = tables();
        {
            auto use = t.addChange.run();
            use.bind(1, entry.zeit).bind(2, entry.machineName).bind(3, entry.localMachine).bind(4, entry.benutzer).bind(5, entry.sid);
            use.bind(6, static_cast<std::int64_t>(entry.art)).bind(7, std::int64_t{entry.tipp}).bind(8, entry.überschrift);
            entry.zeile ? use.bind(9, *entry.zeile) : use.bindNull(9);
            use.bind(10, entry.undoes).bind(11, std::int64_t{entry.lineOnly}).bind(12, std::int64_t{entry.lineOnly});
            use.step();
            id = use.number(0);
        }
        const Change& change = entry.change;
        for (std::size_t k = 0; k < change.values.size(); ++k) written(id, k, change.values[k]);
        for (std::size_t k = 0; k < entry.pairs.size(); ++k) t.addPair.run().bind(1, id).bind(2, number(k)).bind(3, entry.pairs[k]).step();
        for (const std::string& path : entry.newKeys) t.addNewKey.run().bind(1, id).bind(2, path).step();
        for (std::size_t k = 0; k < change.key.size(); ++k) {
            const KeyImage& key = change.key[k];
            t.addKey.run().bind(1, id).bind(2, number(k)).bind(3, key.path).bind(4, std::int64_t{key.geloescht}).bind(5, std::int64_t{key.created}).bind(6, std::int64_t{knowsAfterwards(entry, k)}).step();
            addImage(id, number(k), key);
            if (knowsAfterwards(entry, k)) addImage(id, afterwards(number(k)), *entry.afterwards[k]);
        }
        for (std::size_t k = 0; k < change.dateien.size(); ++k) {
            const FileImage& file = change.dateien[k];
            t.addFile.run().bind(1, id).bind(2, number(k)).bind(3, file.datei).bind(4, std::int64_t{file.there})
                .bindBytes(5, file.contents.data(), file.contents.size()).bindBytes(6, file.neu.data(), file.neu.size()).bind(7, std::int64_t{file.written}).step();
        }
    });
    return id;
}

void Journal::addImage(std::int64_t nummer, std::int64_t place, const KeyImage& image) {
    Tables& t = tables();
    for (std::size_t n = 0; n < image.unterschluessel.size(); ++n) {
        const KeyDetails details = n < image.details.size() ? image.details[n] : KeyDetails{};
        t.addSubKey.run().bind(1, nummer).bind(2, place).bind(3, number(n)).bind(4, image.unterschluessel[n])
            .bindBytes(5, details.className.data(), details.className.size()).bind(6, static_cast<std::int64_t>(details.written))
            .bindBytes(7, details.descriptor.data(), details.descriptor.size())
            .bind(8, std::int64_t{details.flags}).bind(9, std::int64_t{details.userFlags}).step();
    }
    for (std::size_t n = 0; n < image.values.size(); ++n) {
        const auto& [unter, wert] = image.values[n];
        t.addSubValue.run().bind(1, nummer).bind(2, place).bind(3, number(n)).bind(4, unter).bind(5, wert.name.text())
            .bind(6, static_cast<std::int64_t>(wert.value.type)).bindBytes(7, wert.value.bytes.data(), wert.value.bytes.size()).step();
    }
}

void Journal::written(std::int64_t nummer, std::size_t value, const ValueChange& content) {
    guarded([&](Tables& t) {
        auto use = t.addValue.run();
        use.bind(1, nummer).bind(2, number(value)).bind(3, content.path).bind(4, std::int64_t{content.TippIndex});
        bindRaw(use, 5, content.alt);
        bindRaw(use, 7, content.neu);
        use.bind(9, std::int64_t{content.written});
        content.name ? use.bind(10, *content.name) : use.bindNull(10);
        use.step();
    });
}

void Journal::finish(std::int64_t nummer, const JournalEntry& entry) {
    transaction([&] {
        Tables& t = tables();
        const Change& change = entry.change;
        for (std::size_t k = 0; k < change.values.size(); ++k) written(nummer, k, change.values[k]);
        for (std::size_t k = 0; k < change.key.size(); ++k) {
            const bool known = knowsAfterwards(entry, k);
            t.markKey.run().bind(1, nummer).bind(2, number(k)).bind(3, std::int64_t{change.key[k].geloescht}).bind(4, std::int64_t{known}).step();
            for (Statement* rows : {&t.dropSubKeys, &t.dropSubValues}) rows->run().bind(1, nummer).bind(2, afterwards(number(k))).step();
            if (known) addImage(nummer, afterwards(number(k)), *entry.afterwards[k]);
        }
        for (std::size_t k = 0; k < change.dateien.size(); ++k)
            t.markFile.run().bind(1, nummer).bind(2, number(k)).bind(3, std::int64_t{change.dateien[k].written}).step();
        finished(nummer);
    });
}

void Journal::finished(std::int64_t nummer) {
    guarded([&](Tables& t) { t.markFinished.run().bind(1, nummer).step(); });
}

void Journal::remove(std::int64_t nummer) {
    transaction([&] {
        for (const char* table : {"wert", "paar", "neuerschluessel", "schluessel", "unterschluessel", "unterwert", "datei"})
            Statement(tables().db(), fmt::format("DELETE FROM {} WHERE aenderung = ?", table).c_str()).run().bind(1, nummer).step();
        Statement(tables().db(), "DELETE FROM aenderung WHERE nummer = ?").run().bind(1, nummer).step();
    });
}

void Journal::takenBack(std::int64_t nummer, std::int64_t durch) {
    guarded([&](Tables& t) { t.markTakenBack.run().bind(1, nummer).bind(2, durch).step(); });
}

void Journal::hide(std::int64_t nummer) {
    guarded([&](Tables& t) { t.hideChange.run().bind(1, nummer).step(); });
}

std::vector<JournalHeader> Journal::heads() {
    return guarded([&](Tables& t) {
        std::vector<JournalHeader> heads;
        Statement all(t.db(), (std::string(Columns) + "ORDER BY nummer").c_str());
        for (auto row = all.run(); row.step();) heads.push_back(headFrom(row));
        return heads;
    });
}

std::vector<std::pair<JournalHeader, std::string>> Journal::withoutLine() {
    return guarded([&](Tables& t) {
        std::vector<std::pair<JournalHeader, std::string>> found;
        Statement heads(t.db(), fmt::format("{}WHERE aufgehobendurch = 0 AND (zeile IS NOT NULL OR ausgeblendet = 0 AND art < {}) ORDER BY nummer DESC", Columns, FirstUndo).c_str());
        std::string next;   // line, seen from the change before it
        for (auto row = heads.run(); row.step();) {
            JournalHeader head = headFrom(row);
            if (head.zeile) next = *head.zeile;
            else found.emplace_back(std::move(head), next);
        }
        std::reverse(found.begin(), found.end());
        return found;
    });
}

bool Journal::hasWithoutLine() {
    return guarded([&](Tables& t) {
        static_assert(FirstUndo == 8);
        return t.database->number("SELECT EXISTS(SELECT 1 FROM aenderung WHERE zeile IS NULL AND aufgehobendurch = 0 AND ausgeblendet = 0 AND art < 8)") != 0;
    });
}

std::vector<std::int64_t> Journal::unfinished() {
    return guarded([&](Tables& t) {
        std::vector<std::int64_t> found;
        Statement all(t.db(), "SELECT nummer FROM aenderung WHERE (fertig = 0 OR zeilefehlt != 0) AND fertig = 0 ORDER BY nummer");
        for (auto row = all.run(); row.step();) found.push_back(row.number(0));
        return found;
    });
}

std::optional<JournalHeader> Journal::head(std::int64_t nummer) {
    return guarded([&](Tables& t) -> std::optional<JournalHeader> {
        Statement one(t.db(), (std::string(Columns) + "WHERE nummer = ?").c_str());
        auto row = one.run();
        row.bind(1, nummer);
        if (!row.step()) return std::nullopt;
        return headFrom(row);
    });
}

void Journal::readParts(JournalEntry& entry) {
    Tables& t = tables();
    const auto each = [&](const char* sql, auto take) {
        Statement statement(t.db(), sql);
        auto row = statement.run();
        row.bind(1, entry.nummer);
        while (row.step()) take(row);
    };
    Change& change = entry.change;
    each(fmt::format("SELECT {} FROM wert WHERE aenderung = ? ORDER BY nr", ValueColumns).c_str(), [&](auto& row) { change.values.push_back(valueFrom(row, 0, entry.machineName)); });
    each("SELECT pfad FROM paar WHERE aenderung = ? ORDER BY nr", [&](auto& row) { entry.pairs.push_back(row.text(0)); });
    each("SELECT pfad FROM neuerschluessel WHERE aenderung = ?", [&](auto& row) { entry.newKeys.push_back(row.text(0)); });
    std::vector<std::int64_t> places;
    each("SELECT pfad, geloescht, angelegt, nachher, nr FROM schluessel WHERE aenderung = ? ORDER BY nr", [&](auto& row) {
        change.key.push_back({entry.machineName, row.text(0), {}, {}, row.number(1) != 0, row.number(2) != 0, {}});
        entry.afterwards.emplace_back();
        if (row.number(3) != 0) entry.afterwards.back() = KeyImage{entry.machineName, row.text(0), {}, {}, false, false, {}};
        places.push_back(row.number(4));
    });
    std::unordered_map<std::int64_t, KeyImage*> images;
    for (std::size_t k = 0; k < places.size(); ++k) {
        images[places[k]] = &change.key[k];
        if (entry.afterwards[k]) images[afterwards(places[k])] = &*entry.afterwards[k];
    }
    const auto imageAt = [&](auto& row) {
        const auto found = images.find(row.number(0));
        return found == images.end() ? nullptr : found->second;
    };
    each("SELECT nr, unter, klasse, geschrieben, rechte, merkmale, eigene FROM unterschluessel WHERE aenderung = ? ORDER BY nr, folge", [&](auto& row) {
        KeyImage* const image = imageAt(row);
        if (image == nullptr) return;
        image->unterschluessel.push_back(row.text(1));
        image->details.push_back({row.bytes(2), static_cast<std::uint64_t>(row.number(3)), row.bytes(4), false,
                                  static_cast<std::uint16_t>(row.number(5)), static_cast<std::uint16_t>(row.number(6))});
    });
    each("SELECT nr, unter, name, typ, bytes FROM unterwert WHERE aenderung = ? ORDER BY nr, folge", [&](auto& row) {
        if (KeyImage* const image = imageAt(row); image != nullptr)
            image->values.push_back({row.text(1), {ValueName::named(row.text(2)), {static_cast<std::uint32_t>(row.number(3)), row.bytes(4)}}});
    });
    each("SELECT datei, inhalt, vorhanden, neu, geschrieben FROM datei WHERE aenderung = ? ORDER BY nr", [&](auto& row) {
        change.dateien.push_back({row.text(0), textBytes(row, 1), row.number(2) != 0, textBytes(row, 3), row.number(4) != 0});
    });
}

std::optional<JournalEntry> Journal::entry(std::int64_t nummer) {
    const auto found = head(nummer);
    if (!found) return std::nullopt;
    JournalEntry entry;
    static_cast<JournalHeader&>(entry) = *found;
    entry.change.art = entry.art;
    entry.change.tipHeading = entry.überschrift;
    entry.change.tippIndex = static_cast<std::int16_t>(entry.tipp);
    try {
        guarded([&](Tables&) { readParts(entry); });
    } catch (const NumberedError&) {
        const auto tooLong = this->tooLong();
        if (std::find(tooLong.begin(), tooLong.end(), nummer) == tooLong.end()) throw;
        throw NumberedError(errnum::PathFileAccess, fmt::format(messages::JournalZuLang, nummer));
    }
    return entry;
}

std::int64_t Journal::byLine(const std::string& zeile, std::size_t younger) {
    return guarded([&](Tables& t) {
        for (const std::size_t skipped : {younger, std::size_t{0}}) {
            auto row = t.findLine.run();
            row.bind(1, zeile).bind(2, number(skipped));
            if (row.step()) return row.number(0);
        }
        return std::int64_t{0};
    });
}

std::int64_t Journal::adoptLine(const JournalHeader& head) {
    JournalEntry entry;
    static_cast<JournalHeader&>(entry) = head;
    entry.lineOnly = true;
    return add(entry);
}

void Journal::lineDeleted(const JournalHeader& unknown) {
    transaction([&] {
        const auto stands = standing(*unknown.zeile);
        if (!stands) hide(adoptLine(unknown));
        else if (*stands > 0) hide(byLine(*unknown.zeile));
    });
}

std::optional<std::size_t> Journal::standing(const std::string& zeile) {
    return guarded([&](Tables& t) -> std::optional<std::size_t> {
        auto row = t.countLine.run();
        row.bind(1, zeile).step();
        return row.number(0) == 0 ? std::nullopt : std::optional(static_cast<std::size_t>(row.number(1)));
    });
}

std::vector<std::pair<std::string, std::size_t>> Journal::linesThatWent() {
    return guarded([&](Tables& t) {
        std::vector<std::pair<std::string, std::size_t>> found;
        Statement all(t.db(), "SELECT DISTINCT zeile FROM aenderung WHERE zeile IS NOT NULL AND (aufgehobendurch != 0 OR ausgeblendet != 0)");
        for (auto row = all.run(); row.step();) found.emplace_back(row.text(0), 0);
        for (auto& [line, stands] : found) stands = standing(line).value_or(0);
        return found;
    });
}

std::vector<std::string> Journal::linesToCome() {
    return guarded([&](Tables& t) {
        std::vector<std::string> found;
        Statement all(t.db(), "SELECT zeile FROM aenderung WHERE (fertig = 0 OR zeilefehlt != 0) AND zeilefehlt != 0 AND zeile IS NOT NULL ORDER BY nummer");
        for (auto row = all.run(); row.step();) found.push_back(row.text(0));
        return found;
    });
}

void Journal::lineIsThere() {
    guarded([&](Tables& t) { t.database->execute("UPDATE aenderung SET zeilefehlt = 0 WHERE (fertig = 0 OR zeilefehlt != 0) AND zeilefehlt != 0"); });
}

std::int64_t Journal::lastTakenBack() {
    return guarded([&](Tables& t) { return t.database->number("SELECT nummer FROM aenderung WHERE aufgehobendurch != 0 AND art < 8 ORDER BY aufgehobendurch DESC LIMIT 1"); });
}

bool Journal::someTakenBackSince(std::int64_t nummer) {
    return guarded([&](Tables& t) {
        Statement some(t.db(), "SELECT EXISTS(SELECT 1 FROM aenderung WHERE nummer < ?1 AND aufgehobendurch > ?1)");
        auto row = some.run();
        row.bind(1, nummer);
        return row.step() && row.number(0) != 0;
    });
}

std::vector<std::pair<JournalHeader, std::string>> Journal::keysOfUndone() {
    return guarded([&](Tables& t) {
        std::vector<std::pair<JournalHeader, std::string>> found;
        Statement all(t.db(), "SELECT a.rechner, a.lokal, a.sid, n.pfad FROM neuerschluessel n JOIN aenderung a ON a.nummer = n.aenderung WHERE a.aufgehobendurch != 0");
        for (auto row = all.run(); row.step();) {
            JournalHeader head;
            head.machineName = row.text(0), head.localMachine = row.text(1), head.sid = row.text(2);
            found.emplace_back(std::move(head), row.text(3));
        }
        return found;
    });
}

// All tables are read along in the order of the changes.
void Journal::eachStep(const std::function<void(JournalStep&)>& take) {
    guarded([&](Tables& t) {
        const std::string readable = fmt::format("aenderung NOT IN ({})", fmt::join(tooLongChanges(*t.database), ", "));
        PartList values(t.db(), fmt::format("SELECT aenderung, {} FROM wert WHERE geschrieben = 1 AND {} ORDER BY aenderung, nr", ValueColumns, readable));
        PartList keys(t.db(), fmt::format("SELECT aenderung, nr, pfad FROM schluessel WHERE (nachher != 0 OR geloescht OR angelegt OR "
                                           "aenderung IN (SELECT nummer FROM aenderung WHERE art >= {})) AND {} ORDER BY aenderung, nr", FirstUndo, readable));
        PartList files(t.db(), fmt::format("SELECT aenderung, datei, inhalt, vorhanden, neu FROM datei WHERE geschrieben = 1 AND {} ORDER BY aenderung, nr", readable));
        Statement keyValues(t.db(), "SELECT unter, name, typ, bytes FROM unterwert WHERE aenderung = ? AND nr = ? ORDER BY folge");
        Statement heads(t.db(), (std::string(Columns) + "ORDER BY nummer").c_str());
        for (auto row = heads.run(); row.step();) {
            JournalStep step;
            static_cast<JournalHeader&>(step) = headFrom(row);
            values.of(step.nummer, [&](auto& value) { step.values.push_back(valueFrom(value, 1, step.machineName)); });
            keys.of(step.nummer, [&](auto& key) {
                KeyImage& image = step.key.emplace_back(KeyImage{step.machineName, key.text(2), {}, {}, false, false, {}});
                auto content = keyValues.run();
                content.bind(1, step.nummer).bind(2, afterwards(key.number(1)));
                while (content.step())
                    image.values.push_back({content.text(0), {ValueName::named(content.text(1)), {static_cast<std::uint32_t>(content.number(2)), content.bytes(3)}}});
            });
            files.of(step.nummer, [&](auto& file) { step.dateien.push_back({file.text(1), textBytes(file, 2), file.number(3) != 0, textBytes(file, 4), true}); });
            if (!step.values.empty() || !step.key.empty() || !step.dateien.empty()) take(step);
        }
    });
}

std::vector<std::int64_t> Journal::tooLong() {
    return guarded([](Tables& t) { return tooLongChanges(*t.database); });
}

void Journal::forget(const std::vector<std::int64_t>& numbers) {
    transaction([&] { forgetChanges(*tables().database, numbers); });
    guarded([&](Tables& t) {   // else the contents stay readable in pages that nobody uses
        t.database->execute("VACUUM");
        t.database->execute("PRAGMA wal_checkpoint(TRUNCATE)");
    });
}

}  // namespace brenvik
