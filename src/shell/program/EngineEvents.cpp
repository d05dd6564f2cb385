#include "shell/program/EngineEvents.h"

namespace brenvik {

bool MaschinenEvents::beforeClose() { return engine_.DatenSichern(Verbleib::WirdErsetzt); }

bool MaschinenEvents::beforeLeaving() { return engine_.DatenSichern(); }

}  // namespace brenvik
