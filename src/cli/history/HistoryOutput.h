#pragma once
// How changes of the journal are printed.
#include <nlohmann/json.hpp>

#include "cli/Commands.h"
#include "cli/registry/RegistryOutput.h"
#include "lists/Lists.h"
#include "lists/undo/RegAddress.h"

namespace brenvik::cli {

// Work on the history once it is loaded. What the user was told of the journal then is not said twice.
std::function<int(Program&)> withHistory(Invocation& call, std::function<int(Program&, Listen&)> work);
// One change in a line, or as JSON without its values.
std::string changeLine(const JournalHeader& change);
nlohmann::ordered_json changeJson(const JournalHeader& change);
int printChange(Program& program, const JournalEntry& change, bool json);
// What stands there now; not reached where nobody works on the machine.
struct Now {
    bool reachable = true;
    std::optional<RawValue> wert;
};
Now valueNow(Context& ctx, const RegAddress& place);
nlohmann::ordered_json rawJson(Context& ctx, const std::optional<RawValue>& value);

}  // namespace brenvik::cli
