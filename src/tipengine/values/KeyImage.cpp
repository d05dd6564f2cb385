#include "tipengine/values/KeyImage.h"

#include <algorithm>
#include <unordered_map>

#include "registry/store/RegLinks.h"

namespace brenvik {
namespace {

// Keeps a whole key, with class names, times and security.
class BildSink final : public TreeSink {
public:
    explicit BildSink(KeyImage& picture) : picture_(picture) {}
    void enter(std::string_view name, const KeyDetails& details) override {
        if (!open_.empty()) below_ += "\\" + std::string(name);
        open_.push_back(below_.size());
        picture_.unterschluessel.push_back(below_);
        picture_.details.push_back(details);
    }
    void value(std::string_view name, const RawValue& value) override {
        picture_.values.push_back({below_, {ValueName::named(std::string(name)), value}});
    }
    void leave() override {
        open_.pop_back();
        below_.resize(open_.empty() ? 0 : open_.back());
    }

private:
    KeyImage& picture_;
    std::string below_;
    std::vector<std::size_t> open_;   // lengths of below_
};

}  // namespace

KeyImage keyImage(RegStore& store, const std::string& machine, const RealKey& place) {
    KeyImage picture{machine, std::string(longRootName(place.root)) + "\\" + place.key, {}, {}};
    BildSink sink(picture);
    store.walk(place.root, place.key, sink);
    return picture;
}

std::vector<KeyImage> keyImages(BVKRegistry& registry, const std::string& machine, const std::string& path) {
    const RegPath key = parseRegPath(path + "\\");
    registry.SetPath(machine, path + "\\");
    RegStore& store = registry.selectedStore();
    std::vector<RealKey> places{store.realKey(key.root, key.key)};
    if (key.root == Root::ClassesRoot && places[0].root != Root::ClassesRoot) {
        const std::string classes = joinKey(ClassesPath, key.key);
        places = {store.realKey(Root::CurrentUser, classes), store.realKey(Root::LocalMachine, classes)};
        std::erase_if(places, [&](const RealKey& place) { return !store.keyExists(place.root, place.key); });
        if (places.empty()) places.push_back(store.realKey(key.root, key.key));
    }
    std::vector<KeyImage> images;
    for (const RealKey& place : places) images.push_back(keyImage(store, machine, place));
    return images;
}

void tellImage(const KeyImage& image, TreeSink& sink) {
    std::unordered_map<std::string_view, std::vector<const NamedValue*>> values;
    for (const auto& value : image.values) values[value.unter].push_back(&value.wert);
    std::ptrdiff_t open = 0;
    for (std::size_t k = 0; k < image.unterschluessel.size(); ++k) {
        const std::string& key = image.unterschluessel[k];
        for (const auto depth = std::count(key.begin(), key.end(), '\\'); open > depth; --open) sink.leave();
        sink.enter(key.substr(key.rfind('\\') + 1), k < image.details.size() ? image.details[k] : KeyDetails{});
        ++open;
        if (const auto found = values.find(key); found != values.end())
            for (const NamedValue* value : found->second) sink.value(value->name.text(), value->value);
    }
    for (; open > 0; --open) sink.leave();
}

}  // namespace brenvik
