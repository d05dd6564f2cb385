#pragma once
// Large made-up databases for measuring.
#include "Model.h"

namespace brenvik::tipbau {

// rows rows in 20 groups; Tips of one to ten values, the first one of ten. The texts are like those of real Tips.
Bestand generated(std::size_t rows);

}  // namespace brenvik::tipbau
