#pragma once
// The rules of the tip database: what a row must have so that the program shows, reads and writes what is meant.
#include "Model.h"

namespace brenvik::tipbuild {

void checkAll(const Stock& stock, Complaints& complaints);

// A row by its kind and data type; entries is the number of entries of its Tip.
void checkKind(const Zeile& row, std::size_t entries, Complaints& complaints);

// Values that several Tips of the same system have: a change in one of them shows in the others.
void hintSharedValues(const Stock& stock, Complaints& complaints);

}  // namespace brenvik::tipbau
