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
std::vector<JournalHeader> unknownLines(Program& program, Listen& lists) {
    std::vector<JournalHeader> unknown;
    std::unordered_map<std::string, std::size_t> recorded;
    for (const JournalHeader& change : lists.journal().heads())
        if (change.zeile) ++recorded[*change.zeile];
    TipValues values(program.context());
    for (const HistoryRecord& entry : lists.history().udtHistory()) {
        if (auto& count = recorded[entry.Zeile]; count > 0) {
            --count;
            continue;
        }
        const HistoryHeader line = historyHead(entry.Zeile);
        JournalHeader& head = unknown.emplace_back(newHead(program.context(), Change::Art::Speichern));
        head.zeit = line.datum + " " + line.timeOfDay;
        head.machineName = line.machineName;
        head.benutzer.clear(), head.sid.clear();
        head.tipp = values.of(line.tipp).tipp;
        head.überschrift = values.of(line.tipp).überschrift;
        head.zeile = entry.Zeile;
        head.lineOnly = true;
    }
    return unknown;
}

// They get a number too, so that every change has one that stays.
void adoptLines(Program& program, Listen& lists) {
    if (!lists.journal().writable()) return;
    lists.journal().transaction([&] {
        if (!lists.history().unite()) return;   // what another process does to the list belongs with what it does to the journal
        for (const JournalHeader& head : unknownLines(program, lists)) lists.journal().adoptLine(head);
    });
}

int list(Program& program, Listen& lists, bool json) {
    ordered_json out = ordered_json::array();
    std::vector<JournalHeader> changes = lists.journal().heads();
    for (JournalHeader& line : unknownLines(program, lists)) changes.push_back(std::move(line));   // some are left where nothing can be written
    for (const JournalHeader& change : changes) {
        if (isUndo(change) || (change.lineOnly && change.hiddenOnes)) continue;
        if (json) out.push_back(changeJson(change));
        else std::cout << changeLine(change) << "\n";
    }
    if (json) std::cout << jsonText(out) << "\n";
    return 0;
}

int show(Program& program, Listen& lists, std::int64_t number, bool json) {
    const auto change = lists.journal().entry(number);
    return change ? printChange(program, *change, json) : failed(fmt::format(messages::NoSuchEntry, number));
}

bool isDay(const std::string& text) {
    static constexpr std::string_view Form = "0000-00-00";
    return text.size() == Form.size() && std::equal(text.begin(), text.end(), Form.begin(), [](char c, char form) { return form == '0' ? c >= '0' && c <= '9' : c == form; });
}

// Lines that were found in History.txt bring their own form of the date, "09.11.2002 12:30:00".
std::string isoTime(const JournalHeader& change) {
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

int undo(Program& program, Listen& lists, std::int64_t number, bool exact, bool json) {
    requireWritable(lists);
    const auto change = lists.journal().head(number);
    if (!change || isUndo(*change)) return failed(fmt::format(messages::NoSuchEntry, number));
    if (change->undoneBy != 0) return failed(messages::AlreadyUndone);
    Context& ctx = program.context();
    UndoAnswer exactly(ctx, lists.journal(), lists.history());
    bool done = false;
    if (exact) {
        done = exactly.undo(number);
    } else {
        if (!change->zeile) return failed(std::string(messages::OnlyExact) + " (--exact)");
        TipValues values(ctx);
        done = Undo(ctx, lists.journal(), exactly, values).execute(*change->zeile, number);
    }
    if (done && change->zeile) {
        lists.history().deleteLine(*change->zeile);
        lists.history().HistorySave();
    }
    return result(done, number, "undone", json);
}

int redo(Program& program, Listen& lists, std::int64_t number, bool json) {
    requireWritable(lists);
    const bool done = UndoAnswer(program.context(), lists.journal(), lists.history()).restore(number);
    if (done) lists.history().HistorySave();
    return result(done, number, "redone", json);
}

// Which changes: one, those before a day, or all.
int forget(Program& program, Listen& lists, std::int64_t number, const std::string& before, bool json) {
    if (!before.empty() && !isDay(before)) return failed("Kein Datum der Form 2002-11-09: " + before, 2);
    std::vector<std::int64_t> numbers;
    for (const JournalHeader& change : lists.journal().heads())
        if (!isUndo(change) && (number != 0 ? change.nummer == number : before.empty() || isoTime(change) < before)) numbers.push_back(change.nummer);
    if (numbers.empty()) return number != 0 ? failed(fmt::format(messages::NoSuchEntry, number)) : 0;
    if (!program.context().port.ask(fmt::format(messages::ForgetCount, numbers.size()), box::Exclamation + box::DefaultNo)) return 1;
    lists.history().forget(numbers);
    if (json) std::cout << jsonText({{"forgotten", numbers}}) << "\n";
    return 0;
}

}  // namespace

void addHistoryCommands(CLI::App& app, Invocation& call) {
    auto* group = app.add_subcommand("history", "Durchgeführte Änderungen ansehen und zurücksetzen");
    group->require_subcommand(1);
    auto number = std::make_shared<std::int64_t>(0);
    auto exact = std::make_shared<bool>(false);
    const auto on = [&call](CLI::App* command, std::function<int(Program&, Listen&)> work) {
        command->callback([&call, work] {
            call.needsDatabase = true;
            call.run = withHistory(call, [work](Program& program, Listen& listen) {
                adoptLines(program, listen);
                return work(program, listen);
            });
        });
    };
    const auto withNumber = [&](const char* name, const char* text) {
        auto* command = group->add_subcommand(name, text);
        command->add_option("NUMBER", *number, "Nummer der Änderung, wie list sie nennt")->transform(wholeNumber<std::int64_t>())->required();
        return command;
    };
    on(group->add_subcommand("list", "Alle Änderungen mit ihren Nummern"), [&call](Program& p, Listen& l) { return list(p, l, call.json); });
    on(withNumber("show", "Die Werte einer Änderung: vorher, danach, jetzt"), [&call, number](Program& p, Listen& l) { return show(p, l, *number, call.json); });
    auto* back = withNumber("undo", "Eine Änderung zurücksetzen");
    back->add_flag("--keep", call.keep, "Was inzwischen noch einmal geändert wurde, so lassen und das Übrige zurücksetzen (mit --exact)");
    back->add_flag("--exact", *exact, "Genau: Typ und Bytes, auf dem Rechner der Änderung, alles oder nichts");
    on(back, [&call, number, exact](Program& p, Listen& l) { return undo(p, l, *number, *exact, call.json); });
    on(withNumber("redo", "Eine zurückgesetzte Änderung wiederherstellen"), [&call, number](Program& p, Listen& l) { return redo(p, l, *number, call.json); });
    const auto day = std::make_shared<std::string>();
    auto* forgetter = group->add_subcommand("forget", "Änderungen mit ihren Werten endgültig aus History und Journal entfernen: eine, die vor einem Tag oder alle (fragt nach)");
    auto* one = forgetter->add_option("NUMBER", *number, "Nummer der Änderung, wie list sie nennt");
    forgetter->add_option("--before", *day, "Alle Änderungen vor diesem Tag, 2002-11-09")->excludes(one);
    on(forgetter, [&call, number, day](Program& p, Listen& l) { return forget(p, l, *number, *day, call.json); });
    addDriftCommand(app, call);
}

}  // namespace brenvik::cli
