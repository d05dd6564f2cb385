#pragma once
// The texts inside Jet files, turned into UTF-8: Windows-1252 in Jet 3, UTF-16LE in Jet 4 with the option of runs of
// one byte a character (marked FF FE at the start, a zero byte switches between both forms).
#include <cstddef>
#include <cstdint>
#include <string>

namespace brenvik::jet {

std::string decode1252(const std::uint8_t* bytes, std::size_t count);
std::string decodeUcs2(const std::uint8_t* bytes, std::size_t count, bool mayBeCompressed);

}  // namespace brenvik::jet
