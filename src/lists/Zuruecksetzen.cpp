#include "lists/Zuruecksetzen.h"

#include <fmt/format.h>

#include <algorithm>

#include "frame/Konvertierung.h"
#include "frame/Reports.h"
#include "frame/Texte.h"
#include "lists/Meldungen.h"
#include "registry/ValueOperations.h"

namespace brenvik {
namespace {

constexpr int TextGescheitert = 49, TextErfolg = 61;

// What the text would become in the registry; failing is an answer here.
struct Wirkung {
    std::optional<RawValue> value;
    bool possible = true;
};
Wirkung effectOf(const std::string& text, std::int16_t type) {
    if (text == KeyNichtVorhanden) return {std::nullopt, true};
    try {
        return {fromText(text, static_cast<std::uint32_t>(type)), true};
    } catch (const RegError&) {
        return {std::nullopt, false};
    }
}

// Kinds whose display form is another than the registry's text: hexadecimal dwords, sums of bytes, colours.
bool shownDifferently(const Tippwert& tipp) {
    return (tipp.ausgabeart == art::TextWerte && tipp.datentyp == 4) || (tipp.ausgabeart == art::ZahlenWerte && tipp.datentyp == 3) ||
           (tipp.ausgabeart == art::Farbe && tipp.datentyp == 3);
}

bool samePlace(const std::string& left, const std::string& right) {
    const RegPath a = parseRegPath(left), b = parseRegPath(right);
    return a.root == b.root && equalText(a.key, b.key) && equalText(a.name.text(), b.name.text());
}

const WertAenderung* changeAt(const JournalEintrag& known, const std::string& path) {
    for (const WertAenderung& value : known.aenderung.werte)
        if (equalText(value.path, path)) return &value;
    return nullptr;
}

}  // namespace

HistoryKopf historyHead(const std::string& zeile) {
    const auto pieces = Split(zeile, "#");
    const auto piece = [&](std::size_t k) { return k < pieces.size() ? pieces[k] : std::string(); };
    const auto pairs = historyPairs(zeile);
    return {piece(0), piece(1), piece(2), pairs.empty() ? 0 : pairs[0].tipp};
}

bool Zuruecksetzen::fail() {
    ctx_.port.tell(strBVKTexte(TextGescheitert), box::Exclamation);
    ctx_.klick();
    return false;
}

// False: some value has no place to go to.
bool Zuruecksetzen::plan(const std::string& zeile, const JournalEintrag* known, std::vector<Schritt>& steps) {
    const auto pairs = historyPairs(zeile);
    for (std::size_t k = 0; k < pairs.size(); ++k) {
        const Tippwert& tipp = values_.of(pairs[k].tipp);
        Schritt step{tipp.path, tipp.wertname, pairs[k].alt, tipp.datentyp};
        if (!tipp.brauchbar) {
            if (known == nullptr || k >= known->paare.size()) return false;
            step.path = placeNow(ctx_, *known, known->paare[k]).path;
            step.name = step.path.substr(step.path.rfind('\\') + 1);
            if (!tipp.imBestand) {
                const WertAenderung* change = changeAt(*known, known->paare[k]);
                if (change == nullptr || !(change->alt || change->neu)) return false;
                step.type = static_cast<std::int16_t>((change->alt ? change->alt : change->neu)->type);
            }
        }
        steps.push_back(std::move(step));
    }
    return !steps.empty();
}

std::string Zuruecksetzen::inexactness(const std::vector<Schritt>& steps, const JournalEintrag* known) const {
    std::string lines;
    const auto line = [&](const std::string& path, const std::string& old, const Schritt& step, const Wirkung& effect) {
        lines += fmt::format(meldung::UndoZeileUngenau, path, old, effect.possible ? shownRaw(effect.value) : "nichts, \"" + step.text + "\" ist kein solcher Wert");
    };
    for (std::size_t k = 0; k < steps.size(); ++k) {
        const Wirkung effect = effectOf(steps[k].text, steps[k].type);
        if (known == nullptr) {
            if (!effect.possible) line(steps[k].path, "\"" + steps[k].text + "\"", steps[k], effect);
            continue;
        }
        const std::string& path = k < known->paare.size() ? known->paare[k] : steps[k].path;
        const WertAenderung* change = changeAt(*known, path);
        if (change != nullptr && change->geschrieben && madeHere(ctx_, *known) && !samePlace(placeNow(ctx_, *known, path).path, steps[k].path))
            lines += fmt::format(meldung::UndoZeileFehlt, path, shownRaw(change->alt));
        else if (change != nullptr && change->geschrieben && change->alt != effect.value)
            line(path, shownRaw(change->alt), steps[k], effect);
    }
    if (known == nullptr) return lines;
    for (const WertAenderung& value : known->aenderung.werte) {
        const bool named = std::any_of(known->paare.begin(), known->paare.end(), [&](const std::string& path) { return equalText(path, value.path); });
        if (!named && value.geschrieben && value.alt != value.neu) lines += fmt::format(meldung::UndoZeileFehlt, value.path, shownRaw(value.alt));
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
    if (!rechner.empty() && !equalText(rechner, ctx_.strLokalerRechner) &&
        !ctx_.port.ask(fmt::format(meldung::UndoAndererRechner, rechner, ctx_.strLokalerRechner), box::Exclamation + box::DefaultNo))
        return false;

    std::string inexact = inexactness(steps, known);
    if (known == nullptr)
        for (const HistoryPaar& pair : historyPairs(zeile))
            if (const Tippwert& tipp = values_.of(pair.tipp); shownDifferently(tipp) && pair.alt != KeyNichtVorhanden && effectOf(pair.alt, tipp.datentyp).possible)
                inexact += fmt::format(meldung::UndoZeileUngenau, tipp.path, "\"" + pair.alt + "\" in der Form der Anzeige", shownRaw(effectOf(pair.alt, tipp.datentyp).value));
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

std::optional<RawValue> Zuruecksetzen::present(const Schritt& step) {
    ctx_.objBVKReg.SetPath(ctx_.strLokalerRechner, step.path);
    return ctx_.objBVKReg.ReadRaw();
}

bool Zuruecksetzen::writeStep(const Schritt& step) {
    if (step.text != KeyNichtVorhanden) return SaveRegistryKey(ctx_, step.path, step.text, step.type);
    if (!step.path.ends_with('\\')) return SaveRegistryKey(ctx_, step.path, DelKey, step.type);
    // The unnamed value: a deletion by the path's text would take the whole key.
    try {
        ctx_.objBVKReg.SetPath(ctx_.strLokalerRechner, step.path);
        ctx_.objBVKReg.DeleteValue();
        return true;
    } catch (const NumberedError& error) {
        RegFehlermeldungen(ctx_, error.number);
        return false;
    }
}

bool Zuruecksetzen::perform(const std::vector<Schritt>& steps, const std::string& zeile, std::int64_t nummer) {
    JournalEintrag record;
    static_cast<JournalKopf&>(record) = newHead(ctx_, Aenderung::Art::Zuruecksetzen);
    record.rechner = ctx_.strLokalerRechner;
    record.tipp = historyHead(zeile).tipp;
    std::int64_t recorded = 0;
    bool journaling = reportAndGoOn(ctx_, "cmdDatenUndo", [&] {
        for (const Schritt& step : steps)
            record.aenderung.werte.push_back({record.rechner, step.path, 0, present(step), effectOf(step.text, step.type).value, false});
        if (nummer == 0) {   // a line that nobody recorded: now there is something to record about it
            JournalKopf head = newHead(ctx_, Aenderung::Art::Speichern);
            head.tipp = record.tipp, head.zeile = zeile, head.rechner = historyHead(zeile).rechner;
            nummer = journal_.adoptLine(head);
        }
        const auto change = journal_.head(nummer);
        record.überschrift = change ? change->überschrift : std::string();
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
                if (record.aenderung.werte[k].geschrieben) record.aenderung.werte[k].neu = present(steps[k]);
            journal_.finish(recorded, record.aenderung);
            if (ok) journal_.takenBack(nummer, recorded);
        });
    if (!ok) return fail();
    ctx_.port.tell(strBVKTexte(TextErfolg));
    ctx_.klick();
    return true;
}

}  // namespace brenvik
