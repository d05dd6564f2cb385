#pragma once
// Large made-up databases for measuring.
#include "Model.h"

namespace brenvik::tipbuild {

// rows rows in 20 groups; Tips of one to ten values, the first one of ten. The texts are like those of real Tips.
Stock generated(std::size_t rows);

}  // namespace brenvik::tipbau
