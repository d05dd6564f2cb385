#pragma once
// History.txt: a line for each change, with the old values in display form. The list lives in memory; the file is rewritten
// from it, and what other programs did to the file meanwhile is joined first.
//   date#time#computer#number#old value#number#old value#
// What a password was is not written down; a "#" in the computer's name stands as "%23". Lines whose change was taken back or
// that were deleted here stay away, also when an editor saves the text as it was before.
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "lists/ListFile.h"
#include "lists/journal/Journal.h"
#include "tipengine/Context.h"

namespace brenvik {

struct HistoryRecord {
    std::int32_t Nummer = 0;      // counts from 1; its position when it was added
    std::string Zeile;
    bool Geloescht = false;
};

// One "number#old value" of a line.
struct HistoryPaar {
    std::int32_t tipp = 0;        // 0: none that could be read
    std::string alt;
    std::string path;             // where the value lies; known only while the line is written
};
inline constexpr const char* Secret = "*****";   // an old value that must not be read here
bool isSecret(const std::string& path);          // a value whose name says so
std::vector<HistoryPaar> historyPairs(const std::string& line);

class History {
public:
    History(Context& ctx, Journal& journal) : ctx_(ctx), journal_(journal) {}
    History(const History&) = delete;
    History& operator=(const History&) = delete;

    const std::vector<HistoryRecord>& udtHistory() const { return udtHistory_; }
    HistoryRecord* find(std::int32_t nummer);

    // Takes changes out of journal and list for good; row: the entry of the list that is meant, where lines are equal.
    void forget(const std::vector<std::int64_t>& changes, std::int32_t row = 0);
    bool LoadHistory();                                // false, with the reason told: the list is not to be written
    bool unite();                                   // the same after the folder was changed: what the table holds is joined with the file
    // The line of a change, and in pairs what it says; none if there is nothing to say. Of the Tip on screen the texts that the
    // user saw; of others the old values in the form in which their Tip would show them.
    std::optional<std::string> HistoryEintrag(const Change& change, std::vector<HistoryPaar>& pairs);
    // Writes the line; it then has the wording that will be read again. What belongs with it is done while no other process of
    // ours writes, whether or not the file could be written. False: it could not, which the user has been told.
    bool append(std::string& line, const std::vector<HistoryPaar>& pairs, const std::function<void(bool written)>& along);
    bool HistorySave(bool remember = true);            // that lines went; not of changes that never took place
    void deleteLine(const std::string& line);          // marks the last of these lines
    bool putBack(const std::string& line);             // of a change that stands again; false: it is there
    std::size_t takeAwayDead();                        // lines that belong to no change that stands; answers how many

private:
    void screenPairs(std::vector<HistoryPaar>& pairs);
    void recordedPairs(const Change& change, std::vector<HistoryPaar>& pairs);
    void prepareWriting();
    bool comesBack(const std::string& line, std::size_t here);
    void rememberDeleted(const std::vector<std::string>& lines);
    void quietly(const std::function<void()>& work);
    void add(std::string line);
    void join(const ListDifference& foreign);
    bool tellFailure(const std::string& record, const std::vector<HistoryPaar>& pairs, const std::exception& error);

    Context& ctx_;
    Journal& journal_;
    std::vector<HistoryRecord> udtHistory_;
    std::optional<ListFile> datei_;                 // the file that the table belongs to
};

}  // namespace brenvik
