#pragma once
// A Tip's value by its number alone, as a line of the history names it.
#include <cstdint>
#include <string>
#include <unordered_map>

#include "tipengine/Context.h"

namespace brenvik {

struct TipValue {
    bool inStock = false;     // the database has a row of this number
    bool usable = false;     // and the row says where the value lies
    std::string path;           // root "\" key "\" value name, [SID] replaced
    std::string wertname;
    std::string überschrift;    // of the Tip
    std::int32_t tipp = 0;      // whose row it is: of several values each has a row of its own
    std::int16_t datentyp = 0, ausgabeart = 0;
};

// Looks numbers up in the database that is loaded, each once.
class TipValues {
public:
    explicit TipValues(Context& ctx) : ctx_(ctx) {}
    const TipValue& of(std::int32_t number);
    std::string shown(std::int32_t number, const RawValue& value);   // as the Tip's panel would show it
    void forget() { known_.clear(); }

private:
    TipValue read(std::int32_t number);
    std::int32_t tipOfRow(std::int32_t number);
    Context& ctx_;
    std::unordered_map<std::int32_t, TipValue> known_;
};

}  // namespace brenvik
