#pragma once
// Opening the tip database at start, reading it into the tables in memory, and looking up single texts in it.
#include <filesystem>
#include <string>

#include "tipdb/Schema.h"
#include "tipdb/TipdbContext.h"

namespace brenvik {

enum class LoadResult {
    Loaded,
    ProgramEnd   // the user has been told why; at start the program ends
};

// Opens the database (host path) and fills the tables in memory. The database that was open before stays as it is
// until the new one is known to be good, so a failed choice of another one changes nothing.
LoadResult LoadDB(TipdbContext& ctx, const std::filesystem::path& Pfad);

// Another one in place of the one that is open. Unlike at start a file without the tables of a tip database is refused, and
// whatever it is that refuses it is told in one box. False: the present one stays.
bool loadOtherDatabase(TipdbContext& ctx, const std::filesystem::path& Pfad);

// Closes the shared record set and the connection.
void DBClose(TipdbContext& ctx);

// Text of a column in the row with that Index, from the shared record set, which stands there afterwards. A column
// without content takes over the text of the row that Verweis names; the key path is never taken over, but on the NT
// family SchlüsselNT goes before it. Failures are reported; the text is then empty.
std::string DBTextSuchen(TipdbContext& ctx, spalte::Spalte Spalte, std::int32_t Index);

// True if the version text is enough; compared as text, so "10.0" is not.
bool mdacSuffices(const std::string& version);

// The password that a protected database must have; decoded when asked for, and kept out of the trace.
std::string databasePassword(TipdbContext& ctx);

}  // namespace brenvik
