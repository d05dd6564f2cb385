#pragma once
// A hive in memory: a tree that can be changed and written again as a whole. Names are generalised UTF-8 (registry/Wtf8.h),
// times FILETIMEs in UTC; value bytes are as stored. Security descriptors (self-relative) are kept once each.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "registry/store/RawValue.h"

namespace brenvik {

struct HiveValue {
    std::string name;   // "" is the unnamed value
    RawValue data;
    bool operator==(const HiveValue&) const = default;
};

struct HiveKey {
    static constexpr std::uint32_t NoSecurity = 0xFFFFFFFF;

    std::string name;
    std::string className;
    std::uint64_t lastWrite = 0;
    std::uint32_t security = NoSecurity;   // index into Hive::descriptors; without one a key gets its parent's
    std::uint32_t accessBits = 0;
    std::uint32_t predefinedHandle = 0;    // of a key with the flag for it, which has no values
    std::uint16_t flags = 0;               // nk flags, but for those that follow from place and name
    std::uint16_t userFlags = 0;
    std::vector<HiveValue> values;         // in the order they were made
    std::vector<HiveKey> subKeys;          // in the order of the upper-cased names

    HiveKey* find(std::string_view subKey);                    // a direct sub key, without case; null if not there
    const HiveKey* find(std::string_view subKey) const;
    HiveKey& ensure(std::string_view subKey);                  // found or put in its place, with this key's descriptor
    bool erase(std::string_view subKey);                       // with everything below it
    HiveValue* value(std::string_view valueName);
    const HiveValue* value(std::string_view valueName) const;
    void set(std::string_view valueName, RawValue data);       // keeps the place and the spelling of a value that is there
    bool eraseValue(std::string_view valueName);
};

struct Hive {
    std::uint32_t minorVersion = 3;     // 1.3: Windows NT 4 to 2000 and user hives; 1.5: machine hives since XP
    std::uint32_t sequence = 1;
    std::uint64_t lastWritten = 0;
    std::uint32_t binsSize = 0;         // of the file it was read from, for those who have to make room for it; 0: none
    Bytes header;                       // the 4096 bytes read, whose unknown fields are kept; empty for a new hive
    std::vector<Bytes> descriptors;     // distinct ones
    HiveKey root;

    std::uint32_t addDescriptor(const Bytes& descriptor);          // index of an equal one or of the new one
    HiveKey* findPath(std::string_view path);                      // "A\B"; "" is the root
    const HiveKey* findPath(std::string_view path) const;
};

struct HiveCounts {
    std::uint64_t keys = 0, values = 0;
    bool operator==(const HiveCounts&) const = default;
};
HiveCounts count(const HiveKey& key);   // the key itself counted too

}  // namespace brenvik
