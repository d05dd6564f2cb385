#pragma once
// How changes of the journal are printed.
#include <nlohmann/json.hpp>

#include "cli/Commands.h"
#include "cli/registry/RegistryOutput.h"
#include "lists/Lists.h"
#include "lists/undo/RegAddress.h"

namespace brenvik::cli {

// Work on the history once it is loaded. What the user was told of the journal then is not said twice.
std::function<int(Programm&)> withHistory(Aufruf& call, std::function<int(Programm&, Listen&)> work);
// One change in a line, or as JSON without its values.
std::string changeLine(const JournalKopf& change);
nlohmann::ordered_json changeJson(const JournalKopf& change);
int printChange(Programm& programm, const JournalEintrag& change, bool json);
// What stands there now; not reached where nobody works on the machine.
struct Jetzt {
    bool erreichbar = true;
    std::optional<RawValue> wert;
};
Jetzt valueNow(Context& ctx, const RegAddress& place);
nlohmann::ordered_json rawJson(Context& ctx, const std::optional<RawValue>& value);

}  // namespace brenvik::cli
