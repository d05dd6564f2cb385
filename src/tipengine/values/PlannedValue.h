#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "registry/store/RawValue.h"

namespace brenvik {

// One step of a save, decided before the first write.
struct PlannedValue {
    enum class Tat { Writing, Loeschen };
    std::int16_t eintrag = 0;
    std::string path;
    std::optional<RawValue> alt, neu;
    Tat tat = Tat::Writing;
    bool written = false;
};

}  // namespace brenvik
