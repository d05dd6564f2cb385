#include "registry/search/Search.h"

#include <vector>

#include "registry/Upcase.h"
#include "registry/store/RegLinks.h"

namespace brenvik {

namespace {

struct Ended {};

class Searcher final : public TreeSink {
public:
    Searcher(std::string_view key, const SearchPattern& muster, const SearchOptions& options, const SearchTarget& target)
        : path_(key), muster_(muster), options_(options), target_(target) {}

    void enter(std::string_view name, const KeyDetails&) override {
        lengths_.push_back(path_.size());
        const bool start = lengths_.size() == 1;
        if (!start) path_.append(path_.empty() ? "" : "\\").append(name);
        if (target_.stop && target_.stop()) throw Ended{};
        if (skipping_ == 0 && !options_.skipKey.empty() && sameName(path_, options_.skipKey)) skipping_ = lengths_.size();
        if (skipping_ == 0 && target_.enter) target_.enter(path_);
        if (skipping_ == 0 && options_.keys && !path_.empty() && muster_.inName(lastKeyName(path_))) target_.hit({path_, true, {}, nullptr});
    }
    void value(std::string_view name, const RawValue& value) override {
        if (skipping_ != 0) return;
        if (target_.stop && target_.stop()) throw Ended{};
        if ((options_.names && muster_.inName(name)) || (options_.data && muster_.inData(value))) target_.hit({path_, false, name, &value});
    }
    void leave() override {
        if (skipping_ == lengths_.size()) skipping_ = 0;
        path_.resize(lengths_.back());
        lengths_.pop_back();
    }
    void unreadable(std::string_view name, const RegError& error) override {
        if (skipping_ != 0) return;
        if (!target_.unreadable) return TreeSink::unreadable(name, error);
        target_.unreadable(lengths_.empty() ? path_ : joinKey(path_, name), error);
    }

private:
    std::string path_;
    std::vector<std::size_t> lengths_;   // of the path before each key under way
    std::size_t skipping_ = 0;           // depth of the key that is left out, 0: none
    const SearchPattern& muster_;
    const SearchOptions& options_;
    const SearchTarget& target_;
};

}  // namespace

bool suchen(RegStore& store, Root root, std::string_view key, const SearchPattern& muster, const SearchOptions& options, const SearchTarget& target) {
    try {
        std::vector<std::string> starts = store.linksOut(root, key);
        starts.insert(starts.begin(), std::string(key));
        for (const std::string& start : starts) {
            Searcher searcher(start, muster, options, target);
            store.walk(root, start, searcher);
        }
    } catch (const Ended&) {
        return false;
    }
    return true;
}

}  // namespace brenvik
