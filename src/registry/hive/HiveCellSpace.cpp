#include "registry/hive/HiveCellSpace.h"

#include <algorithm>

#include "registry/hive/HiveFinding.h"
#include "registry/hive/HiveFormat.h"

namespace brenvik {

using namespace hivefmt;

HiveCellSpace::HiveCellSpace(std::size_t expectedBins) {
    file_.reserve(headerSize + expectedBins + expectedBins / 32 + 16 * binAlignment);
    file_.resize(headerSize);
}

std::uint8_t* HiveCellSpace::at(std::uint32_t offset) { return file_.data() + headerSize + offset + 4; }

std::uint32_t HiveCellSpace::allocate(std::size_t contentSize) {
    if (contentSize > largestBins - 2 * binAlignment) throw HiveError("Die Strukturdatei würde zu groß.");
    const std::uint32_t size = roundUp(std::max<std::uint32_t>(static_cast<std::uint32_t>(contentSize), 1) + 4, cellAlignment);
    auto rest = std::find_if(rests_.begin(), rests_.end(), [&](const Rest& r) { return r.size >= size; });
    if (rest == rests_.end()) {
        const std::uint32_t binSize = roundUp(size + binHeaderSize, binAlignment);
        const auto binAt = static_cast<std::uint32_t>(file_.size() - headerSize);
        if (binSize > largestBins - binAt) throw HiveError("Die Strukturdatei würde zu groß.");
        // Little more than needed: while it grows there are two of it.
        if (file_.capacity() < file_.size() + binSize) file_.reserve(file_.size() + file_.size() / 4 + 4 * std::size_t{binSize});
        file_.resize(file_.size() + binSize);
        std::uint8_t* const b = file_.data() + headerSize + binAt;
        std::memcpy(b, "hbin", 4);
        put32(b + bin::Offset, binAt);
        put32(b + bin::Size, binSize);
        rest = std::min_element(rests_.begin(), rests_.end(), [](const Rest& l, const Rest& r) { return l.size < r.size; });
        close(*rest);
        *rest = {binAt + binHeaderSize, binSize - binHeaderSize};
    }
    const std::uint32_t offset = rest->offset;
    put32(file_.data() + headerSize + offset, 0u - size);
    rest->offset += size;
    rest->size -= size;
    return offset;
}

void HiveCellSpace::close(const Rest& rest) {
    if (rest.size != 0) put32(file_.data() + headerSize + rest.offset, rest.size);
}

Bytes HiveCellSpace::finish(std::uint64_t firstBinTime) {
    for (const Rest& rest : rests_) close(rest);
    put64(file_.data() + headerSize + bin::Timestamp, firstBinTime);
    return std::move(file_);
}

}  // namespace brenvik
