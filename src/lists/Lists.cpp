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

constexpr int TextFile = 33, TextNoAccess = 75, TextErrorTitle = 34, TextFavouritesOff = 35, TextHistoryOff = 36;

bool writesHistory(Change::Art art) {
    return art == Change::Art::Speichern || art == Change::Art::Standard || art == Change::Art::Loeschen;
}

// A change from elsewhere than the screen is all or nothing: one of which nothing was written did not take place. What a
// Tip on screen failed to write stays recorded.
bool withdrawn(const Change& change) {
    return !change.onScreen && writesHistory(change.art) && !change.values.empty() &&
           std::none_of(change.values.begin(), change.values.end(), [](const ValueChange& value) { return value.written; });
}

// A change that leaves everything as it was is not worth remembering.
bool changesSomething(const Change& change) {
    const auto differs = [](const ValueChange& value) { return value.alt != value.neu; };
    return change.art == Change::Art::ContextMenu || !change.key.empty() || std::any_of(change.values.begin(), change.values.end(), differs) ||
           std::any_of(change.dateien.begin(), change.dateien.end(), [](const FileImage& file) { return !file.there || file.contents != file.neu; });
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

Listen::Listen(TipEngine& engine)
    : engine_(engine), ctx_(engine.context()), journal_(ctx_.homePath / JournalFile), history_(ctx_, journal_), favoriten_(engine),
      windows_(engine, journal_, history_, notes_, [this] { if (changed_) changed_(); }) {}

void Listen::onChange(std::function<void()> changed) {
    favoriten_.onChange(changed);
    changed_ = std::move(changed);
}

bool Listen::opens(const Liste& list) {
    list.active = FileWrite(ctx_, list.folder + list.file) && list.load();
    if (list.active) usable_[list.file] = list.folder;
    return list.active;
}

// Whoever thinks better of another folder keeps the list in the one where it was a moment ago.
bool Listen::staysWhereItWas(const Liste& list) {
    const auto before = usable_.find(list.file);
    if (before == usable_.end() || before->second == list.folder) return false;
    list.folder = before->second;
    if (!opens(list)) return false;
    ctx_.port.tell(messages::ListStays + list.folder);
    return true;
}

void Listen::loadList(const Liste& list) {
    for (;;) {
        if (opens(list)) break;
        const Answer answer = ctx_.port.messageBox({strBVKTexte(TextFile) + list.file + strBVKTexte(TextNoAccess), box::RetryCancel + box::Question, strBVKTexte(TextErrorTitle)});
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
    loadList(favouritesList([this] { return favoriten_.LoadFavorite(); }));
    loadHistoryFile();
}

Listen::Liste Listen::favouritesList(std::function<bool()> load) {
    return {FavouritesFile, ctx_.einstellungen.strFavoritenPfad, ctx_.blnFavoritenAktiv, ctx_.frmBVK_Prog.favouritesVisible, TextFavouritesOff, std::move(load)};
}

Listen::Liste Listen::historyList(std::function<bool()> load) {
    return {HistoryFile, ctx_.einstellungen.strHistoryPfad, ctx_.blnHistoryAktiv, ctx_.frmBVK_Prog.historyVisible, TextHistoryOff, std::move(load)};
}

void Listen::folderNew() {
    Settings& s = ctx_.einstellungen;
    s.strFavoritenPfad = withSeparator(s.strFavoritenPfad);
    s.strHistoryPfad = withSeparator(s.strHistoryPfad);
    if (ctx_.blnFavoritenAktiv) loadList(favouritesList([this] { return favoriten_.unite(); }));
    if (ctx_.blnHistoryAktiv) loadList(historyList([this] { return history_.unite(); }));
    offerHistory();
}

void Listen::loadHistory() {
    ctx_.einstellungen.strHistoryPfad = FolderExit(ctx_, ctx_.einstellungen.strHistoryPfad);
    loadHistoryFile();
}

void Listen::loadHistoryFile() {
    historyLoaded_ = true;
    loadList(historyList([this] { return history_.LoadHistory(); }));
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
std::vector<std::string> Listen::keysToBeMade(const JournalEntry& entry) {
    std::vector<std::string> paths, known;
    for (const ValueChange& value : entry.change.values) {
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
JournalEntry Listen::entryOf(const Change& change, const std::vector<HistoryPaar>& pairs) {
    JournalEntry entry;
    static_cast<JournalHeader&>(entry) = newHead(ctx_, change.art);
    if (!change.values.empty()) entry.machineName = machineMark(ctx_, change.values[0].machine);
    else if (!change.key.empty()) entry.machineName = machineMark(ctx_, change.key[0].machine);
    entry.tipp = change.tippIndex;
    entry.überschrift = change.tipHeading;
    entry.change = change;
    std::unordered_map<std::string, std::string> paths;   // as they were given, to the real ones
    for (ValueChange& value : entry.change.values) {
        const std::string given = givenPath(value);
        RegAddress place = addressForWriting(ctx_, value, !value.neu && change.art != Change::Art::ContextMenu);
        // Below HKCR another value may be seen than the one that is written, and others may have written since it was read.
        RegStore& store = storeOf(ctx_, place.machine);
        value.alt = store.value(place.root, place.key, *place.name);
        if (value.alt && !value.neu)   // a deleted one comes back as it was spelt
            for (const NamedValue& standing : store.values(place.root, place.key))
                if (sameName(standing.name.text(), place.name->text())) place.name = standing.name;
        value.machine = place.machine, value.path = place.keyPath(), value.name = place.name->text();
        paths.emplace(lowerCase(given), place.path());
    }
    for (KeyImage& image : entry.change.key) image.path = keyAddress(ctx_, image.machine, image.path).keyPath();
    for (FileImage& file : entry.change.dateien) file.datei = recordedFile(ctx_, entry.machineName, file.datei);
    entry.newKeys = keysToBeMade(entry);
    for (const HistoryPaar& pair : pairs) {
        const auto known = paths.find(lowerCase(pair.path));
        ValueChange place;
        place.machine = entry.machineName, place.path = pair.path;
        entry.pairs.push_back(known != paths.end() ? known->second : addressForWriting(ctx_, place, false).path());
    }
    return entry;
}

void Listen::record(const Change& change, Running& running, const std::vector<HistoryPaar>& pairs) {
    running.eintrag = entryOf(change, pairs);
    if (!changesSomething(running.eintrag.change) && !running.zeile) return;   // as things stand now, not as they stood when it was planned
    running.eintrag.zeile = running.zeile;
    running.nummer = journal_.add(running.eintrag);
    for (KeyImage& image : running.eintrag.change.key) image.unterschluessel.clear(), image.values.clear(), image.details.clear();
}

// Line and record are made as one, for other processes too. Both stand before the first write.
void Listen::begin(const Change& change) {
    if (!historyLoaded_) loadHistory();
    if (running_.empty()) turn_.emplace(ctx_.homePath, PatienceOfChanges);
    Running running;
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
    running_[&change] = std::move(running);
    if (changed_) changed_();
}

void Listen::written(const Change& change, std::size_t value) {
    const auto running = running_.find(&change);
    if (running == running_.end() || running->second.nummer == 0) return;
    ValueChange& known = running->second.eintrag.change.values.at(value);
    known.neu = change.values.at(value).neu;
    known.written = change.values[value].written;
    journaling([&] { journal_.written(running->second.nummer, value, known); });
}

// How the change left its keys.
void Listen::lookAtKeys(JournalEntry& entry) {
    entry.afterwards.clear();
    for (const KeyImage& image : entry.change.key) {
        entry.afterwards.emplace_back();
        if (!image.geloescht && !image.created) continue;
        const RegAddress place = addressOf(ctx_, entry, image.path);
        entry.afterwards.back() = keyImage(storeOf(ctx_, place.machine), place.machine, {place.root, place.key});
    }
}

void Listen::finished(const Change& change) {
    const auto running = running_.find(&change);
    if (running == running_.end()) return;
    Running& known = running->second;
    if (withdrawn(change)) {
        if (known.nummer != 0) journaling([&] { journal_.remove(std::exchange(known.nummer, 0)); });
        if (known.zeile) takeOut(*known.zeile);
    } else if (known.nummer != 0) {
        journaling([&] {
            Change& recorded = known.eintrag.change;
            for (std::size_t k = 0; k < recorded.values.size(); ++k) recorded.values[k].neu = change.values[k].neu, recorded.values[k].written = change.values[k].written;
            for (std::size_t k = 0; k < recorded.key.size(); ++k) recorded.key[k].geloescht = change.key[k].geloescht;
            for (std::size_t k = 0; k < recorded.dateien.size(); ++k) recorded.dateien[k].written = change.dateien[k].written;
            lookAtKeys(known.eintrag);
            journal_.finish(known.nummer, known.eintrag);
        });
    }
    known.eintrag = {};
    last_ = std::move(known);
    lastChange_ = &change;
    running_.erase(running);
    if (running_.empty()) turn_.reset();
}

// --- after an interruption ---

// True: all it was to do is done. What is asked is how things stand, which is right also while another process is at it.
bool Listen::endInterrupted(JournalEntry& entry) {
    const std::string machine = markOf(ctx_, entry);
    if (!atHand(ctx_, machine)) return false;
    if (isUndo(entry) && !UndoAnswer(ctx_, journal_, history_).isDone(entry)) return false;
    for (ValueChange& value : entry.change.values) {
        const RegAddress place = addressOf(ctx_, entry, value);
        value.written = value.written || storeOf(ctx_, machine).value(place.root, place.key, *place.name) == value.neu;
    }
    for (FileImage& file : entry.change.dateien)
        file.written = file.written || ChangedFile(ctx_, machine, file.datei).read().value_or(std::string()) == file.neu;
    if (!isUndo(entry)) lookAtKeys(entry);
    return true;
}

void Listen::reconcile() {
    if (!journal_.writable()) return;
    const host::FolderLock turn(ctx_.homePath, std::chrono::milliseconds(0));
    if (turn.error() == std::errc::timed_out) return;   // what is unfinished may be under way
    const std::vector<std::int64_t> unreadable = journal_.tooLong();
    for (const std::int64_t nummer : journal_.unfinished()) {
        if (std::find(unreadable.begin(), unreadable.end(), nummer) != unreadable.end()) continue;
        auto entry = journal_.entry(nummer);
        if (!entry || !endInterrupted(*entry)) continue;
        const auto undone = isUndo(*entry) ? journal_.head(entry->undoes) : std::nullopt;
        journal_.transaction([&] {
            journal_.finish(nummer, *entry);
            if (!undone || undone->undoneBy != 0) return;
            journal_.takenBack(undone->nummer, nummer);
            if (isUndo(*undone) && undone->undoes != 0) journal_.takenBack(undone->undoes, 0);
            notes_.push_back(isUndo(*undone) ? fmt::format(messages::LateRedo, undone->undoes) : fmt::format(messages::LateUndo, undone->nummer));
        });
    }
    if (!ctx_.blnHistoryAktiv) return;
    const std::size_t out = history_.takeAwayDead();
    std::size_t in = 0;
    for (const std::string& line : journal_.linesToCome()) in += history_.putBack(line) ? 1 : 0;
    if (out + in == 0) return;
    history_.HistorySave(false);
    notes_.push_back(fmt::format(messages::LateLines, out, in));
}

bool Listen::offerTakeBack(const Change& change) {
    const bool some = std::any_of(change.values.begin(), change.values.end(), [](const ValueChange& value) { return value.written && value.alt != value.neu; });
    if (lastChange_ != &change || last_.nummer == 0 || !some || !ctx_.port.ask(messages::UndoQuestion)) return false;
    if (!UndoAnswer(ctx_, journal_, history_).undo(last_.nummer)) return false;
    if (last_.zeile) takeOut(*last_.zeile);
    return true;
}

void Listen::takeOut(const std::string& zeile) {
    history_.deleteLine(zeile);
    history_.HistorySave(false);
}

}  // namespace brenvik
