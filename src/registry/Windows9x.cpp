#include "registry/Windows9x.h"

#include <algorithm>

#include <fmt/format.h>

#include "frame/files/FileSystem.h"
#include "frame/text/Conversions.h"
#include "registry/Messages.h"
#include "registry/Upcase.h"
#include "registry/hivefile/HiveFileBytes.h"
#include "registry/machine/OfflineWindows.h"
#include "registry/store/RegLinks.h"

namespace brenvik {

namespace fs = std::filesystem;

namespace {

constexpr const char* ProfileList = "Software\\Microsoft\\Windows\\CurrentVersion\\ProfileList";
constexpr std::uintmax_t MostMsdosSys = 64 << 10;

std::optional<fs::path> registryFile(const fs::path& folder, const char* name) {
    const auto found = findBelow(folder, name);
    return found && isCregFile(*found) ? found : std::nullopt;
}

// WinDir of [Paths], "" where nobody tells it.
std::string toldWindowsFolder(const fs::path& drive) {
    const auto file = findBelow(drive, "MSDOS.SYS");
    std::error_code error;
    if (!file || !fs::is_regular_file(*file, error) || fs::file_size(*file, error) > MostMsdosSys || error) return {};
    bool inPaths = false;
    for (std::string line : Split(readFile(*file, MostMsdosSys), "\n")) {
        line = Trim(line.substr(0, line.find('\r')));
        if (line.starts_with('[')) inPaths = sameAscii(line, "[paths]");
        const std::size_t equals = line.find('=');
        if (inPaths && equals != std::string::npos && sameAscii(Trim(line.substr(0, equals)), "windir")) return Trim(line.substr(equals + 1));
    }
    return {};
}

std::vector<fs::path> foldersIn(const fs::path& folder) {
    std::vector<fs::path> found;
    std::error_code error, ignored;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error))
        if (at->is_directory(ignored) && !at->is_symlink(ignored)) found.push_back(at->path());
    std::sort(found.begin(), found.end());
    return found;
}

bool isUsersKey(const HiveKey& key) { return key.find("Software") != nullptr || key.find("Control Panel") != nullptr; }

// The key of a user's file that holds his keys: its root, or the only one below that does; nothing where that is not plain.
std::optional<std::string> usersKeyIn(const Hive& hive) {
    if (isUsersKey(hive.root)) return "";
    std::optional<std::string> found;
    for (const HiveKey& key : hive.root.subKeys) {
        if (!isUsersKey(key)) continue;
        if (found) return std::nullopt;
        found = key.name;
    }
    return found;
}

}  // namespace

std::optional<Windows9x::Place> Windows9x::placeIn(const fs::path& folder) {
    const std::string told = toldWindowsFolder(folder);
    if (told.size() > 3 && told[1] == ':') {
        const auto windows = findBelow(folder, std::string_view(told).substr(2));
        if (windows && registryFile(*windows, "SYSTEM.DAT")) return Place{folder, *windows, told};
    }
    const auto named = [](const fs::path& drive, const fs::path& windows) { return Place{drive, windows, "C:\\" + utf8FromPath(windows.filename())}; };
    if (registryFile(folder, "SYSTEM.DAT")) return named(folder.parent_path(), folder);
    for (const fs::path& below : foldersIn(folder))
        if (registryFile(below, "SYSTEM.DAT")) return named(folder, below);
    return std::nullopt;
}

Windows9x::Windows9x(Place place)
    : place_(std::move(place)), files_([this](char letter) {
          return lowerCase(place_.path.substr(0, 1)) == std::string(1, letter) ? std::optional(place_.drive) : std::nullopt;
      }, [this] { return place_.path; }) {
    mountMachine();
    mountUsers();
    const auto first = std::find_if(profiles_.begin(), profiles_.end(), [](const TargetProfile& p) { return p.missing.empty(); });
    store_.setCurrentUser(first == profiles_.end() ? ".DEFAULT" : first->sid);
    store_.files().setMoreQuestions([this](const std::vector<HiveFile*>& files) { return questionsAboutUsers(files); });
    try {
        if (const CregCodepage codepage = codepageIn(system_->hive()); codepage.number != 0 && codepage.number != 1252)
            notes_.push_back(fmt::format(messages::FremdeCodepage, codepage.number));
        if (const std::string why = system_->whyNotWritten(); !why.empty()) notes_.push_back(why);
    } catch (const RegError& error) {
        notes_.emplace_back(error.what());
    }
}

void Windows9x::mountMachine() {
    system_ = cregFile(*registryFile(place_.windows, "SYSTEM.DAT"));
    store_.mount(Root::LocalMachine, "", system_);
    if (const auto users = registryFile(place_.windows, "USER.DAT")) {
        store_.mount(Root::Users, "", cregFile(*users, system_));
    } else {
        notes_.push_back(fmt::format(messages::DateiFehlt, "USER.DAT"));
        store_.mountMissing(Root::Users, ".DEFAULT", notes_.back());
    }
    mountClasses();
}

// Only ME has them in a file of their own.
void Windows9x::mountClasses() {
    auto classes = registryFile(place_.windows, "CLASSES.DAT");
    const auto profiles = findBelow(place_.windows, "Profiles");
    for (const fs::path& folder : profiles && !classes ? foldersIn(*profiles) : std::vector<fs::path>())
        if (!classes) classes = registryFile(folder, "CLASSES.DAT");
    if (!classes) return;
    const auto file = cregFile(*classes, system_);
    std::string inside;
    try {
        for (const char* key : {"CLASSES", ClassesPath})
            if (file->hive().findPath(key) != nullptr) inside = key;
    } catch (const RegError& error) {
        notes_.emplace_back(error.what());   // whoever asks there is told the same
    }
    store_.mount(Root::LocalMachine, ClassesPath, file, inside);
}

// ---- Users ----

void Windows9x::mountUsers() {
    std::vector<std::string> names;
    try {
        names = store_.subKeys(Root::LocalMachine, ProfileList);
    } catch (const RegError&) {
        // The machine's file cannot be read, which is told; the users' folders can be.
    }
    const auto folder = findBelow(place_.windows, "Profiles");
    for (const fs::path& below : folder ? foldersIn(*folder) : std::vector<fs::path>()) {
        const std::string name = utf8FromPath(below.filename());
        const bool known = std::any_of(names.begin(), names.end(), [&](const std::string& other) { return sameName(name, other); });
        if (!known && registryFile(below, "USER.DAT")) names.push_back(name);
    }
    for (const std::string& name : names) {
        const auto file = registryFile(profileFolder(name), "USER.DAT");
        file ? mountUser(name, *file) : missingUser(name, fmt::format(messages::KeineBenutzerdatei, name));
    }
}

fs::path Windows9x::profileFolder(const std::string& name) {
    std::optional<RawValue> told;
    try {
        told = store_.value(Root::LocalMachine, joinKey(ProfileList, name), ValueName::named("ProfileImagePath"));
    } catch (const RegError&) {
        // as above
    }
    const std::string path = told && (told->type == regtype::Sz || told->type == regtype::ExpandSz) ? toText(*told) : std::string();
    const bool onThisDrive = path.size() > 3 && sameName(path.substr(0, 2), place_.path.substr(0, 2));
    const auto found = onThisDrive ? findBelow(place_.drive, std::string_view(path).substr(2)) : std::nullopt;
    return found ? *found : findBelow(place_.windows, "Profiles\\" + name).value_or(fs::path());
}

void Windows9x::mountUser(const std::string& name, const fs::path& path) {
    const auto file = cregFile(path, system_);
    try {
        const auto inside = usersKeyIn(file->hive());
        if (!inside) return missingUser(name, fmt::format(messages::UnklareBenutzerdatei, shownFile(path)));
        store_.mount(Root::Users, name, file, *inside);
        profiles_.push_back({name, name, {}});
        userFiles_.emplace_back(name, file->file());
    } catch (const RegError& error) {
        missingUser(name, error.what());
    }
}

void Windows9x::missingUser(const std::string& name, const std::string& reason) {
    profiles_.push_back({name, name, reason});
    notes_.push_back(reason);
    store_.mountMissing(Root::Users, name, reason);
}

bool Windows9x::chooseProfile(std::string_view name) {
    const auto found = std::find_if(profiles_.begin(), profiles_.end(), [&](const TargetProfile& p) { return p.missing.empty() && sameName(p.sid, name); });
    if (found == profiles_.end()) return false;
    store_.setCurrentUser(found->sid);
    return chosen_ = true;
}

std::vector<std::string> Windows9x::notes() const {
    std::vector<std::string> all = notes_;
    if (userIsPlain()) return all;
    std::string others;
    for (const TargetProfile& p : profiles_)
        if (p.sid != profile()) others += (others.empty() ? "" : ", ") + p.userName;
    all.push_back(fmt::format(messages::ProfileTaken, profile(), others));
    return all;
}

std::vector<std::string> Windows9x::questionsAboutUsers(const std::vector<HiveFile*>& files) const {
    if (userIsPlain()) return {};
    const auto own = std::find_if(userFiles_.begin(), userFiles_.end(), [this](const auto& user) { return user.first == profile(); });
    const bool theirs = own != userFiles_.end() && std::any_of(files.begin(), files.end(), [&](const HiveFile* file) { return file->file() == own->second; });
    return theirs ? std::vector<std::string>{fmt::format(messages::ProfileWriting, own->first, utf8FromPath(own->second.filename()))} : std::vector<std::string>();
}

std::unique_ptr<TargetSystem> openWindows9x(const fs::path& folder) {
    auto place = Windows9x::placeIn(folder);
    return place ? std::unique_ptr<TargetSystem>(new Windows9x(std::move(*place))) : nullptr;
}

}  // namespace brenvik
