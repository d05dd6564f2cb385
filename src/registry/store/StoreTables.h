#pragma once
// The tables of the store file by key number: one prepared statement for each thing that is asked of them.
// Failures are sqlite::Error.
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "registry/store/RegStore.h"
#include "registry/store/Sqlite.h"

namespace brenvik {

struct KeyRef {
    std::int64_t id = 0;
    bool readOnly = false;
};

struct StoredValue {
    std::int64_t id = 0;
    std::string name;
    RawValue value;
};

struct ChildName {
    std::string name;
    std::string folded;   // see foldedBytes
};

// A name as the tables compare it: upper-cased UTF-16, high byte first.
std::string foldedBytes(std::u16string_view upcased);
std::string foldedBytesOf(std::string_view name);   // of a name that is not upper-cased yet

// A file may come from anywhere: names that no path leads to, and types that are none, are its damage (sqlite::Error).
void requireKeyName(std::string_view name, std::string_view folded);
RawValue requireValue(std::string_view name, std::string_view folded, std::int64_t type, Bytes bytes);

class StoreTables {
public:
    explicit StoreTables(sqlite::Database& database) : database_(database) {}

    // What is read while it lives is of one moment: its pending row keeps the read transaction open, which takes
    // less than statements to begin and end one.
    class Snapshot {
    public:
        explicit Snapshot(StoreTables& tables) : row_(tables.statement(Query::DataVersion)) { row_.step(); }
        std::int64_t dataVersion() const { return row_.number(0); }   // changes when another connection has written

    private:
        sqlite::Statement::Use row_;
    };

    void beginWriting() { run(Query::BeginImmediate); }
    void commit() { run(Query::Commit); }
    void rollback() noexcept;
    bool inTransaction() const;
    void savepoint() { run(Query::Savepoint); }
    void release() { run(Query::Release); }
    void rollbackToSavepoint() { run(Query::RollbackTo); }

    std::optional<KeyRef> child(std::int64_t parent, std::string_view folded);
    KeyRef insertKey(std::int64_t parent, std::string_view folded, std::string_view name, std::uint64_t written);
    void eraseKey(std::int64_t key);   // with its values
    bool hasChildren(std::int64_t key);
    std::vector<ChildName> children(std::int64_t key);         // in the order of the folded names
    std::vector<std::string> childrenByAge(std::int64_t key);
    void setWritten(std::int64_t key, std::uint64_t written);
    void setReadOnly(std::int64_t key, bool readOnly);
    KeyDetails details(std::int64_t key);
    void setDetails(std::int64_t key, const KeyDetails& details);

    // Whole trees. Descriptors go by their number, which is the same for equal ones.
    Bytes descriptor(std::int64_t number);
    std::int64_t keepDescriptor(const Bytes& bytes);
    std::int64_t insertWhole(std::int64_t parent, std::string_view folded, std::string_view name, const KeyDetails& details,
                             std::int64_t descriptor);         // the new key's number
    void insertValue(std::int64_t key, std::string_view folded, std::string_view name, const RawValue& value);   // one that is not there
    std::int64_t keyCount();
    bool hasReadOnlyBelow(std::int64_t key);
    void eraseBelow(std::int64_t key);                         // all values and sub keys

    bool hasValue(std::int64_t key, std::string_view folded);
    std::optional<RawValue> value(std::int64_t key, std::string_view folded);
    std::vector<StoredValue> values(std::int64_t key);         // in the order they were made
    void putValue(std::int64_t key, std::string_view folded, std::string_view name, const RawValue& value);
    void putFirstValue(std::int64_t key, std::string_view folded, std::string_view name, const RawValue& value);   // quicker where it is mostly new
    bool eraseValue(std::int64_t key, std::string_view folded);

private:
    enum class Query : std::uint8_t {
        BeginImmediate, Commit, Rollback, Savepoint, Release, RollbackTo, DataVersion,
        Child, InsertKey, EraseKey, EraseKeyValues, HasChildren, Children, ChildrenByAge, SetWritten, SetReadOnly,
        Details, SetDetails, KeyCount, InsertDescriptor, FindDescriptor, Descriptor,
        InsertWhole, ReadOnlyBelow, EraseValuesBelow, EraseKeysBelow,
        HasValue, Value, Values, PutValue, InsertValue, EraseValue, Count
    };
    static const char* sqlOf(Query query);
    sqlite::Statement& statement(Query query);
    void run(Query query) { statement(query).run().step(); }

    sqlite::Database& database_;
    std::array<std::unique_ptr<sqlite::Statement>, static_cast<std::size_t>(Query::Count)> statements_;
};

}  // namespace brenvik
