// history list | show | undo | redo, drift
#include <fmt/format.h>

#include <iostream>
#include <unordered_map>

#include "cli/Befehle.h"
#include "cli/HistoryAusgabe.h"
#include "lists/INIStand.h"
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

// Values that the program once set and that stand differently now, in the registry and in files, by Tip.
class Drift {
public:
    Drift(Context& ctx, bool json) : ctx_(ctx), json_(json) {}

    void value(const GesetzterWert& value) {
        JournalKopf change;
        change.rechner = value.rechner, change.lokalerRechner = value.lokalerRechner, change.sid = value.sid;
        const Jetzt now = valueNow(ctx_, change, value.path);
        if (!now.erreichbar) {
            std::cerr << value.path << ": der Rechner \"" << machineOf(change) << "\" ist nicht erreichbar\n";
        } else if (now.wert != value.wert) {
            line(value.tipp, value.überschrift, value.path, shownRaw(value.wert), shownRaw(now.wert),
                 {{"machine", machineOf(change)}, {"change", value.nummer}, {"set", rawJson(ctx_, value.wert)}, {"now", rawJson(ctx_, now.wert)}});
        }
    }
    void file(const INIAbweichung& value) {
        const auto shown = [](const std::optional<std::string>& text) { return text ? "\"" + oneLine(*text) + "\"" : std::string(meldung::NichtVorhanden); };
        const auto data = [](const std::optional<std::string>& text) { return text ? ordered_json(*text) : ordered_json(nullptr); };
        line(value.tipp, value.überschrift, fmt::format("{} [{}] {}", value.datei, value.sektion, value.schluessel), shown(value.gesetzt), shown(value.jetzt),
             {{"change", value.nummer}, {"set", data(value.gesetzt)}, {"now", data(value.jetzt)}});
    }
    int print() const {
        if (json_) std::cout << jsonText(tips_) << "\n";
        else if (tips_.empty()) std::cout << "Alle Werte, die das Programm gesetzt hat, stehen noch so da.\n";
        return 0;
    }

private:
    void line(std::int32_t tip, const std::string& heading, const std::string& path, const std::string& set, const std::string& now, ordered_json facts) {
        if (tips_.empty() || tips_.back()["tip"] != tip) {
            tips_.push_back({{"tip", tip}, {"heading", heading}, {"values", ordered_json::array()}});
            if (!json_) std::cout << (tip > 0 ? fmt::format("Tipp {}  ", tip) : std::string()) << heading << "\n";
        }
        ordered_json value{{"path", path}};
        value.update(facts);
        tips_.back()["values"].push_back(std::move(value));
        if (!json_) std::cout << fmt::format("   {}\n      gesetzt: {}\n      jetzt:   {}\n", path, set, now);
    }

    Context& ctx_;
    bool json_;
    ordered_json tips_ = ordered_json::array();
};

int drift(Programm& programm, Listen& lists, bool json) {
    Drift found(programm.context(), json);
    for (const GesetzterWert& value : lists.journal().lastWritten()) found.value(value);
    std::vector<std::string> unreadable;
    for (const INIAbweichung& value : iniAbweichungen(lists.journal(), unreadable)) found.file(value);
    for (const std::string& name : unreadable) std::cerr << name << "\n";
    return found.print();
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
