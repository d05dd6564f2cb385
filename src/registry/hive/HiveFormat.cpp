#include "registry/hive/HiveFormat.h"

#include <algorithm>

#include "registry/Upcase.h"

namespace brenvik::hivefmt {

std::uint32_t headerChecksum(const std::uint8_t* base) {
    std::uint32_t sum = 0;
    for (std::size_t at = 0; at < header::Checksum; at += 4) sum ^= get32(base + at);
    return sum == 0 ? 1 : sum == 0xFFFFFFFF ? 0xFFFFFFFE : sum;
}

bool isHeader(ByteSpan base) {
    return base.size() >= header::Checksum + 4 && std::memcmp(base.data(), "regf", 4) == 0 &&
           get32(base.data() + header::Checksum) == headerChecksum(base.data());
}

std::uint32_t nameHash(const StoredName& name) {
    std::uint32_t hash = 0;
    for (std::size_t i = 0; i < name.units(); ++i) hash = hash * 37 + upcase(name.unit(i));
    return hash;
}

std::array<std::uint8_t, 4> nameHint(const StoredName& name) {
    std::array<std::uint8_t, 4> hint{};
    for (std::size_t i = 0; i < std::min<std::size_t>(4, name.units()); ++i) {
        if (name.unit(i) > 0xFF) return {};
        hint[i] = static_cast<std::uint8_t>(name.unit(i));
    }
    return hint;
}

int compareStored(const StoredName& left, const StoredName& right) {
    const std::size_t common = std::min(left.units(), right.units());
    for (std::size_t i = 0; i < common; ++i) {
        const char16_t l = left.unit(i), r = right.unit(i);
        if (l == r) continue;
        const int difference = static_cast<int>(upcase(l)) - static_cast<int>(upcase(r));
        if (difference != 0) return difference;
    }
    return left.units() == right.units() ? 0 : left.units() < right.units() ? -1 : 1;
}

}  // namespace brenvik::hivefmt
