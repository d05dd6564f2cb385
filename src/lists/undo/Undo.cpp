#include "lists/undo/Undo.h"

#include <fmt/format.h>

#include <set>

#include "frame/Reports.h"
#include "frame/platform/HostFile.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "lists/Messages.h"
#include "lists/undo/PriorState.h"
#include "registry/ValueOperations.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik {
namespace {

constexpr int TextFailed = 49, TextSuccess = 61;

// The value of the change that a pair of the line tells of.
const ValueChange* changeAt(Context& ctx, const JournalEntry& known, const std::string& id) {
    for (const ValueChange& value : known.change.values)
        if (addressOf(ctx, known, value).id() == id) return &value;
    return nullptr;
}

}  // namespace

HistoryHeader historyHead(const std::string& zeile) {
    const auto pieces = Split(zeile, "#");
    const auto piece = [&](std::size_t k) { return k < pieces.size() ? pieces[k] : std::string(); };
    const auto pairs = historyPairs(zeile);
    return {piece(0), piece(1), Replace(piece(2), "%23", "#"), pairs.empty() ? 0 : pairs[0].tipp};
}

bool Undo::fail() {
    ctx_.port.tell(strBVKTexte(TextFailed), box::Exclamation);
    ctx_.click();
    return false;
}

Undo::Effect Undo::effectOf(const Step& step) const {
    if (step.text == KeyNotThere) return {std::nullopt, true};
    if (step.secret) return {step.secret, true};
    try {
        return {fromText(step.text, static_cast<std::uint32_t>(step.type)), true};
    } catch (const RegError&) {
        return {std::nullopt, false};
    }
}

// False: some value has no place to go to.
bool Undo::plan(const std::string& zeile, const JournalEntry* known, std::vector<Step>& steps) {
    const auto pairs = historyPairs(zeile);
    for (std::size_t k = 0; k < pairs.size(); ++k) {
        const TipValue& tipp = values_.of(pairs[k].tipp);
        Step step{tipp.path, tipp.wertname, pairs[k].alt, tipp.datentyp, static_cast<std::int16_t>(pairs[k].tipp), {}, {}};
        const ValueChange* change = nullptr;
        if (known != nullptr && k < known->pairs.size()) {
            step.known = pairAddress(ctx_, *known, k);
            change = changeAt(ctx_, *known, step.known->id());
        }
        if (step.text == Secret && change != nullptr && change->alt) step.secret = change->alt;
        if (!tipp.usable) {
            if (!step.known) return false;
            step.path = step.known->path();
            step.name = step.known->name->text();
            if (!tipp.inStock) {
                if (change == nullptr || !(change->alt || change->neu)) return false;
                step.type = static_cast<std::int16_t>((change->alt ? change->alt : change->neu)->type);
            }
        }
        if (step.text == Secret && !step.secret && isSecret(step.path)) return false;   // nobody knows it any more
        steps.push_back(std::move(step));
    }
    return !steps.empty();
}

std::string Undo::inexactness(const std::vector<Step>& steps, const JournalEntry* known) {
    std::string lines;
    std::optional<PriorState> prior;
    if (known != nullptr) prior.emplace(ctx_, journal_, *known);
    const auto line = [&](const std::string& path, const std::string& old, const Step& step, const Effect& effect) {
        lines += fmt::format(messages::UndoLineInexact, path, old, effect.possible ? shownRaw(effect.value) : "nichts, \"" + step.text + "\" ist kein solcher Wert");
    };
    std::set<std::string> named;
    for (const Step& step : steps) {
        const Effect effect = effectOf(step);
        if (known == nullptr || !step.known) {
            if (!effect.possible) line(step.path, "\"" + step.text + "\"", step, effect);
            continue;
        }
        named.insert(step.known->id());
        const ValueChange* change = changeAt(ctx_, *known, step.known->id());
        if (change == nullptr || !change->written) continue;
        const auto old = prior->value(*step.known, change->alt);
        if (step.known->machine.empty() && placeOf(step).id() != step.known->id()) lines += fmt::format(messages::UndoLineMissing, shownPath(ctx_, *step.known), shownRaw(old));
        else if (old != effect.value) line(shownPath(ctx_, *step.known), shownRaw(old), step, effect);
    }
    if (known == nullptr) return lines;
    for (const ValueChange& value : known->change.values) {
        const RegAddress place = addressOf(ctx_, *known, value);
        if (!named.contains(place.id()) && value.written && value.alt != value.neu) lines += fmt::format(messages::UndoLineMissing, shownPath(ctx_, place), shownRaw(value.alt));
    }
    if (!known->change.dateien.empty() || !known->change.key.empty()) lines += messages::UndoFiles;
    return lines;
}

bool Undo::execute(const std::string& zeile, std::int64_t nummer) {
    std::optional<JournalEntry> entry;
    if (nummer != 0) reportAndGoOn(ctx_, "cmdDatenUndo", [&] { entry = journal_.entry(nummer); });
    const JournalEntry* known = entry && !entry->lineOnly ? &*entry : nullptr;
    std::vector<Step> steps;
    if (!plan(zeile, known, steps)) return fail();

    const std::string machineName = historyHead(zeile).machineName;
    const bool here = known != nullptr && markOf(ctx_, *known).empty();   // under whatever name
    if (!here && !machineName.empty() && !equalText(machineName, ctx_.strLokalerRechner) &&
        !ctx_.port.ask(fmt::format(messages::UndoOtherMachine, machineName, ctx_.strLokalerRechner), box::Exclamation + box::DefaultNo))
        return false;

    std::string inexact = inexactness(steps, known);
    if (known == nullptr)
        for (const HistoryPaar& pair : historyPairs(zeile))
            if (const TipValue& tipp = values_.of(pair.tipp); kindOf(tipp.ausgabeart).shownDifferently(tipp.datentyp) && pair.alt != KeyNotThere) {
                const Effect effect = effectOf({tipp.path, tipp.wertname, pair.alt, tipp.datentyp, 0, {}, {}});
                if (effect.possible) inexact += fmt::format(messages::UndoLineInexact, tipp.path, "\"" + pair.alt + "\" in der Form der Anzeige", shownRaw(effect.value));
            }
    if (!inexact.empty()) {
        if (known != nullptr) {
            if (ctx_.port.ask(fmt::format(messages::UndoInexact, inexact), box::Exclamation)) return exact_.undo(nummer);
            if (!ctx_.port.ask(messages::UndoAnyway, box::Exclamation + box::DefaultNo)) return false;
        } else if (!ctx_.port.ask(fmt::format(messages::UndoInexactNoJournal, inexact) + "\r\n\r\n" + messages::UndoAnyway, box::Exclamation + box::DefaultNo)) {
            return false;
        }
    }
    return perform(steps, zeile, nummer);
}

// A name that holds a backslash travels apart from its key.
bool Undo::writeApart(const Step& step) {
    try {
        ctx_.objBVKReg.SetValuePath(ctx_.strLokalerRechner, step.keyPath(), step.name);
        if (step.text == KeyNotThere) ctx_.objBVKReg.DeleteValue();
        else ctx_.objBVKReg.WriteRaw(step.secret ? *step.secret : fromText(step.text, static_cast<std::uint32_t>(step.type)));
        return true;
    } catch (const NumberedError& error) {
        RegFehlermeldungen(ctx_, error.number);
        return false;
    }
}

// Where the step writes: the local machine, whatever machine the change was made on.
RegAddress Undo::placeOf(const Step& step) {
    ValueChange value;
    value.path = step.path;
    if (step.hasSeparator()) value.path = step.keyPath(), value.name = step.name;
    return addressForWriting(ctx_, value, step.text == KeyNotThere);
}

bool Undo::writeStep(const Step& step) {
    if (step.hasSeparator()) return writeApart(step);
    if (step.text != KeyNotThere && !step.secret) return SaveRegistryKey(ctx_, step.path, step.text, step.type);
    if (!step.path.ends_with('\\') && !step.secret) return SaveRegistryKey(ctx_, step.path, DelKey, step.type);
    // The unnamed value: a deletion by the path's text would take the whole key.
    try {
        ctx_.objBVKReg.SetPath(ctx_.strLokalerRechner, step.path);
        step.secret ? ctx_.objBVKReg.WriteRaw(*step.secret) : void(ctx_.objBVKReg.DeleteValue());
        return true;
    } catch (const NumberedError& error) {
        RegFehlermeldungen(ctx_, error.number);
        return false;
    }
}

bool Undo::perform(const std::vector<Step>& steps, const std::string& zeile, std::int64_t nummer) {
    const host::FolderLock turn(ctx_.homePath, PatienceForOthers);
    if (turn.error() == std::errc::timed_out) {
        ctx_.port.tell(messages::AnotherUndoes, box::Exclamation);
        return false;
    }
    JournalEntry record;
    static_cast<JournalHeader&>(record) = newHead(ctx_, Change::Art::Undo);
    record.machineName.clear();
    record.tipp = values_.of(historyHead(zeile).tipp).tipp;
    std::vector<RegAddress> places;
    const auto present = [&](const RegAddress& place) { return storeOf(ctx_, place.machine).value(place.root, place.key, *place.name); };
    std::int64_t recorded = 0;
    const bool journaling = reportAndGoOn(ctx_, "cmdDatenUndo", [&] {
        for (const Step& step : steps) {
            const RegAddress& place = places.emplace_back(placeOf(step));
            record.change.values.push_back({record.machineName, place.keyPath(), step.tipp, present(place), effectOf(step).value, false, place.name->text()});
        }
        if (nummer == 0) {   // a line that nobody recorded: now there is something to record about it
            JournalHeader head = newHead(ctx_, Change::Art::Speichern);
            head.tipp = record.tipp, head.zeile = zeile, head.machineName = historyHead(zeile).machineName;
            nummer = journal_.adoptLine(head);
        }
        const auto change = journal_.head(nummer);
        record.überschrift = change ? change->überschrift : std::string();
        if (change && change->tipp != 0) record.tipp = change->tipp;
        record.undoes = nummer;
        recorded = journal_.add(record);
    });
    bool ok = true;
    for (std::size_t k = 0; ok && k < steps.size(); ++k) {
        ok = writeStep(steps[k]);
        if (ok && journaling) record.change.values[k].written = true;
    }
    if (journaling)
        reportAndGoOn(ctx_, "cmdDatenUndo", [&] {
            for (std::size_t k = 0; k < steps.size(); ++k)
                if (record.change.values[k].written) record.change.values[k].neu = present(places[k]);
            if (const auto change = ok ? journal_.entry(nummer) : std::nullopt; change && markOf(ctx_, *change).empty()) exact_.removeEmptyKeys(*change, places);
            journal_.transaction([&] {
                journal_.finish(recorded, record);
                if (ok) journal_.takenBack(nummer, recorded);
            });
        });
    if (!ok) return fail();
    ctx_.port.tell(strBVKTexte(TextSuccess));
    ctx_.click();
    return true;
}

}  // namespace brenvik
