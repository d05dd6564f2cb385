#include "registry/FirstStart.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>
#include <vector>

#include "frame/Errors.h"
#include "registry/RegText.h"
#include "registry/SqliteStore.h"

namespace brenvik {

namespace fs = std::filesystem;

namespace {

std::string shown(const fs::path& path) {
    const std::u8string text = path.u8string();
    return "\"" + std::string(text.begin(), text.end()) + "\"";
}

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

bool copyDriveC(const fs::path& firstStartFolder, const fs::path& home) {
    const fs::path source = firstStartFolder / "drive_c", target = home / "drive_c", fresh = home / "drive_c.neu";
    if (fs::exists(fs::symlink_status(target)) || !fs::is_directory(source)) return false;
    try {
        // Copied under another name first, so that an interrupted start leaves no half a drive.
        fs::create_directories(home);
        fs::remove_all(fresh);
        fs::copy(source, fresh, fs::copy_options::recursive);
        fs::rename(fresh, target);
    } catch (const fs::filesystem_error& error) {
        throw NumberedError(errnum::PathFileAccess, "Der Ordner " + shown(target) + " kann nicht angelegt werden (" + error.code().message() + ").");
    }
    return true;
}

}  // namespace brenvik
