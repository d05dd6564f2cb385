#pragma once
// Tips on the terminal. Nothing is asked, nothing is changed; each answers the exit code.
#include "tipengine/Program.h"
#include "tipengine/tip/TipSystems.h"

namespace brenvik::cli {

int printTips(Program& program, int view, bool json, bool values);    // the tree of a tab of tbsTree
int printTip(Program& program, std::int32_t number, bool json);

// One sentence in German; empty for what takes effect at once.
std::string effectText(TipEffect effect);

// The panel of the Tip on screen whose rows are keys, not values; nullptr if it has none.
const Panel* keyListOf(Program& program);

}  // namespace brenvik::cli
