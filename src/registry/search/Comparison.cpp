#include "registry/search/Comparison.h"

#include <algorithm>
#include <map>

#include "registry/Upcase.h"
#include "registry/store/RegLimits.h"
#include "registry/store/RegLinks.h"

namespace brenvik {

namespace {

using Art = Difference::Art;

class Comparer {
public:
    Comparer(const TreePlace& first, const TreePlace& second, const std::function<void(const Difference&)>& tell)
        : first_(first), second_(second), tell_(tell) {}

    void key(const std::string& path, std::size_t depth) {
        if (depth > MaxKeyDepth) throwTooDeep();
        values(path);
        const auto left = children(first_, path), right = children(second_, path);
        auto l = left.begin(), r = right.begin();
        while (l != left.end() || r != right.end()) {
            const int order = l == left.end() ? 1 : r == right.end() ? -1 : compareNames(l->first, r->first);
            const std::string child = joinKey(path, order <= 0 ? l->second : r->second);
            if (order == 0) {
                if (!isSameLink(child)) key(child, depth + 1);
            } else if (!isLink(order < 0 ? first_ : second_, child)) {
                single(order < 0, child, depth + 1);
            }
            if (order <= 0) ++l;
            if (order >= 0) ++r;
        }
    }
    bool equal() const { return equal_; }

private:
    using Children = std::map<std::u16string, std::string>;   // folded name to name

    static Children children(const TreePlace& place, const std::string& path) {
        Children result;
        for (std::string& name : place.store->subKeys(place.root, joinKey(place.key, path))) result.emplace(foldName(name), std::move(name));
        return result;
    }
    // A second name of what is told under its own one, too.
    static bool isLink(const TreePlace& place, const std::string& path) {
        const std::string whole = joinKey(place.key, path);
        if (!place.store->isLink(place.root, whole)) return false;
        const std::vector<std::string> out = place.store->linksOut(place.root, place.key);
        return std::none_of(out.begin(), out.end(), [&](const std::string& link) { return sameName(link, whole); });
    }
    // Two that lead to different places say something of their own.
    bool isSameLink(const std::string& path) const {
        const auto real = [&](const TreePlace& place) { return place.store->realKey(place.root, joinKey(place.key, path)).key; };
        return isLink(first_, path) && isLink(second_, path) && sameName(real(first_), real(second_));
    }

    void single(bool isFirst, const std::string& path, std::size_t depth) {
        if (depth > MaxKeyDepth) throwTooDeep();
        report({isFirst ? Art::KeyMissing : Art::KeyAdded, path, ValueName::unnamed(), {}, {}});
        const TreePlace& place = isFirst ? first_ : second_;
        const std::string whole = joinKey(place.key, path);
        for (NamedValue& entry : place.store->values(place.root, whole)) one(isFirst, path, std::move(entry));
        for (const auto& [folded, name] : children(place, path)) single(isFirst, joinKey(path, name), depth + 1);
    }

    void one(bool isFirst, const std::string& path, NamedValue entry) {
        if (isFirst) {
            report({Art::ValueMissing, path, std::move(entry.name), std::move(entry.value), {}});
        } else {
            report({Art::ValueAdded, path, std::move(entry.name), {}, std::move(entry.value)});
        }
    }

    void values(const std::string& path) {
        std::map<std::u16string, NamedValue> others;
        for (NamedValue& entry : second_.store->values(second_.root, joinKey(second_.key, path))) {
            std::u16string folded = foldName(entry.name.text());
            others.emplace(std::move(folded), std::move(entry));
        }
        for (NamedValue& entry : first_.store->values(first_.root, joinKey(first_.key, path))) {
            const auto other = others.find(foldName(entry.name.text()));
            if (other == others.end()) {
                one(true, path, std::move(entry));
                continue;
            }
            if (other->second.value != entry.value) {
                report({Art::ValueChanged, path, entry.name, std::move(entry.value), std::move(other->second.value)});
            }
            others.erase(other);
        }
        for (auto& [folded, entry] : others) one(false, path, std::move(entry));
    }

    void report(const Difference& difference) {
        equal_ = false;
        tell_(difference);
    }

    const TreePlace& first_;
    const TreePlace& second_;
    const std::function<void(const Difference&)>& tell_;
    bool equal_ = true;
};

}  // namespace

bool compare(const TreePlace& first, const TreePlace& second, const std::function<void(const Difference&)>& tell) {
    Comparer work(first, second, tell);
    work.key("", 0);
    return work.equal();
}

}  // namespace brenvik
