#include "lists/undo/RegAddress.h"

#include "frame/files/FileSystem.h"
#include "frame/text/Conversions.h"
#include "lists/journal/Journal.h"
#include "registry/Upcase.h"
#include "registry/store/RegLinks.h"

namespace brenvik {
namespace {

std::string folded(const std::string& name) {
    const std::u16string units = foldName(name);
    return {reinterpret_cast<const char*>(units.data()), units.size() * sizeof(char16_t)};
}

RegPath keyOf(const std::string& path) { return parseRegPath(path + "\\"); }

RegPath partsOf(const ValueChange& value) {
    if (!value.name) return parseRegPath(value.path);
    RegPath place = keyOf(value.path);
    place.name = ValueName::named(*value.name);
    return place;
}

RegAddress realAddress(RegStore& store, std::string machine, Root root, const std::string& key, std::optional<ValueName> name) {
    const RealKey real = store.realKey(root, key);
    return {std::move(machine), real.root, real.key, std::move(name)};
}

// HKEY_CURRENT_USER was that of whoever made the change.
RegPath withOwner(RegPath place, const JournalHeader& change) {
    if (place.root == Root::CurrentUser && !change.sid.empty()) {
        place.root = Root::Users;
        place.key = joinKey(change.sid, place.key);
    }
    return place;
}

RegAddress formerAddress(Context& ctx, const JournalHeader& change, RegPath place, std::optional<ValueName> name) {
    place = withOwner(std::move(place), change);
    const std::string machine = markOf(ctx, change);
    if (!atHand(ctx, machine)) return {machine, place.root, place.key, std::move(name)};
    return realAddress(storeOf(ctx, machine), machine, place.root, place.key, std::move(name));
}

}  // namespace

std::string RegAddress::keyPath() const { return joinKey(longRootName(root), key); }

std::string RegAddress::path() const { return name ? keyPath() + "\\" + name->text() : keyPath(); }

std::string RegAddress::id() const {
    const std::string place = (isFolder(machine) ? machine : folded(machine)) + "\n" + longRootName(root) + "\n" + folded(key);
    return name ? place + folded("\\\\") + folded(name->text()) : place;   // no path of keys has two of them
}

bool RegAddress::isBelow(const std::string& keyId) const {
    const std::string own = id();
    return own.starts_with(keyId) && own.compare(keyId.size(), 2, folded("\\")) == 0;
}

bool isFolder(const std::string& machine) { return machine.find('/') != std::string::npos; }

std::string machineMark(const FrameContext& ctx, const std::string& machine) {
    if (machine.empty() || equalText(machine, ctx.strLokalerRechner)) return {};
    if (!isFolder(machine)) return machine;
    std::error_code error;
    const auto folder = std::filesystem::weakly_canonical(pathFromUtf8(machine), error);
    return error ? machine : utf8FromPath(folder.has_filename() ? folder : folder.parent_path());
}

bool sameMachine(const std::string& mark, const std::string& other) {
    return isFolder(mark) || isFolder(other) ? mark == other : equalText(mark, other);
}

std::string markOf(const FrameContext& ctx, const JournalHeader& change) {
    if (change.machineName.empty() || equalText(change.machineName, change.localMachine)) return {};
    return isFolder(change.machineName) ? machineMark(ctx, change.machineName) : change.machineName;
}

bool atHand(const FrameContext& ctx, const std::string& mark) { return mark.empty() || sameMachine(mark, machineMark(ctx, ctx.strRechnername)); }

RegStore& storeOf(Context& ctx, const std::string& mark) {
    ctx.objBVKReg.SetPath(mark, std::string(longRootName(Root::LocalMachine)) + "\\");
    return ctx.objBVKReg.selectedStore();
}

std::string givenPath(const ValueChange& value) { return value.name ? value.path + "\\" + *value.name : value.path; }

RegAddress addressForWriting(Context& ctx, const ValueChange& value, bool deletes) {
    const std::string machine = machineMark(ctx, value.machine);
    const RegPath place = partsOf(value);
    RegStore& store = storeOf(ctx, machine);
    // Of two values that HKCR shows as one, a deletion takes the one that is seen.
    if (place.root == Root::ClassesRoot && deletes) {
        const RegAddress users = realAddress(store, machine, Root::CurrentUser, joinKey(ClassesPath, place.key), place.name);
        const bool seen = store.value(users.root, users.key, place.name).has_value();
        return seen ? users : realAddress(store, machine, Root::LocalMachine, joinKey(ClassesPath, place.key), place.name);
    }
    return realAddress(store, machine, place.root, place.key, place.name);
}

RegAddress keyAddress(Context& ctx, const std::string& machine, const std::string& path) {
    const std::string mark = machineMark(ctx, machine);
    const RegPath place = keyOf(path);
    return realAddress(storeOf(ctx, mark), mark, place.root, place.key, std::nullopt);
}

RegAddress addressOf(Context& ctx, const JournalHeader& change, const ValueChange& value) {
    RegPath place = partsOf(value);
    if (value.name) return {markOf(ctx, change), place.root, std::move(place.key), std::move(place.name)};
    ValueName name = place.name;
    return formerAddress(ctx, change, std::move(place), std::move(name));
}

RegAddress addressOf(Context& ctx, const JournalHeader& change, const std::string& keyPath) { return formerAddress(ctx, change, keyOf(keyPath), std::nullopt); }

RegAddress pairAddress(Context& ctx, const JournalEntry& change, std::size_t k) {
    for (const ValueChange& value : change.change.values)
        if (RegAddress place = addressOf(ctx, change, value); equalText(place.path(), change.pairs[k]) || equalText(givenPath(value), change.pairs[k])) return place;
    ValueChange place;
    place.path = change.pairs[k];
    return addressOf(ctx, change, place);
}

std::string shownPath(const FrameContext& ctx, const RegAddress& address) {
    const std::string own = lowerCase(ctx.strEigeneSID) + "\\";
    if (address.machine.empty() && address.root == Root::Users && own.size() > 1 && startsWithKey(address.key, lowerCase(ctx.strEigeneSID))) {
        RegAddress shown = address;
        shown.root = Root::CurrentUser;
        shown.key = address.key.size() > own.size() ? address.key.substr(own.size()) : std::string();
        return shown.path();
    }
    return address.path();
}

}  // namespace brenvik
