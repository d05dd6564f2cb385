#include "registry/machine/TargetSystem.h"
#include "registry/store/RegStore.h"

#include <algorithm>

#include "frame/Errors.h"
#include "registry/RegOperations.h"
#include "registry/store/RegLimits.h"
#include "registry/store/RegLinks.h"

namespace brenvik {

namespace {

// Values and keys one by one, for stores that have no quicker way.
class StepwiseFill final : public TreeSink {
public:
    StepwiseFill(RegStore& store, Root root, std::string_view key) : store_(store), root_(root), path_(key) {}

    void enter(std::string_view name, const KeyDetails& details) override {
        lengths_.push_back(path_.size());
        if (lengths_.size() > 1) path_ = joinKey(path_, name);
        store_.createKey(root_, path_);
        details_.push_back(details);
    }
    void value(std::string_view name, const RawValue& value) override {
        store_.setValue(root_, path_, ValueName::named(std::string(name)), value);
    }
    void leave() override {
        KeyDetails merged = store_.details(root_, path_).value_or(KeyDetails());
        KeyDetails& told = details_.back();
        if (!told.className.empty()) merged.className = std::move(told.className);
        if (!told.descriptor.empty()) merged.descriptor = std::move(told.descriptor);
        if (told.flags != 0) merged.flags = told.flags;
        if (told.userFlags != 0) merged.userFlags = told.userFlags;
        if (told.written != KeyDetails::NoTime) merged.written = told.written;
        store_.setDetails(root_, path_, merged);
        details_.pop_back();
        path_.resize(lengths_.back());
        lengths_.pop_back();
    }

private:
    RegStore& store_;
    Root root_;
    std::string path_;
    std::vector<std::size_t> lengths_;
    std::vector<KeyDetails> details_;
};

}  // namespace

std::optional<KeyDetails> RegStore::details(Root root, std::string_view key) {
    return keyExists(root, key) ? std::optional(KeyDetails()) : std::nullopt;
}

namespace {

constexpr std::ptrdiff_t DeepestPath = MaxKeyDepth + 8;   // hives stand a little below their root

struct KeyContent {
    KeyDetails details;
    std::vector<NamedValue> values;
    std::vector<std::string> subKeys;
};

std::optional<KeyContent> contentOf(RegStore& store, Root root, std::string_view key) {
    const auto details = store.details(root, key);
    if (!details) return std::nullopt;
    return KeyContent{*details, store.values(root, key), store.subKeys(root, key)};
}

}  // namespace

void RegStore::walk(Root root, std::string_view key, TreeSink& sink) {
    if (std::count(key.begin(), key.end(), '\\') > DeepestPath) throwTooDeep();
    std::optional<KeyContent> content;
    try {   // what the sink throws is not meant
        content = contentOf(*this, root, key);
    } catch (const RegError& error) {
        return sink.unreadable(lastKeyName(key), error);
    }
    if (!content) return;
    sink.enter(lastKeyName(key), content->details);
    for (const NamedValue& entry : content->values) sink.value(entry.name.text(), entry.value);
    for (const std::string& child : content->subKeys) {
        const std::string path = joinKey(key, child);
        if (!isLink(root, path)) walk(root, path, sink);
    }
    sink.leave();
}

void RegStore::fill(Root root, std::string_view key, const std::function<void(TreeSink&)>& source) {
    transaction([&] {
        StepwiseFill sink(*this, root, key);
        source(sink);
    });
}

void RegStore::clear(Root root, std::string_view key) {
    transaction([&] {
        // Below HKCR the user's keys cover the machine's, which show only when the first are gone.
        for (int layer = 0; layer < 2; ++layer) {
            for (const NamedValue& entry : values(root, key)) deleteValue(root, key, entry.name);
            for (const std::string& child : subKeys(root, key)) deleteTree(*this, root, joinKey(key, child));
        }
        if (!values(root, key).empty() || !subKeys(root, key).empty()) {
            throw RegError(regerr::NoAccess, "Der Inhalt des Schlüssels kann nicht gelöscht werden.");
        }
    });
}

const std::string& RegStore::whyReadOnly() const {
    static const std::string nothing;
    return nothing;
}

RegStore& Machines::store(const std::string& machine) { return target(machine).store(); }

}  // namespace brenvik
