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

struct JournalHeader {
    std::int64_t nummer = 0;
    std::string zeit;                       // "2002-11-09 12:30:00", local time
    std::string machineName;                    // as machineMark has it; empty: the local one, as which former versions wrote its name then
    std::string localMachine;             // the local machine's name then
    std::string benutzer, sid;              // sid: whose HKEY_CURRENT_USER it was
    Change::Art art = Change::Art::Speichern;
    std::int32_t tipp = 0;
    std::string überschrift;
    std::optional<std::string> zeile;       // of History.txt; none: the change has no line there
    std::int64_t undoes = 0;               // the change that this one took back
    std::int64_t undoneBy = 0;       // the change that took this one back
    bool hiddenOnes = false;              // deleted from the list window
    bool lineOnly = false;                  // known from History.txt only, without values
};
inline bool isUndo(const JournalHeader& change) { return change.art == Change::Art::Undo || change.art == Change::Art::Restore; }

// Paths of values and keys are those of RegAddress, of files Windows paths on the machine of the change.
struct JournalEntry : JournalHeader {
    Change change;
    std::vector<std::optional<KeyImage>> afterwards;   // of each key of the change, as it left it; none: not known
    std::vector<std::string> newKeys; // keys that the change made on its way, topmost only
    std::vector<std::string> pairs;          // paths of the values that the line holds, in its order
};

// A change as somebody sees it who looks at what all of them made together: only what was written.
struct JournalStep : JournalHeader {
    std::vector<ValueChange> values;
    std::vector<KeyImage> key; // as they were left; empty where nothing is known
    std::vector<FileImage> dateien;
};

class Journal {
public:
    explicit Journal(std::filesystem::path file);   // opened at the first use
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;
    ~Journal();
    const std::filesystem::path& file() const { return file_; }
    bool writable();                                        // else it only tells what stands in it

    std::int64_t add(const JournalEntry& entry);          // begun; finish() ends it
    void written(std::int64_t nummer, std::size_t value, const ValueChange& content);
    void finish(std::int64_t nummer, const JournalEntry& entry);   // values, keys and files as they are now
    void finished(std::int64_t nummer);                     // nothing more is to come
    void remove(std::int64_t nummer);                       // of a change that did not take place
    void takenBack(std::int64_t nummer, std::int64_t durch);// durch 0: it stands again
    void hide(std::int64_t nummer);

    std::vector<JournalHeader> heads();                       // all, oldest first
    // Changes without a line that the list window shows, each with the line of the next change that has one.
    std::vector<std::pair<JournalHeader, std::string>> withoutLine();
    bool hasWithoutLine();
    std::optional<JournalEntry> entry(std::int64_t nummer);
    std::optional<JournalHeader> head(std::int64_t nummer);
    std::int64_t lastTakenBack();                           // the change whose taking back was the last; 0: none
    std::vector<std::int64_t> unfinished();                 // begun, and not ended by whoever began them
    // All changes that wrote something, oldest first.
    void eachStep(const std::function<void(JournalStep&)>& take);
    bool someTakenBackSince(std::int64_t nummer);           // of the changes before this one
    // Keys that changes made which are taken back by now, with the head of the change.
    std::vector<std::pair<JournalHeader, std::string>> keysOfUndone();

    // --- lines of History.txt ---
    // The change that wrote a line, of equal ones that stand the one with this many younger ones; failing that the newest. 0: none.
    std::int64_t byLine(const std::string& zeile, std::size_t younger = 0);
    std::int64_t adoptLine(const JournalHeader& head);        // an entry for a line that nobody recorded
    void lineDeleted(const JournalHeader& unknown);           // by the user; unknown is kept if nobody recorded its line
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
    void readParts(JournalEntry& entry);
    void addImage(std::int64_t nummer, std::int64_t place, const KeyImage& image);
    std::filesystem::path file_;
    std::unique_ptr<Tables> tables_;
};

}  // namespace brenvik
