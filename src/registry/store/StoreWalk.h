#pragma once
// A key of the store file with everything below it, told to a sink. Each table is read by one statement that goes on from
// key to key as long as the tree was made in the order in which it is told, which most trees were; else it starts anew.
// Failures are sqlite::Error.
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "registry/store/StoreTables.h"

namespace brenvik {

class StoreWalk {
public:
    StoreWalk(sqlite::Database& database, StoreTables& tables);
    void below(std::int64_t key, TreeSink& sink);   // the key's values, then its sub keys

private:
    // Rows in the order of a number in their first column.
    class Rows {
    public:
        Rows(sqlite::Database& database, const char* sql) : statement_(database.handle(), sql) {}
        bool at(std::int64_t number);   // goes to its first row; false: it has none
        bool next();                    // false: the number has no more rows
        sqlite::Statement::Use& row() { return *use_; }

    private:
        bool step();
        sqlite::Statement statement_;
        std::optional<sqlite::Statement::Use> use_;
        std::int64_t from_ = 0, current_ = 0;   // no number from from_ to below current_ has a row
        bool ended_ = false;
    };
    struct Child {
        std::int64_t id = 0;
        std::string name;
        KeyDetails details;
    };
    void values(std::int64_t key, TreeSink& sink);
    void countTold();
    std::vector<Child> children(std::int64_t key);
    const Bytes& descriptor(std::int64_t number);

    StoreTables& tables_;
    Rows keys_, valueIds_, values_;
    std::int64_t told_ = 0, most_;   // no more keys can be told than there are
    std::vector<std::int64_t> ids_;
    std::string name_, folded_;
    RawValue value_;
    std::unordered_map<std::int64_t, Bytes> descriptors_;
};

}  // namespace brenvik
