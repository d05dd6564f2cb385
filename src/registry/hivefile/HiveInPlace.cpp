#include "registry/hivefile/HiveInPlace.h"

#include <unordered_map>
#include <vector>

#include "registry/hive/HiveNames.h"
#include "registry/hive/HiveView.h"

namespace brenvik {

using namespace hivefmt;

namespace {

class InPlace final : public HiveVisitor {
public:
    InPlace(HiveView& view, TreeSink& sink) : view_(view), sink_(sink) {}

    void enter(const HiveKeyRecord& key) override {
        checkNames();
        offset_ = key.offset;
        const ByteSpan units = key.className.first(key.className.size() / 2 * 2);
        details_.className.assign(units.begin(), units.end());
        details_.written = key.lastWrite;
        details_.flags = key.flags & nk::Travelling;
        details_.userFlags = key.userFlags;
        details_.descriptor = descriptor(key);
        sink_.enter(textOf(key.name), details_);
    }
    void value(const HiveValueRecord& record) override {
        view_.data(record, value_.bytes);
        value_.type = record.type;
        names_.emplace_back().name = textOf(record.name);
        sink_.value(names_.back().name, value_);
    }
    void leave() override {
        checkNames();
        sink_.leave();
    }

private:
    // The values of a key come before its sub keys.
    void checkNames() {
        if (secondOfSameName(names_) != noTwin) view_.findings().fault(std::uint64_t{headerSize} + offset_, twinMessage);
        names_.clear();
    }
    const Bytes& descriptor(const HiveKeyRecord& key) {
        const auto [at, fresh] = descriptors_.try_emplace(key.security);
        if (fresh) {
            const ByteSpan bytes = view_.descriptor(key);
            at->second.assign(bytes.begin(), bytes.end());
        }
        return at->second;
    }
    HiveView& view_;
    TreeSink& sink_;
    std::uint32_t offset_ = 0;         // of the key whose values are told
    std::vector<HiveValue> names_;     // of these values; without data
    KeyDetails details_;
    RawValue value_;
    std::unordered_map<std::uint32_t, Bytes> descriptors_;
};

class Deaf final : public TreeSink {
public:
    void enter(std::string_view, const KeyDetails&) override {}
    void value(std::string_view, const RawValue&) override {}
    void leave() override {}
};

}  // namespace

void tellHive(ByteSpan file, TreeSink& sink) {
    HiveFindings findings(HiveMode::Strict);
    HiveView view(file, findings);
    InPlace teller(view, sink);
    walkHive(view, teller);
}

void requireSoundHive(ByteSpan file) {
    Deaf sink;
    tellHive(file, sink);
}

}  // namespace brenvik
