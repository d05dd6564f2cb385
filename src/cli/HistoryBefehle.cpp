// history list | show | undo | redo, drift
#include <fmt/format.h>

#include <iostream>
#include <unordered_map>

#include "cli/Befehle.h"
#include "cli/HistoryAusgabe.h"
#include "lists/Meldungen.h"

namespace brenvik::cli {
namespace {

using nlohmann::ordered_json;

bool isUndo(const JournalKopf& change) { return change.art == Aenderung::Art::Zuruecksetzen || change.art == Aenderung::Art::Wiederherstellen; }

// Lines of History.txt that the journal does not know get a number too, so that every change has one that stays.
void adoptLines(Programm& programm, Listen& lists) {
    std::unordered_map<std::string, std::size_t> recorded;
    for (const JournalKopf& change : lists.journal().heads())
        if (change.zeile) ++recorded[*change.zeile];
    Tippwerte values(programm.context());
    lists.journal().transaction([&] {
        for (const HistorySatz& entry : lists.history().udtHistory()) {
            if (auto& count = recorded[entry.Zeile]; count > 0) {
                --count;
                continue;
            }
            const HistoryKopf line = historyHead(entry.Zeile);
            JournalKopf head = newHead(programm.context(), Aenderung::Art::Speichern);
            head.zeit = line.datum + " " + line.uhrzeit;
            head.rechner = line.rechner;
            head.benutzer.clear(), head.sid.clear();
            head.tipp = line.tipp;
            head.überschrift = values.of(line.tipp).überschrift;
            head.zeile = entry.Zeile;
            lists.journal().adoptLine(head);
        }
    });
}

int list(Programm&, Listen& lists, bool json) {
    ordered_json out = ordered_json::array();
    for (const JournalKopf& change : lists.journal().heads()) {
        if (isUndo(change)) continue;
        if (json) out.push_back(changeJson(change));
        else std::cout << changeLine(change) << "\n";
    }
    if (json) std::cout << jsonText(out) << "\n";
    return 0;
}

int show(Programm& programm, Listen& lists, std::int64_t number, bool json) {
    const auto change = lists.journal().entry(number);
    return change ? printChange(programm, *change, json) : failed(fmt::format(meldung::KeinSolcherEintrag, number));
}

int result(bool done, std::int64_t number, const char* what, bool json) {
    if (json) std::cout << jsonText({{"number", number}, {what, done}}) << "\n";
    return done ? 0 : 1;
}

int undo(Programm& programm, Listen& lists, std::int64_t number, bool exact, bool json) {
    const auto change = lists.journal().head(number);
    if (!change || isUndo(*change)) return failed(fmt::format(meldung::KeinSolcherEintrag, number));
    if (change->aufgehobenDurch != 0) return failed(meldung::SchonZurueck);
    Context& ctx = programm.context();
    Ruecknahme exactly(ctx, lists.journal(), lists.history());
    bool done = false;
    if (exact) {
        done = exactly.zuruecksetzen(number);
    } else {
        if (!change->zeile) return failed(std::string(meldung::NurGenau) + " (--exact)");
        Tippwerte values(ctx);
        done = Zuruecksetzen(ctx, lists.journal(), exactly, values).ausfuehren(*change->zeile, number);
    }
    if (done && change->zeile) {
        lists.history().deleteLine(*change->zeile);
        lists.history().HistorySave();
    }
    return result(done, number, "undone", json);
}

int redo(Programm& programm, Listen& lists, std::int64_t number, bool json) {
    const bool done = Ruecknahme(programm.context(), lists.journal(), lists.history()).wiederherstellen(number);
    if (done) lists.history().HistorySave();
    return result(done, number, "redone", json);
}

// Values that the program once set and that stand differently now.
int drift(Programm& programm, Listen& lists, bool json) {
    Context& ctx = programm.context();
    ordered_json tips = ordered_json::array();
    std::int32_t tip = -1;
    for (const GesetzterWert& value : lists.journal().lastWritten()) {
        JournalKopf change;
        change.rechner = value.rechner, change.lokalerRechner = value.lokalerRechner, change.sid = value.sid;
        const Jetzt now = valueNow(ctx, change, value.path);
        if (!now.erreichbar) {
            std::cerr << value.path << ": der Rechner \"" << machineOf(change) << "\" ist nicht erreichbar\n";
            continue;
        }
        if (now.wert == value.wert) continue;
        if (value.tipp != tip || tips.empty()) {
            tip = value.tipp;
            tips.push_back({{"tip", tip}, {"heading", value.überschrift}, {"values", ordered_json::array()}});
            if (!json) std::cout << (tip > 0 ? fmt::format("Tipp {}  ", tip) : std::string()) << value.überschrift << "\n";
        }
        tips.back()["values"].push_back({{"path", value.path}, {"machine", machineOf(change)}, {"change", value.nummer}, {"set", rawJson(ctx, value.wert)}, {"now", rawJson(ctx, now.wert)}});
        if (!json) std::cout << fmt::format("   {}\n      gesetzt: {}\n      jetzt:   {}\n", value.path, shownRaw(value.wert), shownRaw(now.wert));
    }
    if (json) std::cout << jsonText(tips) << "\n";
    else if (tips.empty()) std::cout << "Alle Werte, die das Programm gesetzt hat, stehen noch so da.\n";
    return 0;
}

}  // namespace

void addHistoryBefehle(CLI::App& app, Aufruf& call) {
    auto* group = app.add_subcommand("history", "Durchgeführte Änderungen ansehen und zurücksetzen");
    group->require_subcommand(1);
    auto number = std::make_shared<std::int64_t>(0);
    auto exact = std::make_shared<bool>(false);
    const auto on = [&call](CLI::App* command, std::function<int(Programm&, Listen&)> work) {
        command->callback([&call, work] {
            call.needsDatabase = true;
            call.run = reported([&call, work](Programm& programm) {
                call.listen->loadHistory();
                adoptLines(programm, *call.listen);
                return work(programm, *call.listen);
            });
        });
    };
    const auto withNumber = [&](const char* name, const char* text) {
        auto* command = group->add_subcommand(name, text);
        command->add_option("NUMBER", *number, "Nummer der Änderung, wie list sie nennt")->required();
        return command;
    };
    on(group->add_subcommand("list", "Alle Änderungen mit ihren Nummern"), [&call](Programm& p, Listen& l) { return list(p, l, call.json); });
    on(withNumber("show", "Die Werte einer Änderung: vorher, danach, jetzt"), [&call, number](Programm& p, Listen& l) { return show(p, l, *number, call.json); });
    auto* back = withNumber("undo", "Eine Änderung zurücksetzen");
    back->add_flag("--exact", *exact, "Genau: Typ und Bytes, auf dem Rechner der Änderung, alles oder nichts");
    on(back, [&call, number, exact](Programm& p, Listen& l) { return undo(p, l, *number, *exact, call.json); });
    on(withNumber("redo", "Eine zurückgesetzte Änderung wiederherstellen"), [&call, number](Programm& p, Listen& l) { return redo(p, l, *number, call.json); });
    on(app.add_subcommand("drift", "Werte, die das Programm gesetzt hat und die jetzt anders dastehen"), [&call](Programm& p, Listen& l) { return drift(p, l, call.json); });
}

}  // namespace brenvik::cli
