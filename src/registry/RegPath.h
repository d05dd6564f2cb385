#pragma once
// Path texts of the service: root "\" key, and for a value "\" value name. Roots in both spellings, ignoring case.
#include <optional>
#include <string>
#include <string_view>

#include "registry/store/RegStore.h"

namespace brenvik {

std::optional<Root> rootByName(std::string_view name);
const char* shortRootName(Root root);   // "HKCU"
const char* longRootName(Root root);    // "HKEY_CURRENT_USER"

// Doubled backslashes count as one, so that keys written with a backslash at either end still lead to their place.
struct RegPath {
    Root root = Root::CurrentUser;
    std::string key;      // without the last part, unless the path ends in "\"
    ValueName name = ValueName::unnamed();
    bool isKey = false;   // the path ends in "\"
    bool isBareRoot = false;

    std::string wholeKey() const;   // the key with the last part, for what works on keys only
};

// Throws RegError NoKey for an empty path, NoRoot for an unknown root.
RegPath parseRegPath(std::string_view path);

}  // namespace brenvik
