#pragma once
// How much a TOML text may hold. Whoever reads such a file reads no more than this.
#include <cstddef>

namespace brenvik {

inline constexpr std::size_t MaxTomlBytes = 4u << 20;
inline constexpr std::size_t MaxTomlValues = 400'000;   // about a hundred bytes each when they are parsed
inline constexpr std::size_t MaxTomlDepth = 16;         // of brackets within brackets, and of the parts of a dotted name

}  // namespace brenvik
