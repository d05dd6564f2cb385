#pragma once
// The cells of a hive file: which offsets begin an allocated cell, so that every reference can be checked before it is followed.
// Cells found this way lie inside one bin and never overlap.
#include <cstdint>
#include <vector>

#include "registry/hive/HiveFinding.h"
#include "registry/hive/HiveFormat.h"

namespace brenvik {

// One bit for each place a cell can begin at.
class CellBits {
public:
    explicit CellBits(std::uint32_t binsSize = 0) : words_((binsSize / hivefmt::cellAlignment + 63) / 64) {}
    bool has(std::uint32_t offset) const { return ((words_[word(offset)] >> bit(offset)) & 1) != 0; }
    void set(std::uint32_t offset) { words_[word(offset)] |= std::uint64_t{1} << bit(offset); }
    bool empty() const { return words_.empty(); }

private:
    static std::size_t word(std::uint32_t offset) { return offset / hivefmt::cellAlignment / 64; }
    static unsigned bit(std::uint32_t offset) { return offset / hivefmt::cellAlignment % 64; }
    std::vector<std::uint64_t> words_;
};

class HiveCells {
public:
    // Checks base block, bins and cell sizes. When salvaging, a damaged bin gives what cells can be found in it. The file must outlive the object.
    HiveCells(hivefmt::ByteSpan file, HiveFindings& findings);

    // The cell's content without its size field, 4 bytes at least; empty if no allocated cell begins there.
    hivefmt::ByteSpan cell(std::uint32_t offset) const;
    const std::uint8_t* base() const { return file_.data(); }
    std::uint32_t binsSize() const { return binsSize_; }
    std::uint32_t minorVersion() const { return minor_; }
    const std::vector<std::uint32_t>& allocated() const { return allocated_; }   // only after listAllocated
    void listAllocated();

private:
    void checkBase(HiveFindings& findings);
    std::uint32_t binAt(std::uint32_t offset, HiveFindings& findings) const;   // its size, 0 if it is none
    std::uint32_t nextBin(std::uint32_t after) const;
    void mapBin(std::uint32_t offset, std::uint32_t size, HiveFindings& findings);
    hivefmt::ByteSpan file_;
    std::uint32_t binsSize_ = 0, minor_ = 0;
    CellBits begins_;
    std::vector<std::uint32_t> allocated_;
};

}  // namespace brenvik
