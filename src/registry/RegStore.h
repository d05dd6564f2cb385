#pragma once
// What a store of registry data has to offer. Keys are addressed by root and path ("Software\Brenvik", no leading or
// trailing backslash, "" is the root itself), names are UTF-8 (unpaired surrogates in the generalised form) and compare
// without case by the platform's table (registry/Upcase.h). Failures are RegError; "not there" is an answer, not a failure.
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "registry/RawValue.h"

namespace brenvik {

enum class Root : std::uint8_t { CurrentUser, LocalMachine, Users, DynData, CurrentConfig, ClassesRoot };

inline constexpr std::uint32_t KEY_QUERY_VALUE_MASK = 1;
inline constexpr std::uint32_t KEY_ALL_ACCESS_MASK = 0xF003F;

struct NamedValue {
    ValueName name;
    RawValue value;
};

class RegStore {
public:
    virtual ~RegStore() = default;

    virtual bool keyExists(Root root, std::string_view key) = 0;
    virtual bool canOpen(Root root, std::string_view key, std::uint32_t mask) = 0;   // false if the key is not there
    virtual std::vector<std::string> subKeys(Root root, std::string_view key) = 0;   // the platform's order; empty if not there
    virtual std::optional<RawValue> value(Root root, std::string_view key, const ValueName& name) = 0;
    virtual bool hasValue(Root root, std::string_view key, const ValueName& name) { return value(root, key, name).has_value(); }
    virtual std::vector<NamedValue> values(Root root, std::string_view key) = 0;     // in the order they were made

    virtual void createKey(Root root, std::string_view key) = 0;                     // with all keys on the way
    virtual void setValue(Root root, std::string_view key, const ValueName& name, const RawValue& value) = 0;
    virtual bool deleteValue(Root root, std::string_view key, const ValueName& name) = 0;
    virtual bool deleteKey(Root root, std::string_view key) = 0;                     // false if absent or it has sub keys

    // Runs the changes as one: all of them or, if the function throws, none.
    virtual void transaction(const std::function<void()>& changes) = 0;
    virtual bool writable() = 0;
};

// Finds the store of a machine. The empty name and the local machine's name mean the local store.
class Machines {
public:
    virtual ~Machines() = default;
    virtual std::string localName() = 0;
    // Windows error code: 0 it answers, 5 access denied, 53 not found.
    virtual std::int32_t connect(const std::string& machine) = 0;
    virtual RegStore& store(const std::string& machine) = 0;   // throws RegError NoAccess if it does not answer
};

}  // namespace brenvik
