#pragma once
// The layout of registry files of Windows 95, 98 and ME (signature "CREG"): a header, a table of key slots that holds the tree, and
// blocks of records with each key's name and values. Little-endian, nothing aligned. Slots are addressed by their offset in
// the table, records by block and number.
#include <cstdint>
#include <cstring>

#include "registry/hive/HiveFormat.h"

namespace brenvik::cregfmt {

using hivefmt::ByteSpan;
using hivefmt::get16;
using hivefmt::get32;
using hivefmt::put16;
using hivefmt::put32;

inline constexpr std::uint32_t none = 0xFFFFFFFF;
inline constexpr std::uint16_t noRecord = 0xFFFF;
inline constexpr std::uint32_t version = 0x00010000, headerSize = 32;
inline constexpr std::size_t deepest = 512;                                             // levels of keys
inline constexpr std::size_t longestName = 255, mostData = 16300;
inline constexpr std::uint16_t checksumValid = 4;                                       // in the flags of all three structures
inline constexpr std::uint32_t knownHeaderFlags = 0x25, knownTableFlags = 0xF, knownBlockFlags = 0xF, plainBlockFlags = 8;

namespace header {
inline constexpr std::size_t Version = 4, FirstBlock = 8, Checksum = 12, Blocks = 16, Flags = 18, Minor = 20, Major = 22, Reserved = 24;
}
namespace table {
inline constexpr std::size_t Size = 4, Root = 8, FirstFree = 12, Flags = 16, Checksum = 20;
inline constexpr std::uint32_t headerSize = 32, page = 4096, firstPage = 8192, root = 0x20;
}
namespace slot {
inline constexpr std::size_t State = 0, Hash = 4, Rubbish = 8, Parent = 12, Child = 16, Next = 20, Id = 24, Block = 26;
inline constexpr std::size_t FreeSize = 4, NextFree = 8;
inline constexpr std::uint32_t size = 28, isFree = 0x80000000;
}
namespace block {
inline constexpr std::size_t Size = 4, FreeBytes = 8, Flags = 12, Number = 14, FirstFree = 16, HighestId = 20, LowestFreeId = 22, Checksum = 28;
inline constexpr std::uint32_t headerSize = 32, growth = 4096, largest = 0xF000, mostRecords = 255;
}
namespace record {
inline constexpr std::size_t Size = 0, Id = 4, Block = 6, Used = 8, NameSize = 12, Values = 14;
inline constexpr std::uint32_t headerSize = 20, smallestFree = 24, mostContent = block::largest - block::headerSize - headerSize;
}
namespace value {
inline constexpr std::size_t Type = 0, Rubbish = 4, NameSize = 8, DataSize = 10, headerSize = 12;
}

inline bool hasSignature(ByteSpan bytes, const char* signature) { return bytes.size() >= 4 && std::memcmp(bytes.data(), signature, 4) == 0; }
inline bool isCreg(ByteSpan start) { return hasSignature(start, "CREG"); }

// 0 where the checksum among them is right. What is left behind the last whole number does not count.
inline std::uint32_t sumOf(ByteSpan bytes) {
    std::uint32_t sum = 0;
    for (std::size_t at = 0; at + 4 <= bytes.size(); at += 4) sum += get32(bytes.data() + at);
    return sum;
}

inline std::uint32_t nameHash(ByteSpan name) {
    std::uint32_t hash = 0;
    for (const std::uint8_t byte : name) {
        if (byte < 0x80) hash += byte >= 'a' && byte <= 'z' ? byte - 32u : byte;
    }
    return hash;
}

// Where the slot behind the given place lies: pages are filled each for themselves, and what is too small for a slot stays unused.
inline std::uint32_t slotAtOrBehind(std::uint32_t place) {
    const std::uint32_t pageEnd = place < table::firstPage ? table::firstPage : (place / table::page + 1) * table::page;
    return pageEnd - place < slot::size ? pageEnd : place;
}
inline bool isOnGrid(std::uint32_t place) {
    if (place < table::firstPage) return place >= table::headerSize && (place - table::headerSize) % slot::size == 0 && place + slot::size <= table::firstPage;
    const std::uint32_t inPage = place % table::page;
    return inPage % slot::size == 0 && inPage + slot::size <= table::page;
}

}  // namespace brenvik::cregfmt
