#include "registry/BVKRegistry.h"

#include <filesystem>
#include <limits>

#include "frame/Errors.h"

namespace brenvik {

namespace fs = std::filesystem;

namespace {

std::int16_t countOf(std::size_t entries) {
    if (entries > static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max())) {
        throw NumberedError(errnum::Overflow, "Der Schlüssel hat mehr als 32767 Einträge.");
    }
    return static_cast<std::int16_t>(entries);
}

fs::path hostPath(const std::string& text) { return fs::path(std::u8string(text.begin(), text.end())); }

// A value that cannot be shown in its own form is shown byte for byte, so that a list is never lost for one of its values.
std::string listText(const RawValue& value) {
    try {
        return toText(value);
    } catch (const RegError&) {
        return bytesText(value.bytes);
    }
}

}  // namespace

RegPath BVKRegistry::selected() const {
    RegPath path = parseRegPath(path_);
    if (valueName_) {
        path.isKey = false;
        path.name = ValueName::named(*valueName_);
    }
    return path;
}

RegPath BVKRegistry::target() const {
    RegPath path = selected();
    if (path.isBareRoot) throw RegError(regerr::NoKey, "\"" + path_ + "\" nennt nur einen Hauptschlüssel.");
    return path;
}

RegStore& BVKRegistry::selectedStore() { return machines_.store(machine_); }

std::int32_t BVKRegistry::ConnectRemote(const std::string& machine, std::uint32_t) { return machines_.connect(machine); }

bool BVKRegistry::Delete() {
    const RegPath path = target();
    if (path.isKey) return selectedStore().deleteKey(path.root, path.key);
    return selectedStore().deleteValue(path.root, path.key, path.name);
}

bool BVKRegistry::DeleteValue() {
    const RegPath path = target();
    return selectedStore().deleteValue(path.root, path.key, path.name);
}

std::vector<std::string> BVKRegistry::subKeyNames() {
    const RegPath path = selected();
    return selectedStore().subKeys(path.root, path.wholeKey());
}

std::vector<std::string> BVKRegistry::EnumSubKeys() { return subKeyNames(); }

std::optional<RawValue> BVKRegistry::ReadRaw() {
    const RegPath path = target();
    return selectedStore().value(path.root, path.key, path.name);
}

std::vector<NamedValue> BVKRegistry::ListRaw() {
    const RegPath path = selected();
    return selectedStore().values(path.root, path.wholeKey());
}

std::int32_t BVKRegistry::ReadType(std::uint32_t) {
    const auto value = ReadRaw();
    return static_cast<std::int32_t>(value ? value->type : regtype::Sz);
}

std::string BVKRegistry::ReadValue(bool defaultValue) {
    const RegPath path = target();
    const auto value = selectedStore().value(path.root, path.key, defaultValue ? ValueName::unnamed() : path.name);
    return value ? toText(*value) : std::string();
}

bool BVKRegistry::WriteValue(std::string_view data, std::int16_t type) {
    const RegPath path = target();
    if (path.isKey && data.empty() && type == 0) {
        selectedStore().createKey(path.root, path.key);
        return true;
    }
    if (type < 0) throw RegError(regerr::NoAssignment, "Der Datentyp " + std::to_string(type) + " ist ungültig.");
    selectedStore().setValue(path.root, path.key, path.name, fromText(data, static_cast<std::uint32_t>(type)));
    return true;
}

void BVKRegistry::WriteRaw(const RawValue& value) {
    const RegPath path = target();
    selectedStore().setValue(path.root, path.key, path.name, value);
}

bool BVKRegistry::CheckAccess(std::uint32_t accessMask) {
    const RegPath path = target();
    return selectedStore().canOpen(path.root, path.key, accessMask);
}

void BVKRegistry::SetPath(const std::string& machine, const std::string& path) {
    machine_ = machine;
    path_ = path;
    valueName_.reset();
}

void BVKRegistry::SetValuePath(const std::string& machine, const std::string& keyPath, const std::string& valueName) {
    const bool apart = valueName.find('\\') != std::string::npos;
    SetPath(machine, keyPath + "\\" + (apart ? std::string() : valueName));
    if (apart) valueName_ = valueName;
}

bool BVKRegistry::Exists(std::uint32_t accessMask) {
    const RegPath path = target();
    RegStore& store = selectedStore();
    if (!path.isKey && !store.hasValue(path.root, path.key, path.name)) return false;
    return (!path.isKey && accessMask == KEY_QUERY_VALUE_MASK) || store.canOpen(path.root, path.key, accessMask);
}

std::string BVKRegistry::GetComputerName() { return machines_.localName(); }

void BVKRegistry::ListSubKeys(std::int16_t& count, std::vector<std::string>& names) {
    std::vector<std::string> found = subKeyNames();
    count = countOf(found.size());
    found.insert(found.begin(), std::string());
    names = std::move(found);
}

void BVKRegistry::ListValues(std::int16_t& count, std::vector<std::string>& names, std::vector<std::int32_t>& types,
                             std::vector<std::string>& data) {
    const RegPath path = selected();
    const std::vector<NamedValue> found = selectedStore().values(path.root, path.wholeKey());
    count = countOf(found.size());
    names.assign(1, {});
    types.assign(1, 0);
    data.assign(1, {});
    for (const NamedValue& entry : found) {
        names.push_back(entry.name.text());
        types.push_back(static_cast<std::int32_t>(entry.value.type));
        data.push_back(listText(entry.value));
    }
}

bool BVKRegistry::EnablePrivileges(const std::string& machine) {
    try {
        return machines_.store(machine).writable();
    } catch (const RegError& error) {
        trace_.write(std::string("--- Fehler: ") + error.what());
        return false;
    }
}

void BVKRegistry::DisablePrivileges() {}

bool BVKRegistry::SaveKey(const std::string& filePath) {
    const RegPath path = selected();
    RegStore& store = selectedStore();
    const fs::path file = hostPath(filePath);
    std::error_code error;
    if (hiveFiles_ == nullptr || fs::exists(fs::symlink_status(file, error)) || !store.keyExists(path.root, path.wholeKey())) {
        trace_.write("--- Schlüssel nicht gesichert: " + path_);
        return false;
    }
    return hiveFiles_->save(store, path.root, path.wholeKey(), file);
}

bool BVKRegistry::RestoreKey(const std::string& directory, const std::string& file) {
    const RegPath path = selected();
    RegStore& store = selectedStore();
    const fs::path source = hostPath(directory) / hostPath(file);
    std::error_code error;
    if (hiveFiles_ == nullptr || !fs::is_regular_file(source, error)) {
        trace_.write("--- Schlüssel nicht wiederhergestellt: " + path_);
        return false;
    }
    if (path.wholeKey().empty()) throw RegError(regerr::NoKey, "Ein Hauptschlüssel kann nicht ersetzt werden.");
    return hiveFiles_->restore(store, path.root, path.wholeKey(), source);
}

}  // namespace brenvik
