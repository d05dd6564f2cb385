#pragma once
// An empty registry file of the 9x family; what tests need grows from it through the writer.
#include "registry/creg/CregWriter.h"

namespace brenvik {

inline Bytes emptyCreg(std::uint16_t sums = 0, std::uint32_t slots = 8192) {
    using namespace cregfmt;
    Bytes file(cregfmt::headerSize + slots);
    std::uint8_t* const t = file.data() + cregfmt::headerSize;
    std::memcpy(file.data(), "CREG", 4);
    put32(file.data() + header::Version, version);
    put32(file.data() + header::FirstBlock, static_cast<std::uint32_t>(file.size()));
    put16(file.data() + header::Flags, sums);
    put16(file.data() + header::Major, 1);
    put32(file.data() + header::Checksum, 0 - sumOf(ByteSpan(file).first(cregfmt::headerSize)));
    std::memcpy(t, "RGKN", 4);
    put32(t + table::Size, slots);
    put32(t + table::Root, table::root);
    put32(t + table::FirstFree, table::root + slot::size);
    put32(t + table::Flags, 8u | sums);
    std::memset(t + table::root + slot::Rubbish, 0xFF, slot::size - slot::Rubbish);
    std::uint8_t* const hole = t + table::root + slot::size;
    put32(hole, slot::isFree);
    put32(hole + slot::FreeSize, slots - table::root - slot::size);
    put32(hole + slot::NextFree, none);
    put32(t + table::Checksum, 0 - sumOf(ByteSpan(file).subspan(cregfmt::headerSize)));
    return file;
}

inline constexpr CregCodepage Western{1252};

}  // namespace brenvik
