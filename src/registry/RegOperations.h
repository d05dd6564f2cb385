#pragma once
// Changes to a registry as a list, as a REG file holds them, and how they are carried out on a store.
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "registry/store/RegStore.h"

namespace brenvik {

struct RegOperation {
    enum class Kind { CreateKey, DeleteKey, SetValue, DeleteValue };
    Kind kind = Kind::CreateKey;
    Root root = Root::LocalMachine;
    std::string key;
    ValueName name = ValueName::unnamed();
    RawValue value;
    std::size_t line = 0;   // where it stands, from 1; 0: nowhere
    bool operator==(const RegOperation&) const = default;
};

using RegOperationTeller = std::function<void(const RegOperation&)>;

// Throws RegError whose text begins with the operation's line, if it has one.
void applyOperation(RegStore& store, const RegOperation& operation);
// All of them in one transaction, or none.
void applyOperations(RegStore& store, const std::vector<RegOperation>& operations);

// The key with everything below it, key by key. False if something could not be deleted; a root is emptied and stays. Throws
// RegError for a tree that is deeper than any may be.
bool deleteTree(RegStore& store, Root root, std::string_view key);

}  // namespace brenvik
