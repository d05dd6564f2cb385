#include "registry/hivefile/HiveStore.h"

#include <algorithm>

#include "registry/Upcase.h"
#include "registry/Wtf8.h"
#include "registry/hivefile/HiveCommit.h"
#include "registry/machine/Hibernation.h"
#include "registry/store/RegLimits.h"
#include "registry/store/RegLinks.h"
#include "registry/store/RegTree.h"

namespace brenvik {

namespace {

constexpr std::uint32_t WriteMask = 0x500D0026;   // set value, create sub key or link, delete, change rights, generic write and all

std::string_view firstName(std::string_view path) { return path.substr(0, std::min(path.find('\\'), path.size())); }
std::string_view behindFirst(std::string_view path) { return path.substr(std::min(path.find('\\') + 1, path.size())); }

std::string_view remaining(std::string_view path) { return path.find('\\') == std::string_view::npos ? std::string_view() : behindFirst(path); }

std::size_t depthOf(std::string_view path) {
    return path.empty() ? 1 : 2 + static_cast<std::size_t>(std::count(path.begin(), path.end(), '\\'));
}

// The position of a value, or the number of values.
std::size_t indexOf(HiveKey& key, std::string_view name) {
    const HiveValue* const value = key.value(name);
    return value == nullptr ? key.values.size() : static_cast<std::size_t>(value - key.values.data());
}

// A hive's root is told by the name of the place that it stands at. What the hive holds in the place of a link cannot be
// reached there and is left out.
class PlacedSink final : public TreeSink {
public:
    PlacedSink(TreeSink& sink, std::string_view name, std::string link) : sink_(sink), name_(name), link_(std::move(link)) {}

    void enter(std::string_view name, const KeyDetails& details) override {
        lengths_.push_back(path_.size());
        const bool top = lengths_.size() == 1;
        if (!top && path_.size() <= link_.size()) path_ = joinKey(path_, name);   // longer ones are not looked at
        if (hidden_ == 0 && !link_.empty() && sameName(path_, link_)) hidden_ = lengths_.size();
        if (hidden_ == 0) sink_.enter(top && !name_.empty() ? name_ : name, details);
    }
    void value(std::string_view name, const RawValue& value) override {
        if (hidden_ == 0) sink_.value(name, value);
    }
    void leave() override {
        if (hidden_ == 0) sink_.leave();
        if (hidden_ == lengths_.size()) hidden_ = 0;
        path_.resize(lengths_.back());
        lengths_.pop_back();
    }

private:
    TreeSink& sink_;
    std::string_view name_;
    std::string link_, path_;             // below the first key
    std::vector<std::size_t> lengths_;    // of the path before each key under way
    std::size_t hidden_ = 0;              // depth of the key that is left out, 0: none
};

bool lessName(const std::string& a, const std::string& b) { return compareNames(a, b) < 0; }
bool equalName(const std::string& a, const std::string& b) { return sameName(a, b); }

}  // namespace

void HiveStore::mount(Root root, std::string place, std::shared_ptr<HiveFile> file) {
    mounts_.push_back({root, std::move(place), std::move(file)});
}

void HiveStore::mountMissing(Root root, std::string place, std::string reason) {
    mounts_.push_back({root, std::move(place), nullptr, std::move(reason)});
}

bool HiveStore::standsBelow(const HiveFile& file, std::string_view sid) const {
    return std::any_of(mounts_.begin(), mounts_.end(), [&](const Mount& m) {
        return m.root == Root::Users && m.file.get() == &file && (sameName(m.place, sid) || sameName(m.place, std::string(sid) + "_Classes"));
    });
}

// ---- Where a path leads ----

bool HiveStore::hasMount(Root root, std::string_view place) const {
    return std::any_of(mounts_.begin(), mounts_.end(), [&](const Mount& m) { return m.root == root && sameName(m.place, place); });
}

HiveStore::Place HiveStore::mounted(Root root, std::string_view key) {
    if (isSingleHive()) return root == mounts_.front().root ? Place{mounts_.front().file.get(), std::string(key), true} : Place{};
    if (key.empty()) return {nullptr, {}, true};
    for (const Mount& m : mounts_) {
        if (m.root != root || !sameName(m.place, firstName(key))) continue;
        if (m.file == nullptr) throw RegError(regerr::KeyNotRead, m.missing);
        return {m.file.get(), std::string(remaining(key)), true};
    }
    return {};
}

HiveStore::Place HiveStore::place(Root root, std::string_view key) {
    if (isSingleHive()) return mounted(root, key);
    switch (root) {
        case Root::LocalMachine: return machinePlace(key);
        case Root::Users: return userPlace(key);
        case Root::CurrentUser:
            if (userSid_.empty() && !usersUnknown_.empty()) throw RegError(regerr::KeyNotRead, usersUnknown_);
            return userSid_.empty() ? Place{} : userPlace(joinKey(userSid_, key));
        case Root::CurrentConfig: return machinePlace(joinKey(hardwareProfile(), key));
        case Root::ClassesRoot:
        case Root::DynData: break;
    }
    return {};
}

HiveStore::Place HiveStore::machinePlace(std::string_view key) {
    return mounted(Root::LocalMachine, isControlSetLink(key) ? throughControlSet(key, controlSet()) : std::string(key));
}

// A user's classes lie in a file of their own in newer systems, to which a link in the other file leads.
std::string HiveStore::throughClasses(std::string_view key) const {
    const std::string_view sid = firstName(key), rest = remaining(key);
    if (startsWithKey(rest, "software\\classes")) {
        const std::string classes = std::string(sid) + "_Classes";
        constexpr std::size_t length = std::string_view("software\\classes").size();
        if (hasMount(Root::Users, classes)) return joinKey(classes, rest.size() == length ? std::string_view() : rest.substr(length + 1));
    }
    return std::string(key);
}

HiveStore::Place HiveStore::userPlace(std::string_view key) { return mounted(Root::Users, throughClasses(key)); }

RealKey HiveStore::realKey(Root root, std::string_view key) {
    if (isSingleHive()) return {root, std::string(key)};
    switch (root) {
        case Root::LocalMachine: return {root, isControlSetLink(key) ? throughControlSet(key, controlSet()) : std::string(key)};
        case Root::CurrentConfig: return realKey(Root::LocalMachine, joinKey(hardwareProfile(), key));
        case Root::CurrentUser: return userSid_.empty() ? RealKey{root, std::string(key)} : realKey(Root::Users, joinKey(userSid_, key));
        case Root::ClassesRoot: {
            const std::string path = joinKey(ClassesPath, key);
            return realKey(!key.empty() && find(place(Root::CurrentUser, path)) != nullptr ? Root::CurrentUser : Root::LocalMachine, path);
        }
        case Root::DynData: return {root, std::string(key)};
        case Root::Users: break;
    }
    const std::string real = throughClasses(key);
    // A file may stand at several places: the first of them counts.
    const Mount* own = nullptr;
    for (const Mount& m : mounts_)
        if (m.root == root && sameName(m.place, firstName(real))) own = &m;
    for (const Mount& m : mounts_)
        if (own != nullptr && m.root == root && m.file == own->file) return {root, joinKey(m.place, remaining(real))};
    return {root, real};
}

// The link that the hive of a key leads to elsewhere, if it stands below that key; "" if there is none.
std::string HiveStore::linkBelow(Root root, std::string_view key) const {
    if (isSingleHive()) return {};
    if (root == Root::LocalMachine) return sameAscii(key, "system") ? joinKey(key, CurrentControlSetName) : std::string();
    const bool own = root == Root::CurrentUser;
    if (!own && (root != Root::Users || key.empty())) return {};
    const std::string user(own ? std::string_view() : firstName(key));
    const std::string_view rest = own ? key : remaining(key);
    if ((!rest.empty() && !sameAscii(rest, "software")) || !hasMount(Root::Users, (own ? userSid_ : user) + "_Classes")) return {};
    return joinKey(user, ClassesPath);
}

bool HiveStore::isLink(Root root, std::string_view key) {
    if (isSingleHive() || key.empty()) return false;
    if (const std::string link = linkBelow(root, parentKey(key)); !link.empty() && sameName(link, key)) return true;
    const auto at = std::find_if(mounts_.begin(), mounts_.end(), [&](const Mount& m) { return m.root == root && sameName(m.place, key); });
    return at != mounts_.end() && std::any_of(mounts_.begin(), at, [&](const Mount& m) { return m.root == root && m.file == at->file; });
}

std::vector<std::string> HiveStore::linksOut(Root root, std::string_view key) {
    if (root != Root::CurrentUser && root != Root::Users) return {};
    std::string link = linkBelow(root, key);
    return link.empty() ? std::vector<std::string>() : std::vector<std::string>{std::move(link)};
}

std::string HiveStore::controlSet() {
    HiveKey* const select = find(mounted(Root::LocalMachine, "System\\Select"));
    const HiveValue* const current = select == nullptr ? nullptr : select->value("Current");
    return controlSetOf(current == nullptr ? std::nullopt : std::optional(current->data));
}

// On the disk the key "Current" is mostly missing, since Windows makes the link at each start.
std::string HiveStore::hardwareProfile() {
    HiveKey* const linked = find(machinePlace(HardwareProfilePath));
    if (linked != nullptr && (linked->flags & hivefmt::nk::SymLink) == 0) return HardwareProfilePath;
    std::uint32_t number = 1;
    HiveKey* const chosen = find(machinePlace("System\\CurrentControlSet\\Control\\IDConfigDB"));
    if (const HiveValue* const value = chosen == nullptr ? nullptr : chosen->value("CurrentConfig"); value != nullptr && value->data.bytes.size() == 4) {
        number = hivefmt::get32(value->data.bytes.data());
    }
    const std::string digits = std::to_string(number);
    return "System\\CurrentControlSet\\Hardware Profiles\\" + std::string(digits.size() < 4 ? 4 - digits.size() : 0, '0') + digits;
}

HiveKey* HiveStore::find(const Place& place) {
    return place.file == nullptr ? nullptr : place.file->hive().findPath(place.path);
}

std::vector<HiveStore::Place> HiveStore::layers(Root root, std::string_view key) {
    std::vector<Place> found;
    const auto add = [&](Place candidate) {
        if (find(candidate) != nullptr) found.push_back(std::move(candidate));
    };
    if (root == Root::ClassesRoot && !isSingleHive()) {
        add(place(Root::CurrentUser, joinKey(ClassesPath, key)));
        add(place(Root::LocalMachine, joinKey(ClassesPath, key)));
    } else {
        add(place(root, key));
    }
    return found;
}

HiveStore::Place HiveStore::writePlace(Root root, std::string_view key) {
    if (root != Root::ClassesRoot || isSingleHive()) return place(root, key);
    const std::string path = joinKey(ClassesPath, key);
    Place users = place(Root::CurrentUser, path);
    return !key.empty() && find(users) != nullptr ? users : place(Root::LocalMachine, path);
}

// ---- Reading ----

bool HiveStore::keyExists(Root root, std::string_view key) {
    if (key.empty()) return true;
    return !layers(root, key).empty();
}

bool HiveStore::canOpen(Root root, std::string_view key, std::uint32_t mask) {
    const std::vector<Place> found = layers(root, key);
    const bool toWrite = (mask & WriteMask) != 0;
    if (found.empty()) return key.empty() && !toWrite;
    return !toWrite || found.front().file->writable();
}

std::vector<std::string> HiveStore::subKeys(Root root, std::string_view key) {
    std::vector<std::string> names;
    if (const Place at = place(root, key); at.file == nullptr && root != Root::ClassesRoot) {
        for (const Mount& m : mounts_) {
            if (at.exists && m.root == root && m.file != nullptr) names.push_back(m.place);
        }
        std::sort(names.begin(), names.end(), lessName);
        return names;
    }
    for (const Place& layer : layers(root, key)) {
        std::vector<std::string> both;
        std::vector<std::string> added;
        for (const HiveKey& subKey : find(layer)->subKeys) added.push_back(subKey.name);
        std::set_union(names.begin(), names.end(), added.begin(), added.end(), std::back_inserter(both), lessName);
        names = std::move(both);
    }
    if (const std::string link = linkBelow(root, key); !link.empty() && sameName(parentKey(link), key) && keyExists(root, link)) {
        const std::string name(lastKeyName(link));
        const auto at = std::lower_bound(names.begin(), names.end(), name, lessName);
        if (at == names.end() || !equalName(*at, name)) names.insert(at, name);
    }
    return names;
}

std::optional<RawValue> HiveStore::value(Root root, std::string_view key, const ValueName& name) {
    for (const Place& layer : layers(root, key)) {
        if (const HiveValue* const found = find(layer)->value(name.text())) return found->data;
    }
    return std::nullopt;
}

bool HiveStore::hasValue(Root root, std::string_view key, const ValueName& name) {
    const std::vector<Place> found = layers(root, key);
    return std::any_of(found.begin(), found.end(), [&](const Place& layer) { return find(layer)->value(name.text()) != nullptr; });
}

std::vector<NamedValue> HiveStore::values(Root root, std::string_view key) {
    std::vector<NamedValue> merged;
    const HiveKey* covering = nullptr;
    for (const Place& layer : layers(root, key)) {
        const HiveKey& from = *find(layer);
        for (const HiveValue& value : from.values) {
            if (covering == nullptr || covering->value(value.name) == nullptr) merged.push_back({ValueName::named(value.name), value.data});
        }
        covering = &from;
    }
    return merged;
}

std::optional<KeyDetails> HiveStore::details(Root root, std::string_view key) {
    const std::vector<Place> found = layers(root, key);
    if (found.empty()) return keyExists(root, key) ? std::optional(KeyDetails()) : std::nullopt;
    return detailsOf(found.front().file->hive(), *find(found.front()));
}

void HiveStore::walk(Root root, std::string_view key, TreeSink& sink) {
    const Place at = place(root, key);
    if (at.file == nullptr) return RegStore::walk(root, key, sink);
    try {   // what the sink throws is not meant
        at.path.empty() ? at.file->open() : static_cast<void>(at.file->hive());
    } catch (const RegError& error) {
        return sink.unreadable(lastKeyName(key), error);
    }
    const std::string link = linkBelow(root, key);
    const bool namedSo = key.empty() || (!at.path.empty() && sameName(lastKeyName(at.path), lastKeyName(key)));
    if (link.empty() && namedSo) return at.file->walk(at.path, sink);
    PlacedSink placed(sink, lastKeyName(key), link.empty() || key.empty() ? link : link.substr(key.size() + 1));
    at.file->walk(at.path, placed);
}

// ---- Changes ----

bool HiveStore::writable() {
    return std::any_of(mounts_.begin(), mounts_.end(), [](const Mount& m) { return m.file != nullptr && m.file->writable(); });
}

void HiveStore::transaction(const std::function<void()>& changes) {
    const std::size_t mark = undo_.size();
    ++depth_;
    try {
        changes();
        if (depth_ == 1) write(mark);
    } catch (...) {
        rollBack(mark);
        --depth_;
        throw;
    }
    if (--depth_ == 0) undo_.clear();
}

void HiveStore::writing(const std::function<void()>& work) { transaction(work); }

void HiveStore::rollBack(std::size_t to) {
    while (undo_.size() > to) {
        undo_.back().revert(undo_.back().file->hive());
        undo_.pop_back();
    }
}

std::vector<std::string> HiveStore::questionsBeforeWriting(const std::vector<HiveFile*>& files) {
    for (const HiveFile* const file : files) {
        if (const auto image = hibernatedAbove(file->file())) return {hibernationQuestion(*image)};
    }
    return {};
}

void HiveStore::requireConsent(const std::vector<HiveFile*>& files) {
    for (const std::string& question : questionsBeforeWriting(files)) {
        if (std::find(agreed_.begin(), agreed_.end(), question) != agreed_.end()) continue;
        if (!ask_ || !ask_(question)) throw RegError(regerr::NoAccess, question + " Nein: Es wurde nichts geschrieben.");
        agreed_.push_back(question);
    }
}

// What cannot be finished is read again from the disk, which then is the truth for everybody.
void HiveStore::write(std::size_t from) {
    std::vector<HiveFile*> changed;
    for (std::size_t i = from; i < undo_.size(); ++i) {
        if (std::find(changed.begin(), changed.end(), undo_[i].file) == changed.end()) changed.push_back(undo_[i].file);
    }
    try {
        requireConsent(changed);
        writeTogether(changed);
    } catch (const RegError&) {
        for (HiveFile* const file : changed) {
            file->abandon();
            file->forget();
        }
        undo_.resize(from);
        throw;
    }
}

void HiveStore::touch(const Place& place, HiveKey& key) {
    undo_.push_back({place.file, [path = place.path, before = key.lastWrite](Hive& hive) { hive.findPath(path)->lastWrite = before; }});
    key.lastWrite = fileTimeNow();
}

HiveKey& HiveStore::obtain(const Place& place) {
    if (place.file == nullptr) throw RegError(regerr::NoAccess, "Der Schlüssel liegt in keiner der Hivedateien.");
    checkKeyPath(place.path);
    if (depthOf(place.path) > MaxKeyDepth) throwTooDeep();
    HiveKey* key = &place.file->hive().root;
    std::string path;
    bool made = false;
    for (std::string_view rest = place.path; !rest.empty(); rest = remaining(rest)) {
        const std::string name(firstName(rest));
        HiveKey* next = key->find(name);
        if (next == nullptr) {
            if (!made) {   // with it goes all that is made below
                touch({place.file, path, true}, *key);
                undo_.push_back({place.file, [path, name](Hive& hive) { hive.findPath(path)->erase(name); }});
            }
            made = true;
            next = &key->ensure(name);
            next->lastWrite = fileTimeNow();
        }
        path = joinKey(path, name);
        key = next;
    }
    return *key;
}

void HiveStore::createKey(Root root, std::string_view key) {
    if (key.empty()) return;
    writing([&] { obtain(writePlace(root, key)); });
}

void HiveStore::setValue(Root root, std::string_view key, const ValueName& name, const RawValue& value) {
    checkValue(name.text(), value);
    writing([&] {
        const Place at = writePlace(root, key);
        HiveKey& target = obtain(at);
        const HiveValue* const old = target.value(name.text());
        if (old != nullptr && old->data == value) return;
        undo_.push_back({at.file, [path = at.path, text = name.text(), before = old == nullptr ? std::nullopt : std::optional(old->data)](Hive& hive) {
                             HiveKey& changed = *hive.findPath(path);
                             before ? changed.set(text, *before) : static_cast<void>(changed.eraseValue(text));
                         }});
        touch(at, target);
        target.set(name.text(), value);
    });
}

bool HiveStore::deleteValue(Root root, std::string_view key, const ValueName& name) {
    bool deleted = false;
    writing([&] {
        for (const Place& layer : layers(root, key)) {
            HiveKey& target = *find(layer);
            const std::size_t index = indexOf(target, name.text());
            if (index == target.values.size()) continue;
            touch(layer, target);
            undo_.push_back({layer.file, [path = layer.path, index, before = target.values[index]](Hive& hive) {
                                 HiveKey& changed = *hive.findPath(path);
                                 changed.values.insert(changed.values.begin() + static_cast<std::ptrdiff_t>(index), before);
                             }});
            target.values.erase(target.values.begin() + static_cast<std::ptrdiff_t>(index));
            deleted = true;
            return;
        }
    });
    return deleted;
}

bool HiveStore::deleteKey(Root root, std::string_view key) {
    if (key.empty() || (root == Root::LocalMachine && !isSingleHive() && sameAscii(key, "system\\currentcontrolset"))) return false;
    bool deleted = false;
    writing([&] {
        const Place at = writePlace(root, key);
        const HiveKey* const found = find(at);
        if (found == nullptr || at.path.empty() || !found->subKeys.empty()) return;   // a hive's root stays
        const Place above{at.file, std::string(parentKey(at.path)), true};
        HiveKey& parent = *find(above);
        touch(above, parent);
        undo_.push_back({at.file, [path = above.path, before = *found](Hive& hive) { hive.findPath(path)->ensure(before.name) = before; }});
        parent.erase(lastKeyName(at.path));
        deleted = true;
    });
    return deleted;
}

void HiveStore::setDetails(Root root, std::string_view key, const KeyDetails& details) {
    writing([&] {
        const std::vector<Place> found = layers(root, key);
        if (found.empty()) throw RegError(regerr::NoAccess, "Der Schlüssel ist nicht vorhanden.");
        const Place& at = found.front();
        HiveKey& target = *find(at);
        undo_.push_back({at.file, [path = at.path, name = target.className, time = target.lastWrite, security = target.security, flags = target.flags,
                                   userFlags = target.userFlags](Hive& hive) {
                             HiveKey& changed = *hive.findPath(path);
                             changed.className = name;
                             changed.lastWrite = time;
                             changed.security = security;
                             changed.flags = flags;
                             changed.userFlags = userFlags;
                         }});
        target.className = fromUtf16Le(details.className.data(), details.className.size());
        if (details.written != KeyDetails::NoTime) target.lastWrite = details.written;
        target.flags = hivefmt::withTravelling(target.flags, details.flags);
        target.userFlags = details.userFlags;
        target.security = details.descriptor.empty() ? HiveKey::NoSecurity : at.file->hive().addDescriptor(details.descriptor);
    });
}

void HiveStore::fill(Root root, std::string_view key, const std::function<void(TreeSink&)>& source) {
    writing([&] {
        const Place at = writePlace(root, key);
        HiveKey& target = obtain(at);
        undo_.push_back({at.file, [path = at.path, before = target](Hive& hive) { *hive.findPath(path) = before; }});
        HiveTreeSink sink(at.file->hive(), target, fileTimeNow(), depthOf(at.path));
        source(sink);
    });
}

void HiveStore::clear(Root root, std::string_view key) {
    if (root == Root::ClassesRoot && !isSingleHive()) return RegStore::clear(root, key);
    const Place at = place(root, key);
    if (at.file == nullptr) {
        if (at.exists) throw RegError(regerr::NoAccess, "Der Schlüssel liegt in keiner der Hivedateien.");
        return;
    }
    writing([&] {
        HiveKey* const target = find(at);
        if (target == nullptr) return;
        touch(at, *target);
        auto before = std::make_shared<std::pair<std::vector<HiveValue>, std::vector<HiveKey>>>(std::move(target->values), std::move(target->subKeys));
        target->values.clear();
        target->subKeys.clear();
        undo_.push_back({at.file, [path = at.path, before](Hive& hive) {
                             HiveKey& changed = *hive.findPath(path);
                             changed.values = std::move(before->first);
                             changed.subKeys = std::move(before->second);
                         }});
    });
}

std::unique_ptr<RegStore> openHiveFile(const std::filesystem::path& file, const HiveOpenOptions& options) {
    auto hive = std::make_shared<HiveFile>(file, options.salvage ? HiveMode::Salvage : HiveMode::Strict);
    hive->open();
    if (options.tell) {
        for (const HiveFinding& finding : hive->findings()) options.tell(finding);
    }
    auto store = std::make_unique<HiveStore>();
    store->setAsk(options.ask);
    store->mount(Root::LocalMachine, "", std::move(hive));
    return store;
}

}  // namespace brenvik
