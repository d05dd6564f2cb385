#include "registry/CregStore.h"

#include <algorithm>

#include "registry/Upcase.h"
#include "registry/store/RegLinks.h"

namespace brenvik {

namespace {

constexpr Root Files = Root::LocalMachine;

// The key itself or one below it.
bool isWithin(std::string_view key, std::string_view top) {
    return top.empty() || (key.size() >= top.size() && (key.size() == top.size() || key[top.size()] == '\\') && sameName(key.substr(0, top.size()), top));
}

bool lessName(const std::string& a, const std::string& b) { return compareNames(a, b) < 0; }

}  // namespace

void CregStore::mount(Root root, std::string key, const std::shared_ptr<HiveFile>& file, const std::string& inside) {
    const std::string place = newPlace();
    files_.add(place, file);
    mounts_.push_back({root, std::move(key), joinKey(place, inside)});
}

void CregStore::mountMissing(Root root, std::string key, const std::string& reason) {
    const std::string place = newPlace();
    files_.mountMissing(Files, place, reason);
    mounts_.push_back({root, std::move(key), place, true});
}

// ---- Where a path leads ----

RealKey CregStore::realKey(Root root, std::string_view key) {
    switch (root) {
        case Root::CurrentUser: return {Root::Users, joinKey(user_, key)};
        case Root::ClassesRoot: return {Root::LocalMachine, joinKey(ClassesPath, key)};
        case Root::CurrentConfig: return {Root::LocalMachine, joinKey(hardwareProfile(), key)};
        case Root::LocalMachine:
        case Root::Users:
        case Root::DynData: break;
    }
    return {root, std::string(key)};
}

std::string CregStore::hardwareProfile() {
    const auto current = value(Root::LocalMachine, "System\\CurrentControlSet\\Control\\IDConfigDB", ValueName::named("CurrentConfig"));
    const std::string name = current && current->type == regtype::Sz ? toText(*current) : std::string();
    return joinKey("Config", name.empty() || name.find('\\') != std::string::npos ? "0001" : name);
}

const CregStore::Mount* CregStore::mountOf(const RealKey& at) const {
    const Mount* found = nullptr;
    for (const Mount& m : mounts_)
        if (m.root == at.root && isWithin(at.key, m.key) && (found == nullptr || m.key.size() > found->key.size())) found = &m;
    return found;
}

std::optional<std::string> CregStore::inside(Root root, std::string_view key) {
    const RealKey at = realKey(root, key);
    const Mount* const m = mountOf(at);
    if (m == nullptr) return std::nullopt;
    const std::string_view rest = std::string_view(at.key).substr(std::min(at.key.size(), m->key.empty() ? 0 : m->key.size() + 1));
    return joinKey(m->inside, rest);
}

std::string CregStore::require(Root root, std::string_view key) {
    auto path = inside(root, key);
    if (!path) throw RegError(regerr::NoAccess, "Der Schlüssel liegt in keiner der Registrydateien.");
    return std::move(*path);
}

bool CregStore::isMount(const RealKey& at) const {
    return std::any_of(mounts_.begin(), mounts_.end(), [&](const Mount& m) { return m.root == at.root && sameName(m.key, at.key); });
}

bool CregStore::hasMountsBelow(const RealKey& at) const {
    return std::any_of(mounts_.begin(), mounts_.end(), [&](const Mount& m) { return m.root == at.root && m.key.size() > at.key.size() && isWithin(m.key, at.key); });
}

// ---- Reading ----

bool CregStore::keyExists(Root root, std::string_view key) {
    if (key.empty()) return true;
    const auto path = inside(root, key);
    return path && files_.keyExists(Files, *path);
}

bool CregStore::canOpen(Root root, std::string_view key, std::uint32_t mask) {
    const auto path = inside(root, key);
    return path ? files_.canOpen(Files, *path, mask) : key.empty() && mask == KEY_QUERY_VALUE_MASK;
}

std::vector<std::string> CregStore::subKeys(Root root, std::string_view key) {
    const auto path = inside(root, key);
    std::vector<std::string> names = path ? files_.subKeys(Files, *path) : std::vector<std::string>();
    const RealKey at = realKey(root, key);
    for (const Mount& m : mounts_) {
        if (m.root != at.root || m.missing || m.key.empty() || !sameName(parentKey(m.key), at.key)) continue;
        const std::string name(lastKeyName(m.key));
        const auto place = std::lower_bound(names.begin(), names.end(), name, lessName);
        if (place == names.end() || !sameName(*place, name)) names.insert(place, name);
    }
    return names;
}

std::optional<RawValue> CregStore::value(Root root, std::string_view key, const ValueName& name) {
    const auto path = inside(root, key);
    return path ? files_.value(Files, *path, name) : std::nullopt;
}

std::vector<NamedValue> CregStore::values(Root root, std::string_view key) {
    const auto path = inside(root, key);
    return path ? files_.values(Files, *path) : std::vector<NamedValue>();
}

std::optional<KeyDetails> CregStore::details(Root root, std::string_view key) {
    const auto path = inside(root, key);
    const auto found = path ? files_.details(Files, *path) : std::nullopt;
    return found || !keyExists(root, key) ? found : std::optional(KeyDetails());
}

// Below a key in which other files stand, and at the top of a file, the keys are told one by one.
void CregStore::walk(Root root, std::string_view key, TreeSink& sink) {
    const RealKey at = realKey(root, key);
    const auto path = inside(root, key);
    if (!path || isMount(at) || hasMountsBelow(at)) return RegStore::walk(root, key, sink);
    files_.walk(Files, *path, sink);
}

// ---- Changes ----

void CregStore::createKey(Root root, std::string_view key) { files_.createKey(Files, require(root, key)); }

void CregStore::setValue(Root root, std::string_view key, const ValueName& name, const RawValue& value) { files_.setValue(Files, require(root, key), name, value); }

bool CregStore::deleteValue(Root root, std::string_view key, const ValueName& name) {
    const auto path = inside(root, key);
    return path && files_.deleteValue(Files, *path, name);
}

bool CregStore::deleteKey(Root root, std::string_view key) {
    const RealKey at = realKey(root, key);
    const auto path = inside(root, key);
    return path && !isMount(at) && !hasMountsBelow(at) && files_.deleteKey(Files, *path);
}

void CregStore::fill(Root root, std::string_view key, const std::function<void(TreeSink&)>& source) {
    if (hasMountsBelow(realKey(root, key))) return RegStore::fill(root, key, source);
    files_.fill(Files, require(root, key), source);
}

void CregStore::clear(Root root, std::string_view key) {
    if (hasMountsBelow(realKey(root, key))) return RegStore::clear(root, key);
    if (const auto path = inside(root, key)) files_.clear(Files, *path);
}

}  // namespace brenvik
