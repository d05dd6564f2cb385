#include "lists/History.h"

#include <algorithm>
#include <unordered_map>

#include "frame/Reports.h"
#include "frame/files/FileSystem.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "lists/ListFolders.h"
#include "lists/Messages.h"
#include "lists/TipValue.h"
#include "lists/undo/UndoAnswers.h"
#include "registry/ValueOperations.h"

namespace brenvik {
namespace {

constexpr int ErrorTitle = 9;

// What a line can hold of a value.
std::string firstLine(const std::string& text) { return text.substr(0, text.find_first_of(std::string_view("\r\n\0", 3))); }

std::string oldText(const std::string& path, const std::string& text) { return isSecret(path) ? Secret : firstLine(text); }

bool hasText(std::string_view line) { return line.find_first_not_of(' ') != std::string_view::npos; }

}  // namespace

std::vector<HistoryPaar> historyPairs(const std::string& line) {
    const auto pieces = Split(line, "#");
    std::vector<HistoryPaar> pairs;
    for (std::size_t k = 3; k + 1 < pieces.size(); k += 2) {
        const double number = Val(pieces[k]);
        pairs.push_back({number >= 1 && number <= 32767 ? static_cast<std::int32_t>(number) : 0, pieces[k + 1], {}});
    }
    return pairs;
}

bool isSecret(const std::string& path) { return traceValue(path, "x") != "x"; }

HistoryRecord* History::find(std::int32_t nummer) {
    const auto found = std::lower_bound(udtHistory_.begin(), udtHistory_.end(), nummer, [](const HistoryRecord& s, std::int32_t n) { return s.Nummer < n; });
    return found != udtHistory_.end() && found->Nummer == nummer ? &*found : nullptr;
}

void History::add(std::string line) {
    udtHistory_.push_back({udtHistory_.empty() ? 1 : udtHistory_.back().Nummer + 1, std::move(line), false});
}

// A journal that cannot be used stops no list.
void History::quietly(const std::function<void()>& work) {
    try {
        work();
    } catch (const NumberedError& error) {
        ctx_.trace.write(std::string("--- Fehler: ") + error.what());
    }
}

// A line that a program brings whose change does not stand any more, while so many of it are here.
bool History::comesBack(const std::string& line, std::size_t here) {
    std::optional<std::size_t> standing;
    quietly([&] { standing = journal_.standing(line); });
    return standing && here >= *standing;
}

std::size_t History::takeAwayDead() {
    std::unordered_map<std::string, std::size_t> standing;
    quietly([&] {
        for (auto& [line, count] : journal_.linesThatWent()) standing.emplace(std::move(line), count);
    });
    if (standing.empty()) return 0;
    return std::erase_if(udtHistory_, [&](const HistoryRecord& entry) {
        const auto found = standing.find(entry.Zeile);
        if (found == standing.end()) return false;
        if (found->second == 0) return true;
        --found->second;
        return false;
    });
}

void History::rememberDeleted(const std::vector<std::string>& lines) {
    if (lines.empty()) return;
    std::unordered_map<std::string_view, std::size_t> left;
    for (const HistoryRecord& entry : udtHistory_)
        if (!entry.Geloescht) ++left[entry.Zeile];
    quietly([&] {
        journal_.transaction([&] {
            for (const std::string& line : lines) {
                JournalHeader head = newHead(ctx_, Change::Art::Speichern);
                head.zeile = line;
                if (journal_.standing(line).value_or(left[line] + 1) > left[line]) journal_.lineDeleted(head);
            }
        });
    });
}

// Lines that another program wrote come in, lines that it took out go; what we deleted ourselves stays deleted.
void History::join(const ListDifference& foreign) {
    std::unordered_map<std::string_view, std::size_t> gone;
    for (const std::string& line : foreign.weg) ++gone[line];
    if (!gone.empty()) {
        std::vector<HistoryRecord> kept;
        for (auto entry = udtHistory_.rbegin(); entry != udtHistory_.rend(); ++entry) {
            const auto count = gone.find(entry->Zeile);
            if (count != gone.end() && count->second > 0) --count->second;
            else kept.push_back(std::move(*entry));
        }
        udtHistory_.assign(std::make_move_iterator(kept.rbegin()), std::make_move_iterator(kept.rend()));
    }
    std::unordered_map<std::string, std::size_t> here;
    for (const std::string& line : foreign.dazu) here.emplace(line, 0);
    if (!here.empty())
        for (const HistoryRecord& entry : udtHistory_)
            if (const auto found = here.find(entry.Zeile); found != here.end()) ++found->second;
    for (const std::string& line : foreign.dazu) {
        if (hasText(line) && comesBack(line, here[line])) continue;
        ctx_.frmBVK_Prog.tbrHistory = true;
        if (hasText(line)) add(line), ++here[line];
    }
}

bool History::LoadHistory() {
    ProcTrace trace(ctx_.trace, "LoadHistory");
    return reportAndGoOn(ctx_, "LoadHistory", [&] {
        ListFile file(userPath(ctx_, ctx_.einstellungen.strHistoryPfad + HistoryFile));
        std::vector<std::string> lines = file.read();
        udtHistory_.clear();
        udtHistory_.reserve(lines.size());
        for (std::string& line : lines) {
            ctx_.frmBVK_Prog.tbrHistory = true;   // the first line does it
            if (hasText(line)) add(std::move(line));
        }
        datei_ = std::move(file);
    });
}

// The file may be another one than the table came from: the folder was changed, or the list was switched off until now.
// Then both are joined.
void History::prepareWriting() {
    const auto path = userPath(ctx_, withSeparator(ctx_.einstellungen.strHistoryPfad) + HistoryFile);
    if (datei_ && datei_->file() == path) return join(datei_->foreignChanges());
    ListFile other(path);
    std::vector<std::string> own;
    for (const HistoryRecord& entry : udtHistory_) own.push_back(entry.Zeile);
    join({listDifference(own, other.read()).dazu, {}});
    datei_ = std::move(other);
}

bool History::unite() {
    return reportAndGoOn(ctx_, "LoadHistory", [&] { prepareWriting(); });
}

void History::screenPairs(std::vector<HistoryPaar>& pairs) {
    for (std::size_t i = 1; i < ctx_.values.size(); ++i) {
        const WorkingValue& w = ctx_.values[i];
        if (w.strAktuellerWert == w.strAnzeigeWert) continue;
        const TipEntry& e = ctx_.aktuellerTipp.Eintrag[i];
        std::string path = NetzRegPfad(ctx_, e.Hauptschlüssel) + "\\" + e.Schlüssel + "\\" + e.Wertname;
        std::string old = w.strAktuellerWert.empty() ? KeyNotThere : oldText(e.Wertname, w.strAktuellerWert);
        pairs.push_back({e.TippIndex, std::move(old), std::move(path)});
    }
}

void History::recordedPairs(const Change& change, std::vector<HistoryPaar>& pairs) {
    TipValues numbers(ctx_);
    for (const ValueChange& value : change.values)
        if (value.TippIndex > 0 && value.alt != value.neu)
            pairs.push_back({value.TippIndex, value.alt ? oldText(value.name.value_or(value.path), numbers.shown(value.TippIndex, *value.alt)) : KeyNotThere, givenPath(value)});
}

std::optional<std::string> History::HistoryEintrag(const Change& change, std::vector<HistoryPaar>& pairs) {
    const ProcTrace trace(ctx_.trace, "HistoryEintrag");
    change.onScreen ? screenPairs(pairs) : recordedPairs(change, pairs);
    if (pairs.empty()) return std::nullopt;
    const DateTime now = ctx_.port.now();
    std::string line = now.dateText() + "#" + now.timeText() + "#" + Replace(ctx_.strRechnername, "#", "%23");
    for (const HistoryPaar& pair : pairs) line += "#" + std::to_string(pair.tipp) + "#" + pair.alt;
    return line + "#";
}

bool History::append(std::string& line, const std::vector<HistoryPaar>& pairs, const std::function<void(bool)>& along) {
    bool& filled = ctx_.frmBVK_Prog.tbrHistory;
    const bool wasFilled = filled;
    std::vector<HistoryRecord> before;
    if (!filled) before = std::exchange(udtHistory_, {});   // all of them deleted: the list starts anew
    std::exception_ptr failure;
    const auto work = [&] {
        try {
            prepareWriting();
            line = datei_->afterReading(line);
            std::vector<std::string_view> lines;
            lines.reserve(udtHistory_.size() + 1);
            for (const HistoryRecord& entry : udtHistory_) lines.push_back(entry.Zeile);   // deleted ones too: HistorySave drops them
            lines.push_back(line);
            datei_->write(lines);
            add(line);
            filled = true;
        } catch (const std::exception&) {
            failure = std::current_exception();
        }
        along(failure == nullptr);
    };
    const auto settle = [&] {
        if (!failure) return;
        if (!wasFilled && !filled) udtHistory_ = std::move(before);
        try {
            std::rethrow_exception(failure);
        } catch (const std::exception& error) {
            tellFailure(line, pairs, error);
        }
    };
    try {
        journal_.alone(work);
    } catch (...) {
        settle();
        throw;
    }
    settle();
    return !failure;
}

bool History::tellFailure(const std::string& record, const std::vector<HistoryPaar>& pairs, const std::exception& error) {
    const bool isProtected = errorNumberOf(error) == errnum::PathFileAccess;
    const std::string text = messages::HistoryWriting + (isProtected ? std::string(messages::HistoryWriteProtected) : record);
    if (ctx_.trace.debug()) {
        std::string masked = text;
        for (const HistoryPaar& pair : pairs)
            if (traceValue(pair.path, pair.alt) != pair.alt) masked = Replace(masked, "#" + pair.alt + "#", "#*****#");
        ctx_.trace.write(masked);
        ctx_.trace.write(std::string("--- Fehler: ") + error.what());
    }
    return ctx_.port.ask(text, 0, strBVKFehler(ErrorTitle));
}

bool History::HistorySave(bool remember) {
    ctx_.trace.write("History speichern");
    return reportAndGoOn(ctx_, "HistorySave", [&] {
        if (!ctx_.blnHistoryAktiv) return;
        std::vector<std::string> deleted;
        journal_.alone([&] {
            prepareWriting();
            std::vector<std::string_view> lines;
            for (const HistoryRecord& entry : udtHistory_)
                if (entry.Geloescht) deleted.push_back(entry.Zeile);
                else lines.push_back(entry.Zeile);
            datei_->write(lines);
            if (remember) rememberDeleted(deleted);
            quietly([&] { journal_.lineIsThere(); });
        });
        std::erase_if(udtHistory_, [](const HistoryRecord& entry) { return entry.Geloescht; });
    });
}

// First as deleted lines: whatever comes in between, no line outlives the change that it tells of.
void History::forget(const std::vector<std::int64_t>& changes, std::int32_t row) {
    const std::vector<std::string> lines = journal_.hideLines(changes);
    if (HistoryRecord* const entry = find(row)) entry->Geloescht = true;
    else
        for (const std::string& line : lines) deleteLine(line);
    HistorySave(false);
    if (!changes.empty()) journal_.forget(changes);
}

void History::deleteLine(const std::string& line) {
    const auto found = std::find_if(udtHistory_.rbegin(), udtHistory_.rend(), [&](const HistoryRecord& entry) { return !entry.Geloescht && entry.Zeile == line; });
    if (found != udtHistory_.rend()) found->Geloescht = true;
}

bool History::putBack(const std::string& line) {
    const auto stands = [&](const HistoryRecord& entry) { return !entry.Geloescht && entry.Zeile == line; };
    std::optional<std::size_t> wanted;
    quietly([&] { wanted = journal_.standing(line); });
    if (static_cast<std::size_t>(std::count_if(udtHistory_.begin(), udtHistory_.end(), stands)) >= wanted.value_or(1)) return false;
    ctx_.frmBVK_Prog.tbrHistory = true;
    const auto deleted = std::find_if(udtHistory_.rbegin(), udtHistory_.rend(), [&](const HistoryRecord& entry) { return entry.Geloescht && entry.Zeile == line; });
    if (deleted != udtHistory_.rend()) deleted->Geloescht = false;
    else add(line);
    return true;
}

}  // namespace brenvik
