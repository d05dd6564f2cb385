#include "lists/Lists.h"

#include <fmt/format.h>

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "frame/Reports.h"
#include "frame/files/FileSystem.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "lists/ListFolders.h"
#include "lists/Messages.h"
#include "lists/undo/ChangedFiles.h"
#include "lists/undo/RegAddress.h"
#include "registry/Upcase.h"
#include "registry/store/RegLinks.h"
#include "tipengine/values/KeyImage.h"

namespace brenvik {
namespace {

constexpr int TextDatei = 33, TextKeinZugriff = 75, TextFehlerTitel = 34, TextFavoritenAus = 35, TextHistoryAus = 36;

bool writesHistory(Aenderung::Art art) {
    return art == Aenderung::Art::Speichern || art == Aenderung::Art::Standard || art == Aenderung::Art::Loeschen;
}

// A change from elsewhere than the screen is all or nothing: one of which nothing was written did not take place. What a
// Tip on screen failed to write stays recorded.
bool withdrawn(const Aenderung& change) {
    return !change.amBildschirm && writesHistory(change.art) && !change.werte.empty() &&
           std::none_of(change.werte.begin(), change.werte.end(), [](const WertAenderung& value) { return value.geschrieben; });
}

// A change that leaves everything as it was is not worth remembering.
bool changesSomething(const Aenderung& change) {
    const auto differs = [](const WertAenderung& value) { return value.alt != value.neu; };
    return change.art == Aenderung::Art::Kontextmenue || !change.schluessel.empty() || std::any_of(change.werte.begin(), change.werte.end(), differs) ||
           std::any_of(change.dateien.begin(), change.dateien.end(), [](const DateiBild& file) { return !file.vorhanden || file.inhalt != file.neu; });
}

}  // namespace

struct Listen::Liste {
    const char* file;
    std::string& folder;
    bool& active;
    bool& visible;
    int switchedOff;
    std::function<bool()> load;
};

Listen::Listen(TippMaschine& engine)
    : engine_(engine), ctx_(engine.context()), journal_(ctx_.heimPfad / JournalDatei), history_(ctx_, journal_), favoriten_(engine),
      fenster_(engine, journal_, history_, notes_, [this] { if (changed_) changed_(); }) {}

void Listen::onChange(std::function<void()> changed) {
    favoriten_.onChange(changed);
    changed_ = std::move(changed);
}

bool Listen::opens(const Liste& list) {
    list.active = FileWrite(ctx_, list.folder + list.file) && list.load();
    if (list.active) brauchbar_[list.file] = list.folder;
    return list.active;
}

// Whoever thinks better of another folder keeps the list in the one where it was a moment ago.
bool Listen::staysWhereItWas(const Liste& list) {
    const auto before = brauchbar_.find(list.file);
    if (before == brauchbar_.end() || before->second == list.folder) return false;
    list.folder = before->second;
    if (!opens(list)) return false;
    ctx_.port.tell(meldung::ListeBleibt + list.folder);
    return true;
}

void Listen::loadList(const Liste& list) {
    for (;;) {
        if (opens(list)) break;
        const Answer answer = ctx_.port.messageBox({strBVKTexte(TextDatei) + list.file + strBVKTexte(TextKeinZugriff), box::RetryCancel + box::Question, strBVKTexte(TextFehlerTitel)});
        if (answer != Answer::Retry) {
            if (!staysWhereItWas(list)) ctx_.port.tell(strBVKTexte(list.switchedOff));
            break;
        }
        list.folder = browseForListFolder(ctx_, list.folder);
    }
    list.visible = list.active;
    if (changed_) changed_();
}

void Listen::LoadFHListe() {
    Settings& s = ctx_.einstellungen;
    s.strFavoritenPfad = FolderExit(ctx_, s.strFavoritenPfad);
    s.strHistoryPfad = FolderExit(ctx_, s.strHistoryPfad);
    loadList(favoritenListe([this] { return favoriten_.LoadFavorite(); }));
    loadHistoryFile();
}

Listen::Liste Listen::favoritenListe(std::function<bool()> load) {
    return {FavoritenDatei, ctx_.einstellungen.strFavoritenPfad, ctx_.blnFavoritenAktiv, ctx_.frmBVK_Prog.favoritenSichtbar, TextFavoritenAus, std::move(load)};
}

Listen::Liste Listen::historyListe(std::function<bool()> load) {
    return {HistoryDatei, ctx_.einstellungen.strHistoryPfad, ctx_.blnHistoryAktiv, ctx_.frmBVK_Prog.historySichtbar, TextHistoryAus, std::move(load)};
}

void Listen::ordnerNeu() {
    Settings& s = ctx_.einstellungen;
    s.strFavoritenPfad = withSeparator(s.strFavoritenPfad);
    s.strHistoryPfad = withSeparator(s.strHistoryPfad);
    if (ctx_.blnFavoritenAktiv) loadList(favoritenListe([this] { return favoriten_.vereinen(); }));
    if (ctx_.blnHistoryAktiv) loadList(historyListe([this] { return history_.vereinen(); }));
    offerHistory();
}

void Listen::loadHistory() {
    ctx_.einstellungen.strHistoryPfad = FolderExit(ctx_, ctx_.einstellungen.strHistoryPfad);
    loadHistoryFile();
}

void Listen::loadHistoryFile() {
    historyGeladen_ = true;
    loadList(historyListe([this] { return history_.LoadHistory(); }));
    journaling([&] { reconcile(); });
    offerHistory();
}

// Changes without a line are in the list window too.
void Listen::offerHistory() {
    journaling([&] {
        if (journal_.hasWithoutLine()) ctx_.frmBVK_Prog.tbrHistory = true;
    });
    if (changed_) changed_();
}

// --- recording ---

// A journal that fails stops no change; the user hears of it once.
void Listen::journaling(const std::function<void()>& work) {
    try {
        work();
    } catch (const std::exception& error) {
        ctx_.trace.write(std::string("--- Fehler: ") + error.what());
        if (journalFehler_.empty()) ctx_.port.tell(error.what(), box::Exclamation);
        journalFehler_ = error.what();
    }
}

// The topmost missing key of each place.
std::vector<std::string> Listen::keysToBeMade(const JournalEintrag& entry) {
    std::vector<std::string> paths, known;
    for (const WertAenderung& value : entry.aenderung.werte) {
        if (value.alt) continue;
        RegAddress key = addressOf(ctx_, entry, value);
        key.name.reset();
        RegStore& store = storeOf(ctx_, key.machine);
        std::string missing;
        for (; !key.key.empty() && !store.keyExists(key.root, key.key); key.key = std::string(parentKey(key.key))) missing = key.key;
        if (missing.empty()) continue;
        key.key = missing;
        if (std::find(known.begin(), known.end(), key.id()) != known.end()) continue;
        known.push_back(key.id());
        paths.push_back(key.keyPath());
    }
    return paths;
}

// The change with every place by its real address, and what stood there.
JournalEintrag Listen::entryOf(const Aenderung& change, const std::vector<HistoryPaar>& pairs) {
    JournalEintrag entry;
    static_cast<JournalKopf&>(entry) = newHead(ctx_, change.art);
    if (!change.werte.empty()) entry.rechner = machineMark(ctx_, change.werte[0].machine);
    else if (!change.schluessel.empty()) entry.rechner = machineMark(ctx_, change.schluessel[0].machine);
    entry.tipp = change.tippIndex;
    entry.überschrift = change.tippÜberschrift;
    entry.aenderung = change;
    std::unordered_map<std::string, std::string> paths;   // as they were given, to the real ones
    for (WertAenderung& value : entry.aenderung.werte) {
        const std::string given = givenPath(value);
        RegAddress place = addressForWriting(ctx_, value, !value.neu && change.art != Aenderung::Art::Kontextmenue);
        // Below HKCR another value may be seen than the one that is written, and others may have written since it was read.
        RegStore& store = storeOf(ctx_, place.machine);
        value.alt = store.value(place.root, place.key, *place.name);
        if (value.alt && !value.neu)   // a deleted one comes back as it was spelt
            for (const NamedValue& standing : store.values(place.root, place.key))
                if (sameName(standing.name.text(), place.name->text())) place.name = standing.name;
        value.machine = place.machine, value.path = place.keyPath(), value.name = place.name->text();
        paths.emplace(lowerCase(given), place.path());
    }
    for (SchluesselBild& image : entry.aenderung.schluessel) image.path = keyAddress(ctx_, image.machine, image.path).keyPath();
    for (DateiBild& file : entry.aenderung.dateien) file.datei = recordedFile(ctx_, entry.rechner, file.datei);
    entry.neueSchluessel = keysToBeMade(entry);
    for (const HistoryPaar& pair : pairs) {
        const auto known = paths.find(lowerCase(pair.path));
        WertAenderung place;
        place.machine = entry.rechner, place.path = pair.path;
        entry.paare.push_back(known != paths.end() ? known->second : addressForWriting(ctx_, place, false).path());
    }
    return entry;
}

void Listen::record(const Aenderung& change, Laufend& running, const std::vector<HistoryPaar>& pairs) {
    running.eintrag = entryOf(change, pairs);
    if (!changesSomething(running.eintrag.aenderung) && !running.zeile) return;   // as things stand now, not as they stood when it was planned
    running.eintrag.zeile = running.zeile;
    running.nummer = journal_.add(running.eintrag);
    for (SchluesselBild& image : running.eintrag.aenderung.schluessel) image.unterschluessel.clear(), image.werte.clear(), image.details.clear();
}

// Line and record are made as one, for other processes too. Both stand before the first write.
void Listen::begin(const Aenderung& change) {
    if (!historyGeladen_) loadHistory();
    if (laufend_.empty()) turn_.emplace(ctx_.heimPfad, PatienceOfChanges);
    Laufend running;
    std::vector<HistoryPaar> pairs;
    std::optional<std::string> line;
    if (ctx_.blnHistoryAktiv && writesHistory(change.art)) reportAndGoOn(ctx_, "HistoryEintrag", [&] { line = history_.HistoryEintrag(change, pairs); });
    journaling([&] {
        if (!line) return record(change, running, pairs);
        history_.append(*line, pairs, [&](bool written) {
            if (written) running.zeile = line;
            record(change, running, pairs);
        });
    });
    if (running.nummer != 0) ctx_.frmBVK_Prog.tbrHistory = true;
    laufend_[&change] = std::move(running);
    if (changed_) changed_();
}

void Listen::written(const Aenderung& change, std::size_t value) {
    const auto running = laufend_.find(&change);
    if (running == laufend_.end() || running->second.nummer == 0) return;
    WertAenderung& known = running->second.eintrag.aenderung.werte.at(value);
    known.neu = change.werte.at(value).neu;
    known.geschrieben = change.werte[value].geschrieben;
    journaling([&] { journal_.written(running->second.nummer, value, known); });
}

// How the change left its keys.
void Listen::lookAtKeys(JournalEintrag& entry) {
    entry.nachher.clear();
    for (const SchluesselBild& image : entry.aenderung.schluessel) {
        entry.nachher.emplace_back();
        if (!image.geloescht && !image.angelegt) continue;
        const RegAddress place = addressOf(ctx_, entry, image.path);
        entry.nachher.back() = schluesselBild(storeOf(ctx_, place.machine), place.machine, {place.root, place.key});
    }
}

void Listen::finished(const Aenderung& change) {
    const auto running = laufend_.find(&change);
    if (running == laufend_.end()) return;
    Laufend& known = running->second;
    if (withdrawn(change)) {
        if (known.nummer != 0) journaling([&] { journal_.remove(std::exchange(known.nummer, 0)); });
        if (known.zeile) takeOut(*known.zeile);
    } else if (known.nummer != 0) {
        journaling([&] {
            Aenderung& recorded = known.eintrag.aenderung;
            for (std::size_t k = 0; k < recorded.werte.size(); ++k) recorded.werte[k].neu = change.werte[k].neu, recorded.werte[k].geschrieben = change.werte[k].geschrieben;
            for (std::size_t k = 0; k < recorded.schluessel.size(); ++k) recorded.schluessel[k].geloescht = change.schluessel[k].geloescht;
            for (std::size_t k = 0; k < recorded.dateien.size(); ++k) recorded.dateien[k].geschrieben = change.dateien[k].geschrieben;
            lookAtKeys(known.eintrag);
            journal_.finish(known.nummer, known.eintrag);
        });
    }
    known.eintrag = {};
    letzte_ = std::move(known);
    letzteAenderung_ = &change;
    laufend_.erase(running);
    if (laufend_.empty()) turn_.reset();
}

// --- after an interruption ---

// True: all it was to do is done. What is asked is how things stand, which is right also while another process is at it.
bool Listen::endInterrupted(JournalEintrag& entry) {
    const std::string machine = markOf(ctx_, entry);
    if (!atHand(ctx_, machine)) return false;
    if (isUndo(entry) && !Ruecknahme(ctx_, journal_, history_).isDone(entry)) return false;
    for (WertAenderung& value : entry.aenderung.werte) {
        const RegAddress place = addressOf(ctx_, entry, value);
        value.geschrieben = value.geschrieben || storeOf(ctx_, machine).value(place.root, place.key, *place.name) == value.neu;
    }
    for (DateiBild& file : entry.aenderung.dateien)
        file.geschrieben = file.geschrieben || ChangedFile(ctx_, machine, file.datei).read().value_or(std::string()) == file.neu;
    if (!isUndo(entry)) lookAtKeys(entry);
    return true;
}

void Listen::reconcile() {
    if (!journal_.writable()) return;
    const host::FolderLock turn(ctx_.heimPfad, std::chrono::milliseconds(0));
    if (turn.error() == std::errc::timed_out) return;   // what is unfinished may be under way
    const std::vector<std::int64_t> unreadable = journal_.tooLong();
    for (const std::int64_t nummer : journal_.unfinished()) {
        if (std::find(unreadable.begin(), unreadable.end(), nummer) != unreadable.end()) continue;
        auto entry = journal_.entry(nummer);
        if (!entry || !endInterrupted(*entry)) continue;
        const auto undone = isUndo(*entry) ? journal_.head(entry->hebtAuf) : std::nullopt;
        journal_.transaction([&] {
            journal_.finish(nummer, *entry);
            if (!undone || undone->aufgehobenDurch != 0) return;
            journal_.takenBack(undone->nummer, nummer);
            if (isUndo(*undone) && undone->hebtAuf != 0) journal_.takenBack(undone->hebtAuf, 0);
            notes_.push_back(isUndo(*undone) ? fmt::format(meldung::NachgetragenWieder, undone->hebtAuf) : fmt::format(meldung::NachgetragenZurueck, undone->nummer));
        });
    }
    if (!ctx_.blnHistoryAktiv) return;
    const std::size_t out = history_.takeAwayDead();
    std::size_t in = 0;
    for (const std::string& line : journal_.linesToCome()) in += history_.putBack(line) ? 1 : 0;
    if (out + in == 0) return;
    history_.HistorySave(false);
    notes_.push_back(fmt::format(meldung::NachgetragenZeilen, out, in));
}

bool Listen::offerTakeBack(const Aenderung& change) {
    const bool some = std::any_of(change.werte.begin(), change.werte.end(), [](const WertAenderung& value) { return value.geschrieben && value.alt != value.neu; });
    if (letzteAenderung_ != &change || letzte_.nummer == 0 || !some || !ctx_.port.ask(meldung::ZuruecknehmenFrage)) return false;
    if (!Ruecknahme(ctx_, journal_, history_).zuruecksetzen(letzte_.nummer)) return false;
    if (letzte_.zeile) takeOut(*letzte_.zeile);
    return true;
}

void Listen::takeOut(const std::string& zeile) {
    history_.deleteLine(zeile);
    history_.HistorySave(false);
}

}  // namespace brenvik
