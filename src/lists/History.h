#pragma once
// History.txt: a line for each change, with the old values in display form. The list lives in memory; the file is rewritten
// from it, and what other programs did to the file meanwhile is joined first.
//   date#time#computer#number#old value#number#old value#
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "lists/ListenDatei.h"
#include "tipengine/Aenderung.h"
#include "tipengine/Context.h"

namespace brenvik {

struct HistorySatz {
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
std::vector<HistoryPaar> historyPairs(const std::string& line);

class History {
public:
    // Runs its argument while no other process of ours reads or writes the file.
    using Allein = std::function<void(const std::function<void()>&)>;

    History(Context& ctx, Allein allein) : ctx_(ctx), allein_(std::move(allein)) {}
    History(const History&) = delete;
    History& operator=(const History&) = delete;

    const std::vector<HistorySatz>& udtHistory() const { return udtHistory_; }
    HistorySatz* find(std::int32_t nummer);

    bool LoadHistory();                                // false, with the reason told: the list is not to be written
    bool vereinen();                                   // the same after the folder was changed: what the table holds is joined with the file
    // Appends the record of the Tip on screen, and to pairs what it says. The line as it stands in the file; none if
    // nothing changed or the file cannot be written, which the user has been told then.
    std::optional<std::string> HistoryEintrag(std::vector<HistoryPaar>& pairs);
    // The same for a change that was not made on screen, from its raw old values.
    std::optional<std::string> eintragAus(const Aenderung& change, std::vector<HistoryPaar>& pairs);
    bool HistorySave();
    void deleteLine(const std::string& line);          // marks the last of these lines
    void putBack(const std::string& line);             // takes a deletion back; a line that has gone is added

private:
    std::optional<std::string> append(const std::vector<HistoryPaar>& pairs);
    void prepareWriting();
    void add(std::string line);
    void join(const Listenunterschied& foreign);
    bool tellFailure(const std::string& record, const std::vector<HistoryPaar>& pairs, const std::exception& error);

    Context& ctx_;
    Allein allein_;
    std::vector<HistorySatz> udtHistory_;
    std::optional<ListenDatei> datei_;                 // the file that the table belongs to
};

}  // namespace brenvik
