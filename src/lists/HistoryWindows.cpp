#include "lists/HistoryWindows.h"

#include <fmt/format.h>

#include <algorithm>
#include <unordered_map>

#include "frame/Reports.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "lists/Messages.h"
#include "registry/ValueOperations.h"
#include "registry/search/Search.h"

namespace brenvik {
namespace {

constexpr int TextLoeschen1 = 41, TextLoeschen2 = 42, TextAllesLoeschen = 43;

std::string nameIn(const std::string& path) {
    const std::string name = path.substr(path.rfind('\\') + 1);
    return name.empty() ? std::string(meldung::UnbenannterWert) : name;
}

std::string text(const std::optional<RawValue>& value) { return value ? dataText(*value) : std::string(KeyNichtVorhanden); }

// "2002-11-09 12:30:00" as the columns have date and time.
HistoryListeAnfrage::Zeile rowOf(const JournalKopf& head) {
    const std::string& t = head.zeit;
    if (t.size() != 19) return {t, {}, head.rechner, head.überschrift};
    return {t.substr(8, 2) + "." + t.substr(5, 2) + "." + t.substr(0, 4), t.substr(11), head.rechner, head.überschrift};
}

}  // namespace

HistoryFenster::HistoryFenster(TippMaschine& engine, Journal& journal, History& history, const std::vector<std::string>& notes, std::function<void()> changed)
    : engine_(engine), ctx_(engine.context()), journal_(journal), history_(history), notes_(notes), changed_(std::move(changed)), tippwerte_(ctx_),
      exact_(ctx_, journal, history), undo_(ctx_, journal, exact_, tippwerte_) {}

void HistoryFenster::oeffnen() {
    if (!engine_.DatenSichern()) return;   // the registry may change under the Tip on screen
    HistoryListeAnfrage list;
    tippwerte_.forget();   // another database may have been loaded
    undoTried_ = false;
    toHide_.clear();
    list.zeile = [this, &list](std::size_t row) { return shown(list.zeilen.at(row)); };
    list.anzeigen = [this, &list](std::size_t row) { anzeigen(list, row); };
    list.loeschen = [this, &list](std::size_t row) { loeschen(list, row); };
    list.allesLoeschen = [this, &list] { allesLoeschen(list); };
    list.wiederherstellen = [this, &list] { wiederherstellen(list); };
    list.vergessen = [this, &list](std::size_t row) { vergessen(list, row); };
    for (const std::string& note : notes_) list.hinweis += (list.hinweis.empty() ? "" : "\r\n") + note;
    list.zurueck = [this, &list] {
        ctx_.klick();
        if (!list.blnListeGeaendert) return;
        history_.HistorySave();
        reportAndGoOn(ctx_, "HistorySave", [&] {
            journal_.transaction([&] {
                for (const std::int64_t nummer : toHide_) journal_.hide(nummer);
            });
        });
    };
    fill(list);
    ctx_.port.showWindow(list);
    if (undoTried_) engine_.reloadTipp();
}

void HistoryFenster::fill(HistoryListeAnfrage& list) {
    list.zeilen = rows();
    list.befehleAktiv = !list.zeilen.empty();
    list.redoMoeglich = false;
    reportAndGoOn(ctx_, "frmBVK_HistoryListe", [&] { list.redoMoeglich = journal_.lastTakenBack() != 0; });
}

// Lines of History.txt in their order; changes without a line stand before the line that came next.
std::vector<HistoryListeAnfrage::Tag> HistoryFenster::rows() {
    std::vector<Tag> rows;
    std::unordered_map<std::string, std::vector<std::int64_t>> before;
    reportAndGoOn(ctx_, "frmBVK_HistoryListe", [&] {
        for (const auto& [head, nextLine] : journal_.withoutLine())
            if (!toHide_.contains(head.nummer)) before[nextLine].push_back(head.nummer);
    });
    const auto emit = [&](const std::string& line) {
        const auto found = before.find(line);
        if (found == before.end()) return;
        for (const std::int64_t nummer : found->second) rows.push_back({0, nummer});
        before.erase(found);
    };
    rows.reserve(history_.udtHistory().size());
    for (const HistorySatz& entry : history_.udtHistory()) {
        if (!before.empty()) emit(entry.Zeile);
        if (!entry.Geloescht) rows.push_back({entry.Nummer, 0});
    }
    std::vector<std::int64_t> rest;   // the next line has gone, or there is none yet
    for (const auto& [line, numbers] : before) rest.insert(rest.end(), numbers.begin(), numbers.end());
    std::sort(rest.begin(), rest.end());
    for (const std::int64_t nummer : rest) rows.push_back({0, nummer});
    return rows;
}

std::int64_t HistoryFenster::journalOf(const Tag& tag) {
    if (tag.journal != 0) return tag.journal;
    const HistorySatz* entry = history_.find(tag.Nummer);
    if (entry == nullptr) return 0;
    const auto younger = std::count_if(history_.udtHistory().begin(), history_.udtHistory().end(), [&](const HistorySatz& other) {
        return other.Nummer > entry->Nummer && !other.Geloescht && other.Zeile == entry->Zeile;
    });
    std::int64_t nummer = 0;
    reportAndGoOn(ctx_, "frmBVK_HistoryDaten", [&] { nummer = journal_.byLine(entry->Zeile, static_cast<std::size_t>(younger)); });
    return nummer;
}

// For rows that are being painted, where no box may come.
std::optional<JournalKopf> HistoryFenster::quietHead(const std::function<std::int64_t()>& number) {
    try {
        return journal_.head(number());
    } catch (const NumberedError& error) {
        ctx_.trace.write(std::string("--- Fehler: ") + error.what());
        return std::nullopt;
    }
}

HistoryListeAnfrage::Zeile HistoryFenster::shown(const Tag& tag) {
    if (tag.journal != 0) {
        const auto head = quietHead([&] { return tag.journal; });
        return head ? rowOf(*head) : HistoryListeAnfrage::Zeile{};
    }
    const HistorySatz* entry = history_.find(tag.Nummer);
    if (entry == nullptr) return {};
    const HistoryKopf head = historyHead(entry->Zeile);
    std::string heading = tippwerte_.of(head.tipp).überschrift;
    if (heading.empty())   // the database has no such Tip any more
        if (const auto known = quietHead([&] { return journal_.byLine(entry->Zeile); })) heading = known->überschrift;
    return {head.datum, head.uhrzeit, head.rechner, heading};
}

// --- the list's commands ---

void HistoryFenster::markDeleted(const Tag& tag) {
    if (tag.journal != 0) toHide_.insert(tag.journal);
    else if (HistorySatz* entry = history_.find(tag.Nummer)) entry->Geloescht = true;
}

void HistoryFenster::removeRow(HistoryListeAnfrage& list, std::size_t row) {
    list.blnListeGeaendert = true;
    list.zeilen.erase(list.zeilen.begin() + static_cast<std::ptrdiff_t>(row));
    list.befehleAktiv = !list.zeilen.empty();
}

void HistoryFenster::listEmptied() {
    ctx_.frmBVK_Prog.tbrHistory = false;
    changed_();
}

void HistoryFenster::loeschen(HistoryListeAnfrage& list, std::size_t row) {
    ctx_.klick();
    if (row >= list.zeilen.size()) return;
    const bool yes = ctx_.port.ask(strBVKTexte(TextLoeschen1) + shown(list.zeilen[row]).datum + strBVKTexte(TextLoeschen2));
    ctx_.klick();
    if (!yes) return;
    markDeleted(list.zeilen[row]);
    removeRow(list, row);
    if (list.zeilen.empty()) listEmptied();
}

void HistoryFenster::allesLoeschen(HistoryListeAnfrage& list) {
    ctx_.klick();
    if (list.zeilen.empty() || !ctx_.port.ask(strBVKTexte(TextAllesLoeschen))) return;
    for (const Tag& tag : list.zeilen) markDeleted(tag);
    list.zeilen.resize(1);
    removeRow(list, 0);
    listEmptied();
}

void HistoryFenster::wiederherstellen(HistoryListeAnfrage& list) {
    ctx_.klick();
    reportAndGoOn(ctx_, "frmBVK_HistoryListe", [&] {
        const std::int64_t nummer = journal_.lastTakenBack();
        const auto head = nummer != 0 ? journal_.head(nummer) : std::nullopt;
        if (!head) return;
        const auto row = rowOf(*head);
        if (!ctx_.port.ask(fmt::format(meldung::RedoFrage, row.datum + " " + row.uhrzeit + "  " + row.überschrift))) return;
        undoTried_ = true;
        if (!exact_.wiederherstellen(nummer)) return;
        if (head->zeile) list.blnListeGeaendert = true;
        fill(list);
        if (!list.zeilen.empty()) ctx_.frmBVK_Prog.tbrHistory = true;
        changed_();
    });
}

// Line and journal, for good. What is shown of the list is all that is left of it.
void HistoryFenster::vergessen(HistoryListeAnfrage& list, std::size_t row) {
    ctx_.klick();
    if (row >= list.zeilen.size()) return;
    const Tag tag = list.zeilen[row];
    const auto shownRow = shown(tag);
    if (!ctx_.port.ask(fmt::format(meldung::VergessenFrage, shownRow.datum + " " + shownRow.uhrzeit + "  " + shownRow.überschrift), box::Exclamation + box::DefaultNo)) return;
    reportAndGoOn(ctx_, "frmBVK_HistoryListe", [&] {
        const std::int64_t nummer = journalOf(tag);
        history_.forget(nummer != 0 ? std::vector{nummer} : std::vector<std::int64_t>(), tag.journal == 0 ? tag.Nummer : 0);
        const bool changedBefore = list.blnListeGeaendert;
        removeRow(list, row);
        list.blnListeGeaendert = changedBefore;
        list.redoMoeglich = journal_.lastTakenBack() != 0;
        if (list.zeilen.empty()) listEmptied();
    });
}

// --- one change ---

std::string HistoryFenster::presentText(const std::string& path) {
    if (!path.ends_with('\\')) return ReadRegistryKey(ctx_, path, KeyNichtVorhanden);
    std::string now = KeyNichtVorhanden;   // the unnamed value, which is not there merely because its key is
    reportAndGoOn(ctx_, "ReadRegistryKey", [&] {
        ctx_.objBVKReg.SetPath(ctx_.strLokalerRechner, path);
        now = text(ctx_.objBVKReg.ReadRaw());
    });
    return now;
}

std::string HistoryFenster::presentText(const RegAddress& place) {
    std::string now = "?";   // on a machine that nobody works on
    if (!atHand(ctx_, place.machine)) return now;
    reportAndGoOn(ctx_, "frmBVK_HistoryDaten", [&] {
        RegStore& store = storeOf(ctx_, place.machine);
        if (place.name) now = text(store.value(place.root, place.key, *place.name));
        else now = store.keyExists(place.root, place.key) ? "Schlüssel vorhanden" : KeyNichtVorhanden;
    });
    return now;
}

std::vector<HistoryDatenAnfrage::Zeile> HistoryFenster::values(const Tag& tag, const std::optional<JournalEintrag>& known) {
    std::vector<HistoryDatenAnfrage::Zeile> rows;
    if (const HistorySatz* entry = history_.find(tag.Nummer); tag.journal == 0 && entry != nullptr) {
        const auto pairs = historyPairs(entry->Zeile);
        for (std::size_t k = 0; k < pairs.size(); ++k) {
            const Tippwert& tipp = tippwerte_.of(pairs[k].tipp);
            std::string path = tipp.brauchbar ? tipp.path : std::string();
            std::string shownAs = path;
            if (known && k < known->paare.size()) {
                const RegAddress address = pairAddress(ctx_, *known, k);
                shownAs = shownPath(ctx_, address);
                if (path.empty()) path = address.path();
            }
            rows.push_back({path.empty() ? std::string() : nameIn(path), pairs[k].alt, path.empty() ? std::string() : presentText(path), shownAs});
        }
        return rows;
    }
    if (!known) return rows;
    for (const WertAenderung& value : known->aenderung.werte) {
        const RegAddress place = addressOf(ctx_, *known, value);
        rows.push_back({place.name->isUnnamed() ? std::string(meldung::UnbenannterWert) : place.name->text(), text(value.alt), presentText(place), shownPath(ctx_, place)});
    }
    for (const SchluesselBild& key : known->aenderung.schluessel)
        if (key.geloescht) {
            const RegAddress place = addressOf(ctx_, *known, key.path);
            rows.push_back({nameIn(key.path), fmt::format("Schlüssel mit {} Werten", key.werte.size()), presentText(place), shownPath(ctx_, place)});
        }
    for (const DateiBild& file : known->aenderung.dateien)
        rows.push_back({nameIn(file.datei), fmt::format("Datei mit {} Bytes", file.inhalt.size()), fmt::format("Datei mit {} Bytes", file.neu.size()), file.datei});
    return rows;
}

// After an undo the record leaves the list; the list stays within reach even when it is empty then, since the undo can be
// undone there. One that failed may have written some of the values all the same.
bool HistoryFenster::takenBack(HistoryListeAnfrage& list, std::size_t row, const std::function<bool()>& undo) {
    ctx_.klick();
    undoTried_ = true;
    if (!undo()) return false;
    if (list.zeilen[row].journal == 0) markDeleted(list.zeilen[row]);
    removeRow(list, row);
    list.redoMoeglich = true;
    return true;
}

void HistoryFenster::anzeigen(HistoryListeAnfrage& list, std::size_t row) {
    ctx_.klick();
    if (row >= list.zeilen.size()) return;
    const Tag tag = list.zeilen[row];
    const std::int64_t nummer = journalOf(tag);
    std::optional<JournalEintrag> known;
    if (nummer != 0) reportAndGoOn(ctx_, "frmBVK_HistoryDaten", [&] { known = journal_.entry(nummer); });
    if (known && known->nurZeile) known.reset();
    const HistorySatz* entry = tag.journal == 0 ? history_.find(tag.Nummer) : nullptr;
    const std::string zeile = entry != nullptr ? entry->Zeile : std::string();

    HistoryDatenAnfrage daten;
    daten.zeilen = values(tag, known);
    daten.undoMoeglich = entry != nullptr;
    daten.genauMoeglich = known && known->aufgehobenDurch == 0;
    const bool here = known && markOf(ctx_, *known).empty();   // under whatever name
    if (const std::string rechner = historyHead(zeile).rechner; entry != nullptr && !here && !rechner.empty() && !equalText(rechner, ctx_.strLokalerRechner))
        daten.hinweis = fmt::format(meldung::AnderswoGelesen, rechner, ctx_.strLokalerRechner);
    daten.zuruecksetzen = [&] { return takenBack(list, row, [&] { return undo_.ausfuehren(zeile, nummer); }); };
    daten.genauZuruecksetzen = [&] { return takenBack(list, row, [&] { return exact_.zuruecksetzen(nummer); }); };
    daten.zurueck = [&] { ctx_.klick(); };
    ctx_.port.showWindow(daten);
}

}  // namespace brenvik
