#include "registry/RegPath.h"

#include "frame/Errors.h"
#include "registry/Upcase.h"

namespace brenvik {

namespace {

struct RootNames {
    Root root;
    const char* brief;
    const char* full;
};

constexpr RootNames rootNames[] = {
    {Root::CurrentUser, "HKCU", "HKEY_CURRENT_USER"},    {Root::LocalMachine, "HKLM", "HKEY_LOCAL_MACHINE"},
    {Root::Users, "HKU", "HKEY_USERS"},                  {Root::DynData, "HKDD", "HKEY_DYN_DATA"},
    {Root::CurrentConfig, "HKCC", "HKEY_CURRENT_CONFIG"}, {Root::ClassesRoot, "HKCR", "HKEY_CLASSES_ROOT"},
};

const RootNames& namesOf(Root root) {
    for (const RootNames& names : rootNames) {
        if (names.root == root) return names;
    }
    return rootNames[0];
}

// Appends the parts of rest to key with single backslashes between them.
std::string joinParts(std::string_view rest) {
    std::string key;
    for (std::size_t start = 0; start < rest.size();) {
        const std::size_t end = std::min(rest.find('\\', start), rest.size());
        if (end > start) {
            if (!key.empty()) key += '\\';
            key += rest.substr(start, end - start);
        }
        start = end + 1;
    }
    return key;
}

}  // namespace

std::optional<Root> rootByName(std::string_view name) {
    for (const RootNames& names : rootNames) {
        if (sameName(name, names.brief) || sameName(name, names.full)) return names.root;
    }
    return std::nullopt;
}

const char* shortRootName(Root root) { return namesOf(root).brief; }
const char* longRootName(Root root) { return namesOf(root).full; }

RegPath parseRegPath(std::string_view path) {
    if (path.empty()) throw RegError(regerr::NoKey, "Es wurde kein Schlüssel angegeben.");
    const std::size_t rootEnd = std::min(path.find('\\'), path.size());
    const auto root = rootByName(path.substr(0, rootEnd));
    if (!root) throw RegError(regerr::NoRoot, "\"" + std::string(path.substr(0, rootEnd)) + "\" ist kein Hauptschlüssel.");
    RegPath parsed;
    parsed.root = *root;
    parsed.isBareRoot = rootEnd == path.size();
    if (parsed.isBareRoot) return parsed;
    parsed.isKey = path.back() == '\\';
    const std::string_view rest = path.substr(rootEnd + 1);
    if (parsed.isKey) {
        parsed.key = joinParts(rest);
        return parsed;
    }
    const std::size_t nameStart = rest.rfind('\\') + 1;   // 0 if there is no backslash
    parsed.key = joinParts(rest.substr(0, nameStart));
    parsed.name = ValueName::named(std::string(rest.substr(nameStart)));
    return parsed;
}

std::string RegPath::wholeKey() const {
    if (name.isUnnamed()) return key;
    return key.empty() ? name.text() : key + "\\" + name.text();
}

}  // namespace brenvik
