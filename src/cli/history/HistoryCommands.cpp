// history list | show | undo | redo | forget
#include <fmt/format.h>

#include <iostream>
#include <unordered_map>

#include "cli/Commands.h"
#include "cli/NumberOption.h"
#include "cli/history/HistoryOutput.h"
#include "lists/Messages.h"

namespace brenvik::cli {
namespace {

using nlohmann::ordered_json;

// Lines of History.txt that the journal does not know.
std::vector<JournalKopf> unknownLines(Programm& programm, Listen& lists) {
    std::vector<JournalKopf> unknown;
    std::unordered_map<std::string, std::size_t> recorded;
    for (const JournalKopf& change : lists.journal().heads())
        if (change.zeile) ++recorded[*change.zeile];
    Tippwerte values(programm.context());
    for (const HistorySatz& entry : lists.history().udtHistory()) {
        if (auto& count = recorded[entry.Zeile]; count > 0) {
            --count;
            continue;
        }
        const HistoryKopf line = historyHead(entry.Zeile);
        JournalKopf& head = unknown.emplace_back(newHead(programm.context(), Aenderung::Art::Speichern));
        head.zeit = line.datum + " " + line.uhrzeit;
        head.rechner = line.rechner;
        head.benutzer.clear(), head.sid.clear();
        head.tipp = values.of(line.tipp).tipp;
        head.überschrift = values.of(line.tipp).überschrift;
        head.zeile = entry.Zeile;
        head.nurZeile = true;
    }
    return unknown;
}

// They get a number too, so that every change has one that stays.
void adoptLines(Programm& programm, Listen& lists) {
    if (!lists.journal().writable()) return;
    lists.journal().transaction([&] {
        if (!lists.history().vereinen()) return;   // what another process does to the list belongs with what it does to the journal
        for (const JournalKopf& head : unknownLines(programm, lists)) lists.journal().adoptLine(head);
    });
}

int list(Programm& programm, Listen& lists, bool json) {
    ordered_json out = ordered_json::array();
    std::vector<JournalKopf> changes = lists.journal().heads();
    for (JournalKopf& line : unknownLines(programm, lists)) changes.push_back(std::move(line));   // some are left where nothing can be written
    for (const JournalKopf& change : changes) {
        if (isUndo(change) || (change.nurZeile && change.ausgeblendet)) continue;
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

bool isDay(const std::string& text) {
    static constexpr std::string_view Form = "0000-00-00";
    return text.size() == Form.size() && std::equal(text.begin(), text.end(), Form.begin(), [](char c, char form) { return form == '0' ? c >= '0' && c <= '9' : c == form; });
}

// Lines that were found in History.txt bring their own form of the date, "09.11.2002 12:30:00".
std::string isoTime(const JournalKopf& change) {
    const std::string& t = change.zeit;
    return t.size() > 10 && t[2] == '.' && t[5] == '.' ? t.substr(6, 4) + "-" + t.substr(3, 2) + "-" + t.substr(0, 2) + t.substr(10) : t;
}

int result(bool done, std::int64_t number, const char* what, bool json) {
    if (json) std::cout << jsonText({{"number", number}, {what, done}}) << "\n";
    return done ? 0 : 1;
}

// What cannot be recorded is not taken back: it would stand as done for ever.
void requireWritable(Listen& lists) {
    lists.journal().transaction([] {});
}

int undo(Programm& programm, Listen& lists, std::int64_t number, bool exact, bool json) {
    requireWritable(lists);
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
    requireWritable(lists);
    const bool done = Ruecknahme(programm.context(), lists.journal(), lists.history()).wiederherstellen(number);
    if (done) lists.history().HistorySave();
    return result(done, number, "redone", json);
}

// Which changes: one, those before a day, or all.
int forget(Programm& programm, Listen& lists, std::int64_t number, const std::string& before, bool json) {
    if (!before.empty() && !isDay(before)) return failed("Kein Datum der Form 2002-11-09: " + before, 2);
    std::vector<std::int64_t> numbers;
    for (const JournalKopf& change : lists.journal().heads())
        if (!isUndo(change) && (number != 0 ? change.nummer == number : before.empty() || isoTime(change) < before)) numbers.push_back(change.nummer);
    if (numbers.empty()) return number != 0 ? failed(fmt::format(meldung::KeinSolcherEintrag, number)) : 0;
    if (!programm.context().port.ask(fmt::format(meldung::VergessenAnzahl, numbers.size()), box::Exclamation + box::DefaultNo)) return 1;
    lists.history().forget(numbers);
    if (json) std::cout << jsonText({{"forgotten", numbers}}) << "\n";
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
            call.run = withHistory(call, [work](Programm& programm, Listen& listen) {
                adoptLines(programm, listen);
                return work(programm, listen);
            });
        });
    };
    const auto withNumber = [&](const char* name, const char* text) {
        auto* command = group->add_subcommand(name, text);
        command->add_option("NUMBER", *number, "Nummer der Änderung, wie list sie nennt")->transform(wholeNumber<std::int64_t>())->required();
        return command;
    };
    on(group->add_subcommand("list", "Alle Änderungen mit ihren Nummern"), [&call](Programm& p, Listen& l) { return list(p, l, call.json); });
    on(withNumber("show", "Die Werte einer Änderung: vorher, danach, jetzt"), [&call, number](Programm& p, Listen& l) { return show(p, l, *number, call.json); });
    auto* back = withNumber("undo", "Eine Änderung zurücksetzen");
    back->add_flag("--keep", call.keep, "Was inzwischen noch einmal geändert wurde, so lassen und das Übrige zurücksetzen (mit --exact)");
    back->add_flag("--exact", *exact, "Genau: Typ und Bytes, auf dem Rechner der Änderung, alles oder nichts");
    on(back, [&call, number, exact](Programm& p, Listen& l) { return undo(p, l, *number, *exact, call.json); });
    on(withNumber("redo", "Eine zurückgesetzte Änderung wiederherstellen"), [&call, number](Programm& p, Listen& l) { return redo(p, l, *number, call.json); });
    const auto day = std::make_shared<std::string>();
    auto* forgetter = group->add_subcommand("forget", "Änderungen mit ihren Werten endgültig aus History und Journal entfernen: eine, die vor einem Tag oder alle (fragt nach)");
    auto* one = forgetter->add_option("NUMBER", *number, "Nummer der Änderung, wie list sie nennt");
    forgetter->add_option("--before", *day, "Alle Änderungen vor diesem Tag, 2002-11-09")->excludes(one);
    on(forgetter, [&call, number, day](Programm& p, Listen& l) { return forget(p, l, *number, *day, call.json); });
    addDriftCommand(app, call);
}

}  // namespace brenvik::cli
