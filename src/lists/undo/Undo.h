#pragma once
// Undo from a line of History.txt: its texts go back to the local machine as they stand, under the type of the database.
// Where that would not bring back exactly what was there, the user hears so first and may take the exact way.
#include "lists/TipValue.h"
#include "lists/undo/UndoAnswers.h"

namespace brenvik {

class Zuruecksetzen {
    // What a text would become in the registry; failing is an answer here.
    struct Wirkung {
        std::optional<RawValue> value;
        bool possible = true;
    };

public:
    Zuruecksetzen(Context& ctx, Journal& journal, Ruecknahme& exact, Tippwerte& values) : ctx_(ctx), journal_(journal), exact_(exact), values_(values) {}
    // Tells the user how it went. True: done; the line's record is to be deleted then. The line counts as the change's
    // number if the journal has one, else 0.
    bool ausfuehren(const std::string& zeile, std::int64_t nummer);

private:
    struct Schritt {
        std::string path, name, text;
        std::int16_t type = 0;
        std::int16_t tipp = 0;
        std::optional<RegAddress> known;       // where the journal saw the value
        std::optional<RawValue> geheim;        // what the line must not say; the journal has it
        bool hasSeparator() const { return name.find('\\') != std::string::npos; }
        std::string keyPath() const { return path.substr(0, path.size() - name.size() - 1); }
    };
    bool plan(const std::string& zeile, const JournalEintrag* known, std::vector<Schritt>& steps);
    std::string inexactness(const std::vector<Schritt>& steps, const JournalEintrag* known);
    bool perform(const std::vector<Schritt>& steps, const std::string& zeile, std::int64_t nummer);
    bool writeStep(const Schritt& step);
    bool writeApart(const Schritt& step);
    RegAddress placeOf(const Schritt& step);
    Wirkung effectOf(const Schritt& step) const;
    bool fail();

    Context& ctx_;
    Journal& journal_;
    Ruecknahme& exact_;
    Tippwerte& values_;
};

// The record's computer, and the rest of its head.
struct HistoryKopf {
    std::string datum, uhrzeit, rechner;
    std::int32_t tipp = 0;
};
HistoryKopf historyHead(const std::string& zeile);

}  // namespace brenvik
