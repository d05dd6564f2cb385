#include "registry/hive/Hive.h"

#include <algorithm>

#include "registry/Upcase.h"

namespace brenvik {

namespace {

auto lowerBound(std::vector<HiveKey>& keys, std::string_view name) {
    return std::lower_bound(keys.begin(), keys.end(), name,
                            [](const HiveKey& key, std::string_view wanted) { return compareNames(key.name, wanted) < 0; });
}

auto findValue(std::vector<HiveValue>& values, std::string_view name) {
    const auto exact = std::find_if(values.begin(), values.end(), [&](const HiveValue& v) { return v.name == name; });
    if (exact != values.end()) return exact;
    return std::find_if(values.begin(), values.end(), [&](const HiveValue& v) { return sameName(v.name, name); });
}

}  // namespace

HiveKey* HiveKey::find(std::string_view subKey) {
    const auto at = lowerBound(subKeys, subKey);
    return at != subKeys.end() && sameName(at->name, subKey) ? &*at : nullptr;
}

const HiveKey* HiveKey::find(std::string_view subKey) const { return const_cast<HiveKey*>(this)->find(subKey); }

HiveKey& HiveKey::ensure(std::string_view subKey) {
    const auto at = lowerBound(subKeys, subKey);
    if (at != subKeys.end() && sameName(at->name, subKey)) return *at;
    HiveKey fresh;
    fresh.name = subKey;
    fresh.security = security;
    return *subKeys.insert(at, std::move(fresh));
}

bool HiveKey::erase(std::string_view subKey) {
    const auto at = lowerBound(subKeys, subKey);
    if (at == subKeys.end() || !sameName(at->name, subKey)) return false;
    subKeys.erase(at);
    return true;
}

HiveValue* HiveKey::value(std::string_view valueName) {
    const auto at = findValue(values, valueName);
    return at == values.end() ? nullptr : &*at;
}

const HiveValue* HiveKey::value(std::string_view valueName) const { return const_cast<HiveKey*>(this)->value(valueName); }

void HiveKey::set(std::string_view valueName, RawValue data) {
    if (HiveValue* there = value(valueName)) {
        there->data = std::move(data);
    } else {
        values.push_back({std::string(valueName), std::move(data)});
    }
}

bool HiveKey::eraseValue(std::string_view valueName) {
    const auto at = findValue(values, valueName);
    if (at == values.end()) return false;
    values.erase(at);
    return true;
}

std::uint32_t Hive::addDescriptor(const Bytes& descriptor) {
    const auto at = std::find(descriptors.begin(), descriptors.end(), descriptor);
    if (at != descriptors.end()) return static_cast<std::uint32_t>(at - descriptors.begin());
    descriptors.push_back(descriptor);
    return static_cast<std::uint32_t>(descriptors.size() - 1);
}

HiveKey* Hive::findPath(std::string_view path) {
    HiveKey* key = &root;
    while (key != nullptr && !path.empty()) {
        const std::size_t end = std::min(path.find('\\'), path.size());
        key = key->find(path.substr(0, end));
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return key;
}

const HiveKey* Hive::findPath(std::string_view path) const { return const_cast<Hive*>(this)->findPath(path); }

HiveCounts count(const HiveKey& key) {
    HiveCounts counts{1, key.values.size()};
    for (const HiveKey& subKey : key.subKeys) {
        const HiveCounts below = count(subKey);
        counts.keys += below.keys;
        counts.values += below.values;
    }
    return counts;
}

}  // namespace brenvik
