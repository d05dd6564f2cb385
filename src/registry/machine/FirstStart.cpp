#include "registry/machine/FirstStart.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>
#include <system_error>
#include <vector>

#include "frame/Errors.h"
#include "frame/files/FileSystem.h"
#include "frame/platform/HostFile.h"
#include "frame/text/Conversions.h"
#include "registry/store/SqliteStore.h"
#include "registry/text/RegText.h"

namespace brenvik {

namespace fs = std::filesystem;

namespace {

std::string shown(const fs::path& path) { return "\"" + utf8FromPath(path) + "\""; }

std::vector<fs::path> regFiles(const fs::path& folder) {
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (entry->path().extension() == ".reg" && entry->is_regular_file()) files.push_back(entry->path());
    }
    if (files.empty()) throw NumberedError(errnum::FileNotFound, "Die Daten für den ersten Start fehlen im Ordner " + shown(folder) + ". Installieren Sie das Programm neu.");
    std::sort(files.begin(), files.end());
    return files;
}

std::string contentOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::string content((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (!in.good() && !in.eof()) throw NumberedError(errnum::PathFileAccess, "Die Datei " + shown(file) + " kann nicht gelesen werden.");
    return content;
}

void mergeFile(SqliteStore& store, const fs::path& file) {
    const RegText text = parseRegText(contentOf(file));
    if (!text.ok()) {
        const RegTextProblem& first = text.problems.front();
        throw NumberedError(errnum::Internal, "Die Datei " + shown(file) + " ist fehlerhaft. Zeile " + std::to_string(first.line) + ": " + first.message);
    }
    try {
        applyOperations(store, text.operations);
    } catch (const RegError& error) {
        throw NumberedError(error.number, "Die Datei " + shown(file) + " kann nicht übernommen werden. " + error.what());
    }
}

// --- drive C: ---

constexpr const char* DriveC = "drive_c";
constexpr const char* StoreName = "registry.db";
constexpr const char* JournalName = "journal.db";
constexpr const char* LogName = "brenvik.log";
constexpr const char* WholeMark = "drive_c.ganz";     // the home's drive has all its files, or the user wants no more of them
constexpr fs::perms OwnerOnly = fs::perms::owner_read | fs::perms::owner_write;
constexpr auto Abandoned = std::chrono::hours(24);    // no start takes that long

bool isOurs(const std::string& name) {
    constexpr std::string_view Ours[] = {StoreName, JournalName, LogName, "drive_", "History.txt", "Favoriten.txt", "instanz.", "Backup", "RegBack.txt"};
    return std::any_of(std::begin(Ours), std::end(Ours), [&](std::string_view own) { return name.starts_with(own); });
}

// Whether the folder holds nothing but what the program puts into a home, and was not meant to be shared.
bool isOursAlone(const fs::path& folder) {
    std::error_code error;
    if ((fs::status(folder, error).permissions() & (fs::perms::others_write | fs::perms::sticky_bit)) != fs::perms::none) return false;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        if (!isOurs(utf8FromPath(entry->path().filename()))) return false;
    return !error;
}

// A home may come from anybody; a link in the place of a file of ours would have the program write wherever it leads.
std::optional<fs::path> linkIn(const fs::path& home) {
    std::error_code error, unknown;
    for (fs::directory_iterator entry(home, error), end; !error && entry != end; entry.increment(error))
        if (isOurs(utf8FromPath(entry->path().filename())) && entry->is_symlink(unknown)) return entry->path();
    return std::nullopt;
}

fs::path freshName(const fs::path& target) {
    std::random_device random;
    fs::path fresh = target;
    return fresh += "." + std::to_string(random()) + std::to_string(random()) + ".neu";
}

// What starts that were killed left behind; another start may be filling one just now.
void sweepFreshDrives(const fs::path& home) {
    std::error_code error;
    std::vector<fs::path> left;
    for (fs::directory_iterator entry(home, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = utf8FromPath(entry->path().filename());
        std::error_code unknown;
        const auto written = fs::last_write_time(entry->path(), unknown);
        if (name.starts_with("drive_c.") && name.ends_with("neu") && !unknown && fs::file_time_type::clock::now() - written > Abandoned) left.push_back(entry->path());
    }
    for (const fs::path& folder : left) fs::remove_all(folder, error);
}

void makePrivateTree(const fs::path& folder) {
    fs::permissions(folder, fs::perms::owner_all);
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
        fs::permissions(entry.path(), entry.is_directory() ? fs::perms::owner_all : OwnerOnly);
}

// The files of the shipped drive, relative to it.
std::vector<fs::path> shippedFiles(const fs::path& firstStartFolder) {
    std::vector<fs::path> files;
    const fs::path drive = firstStartFolder / DriveC;
    std::error_code error;
    for (fs::recursive_directory_iterator entry(drive, error), end; !error && entry != end; entry.increment(error))
        if (entry->is_regular_file()) files.push_back(entry->path().lexically_relative(drive));
    std::sort(files.begin(), files.end());
    return files;
}

// Where a file that the drive lacks belongs; nothing if it is there in whatever spelling, or if its place cannot be told
// because a link or a file stands in the way.
std::optional<fs::path> placeOf(const fs::path& drive, const fs::path& relative) {
    fs::path place = drive;
    bool exists = true;
    for (const fs::path& part : relative) {
        std::optional<fs::path> found;
        std::error_code error;
        for (fs::directory_iterator entry(place, error), end; exists && !error && entry != end; entry.increment(error))
            if (equalText(utf8FromPath(entry->path().filename()), utf8FromPath(part))) found = entry->path();
        if (found && !fs::is_directory(fs::symlink_status(*found, error))) return std::nullopt;
        exists = found.has_value();
        place = exists ? *found : place / part;
    }
    return exists ? std::nullopt : std::optional(place);
}

// Linked to its name when it is whole, which no file that came there meanwhile suffers from.
void addFile(const fs::path& source, const fs::path& target) {
    std::error_code error, ignored;
    fs::create_directories(target.parent_path(), error);
    const fs::path fresh = freshName(target);
    if (!error) error = host::writeNewFile(fresh, readFile(source), {});
    if (!error) fs::permissions(fresh, OwnerOnly, ignored);
    if (!error) fs::create_hard_link(fresh, target, error);
    const bool there = fs::exists(fs::symlink_status(target, ignored));
    if (error && !there) fs::rename(fresh, target, error);   // a file system without hard links
    fs::remove(fresh, ignored);
    if (error && !there)
        throw NumberedError(errnum::PathFileAccess, "Die Datei " + shown(target) + " kann nicht angelegt werden: " + fileErrorText(error));
}

}  // namespace

bool fillEmptyStore(SqliteStore& store, const fs::path& firstStartFolder) {
    if (!store.isEmpty()) return false;
    const std::vector<fs::path> files = regFiles(firstStartFolder);
    bool filled = false;
    store.transaction([&] {
        if (!store.isEmpty()) return;   // another process was quicker
        for (const fs::path& file : files) mergeFile(store, file);
        filled = true;
    });
    return filled;
}

std::string privateHome(const fs::path& home) {
    std::error_code error, ignored;   // ignored: of another owner, or on a drive that knows no rights
    fs::create_directories(home, error);
    if (error) return "Der Ordner " + shown(home) + " kann nicht angelegt werden: " + fileErrorText(error);
    if (const auto link = linkIn(home)) throw StoreOpenError(home, "Das Heim wird nicht geöffnet: " + shown(*link) + " ist eine Verknüpfung, und ihr wird nicht gefolgt. Setzen Sie an ihre Stelle, worauf sie zeigt.");
    if (isOursAlone(home)) fs::permissions(home, fs::perms::owner_all, fs::perm_options::replace, ignored);
    return {};
}

// By their names, not by opening them: closing a file gives up the locks that the process has on it.
void privateFiles(const fs::path& home) {
    std::error_code ignored;
    for (const char* name : {StoreName, "registry.db-wal", "registry.db-shm", JournalName, LogName})
        if (fs::is_regular_file(fs::symlink_status(home / name, ignored))) fs::permissions(home / name, OwnerOnly, fs::perm_options::replace, ignored);
}

bool copyDriveC(const fs::path& firstStartFolder, const fs::path& home) {
    const fs::path source = firstStartFolder / DriveC, target = home / DriveC;
    std::error_code error;
    sweepFreshDrives(home);
    if (fs::exists(fs::symlink_status(target, error)) || !fs::is_directory(source, error)) return false;
    // Copied under a name of its own first: an interrupted start leaves no half a drive, and of two starts at a time each
    // makes its own, of which the first to be ready counts.
    const fs::path fresh = freshName(target);
    try {
        fs::create_directories(home);
        fs::copy(source, fresh, fs::copy_options::recursive);
        makePrivateTree(fresh);
        fs::rename(fresh, target);
    } catch (const fs::filesystem_error& problem) {
        fs::remove_all(fresh, error);
        if (fs::is_directory(target, error)) return false;   // another start was quicker
        throw NumberedError(errnum::PathFileAccess, "Der Ordner " + shown(target) + " kann nicht angelegt werden: " + fileErrorText(problem.code()));
    }
    confirmDriveC(home);
    return true;
}

std::vector<std::string> missingOnDriveC(const fs::path& firstStartFolder, const fs::path& home) {
    std::vector<std::string> missing;
    std::error_code error;
    if (fs::exists(fs::symlink_status(home / WholeMark, error)) || !fs::is_directory(home / DriveC, error)) return missing;
    for (const fs::path& file : shippedFiles(firstStartFolder))
        if (placeOf(home / DriveC, file)) missing.push_back("C:\\" + Replace(utf8FromPath(file), "/", "\\"));
    if (missing.empty()) confirmDriveC(home);
    return missing;
}

void completeDriveC(const fs::path& firstStartFolder, const fs::path& home) {
    for (const fs::path& file : shippedFiles(firstStartFolder))
        if (const auto place = placeOf(home / DriveC, file)) addFile(firstStartFolder / DriveC / file, *place);
    confirmDriveC(home);
}

void confirmDriveC(const fs::path& home) { host::makePrivate(home / WholeMark); }   // without it the next start looks again

}  // namespace brenvik
