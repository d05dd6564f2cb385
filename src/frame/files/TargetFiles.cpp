#include "frame/files/TargetFiles.h"

#include <algorithm>

#include <fmt/format.h>

#include "frame/Errors.h"
#include "frame/Messages.h"
#include "frame/files/FileSystem.h"
#include "frame/text/Characters.h"
#include "frame/text/Conversions.h"

namespace brenvik {

namespace fs = std::filesystem;

namespace {

bool isSeparator(char c) { return c == '\\' || c == '/'; }
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
char lowerLetter(char c) { return static_cast<char>(characters::lower(static_cast<unsigned char>(c))); }

// The parts of a Windows path without its drive; "." and ".." are resolved, and ".." ends at the root.
std::vector<std::string> partsOf(std::string_view path) {
    std::vector<std::string> parts;
    while (!path.empty()) {
        const std::size_t end = path.find_first_of("\\/");
        std::string part(path.substr(0, end));
        path.remove_prefix(end == std::string_view::npos ? path.size() : end + 1);
        if (part.empty() || part == ".") continue;
        if (part == "..") {
            if (!parts.empty()) parts.pop_back();
            continue;
        }
        // The platform's own file system drops dots and blanks at the end of a name.
        part.erase(part.find_last_not_of(". ") + 1);
        if (!part.empty()) parts.push_back(std::move(part));
    }
    return parts;
}

// The entry of a folder that has this name but for its case; the first in order if there are several.
std::optional<fs::path> findSpelling(const fs::path& folder, const std::string& name) {
    std::error_code error;
    const fs::path exact = folder / pathFromUtf8(name);
    if (fs::symlink_status(exact, error).type() != fs::file_type::not_found && !error) return exact;
    std::optional<fs::path> found;
    const std::string wanted = lowerCase(name);
    for (fs::directory_iterator place(folder, error), end; !error && place != end; place.increment(error)) {
        const fs::path entry = place->path();
        if (lowerCase(utf8FromPath(entry.filename())) == wanted && (!found || entry < *found)) found = entry;
    }
    return found;
}

bool isBelow(const fs::path& path, const fs::path& folder) {
    const auto [at, other] = std::mismatch(folder.begin(), folder.end(), path.begin(), path.end());
    return at == folder.end();
}

// Where a link ends, which must lie below the folder, too.
fs::path linkTarget(const fs::path& link, const fs::path& top) {
    std::error_code error;
    const fs::path target = fs::canonical(link, error);
    if (error || !isBelow(target, top)) throw NumberedError(errnum::PathNotFound, fmt::format(messages::LinkLeadsOut, utf8FromPath(link)));
    return target;
}

fs::path lookUp(const fs::path& folder, const std::vector<std::string>& parts) {
    std::error_code error;
    const fs::path real = fs::canonical(folder, error);
    bool exists = !error;
    const fs::path top = exists ? real : folder;
    fs::path place = top;
    for (const std::string& part : parts) {
        const auto spelled = exists ? findSpelling(place, part) : std::nullopt;
        exists = spelled.has_value();
        place = exists ? *spelled : place / pathFromUtf8(part);
        if (exists && fs::is_symlink(place, error)) place = linkTarget(place, top);
    }
    return place;
}

bool hasDrive(std::string_view path) { return path.size() > 1 && isLetter(path[0]) && path[1] == ':'; }

}  // namespace

fs::path findInside(const fs::path& folder, std::string_view windowsPath) {
    if (windowsPath.find('\0') != std::string_view::npos) throw NumberedError(errnum::InvalidCall, messages::InvalidFileName);
    return lookUp(folder, partsOf(windowsPath));
}

TargetFiles TargetFiles::none(std::string why) {
    TargetFiles files;
    files.why_ = std::move(why);
    return files;
}

fs::path TargetFiles::driveFolder(char letter) const {
    if (!reachable()) throw NumberedError(errnum::PathNotFound, why_);
    const auto folder = drive_(letter);
    if (!folder) throw NumberedError(errnum::PathNotFound, fmt::format(messages::DriveNotReachable, static_cast<char>(letter - 'a' + 'A')));
    return *folder;
}

fs::path TargetFiles::find(std::string_view path) const {
    if (path.find('\0') != std::string_view::npos) throw NumberedError(errnum::InvalidCall, messages::InvalidFileName);
    if (path.size() > 1 && isSeparator(path[0]) && isSeparator(path[1]))
        throw NumberedError(errnum::PathNotFound, messages::NetworkPathNotReachable + std::string(path));
    if (hasDrive(path)) return lookUp(driveFolder(lowerLetter(path[0])), partsOf(path.substr(2)));
    if (std::none_of(path.begin(), path.end(), isSeparator)) {
        const std::string folder = windowsFolder();
        if (hasDrive(folder)) return lookUp(driveFolder(lowerLetter(folder[0])), partsOf(folder.substr(2) + "\\" + std::string(path)));
    }
    return lookUp(driveFolder('c'), partsOf(path));
}

bool TargetFiles::isFile(std::string_view path) const {
    try {
        std::error_code error;
        return fs::is_regular_file(find(path), error);
    } catch (const NumberedError&) {
        return false;
    }
}

bool TargetFiles::exists(std::string_view path) const {
    try {
        std::error_code error;
        return !path.empty() && fs::exists(find(path), error);
    } catch (const NumberedError&) {
        return false;
    }
}

std::vector<fs::path> filesFitting(const fs::path& folder, std::string_view pattern) {
    std::vector<fs::path> found;
    std::error_code error;
    if (pattern.find_first_of("*?") == std::string_view::npos) {
        const fs::path file = folder / pathFromUtf8(pattern);
        if (fs::exists(file, error)) found.push_back(file);
        return found;
    }
    for (fs::directory_iterator place(folder, error), end; !error && place != end; place.increment(error))
        if (fitsPattern(utf8FromPath(place->path().filename()), pattern)) found.push_back(place->path());
    return found;
}

std::vector<fs::path> TargetFiles::matches(std::string_view pattern) const {
    const std::size_t cut = pattern.find_last_of("\\/");
    const std::string_view last = cut == std::string_view::npos ? pattern : pattern.substr(cut + 1);
    if (last.find_first_of("*?") == std::string_view::npos) return exists(pattern) ? std::vector{find(pattern)} : std::vector<fs::path>();
    return filesFitting(find(cut == std::string_view::npos ? windowsFolder() : std::string(pattern.substr(0, cut + 1))), last);
}

std::optional<std::string> TargetFiles::windowsPath(const fs::path& file) const {
    if (!reachable()) return std::nullopt;
    std::error_code error;
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        const auto folder = drive_(letter);
        if (!folder) continue;
        // As the drive is named, and as it really lies, which is what find answers.
        for (const fs::path& top : {folder->lexically_normal(), fs::weakly_canonical(*folder, error)}) {
            const fs::path below = file.lexically_normal().lexically_relative(top);
            if (below.empty() || *below.begin() == "..") continue;
            std::string text = std::string(1, static_cast<char>(letter - 'a' + 'A')) + ":\\";
            for (const fs::path& part : below)
                if (part != ".") text += (text.size() > 3 ? "\\" : "") + utf8FromPath(part);
            return text;
        }
    }
    return std::nullopt;
}

}  // namespace brenvik
