#pragma once
// How changes of the journal are printed.
#include <nlohmann/json.hpp>

#include "cli/RegistryAusgabe.h"
#include "lists/Listen.h"

namespace brenvik::cli {

// One change in a line, or as JSON without its values.
std::string changeLine(const JournalKopf& change);
nlohmann::ordered_json changeJson(const JournalKopf& change);
int printChange(Programm& programm, const JournalEintrag& change, bool json);
// The value where a path of the change lies now; none if its machine does not answer.
struct Jetzt {
    bool erreichbar = true;
    std::optional<RawValue> wert;
};
Jetzt valueNow(Context& ctx, const JournalKopf& change, const std::string& path);
nlohmann::ordered_json rawJson(Context& ctx, const std::optional<RawValue>& value);

}  // namespace brenvik::cli
