#include "lists/Listen.h"

#include <algorithm>
#include <utility>

#include "frame/DateiSystem.h"
#include "frame/Konvertierung.h"
#include "frame/Reports.h"
#include "frame/Texte.h"
#include "lists/ListenOrdner.h"
#include "lists/Meldungen.h"
#include "registry/RegPath.h"

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
    : engine_(engine), ctx_(engine.context()), history_(ctx_, [this](const std::function<void()>& work) { journal_.alone(work); }), journal_(ctx_.heimPfad / JournalDatei), favoriten_(engine),
      fenster_(engine, journal_, history_, [this] { if (changed_) changed_(); }) {}

void Listen::onChange(std::function<void()> changed) {
    favoriten_.onChange(changed);
    changed_ = std::move(changed);
}

void Listen::loadList(const Liste& list) {
    for (;;) {
        list.active = FileWrite(ctx_, list.folder + list.file);
        if (list.active && list.load()) break;
        list.active = false;
        const Answer answer = ctx_.port.messageBox({strBVKTexte(TextDatei) + list.file + strBVKTexte(TextKeinZugriff), box::RetryCancel + box::Question, strBVKTexte(TextFehlerTitel)});
        if (answer != Answer::Retry) {
            ctx_.port.tell(strBVKTexte(list.switchedOff));
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
    offerHistory();
}

// Changes without a line are in the list window too.
void Listen::offerHistory() {
    journaling([&] {
        if (!journal_.withoutLine().empty()) ctx_.frmBVK_Prog.tbrHistory = true;
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
        if (!journalGestoert_) ctx_.port.tell(error.what(), box::Exclamation);
        journalGestoert_ = true;
    }
}

// The topmost missing key of each path.
std::vector<std::string> Listen::keysToBeMade(const Aenderung& change) {
    std::vector<std::string> keys;
    for (const WertAenderung& value : change.werte) {
        if (value.alt) continue;
        ctx_.objBVKReg.SetPath(value.machine, value.path);
        const RegPath place = parseRegPath(value.path);
        RegStore& store = ctx_.objBVKReg.selectedStore();
        std::string missing, key = place.key;
        while (!key.empty() && !store.keyExists(place.root, key)) {
            missing = key;
            key.resize(key.rfind('\\') == std::string::npos ? 0 : key.rfind('\\'));
        }
        if (missing.empty()) continue;
        const std::string path = std::string(longRootName(place.root)) + "\\" + missing;
        const auto same = [&](const std::string& known) { return equalText(known, path); };
        if (std::none_of(keys.begin(), keys.end(), same)) keys.push_back(path);
    }
    return keys;
}

void Listen::record(const Aenderung& change, Laufend& running, const std::vector<HistoryPaar>& pairs) {
    JournalEintrag entry;
    static_cast<JournalKopf&>(entry) = newHead(ctx_, change.art);
    if (!change.werte.empty()) entry.rechner = change.werte[0].machine;
    else if (!change.schluessel.empty()) entry.rechner = change.schluessel[0].machine;
    entry.tipp = change.tippIndex;
    entry.überschrift = change.tippÜberschrift;
    entry.zeile = running.zeile;
    entry.aenderung = change;
    entry.neueSchluessel = keysToBeMade(change);
    for (const HistoryPaar& pair : pairs) entry.paare.push_back(pair.path);
    running.nummer = journal_.add(entry);
}

// The line is written first: the journal has to know its wording. Both stand before the first write.
void Listen::begin(const Aenderung& change) {
    if (!historyGeladen_) loadHistory();
    Laufend running;
    std::vector<HistoryPaar> pairs;
    if (ctx_.blnHistoryAktiv && writesHistory(change.art))
        reportAndGoOn(ctx_, "HistoryEintrag", [&] { running.zeile = change.amBildschirm ? history_.HistoryEintrag(pairs) : history_.eintragAus(change, pairs); });
    if (changesSomething(change)) journaling([&] { record(change, running, pairs); });
    if (running.nummer != 0) ctx_.frmBVK_Prog.tbrHistory = true;
    laufend_[&change] = std::move(running);
    if (changed_) changed_();
}

void Listen::written(const Aenderung& change, std::size_t value) {
    const auto running = laufend_.find(&change);
    if (running != laufend_.end() && running->second.nummer != 0) journaling([&] { journal_.written(running->second.nummer, value, change.werte.at(value)); });
}

void Listen::finished(const Aenderung& change) {
    const auto running = laufend_.find(&change);
    if (running == laufend_.end()) return;
    if (withdrawn(change)) {
        if (running->second.nummer != 0) journaling([&] { journal_.remove(std::exchange(running->second.nummer, 0)); });
        if (running->second.zeile) takeOut(*running->second.zeile);
    } else if (running->second.nummer != 0) {
        journaling([&] { journal_.finish(running->second.nummer, change); });
    }
    letzte_ = std::move(running->second);
    letzteAenderung_ = &change;
    laufend_.erase(running);
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
    history_.HistorySave();
}

}  // namespace brenvik
