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

constexpr int TextGescheitert = 49, TextErfolg = 61;

// The value of the change that a pair of the line tells of.
const WertAenderung* changeAt(Context& ctx, const JournalEintrag& known, const std::string& id) {
    for (const WertAenderung& value : known.aenderung.werte)
        if (addressOf(ctx, known, value).id() == id) return &value;
    return nullptr;
}

}  // namespace

HistoryKopf historyHead(const std::string& zeile) {
    const auto pieces = Split(zeile, "#");
    const auto piece = [&](std::size_t k) { return k < pieces.size() ? pieces[k] : std::string(); };
    const auto pairs = historyPairs(zeile);
    return {piece(0), piece(1), Replace(piece(2), "%23", "#"), pairs.empty() ? 0 : pairs[0].tipp};
}

bool Zuruecksetzen::fail() {
    ctx_.port.tell(strBVKTexte(TextGescheitert), box::Exclamation);
    ctx_.klick();
    return false;
}

Zuruecksetzen::Wirkung Zuruecksetzen::effectOf(const Schritt& step) const {
    if (step.text == KeyNichtVorhanden) return {std::nullopt, true};
    if (step.geheim) return {step.geheim, true};
    try {
        return {fromText(step.text, static_cast<std::uint32_t>(step.type)), true};
    } catch (const RegError&) {
        return {std::nullopt, false};
    }
}

// False: some value has no place to go to.
bool Zuruecksetzen::plan(const std::string& zeile, const JournalEintrag* known, std::vector<Schritt>& steps) {
    const auto pairs = historyPairs(zeile);
    for (std::size_t k = 0; k < pairs.size(); ++k) {
        const Tippwert& tipp = values_.of(pairs[k].tipp);
        Schritt step{tipp.path, tipp.wertname, pairs[k].alt, tipp.datentyp, static_cast<std::int16_t>(pairs[k].tipp), {}, {}};
        const WertAenderung* change = nullptr;
        if (known != nullptr && k < known->paare.size()) {
            step.known = pairAddress(ctx_, *known, k);
            change = changeAt(ctx_, *known, step.known->id());
        }
        if (step.text == Geheim && change != nullptr && change->alt) step.geheim = change->alt;
        if (!tipp.brauchbar) {
            if (!step.known) return false;
            step.path = step.known->path();
            step.name = step.known->name->text();
            if (!tipp.imBestand) {
                if (change == nullptr || !(change->alt || change->neu)) return false;
                step.type = static_cast<std::int16_t>((change->alt ? change->alt : change->neu)->type);
            }
        }
        if (step.text == Geheim && !step.geheim && isSecret(step.path)) return false;   // nobody knows it any more
        steps.push_back(std::move(step));
    }
    return !steps.empty();
}

std::string Zuruecksetzen::inexactness(const std::vector<Schritt>& steps, const JournalEintrag* known) {
    std::string lines;
    std::optional<PriorState> prior;
    if (known != nullptr) prior.emplace(ctx_, journal_, *known);
    const auto line = [&](const std::string& path, const std::string& old, const Schritt& step, const Wirkung& effect) {
        lines += fmt::format(meldung::UndoZeileUngenau, path, old, effect.possible ? shownRaw(effect.value) : "nichts, \"" + step.text + "\" ist kein solcher Wert");
    };
    std::set<std::string> named;
    for (const Schritt& step : steps) {
        const Wirkung effect = effectOf(step);
        if (known == nullptr || !step.known) {
            if (!effect.possible) line(step.path, "\"" + step.text + "\"", step, effect);
            continue;
        }
        named.insert(step.known->id());
        const WertAenderung* change = changeAt(ctx_, *known, step.known->id());
        if (change == nullptr || !change->geschrieben) continue;
        const auto old = prior->value(*step.known, change->alt);
        if (step.known->machine.empty() && placeOf(step).id() != step.known->id()) lines += fmt::format(meldung::UndoZeileFehlt, shownPath(ctx_, *step.known), shownRaw(old));
        else if (old != effect.value) line(shownPath(ctx_, *step.known), shownRaw(old), step, effect);
    }
    if (known == nullptr) return lines;
    for (const WertAenderung& value : known->aenderung.werte) {
        const RegAddress place = addressOf(ctx_, *known, value);
        if (!named.contains(place.id()) && value.geschrieben && value.alt != value.neu) lines += fmt::format(meldung::UndoZeileFehlt, shownPath(ctx_, place), shownRaw(value.alt));
    }
    if (!known->aenderung.dateien.empty() || !known->aenderung.schluessel.empty()) lines += meldung::UndoDateien;
    return lines;
}

bool Zuruecksetzen::ausfuehren(const std::string& zeile, std::int64_t nummer) {
    std::optional<JournalEintrag> entry;
    if (nummer != 0) reportAndGoOn(ctx_, "cmdDatenUndo", [&] { entry = journal_.entry(nummer); });
    const JournalEintrag* known = entry && !entry->nurZeile ? &*entry : nullptr;
    std::vector<Schritt> steps;
    if (!plan(zeile, known, steps)) return fail();

    const std::string rechner = historyHead(zeile).rechner;
    const bool here = known != nullptr && markOf(ctx_, *known).empty();   // under whatever name
    if (!here && !rechner.empty() && !equalText(rechner, ctx_.strLokalerRechner) &&
        !ctx_.port.ask(fmt::format(meldung::UndoAndererRechner, rechner, ctx_.strLokalerRechner), box::Exclamation + box::DefaultNo))
        return false;

    std::string inexact = inexactness(steps, known);
    if (known == nullptr)
        for (const HistoryPaar& pair : historyPairs(zeile))
            if (const Tippwert& tipp = values_.of(pair.tipp); kindOf(tipp.ausgabeart).shownDifferently(tipp.datentyp) && pair.alt != KeyNichtVorhanden) {
                const Wirkung effect = effectOf({tipp.path, tipp.wertname, pair.alt, tipp.datentyp, 0, {}, {}});
                if (effect.possible) inexact += fmt::format(meldung::UndoZeileUngenau, tipp.path, "\"" + pair.alt + "\" in der Form der Anzeige", shownRaw(effect.value));
            }
    if (!inexact.empty()) {
        if (known != nullptr) {
            if (ctx_.port.ask(fmt::format(meldung::UndoUngenau, inexact), box::Exclamation)) return exact_.zuruecksetzen(nummer);
            if (!ctx_.port.ask(meldung::UndoTrotzdem, box::Exclamation + box::DefaultNo)) return false;
        } else if (!ctx_.port.ask(fmt::format(meldung::UndoUngenauOhneJournal, inexact) + "\r\n\r\n" + meldung::UndoTrotzdem, box::Exclamation + box::DefaultNo)) {
            return false;
        }
    }
    return perform(steps, zeile, nummer);
}

// A name that holds a backslash travels apart from its key.
bool Zuruecksetzen::writeApart(const Schritt& step) {
    try {
        ctx_.objBVKReg.SetValuePath(ctx_.strLokalerRechner, step.keyPath(), step.name);
        if (step.text == KeyNichtVorhanden) ctx_.objBVKReg.DeleteValue();
        else ctx_.objBVKReg.WriteRaw(step.geheim ? *step.geheim : fromText(step.text, static_cast<std::uint32_t>(step.type)));
        return true;
    } catch (const NumberedError& error) {
        RegFehlermeldungen(ctx_, error.number);
        return false;
    }
}

// Where the step writes: the local machine, whatever machine the change was made on.
RegAddress Zuruecksetzen::placeOf(const Schritt& step) {
    WertAenderung value;
    value.path = step.path;
    if (step.hasSeparator()) value.path = step.keyPath(), value.name = step.name;
    return addressForWriting(ctx_, value, step.text == KeyNichtVorhanden);
}

bool Zuruecksetzen::writeStep(const Schritt& step) {
    if (step.hasSeparator()) return writeApart(step);
    if (step.text != KeyNichtVorhanden && !step.geheim) return SaveRegistryKey(ctx_, step.path, step.text, step.type);
    if (!step.path.ends_with('\\') && !step.geheim) return SaveRegistryKey(ctx_, step.path, DelKey, step.type);
    // The unnamed value: a deletion by the path's text would take the whole key.
    try {
        ctx_.objBVKReg.SetPath(ctx_.strLokalerRechner, step.path);
        step.geheim ? ctx_.objBVKReg.WriteRaw(*step.geheim) : void(ctx_.objBVKReg.DeleteValue());
        return true;
    } catch (const NumberedError& error) {
        RegFehlermeldungen(ctx_, error.number);
        return false;
    }
}

bool Zuruecksetzen::perform(const std::vector<Schritt>& steps, const std::string& zeile, std::int64_t nummer) {
    const host::FolderLock turn(ctx_.heimPfad, PatienceForOthers);
    if (turn.error() == std::errc::timed_out) {
        ctx_.port.tell(meldung::AndererSetztZurueck, box::Exclamation);
        return false;
    }
    JournalEintrag record;
    static_cast<JournalKopf&>(record) = newHead(ctx_, Aenderung::Art::Zuruecksetzen);
    record.rechner.clear();
    record.tipp = values_.of(historyHead(zeile).tipp).tipp;
    std::vector<RegAddress> places;
    const auto present = [&](const RegAddress& place) { return storeOf(ctx_, place.machine).value(place.root, place.key, *place.name); };
    std::int64_t recorded = 0;
    const bool journaling = reportAndGoOn(ctx_, "cmdDatenUndo", [&] {
        for (const Schritt& step : steps) {
            const RegAddress& place = places.emplace_back(placeOf(step));
            record.aenderung.werte.push_back({record.rechner, place.keyPath(), step.tipp, present(place), effectOf(step).value, false, place.name->text()});
        }
        if (nummer == 0) {   // a line that nobody recorded: now there is something to record about it
            JournalKopf head = newHead(ctx_, Aenderung::Art::Speichern);
            head.tipp = record.tipp, head.zeile = zeile, head.rechner = historyHead(zeile).rechner;
            nummer = journal_.adoptLine(head);
        }
        const auto change = journal_.head(nummer);
        record.überschrift = change ? change->überschrift : std::string();
        if (change && change->tipp != 0) record.tipp = change->tipp;
        record.hebtAuf = nummer;
        recorded = journal_.add(record);
    });
    bool ok = true;
    for (std::size_t k = 0; ok && k < steps.size(); ++k) {
        ok = writeStep(steps[k]);
        if (ok && journaling) record.aenderung.werte[k].geschrieben = true;
    }
    if (journaling)
        reportAndGoOn(ctx_, "cmdDatenUndo", [&] {
            for (std::size_t k = 0; k < steps.size(); ++k)
                if (record.aenderung.werte[k].geschrieben) record.aenderung.werte[k].neu = present(places[k]);
            if (const auto change = ok ? journal_.entry(nummer) : std::nullopt; change && markOf(ctx_, *change).empty()) exact_.removeEmptyKeys(*change, places);
            journal_.transaction([&] {
                journal_.finish(recorded, record);
                if (ok) journal_.takenBack(nummer, recorded);
            });
        });
    if (!ok) return fail();
    ctx_.port.tell(strBVKTexte(TextErfolg));
    ctx_.klick();
    return true;
}

}  // namespace brenvik
