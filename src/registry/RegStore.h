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

// What a key carries beside its values. The times are FILETIMEs (100 ns since 1601, UTC).
struct KeyDetails {
    Bytes className;      // UTF-16LE, empty: none
    std::uint64_t written = 0;
    Bytes descriptor;     // self-relative security descriptor, empty: none
    bool readOnly = false;
    bool operator==(const KeyDetails&) const = default;
};

// Is told a key with everything below it, depth first: first the key itself, then its values, then its sub keys.
class TreeSink {
public:
    virtual ~TreeSink() = default;
    virtual void enter(std::string_view name, const KeyDetails& details) = 0;   // the name of the first may be any
    virtual void value(std::string_view name, const RawValue& value) = 0;       // of the key entered last and not left
    virtual void leave() = 0;
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

    // Class name, time and security. A store that keeps none of them has empty ones and ignores what it is given.
    virtual std::optional<KeyDetails> details(Root root, std::string_view key);   // empty if the key is not there
    virtual void setDetails(Root, std::string_view, const KeyDetails&) {}         // the key must exist

    // Whole trees (registry/RegTree.h copies between stores). Links such as CurrentControlSet are not followed.
    // walk tells the sink nothing if the key is not there; the sink must not use the same store.
    virtual void walk(Root root, std::string_view key, TreeSink& sink);
    // Makes the key if need be and adds what the source tells: values of the same name are replaced, others stay, details
    // are taken over where they are not empty. One transaction; the source must not use the same store.
    virtual void fill(Root root, std::string_view key, const std::function<void(TreeSink&)>& source);
    // Deletes all values and sub keys; the key stays. One transaction; throws RegError NoAccess if something may not be deleted.
    virtual void clear(Root root, std::string_view key);
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
