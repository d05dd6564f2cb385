#pragma once
// A small good hive for the fuzzers to start from: most random bytes do not even get past the header.
#include "registry/hive/HiveWriter.h"

namespace brenvik {

inline Bytes seedHive(std::uint32_t minor) {
    Hive hive;
    hive.minorVersion = minor;
    hive.root.name = "r";
    for (const char* name : {"alpha", "b\xC3\xA4r", "\xD0\xB0", "delta"}) {
        HiveKey& key = hive.root.ensure(name);
        key.className = "k";
        key.set("", {1, {'a', 0, 0, 0}});
        key.set("lang", {3, Bytes(100, 7)});
        key.ensure("unten").set("\xD0\xB0", {4, {1, 0, 0, 0}});
    }
    if (minor > 4) hive.root.set("gross", {3, Bytes(17000, 9)});
    return writeHive(hive);
}

}  // namespace brenvik
