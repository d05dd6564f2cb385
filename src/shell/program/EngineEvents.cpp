#include "shell/program/EngineEvents.h"

namespace brenvik {

bool EngineEvents::beforeClose() { return engine_.DatenSichern(Whereabouts::IsReplaced); }

bool EngineEvents::beforeLeaving() { return engine_.DatenSichern(); }

}  // namespace brenvik
