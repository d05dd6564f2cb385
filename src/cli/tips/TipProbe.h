#pragma once
#include "tipengine/Program.h"

namespace brenvik::cli {

// What saving the Tip on screen would write, value by value with old and new raw content; writes nothing. The exit code.
int printPlan(Program& program, bool json);

}  // namespace brenvik::cli
