#pragma once
// How a value of the registry is shown where its panel has a form of its own.
#include <cstdint>
#include <string>

#include "frame/Context.h"

namespace brenvik {

// The registry's text in the form of a panel of that kind: dwords of text panels in hexadecimal, binary values of number panels
// as the sum of their bytes, check boxes in lower case, dwords without a sign. Throws NumberedError for what has none.
std::string displayForm(FrameContext& ctx, std::int16_t kind, std::int32_t type, std::string text);

}  // namespace brenvik
