#include "registry/machine/OfflineWindows.h"

#include <algorithm>
#include <map>

#include <fmt/format.h>

#include "frame/Errors.h"
#include "frame/files/FileSystem.h"
#include "frame/files/TargetFiles.h"
#include "frame/text/Conversions.h"
#include "registry/Messages.h"
#include "registry/RegPath.h"
#include "registry/Upcase.h"
#include "registry/Windows9x.h"
#include "registry/hivefile/HiveFileBytes.h"
#include "registry/machine/Hibernation.h"
#include "registry/store/RegLinks.h"

namespace brenvik {

namespace fs = std::filesystem;

namespace {

constexpr const char* VersionKey = "Software\\Microsoft\\Windows NT\\CurrentVersion";

// Newer systems first. Profiles that cannot be changed by their user are NTUSER.MAN.
constexpr const char* UserFiles[] = {"NTUSER.DAT", "NTUSER.MAN"};
constexpr const char* ClassesFiles[] = {"AppData\\Local\\Microsoft\\Windows\\UsrClass.dat",
                                        "Local Settings\\Application Data\\Microsoft\\Windows\\UsrClass.dat",
                                        "Lokale Einstellungen\\Anwendungsdaten\\Microsoft\\Windows\\UsrClass.dat"};

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

}  // namespace

std::optional<fs::path> findBelow(const fs::path& folder, std::string_view windowsPath) {
    for (const std::string& name : Split(std::string(windowsPath), "\\"))
        if (name == "." || name == ".." || name.find('/') != std::string::npos) return std::nullopt;
    try {
        std::error_code error;
        fs::path found = findInside(folder, windowsPath);
        return fs::exists(found, error) ? std::optional(std::move(found)) : std::nullopt;
    } catch (const NumberedError&) {
        return std::nullopt;
    }
}

OfflineWindows::OfflineWindows(const fs::path& folder) : top_(folder) {
    const auto windows = windowsIn(folder);
    if (!windows) throw RegError(regerr::NoKey, "Im Ordner " + shownFile(folder) + " ist kein Windows (Windows\\System32\\config\\SOFTWARE fehlt).");
    windows_ = *windows;
    if (windows_ == folder && folder.has_parent_path()) top_ = folder.parent_path();
    systemRoot_ = "C:\\" + utf8FromPath(windows_.filename());
    const fs::path config = *findBelow(windows_, "System32\\config");
    if (const auto image = hibernatedAbove(config)) notes_.push_back(hibernationNote(*image));
    mountMachine(config);
    setUsersUnknown(messages::NoProfile);
    try {
        mountProfiles();
    } catch (const RegError& error) {
        notes_.emplace_back(error.what());
        setUsersUnknown(error.what());
    }
    const auto person = std::find_if(profiles_.begin(), profiles_.end(), [](const TargetProfile& p) { return isProfileName(p.sid) && p.missing.empty(); });
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
            mountMissing(root, place, notes_.back());
            continue;
        }
        const auto hive = std::make_shared<HiveFile>(*file);
        mount(root, place, hive);
        if (root == Root::Users) mount(root, "S-1-5-18", hive);
    }
}

void OfflineWindows::mountProfiles() {
    const std::string list = joinKey(VersionKey, "ProfileList");
    const std::string root = stringOf(value(Root::LocalMachine, VersionKey, ValueName::named("SystemRoot")));
    if (root.size() >= 2 && root[1] == ':') systemRoot_ = root;
    for (const std::string& sid : subKeys(Root::LocalMachine, list)) {
        const bool leftOver = sid.size() > 4 && sameAscii(std::string_view(sid).substr(sid.size() - 4), ".bak");
        if (leftOver || sameAscii(sid, "s-1-5-18")) continue;
        mountProfile(sid, expanded(stringOf(value(Root::LocalMachine, joinKey(list, sid), ValueName::named("ProfileImagePath"))), systemRoot_));
    }
}

void OfflineWindows::mountProfile(const std::string& sid, const std::string& imagePath) {
    const bool onThisDrive = imagePath.size() > 3 && sameName(std::string_view(imagePath).substr(0, 2), systemRoot_.substr(0, 2));
    const auto folder = onThisDrive ? findBelow(top_, std::string_view(imagePath).substr(2)) : std::nullopt;
    const auto file = folder ? firstFile(*folder, UserFiles) : std::nullopt;
    profiles_.push_back({sid, std::string(lastKeyName(imagePath)), {}});
    if (!file) {
        profiles_.back().missing = "Zum Profil " + sid + " wurde im Ordner \"" + imagePath + "\" keine Datei NTUSER.DAT gefunden.";
        if (isProfileName(sid)) notes_.push_back(profiles_.back().missing);   // service accounts often have none
        mountMissing(Root::Users, sid, profiles_.back().missing);
        return;
    }
    mount(Root::Users, sid, std::make_shared<HiveFile>(*file));
    if (const auto classes = firstFile(*folder, ClassesFiles)) mount(Root::Users, sid + "_Classes", std::make_shared<HiveFile>(*classes));
}

bool OfflineWindows::chooseUser(std::string_view sidOrName) {
    const auto found = std::find_if(profiles_.begin(), profiles_.end(), [&](const TargetProfile& p) {
        return p.missing.empty() && (sameName(p.sid, sidOrName) || sameName(p.userName, sidOrName));
    });
    if (found == profiles_.end()) return false;
    setCurrentUser(found->sid);
    return chosen_ = true;
}

bool OfflineWindows::userIsPlain() const {
    return chosen_ || std::count_if(profiles_.begin(), profiles_.end(), [](const TargetProfile& p) { return isProfileName(p.sid); }) < 2;
}

std::vector<std::string> OfflineWindows::questionsBeforeWriting(const std::vector<HiveFile*>& files) {
    std::vector<std::string> questions = HiveStore::questionsBeforeWriting(files);
    const auto user = std::find_if(profiles_.begin(), profiles_.end(), [&](const TargetProfile& p) { return p.sid == currentUserSid(); });
    if (userIsPlain() || user == profiles_.end()) return questions;
    const bool theirs = std::any_of(files.begin(), files.end(), [&](const HiveFile* file) { return standsBelow(*file, user->sid); });
    if (theirs) questions.push_back(fmt::format(messages::ProfileWriting, user->userName, user->sid));
    return questions;
}

MountedWindows::MountedWindows(const fs::path& folder)
    : windows_(folder), files_([this](char letter) {
          const std::string& root = windows_.systemRoot();
          return lowerCase(root.substr(0, 1)) == std::string(1, letter) ? std::optional(windows_.driveFolder()) : std::nullopt;
      }, [this] { return windows_.systemRoot().substr(0, 3) + utf8FromPath(windows_.windowsFolder().filename()); }) {}

std::vector<std::string> MountedWindows::notes() const {
    std::vector<std::string> all = windows_.notes();
    if (windows_.userIsPlain()) return all;
    std::string others;
    std::string chosen;
    for (const TargetProfile& p : profiles()) {
        if (p.sid == profile()) chosen = p.userName + " (" + p.sid + ")";
        else if (isProfileName(p.sid)) others += (others.empty() ? "" : ", ") + p.userName;
    }
    all.push_back(chosen.empty() ? messages::NoProfile : fmt::format(messages::ProfileTaken, chosen, others));
    return all;
}

namespace {

std::unique_ptr<TargetSystem> windowsOf(const fs::path& folder) {
    try {
        return std::make_unique<MountedWindows>(folder);
    } catch (const RegError& error) {
        auto older = error.number == regerr::NoKey ? openWindows9x(folder) : nullptr;
        if (!older) throw;
        return older;
    }
}

}  // namespace

void reachOfflineWindows(LocalMachines& machines, std::function<bool(const std::string& question)> ask) {
    auto opened = std::make_shared<std::map<fs::path, std::unique_ptr<TargetSystem>>>();
    machines.setFinder([opened, ask = std::move(ask)](const std::string& machine) -> TargetSystem* {
        if (machine.find('/') == std::string::npos) return nullptr;
        std::error_code error;
        const fs::path folder = fs::canonical(pathFromUtf8(machine), error);
        if (error || !fs::is_directory(folder, error)) return nullptr;
        auto& windows = (*opened)[folder];
        if (!windows) {
            windows = windowsOf(folder);
            windows->setAsk(ask);
        }
        return windows.get();
    });
}

}  // namespace brenvik
