#pragma once
// A registry in memory, each root a tree of its own without links between them: for the content of REG files. Names,
// order and bounds as in the other stores.
#include <map>
#include <string>
#include <vector>

#include "registry/store/RegStore.h"

namespace brenvik {

class MemoryStore final : public RegStore {
public:
    MemoryStore();
    bool keyExists(Root root, std::string_view key) override;
    bool canOpen(Root root, std::string_view key, std::uint32_t mask) override;
    std::vector<std::string> subKeys(Root root, std::string_view key) override;
    std::optional<RawValue> value(Root root, std::string_view key, const ValueName& name) override;
    std::vector<NamedValue> values(Root root, std::string_view key) override;
    void createKey(Root root, std::string_view key) override;
    void setValue(Root root, std::string_view key, const ValueName& name, const RawValue& value) override;
    bool deleteValue(Root root, std::string_view key, const ValueName& name) override;
    bool deleteKey(Root root, std::string_view key) override;
    void clear(Root root, std::string_view key) override;
    void transaction(const std::function<void()>& changes) override;   // keeps a copy of everything meanwhile
    bool writable() override { return writable_; }
    void setWritable(bool on) { writable_ = on; }   // off: every change is RegError NoAccess

private:
    struct Node {
        std::string name;
        std::vector<NamedValue> values;              // in the order they were made
        std::map<std::u16string, std::size_t> places;   // folded name to index in values
        std::map<std::u16string, Node> children;     // by folded name
    };
    Node* find(Root root, std::string_view key);
    Node& obtain(Root root, std::string_view key);
    void requireWritable() const;
    std::vector<Node> roots_;
    bool writable_ = true;
};

}  // namespace brenvik
