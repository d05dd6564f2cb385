#pragma once
// The program's statements and what the SQL engine takes: small rewrites outside of quoted texts.
#include <optional>
#include <string>
#include <string_view>

namespace brenvik {

// Puts double quotes around the bare word Index, which the engine would take for a keyword.
std::string quoteIndexWord(std::string_view sql);

// The table of a statement of the exact form "Select * From <table>", else nothing.
std::optional<std::string> wholeTableOf(std::string_view sql);

// The table that stands first behind "From"; empty if there is none.
std::string firstTableOf(std::string_view sql);

// True for a plain select that names no order of its own, so that the order of the table can be asked for.
bool wantsTableOrder(std::string_view sql);

}  // namespace brenvik
