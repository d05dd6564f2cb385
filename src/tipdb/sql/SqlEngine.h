#pragma once
// The one SQL engine: statements over tables in memory, read-only. The tables are not copied; the engine reads their
// cells in place, finds rows by number through the tables' indexes, and delivers them in table order unless the
// statement names an order. Texts compare and "like" works as TextVergleich has it.
#include <memory>
#include <string>
#include <vector>

#include "tipdb/Table.h"

struct sqlite3;

namespace brenvik {

class SqlEngine {
public:
    explicit SqlEngine(Records data);
    ~SqlEngine();
    SqlEngine(const SqlEngine&) = delete;
    SqlEngine& operator=(const SqlEngine&) = delete;

    // Throws DatabaseErrors with a German description.
    std::shared_ptr<const Table> query(const std::string& sql);

private:
    std::shared_ptr<const Table> run(const std::string& sql);

    Records data_;
    sqlite3* db_ = nullptr;
};

}  // namespace brenvik
