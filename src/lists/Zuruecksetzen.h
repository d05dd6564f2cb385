#pragma once
// Undo from a line of History.txt: its texts go back to the local machine as they stand, under the type of the database.
// Where that would not bring back exactly what was there, the user hears so first and may take the exact way.
#include "lists/Ruecknahme.h"
#include "lists/Tippwert.h"

namespace brenvik {

class Zuruecksetzen {
public:
    Zuruecksetzen(Context& ctx, Journal& journal, Ruecknahme& exact, Tippwerte& values) : ctx_(ctx), journal_(journal), exact_(exact), values_(values) {}
    // Tells the user how it went. True: done; the line's record is to be deleted then. The line counts as the change's
    // number if the journal has one, else 0.
    bool ausfuehren(const std::string& zeile, std::int64_t nummer);

private:
    struct Schritt {
        std::string path, name, text;
        std::int16_t type = 0;
    };
    bool plan(const std::string& zeile, const JournalEintrag* known, std::vector<Schritt>& steps);
    std::string inexactness(const std::vector<Schritt>& steps, const JournalEintrag* known) const;
    bool perform(const std::vector<Schritt>& steps, const std::string& zeile, std::int64_t nummer);
    bool writeStep(const Schritt& step);
    std::optional<RawValue> present(const Schritt& step);
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
