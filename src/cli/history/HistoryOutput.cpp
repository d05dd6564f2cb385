#include "cli/history/HistoryOutput.h"

#include <fmt/format.h>

#include <iostream>

namespace brenvik::cli {

using nlohmann::ordered_json;

namespace {

constexpr const char* ArtNamen[] = {"speichern", "standard", "löschen", "datentyp", "kontextmenü", "schlüssel", "ini-datei", "boot-datei", "zurücksetzen", "wiederherstellen"};

std::string artName(Aenderung::Art kind) {
    const auto index = static_cast<std::size_t>(kind);
    return index < std::size(ArtNamen) ? ArtNamen[index] : std::to_string(index);
}

}  // namespace

std::function<int(Programm&)> withHistory(Aufruf& call, std::function<int(Programm&, Listen&)> work) {
    return reported([&call, work = std::move(work)](Programm& programm) {
        Listen& listen = *call.listen;
        listen.loadHistory();
        for (const std::string& note : listen.notes()) std::cerr << note << "\n";
        try {
            return work(programm, listen);
        } catch (const NumberedError& error) {
            if (listen.journalFailure() != error.what()) throw;
            return 1;
        }
    });
}

std::string changeLine(const JournalKopf& change) {
    const char* state = change.aufgehobenDurch != 0 ? "  (zurückgesetzt)" : change.nurZeile ? "  (nur in der History)" : "";
    return fmt::format("{:>5}  {}  {}  {:<12}  Tipp {:<5} {}{}", change.nummer != 0 ? std::to_string(change.nummer) : "-", oneLine(change.zeit), oneLine(machineOf(change)), artName(change.art), change.tipp,
                       oneLine(change.überschrift), state);
}

ordered_json changeJson(const JournalKopf& change) {
    return {{"number", change.nummer},   {"time", change.zeit},    {"machine", machineOf(change)},       {"user", change.benutzer},
            {"kind", artName(change.art)}, {"tip", change.tipp},   {"heading", change.überschrift},      {"undone", change.aufgehobenDurch != 0},
            {"exact", !change.nurZeile}, {"historyLine", change.zeile ? ordered_json(*change.zeile) : ordered_json(nullptr)}};
}

ordered_json rawJson(Context& ctx, const std::optional<RawValue>& value) { return value ? dataJson(ctx, *value) : ordered_json(nullptr); }

// Nothing is connected to for a look.
Jetzt valueNow(Context& ctx, const RegAddress& place) {
    if (!atHand(ctx, place.machine)) return {false, std::nullopt};
    return {true, storeOf(ctx, place.machine).value(place.root, place.key, *place.name)};
}

int printChange(Programm& programm, const JournalEintrag& change, bool json) {
    Context& ctx = programm.context();
    ordered_json out = changeJson(change);
    out["values"] = out["keys"] = out["files"] = ordered_json::array();
    if (!json) std::cout << changeLine(change) << "\n";
    for (const WertAenderung& value : change.aenderung.werte) {
        const RegAddress place = addressOf(ctx, change, value);
        const Jetzt now = valueNow(ctx, place);
        const std::string path = shownPath(ctx, place);
        out["values"].push_back({{"path", path}, {"old", rawJson(ctx, value.alt)}, {"new", rawJson(ctx, value.neu)}, {"written", value.geschrieben}, {"reachable", now.erreichbar}, {"now", rawJson(ctx, now.wert)}});
        if (!json)
            std::cout << fmt::format("{}{}\n   vorher: {}\n   danach: {}\n   jetzt:  {}\n", oneLine(path), value.geschrieben ? "" : "  (nicht geschrieben)", shownRaw(value.alt),
                                     shownRaw(value.neu), now.erreichbar ? shownRaw(now.wert) : "Rechner wird gerade nicht bearbeitet");
    }
    for (const SchluesselBild& key : change.aenderung.schluessel) {
        const char* what = key.geloescht ? "gelöscht" : key.angelegt ? "angelegt" : "geändert";
        const std::string path = shownPath(ctx, addressOf(ctx, change, key.path));
        out["keys"].push_back({{"path", path}, {"what", what}, {"keys", key.unterschluessel.size()}, {"values", key.werte.size()}});
        if (!json) std::cout << fmt::format("{}\n   {}; vorher {} Schlüssel, {} Werte\n", oneLine(path), what, key.angelegt ? 0 : key.unterschluessel.size(), key.werte.size());
    }
    for (const DateiBild& file : change.aenderung.dateien) {
        out["files"].push_back({{"file", file.datei}, {"existed", file.vorhanden}, {"before", file.inhalt.size()}, {"after", file.neu.size()}, {"written", file.geschrieben}});
        if (!json) std::cout << fmt::format("{}\n   vorher {} Bytes, danach {} Bytes\n", oneLine(file.datei), file.inhalt.size(), file.neu.size());
    }
    if (json) std::cout << jsonText(out) << "\n";
    else if (change.nurZeile && change.zeile) std::cout << oneLine(*change.zeile) << "\n";
    return 0;
}

}  // namespace brenvik::cli
