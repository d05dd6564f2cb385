#include "registry/hive/HiveNames.h"

#include <algorithm>
#include <unordered_set>

#include "registry/Upcase.h"

namespace brenvik {

namespace {

// Equal for names that are equal without case, at no cost of a conversion: only ASCII letters count.
std::uint32_t looseHash(const std::string& name) {
    std::uint32_t hash = 0;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) hash = hash * 31 + (byte >= 'a' && byte <= 'z' ? byte - 32u : byte);
    }
    return hash;
}

}  // namespace

std::size_t secondOfSameName(const std::vector<HiveValue>& values) {
    if (values.size() < 2) return noTwin;
    std::vector<std::pair<std::uint32_t, std::size_t>> hashes(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) hashes[i] = {looseHash(values[i].name), i};
    std::sort(hashes.begin(), hashes.end());
    for (std::size_t from = 0; from < hashes.size();) {
        std::size_t to = from + 1;
        while (to < hashes.size() && hashes[to].first == hashes[from].first) ++to;
        if (to - from > 1) {
            std::unordered_set<std::u16string> seen;
            for (std::size_t i = from; i < to; ++i) {
                if (!seen.insert(foldName(values[hashes[i].second].name)).second) return hashes[i].second;
            }
        }
        from = to;
    }
    return noTwin;
}

void dropTwins(std::vector<HiveValue>& values) {
    std::unordered_set<std::u16string> seen;
    values.erase(std::remove_if(values.begin(), values.end(), [&](const HiveValue& v) { return !seen.insert(foldName(v.name)).second; }), values.end());
}

}  // namespace brenvik
