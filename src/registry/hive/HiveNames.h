#pragma once
// Value names within one key must differ without regard to case.
#include <cstddef>
#include <vector>

#include "registry/hive/Hive.h"

namespace brenvik {

inline constexpr const char* twinMessage = "Zwei Werte des Schlüssels haben denselben Namen.";
inline constexpr std::size_t noTwin = static_cast<std::size_t>(-1);
std::size_t secondOfSameName(const std::vector<HiveValue>& values);   // its index, or noTwin
void dropTwins(std::vector<HiveValue>& values);                       // keeps the first of each name

}  // namespace brenvik
