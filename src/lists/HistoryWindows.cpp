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

constexpr int TextDelete1 = 41, TextDelete2 = 42, TextDeleteAll = 43;

std::string nameIn(const std::string& path) {
    const std::string name = path.substr(path.rfind('\\') + 1);
    return name.empty() ? std::string(messages::UnnamedValue) : name;
}

std::string text(const std::optional<RawValue>& value) { return value ? dataText(*value) : std::string(KeyNotThere); }

// "2002-11-09 12:30:00" as the columns have date and time.
HistoryListeRequest::Zeile rowOf(const JournalHeader& head) {
    const std::string& t = head.zeit;
    if (t.size() != 19) return {t, {}, head.machineName, head.überschrift};
    return {t.substr(8, 2) + "." + t.substr(5, 2) + "." + t.substr(0, 4), t.substr(11), head.machineName, head.überschrift};
}

}  // namespace

HistoryWindows::HistoryWindows(TipEngine& engine, Journal& journal, History& history, const std::vector<std::string>& notes, std::function<void()> changed)
    : engine_(engine), ctx_(engine.context()), journal_(journal), history_(history), notes_(notes), changed_(std::move(changed)), tipValues_(ctx_),
      exact_(ctx_, journal, history), undo_(ctx_, journal, exact_, tipValues_) {}

void HistoryWindows::open() {
    if (!engine_.DatenSichern()) return;   // the registry may change under the Tip on screen
    HistoryListeRequest list;
    tipValues_.forget();   // another database may have been loaded
    undoTried_ = false;
    toHide_.clear();
    list.zeile = [this, &list](std::size_t row) { return shown(list.lines.at(row)); };
    list.show = [this, &list](std::size_t row) { show(list, row); };
    list.loeschen = [this, &list](std::size_t row) { loeschen(list, row); };
    list.deleteAll = [this, &list] { deleteAll(list); };
    list.restore = [this, &list] { restore(list); };
    list.forget = [this, &list](std::size_t row) { forget(list, row); };
    for (const std::string& note : notes_) list.hint += (list.hint.empty() ? "" : "\r\n") + note;
    list.back = [this, &list] {
        ctx_.click();
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
    if (undoTried_) engine_.reloadTip();
}

void HistoryWindows::fill(HistoryListeRequest& list) {
    list.lines = rows();
    list.commandsActive = !list.lines.empty();
    list.redoPossible = false;
    reportAndGoOn(ctx_, "frmBVK_HistoryListe", [&] { list.redoPossible = journal_.lastTakenBack() != 0; });
}

// Lines of History.txt in their order; changes without a line stand before the line that came next.
std::vector<HistoryListeRequest::Tag> HistoryWindows::rows() {
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
    for (const HistoryRecord& entry : history_.udtHistory()) {
        if (!before.empty()) emit(entry.Zeile);
        if (!entry.Geloescht) rows.push_back({entry.Nummer, 0});
    }
    std::vector<std::int64_t> rest;   // the next line has gone, or there is none yet
    for (const auto& [line, numbers] : before) rest.insert(rest.end(), numbers.begin(), numbers.end());
    std::sort(rest.begin(), rest.end());
    for (const std::int64_t nummer : rest) rows.push_back({0, nummer});
    return rows;
}

std::int64_t HistoryWindows::journalOf(const Tag& tag) {
    if (tag.journal != 0) return tag.journal;
    const HistoryRecord* entry = history_.find(tag.Nummer);
    if (entry == nullptr) return 0;
    const auto younger = std::count_if(history_.udtHistory().begin(), history_.udtHistory().end(), [&](const HistoryRecord& other) {
        return other.Nummer > entry->Nummer && !other.Geloescht && other.Zeile == entry->Zeile;
    });
    std::int64_t nummer = 0;
    reportAndGoOn(ctx_, "frmBVK_HistoryDaten", [&] { nummer = journal_.byLine(entry->Zeile, static_cast<std::size_t>(younger)); });
    return nummer;
}

// For rows that are being painted, where no box may come.
std::optional<JournalHeader> HistoryWindows::quietHead(const std::function<std::int64_t()>& number) {
    try {
        return journal_.head(number());
    } catch (const NumberedError& error) {
        ctx_.trace.write(std::string("--- Fehler: ") + error.what());
        return std::nullopt;
    }
}

HistoryListeRequest::Zeile HistoryWindows::shown(const Tag& tag) {
    if (tag.journal != 0) {
        const auto head = quietHead([&] { return tag.journal; });
        return head ? rowOf(*head) : HistoryListeRequest::Zeile{};
    }
    const HistoryRecord* entry = history_.find(tag.Nummer);
    if (entry == nullptr) return {};
    const HistoryHeader head = historyHead(entry->Zeile);
    std::string heading = tipValues_.of(head.tipp).überschrift;
    if (heading.empty())   // the database has no such Tip any more
        if (const auto known = quietHead([&] { return journal_.byLine(entry->Zeile); })) heading = known->überschrift;
    return {head.datum, head.timeOfDay, head.machineName, heading};
}

// --- the list's commands ---

void HistoryWindows::markDeleted(const Tag& tag) {
    if (tag.journal != 0) toHide_.insert(tag.journal);
    else if (HistoryRecord* entry = history_.find(tag.Nummer)) entry->Geloescht = true;
}

void HistoryWindows::removeRow(HistoryListeRequest& list, std::size_t row) {
    list.blnListeGeaendert = true;
    list.lines.erase(list.lines.begin() + static_cast<std::ptrdiff_t>(row));
    list.commandsActive = !list.lines.empty();
}

void HistoryWindows::listEmptied() {
    ctx_.frmBVK_Prog.tbrHistory = false;
    changed_();
}

void HistoryWindows::loeschen(HistoryListeRequest& list, std::size_t row) {
    ctx_.click();
    if (row >= list.lines.size()) return;
    const bool yes = ctx_.port.ask(strBVKTexte(TextDelete1) + shown(list.lines[row]).datum + strBVKTexte(TextDelete2));
    ctx_.click();
    if (!yes) return;
    markDeleted(list.lines[row]);
    removeRow(list, row);
    if (list.lines.empty()) listEmptied();
}

void HistoryWindows::deleteAll(HistoryListeRequest& list) {
    ctx_.click();
    if (list.lines.empty() || !ctx_.port.ask(strBVKTexte(TextDeleteAll))) return;
    for (const Tag& tag : list.lines) markDeleted(tag);
    list.lines.resize(1);
    removeRow(list, 0);
    listEmptied();
}

void HistoryWindows::restore(HistoryListeRequest& list) {
    ctx_.click();
    reportAndGoOn(ctx_, "frmBVK_HistoryListe", [&] {
        const std::int64_t nummer = journal_.lastTakenBack();
        const auto head = nummer != 0 ? journal_.head(nummer) : std::nullopt;
        if (!head) return;
        const auto row = rowOf(*head);
        if (!ctx_.port.ask(fmt::format(messages::RedoQuestion, row.datum + " " + row.timeOfDay + "  " + row.überschrift))) return;
        undoTried_ = true;
        if (!exact_.restore(nummer)) return;
        if (head->zeile) list.blnListeGeaendert = true;
        fill(list);
        if (!list.lines.empty()) ctx_.frmBVK_Prog.tbrHistory = true;
        changed_();
    });
}

// Line and journal, for good. What is shown of the list is all that is left of it.
void HistoryWindows::forget(HistoryListeRequest& list, std::size_t row) {
    ctx_.click();
    if (row >= list.lines.size()) return;
    const Tag tag = list.lines[row];
    const auto shownRow = shown(tag);
    if (!ctx_.port.ask(fmt::format(messages::ForgetQuestion, shownRow.datum + " " + shownRow.timeOfDay + "  " + shownRow.überschrift), box::Exclamation + box::DefaultNo)) return;
    reportAndGoOn(ctx_, "frmBVK_HistoryListe", [&] {
        const std::int64_t nummer = journalOf(tag);
        history_.forget(nummer != 0 ? std::vector{nummer} : std::vector<std::int64_t>(), tag.journal == 0 ? tag.Nummer : 0);
        const bool changedBefore = list.blnListeGeaendert;
        removeRow(list, row);
        list.blnListeGeaendert = changedBefore;
        list.redoPossible = journal_.lastTakenBack() != 0;
        if (list.lines.empty()) listEmptied();
    });
}

// --- one change ---

std::string HistoryWindows::presentText(const std::string& path) {
    if (!path.ends_with('\\')) return ReadRegistryKey(ctx_, path, KeyNotThere);
    std::string now = KeyNotThere;   // the unnamed value, which is not there merely because its key is
    reportAndGoOn(ctx_, "ReadRegistryKey", [&] {
        ctx_.objBVKReg.SetPath(ctx_.strLokalerRechner, path);
        now = text(ctx_.objBVKReg.ReadRaw());
    });
    return now;
}

std::string HistoryWindows::presentText(const RegAddress& place) {
    std::string now = "?";   // on a machine that nobody works on
    if (!atHand(ctx_, place.machine)) return now;
    reportAndGoOn(ctx_, "frmBVK_HistoryDaten", [&] {
        RegStore& store = storeOf(ctx_, place.machine);
        if (place.name) now = text(store.value(place.root, place.key, *place.name));
        else now = store.keyExists(place.root, place.key) ? "Schlüssel vorhanden" : KeyNotThere;
    });
    return now;
}

std::vector<HistoryDatenRequest::Zeile> HistoryWindows::values(const Tag& tag, const std::optional<JournalEntry>& known) {
    std::vector<HistoryDatenRequest::Zeile> rows;
    if (const HistoryRecord* entry = history_.find(tag.Nummer); tag.journal == 0 && entry != nullptr) {
        const auto pairs = historyPairs(entry->Zeile);
        for (std::size_t k = 0; k < pairs.size(); ++k) {
            const TipValue& tipp = tipValues_.of(pairs[k].tipp);
            std::string path = tipp.usable ? tipp.path : std::string();
            std::string shownAs = path;
            if (known && k < known->pairs.size()) {
                const RegAddress address = pairAddress(ctx_, *known, k);
                shownAs = shownPath(ctx_, address);
                if (path.empty()) path = address.path();
            }
            rows.push_back({path.empty() ? std::string() : nameIn(path), pairs[k].alt, path.empty() ? std::string() : presentText(path), shownAs});
        }
        return rows;
    }
    if (!known) return rows;
    for (const ValueChange& value : known->change.values) {
        const RegAddress place = addressOf(ctx_, *known, value);
        rows.push_back({place.name->isUnnamed() ? std::string(messages::UnnamedValue) : place.name->text(), text(value.alt), presentText(place), shownPath(ctx_, place)});
    }
    for (const KeyImage& key : known->change.key)
        if (key.geloescht) {
            const RegAddress place = addressOf(ctx_, *known, key.path);
            rows.push_back({nameIn(key.path), fmt::format("Schlüssel mit {} Werten", key.values.size()), presentText(place), shownPath(ctx_, place)});
        }
    for (const FileImage& file : known->change.dateien)
        rows.push_back({nameIn(file.datei), fmt::format("Datei mit {} Bytes", file.contents.size()), fmt::format("Datei mit {} Bytes", file.neu.size()), file.datei});
    return rows;
}

// After an undo the record leaves the list; the list stays within reach even when it is empty then, since the undo can be
// undone there. One that failed may have written some of the values all the same.
bool HistoryWindows::takenBack(HistoryListeRequest& list, std::size_t row, const std::function<bool()>& undo) {
    ctx_.click();
    undoTried_ = true;
    if (!undo()) return false;
    if (list.lines[row].journal == 0) markDeleted(list.lines[row]);
    removeRow(list, row);
    list.redoPossible = true;
    return true;
}

void HistoryWindows::show(HistoryListeRequest& list, std::size_t row) {
    ctx_.click();
    if (row >= list.lines.size()) return;
    const Tag tag = list.lines[row];
    const std::int64_t nummer = journalOf(tag);
    std::optional<JournalEntry> known;
    if (nummer != 0) reportAndGoOn(ctx_, "frmBVK_HistoryDaten", [&] { known = journal_.entry(nummer); });
    if (known && known->lineOnly) known.reset();
    const HistoryRecord* entry = tag.journal == 0 ? history_.find(tag.Nummer) : nullptr;
    const std::string zeile = entry != nullptr ? entry->Zeile : std::string();

    HistoryDatenRequest data;
    data.lines = values(tag, known);
    data.undoPossible = entry != nullptr;
    data.exactPossible = known && known->undoneBy == 0;
    const bool here = known && markOf(ctx_, *known).empty();   // under whatever name
    if (const std::string machineName = historyHead(zeile).machineName; entry != nullptr && !here && !machineName.empty() && !equalText(machineName, ctx_.strLokalerRechner))
        data.hint = fmt::format(messages::ReadElsewhere, machineName, ctx_.strLokalerRechner);
    data.undo = [&] { return takenBack(list, row, [&] { return undo_.execute(zeile, nummer); }); };
    data.undoExactly = [&] { return takenBack(list, row, [&] { return exact_.undo(nummer); }); };
    data.back = [&] { ctx_.click(); };
    ctx_.port.showWindow(data);
}

}  // namespace brenvik
