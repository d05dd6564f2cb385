#include "shell/MaschinenEvents.h"

namespace brenvik {

// What was to be saved but could not be stays on screen as a change, so that nothing is lost without a word.
bool MaschinenEvents::settleChanges() {
    if (engine_.DatenSichern()) return true;
    engine_.context().blnGeaendert = true;
    return false;
}

bool MaschinenEvents::beforeClose() { return settleChanges(); }

bool MaschinenEvents::beforeLeaving() {
    if (!engine_.context().blnGeaendert) return true;
    if (!settleChanges()) return false;
    engine_.reloadTipp();       // after a No the panels show again what stands
    return true;
}

}  // namespace brenvik
