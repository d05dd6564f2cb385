#include "registry/text/RegImport.h"

#include <algorithm>
#include <unordered_set>

#include "frame/Errors.h"
#include "registry/Upcase.h"
#include "registry/store/RegLimits.h"
#include "registry/store/RegLinks.h"

namespace brenvik {

namespace {

struct TakeBack {};

// Carries the work out and takes it back.
template <class Work> void onTrial(RegStore& store, const Work& work) {
    try {
        store.transaction([&] {
            work();
            throw TakeBack{};
        });
    } catch (const TakeBack&) {
    }
}

std::vector<RegTextProblem> refusals(RegStore& store, const RegTextFile& file) {
    std::vector<RegTextProblem> problems;
    file.each([&](const RegOperation& operation) {
        if (problems.size() >= MaxRegTextProblems) return;
        RegOperation single = operation;
        single.line = 0;
        try {
            applyOperations(store, {single});
        } catch (const RegError& error) {
            problems.push_back({operation.line, error.what()});
        }
    });
    return problems;
}

// The places that the operations touch, each once, with what is there before.
class Places final : public TreeSink {
public:
    Places(RegStore& store, std::vector<ChangePreview>& places) : store_(store), places_(places) {}

    // Deeper keys there are none, and to make one is refused when the file is carried out.
    void add(const RegOperation& operation) {
        if (static_cast<std::size_t>(std::count(operation.key.begin(), operation.key.end(), '\\')) >= MaxKeyDepth) return;
        root_ = operation.root;
        switch (operation.kind) {
            case RegOperation::Kind::CreateKey: return addKeyWithParents(operation.key);
            case RegOperation::Kind::SetValue: addKeyWithParents(operation.key); [[fallthrough]];
            case RegOperation::Kind::DeleteValue: return addValue(operation.key, operation.name);
            case RegOperation::Kind::DeleteKey:
                path_ = operation.key;
                depth_ = 0;
                if (!isNew(operation.key, true, {})) return;
                seen_.erase(id(operation.key, true, {}));
                return store_.walk(root_, operation.key, *this);
        }
    }

    void enter(std::string_view name, const KeyDetails&) override {
        lengths_.push_back(path_.size());
        if (depth_++ > 0) path_ = joinKey(path_, name);
        if (isNew(path_, true, {})) push(path_, true, ValueName::unnamed(), true, {});
    }
    void value(std::string_view name, const RawValue& value) override {
        if (isNew(path_, false, name)) push(path_, false, ValueName::named(std::string(name)), false, value);
    }
    void leave() override {
        --depth_;
        path_.resize(lengths_.back());
        lengths_.pop_back();
    }

private:
    std::u16string id(std::string_view key, bool isKey, std::string_view name) const {
        std::u16string text = foldName(key);
        text += u"\\\\";   // no key path holds two of them
        text += static_cast<char16_t>(u'0' + static_cast<unsigned>(root_));
        text += isKey ? u'K' : u'V';
        return text + foldName(name);
    }
    bool isNew(std::string_view key, bool isKey, std::string_view name) { return seen_.insert(id(key, isKey, name)).second; }
    void push(std::string_view key, bool isKey, ValueName name, bool keyBefore, std::optional<RawValue> before) {
        places_.push_back({root_, std::string(key), isKey, keyBefore, std::move(name), std::move(before), {}});
    }
    void addKeyWithParents(std::string_view key) {
        if (key.empty() || !isNew(key, true, {})) return;
        const bool there = store_.keyExists(root_, key);
        if (!there) addKeyWithParents(parentKey(key));
        push(key, true, ValueName::unnamed(), there, {});
    }
    void addValue(std::string_view key, const ValueName& name) {
        if (isNew(key, false, name.text())) push(key, false, name, false, store_.value(root_, key, name));
    }

    RegStore& store_;
    std::vector<ChangePreview>& places_;
    std::unordered_set<std::u16string> seen_;
    Root root_ = Root::LocalMachine;
    std::string path_;
    std::vector<std::size_t> lengths_;
    std::size_t depth_ = 0;
};

std::vector<RegTextProblem> collect(RegStore& store, const RegTextFile& file, std::vector<ChangePreview>& places) {
    Places collector(store, places);
    return file.each([&](const RegOperation& operation) { collector.add(operation); });
}

// In place: there may be many of them.
void keepChanged(RegStore& store, std::vector<ChangePreview>& places) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < places.size(); ++i) {
        ChangePreview& place = places[i];
        if (!place.isKey) place.after = store.value(place.root, place.key, place.name);
        const bool same = place.isKey ? store.keyExists(place.root, place.key) == place.keyBefore : place.after == place.before;
        if (same) continue;
        if (kept != i) places[kept] = std::move(place);
        ++kept;
    }
    places.resize(kept);
}

}  // namespace

// The file is read once where all is well, and again only to find all that is not.
std::vector<RegTextProblem> replay(RegStore& store, const RegTextFile& file) {
    std::vector<RegTextProblem> problems;
    try {
        store.transaction([&] {
            problems = file.each([&](const RegOperation& operation) { applyOperation(store, operation); });
            if (!problems.empty()) throw TakeBack{};
        });
    } catch (const TakeBack&) {
    } catch (const RegError&) {
        problems = file.each([](const RegOperation&) {});
        if (problems.empty()) onTrial(store, [&] { problems = refusals(store, file); });
        if (problems.empty()) throw;
    }
    return problems;
}

Preview previewOf(RegStore& store, const RegTextFile& file) {
    Preview result;
    onTrial(store, [&] {
        result.problems = collect(store, file, result.changes);
        if (result.problems.empty()) result.problems = replay(store, file);
        if (result.problems.empty()) keepChanged(store, result.changes);
    });
    if (!result.problems.empty()) result.changes.clear();
    return result;
}

}  // namespace brenvik
