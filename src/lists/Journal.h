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

#include "registry/Sqlite.h"
#include "tipengine/Aenderung.h"

namespace brenvik {

struct JournalKopf {
    std::int64_t nummer = 0;
    std::string zeit;                       // "2002-11-09 12:30:00", local time
    std::string rechner;                    // as the registry service was given it; empty: local
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

struct JournalEintrag : JournalKopf {
    Aenderung aenderung;
    std::vector<std::string> neueSchluessel; // keys that the change made on its way, topmost only
    std::vector<std::string> paare;          // paths of the values that the line holds, in its order
};

// What each value that the program set should hold, by the last change that wrote it.
struct GesetzterWert {
    std::int64_t nummer = 0;
    std::int32_t tipp = 0;
    std::string überschrift, rechner, lokalerRechner, sid, path;
    std::optional<RawValue> wert;           // none: it was deleted
};

class Journal {
public:
    explicit Journal(std::filesystem::path file);   // opened at the first use
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;
    ~Journal();
    const std::filesystem::path& file() const { return file_; }

    std::int64_t add(const JournalEintrag& entry);
    void written(std::int64_t nummer, std::size_t value, const WertAenderung& content);
    void finish(std::int64_t nummer, const Aenderung& change);
    void remove(std::int64_t nummer);                       // of a change that did not take place
    void setLine(std::int64_t nummer, const std::string& zeile, const std::vector<std::string>& paare);
    void takenBack(std::int64_t nummer, std::int64_t durch);// durch 0: it stands again
    void hide(std::int64_t nummer);

    std::vector<JournalKopf> heads();                       // all, oldest first
    // Changes without a line that the list window shows, each with the line of the next change that has one.
    std::vector<std::pair<JournalKopf, std::string>> withoutLine();
    std::optional<JournalEintrag> entry(std::int64_t nummer);
    std::optional<JournalKopf> head(std::int64_t nummer);
    // The change that wrote a line: the newest that stands; failing that the newest. 0: none.
    std::int64_t byLine(const std::string& zeile);
    std::int64_t adoptLine(const JournalKopf& head);        // an entry for a line that nobody recorded
    std::int64_t lastTakenBack();                           // the change whose taking back was the last; 0: none
    std::vector<GesetzterWert> lastWritten();               // ordered by Tip
    // Every file that was written, oldest first; of the change only number, Tip and heading.
    void eachWrittenFile(const std::function<void(const JournalKopf&, const DateiBild&)>& take);
    void transaction(const std::function<void()>& changes);
    // Runs the work while no other process may write here; without that if the journal cannot be used.
    void alone(const std::function<void()>& work);

private:
    struct Tables;
    Tables& tables();
    template <class Work> auto guarded(Work work);
    void readParts(JournalEintrag& entry);
    std::filesystem::path file_;
    std::unique_ptr<Tables> tables_;
};

}  // namespace brenvik
