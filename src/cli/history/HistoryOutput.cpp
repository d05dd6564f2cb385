#include "cli/history/HistoryOutput.h"

#include <fmt/format.h>

#include <iostream>

namespace brenvik::cli {

using nlohmann::ordered_json;

namespace {

constexpr const char* KindNames[] = {"speichern", "standard", "löschen", "datentyp", "kontextmenü", "schlüssel", "ini-datei", "boot-datei", "zurücksetzen", "wiederherstellen"};

std::string artName(Change::Art kind) {
    const auto index = static_cast<std::size_t>(kind);
    return index < std::size(KindNames) ? KindNames[index] : std::to_string(index);
}

}  // namespace

std::function<int(Program&)> withHistory(Invocation& call, std::function<int(Program&, Listen&)> work) {
    return reported([&call, work = std::move(work)](Program& program) {
        Listen& listen = *call.listen;
        listen.loadHistory();
        for (const std::string& note : listen.notes()) std::cerr << note << "\n";
        try {
            return work(program, listen);
        } catch (const NumberedError& error) {
            if (listen.journalFailure() != error.what()) throw;
            return 1;
        }
    });
}

std::string changeLine(const JournalHeader& change) {
    const char* state = change.undoneBy != 0 ? "  (zurückgesetzt)" : change.lineOnly ? "  (nur in der History)" : "";
    return fmt::format("{:>5}  {}  {}  {:<12}  Tipp {:<5} {}{}", change.nummer != 0 ? std::to_string(change.nummer) : "-", oneLine(change.zeit), oneLine(machineOf(change)), artName(change.art), change.tipp,
                       oneLine(change.überschrift), state);
}

ordered_json changeJson(const JournalHeader& change) {
    return {{"number", change.nummer},   {"time", change.zeit},    {"machine", machineOf(change)},       {"user", change.benutzer},
            {"kind", artName(change.art)}, {"tip", change.tipp},   {"heading", change.überschrift},      {"undone", change.undoneBy != 0},
            {"exact", !change.lineOnly}, {"historyLine", change.zeile ? ordered_json(*change.zeile) : ordered_json(nullptr)}};
}

ordered_json rawJson(Context& ctx, const std::optional<RawValue>& value) { return value ? dataJson(ctx, *value) : ordered_json(nullptr); }

// Nothing is connected to for a look.
Now valueNow(Context& ctx, const RegAddress& place) {
    if (!atHand(ctx, place.machine)) return {false, std::nullopt};
    return {true, storeOf(ctx, place.machine).value(place.root, place.key, *place.name)};
}

int printChange(Program& program, const JournalEntry& change, bool json) {
    Context& ctx = program.context();
    ordered_json out = changeJson(change);
    out["values"] = out["keys"] = out["files"] = ordered_json::array();
    if (!json) std::cout << changeLine(change) << "\n";
    for (const ValueChange& value : change.change.values) {
        const RegAddress place = addressOf(ctx, change, value);
        const Now now = valueNow(ctx, place);
        const std::string path = shownPath(ctx, place);
        out["values"].push_back({{"path", path}, {"old", rawJson(ctx, value.alt)}, {"new", rawJson(ctx, value.neu)}, {"written", value.written}, {"reachable", now.reachable}, {"now", rawJson(ctx, now.wert)}});
        if (!json)
            std::cout << fmt::format("{}{}\n   vorher: {}\n   danach: {}\n   jetzt:  {}\n", oneLine(path), value.written ? "" : "  (nicht geschrieben)", shownRaw(value.alt),
                                     shownRaw(value.neu), now.reachable ? shownRaw(now.wert) : "Rechner wird gerade nicht bearbeitet");
    }
    for (const KeyImage& key : change.change.key) {
        const char* what = key.geloescht ? "gelöscht" : key.created ? "angelegt" : "geändert";
        const std::string path = shownPath(ctx, addressOf(ctx, change, key.path));
        out["keys"].push_back({{"path", path}, {"what", what}, {"keys", key.unterschluessel.size()}, {"values", key.values.size()}});
        if (!json) std::cout << fmt::format("{}\n   {}; vorher {} Schlüssel, {} Werte\n", oneLine(path), what, key.created ? 0 : key.unterschluessel.size(), key.values.size());
    }
    for (const FileImage& file : change.change.dateien) {
        out["files"].push_back({{"file", file.datei}, {"existed", file.there}, {"before", file.contents.size()}, {"after", file.neu.size()}, {"written", file.written}});
        if (!json) std::cout << fmt::format("{}\n   vorher {} Bytes, danach {} Bytes\n", oneLine(file.datei), file.contents.size(), file.neu.size());
    }
    if (json) std::cout << jsonText(out) << "\n";
    else if (change.lineOnly && change.zeile) std::cout << oneLine(*change.zeile) << "\n";
    return 0;
}

}  // namespace brenvik::cli
