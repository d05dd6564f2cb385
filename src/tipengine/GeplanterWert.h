#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "registry/RawValue.h"
#include "tipengine/TippMaschine.h"

namespace brenvik {

// One step of a save, decided before the first write.
struct TippMaschine::GeplanterWert {
    enum class Tat { Schreiben, Loeschen };
    std::int16_t eintrag = 0;
    std::string path;
    std::optional<RawValue> alt, neu;
    Tat tat = Tat::Schreiben;
    bool geschrieben = false;
};

}  // namespace brenvik
