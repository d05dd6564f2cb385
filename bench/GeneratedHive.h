#pragma once
// A hive of the size and shape of a real machine's.
#include <string>

#include "registry/hive/HiveWriter.h"

namespace brenvik {

inline Bytes dataOf(std::size_t i) {
    // sizes as in a machine's hive: half dwords, the rest texts, now and then something long
    const std::size_t size = i % 2 == 0 ? 4 : i % 97 == 1 ? 900 : 12 + (i * 37) % 120;
    return Bytes(size, static_cast<std::uint8_t>(i));
}

// Two to three values a key, as machines' hives have them.
inline Hive generatedHive(std::int64_t size) {
    const auto keys = static_cast<std::size_t>(size), values = size > 50000 ? 3 * keys : keys * 90 / 43;
    Hive hive;
    hive.minorVersion = 5;
    hive.root.name = "ROOT";
    for (std::uint8_t i = 0; i < 40; ++i) {
        Bytes descriptor = defaultDescriptor();
        descriptor[24] = i;
        hive.descriptors.push_back(descriptor);
    }
    hive.root.security = 0;
    std::size_t made = 1, given = 0;
    for (std::size_t group = 0; made < keys; ++group) {
        HiveKey& top = hive.root.ensure("ControlSet" + std::to_string(1000 + group));
        top.security = 0;
        ++made;
        for (std::size_t i = 0; i < 40 && made < keys; ++i) {
            HiveKey& middle = top.ensure("{4D36E96" + std::to_string(100 + i) + "-E325-11CE}");
            middle.security = static_cast<std::uint32_t>(i % 40);
            ++made;
            for (std::size_t j = 0; j < 20 && made < keys; ++j, ++made) {
                HiveKey& key = middle.ensure("Device Parameters " + std::to_string(100 + j));
                key.security = static_cast<std::uint32_t>((i + j) % 40);
                for (; given * keys < made * values; ++given) key.values.push_back({"Value Name " + std::to_string(given % 50), {given % 2 == 0 ? 4u : 1u, dataOf(given)}});
            }
        }
    }
    return hive;
}

}  // namespace brenvik
