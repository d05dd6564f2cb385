#include "registry/store/RegTree.h"

#include <unordered_map>

#include "registry/Upcase.h"
#include "registry/Wtf8.h"
#include "registry/hive/HiveFormat.h"
#include "registry/store/RegLimits.h"
#include "registry/store/RegLinks.h"

namespace brenvik {

struct HiveTreeSink::Descriptors {
    std::unordered_map<std::string, std::uint32_t> byContent;
    Bytes last;
    std::uint32_t lastIndex = HiveKey::NoSecurity;
};

HiveTreeSink::HiveTreeSink(Hive& hive, HiveKey& top, std::uint64_t now, std::size_t depthOfTop)
    : hive_(hive), top_(top), now_(now), depthOfTop_(depthOfTop), descriptors_(std::make_unique<Descriptors>()) {
    for (std::size_t i = 0; i < hive.descriptors.size(); ++i) {
        const Bytes& bytes = hive.descriptors[i];
        descriptors_->byContent.try_emplace(std::string(bytes.begin(), bytes.end()), static_cast<std::uint32_t>(i));
    }
}

HiveTreeSink::~HiveTreeSink() = default;

// Keys are mostly told in their order, so that a new one belongs behind the last.
HiveKey& HiveTreeSink::child(HiveKey& parent, std::string_view name, bool& fresh) {
    fresh = true;
    if (parent.subKeys.empty() || compareNames(parent.subKeys.back().name, name) < 0) {
        HiveKey& added = parent.subKeys.emplace_back();
        added.name = name;
        added.security = parent.security;
        return added;
    }
    const std::size_t before = parent.subKeys.size();
    HiveKey& found = parent.ensure(name);
    fresh = parent.subKeys.size() > before;
    return found;
}

void HiveTreeSink::enter(std::string_view name, const KeyDetails& details) {
    if (depthOfTop_ + open_.size() > MaxKeyDepth) throwTooDeep();
    if (open_.empty()) toldName_ = name;
    bool fresh = top_.values.empty();
    HiveKey* key = &top_;
    if (!open_.empty()) {
        checkKeyName(name);
        key = &child(*open_.back().key, name, fresh);
    }
    if (!details.className.empty()) key->className = fromUtf16Le(details.className.data(), details.className.size());
    key->lastWrite = details.written != KeyDetails::NoTime ? details.written : now_;
    if (details.flags != 0) key->flags = hivefmt::withTravelling(key->flags, details.flags);
    if (details.userFlags != 0) key->userFlags = details.userFlags;
    if (!details.descriptor.empty()) {
        Descriptors& d = *descriptors_;
        if (d.lastIndex == HiveKey::NoSecurity || d.last != details.descriptor) {
            const auto [at, unknown] = d.byContent.try_emplace(std::string(details.descriptor.begin(), details.descriptor.end()),
                                                               static_cast<std::uint32_t>(hive_.descriptors.size()));
            if (unknown) hive_.descriptors.push_back(details.descriptor);
            d.last = details.descriptor;
            d.lastIndex = at->second;
        }
        key->security = d.lastIndex;
    }
    open_.push_back({key, fresh});
}

void HiveTreeSink::value(std::string_view name, const RawValue& value) {
    checkValue(name, value);
    bigData_ = bigData_ || value.bytes.size() > hivefmt::bigSegment;
    OpenKey& open = open_.back();
    if (open.fresh) {
        open.key->values.push_back({std::string(name), value});
    } else {
        open.key->set(name, value);
    }
}

KeyDetails detailsOf(const Hive& hive, const HiveKey& key) {
    KeyDetails details;
    if (!key.className.empty()) {
        std::string units;
        appendUtf16Le(units, toUtf16(key.className));
        details.className.assign(units.begin(), units.end());
    }
    details.written = key.lastWrite;
    details.flags = key.flags & hivefmt::nk::Travelling;
    details.userFlags = key.userFlags;
    if (key.security < hive.descriptors.size()) details.descriptor = hive.descriptors[key.security];
    return details;
}

void walkHiveKey(const Hive& hive, const HiveKey& key, TreeSink& sink) {
    sink.enter(key.name, detailsOf(hive, key));
    for (const HiveValue& value : key.values) sink.value(value.name, value.data);
    for (const HiveKey& subKey : key.subKeys) walkHiveKey(hive, subKey, sink);
    sink.leave();
}

bool copyTree(RegStore& from, Root fromRoot, std::string_view fromKey, RegStore& to, Root toRoot, std::string_view toKey) {
    if (!from.keyExists(fromRoot, fromKey)) return false;
    if (&from != &to) {
        to.fill(toRoot, toKey, [&](TreeSink& sink) { from.walk(fromRoot, fromKey, sink); });
        return true;
    }
    Hive between;
    HiveTreeSink collector(between, between.root, fileTimeNow());
    from.walk(fromRoot, fromKey, collector);
    to.fill(toRoot, toKey, [&](TreeSink& sink) { walkHiveKey(between, between.root, sink); });
    return true;
}

void replaceTree(RegStore& store, Root root, std::string_view key, const std::function<void(TreeSink&)>& source) {
    store.transaction([&] {
        store.clear(root, key);
        store.fill(root, key, source);
    });
}

}  // namespace brenvik
