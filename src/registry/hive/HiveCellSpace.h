#pragma once
// Where the writer puts its cells: bins of the smallest size that will do, one after the other, the rest of the last few kept
// for smaller cells.
#include <array>
#include <cstdint>

#include "registry/store/RawValue.h"

namespace brenvik {

class HiveCellSpace {
public:
    explicit HiveCellSpace(std::size_t expectedBins);   // bytes that there will be about, 0: nobody knows
    std::uint32_t allocate(std::size_t contentSize);   // the new cell's offset, its content zeroed; throws HiveError if full
    // The content of the cell; valid until the next allocate.
    std::uint8_t* at(std::uint32_t offset);
    Bytes finish(std::uint64_t firstBinTime);          // the whole file, the header's 4096 bytes still zero

private:
    struct Rest {
        std::uint32_t offset = 0, size = 0;
    };
    void close(const Rest& rest);
    Bytes file_;
    std::array<Rest, 8> rests_{};
};

}  // namespace brenvik
