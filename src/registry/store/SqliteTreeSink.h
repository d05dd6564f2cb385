#pragma once
// Puts a told tree into the tables of the store file. Below a key that is new nothing is looked up.
#include <string>
#include <unordered_map>
#include <vector>

#include "registry/store/RegStore.h"
#include "registry/store/StoreTables.h"

namespace brenvik {

class SqliteTreeSink final : public TreeSink {
public:
    // now is the time of keys that are told without one. Failures are sqlite::Error and RegError.
    SqliteTreeSink(StoreTables& tables, KeyRef top, std::uint64_t now) : tables_(tables), top_(top), now_(now) {}
    void enter(std::string_view name, const KeyDetails& details) override;
    void value(std::string_view name, const RawValue& value) override;
    void leave() override { open_.pop_back(); }

    const std::vector<std::int64_t>& told() const { return told_; }   // keys that were there and got a time

private:
    struct OpenKey {
        std::int64_t id = 0;
        bool fresh = false;      // nothing below it but what this sink has put there
    };
    void change(const KeyRef& key, const KeyDetails& details);
    std::int64_t descriptorNumber(const Bytes& bytes);
    StoreTables& tables_;
    KeyRef top_;
    std::uint64_t now_;
    std::vector<OpenKey> open_;
    std::vector<std::int64_t> told_;
    std::unordered_map<std::string, std::int64_t> descriptors_;
    Bytes lastDescriptor_;
    std::int64_t lastNumber_ = 0;
};

}  // namespace brenvik
