#pragma once
// Whole numbers of the command line: decimal digits alone, from 1 up to the largest that the option's variable can hold. All
// else is refused as wrong usage; nothing is cut, wrapped or taken for another base.
#include <CLI/CLI.hpp>
#include <limits>

namespace brenvik::cli {

// For CLI::Option::transform.
CLI::Validator wholeNumber(std::int64_t largest);

template <class Int> CLI::Validator wholeNumber() { return wholeNumber(std::numeric_limits<Int>::max()); }

}  // namespace brenvik::cli
