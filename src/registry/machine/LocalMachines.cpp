#include "registry/machine/LocalMachines.h"

#include "frame/Errors.h"
#include "registry/Upcase.h"

namespace brenvik {

namespace {

constexpr std::int32_t Reached = 0, AccessDenied = 5, NetworkPathNotFound = 53;

std::string storedText(RegStore& store, Root root, std::string_view key, const char* name) {
    const auto value = store.value(root, key, ValueName::named(name));
    return value && (value->type == regtype::Sz || value->type == regtype::ExpandSz) ? toText(*value) : std::string();
}

}  // namespace

std::string storedComputerName(RegStore& store) {
    return storedText(store, Root::LocalMachine, "System\\CurrentControlSet\\Control\\ComputerName\\ComputerName", "ComputerName");
}

std::string storedUserName(RegStore& store, const std::string& sid) {
    const std::string folder = storedText(store, Root::LocalMachine,
                                          "Software\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList\\" + sid, "ProfileImagePath");
    return folder.substr(folder.rfind('\\') + 1);
}

LocalMachines::LocalMachines(RegStore& local, std::string fallbackName)
    : LocalMachines([&local]() -> RegStore& { return local; }, std::move(fallbackName)) {}
LocalMachines::LocalMachines(std::function<RegStore&()> local, std::string fallbackName)
    : local_(std::move(local), TargetFiles::none({})), fallbackName_(std::move(fallbackName)) {}

std::string LocalMachines::localName() {
    if (localName_.empty()) localName_ = storedComputerName(local_.store());
    fallbackTold_ = fallbackTold_ || localName_.empty();
    return localName_.empty() ? fallbackName_ : localName_;
}

// Whoever was told the fallback name may go on using it, also when the store has a name by now. So it needs no look into the
// store, which each access to the registry would pay for.
bool LocalMachines::isLocal(const std::string& machine) {
    if (machine.find_first_of("/\\") != std::string::npos) return false;   // a folder is no name; the store is left alone
    return machine.empty() || (fallbackTold_ && sameName(machine, fallbackName_)) || sameName(machine, localName());
}

std::int32_t LocalMachines::connect(const std::string& machine) {
    try {
        return isLocal(machine) || (finder_ && finder_(machine) != nullptr) ? Reached : NetworkPathNotFound;
    } catch (const RegError& error) {
        return error.number == regerr::NoKey ? NetworkPathNotFound : AccessDenied;
    }
}

TargetSystem& LocalMachines::target(const std::string& machine) {
    if (isLocal(machine)) return local_;
    TargetSystem* found = finder_ ? finder_(machine) : nullptr;
    if (found == nullptr) throw RegError(regerr::NoAccess, "Der Rechner \"" + machine + "\" antwortet nicht.");
    return *found;
}

}  // namespace brenvik
