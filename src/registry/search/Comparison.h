#pragma once
// What differs between two registry trees. Names compare without case; the order of values does not count. Keys are given
// by their path below the two compared keys.
#include <functional>
#include <optional>
#include <string>

#include "registry/store/RegStore.h"

namespace brenvik {

struct TreePlace {
    RegStore* store = nullptr;
    Root root = Root::LocalMachine;
    std::string key;
};

struct Difference {
    enum class Art { KeyMissing, KeyAdded, ValueMissing, ValueAdded, ValueChanged };   // seen from the first to the second
    Art art = Art::KeyMissing;
    std::string key;                       // "" is the compared key itself
    ValueName name = ValueName::unnamed(); // values only
    std::optional<RawValue> first, second;
    bool operator==(const Difference&) const = default;
};

// Keys in the order of their names, each with its values before its sub keys. A key that only one side has is told
// with all it holds. False: a difference was told.
bool compare(const TreePlace& first, const TreePlace& second, const std::function<void(const Difference&)>& tell);

}  // namespace brenvik
