#pragma once
// The change journal: every change with its raw old and new values, in an SQLite file of the program's home that only its
// owner may read. History.txt holds the same changes as display texts; a line there is found here by its wording.
// Failures are NumberedErrors with a German message.
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "registry/store/Sqlite.h"
#include "tipengine/values/Change.h"

namespace brenvik {

struct JournalKopf {
    std::int64_t nummer = 0;
    std::string zeit;                       // "2002-11-09 12:30:00", local time
    std::string rechner;                    // as machineMark has it; empty: the local one, as which former versions wrote its name then
    std::string lokalerRechner;             // the local machine's name then
    std::string benutzer, sid;              // sid: whose HKEY_CURRENT_USER it was
    Aenderung::Art art = Aenderung::Art::Speichern;
    std::int32_t tipp = 0;
    std::string überschrift;
    std::optional<std::string> zeile;       // of History.txt; none: the change has no line there
    std::int64_t hebtAuf = 0;               // the change that this one took back
    std::int64_t aufgehobenDurch = 0;       // the change that took this one back
    bool ausgeblendet = false;              // deleted from the list window
    bool nurZeile = false;                  // known from History.txt only, without values
};
inline bool isUndo(const JournalKopf& change) { return change.art == Aenderung::Art::Zuruecksetzen || change.art == Aenderung::Art::Wiederherstellen; }

// Paths of values and keys are those of RegAddress, of files Windows paths on the machine of the change.
struct JournalEintrag : JournalKopf {
    Aenderung aenderung;
    std::vector<std::optional<SchluesselBild>> nachher;   // of each key of the change, as it left it; none: not known
    std::vector<std::string> neueSchluessel; // keys that the change made on its way, topmost only
    std::vector<std::string> paare;          // paths of the values that the line holds, in its order
};

// A change as somebody sees it who looks at what all of them made together: only what was written.
struct JournalSchritt : JournalKopf {
    std::vector<WertAenderung> werte;
    std::vector<SchluesselBild> schluessel; // as they were left; empty where nothing is known
    std::vector<DateiBild> dateien;
};

class Journal {
public:
    explicit Journal(std::filesystem::path file);   // opened at the first use
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;
    ~Journal();
    const std::filesystem::path& file() const { return file_; }
    bool writable();                                        // else it only tells what stands in it

    std::int64_t add(const JournalEintrag& entry);          // begun; finish() ends it
    void written(std::int64_t nummer, std::size_t value, const WertAenderung& content);
    void finish(std::int64_t nummer, const JournalEintrag& entry);   // values, keys and files as they are now
    void finished(std::int64_t nummer);                     // nothing more is to come
    void remove(std::int64_t nummer);                       // of a change that did not take place
    void takenBack(std::int64_t nummer, std::int64_t durch);// durch 0: it stands again
    void hide(std::int64_t nummer);

    std::vector<JournalKopf> heads();                       // all, oldest first
    // Changes without a line that the list window shows, each with the line of the next change that has one.
    std::vector<std::pair<JournalKopf, std::string>> withoutLine();
    bool hasWithoutLine();
    std::optional<JournalEintrag> entry(std::int64_t nummer);
    std::optional<JournalKopf> head(std::int64_t nummer);
    std::int64_t lastTakenBack();                           // the change whose taking back was the last; 0: none
    std::vector<std::int64_t> unfinished();                 // begun, and not ended by whoever began them
    // All changes that wrote something, oldest first.
    void eachStep(const std::function<void(JournalSchritt&)>& take);
    bool someTakenBackSince(std::int64_t nummer);           // of the changes before this one
    // Keys that changes made which are taken back by now, with the head of the change.
    std::vector<std::pair<JournalKopf, std::string>> keysOfUndone();

    // --- lines of History.txt ---
    // The change that wrote a line, of equal ones that stand the one with this many younger ones; failing that the newest. 0: none.
    std::int64_t byLine(const std::string& zeile, std::size_t younger = 0);
    std::int64_t adoptLine(const JournalKopf& head);        // an entry for a line that nobody recorded
    void lineDeleted(const JournalKopf& unknown);           // by the user; unknown is kept if nobody recorded its line
    // How many changes of this wording stand; none: the journal knows none of them, standing or not.
    std::optional<std::size_t> standing(const std::string& zeile);
    std::vector<std::pair<std::string, std::size_t>> linesThatWent();   // of changes taken back or deleted, with how many stand
    std::vector<std::string> linesToCome();                 // of changes that stand again
    void lineIsThere();                                     // all of them

    // Takes everything out that is known of these changes and their undoing, for good.
    void forget(const std::vector<std::int64_t>& numbers);
    std::vector<std::string> hideLines(const std::vector<std::int64_t>& numbers);   // as deleted from the list; answers those that stood there
    // Changes with more in one place than is ever written there: they cannot be read, and others are told without them.
    std::vector<std::int64_t> tooLong();

    void transaction(const std::function<void()>& changes);
    // Runs the work while no other process may write here; without that if the journal cannot be used.
    void alone(const std::function<void()>& work);

private:
    struct Tables;
    Tables& tables();
    template <class Work> auto guarded(Work work);
    void readParts(JournalEintrag& entry);
    void addImage(std::int64_t nummer, std::int64_t place, const SchluesselBild& image);
    std::filesystem::path file_;
    std::unique_ptr<Tables> tables_;
};

}  // namespace brenvik
