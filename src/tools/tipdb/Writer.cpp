#include "Writer.h"

#include <sqlite3.h>

#include <algorithm>
#include <map>
#include <memory>

#include "frame/Errors.h"
#include "frame/files/FileSystem.h"

namespace brenvik::tipbuild {

namespace {

constexpr const char* Schema =
    "PRAGMA page_size=4096;"
    "CREATE TABLE \"Version\"(\"Version\" TEXT,\"Datum\" TEXT,\"Format\" TEXT);"
    "CREATE TABLE \"Gruppennamen\"(\"Gruppenname\" TEXT,\"Gruppe\" INTEGER,\"Beschreibung\" TEXT);"
    "CREATE TABLE \"Treebaum\"(\"Nummer\" INTEGER,\"Vorgänger\" INTEGER,\"Ebene\" INTEGER,\"Gruppe\" INTEGER,\"Nachfolger\" INTEGER);"
    "CREATE TABLE \"RegDaten\"(\"Index\" INTEGER,\"Gruppen\" TEXT,\"Hauptschlüssel\" TEXT,\"Schlüssel\" TEXT,\"SchlüsselNT\" TEXT,\"Wertname\" TEXT,"
    "\"Datentyp\" INTEGER,\"Ausgabeart\" INTEGER,\"Überschrift\" TEXT,\"Reserve9\" TEXT,\"Beschreibung\" TEXT,\"HilfeNummer\" INTEGER,\"AnzahlWerte\" INTEGER,"
    "\"Reserve13\" INTEGER,\"WertEin\" TEXT,\"Anzeigetext\" TEXT,\"WertAus\" TEXT,\"Werteliste\" TEXT,\"Standardwert\" TEXT,\"TypAnpassen\" INTEGER,"
    "\"Symbol\" INTEGER,\"Verweis\" INTEGER,\"Win95\" INTEGER,\"Win98\" INTEGER,\"WinME\" INTEGER,\"WinNT\" INTEGER,\"Win2000\" INTEGER,\"NeuInVersion\" TEXT,"
    "\"Neustart\" INTEGER,\"INITipp\" INTEGER,\"Beschriftung\" TEXT,\"WinXP\" INTEGER,\"ADMExport\" INTEGER,\"HauptIndex\" INTEGER);";

class Target {
public:
    Target() {
        sqlite3* raw = nullptr;
        const int rc = sqlite3_open_v2(":memory:", &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_MEMORY, nullptr);
        db_.reset(raw);
        if (rc != SQLITE_OK) fail();
        run(Schema);
        run("BEGIN");
    }
    [[noreturn]] void fail() const { throw NumberedError(errnum::Internal, std::string("SQLite: ") + sqlite3_errmsg(db_.get())); }
    void run(const char* sql) const {
        if (sqlite3_exec(db_.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) fail();
    }
    // The finished file's bytes.
    std::string bytes() const {
        run("COMMIT");
        sqlite3_int64 size = 0;
        const std::unique_ptr<unsigned char, void (*)(void*)> image(sqlite3_serialize(db_.get(), "main", &size, 0), sqlite3_free);
        if (!image) fail();
        return {reinterpret_cast<const char*>(image.get()), static_cast<std::size_t>(size)};
    }
    sqlite3* get() const { return db_.get(); }

private:
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> db_{nullptr, sqlite3_close};
};

class Insertion {
public:
    Insertion(const Target& target, const std::string& table, int columns) : target_(target) {
        std::string sql = "INSERT INTO \"" + table + "\" VALUES(?";
        for (int i = 1; i < columns; ++i) sql += ",?";
        sqlite3_stmt* raw = nullptr;
        if (sqlite3_prepare_v2(target.get(), (sql + ")").c_str(), -1, &raw, nullptr) != SQLITE_OK) target.fail();
        statement_.reset(raw);
    }
    Insertion& add(std::int64_t value) {
        sqlite3_bind_int64(statement_.get(), ++column_, value);
        return *this;
    }
    Insertion& add(const std::string& value) {
        sqlite3_bind_text(statement_.get(), ++column_, value.c_str(), static_cast<int>(value.size()), SQLITE_TRANSIENT);
        return *this;
    }
    template <class T> Insertion& add(const std::optional<T>& value) {
        if (value) return add(*value);
        sqlite3_bind_null(statement_.get(), ++column_);
        return *this;
    }
    void store() {
        if (sqlite3_step(statement_.get()) != SQLITE_DONE) target_.fail();
        sqlite3_reset(statement_.get());
        column_ = 0;
    }

private:
    const Target& target_;
    std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement_{nullptr, sqlite3_finalize};
    int column_ = 0;
};

// The groups from top to bottom of the tree, with their levels; the level below the root is 1.
struct Node {
    std::int64_t gruppe, ebene;
};

using Kinder = std::map<std::int64_t, std::vector<std::int64_t>>;   // numbers of the groups below each, in their order

void addChildren(const Kinder& children, std::int64_t parent, std::int64_t ebene, std::vector<Node>& out) {
    const auto own = children.find(parent);
    if (own == children.end()) return;
    for (const std::int64_t group : own->second) {
        out.push_back({group, ebene});
        addChildren(children, group, ebene + 1, out);
    }
}

std::vector<Node> treeOf(std::vector<GroupSource> groups) {
    std::stable_sort(groups.begin(), groups.end(), [](const GroupSource& a, const GroupSource& b) {
        return a.sequence != b.sequence ? a.sequence < b.sequence : a.nummer < b.nummer;
    });
    Kinder children;
    for (const GroupSource& g : groups) children[g.above].push_back(g.nummer);
    std::vector<Node> nodes;
    addChildren(children, 0, 1, nodes);
    return nodes;
}

void writeGroups(const Target& target, const Stock& b) {
    Insertion names(target, "Gruppennamen", 3);
    for (const GroupSource& g : b.gruppen) names.add(g.name).add(g.nummer).add(g.beschreibung).store();
    const std::vector<Node> nodes = treeOf(b.gruppen);
    Insertion tree(target, "Treebaum", 5);
    std::int64_t running = 0;
    for (const Node& node : nodes) {
        ++running;
        const std::int64_t predecessor = node.ebene;  // the parent's level plus one
        tree.add(running).add(predecessor).add(node.ebene).add(node.gruppe).add(running).store();
    }
}

std::string joined(const std::vector<std::int64_t>& numbers) {
    std::string text;
    for (const std::int64_t n : numbers) text += (text.empty() ? "" : ",") + std::to_string(n);
    return text;
}

void writeRows(const Target& target, const Stock& b) {
    const std::optional<std::int64_t> nothing;
    Insertion rows(target, "RegDaten", 34);
    for (const Zeile& z : b.lines) {
        rows.add(z.Index).add(joined(z.Gruppen)).add(z.Hauptschlüssel).add(z.Schlüssel).add(z.SchlüsselNT).add(z.Wertname);
        rows.add(z.Datentyp).add(z.Ausgabeart).add(z.Überschrift).add(nothing).add(z.Beschreibung).add(z.HilfeNummer).add(z.AnzahlWerte);
        rows.add(nothing).add(z.WertEin).add(z.Anzeigetext).add(z.WertAus).add(z.Werteliste).add(z.Standardwert).add(z.TypAnpassen);
        rows.add(z.Symbol).add(z.Verweis).add(std::int64_t{z.Win95}).add(std::int64_t{z.Win98}).add(std::int64_t{z.WinME}).add(std::int64_t{z.WinNT});
        rows.add(std::int64_t{z.Win2000}).add(z.NeuInVersion).add(z.Neustart).add(std::int64_t{z.INITipp}).add(z.Beschriftung);
        rows.add(std::int64_t{z.WinXP}).add(std::int64_t{z.ADMExport}).add(z.HauptIndex).store();
    }
}

}  // namespace

void writeDatabase(const Stock& stock, const std::filesystem::path& file) {
    std::string bytes;
    {
        const Target target;
        Insertion versions(target, "Version", 3);
        for (const Version& v : stock.versions) versions.add(v.Version).add(v.Datum).add(v.Format).store();
        writeGroups(target, stock);
        writeRows(target, stock);
        bytes = target.bytes();
    }
    writeFileAtomic(file, bytes);
}

}  // namespace brenvik::tipbau
