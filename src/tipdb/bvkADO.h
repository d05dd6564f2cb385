#pragma once
// The database layer: one in-memory SQL engine, filled from a Jet or a SQLite file, behind the four operations that the
// program knows. All texts are UTF-8. A null column and an empty text are different things.
#include <cstdint>
#include <memory>
#include <string>
// REPLACED by the tip database's author; this outline only fixes the names that others use.
namespace brenvik {
class Connection {};
class RecordSet {};
class bvkADO {};
}
