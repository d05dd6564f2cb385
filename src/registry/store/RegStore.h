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

#include "frame/Errors.h"
#include "registry/store/RawValue.h"

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
    static constexpr std::uint64_t NoTime = ~std::uint64_t{0};   // 0 is a time that keys of hive files do have
    Bytes className;      // UTF-16LE, empty: none
    std::uint64_t written = NoTime;
    Bytes descriptor;     // self-relative security descriptor, empty: none
    bool readOnly = false;
    std::uint16_t flags = 0;       // those of hivefmt::nk::Travelling: a link to another key, virtualisation
    std::uint16_t userFlags = 0;   // of users and of virtualisation, as in a hive file
    bool operator==(const KeyDetails&) const = default;
};

// Where a key really lies: HKLM or HKU and a path without links in it, or a root that stands for itself.
struct RealKey {
    Root root = Root::LocalMachine;
    std::string key;
    bool operator==(const RealKey&) const = default;
};

// Is told a key with everything below it, depth first: first the key itself, then its values, then its sub keys.
class TreeSink {
public:
    virtual ~TreeSink() = default;
    virtual void enter(std::string_view name, const KeyDetails& details) = 0;   // the name of the first may be any
    virtual void value(std::string_view name, const RawValue& value) = 0;       // of the key entered last and not left
    virtual void leave() = 0;
    // In the place of a key that cannot be read, such as a damaged hive. Whoever does not say otherwise ends the walk here.
    virtual void unreadable(std::string_view /*name*/, const RegError& error) { throw RegError(error); }
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
    // A German sentence why a registry that its user owns can only be read (a full disk, a home without rights); empty: nothing of the kind.
    virtual const std::string& whyReadOnly() const;

    // The place that a path leads to; where the key is not there, the place where it would be made. Of HKCR, which shows two
    // places as one, the one that a write to the key goes to.
    virtual RealKey realKey(Root root, std::string_view key) { return {root, std::string(key)}; }

    // Class name, time, security and flags. A store that keeps none of them has empty ones and ignores what it is given.
    virtual std::optional<KeyDetails> details(Root root, std::string_view key);   // empty if the key is not there
    virtual void setDetails(Root, std::string_view, const KeyDetails&) {}         // the key must exist; NoTime leaves its time

    // A second name of a key that stands elsewhere, such as CurrentControlSet: subKeys names it, and it can be addressed, but
    // a walk from above leaves it out.
    virtual bool isLink(Root, std::string_view /*key*/) { return false; }
    // The links below a key that lead to what a walk of it does not tell under any name.
    virtual std::vector<std::string> linksOut(Root, std::string_view /*key*/) { return {}; }

    // Whole trees (registry/RegTree.h copies between stores): the keys that subKeys names, under these names, without links.
    // Tells the sink nothing if the key is not there; the sink must not use the same store. The first key is told by the
    // last part of its path or, if that is empty, by any name.
    virtual void walk(Root root, std::string_view key, TreeSink& sink);
    // Makes the key if need be and adds what the source tells: values of the same name are replaced, others stay, details
    // are taken over where they are not empty. One transaction; the source must not use the same store.
    virtual void fill(Root root, std::string_view key, const std::function<void(TreeSink&)>& source);
    // Deletes all values and sub keys; the key stays. One transaction; throws RegError NoAccess if something may not be deleted.
    virtual void clear(Root root, std::string_view key);
};

class TargetSystem;
class TargetFiles;

// Finds a machine by its name. The empty name and the local machine's name mean the local machine.
class Machines {
public:
    virtual ~Machines() = default;
    virtual std::string localName() = 0;
    // Windows error code: 0 it answers, 5 access denied, 53 not found.
    virtual std::int32_t connect(const std::string& machine) = 0;
    virtual TargetSystem& target(const std::string& machine) = 0;   // throws RegError NoAccess if it does not answer
    virtual void setLocalFiles(TargetFiles files) = 0;
    RegStore& store(const std::string& machine);                    // of the target
};

}  // namespace brenvik
