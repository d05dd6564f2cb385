#include "registry/store/MemoryStore.h"

#include <algorithm>

#include "frame/Errors.h"
#include "registry/Upcase.h"
#include "registry/store/RegLimits.h"
#include "registry/store/RegLinks.h"

namespace brenvik {

namespace {

constexpr std::size_t RootCount = 6;

// Calls step with each name of the path until it answers false.
template <class Step> bool eachName(std::string_view path, const Step& step) {
    for (std::size_t start = 0; start < path.size();) {
        const std::size_t end = std::min(path.find('\\', start), path.size());
        if (!step(path.substr(start, end - start))) return false;
        start = end + 1;
    }
    return true;
}

}  // namespace

MemoryStore::MemoryStore() : roots_(RootCount) {}

MemoryStore::Node* MemoryStore::find(Root root, std::string_view key) {
    Node* node = &roots_[static_cast<std::size_t>(root)];
    const bool found = eachName(key, [&](std::string_view name) {
        const auto child = node->children.find(foldName(name));
        if (child == node->children.end()) return false;
        node = &child->second;
        return true;
    });
    return found ? node : nullptr;
}

MemoryStore::Node& MemoryStore::obtain(Root root, std::string_view key) {
    checkKeyPath(key);
    Node* node = &roots_[static_cast<std::size_t>(root)];
    eachName(key, [&](std::string_view name) {
        Node& child = node->children[foldName(name)];
        if (child.name.empty()) child.name = name;
        node = &child;
        return true;
    });
    return *node;
}

void MemoryStore::requireWritable() const {
    if (!writable_) throw RegError(regerr::NoAccess, "Hier kann nur gelesen werden.");
}

bool MemoryStore::keyExists(Root root, std::string_view key) { return find(root, key) != nullptr; }

bool MemoryStore::canOpen(Root root, std::string_view key, std::uint32_t mask) {
    return keyExists(root, key) && (mask == KEY_QUERY_VALUE_MASK || writable_);
}

std::vector<std::string> MemoryStore::subKeys(Root root, std::string_view key) {
    std::vector<std::string> names;
    if (const Node* node = find(root, key)) {
        for (const auto& [folded, child] : node->children) names.push_back(child.name);
    }
    return names;
}

std::optional<RawValue> MemoryStore::value(Root root, std::string_view key, const ValueName& name) {
    Node* node = find(root, key);
    if (node == nullptr) return std::nullopt;
    const auto place = node->places.find(foldName(name.text()));
    return place == node->places.end() ? std::nullopt : std::optional(node->values[place->second].value);
}

std::vector<NamedValue> MemoryStore::values(Root root, std::string_view key) {
    const Node* node = find(root, key);
    return node == nullptr ? std::vector<NamedValue>() : node->values;
}

void MemoryStore::createKey(Root root, std::string_view key) {
    requireWritable();
    obtain(root, key);
}

void MemoryStore::setValue(Root root, std::string_view key, const ValueName& name, const RawValue& value) {
    requireWritable();
    checkValue(name.text(), value);
    Node& node = obtain(root, key);
    const auto [place, fresh] = node.places.emplace(foldName(name.text()), node.values.size());
    if (fresh) {
        node.values.push_back({name, value});
    } else {
        node.values[place->second].value = value;
    }
}

bool MemoryStore::deleteValue(Root root, std::string_view key, const ValueName& name) {
    requireWritable();
    Node* node = find(root, key);
    if (node == nullptr) return false;
    const auto place = node->places.find(foldName(name.text()));
    if (place == node->places.end()) return false;
    const std::size_t index = place->second;
    node->places.erase(place);
    node->values.erase(node->values.begin() + static_cast<std::ptrdiff_t>(index));
    for (auto& [folded, other] : node->places) {
        if (other > index) --other;
    }
    return true;
}

bool MemoryStore::deleteKey(Root root, std::string_view key) {
    requireWritable();
    Node* node = find(root, key);
    if (key.empty() || node == nullptr || !node->children.empty()) return false;
    find(root, parentKey(key))->children.erase(foldName(lastKeyName(key)));
    return true;
}

void MemoryStore::clear(Root root, std::string_view key) {
    requireWritable();
    if (Node* const node = find(root, key)) {
        node->values.clear();
        node->places.clear();
        node->children.clear();
    }
}

void MemoryStore::transaction(const std::function<void()>& changes) {
    requireWritable();
    std::vector<Node> before = roots_;
    try {
        changes();
    } catch (...) {
        roots_ = std::move(before);
        throw;
    }
}

}  // namespace brenvik
