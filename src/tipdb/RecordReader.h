#pragma once
// The record reader: one Tip from its head row and its further rows into aktuellerTipp. Failures are reported under
// "DBTippRead"; the record then holds what was read so far.
#include <string>

#include "tipdb/TipdbContext.h"

namespace brenvik {

// Reads the Tip whose head row is the current row of objRS.
void DBTippRead(TipdbContext& ctx);

// Moves objRS forward from where it stands to the row with that heading, then reads the Tip.
void DBTippSuchen(TipdbContext& ctx, const std::string& Überschrift);

}  // namespace brenvik
