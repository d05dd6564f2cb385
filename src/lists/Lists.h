#pragma once
// The lists that belong to the user, put together: history with its journal, favourites. Hears of every change.
#include <filesystem>
#include <map>
#include <optional>

#include "frame/platform/HostFile.h"
#include "lists/Favourites.h"
#include "lists/History.h"
#include "lists/HistoryWindows.h"
#include "lists/journal/Journal.h"

namespace brenvik {

inline constexpr const char* JournalFile = "journal.db";   // in the program's home

class Listen final : public ChangeRecorder {
public:
    explicit Listen(TipEngine& engine);

    void LoadFHListe();                                // the step "Lade Favoriten und History..." of the load sequence
    void folderNew();                                  // folders were chosen in the options: the lists go on there, and on again if they were off
    void loadHistory();                                // the history's half; done before the first change if nobody asked before
    void onChange(std::function<void()> changed);      // what the window shows of lists and their commands is another

    // What was put right at the start, since a change had been interrupted; German, a line each.
    const std::vector<std::string>& notes() const { return notes_; }

    const std::string& journalFailure() const { return journalFehler_; }   // the user was told it; empty: none

    History& history() { return history_; }
    Journal& journal() { return journal_; }
    Favoriten& favoriten() { return favoriten_; }
    HistoryWindows& historyWindows() { return windows_; }

    void begin(const Change& change) override;
    void written(const Change& change, std::size_t value) override;
    void finished(const Change& change) override;
    bool offerTakeBack(const Change& change) override;

private:
    struct Liste;
    struct Running {
        std::int64_t nummer = 0;                       // in the journal; 0: not there
        std::optional<std::string> zeile;              // of History.txt
        JournalEntry eintrag;                        // the change by its real places; images without what is in them
    };
    bool opens(const Liste& list);
    bool staysWhereItWas(const Liste& list);
    void loadList(const Liste& list);
    Liste favouritesList(std::function<bool()> load);
    Liste historyList(std::function<bool()> load);
    void loadHistoryFile();
    void offerHistory();
    void reconcile();                                  // journal, registry and History.txt after a change that was interrupted
    bool endInterrupted(JournalEntry& entry);
    void record(const Change& change, Running& running, const std::vector<HistoryPaar>& pairs);
    JournalEntry entryOf(const Change& change, const std::vector<HistoryPaar>& pairs);
    void lookAtKeys(JournalEntry& entry);
    std::vector<std::string> keysToBeMade(const JournalEntry& entry);
    void journaling(const std::function<void()>& work);
    void takeOut(const std::string& zeile);            // of History.txt, a line of no change

    TipEngine& engine_;
    Context& ctx_;
    std::function<void()> changed_;
    Journal journal_;
    History history_;
    Favoriten favoriten_;
    HistoryWindows windows_;
    std::map<const Change*, Running> running_;      // several changes may be written as one
    Running last_;                                   // the one that was finished last
    std::vector<std::string> notes_;
    const Change* lastChange_ = nullptr;       // to be compared only
    std::map<std::string, std::string> usable_;     // by file: the folder where it was found usable last
    bool historyLoaded_ = false;
    std::string journalFehler_;                        // the user knows
    std::optional<host::FolderLock> turn_;             // while changes are under way
};

}  // namespace brenvik
