#pragma once
// The Windows that a command is about to change, and the Tips that are not meant for it.
#include "tipengine/Program.h"

namespace brenvik::cli {

// Of the selected machine, as its own registry tells it.
struct TargetWindows {
    std::int16_t intBS = 0;
    std::string name;
};
TargetWindows targetWindows(Context& ctx);

// On stderr, if the Tip is meant for other systems; it is written all the same.
void warnIfNotMeant(Context& ctx, std::int32_t number, const Tipp& tipp);

}  // namespace brenvik::cli
