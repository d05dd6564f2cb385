#pragma once
// What differs between two registry trees. Names compare without case; the order of values does not count. Keys are given
// by their path below the two compared keys.
#include <functional>
#include <optional>
#include <string>

#include "registry/store/RegStore.h"

namespace brenvik {

struct Baumort {
    RegStore* store = nullptr;
    Root root = Root::LocalMachine;
    std::string key;
};

struct Unterschied {
    enum class Art { KeyMissing, KeyAdded, ValueMissing, ValueAdded, ValueChanged };   // seen from the first to the second
    Art art = Art::KeyMissing;
    std::string key;                       // "" is the compared key itself
    ValueName name = ValueName::unnamed(); // values only
    std::optional<RawValue> first, second;
    bool operator==(const Unterschied&) const = default;
};

// Keys in the order of their names, each with its values before its sub keys. A key that only one side has is told
// with all it holds. False: a difference was told.
bool vergleichen(const Baumort& first, const Baumort& second, const std::function<void(const Unterschied&)>& tell);

}  // namespace brenvik
