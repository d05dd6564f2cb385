#pragma once
// Undo from a line of History.txt: its texts go back to the local machine as they stand, under the type of the database.
// Where that would not bring back exactly what was there, the user hears so first and may take the exact way.
#include "lists/TipValue.h"
#include "lists/undo/UndoAnswers.h"

namespace brenvik {

class Undo {
    // What a text would become in the registry; failing is an answer here.
    struct Effect {
        std::optional<RawValue> value;
        bool possible = true;
    };

public:
    Undo(Context& ctx, Journal& journal, UndoAnswer& exact, TipValues& values) : ctx_(ctx), journal_(journal), exact_(exact), values_(values) {}
    // Tells the user how it went. True: done; the line's record is to be deleted then. The line counts as the change's
    // number if the journal has one, else 0.
    bool execute(const std::string& zeile, std::int64_t nummer);

private:
    struct Step {
        std::string path, name, text;
        std::int16_t type = 0;
        std::int16_t tipp = 0;
        std::optional<RegAddress> known;       // where the journal saw the value
        std::optional<RawValue> secret;        // what the line must not say; the journal has it
        bool hasSeparator() const { return name.find('\\') != std::string::npos; }
        std::string keyPath() const { return path.substr(0, path.size() - name.size() - 1); }
    };
    bool plan(const std::string& zeile, const JournalEntry* known, std::vector<Step>& steps);
    std::string inexactness(const std::vector<Step>& steps, const JournalEntry* known);
    bool perform(const std::vector<Step>& steps, const std::string& zeile, std::int64_t nummer);
    bool writeStep(const Step& step);
    bool writeApart(const Step& step);
    RegAddress placeOf(const Step& step);
    Effect effectOf(const Step& step) const;
    bool fail();

    Context& ctx_;
    Journal& journal_;
    UndoAnswer& exact_;
    TipValues& values_;
};

// The record's computer, and the rest of its head.
struct HistoryHeader {
    std::string datum, timeOfDay, machineName;
    std::int32_t tipp = 0;
};
HistoryHeader historyHead(const std::string& zeile);

}  // namespace brenvik
