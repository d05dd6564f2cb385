#pragma once
// Taking a recorded change back exactly: type and bytes of every value, whole keys, whole files, on the machine where the
// change was made, all of it or nothing. What was changed since, by others or by later changes, is shown first, and stays
// unless the user wants it back too. A machine that is not at hand is named and asked about. Taking back is itself
// recorded, and so can be taken back in its turn.
#include <chrono>

#include "lists/History.h"
#include "lists/journal/Journal.h"
#include "lists/undo/RegAddress.h"

namespace brenvik {

std::string machineOf(const JournalHeader& change);                                  // its name, also of the local one
std::string shownRaw(const std::optional<RawValue>& value);                        // "REG_DWORD 1", one line, cut if long
JournalHeader newHead(Context& ctx, Change::Art art);                             // with time, user and machine of now

// Saving and taking back go one after the other in all processes of a home: what a record says stood there is to be true when
// the change begins. Whoever takes back waits that long; a change goes on all the same, having waited less.
inline constexpr std::chrono::seconds PatienceForOthers{10}, PatienceOfChanges{2};

class PriorState;

class UndoAnswer {
public:
    UndoAnswer(Context& ctx, Journal& journal, History& history) : ctx_(ctx), journal_(journal), history_(history) {}

    // Each tells the user how it went. False: declined or failed, and nothing was changed.
    bool undo(std::int64_t nummer, bool tell = true);
    bool restore(std::int64_t nummer);

    // Keys that the change made on its way to these values, or changes that are taken back by now, go again as far as they
    // are empty. For whoever takes values back.
    void removeEmptyKeys(const JournalEntry& change, const std::vector<RegAddress>& values);
    // Of a taking back that was interrupted: whether all it was to do stands so now.
    bool isDone(const JournalEntry& undo);

private:
    struct Plan;
    enum class WayOut { Declined, AllKept, Nothing, Done };
    WayOut restore(const JournalEntry& change, Change::Art art, const std::function<void(std::int64_t recorded)>& mark, std::size_t& kept);
    bool mayWorkOn(const std::string& machine);
    void planValues(const JournalEntry& change, const PriorState& prior, Plan& plan);
    void planKeys(const JournalEntry& change, const PriorState& prior, Plan& plan);
    void planFiles(const JournalEntry& change, const PriorState& prior, Plan& plan);
    bool settleConflicts(const JournalEntry& change, Plan& plan);
    JournalEntry recordOf(const JournalEntry& change, Change::Art art, const Plan& plan);
    void perform(const JournalEntry& change, const Plan& plan);
    void writeRegistry(const JournalEntry& change, const Plan& plan);
    bool refuse(const char* why);

    Context& ctx_;
    Journal& journal_;
    History& history_;
};

}  // namespace brenvik
