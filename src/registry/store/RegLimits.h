#pragma once
// What every store holds its names and values to. Refusals are RegError NoKey for keys, NoAssignment for values.
#include <cstddef>
#include <string_view>

#include "registry/store/RegStore.h"

namespace brenvik {

inline constexpr std::size_t MaxKeyName = 255, MaxValueName = 16383;   // UTF-16 units
inline constexpr std::size_t MaxKeyDepth = 512;
inline constexpr std::size_t MaxValueBytes = 16u * 1024 * 1024;

void checkKeyName(std::string_view name);
void checkKeyPath(std::string_view path);
void checkValue(std::string_view name, const RawValue& value);
[[noreturn]] void throwTooDeep();

}  // namespace brenvik
