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

int saveList(Programm& programm, const Tippauswahl& wahl) {
    const auto list = sammle(programm, wahl, Bedarf::Werte);
    if (!list) return 1;
    const Presetdatei file = presetDatei(programm.context(), *list);
    if (!file.hindernis.empty()) return failed(file.hindernis);
    for (const std::string& path : file.ohneWert) std::cerr << "Ohne Wert in der Liste: " << path << "\n";
    return ausgeben(programm, wahl.ausgabe, file.text, meldung::ListeGespeichert1, strBVKTexte(TextSaved2));
}

std::optional<TippListe> load(Programm& programm, const std::string& file) {
    Presetliste loaded = ladePreset(programm.maschine(), readFile(pathFromUtf8(file), MaxPreset));
    if (loaded.probleme.empty()) return std::move(loaded.liste);
    hindernisse(loaded.probleme, "Die Liste wurde nicht geladen, nichts wurde geändert.");
    return std::nullopt;
}

int showList(Programm& programm, const std::string& file, bool json) {
    const auto list = load(programm, file);
    if (!list) return 1;
    ordered_json out = ordered_json::array();
    for (const TippListEintrag& entry : *list) {
        ordered_json tip{{"number", entry.TippNr}, {"heading", entry.Titel}, {"values", ordered_json::array()}};
        if (!json) std::cout << fmt::format("{:>5}  {}\n", entry.TippNr, oneLine(entry.Titel));
        for (const TippListWert& value : entry.Werte) {
            if (!value.gesammelt.beruehrt) continue;
            tip["values"].push_back({{"path", value.pfad()},
                                     {"deleted", value.gesammelt.geloescht},
                                     {"data", value.gesammelt.wert ? dataJson(programm.context(), *value.gesammelt.wert) : ordered_json(nullptr)}});
            if (!json) std::cout << "       " << valueLabel(ValueName::named(value.Wertname)) << ": " << oneLine(value.gesammelt.text) << "\n";
        }
        out.push_back(std::move(tip));
    }
    if (json) std::cout << jsonText(out) << "\n";
    return 0;
}

void printChanges(Context& ctx, const std::vector<Aenderung>& changes, bool json) {
    ordered_json out = ordered_json::array();
    const auto text = [&](const std::optional<RawValue>& value) {
        return value ? typeName(ctx, value->type) + " " + shownData(*value) : std::string("(nicht vorhanden)");
    };
    const auto data = [&](const std::optional<RawValue>& value) { return value ? dataJson(ctx, *value) : ordered_json(nullptr); };
    for (const Aenderung& change : changes) {
        ordered_json tip{{"number", change.tippIndex}, {"heading", change.tippÜberschrift}, {"changes", ordered_json::array()}};
        if (!json) std::cout << fmt::format("{:>5}  {}\n", change.tippIndex, oneLine(change.tippÜberschrift));
        for (const WertAenderung& value : change.werte) {
            tip["changes"].push_back({{"path", value.path}, {"old", data(value.alt)}, {"new", data(value.neu)}});
            if (!json) std::cout << "       " << oneLine(value.path) << "\t" << text(value.alt) << " -> " << text(value.neu) << "\n";
        }
        out.push_back(std::move(tip));
    }
    if (json) std::cout << jsonText(out) << "\n";
}

int apply(Programm& programm, const std::string& file, bool dryRun, bool json) {
    const auto list = load(programm, file);
    if (!list) return 1;
    Anwendung plan = anwendung(programm.maschine(), *list);
    if (!plan.probleme.empty()) return hindernisse(plan.probleme, "Die Liste wurde nicht angewendet, nichts wurde geändert.");
    for (const Aenderung& change : plan.changes)
        if (const auto tipp = programm.maschine().lookUpTipp(change.tippIndex)) warnIfNotMeant(programm.context(), change.tippIndex, *tipp);
    printChanges(programm.context(), plan.changes, json);
    if (plan.changes.empty()) std::cerr << "Es ist nichts zu ändern, alle Werte stehen schon so da.\n";
    if (dryRun || plan.changes.empty()) return 0;
    if (!programm.context().port.ask(fmt::format("Sollen die Änderungen (Tipps: {}) geschrieben werden?", plan.changes.size()))) return 1;
    if (const std::string reason = programm.maschine().writeTogether(plan.changes); !reason.empty())
        return failed("Die Liste wurde nicht angewendet, nichts wurde geändert: " + reason);
    programm.maschine().BroadCast();
    if (const std::string when = effectText(plan.wirkung); !when.empty()) std::cerr << when << "\n";
    return 0;
}

}  // namespace

void addListenBefehle(CLI::App& app, Aufruf& call) {
    const auto on = [&call](CLI::App* command, std::function<int(Programm&)> work) {
        command->callback([&call, work = std::move(work)] {
            call.needsDatabase = true;
            call.run = reported(work);
        });
    };
    const auto wahl = std::make_shared<Tippauswahl>();
    const auto file = std::make_shared<std::string>();
    const auto dryRun = std::make_shared<bool>(false);
    auto* group = app.add_subcommand("list", "Listen von Tipps mit ihren Werten");
    group->require_subcommand(1);
    auto* save = group->add_subcommand("save", "Die Tipps mit ihren Werten als kleine TOML-Datei schreiben");
    save->add_option("FILE", wahl->ausgabe, "Datei; eine vorhandene wird ersetzt")->required();
    wahl->addTo(*save, false);
    on(save, [wahl](Programm& p) { return saveList(p, *wahl); });
    auto* show = group->add_subcommand("load", "Eine solche Datei prüfen und ihren Inhalt ausgeben");
    show->add_option("FILE", *file, "Datei")->required();
    on(show, [&call, file](Programm& p) { return showList(p, *file, call.json); });

    auto* applier = app.add_subcommand("apply", "Die Werte einer solchen Datei schreiben: alle oder, wenn etwas nicht geht, keinen (fragt nach)");
    applier->add_option("FILE", *file, "Datei")->required();
    applier->add_flag("--dry-run", *dryRun, "Nur zeigen, was sich ändern würde");
    on(applier, [&call, file, dryRun](Programm& p) { return apply(p, *file, *dryRun, call.json); });
}

}  // namespace brenvik::cli
