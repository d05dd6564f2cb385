#pragma once
// The layout of hive files (signature "regf", versions 1.3 to 1.6): field offsets, limits and the small computations that
// readers, writer and checker share. All numbers in a file are little-endian; cell offsets count from the first bin.
#include <array>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

namespace brenvik::hivefmt {

using ByteSpan = std::span<const std::uint8_t>;

inline constexpr std::uint32_t headerSize = 4096, binAlignment = 4096, binHeaderSize = 32, cellAlignment = 8;
inline constexpr std::uint32_t noCell = 0xFFFFFFFF;
inline constexpr std::uint32_t inlineData = 0x80000000;      // in a data size: the data stand in the offset field
inline constexpr std::uint32_t largestBins = 0x7FFFE000;     // the top bit of an offset marks volatile cells
inline constexpr std::uint32_t bigSegment = 16344;           // bytes in one segment of big data
inline constexpr std::uint32_t firstMinorWithBigData = 4, firstMinorWithHashes = 5;
inline constexpr std::uint32_t lowestMinor = 2, highestMinor = 6;
inline constexpr std::size_t deepest = 512;                  // levels of keys
inline constexpr std::size_t longestKeyName = 255, longestValueName = 16383;   // UTF-16 units

namespace header {
inline constexpr std::size_t Sequence1 = 4, Sequence2 = 8, LastWritten = 12, Major = 20, Minor = 24, FileType = 28, FileFormat = 32,
                             RootCell = 36, BinsSize = 40, Clustering = 44, FileName = 48, FileNameSize = 64, Checksum = 508;
}
namespace bin {
inline constexpr std::size_t Offset = 4, Size = 8, Timestamp = 20;
}
// Offsets in a cell's content, after its size field.
namespace nk {
inline constexpr std::size_t Flags = 2, LastWrite = 4, Access = 12, Parent = 16, SubKeys = 20, VolatileSubKeys = 24, SubKeyList = 28,
                             VolatileList = 32, Values = 36, ValueList = 40, Security = 44, Class = 48, MaxName = 52,
                             UserFlags = 54, MaxClass = 56, MaxValueName = 60, MaxData = 64, NameSize = 72, ClassSize = 74, Name = 76;
inline constexpr std::uint16_t Volatile = 1, HiveExit = 2, HiveEntry = 4, NoDelete = 8, SymLink = 16, Latin1Name = 32, Predefined = 64,
                               VirtualSource = 128, VirtualTarget = 256, VirtualStore = 512;
// What a key is wherever it lies; the others tell of its place and form in one file.
inline constexpr std::uint16_t Travelling = SymLink | VirtualSource | VirtualTarget | VirtualStore;
}
namespace vk {
inline constexpr std::size_t NameSize = 2, DataSize = 4, Data = 8, Type = 12, Flags = 16, Name = 20;
inline constexpr std::uint16_t Latin1Name = 1;
}
namespace sk {
inline constexpr std::size_t Next = 4, Previous = 8, References = 12, Size = 16, Descriptor = 20;
}
namespace list {
inline constexpr std::size_t Count = 2, Entries = 4;
}
namespace db {
inline constexpr std::size_t Count = 2, List = 4, Size = 8;
}

inline std::uint16_t get16(const std::uint8_t* p) { return static_cast<std::uint16_t>(p[0] | (p[1] << 8)); }
inline std::uint32_t get32(const std::uint8_t* p) {
    return static_cast<std::uint32_t>(p[0]) | (static_cast<std::uint32_t>(p[1]) << 8) | (static_cast<std::uint32_t>(p[2]) << 16) |
           (static_cast<std::uint32_t>(p[3]) << 24);
}
inline std::uint64_t get64(const std::uint8_t* p) { return get32(p) | (static_cast<std::uint64_t>(get32(p + 4)) << 32); }
inline void put16(std::uint8_t* p, std::uint32_t v) {
    p[0] = static_cast<std::uint8_t>(v);
    p[1] = static_cast<std::uint8_t>(v >> 8);
}
inline void put32(std::uint8_t* p, std::uint32_t v) {
    put16(p, v);
    put16(p + 2, v >> 16);
}
inline void put64(std::uint8_t* p, std::uint64_t v) {
    put32(p, static_cast<std::uint32_t>(v));
    put32(p + 4, static_cast<std::uint32_t>(v >> 32));
}
inline bool hasSignature(ByteSpan cell, const char (&two)[3]) {
    return cell.size() >= 2 && cell[0] == static_cast<std::uint8_t>(two[0]) && cell[1] == static_cast<std::uint8_t>(two[1]);
}
// The flags of a key with those that travel replaced.
inline std::uint16_t withTravelling(std::uint16_t flags, std::uint16_t travelling) {
    return static_cast<std::uint16_t>((flags & ~nk::Travelling) | (travelling & nk::Travelling));
}
inline std::uint32_t roundUp(std::uint32_t size, std::uint32_t unit) { return (size + unit - 1) / unit * unit; }

// A name as it lies in a cell: Latin-1 or UTF-16, read unit by unit without a copy.
struct StoredName {
    ByteSpan bytes;
    bool latin1 = true;
    std::size_t units() const { return latin1 ? bytes.size() : bytes.size() / 2; }
    char16_t unit(std::size_t i) const { return latin1 ? bytes[i] : static_cast<char16_t>(get16(bytes.data() + 2 * i)); }
};

// XOR of the first 127 words; 0 and 0xFFFFFFFF are stored as 1 and 0xFFFFFFFE.
std::uint32_t headerChecksum(const std::uint8_t* base);
bool isHeader(ByteSpan base);   // at least 512 bytes, the signature and the right checksum

// What an "lh" list keeps of a name: upper-cased units, h = h * 37 + unit.
std::uint32_t nameHash(const StoredName& name);
// What an "lf" list keeps: the first four units, or nothing if one of them is no Latin-1.
std::array<std::uint8_t, 4> nameHint(const StoredName& name);
// Order of key lists: below, equal to or above 0.
int compareStored(const StoredName& left, const StoredName& right);

}  // namespace brenvik::hivefmt
