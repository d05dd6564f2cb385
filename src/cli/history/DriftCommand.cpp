// drift
#include <fmt/format.h>

#include <algorithm>
#include <iostream>

#include "cli/Commands.h"
#include "cli/history/HistoryOutput.h"
#include "lists/Messages.h"
#include "lists/undo/Drift.h"

namespace brenvik::cli {
namespace {

using nlohmann::ordered_json;

constexpr int SomeDiffer = 3, SomeUnread = 4;

const char* stateName(DriftState state) { return state == DriftState::AsSet ? "set" : state == DriftState::Differs ? "differs" : "unreadable"; }

std::string shown(const DriftEntry& entry, bool now) {
    if (!entry.isLine) return shownRaw(now ? entry.now : entry.set);
    const auto& text = now ? entry.nowLine : entry.setLine;
    return text ? "\"" + oneLine(*text) + "\"" : std::string(messages::NotThere);
}

ordered_json data(Context& ctx, const DriftEntry& entry, bool now) {
    if (!entry.isLine) return rawJson(ctx, now ? entry.now : entry.set);
    const auto& text = now ? entry.nowLine : entry.setLine;
    return text ? ordered_json(*text) : ordered_json(nullptr);
}

ordered_json entryJson(Context& ctx, const DriftEntry& entry) {
    ordered_json json{{"path", entry.place}, {"state", stateName(entry.state)}, {"machine", entry.machine.empty() ? ctx.strLokalerRechner : entry.machine},
                      {"change", entry.nummer}, {"set", data(ctx, entry, false)}};
    if (entry.state == DriftState::Unreadable) json["why"] = entry.why;
    else json["now"] = data(ctx, entry, true);
    return json;
}

void printEntry(const DriftEntry& entry) {
    const std::string now = entry.state == DriftState::Unreadable ? "nicht gelesen: " + oneLine(entry.why) : shown(entry, true);
    std::cout << fmt::format("   {}\n      gesetzt: {}\n      jetzt:   {}\n", oneLine(entry.place), shown(entry, false), now);
}

int printDrift(Context& ctx, Journal& journal, bool all, bool json) {
    ordered_json tips = ordered_json::array();
    std::size_t differ = 0, unread = 0;
    for (const DriftEntry& entry : drift(ctx, journal)) {
        differ += entry.state == DriftState::Differs ? 1 : 0;
        unread += entry.state == DriftState::Unreadable ? 1 : 0;
        if (entry.state == DriftState::AsSet && !all) continue;
        if (tips.empty() || tips.back()["tip"] != entry.tipp) {
            tips.push_back({{"tip", entry.tipp}, {"heading", entry.überschrift}, {"values", ordered_json::array()}});
            if (!json) std::cout << (entry.tipp > 0 ? fmt::format("Tipp {}  ", entry.tipp) : std::string()) << oneLine(entry.überschrift) << "\n";
        }
        if (json) tips.back()["values"].push_back(entryJson(ctx, entry));
        else printEntry(entry);
    }
    if (json) std::cout << jsonText(tips) << "\n";
    else if (differ + unread == 0) std::cout << "Alle Werte, die das Programm gesetzt hat, stehen noch so da.\n";
    if (!json && differ > 0) std::cout << fmt::format("Anders als gesetzt: {}\n", differ);
    if (!json && unread > 0) std::cout << fmt::format("Nicht gelesen: {}. Ob sie noch so dastehen, ist nicht bekannt.\n", unread);
    return differ > 0 ? SomeDiffer : unread > 0 ? SomeUnread : 0;
}

}  // namespace

void addDriftCommand(CLI::App& app, Invocation& call) {
    const auto all = std::make_shared<bool>(false);
    auto* command = app.add_subcommand("drift", "Werte, die das Programm gesetzt hat und die jetzt anders dastehen (Ende mit 0: keine, 3: es gibt welche, "
                                                "4: nicht alle waren zu lesen); von anderen Rechnern nur die des mit --machine gewählten");
    command->add_flag("--all", *all, "Auch die nennen, die noch so dastehen");
    command->callback([&call, all] {
        call.needsDatabase = true;
        call.run = withHistory(call, [&call, all](Program& program, Listen& listen) { return printDrift(program.context(), listen.journal(), *all, call.json); });
    });
}

}  // namespace brenvik::cli
