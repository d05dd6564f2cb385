#include "registry/store/SqliteStore.h"

#include <algorithm>
#include <iterator>

#include "frame/Errors.h"
#include "registry/Upcase.h"
#include "registry/store/SqliteTreeSink.h"
#include "registry/store/StoreWalk.h"

namespace brenvik {

namespace {

constexpr std::size_t MaxCachedKeys = 100000;
constexpr std::uint32_t WriteMask = 0x500D0026;   // set value, create sub key or link, delete, change rights, generic write and all
// The profile of a store that has none yet.
constexpr const char* FirstUserSid = "S-1-5-21-1844237615-1960408961-725345543-1003";

// Units of the path that a cache entry is found by: base first, then the folded path.
std::u16string cachePath(std::int64_t base, std::string_view path) {
    std::u16string folded = foldName(path);
    folded.insert(folded.begin(), static_cast<char16_t>(base));
    return folded;
}

// A cache path begins with one unit for its base, which no backslash follows.
std::size_t endOfNext(std::u16string_view path, std::size_t end) { return std::min(path.find(u'\\', end == 1 ? 1 : end + 1), path.size()); }
std::u16string_view lastName(std::u16string_view path) { return path.substr(std::max<std::size_t>(path.rfind(u'\\') + 1, 1)); }

std::string foldedName(const ValueName& name) { return foldedBytesOf(name.text()); }

// A walk reads each page once, and would only fill the memory with what the usual cache may hold.
class CacheOfAWalk {
public:
    explicit CacheOfAWalk(sqlite::Database& database) : database_(database), usual_(database.number("PRAGMA cache_size")) { set(-4096); }
    ~CacheOfAWalk() {
        try {
            set(usual_);
        } catch (const sqlite::Error&) {
            // The small one serves as well, only slower.
        }
    }
    CacheOfAWalk(const CacheOfAWalk&) = delete;
    CacheOfAWalk& operator=(const CacheOfAWalk&) = delete;

private:
    void set(std::int64_t size) { database_.execute(("PRAGMA cache_size = " + std::to_string(size)).c_str()); }
    sqlite::Database& database_;
    std::int64_t usual_;
};

void requireWritableKey(const KeyRef& key) {
    if (key.readOnly) throw RegError(regerr::NoAccess, "Der Schlüssel darf nur gelesen werden.");
}

}  // namespace

SqliteStore::SqliteStore(std::filesystem::path file, const StoreOptions& options)
    : file_(std::move(file)), opened_(openStoreFile(file_, options)), tables_(*opened_.database) {}

SqliteStore::~SqliteStore() { tables_.rollback(); }

// One read transaction for each operation, so that all it sees is of one moment.
template <class Work>
auto SqliteStore::reading(const Work& work) {
    try {
        std::optional<StoreTables::Snapshot> snapshot;
        if (depth_ == 0) refresh(snapshot.emplace(tables_).dataVersion());
        return work();
    } catch (const sqlite::Error& error) {
        forget();
        throw storeError(error, file_, regerr::KeyNotRead);
    }
}

template <class Work>
void SqliteStore::writing(const Work& work) {
    if (depth_ == 0) {
        transaction(work);
        return;
    }
    try {
        // The engine gives a transaction up on some failures (disk full); what follows must not be kept singly.
        if (!tables_.inTransaction()) throw RegError(regerr::NoAssignment, "Die Änderungen wurden nach einem Fehler verworfen.");
        work();
    } catch (const sqlite::Error& error) {
        throw storeError(error, file_, regerr::NoAssignment);
    }
}

void SqliteStore::transaction(const std::function<void()>& changes) {
    if (!writable()) throw RegError(regerr::NoAccess, whyReadOnly());
    const bool outer = depth_ == 0;
    try {
        if (outer) {
            tables_.beginWriting();
            refresh(StoreTables::Snapshot(tables_).dataVersion());
            newAreKnown_ = true;
        } else {
            tables_.savepoint();
        }
        ++depth_;
        try {
            changes();
            if (outer) flushTouched();
            outer ? tables_.commit() : tables_.release();
            if (outer) firstNew_ = 0;
        } catch (...) {
            forget();
            if (outer) {
                tables_.rollback();
                touched_.clear();
                firstNew_ = 0;
            } else if (tables_.inTransaction()) {
                tables_.rollbackToSavepoint();
                tables_.release();
            }
            --depth_;
            throw;
        }
        --depth_;
    } catch (const sqlite::Error& error) {
        if (depth_ == 0) tables_.rollback();   // what failed right behind the beginning
        throw storeError(error, file_, regerr::NoAssignment);
    }
}

void SqliteStore::flushTouched() {
    const std::uint64_t now = fileTimeNow();
    for (const std::int64_t key : touched_) tables_.setWritten(key, now);
    touched_.clear();
}

void SqliteStore::refresh(std::int64_t version) {
    if (version != dataVersion_) forget();
    dataVersion_ = version;
}

void SqliteStore::forget() {
    keys_.clear();
    newAreKnown_ = false;
    forgetLinks();
}

void SqliteStore::forgetLinks() {
    lastWritten_.reset();
    controlSet_.clear();
    userSid_.clear();
}

// ---- Where a path leads ----

SqliteStore::Place SqliteStore::place(Root root, std::string_view key) {
    switch (root) {
        case Root::LocalMachine: return machinePlace(key);
        case Root::Users: return {UsersKeyId, std::string(key)};
        case Root::CurrentUser: return {UsersKeyId, joinKey(userSid(), key)};
        case Root::CurrentConfig: return machinePlace(joinKey(HardwareProfilePath, key));
        case Root::ClassesRoot:
        case Root::DynData: break;
    }
    return {};
}

SqliteStore::Place SqliteStore::machinePlace(std::string_view key) {
    return {MachineKeyId, isControlSetLink(key) ? throughControlSet(key, controlSet()) : std::string(key)};
}

const std::string& SqliteStore::controlSet() {
    if (!controlSet_.empty()) return controlSet_;
    std::optional<RawValue> current;
    if (const auto select = find({MachineKeyId, "System\\Select"})) current = tables_.value(select->id, foldedName(ValueName::named("Current")));
    controlSet_ = controlSetOf(current);
    return controlSet_;
}

const std::string& SqliteStore::userSid() {
    if (!userSid_.empty()) return userSid_;
    const std::vector<std::string> profiles = tables_.childrenByAge(UsersKeyId);
    const auto own = std::find_if(profiles.begin(), profiles.end(), isProfileName);
    userSid_ = own == profiles.end() ? FirstUserSid : *own;
    return userSid_;
}

std::string SqliteStore::currentUserSid() {
    return reading([&] { return userSid(); });
}

// From the longest part of the path that is known, one step for each name.
SqliteStore::Reached SqliteStore::reach(std::int64_t base, std::u16string_view path) {
    std::u16string_view known = path;
    std::optional<KeyRef> key;
    while (!key) {
        if (known.size() == 1) {
            key = KeyRef{base, false};
        } else if (const auto entry = keys_.find(known); entry != keys_.end()) {
            key = entry->second;
        } else {
            known = known.substr(0, std::max<std::size_t>(known.rfind(u'\\') + 1, 2) - 1);
        }
    }
    while (known.size() < path.size() && !(isNew(*key) && newAreKnown_)) {
        const auto next = path.substr(0, endOfNext(path, known.size()));
        const auto child = tables_.child(key->id, foldedBytes(lastName(next)));
        if (!child) break;
        key = child;
        known = next;
        remember(known, *key);
    }
    return {*key, known.size()};
}

std::optional<KeyRef> SqliteStore::find(const Place& place) {
    if (place.base == 0) return std::nullopt;
    const std::u16string path = cachePath(place.base, place.path);
    const Reached reached = reach(place.base, path);
    return reached.units == path.size() ? std::optional(reached.key) : std::nullopt;
}

std::optional<KeyRef> SqliteStore::findClasses(bool user, std::string_view key) {
    return find(user ? Root::CurrentUser : Root::LocalMachine, joinKey(ClassesPath, key));
}

std::vector<KeyRef> SqliteStore::findLayers(Root root, std::string_view key) {
    std::vector<KeyRef> layers;
    const auto add = [&](const std::optional<KeyRef>& found) {
        if (found) layers.push_back(*found);
    };
    if (root == Root::ClassesRoot) {
        add(findClasses(true, key));
        add(findClasses(false, key));
    } else {
        add(find(root, key));
    }
    return layers;
}

std::optional<KeyRef> SqliteStore::findAny(Root root, std::string_view key) {
    const std::vector<KeyRef> layers = findLayers(root, key);
    return layers.empty() ? std::nullopt : std::optional(layers.front());
}

SqliteStore::Place SqliteStore::writePlace(Root root, std::string_view key) {
    if (root != Root::ClassesRoot) return place(root, key);
    return place(!key.empty() && findClasses(true, key) ? Root::CurrentUser : Root::LocalMachine, joinKey(ClassesPath, key));
}

KeyRef SqliteStore::obtain(const Place& place) {
    if (place.base == 0) throw RegError(regerr::NoAccess, "HKEY_DYN_DATA kann nicht geändert werden.");
    const std::u16string path = cachePath(place.base, place.path);
    auto [key, units] = reach(place.base, path);
    if (units == path.size()) return key;
    checkKeyPath(place.path);   // bounds the depth
    std::string_view names = place.path;
    for (auto there = units == 1 ? 0 : 1 + std::count(path.begin(), path.begin() + static_cast<std::ptrdiff_t>(units), u'\\'); there > 0; --there)
        names.remove_prefix(names.find('\\') + 1);
    while (units < path.size()) {
        requireWritableKey(key);
        touch(key);
        if (key.id == UsersKeyId) forgetLinks();
        const std::string_view name = names.substr(0, names.find('\\'));
        names.remove_prefix(std::min(name.size() + 1, names.size()));
        units = endOfNext(path, units);
        const std::u16string_view made = std::u16string_view(path).substr(0, units);
        key = tables_.insertKey(key.id, foldedBytes(lastName(made)), name, fileTimeNow());
        if (firstNew_ == 0) firstNew_ = key.id;
        remember(made, key);
    }
    return key;
}

void SqliteStore::remember(std::u16string_view path, const KeyRef& key) {
    if (keys_.size() >= MaxCachedKeys) {
        keys_.clear();
        newAreKnown_ = false;
    }
    keys_.emplace(path, key);
}

// A program mostly writes several values of one key.
KeyRef SqliteStore::obtainAgain(Root root, std::string_view key) {
    if (lastWritten_ && lastWritten_->root == root && lastWritten_->key == key) return lastWritten_->ref;
    const KeyRef target = obtain(writePlace(root, key));
    if (root != Root::ClassesRoot) lastWritten_ = {root, std::string(key), target};   // there a new user's key changes the way
    return target;
}

// ---- Operations ----

bool SqliteStore::keyExists(Root root, std::string_view key) {
    if (key.empty()) return true;
    return reading([&] { return findAny(root, key).has_value(); });
}

bool SqliteStore::canOpen(Root root, std::string_view key, std::uint32_t mask) {
    const bool toWrite = (mask & WriteMask) != 0;
    return reading([&] {
        if (toWrite && (!writable() || root == Root::DynData)) return false;
        const auto found = findAny(root, key);
        if (!found) return key.empty();
        return !toWrite || !found->readOnly;
    });
}

std::vector<std::string> SqliteStore::subKeys(Root root, std::string_view key) {
    return reading([&] {
        std::vector<ChildName> merged;
        for (const KeyRef& layer : findLayers(root, key)) {
            std::vector<ChildName> added = tables_.children(layer.id), both;
            std::set_union(merged.begin(), merged.end(), added.begin(), added.end(), std::back_inserter(both),
                           [](const ChildName& a, const ChildName& b) { return a.folded < b.folded; });
            merged = std::move(both);
        }
        if (root == Root::LocalMachine && sameAscii(key, "system") && find({MachineKeyId, "System\\" + controlSet()})) {
            const ChildName link{CurrentControlSetName, foldedBytesOf(CurrentControlSetName)};
            const auto at = std::lower_bound(merged.begin(), merged.end(), link, [](const ChildName& a, const ChildName& b) { return a.folded < b.folded; });
            merged.insert(at, link);
        }
        std::vector<std::string> names;
        names.reserve(merged.size());
        for (ChildName& child : merged) names.push_back(std::move(child.name));
        return names;
    });
}

std::optional<RawValue> SqliteStore::value(Root root, std::string_view key, const ValueName& name) {
    return reading([&]() -> std::optional<RawValue> {
        const std::string folded = foldedName(name);
        for (const KeyRef& layer : findLayers(root, key)) {
            if (auto found = tables_.value(layer.id, folded)) return found;
        }
        return std::nullopt;
    });
}

bool SqliteStore::hasValue(Root root, std::string_view key, const ValueName& name) {
    return reading([&] {
        const std::string folded = foldedName(name);
        const std::vector<KeyRef> layers = findLayers(root, key);
        return std::any_of(layers.begin(), layers.end(), [&](const KeyRef& layer) { return tables_.hasValue(layer.id, folded); });
    });
}

std::vector<NamedValue> SqliteStore::values(Root root, std::string_view key) {
    return reading([&] {
        std::vector<NamedValue> merged;
        std::unordered_set<std::string> seen;
        for (const KeyRef& layer : findLayers(root, key)) {
            for (StoredValue& found : tables_.values(layer.id)) {
                if (root != Root::ClassesRoot || seen.insert(foldedBytesOf(found.name)).second)
                    merged.push_back({ValueName::named(std::move(found.name)), std::move(found.value)});
            }
        }
        return merged;
    });
}

void SqliteStore::createKey(Root root, std::string_view key) {
    writing([&] {
        if (!key.empty()) obtain(writePlace(root, key));
    });
}

void SqliteStore::setValue(Root root, std::string_view key, const ValueName& name, const RawValue& value) {
    checkValue(name.text(), value);
    writing([&] {
        const KeyRef target = obtainAgain(root, key);
        requireWritableKey(target);
        if (isNew(target)) {
            tables_.putFirstValue(target.id, foldedName(name), name.text(), value);
        } else {
            tables_.putValue(target.id, foldedName(name), name.text(), value);
        }
        touch(target);
        if (sameAscii(name.text(), "current")) forgetLinks();
    });
}

bool SqliteStore::deleteValue(Root root, std::string_view key, const ValueName& name) {
    bool deleted = false;
    writing([&] {
        for (const KeyRef& layer : findLayers(root, key)) {
            if (!tables_.hasValue(layer.id, foldedName(name))) continue;
            requireWritableKey(layer);
            deleted = tables_.eraseValue(layer.id, foldedName(name));
            touch(layer);
            if (sameAscii(name.text(), "current")) forgetLinks();
            return;
        }
    });
    return deleted;
}

bool SqliteStore::deleteKey(Root root, std::string_view key) {
    // The link itself is no key of the store, and its target is deleted under its own name only.
    if (key.empty() || root == Root::DynData || isLink(root, key)) return false;
    bool deleted = false;
    writing([&] {
        const Place target = writePlace(root, key);
        const auto found = find(target);
        if (!found || tables_.hasChildren(found->id)) return;
        requireWritableKey(*found);
        const auto parent = find({target.base, std::string(parentKey(target.path))});
        if (!parent) return;
        requireWritableKey(*parent);
        tables_.eraseKey(found->id);
        keys_.erase(cachePath(target.base, target.path));
        lastWritten_.reset();
        if (parent->id == UsersKeyId) forgetLinks();
        touch(*parent);
        deleted = true;
    });
    return deleted;
}

bool SqliteStore::isEmpty() {
    return reading([&] { return !tables_.hasChildren(MachineKeyId) && !tables_.hasChildren(UsersKeyId); });
}

void SqliteStore::setReadOnly(Root root, std::string_view key, bool readOnly) {
    writing([&] {
        for (const KeyRef& layer : findLayers(root, key)) tables_.setReadOnly(layer.id, readOnly);
        forget();
    });
}

RealKey SqliteStore::realKey(Root root, std::string_view key) {
    return reading([&]() -> RealKey {
        Place at = writePlace(root, key);
        if (at.base == 0) return {root, std::string(key)};
        return {at.base == UsersKeyId ? Root::Users : Root::LocalMachine, std::move(at.path)};
    });
}

std::optional<KeyDetails> SqliteStore::details(Root root, std::string_view key) {
    return reading([&]() -> std::optional<KeyDetails> {
        const auto found = findAny(root, key);
        if (!found) return std::nullopt;
        return tables_.details(found->id);
    });
}

void SqliteStore::setDetails(Root root, std::string_view key, const KeyDetails& details) {
    writing([&] {
        const auto found = findAny(root, key);
        if (!found) throw RegError(regerr::NoAccess, "Der Schlüssel ist nicht vorhanden.");
        tables_.setDetails(found->id, details);
        touched_.erase(found->id);
        firstNew_ = NoneIsNew;   // what is written from here on moves its time again
        forget();
    });
}

// ---- Whole trees ----

void SqliteStore::walk(Root root, std::string_view key, TreeSink& sink) {
    if (root == Root::ClassesRoot || root == Root::DynData) return RegStore::walk(root, key, sink);
    reading([&] {
        const auto found = find(root, key);
        if (!found) return;
        sink.enter(lastKeyName(key), tables_.details(found->id));
        std::optional<CacheOfAWalk> cache;
        if (depth_ == 0) cache.emplace(*opened_.database);   // else it holds changes that are not on the disk yet
        StoreWalk(*opened_.database, tables_).below(found->id, sink);
        sink.leave();
    });
}

void SqliteStore::fill(Root root, std::string_view key, const std::function<void(TreeSink&)>& source) {
    writing([&] {
        const KeyRef target = obtain(writePlace(root, key));
        SqliteTreeSink sink(tables_, target, fileTimeNow());
        source(sink);
        for (const std::int64_t kept : sink.told()) touched_.erase(kept);   // their times came with them
        firstNew_ = NoneIsNew;
        forget();
    });
}

void SqliteStore::clear(Root root, std::string_view key) {
    if (root == Root::ClassesRoot) return RegStore::clear(root, key);
    writing([&] {
        const auto found = find(root, key);
        if (!found) return;
        if (tables_.hasReadOnlyBelow(found->id)) requireWritableKey({found->id, true});
        tables_.eraseBelow(found->id);
        touch(*found);
        forget();
    });
}

}  // namespace brenvik
