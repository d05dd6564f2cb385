#pragma once
// Taking a recorded change back exactly: type and bytes of every value, whole keys, whole files, on the machine where the
// change was made, all of it or nothing. What somebody else changed since is shown and asked about first. Taking back is
// itself recorded, and so can be taken back in its turn.
#include "lists/History.h"
#include "lists/Journal.h"

namespace brenvik {

// Where a path of a recorded change lies now.
struct Fundort {
    std::string machine;      // as the service wants it; empty: local
    std::string path;         // HKEY_CURRENT_USER of another profile or machine stands as HKEY_USERS\SID
};
bool madeHere(const FrameContext& ctx, const JournalKopf& change);                 // on the local machine
std::string machineOf(const JournalKopf& change);                                  // its name, also of the local one
Fundort placeNow(const FrameContext& ctx, const JournalKopf& change, const std::string& path);
std::string shownRaw(const std::optional<RawValue>& value);                        // "REG_DWORD 1", one line, cut if long
JournalKopf newHead(Context& ctx, Aenderung::Art art);                             // with time, user and machine of now

class Ruecknahme {
public:
    Ruecknahme(Context& ctx, Journal& journal, History& history) : ctx_(ctx), journal_(journal), history_(history) {}

    // Each tells the user how it went. False: declined or failed, and nothing was changed.
    bool zuruecksetzen(std::int64_t nummer, bool tell = true);
    bool wiederherstellen(std::int64_t nummer);

private:
    struct Plan;
    bool restore(const JournalEintrag& change, Aenderung::Art art, std::int64_t& recorded, bool& nothingToDo);
    void planValues(const JournalEintrag& change, Plan& plan);
    void planKeys(const JournalEintrag& change, Plan& plan);
    void planFiles(const JournalEintrag& change, Plan& plan);
    void perform(const JournalEintrag& change, Plan& plan);
    void writeRegistry(const JournalEintrag& change, const Plan& plan);
    void removeEmptyKeys(const JournalEintrag& change, const Plan& plan);
    RegStore& storeAt(const Fundort& place);
    std::optional<RawValue> readAt(const Fundort& place);
    bool refuse(const char* why);

    Context& ctx_;
    Journal& journal_;
    History& history_;
};

}  // namespace brenvik
