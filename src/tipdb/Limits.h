#pragma once
// How big a tip database may be. Beyond that it is refused with one message: the program keeps the whole of it in memory, and
// the tree that it makes of it.
#include <cstddef>
#include <string>

#include "tipdb/DatabaseErrors.h"

namespace brenvik {

struct TipDatabase;

inline constexpr std::size_t MaxTextBytes = 128u << 10;    // of a single text, in UTF-8
inline constexpr std::size_t MaxTableBytes = 256u << 20;   // of all texts of a table
inline constexpr std::size_t MaxTableCells = 16u << 20;
inline constexpr std::size_t MaxTreeNodes = 500'000;       // of any view of the tree
inline constexpr std::size_t MaxTreeLevels = 100;          // below its root

// The refusal: what there is too much of, and how much there may be.
DatabaseErrors tooBig(const std::string& what, std::size_t most);

// Measures the tree that the tables would make, before it is made. Throws tooBig.
void checkTreeSize(const TipDatabase& database);

}  // namespace brenvik
