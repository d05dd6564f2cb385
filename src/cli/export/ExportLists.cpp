// list save | load, apply
#include <fmt/format.h>

#include <iostream>

#include "cli/export/ExportTips.h"
#include "cli/registry/RegistryOutput.h"
#include "cli/tips/TipOutput.h"
#include "cli/tips/TipSystem.h"
#include "export/Messages.h"
#include "export/Preset.h"
#include "frame/files/FileSystem.h"
#include "frame/text/Texts.h"

namespace brenvik::cli {
namespace {

using nlohmann::ordered_json;

constexpr int TextSaved2 = 114;

int saveList(Program& program, const TipChoice& choice) {
    const auto list = gather(program, choice, Needs::Values);
    if (!list) return 1;
    const PresetFile file = presetFile(program.context(), *list);
    if (!file.obstacle.empty()) return failed(file.obstacle);
    for (const std::string& path : file.withoutValue) std::cerr << "Ohne Wert in der Liste: " << path << "\n";
    return print(program, choice.output, file.text, messages::ListSaved1, strBVKTexte(TextSaved2));
}

std::optional<TipList> load(Program& program, const std::string& file) {
    PresetList loaded = ladePreset(program.engine(), readFile(pathFromUtf8(file), MaxPreset));
    if (loaded.problems.empty()) return std::move(loaded.liste);
    obstacles(loaded.problems, "Die Liste wurde nicht geladen, nichts wurde geändert.");
    return std::nullopt;
}

int showList(Program& program, const std::string& file, bool json) {
    const auto list = load(program, file);
    if (!list) return 1;
    ordered_json out = ordered_json::array();
    for (const TippListEintrag& entry : *list) {
        ordered_json tip{{"number", entry.TippNr}, {"heading", entry.Titel}, {"values", ordered_json::array()}};
        if (!json) std::cout << fmt::format("{:>5}  {}\n", entry.TippNr, oneLine(entry.Titel));
        for (const TipListValue& value : entry.Values) {
            if (!value.gathered.touched) continue;
            tip["values"].push_back({{"path", value.pfad()},
                                     {"deleted", value.gathered.geloescht},
                                     {"data", value.gathered.wert ? dataJson(program.context(), *value.gathered.wert) : ordered_json(nullptr)}});
            if (!json) std::cout << "       " << valueLabel(ValueName::named(value.Wertname)) << ": " << oneLine(value.gathered.text) << "\n";
        }
        out.push_back(std::move(tip));
    }
    if (json) std::cout << jsonText(out) << "\n";
    return 0;
}

void printChanges(Context& ctx, const std::vector<Change>& changes, bool json) {
    ordered_json out = ordered_json::array();
    const auto text = [&](const std::optional<RawValue>& value) {
        return value ? typeName(ctx, value->type) + " " + shownData(*value) : std::string("(nicht vorhanden)");
    };
    const auto data = [&](const std::optional<RawValue>& value) { return value ? dataJson(ctx, *value) : ordered_json(nullptr); };
    for (const Change& change : changes) {
        ordered_json tip{{"number", change.tippIndex}, {"heading", change.tipHeading}, {"changes", ordered_json::array()}};
        if (!json) std::cout << fmt::format("{:>5}  {}\n", change.tippIndex, oneLine(change.tipHeading));
        for (const ValueChange& value : change.values) {
            tip["changes"].push_back({{"path", value.path}, {"old", data(value.alt)}, {"new", data(value.neu)}});
            if (!json) std::cout << "       " << oneLine(value.path) << "\t" << text(value.alt) << " -> " << text(value.neu) << "\n";
        }
        out.push_back(std::move(tip));
    }
    if (json) std::cout << jsonText(out) << "\n";
}

int apply(Program& program, const std::string& file, bool dryRun, bool json) {
    const auto list = load(program, file);
    if (!list) return 1;
    Application plan = application(program.engine(), *list);
    if (!plan.problems.empty()) return obstacles(plan.problems, "Die Liste wurde nicht angewendet, nichts wurde geändert.");
    for (const Change& change : plan.changes)
        if (const auto tipp = program.engine().lookUpTip(change.tippIndex)) warnIfNotMeant(program.context(), change.tippIndex, *tipp);
    printChanges(program.context(), plan.changes, json);
    if (plan.changes.empty()) std::cerr << "Es ist nichts zu ändern, alle Werte stehen schon so da.\n";
    if (dryRun || plan.changes.empty()) return 0;
    if (!program.context().port.ask(fmt::format("Sollen die Änderungen (Tipps: {}) geschrieben werden?", plan.changes.size()))) return 1;
    if (const std::string reason = program.engine().writeTogether(plan.changes); !reason.empty())
        return failed("Die Liste wurde nicht angewendet, nichts wurde geändert: " + reason);
    program.engine().BroadCast();
    if (const std::string when = effectText(plan.effect); !when.empty()) std::cerr << when << "\n";
    return 0;
}

}  // namespace

void addListCommands(CLI::App& app, Invocation& call) {
    const auto on = [&call](CLI::App* command, std::function<int(Program&)> work) {
        command->callback([&call, work = std::move(work)] {
            call.needsDatabase = true;
            call.run = reported(work);
        });
    };
    const auto choice = std::make_shared<TipChoice>();
    const auto file = std::make_shared<std::string>();
    const auto dryRun = std::make_shared<bool>(false);
    auto* group = app.add_subcommand("list", "Listen von Tipps mit ihren Werten");
    group->require_subcommand(1);
    auto* save = group->add_subcommand("save", "Die Tipps mit ihren Werten als kleine TOML-Datei schreiben");
    save->add_option("FILE", choice->output, "Datei; eine vorhandene wird ersetzt")->required();
    choice->addTo(*save, false);
    on(save, [choice](Program& p) { return saveList(p, *choice); });
    auto* show = group->add_subcommand("load", "Eine solche Datei prüfen und ihren Inhalt ausgeben");
    show->add_option("FILE", *file, "Datei")->required();
    on(show, [&call, file](Program& p) { return showList(p, *file, call.json); });

    auto* applier = app.add_subcommand("apply", "Die Werte einer solchen Datei schreiben: alle oder, wenn etwas nicht geht, keinen (fragt nach)");
    applier->add_option("FILE", *file, "Datei")->required();
    applier->add_flag("--dry-run", *dryRun, "Nur zeigen, was sich ändern würde");
    on(applier, [&call, file, dryRun](Program& p) { return apply(p, *file, *dryRun, call.json); });
}

}  // namespace brenvik::cli
