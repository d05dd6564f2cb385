#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "registry/store/RawValue.h"

namespace brenvik {

// One step of a save, decided before the first write.
struct GeplanterWert {
    enum class Tat { Schreiben, Loeschen };
    std::int16_t eintrag = 0;
    std::string path;
    std::optional<RawValue> alt, neu;
    Tat tat = Tat::Schreiben;
    bool geschrieben = false;
};

}  // namespace brenvik
