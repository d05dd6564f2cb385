// The security descriptor of trees that carry none.
#include <algorithm>

#include "registry/hive/HiveFormat.h"
#include "registry/hive/HiveWriter.h"

namespace brenvik {

using namespace hivefmt;

Bytes defaultDescriptor() {
    constexpr std::uint8_t administrators[] = {1, 2, 0, 0, 0, 0, 0, 5, 32, 0, 0, 0, 0x20, 2, 0, 0};
    constexpr std::uint8_t system[] = {1, 1, 0, 0, 0, 0, 0, 5, 18, 0, 0, 0};
    constexpr std::uint8_t everyone[] = {1, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0};
    constexpr std::uint32_t all = 0xF003F, read = 0x20019;
    Bytes list = {2, 0, 0, 0, 3, 0, 0, 0};   // an access list of three entries, its size filled in below
    const auto allow = [&](ByteSpan who, std::uint32_t rights) {
        const std::size_t at = list.size();
        list.resize(at + 8 + who.size());
        list[at + 1] = 2;   // inherited by sub keys
        put16(list.data() + at + 2, static_cast<std::uint32_t>(8 + who.size()));
        put32(list.data() + at + 4, rights);
        std::copy(who.begin(), who.end(), list.begin() + static_cast<std::ptrdiff_t>(at + 8));
    };
    allow(system, all);
    allow(administrators, all);
    allow(everyone, read);
    put16(list.data() + 2, static_cast<std::uint32_t>(list.size()));
    Bytes descriptor(20);
    descriptor[0] = 1;
    put16(descriptor.data() + 2, 0x8004);   // self-relative, with an access list
    const auto part = [&](std::size_t field, ByteSpan bytes) {
        const std::size_t at = descriptor.size();
        put32(descriptor.data() + field, static_cast<std::uint32_t>(at));
        descriptor.resize(at + bytes.size());
        std::copy(bytes.begin(), bytes.end(), descriptor.begin() + static_cast<std::ptrdiff_t>(at));
    };
    part(16, list);
    part(4, administrators);
    part(8, system);
    return descriptor;
}

}  // namespace brenvik
