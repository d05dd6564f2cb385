#include "registry/store/StoreTables.h"

#include <sqlite3.h>

#include <algorithm>
#include <limits>

#include "registry/Upcase.h"
#include "registry/Wtf8.h"
#include "registry/store/RegLimits.h"

namespace brenvik {

namespace {

char upperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

}  // namespace

std::string foldedBytes(std::u16string_view upcased) {
    std::string bytes;
    bytes.reserve(2 * upcased.size());
    for (const char16_t unit : upcased) {
        bytes += static_cast<char>(unit >> 8);
        bytes += static_cast<char>(unit & 0xFF);
    }
    return bytes;
}

std::string foldedBytesOf(std::string_view name) {
    std::string bytes(2 * name.size(), '\0');
    for (std::size_t i = 0; i < name.size(); ++i) {
        const char c = name[i];
        if (static_cast<unsigned char>(c) >= 0x80) return foldedBytes(foldName(name));
        bytes[2 * i + 1] = upperAscii(c);
    }
    return bytes;
}

namespace {

// Most names are ASCII, and every key and value of a walk comes by here.
bool foldsPlainly(std::string_view name, std::string_view folded) {
    if (folded.size() != 2 * name.size()) return false;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (static_cast<unsigned char>(name[i]) >= 0x80 || folded[2 * i] != '\0' || folded[2 * i + 1] != upperAscii(name[i])) return false;
    }
    return true;
}

void requireName(std::string_view name, std::string_view folded, std::size_t most) {
    const bool fits = foldsPlainly(name, folded) || (foldedBytesOf(name) == folded && fromUtf16(toUtf16(name)) == name);
    if (!fits || folded.size() > 2 * most) throw sqlite::Error(SQLITE_CORRUPT, "name");
}

}  // namespace

void requireKeyName(std::string_view name, std::string_view folded) {
    requireName(name, folded, MaxKeyName);
    if (name.empty() || name.find('\\') != std::string_view::npos) throw sqlite::Error(SQLITE_CORRUPT, "name");
}

RawValue requireValue(std::string_view name, std::string_view folded, std::int64_t type, Bytes bytes) {
    requireName(name, folded, MaxValueName);
    if (type < 0 || type > std::numeric_limits<std::uint32_t>::max() || bytes.size() > MaxValueBytes) throw sqlite::Error(SQLITE_CORRUPT, "value");
    return {static_cast<std::uint32_t>(type), std::move(bytes)};
}

const char* StoreTables::sqlOf(Query query) {
    switch (query) {
        case Query::BeginImmediate: return "BEGIN IMMEDIATE";
        case Query::Commit: return "COMMIT";
        case Query::Rollback: return "ROLLBACK";
        case Query::Savepoint: return "SAVEPOINT part";
        case Query::Release: return "RELEASE part";
        case Query::RollbackTo: return "ROLLBACK TO part";
        case Query::DataVersion: return "PRAGMA data_version";
        case Query::Child: return "SELECT id, readonly FROM key WHERE parent = ?1 AND folded = ?2";
        case Query::InsertKey: return "INSERT INTO key(parent, folded, name, written) VALUES (?1, ?2, ?3, ?4)";
        case Query::EraseKey: return "DELETE FROM key WHERE id = ?1";
        case Query::EraseKeyValues: return "DELETE FROM value WHERE key = ?1";
        case Query::HasChildren: return "SELECT 1 FROM key WHERE parent = ?1 LIMIT 1";
        case Query::Children: return "SELECT name, folded FROM key WHERE parent = ?1 ORDER BY folded";
        case Query::ChildrenByAge: return "SELECT name, folded FROM key WHERE parent = ?1 ORDER BY id";
        case Query::SetWritten: return "UPDATE key SET written = ?2 WHERE id = ?1";
        case Query::SetReadOnly: return "UPDATE key SET readonly = ?2 WHERE id = ?1";
        case Query::Details:
            return "SELECT k.class, k.written, d.bytes, k.readonly, k.flags, k.userflags FROM key k LEFT JOIN descriptor d ON d.id = k.descriptor WHERE k.id = ?1";
        case Query::SetDetails:
            return "UPDATE key SET class = ?2, written = coalesce(?3, written), descriptor = ?4, readonly = ?5, flags = ?6, userflags = ?7 WHERE id = ?1";
        case Query::KeyCount: return "SELECT count(*) FROM key";
        case Query::InsertDescriptor: return "INSERT INTO descriptor(bytes) VALUES (?1) ON CONFLICT DO NOTHING";
        case Query::FindDescriptor: return "SELECT id FROM descriptor WHERE bytes = ?1";
        case Query::Descriptor: return "SELECT bytes FROM descriptor WHERE id = ?1";
        case Query::InsertWhole: return "INSERT INTO key(parent, folded, name, written, class, descriptor, flags, userflags) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8)";
        case Query::ReadOnlyBelow: return "WITH RECURSIVE below(id) AS (VALUES (?1) UNION SELECT k.id FROM key k JOIN below b ON k.parent = b.id) "
                   "SELECT 1 FROM key WHERE id IN below AND readonly <> 0 LIMIT 1";
        case Query::EraseValuesBelow: return "WITH RECURSIVE below(id) AS (VALUES (?1) UNION SELECT k.id FROM key k JOIN below b ON k.parent = b.id) "
                   "DELETE FROM value WHERE key IN below";
        case Query::EraseKeysBelow: return "WITH RECURSIVE below(id) AS (VALUES (?1) UNION SELECT k.id FROM key k JOIN below b ON k.parent = b.id) "
                   "DELETE FROM key WHERE id IN below AND id <> ?1";
        case Query::HasValue: return "SELECT 1 FROM value WHERE key = ?1 AND folded = ?2";
        case Query::Value: return "SELECT type, bytes FROM value WHERE key = ?1 AND folded = ?2";
        case Query::Values: return "SELECT id, name, type, bytes, folded FROM value WHERE key = ?1";   // sorting few rows here is quicker than there
        case Query::PutValue:   // the name keeps its first form
            return "INSERT INTO value(key, folded, type, bytes, name) VALUES (?1, ?2, ?3, ?4, ?5) "
                   "ON CONFLICT(key, folded) DO UPDATE SET type = excluded.type, bytes = excluded.bytes";
        case Query::InsertValue: return "INSERT INTO value(key, folded, type, bytes, name) VALUES (?1, ?2, ?3, ?4, ?5)";
        case Query::EraseValue: return "DELETE FROM value WHERE key = ?1 AND folded = ?2";
        case Query::Count: break;
    }
    return "";
}

sqlite::Statement& StoreTables::statement(Query query) {
    auto& kept = statements_[static_cast<std::size_t>(query)];
    if (!kept) kept = std::make_unique<sqlite::Statement>(database_.handle(), sqlOf(query));
    return *kept;
}

void StoreTables::rollback() noexcept {
    try {
        if (inTransaction()) run(Query::Rollback);
    } catch (const sqlite::Error&) {
        // The engine has given the transaction up by itself; nothing of it is left.
    }
}

bool StoreTables::inTransaction() const { return sqlite3_get_autocommit(database_.handle()) == 0; }

std::optional<KeyRef> StoreTables::child(std::int64_t parent, std::string_view folded) {
    auto row = statement(Query::Child).run();
    row.bind(1, parent).bindBytes(2, folded.data(), folded.size());
    if (!row.step()) return std::nullopt;
    return KeyRef{row.number(0), row.number(1) != 0};
}

KeyRef StoreTables::insertKey(std::int64_t parent, std::string_view folded, std::string_view name, std::uint64_t written) {
    auto row = statement(Query::InsertKey).run();
    row.bind(1, parent).bindBytes(2, folded.data(), folded.size()).bind(3, name).bind(4, static_cast<std::int64_t>(written));
    row.step();
    return {sqlite3_last_insert_rowid(database_.handle()), false};
}

void StoreTables::eraseKey(std::int64_t key) {
    statement(Query::EraseKeyValues).run().bind(1, key).step();
    statement(Query::EraseKey).run().bind(1, key).step();
}

std::int64_t StoreTables::keyCount() {
    auto row = statement(Query::KeyCount).run();
    row.step();
    return row.number(0);
}

bool StoreTables::hasChildren(std::int64_t key) { return statement(Query::HasChildren).run().bind(1, key).step(); }

std::vector<ChildName> StoreTables::children(std::int64_t key) {
    std::vector<ChildName> names;
    auto row = statement(Query::Children).run();
    row.bind(1, key);
    while (row.step()) {
        names.push_back({row.text(0), {}});
        row.blob(1, names.back().folded);
        requireKeyName(names.back().name, names.back().folded);
    }
    return names;
}

std::vector<std::string> StoreTables::childrenByAge(std::int64_t key) {
    std::vector<std::string> names;
    std::string folded;
    auto row = statement(Query::ChildrenByAge).run();
    row.bind(1, key);
    while (row.step()) {
        names.push_back(row.text(0));
        row.blob(1, folded);
        requireKeyName(names.back(), folded);
    }
    return names;
}

void StoreTables::setWritten(std::int64_t key, std::uint64_t written) {
    statement(Query::SetWritten).run().bind(1, key).bind(2, static_cast<std::int64_t>(written)).step();
}

void StoreTables::setReadOnly(std::int64_t key, bool readOnly) {
    statement(Query::SetReadOnly).run().bind(1, key).bind(2, std::int64_t{readOnly}).step();
}

KeyDetails StoreTables::details(std::int64_t key) {
    auto row = statement(Query::Details).run();
    row.bind(1, key);
    if (!row.step()) return {};
    return {row.bytes(0), static_cast<std::uint64_t>(row.number(1)), row.bytes(2), row.number(3) != 0,
            static_cast<std::uint16_t>(row.number(4)), static_cast<std::uint16_t>(row.number(5))};
}

std::int64_t StoreTables::keepDescriptor(const Bytes& bytes) {
    statement(Query::InsertDescriptor).run().bindBytes(1, bytes.data(), bytes.size()).step();
    auto row = statement(Query::FindDescriptor).run();
    row.bindBytes(1, bytes.data(), bytes.size());
    return row.step() ? row.number(0) : 0;
}

void StoreTables::setDetails(std::int64_t key, const KeyDetails& details) {
    const std::int64_t descriptor = details.descriptor.empty() ? 0 : keepDescriptor(details.descriptor);
    auto row = statement(Query::SetDetails).run();
    row.bind(1, key).bind(5, std::int64_t{details.readOnly}).bind(6, std::int64_t{details.flags}).bind(7, std::int64_t{details.userFlags});
    if (details.written != KeyDetails::NoTime) row.bind(3, static_cast<std::int64_t>(details.written));
    if (!details.className.empty()) row.bindBytes(2, details.className.data(), details.className.size());
    if (descriptor != 0) row.bind(4, descriptor);
    row.step();
}

Bytes StoreTables::descriptor(std::int64_t number) {
    auto row = statement(Query::Descriptor).run();
    return row.bind(1, number).step() ? row.bytes(0) : Bytes();
}

std::int64_t StoreTables::insertWhole(std::int64_t parent, std::string_view folded, std::string_view name, const KeyDetails& details,
                                      std::int64_t descriptor) {
    auto row = statement(Query::InsertWhole).run();
    row.bind(1, parent).bindBytes(2, folded.data(), folded.size()).bind(3, name).bind(4, static_cast<std::int64_t>(details.written));
    row.bind(7, std::int64_t{details.flags}).bind(8, std::int64_t{details.userFlags});
    if (!details.className.empty()) row.bindBytes(5, details.className.data(), details.className.size());
    if (descriptor != 0) row.bind(6, descriptor);
    row.step();
    return sqlite3_last_insert_rowid(database_.handle());
}

bool StoreTables::hasReadOnlyBelow(std::int64_t key) { return statement(Query::ReadOnlyBelow).run().bind(1, key).step(); }

void StoreTables::eraseBelow(std::int64_t key) {
    statement(Query::EraseValuesBelow).run().bind(1, key).step();
    statement(Query::EraseKeysBelow).run().bind(1, key).step();
}

bool StoreTables::hasValue(std::int64_t key, std::string_view folded) {
    return statement(Query::HasValue).run().bind(1, key).bindBytes(2, folded.data(), folded.size()).step();
}

std::optional<RawValue> StoreTables::value(std::int64_t key, std::string_view folded) {
    auto row = statement(Query::Value).run();
    row.bind(1, key).bindBytes(2, folded.data(), folded.size());
    if (!row.step()) return std::nullopt;
    return RawValue{static_cast<std::uint32_t>(row.number(0)), row.bytes(1)};
}

std::vector<StoredValue> StoreTables::values(std::int64_t key) {
    std::vector<StoredValue> found;
    std::string folded;
    auto row = statement(Query::Values).run();
    row.bind(1, key);
    while (row.step()) {
        row.blob(4, folded);
        StoredValue& value = found.emplace_back(StoredValue{row.number(0), row.text(1), {}});
        value.value = requireValue(value.name, folded, row.number(2), row.bytes(3));
    }
    std::sort(found.begin(), found.end(), [](const StoredValue& a, const StoredValue& b) { return a.id < b.id; });
    return found;
}

namespace {

void bindValue(sqlite::Statement::Use& row, std::int64_t key, std::string_view folded, const RawValue& value) {
    row.bind(1, key).bindBytes(2, folded.data(), folded.size()).bind(3, std::int64_t{value.type});
    row.bindBytes(4, value.bytes.data(), value.bytes.size());
}

}  // namespace

void StoreTables::putValue(std::int64_t key, std::string_view folded, std::string_view name, const RawValue& value) {
    auto row = statement(Query::PutValue).run();
    bindValue(row, key, folded, value);
    row.bind(5, name).step();
}

void StoreTables::insertValue(std::int64_t key, std::string_view folded, std::string_view name, const RawValue& value) {
    auto row = statement(Query::InsertValue).run();
    bindValue(row, key, folded, value);
    row.bind(5, name).step();
}

void StoreTables::putFirstValue(std::int64_t key, std::string_view folded, std::string_view name, const RawValue& value) {
    try {
        insertValue(key, folded, name, value);
    } catch (const sqlite::Error& error) {
        if (error.extended != SQLITE_CONSTRAINT_UNIQUE) throw;
        putValue(key, folded, name, value);
    }
}

bool StoreTables::eraseValue(std::int64_t key, std::string_view folded) {
    statement(Query::EraseValue).run().bind(1, key).bindBytes(2, folded.data(), folded.size()).step();
    return sqlite3_changes(database_.handle()) > 0;
}

}  // namespace brenvik
