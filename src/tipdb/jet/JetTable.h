#pragma once
// Tables of a Jet file: catalogue, definitions and rows in table order. A row that was moved to another page comes in
// its old place. Any damage inside a table that is read is a failure; rows are never left out silently.
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "tipdb/Table.h"
#include "tipdb/jet/JetFile.h"

namespace brenvik::jet {

// First page of the definition of each user table that the catalogue names, by exact name. Throws Damaged.
class Catalogue {
public:
    explicit Catalogue(const JetFile& file);
    std::optional<std::uint32_t> find(std::string_view table) const;

private:
    std::shared_ptr<const Table> objects_;
    std::size_t id_ = 0, name_ = 0, type_ = 0;
};

std::shared_ptr<const Table> readTable(const JetFile& file, std::uint32_t definitionPage, const std::string& name);

}  // namespace brenvik::jet
