#include "shell/MaschinenEvents.h"

namespace brenvik {

bool MaschinenEvents::beforeClose() {
    engine_.DatenSichern();
    return true;
}

}  // namespace brenvik
