#include "registry/OfflineWindows.h"

#include <algorithm>
#include <map>

#include "frame/DateiSystem.h"
#include "registry/HiveFileBytes.h"
#include "registry/RegLinks.h"
#include "registry/RegPath.h"
#include "registry/Upcase.h"

namespace brenvik {

namespace fs = std::filesystem;

namespace {

constexpr const char* VersionKey = "Software\\Microsoft\\Windows NT\\CurrentVersion";

// Newer systems first. Profiles that cannot be changed by their user are NTUSER.MAN.
constexpr const char* UserFiles[] = {"NTUSER.DAT", "NTUSER.MAN"};
constexpr const char* ClassesFiles[] = {"AppData\\Local\\Microsoft\\Windows\\UsrClass.dat",
                                        "Local Settings\\Application Data\\Microsoft\\Windows\\UsrClass.dat",
                                        "Lokale Einstellungen\\Anwendungsdaten\\Microsoft\\Windows\\UsrClass.dat"};

std::optional<fs::path> childOf(const fs::path& folder, std::string_view name) {
    std::error_code error;
    const fs::path exact = folder / pathFromUtf8(name);
    if (fs::exists(exact, error)) return exact;
    for (fs::directory_iterator place(folder, error), end; !error && place != end; place.increment(error)) {
        if (sameName(utf8FromPath(place->path().filename()), name)) return place->path();
    }
    return std::nullopt;
}

template <class Names>
std::optional<fs::path> firstFile(const fs::path& folder, const Names& names) {
    std::error_code error;
    for (const char* name : names) {
        const auto found = findBelow(folder, name);
        if (found && fs::is_regular_file(*found, error)) return found;
    }
    return std::nullopt;
}

bool holdsHives(const fs::path& windows) {
    std::error_code error;
    const auto software = findBelow(windows, "System32\\config\\SOFTWARE");
    return software && fs::is_regular_file(*software, error);
}

std::optional<fs::path> windowsIn(const fs::path& folder) {
    for (const char* name : {"Windows", "WINNT"}) {
        const auto found = findBelow(folder, name);
        if (found && holdsHives(*found)) return found;
    }
    return holdsHives(folder) ? std::optional(folder) : std::nullopt;
}

std::string stringOf(const std::optional<RawValue>& value) {
    return value && (value->type == regtype::Sz || value->type == regtype::ExpandSz) ? toText(*value) : std::string();
}

// %SystemDrive% and %SystemRoot%; nothing else stands in paths of profiles.
std::string expanded(std::string path, std::string_view systemRoot) {
    const std::pair<std::string_view, std::string_view> known[] = {{"%systemdrive%", systemRoot.substr(0, 2)}, {"%systemroot%", systemRoot}, {"%windir%", systemRoot}};
    for (const auto& [name, content] : known) {
        if (path.size() >= name.size() && sameAscii(std::string_view(path).substr(0, name.size()), name)) return std::string(content) + path.substr(name.size());
    }
    return path;
}

bool isInside(const fs::path& path, const fs::path& folder) {
    const auto [at, other] = std::mismatch(folder.begin(), folder.end(), path.begin(), path.end());
    return at == folder.end();
}

}  // namespace

std::optional<fs::path> findBelow(const fs::path& folder, std::string_view windowsPath) {
    fs::path found = folder;
    while (!windowsPath.empty()) {
        const std::size_t end = std::min(windowsPath.find('\\'), windowsPath.size());
        const std::string_view name = windowsPath.substr(0, end);
        windowsPath.remove_prefix(std::min(end + 1, windowsPath.size()));
        if (name.empty()) continue;
        if (name == "." || name == ".." || name.find('/') != std::string_view::npos || name.find('\0') != std::string_view::npos) return std::nullopt;
        const auto child = childOf(found, name);
        if (!child) return std::nullopt;
        found = *child;
    }
    std::error_code error;
    const fs::path real = fs::canonical(found, error), top = error ? fs::path() : fs::canonical(folder, error);
    return !error && isInside(real, top) ? std::optional(found) : std::nullopt;
}

OfflineWindows::OfflineWindows(const fs::path& folder) : top_(folder) {
    const auto windows = windowsIn(folder);
    if (!windows) throw RegError(regerr::NoKey, "Im Ordner " + shownFile(folder) + " ist kein Windows (Windows\\System32\\config\\SOFTWARE fehlt).");
    windows_ = *windows;
    if (windows_ == folder && folder.has_parent_path()) top_ = folder.parent_path();
    mountMachine(*findBelow(windows_, "System32\\config"));
    try {
        mountProfiles();
    } catch (const RegError& error) {
        notes_.emplace_back(error.what());
    }
    const auto person = std::find_if(profiles_.begin(), profiles_.end(), [](const Profile& p) { return isProfileName(p.sid); });
    if (person != profiles_.end()) setCurrentUser(person->sid);
}

void OfflineWindows::mountMachine(const fs::path& config) {
    const struct {
        Root root;
        const char* place;
        const char* file;
    } hives[] = {{Root::LocalMachine, "SAM", "SAM"}, {Root::LocalMachine, "SECURITY", "SECURITY"}, {Root::LocalMachine, "Software", "SOFTWARE"},
                 {Root::LocalMachine, "System", "SYSTEM"}, {Root::Users, ".DEFAULT", "DEFAULT"}};
    for (const auto& [root, place, name] : hives) {
        const auto file = findBelow(config, name);
        std::error_code error;
        if (!file || !fs::is_regular_file(*file, error)) {
            notes_.push_back(std::string("Die Hivedatei ") + name + " fehlt.");
            continue;
        }
        const auto hive = std::make_shared<HiveFile>(*file);
        mount(root, place, hive);
        if (root == Root::Users) mount(root, "S-1-5-18", hive);
    }
}

void OfflineWindows::mountProfiles() {
    const std::string list = joinKey(VersionKey, "ProfileList");
    std::string systemRoot = stringOf(value(Root::LocalMachine, VersionKey, ValueName::named("SystemRoot")));
    if (systemRoot.size() < 2 || systemRoot[1] != ':') systemRoot = "C:\\" + utf8FromPath(windows_.filename());
    for (const std::string& sid : subKeys(Root::LocalMachine, list)) {
        const bool leftOver = sid.size() > 4 && sameAscii(std::string_view(sid).substr(sid.size() - 4), ".bak");
        if (leftOver || sameAscii(sid, "s-1-5-18")) continue;
        mountProfile(sid, expanded(stringOf(value(Root::LocalMachine, joinKey(list, sid), ValueName::named("ProfileImagePath"))), systemRoot), systemRoot);
    }
}

void OfflineWindows::mountProfile(const std::string& sid, const std::string& imagePath, std::string_view systemRoot) {
    const bool onThisDrive = imagePath.size() > 3 && sameName(std::string_view(imagePath).substr(0, 2), systemRoot.substr(0, 2));
    const auto folder = onThisDrive ? findBelow(top_, std::string_view(imagePath).substr(2)) : std::nullopt;
    const auto file = folder ? firstFile(*folder, UserFiles) : std::nullopt;
    if (!file) {
        notes_.push_back("Zum Profil " + sid + " wurde im Ordner \"" + imagePath + "\" keine Datei NTUSER.DAT gefunden.");
        return;
    }
    profiles_.push_back({sid, std::string(lastKeyName(imagePath)), *folder});
    mount(Root::Users, sid, std::make_shared<HiveFile>(*file));
    if (const auto classes = firstFile(*folder, ClassesFiles)) mount(Root::Users, sid + "_Classes", std::make_shared<HiveFile>(*classes));
}

bool OfflineWindows::chooseUser(std::string_view sidOrName) {
    const auto found = std::find_if(profiles_.begin(), profiles_.end(), [&](const Profile& p) { return sameName(p.sid, sidOrName) || sameName(p.userName, sidOrName); });
    if (found == profiles_.end()) return false;
    setCurrentUser(found->sid);
    return true;
}

void reachOfflineWindows(LocalMachines& machines) {
    auto opened = std::make_shared<std::map<fs::path, std::unique_ptr<OfflineWindows>>>();
    machines.setFinder([opened](const std::string& machine) -> RegStore* {
        if (machine.find('/') == std::string::npos) return nullptr;
        std::error_code error;
        const fs::path folder = fs::canonical(pathFromUtf8(machine), error);
        if (error || !fs::is_directory(folder, error)) return nullptr;
        auto& windows = (*opened)[folder];
        if (!windows) windows = std::make_unique<OfflineWindows>(folder);
        return windows.get();
    });
}

}  // namespace brenvik
