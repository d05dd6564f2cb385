#pragma once
// From the working values to the registry: what each entry is to become, decided for all before the first write, and the
// writing and deleting itself.
#include "tipengine/tip/TipFiles.h"
#include "tipengine/tip/TipPart.h"
#include "tipengine/values/PlannedValue.h"

namespace brenvik {

// An entry of the Tip on screen as the user sees it now.
struct GatheredValue {
    std::string text;                // as its panel says it; "<delkey>" where the value is to go
    std::optional<RawValue> wert;    // what saving would write, raw where nobody touched it; none: nothing, or the value goes
    std::string unfit;           // why the text is no value of the Tip's type; then there is no wert
    bool gefunden = false;           // stands in the registry
    bool touched = false;           // set by the user
    bool geloescht = false;          // saving would delete the value
};

class ValueWriter : private TipPart {
public:
    ValueWriter(CurrentTip& tip, TipFiles& files, ChangeRecorder& recorder) : TipPart(tip), files_(files), recorder_(recorder) {}

    void collectPanel(const Panel& panel);
    std::vector<GatheredValue> collectedValues() const;             // of all entries, [0] unused
    std::int16_t speakerOf(std::int16_t i) const;
    std::vector<PlannedValue> planWrites(std::string& refusal);
    Change changeOf(const std::vector<PlannedValue>& plan, Change::Art art) const;
    void writePlanned(std::vector<PlannedValue>& plan, Change& change);
    void deleteValues(Change& change);
    void deleteTickedKeys();

private:
    RawValue valueToWrite(std::int16_t i) const;
    GatheredValue collectedValue(std::int16_t i) const;
    bool sameValue(std::int16_t i, std::int16_t j) const;

    TipFiles& files_;
    ChangeRecorder& recorder_;
};

}  // namespace brenvik
