#pragma once
// Whole keys from one store to another, with class names, times, security and flags where both keep them.
#include <functional>
#include <string>

#include "registry/hive/Hive.h"
#include "registry/store/RegStore.h"

namespace brenvik {

// Adds the key with everything below it to another: sub keys are joined, values of the same name replaced. All or nothing;
// false if the source key is not there. Target and source may be the same store.
bool copyTree(RegStore& from, Root fromRoot, std::string_view fromKey, RegStore& to, Root toRoot, std::string_view toKey);

// The source becomes the key's whole content, all or nothing.
void replaceTree(RegStore& store, Root root, std::string_view key, const std::function<void(TreeSink&)>& source);

// A key of a hive in memory, told to a sink.
void walkHiveKey(const Hive& hive, const HiveKey& key, TreeSink& sink);

// Builds what it is told into a key of a hive; what is there already is joined. Throws RegError for what exceeds the limits.
class HiveTreeSink final : public TreeSink {
public:
    HiveTreeSink(Hive& hive, HiveKey& top, std::uint64_t now, std::size_t depthOfTop = 1);
    ~HiveTreeSink() override;
    void enter(std::string_view name, const KeyDetails& details) override;
    void value(std::string_view name, const RawValue& value) override;
    void leave() override { open_.pop_back(); }
    const std::string& toldName() const { return toldName_; }   // of the first key told; the top keeps its own
    bool hasBigData() const { return bigData_; }   // some value is larger than one cell of the newer versions may be

private:
    struct OpenKey {
        HiveKey* key;
        bool fresh;   // its values cannot have been there
    };
    struct Descriptors;
    HiveKey& child(HiveKey& parent, std::string_view name, bool& fresh);
    Hive& hive_;
    HiveKey& top_;
    std::uint64_t now_;
    std::size_t depthOfTop_;
    std::vector<OpenKey> open_;
    std::unique_ptr<Descriptors> descriptors_;
    std::string toldName_;
    bool bigData_ = false;
};

// Of a key of a hive, and back.
KeyDetails detailsOf(const Hive& hive, const HiveKey& key);

}  // namespace brenvik
