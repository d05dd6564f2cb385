#pragma once
// What every part of the engine has at hand: the Tip on screen and the program's state.
#include "tipengine/tip/CurrentTip.h"

namespace brenvik {

class TipPart {
public:
    TipPart(const TipPart&) = delete;
    TipPart& operator=(const TipPart&) = delete;

protected:
    explicit TipPart(CurrentTip& currentTip) : tip_(currentTip), ctx_(currentTip.context()) {}
    ~TipPart() = default;

    TipEntry& eintrag(std::int16_t i) const { return tip_.entry(i); }
    WorkingValue& wert(std::int16_t i) const { return tip_.value(i); }
    std::int16_t lastEntry() const { return tip_.last(); }
    MainWindow& windows() const { return tip_.window(); }

    CurrentTip& tip_;
    Context& ctx_;
};

}  // namespace brenvik
