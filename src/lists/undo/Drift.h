#pragma once
// What the program set, and whether it still stands so: values of the registry, and lines of INI and boot files. Of several
// changes of one place the last counts, be it an undo; a change that left a value as it was sets nothing, and what stood below a
// key that was deleted is gone from then on. Only the local machine and the one that is being worked on are looked at.
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "lists/journal/Journal.h"
#include "lists/undo/RegAddress.h"

namespace brenvik {

enum class DriftState { AsSet, Differs, Unreadable };

struct DriftSource {
    std::int64_t nummer = 0;                    // of the change that set it
    std::int32_t tipp = 0;
    std::string überschrift;
};

struct SetValue : DriftSource {
    RegAddress address;
    std::optional<RawValue> wert;               // none: it was deleted
};

struct SetLine : DriftSource {
    std::string machine, datei, section, key;
    std::optional<std::string> wert;            // none: the line was taken out
};

// What all changes made together.
struct SetState {
    std::map<std::string, SetValue> values;     // by address
    std::map<std::string, SetLine> lines;
    std::vector<std::pair<DriftSource, std::string>> unknown;   // records that name no place, with the reason (German)
};
SetState setState(Context& ctx, Journal& journal);

struct DriftEntry : DriftSource {
    DriftState state = DriftState::AsSet;
    std::string machine;                        // as a record names it
    std::string place;                          // path of a value, or file, section and key
    std::optional<RawValue> set, now;           // of a value
    std::optional<std::string> setLine, nowLine;// of a line
    bool isLine = false;
    std::string why;                            // German: why it cannot be read
};
std::vector<DriftEntry> drift(Context& ctx, Journal& journal);   // ordered by Tip

}  // namespace brenvik
