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

std::string machineOf(const JournalKopf& change);                                  // its name, also of the local one
std::string shownRaw(const std::optional<RawValue>& value);                        // "REG_DWORD 1", one line, cut if long
JournalKopf newHead(Context& ctx, Aenderung::Art art);                             // with time, user and machine of now

// Saving and taking back go one after the other in all processes of a home: what a record says stood there is to be true when
// the change begins. Whoever takes back waits that long; a change goes on all the same, having waited less.
inline constexpr std::chrono::seconds PatienceForOthers{10}, PatienceOfChanges{2};

class PriorState;

class Ruecknahme {
public:
    Ruecknahme(Context& ctx, Journal& journal, History& history) : ctx_(ctx), journal_(journal), history_(history) {}

    // Each tells the user how it went. False: declined or failed, and nothing was changed.
    bool zuruecksetzen(std::int64_t nummer, bool tell = true);
    bool wiederherstellen(std::int64_t nummer);

    // Keys that the change made on its way to these values, or changes that are taken back by now, go again as far as they
    // are empty. For whoever takes values back.
    void removeEmptyKeys(const JournalEintrag& change, const std::vector<RegAddress>& values);
    // Of a taking back that was interrupted: whether all it was to do stands so now.
    bool isDone(const JournalEintrag& undo);

private:
    struct Plan;
    enum class Ausgang { Declined, AllKept, Nothing, Done };
    Ausgang restore(const JournalEintrag& change, Aenderung::Art art, const std::function<void(std::int64_t recorded)>& mark, std::size_t& kept);
    bool mayWorkOn(const std::string& machine);
    void planValues(const JournalEintrag& change, const PriorState& prior, Plan& plan);
    void planKeys(const JournalEintrag& change, const PriorState& prior, Plan& plan);
    void planFiles(const JournalEintrag& change, const PriorState& prior, Plan& plan);
    bool settleConflicts(const JournalEintrag& change, Plan& plan);
    JournalEintrag recordOf(const JournalEintrag& change, Aenderung::Art art, const Plan& plan);
    void perform(const JournalEintrag& change, const Plan& plan);
    void writeRegistry(const JournalEintrag& change, const Plan& plan);
    bool refuse(const char* why);

    Context& ctx_;
    Journal& journal_;
    History& history_;
};

}  // namespace brenvik
