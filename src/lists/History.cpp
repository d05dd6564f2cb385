#include "lists/History.h"

#include <algorithm>
#include <unordered_map>

#include "frame/DateiSystem.h"
#include "frame/Konvertierung.h"
#include "frame/Reports.h"
#include "frame/Texte.h"
#include "lists/ListenOrdner.h"
#include "lists/Meldungen.h"
#include "registry/ValueOperations.h"

namespace brenvik {
namespace {

constexpr int FehlerTitel = 9;

// What a line can hold of a value.
std::string firstLine(const std::string& text) { return text.substr(0, text.find_first_of(std::string_view("\r\n\0", 3))); }

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

HistorySatz* History::find(std::int32_t nummer) {
    const auto found = std::lower_bound(udtHistory_.begin(), udtHistory_.end(), nummer, [](const HistorySatz& s, std::int32_t n) { return s.Nummer < n; });
    return found != udtHistory_.end() && found->Nummer == nummer ? &*found : nullptr;
}

void History::add(std::string line) {
    udtHistory_.push_back({udtHistory_.empty() ? 1 : udtHistory_.back().Nummer + 1, std::move(line), false});
}

// Lines that another program wrote come in, lines that it took out go; what we deleted ourselves stays deleted.
void History::join(const Listenunterschied& foreign) {
    std::unordered_map<std::string_view, std::size_t> gone;
    for (const std::string& line : foreign.weg) ++gone[line];
    if (!gone.empty()) {
        std::vector<HistorySatz> kept;
        for (auto entry = udtHistory_.rbegin(); entry != udtHistory_.rend(); ++entry) {
            const auto count = gone.find(entry->Zeile);
            if (count != gone.end() && count->second > 0) --count->second;
            else kept.push_back(std::move(*entry));
        }
        udtHistory_.assign(std::make_move_iterator(kept.rbegin()), std::make_move_iterator(kept.rend()));
    }
    for (const std::string& line : foreign.dazu) {
        ctx_.frmBVK_Prog.tbrHistory = true;
        if (hasText(line)) add(line);
    }
}

bool History::LoadHistory() {
    ProcTrace trace(ctx_.trace, "LoadHistory");
    return reportAndGoOn(ctx_, "LoadHistory", [&] {
        ListenDatei file(userPath(ctx_, ctx_.einstellungen.strHistoryPfad + HistoryDatei));
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
    const auto path = userPath(ctx_, withSeparator(ctx_.einstellungen.strHistoryPfad) + HistoryDatei);
    if (datei_ && datei_->file() == path) return join(datei_->foreignChanges());
    ListenDatei other(path);
    std::vector<std::string> own;
    for (const HistorySatz& entry : udtHistory_) own.push_back(entry.Zeile);
    join({listDifference(own, other.read()).dazu, {}});
    datei_ = std::move(other);
}

bool History::vereinen() {
    return reportAndGoOn(ctx_, "LoadHistory", [&] { prepareWriting(); });
}

std::optional<std::string> History::HistoryEintrag(std::vector<HistoryPaar>& pairs) {
    const ProcTrace trace(ctx_.trace, "HistoryEintrag");
    for (std::size_t i = 1; i < ctx_.werte.size(); ++i) {
        const Arbeitswert& w = ctx_.werte[i];
        if (w.strAktuellerWert == w.strAnzeigeWert) continue;
        const TippEintrag& e = ctx_.aktuellerTipp.Eintrag[i];
        pairs.push_back({e.TippIndex, w.strAktuellerWert.empty() ? KeyNichtVorhanden : firstLine(w.strAktuellerWert),
                         NetzRegPfad(ctx_, e.Hauptschlüssel) + "\\" + e.Schlüssel + "\\" + e.Wertname});
    }
    return append(pairs);
}

std::optional<std::string> History::eintragAus(const Aenderung& change, std::vector<HistoryPaar>& pairs) {
    const ProcTrace trace(ctx_.trace, "HistoryEintrag");
    for (const WertAenderung& value : change.werte)
        if (value.TippIndex > 0 && value.alt != value.neu)
            pairs.push_back({value.TippIndex, value.alt ? firstLine(toText(*value.alt)) : KeyNichtVorhanden, value.path});
    return append(pairs);
}

std::optional<std::string> History::append(const std::vector<HistoryPaar>& pairs) {
    if (pairs.empty()) return std::nullopt;
    const DateTime now = ctx_.port.now();
    std::string line = now.dateText() + "#" + now.timeText() + "#" + ctx_.strRechnername;
    for (const HistoryPaar& pair : pairs) line += "#" + std::to_string(pair.tipp) + "#" + pair.alt;
    line += "#";
    bool& filled = ctx_.frmBVK_Prog.tbrHistory;
    const bool wasFilled = filled;
    std::vector<HistorySatz> before;
    try {
        if (!filled) before = std::exchange(udtHistory_, {});   // all of them deleted: the list starts anew
        allein_([&] {
            prepareWriting();
            line = datei_->afterReading(line);
            std::vector<std::string_view> lines;
            lines.reserve(udtHistory_.size() + 1);
            for (const HistorySatz& entry : udtHistory_) lines.push_back(entry.Zeile);   // deleted ones too: HistorySave drops them
            lines.push_back(line);
            datei_->write(lines);
        });
    } catch (const std::exception& error) {
        if (!wasFilled && !filled) udtHistory_ = std::move(before);
        tellFailure(line, pairs, error);
        return std::nullopt;
    }
    add(line);
    filled = true;
    return line;
}

bool History::tellFailure(const std::string& record, const std::vector<HistoryPaar>& pairs, const std::exception& error) {
    const bool isProtected = errorNumberOf(error) == errnum::PathFileAccess;
    const std::string text = meldung::HistorySchreiben + (isProtected ? std::string(meldung::HistorySchreibgeschuetzt) : record);
    if (ctx_.trace.debug()) {
        std::string masked = text;
        for (const HistoryPaar& pair : pairs)
            if (traceValue(pair.path, pair.alt) != pair.alt) masked = Replace(masked, "#" + pair.alt + "#", "#*****#");
        ctx_.trace.write(masked);
        ctx_.trace.write(std::string("--- Fehler: ") + error.what());
    }
    return ctx_.port.ask(text, 0, strBVKFehler(FehlerTitel));
}

bool History::HistorySave() {
    ctx_.trace.write("History speichern");
    return reportAndGoOn(ctx_, "HistorySave", [&] {
        if (!ctx_.blnHistoryAktiv) return;
        allein_([&] {
            prepareWriting();
            std::vector<std::string_view> lines;
            for (const HistorySatz& entry : udtHistory_)
                if (!entry.Geloescht) lines.push_back(entry.Zeile);
            datei_->write(lines);
        });
        std::erase_if(udtHistory_, [](const HistorySatz& entry) { return entry.Geloescht; });
    });
}

void History::deleteLine(const std::string& line) {
    const auto found = std::find_if(udtHistory_.rbegin(), udtHistory_.rend(), [&](const HistorySatz& entry) { return !entry.Geloescht && entry.Zeile == line; });
    if (found != udtHistory_.rend()) found->Geloescht = true;
}

void History::putBack(const std::string& line) {
    ctx_.frmBVK_Prog.tbrHistory = true;
    for (auto entry = udtHistory_.rbegin(); entry != udtHistory_.rend(); ++entry)
        if (entry->Geloescht && entry->Zeile == line) return void(entry->Geloescht = false);
    for (const HistorySatz& entry : udtHistory_)
        if (entry.Zeile == line) return;
    add(line);
}

}  // namespace brenvik
