// Windows paths and host paths.
#include <algorithm>
#include <optional>

#include "frame/DateiSystem.h"
#include "frame/Konvertierung.h"
#include "frame/Zeichen.h"

namespace brenvik {

namespace fs = std::filesystem;

namespace {

bool isSeparator(char c) { return c == '\\' || c == '/'; }
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

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

fs::path lookUp(fs::path place, const std::vector<std::string>& parts) {
    bool exists = true;
    for (const std::string& part : parts) {
        const auto spelled = exists ? findSpelling(place, part) : std::nullopt;
        exists = spelled.has_value();
        place = exists ? *spelled : place / pathFromUtf8(part);
    }
    return place;
}

}  // namespace

fs::path pathFromUtf8(std::string_view text) { return fs::path(std::u8string(text.begin(), text.end())); }

std::string utf8FromPath(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

fs::path joinPath(const fs::path& folder, std::string_view name) {
    while (!name.empty() && isSeparator(name.front())) name.remove_prefix(1);
    return folder / pathFromUtf8(name);
}

fs::path hostPath(const FrameContext& ctx, std::string_view path) {
    if (path.find('\0') != std::string_view::npos) throw NumberedError(errnum::InvalidCall, "Ungültiger Dateiname");
    if (path.size() > 1 && isSeparator(path[0]) && isSeparator(path[1]))
        throw NumberedError(errnum::PathNotFound, "Netzwerkpfade sind hier nicht erreichbar: " + std::string(path));
#ifdef _WIN32
    // A Windows of its own needs no copy: without drive_c the paths are the machine's.
    if (!fs::exists(ctx.heimPfad / "drive_c"))
        return path.find_first_of(":\\/") == std::string_view::npos ? joinPath(pathFromUtf8(ctx.strWindir), path) : pathFromUtf8(path);
#endif
    char drive = 'c';
    std::vector<std::string> parts;
    if (path.size() > 1 && isLetter(path[0]) && path[1] == ':') {
        drive = static_cast<char>(zeichen::lower(static_cast<unsigned char>(path[0])));
        parts = partsOf(path.substr(2));
    } else if (std::none_of(path.begin(), path.end(), isSeparator) && ctx.strWindir.size() > 2) {
        drive = static_cast<char>(zeichen::lower(static_cast<unsigned char>(ctx.strWindir[0])));
        parts = partsOf(ctx.strWindir.substr(2) + "\\" + std::string(path));
    } else {
        parts = partsOf(path);
    }
    return lookUp(ctx.heimPfad / (std::string("drive_") + drive), parts);
}

fs::path userPath(const FrameContext& ctx, std::string_view path) {
    const fs::path host = pathFromUtf8(path);
    if (host.is_absolute() && path.find('\0') == std::string_view::npos) return host;
    return hostPath(ctx, path);
}

std::string windowsPath(const FrameContext& ctx, const fs::path& file) {
    const fs::path below = file.lexically_normal().lexically_relative((ctx.heimPfad / "drive_c").lexically_normal());
    if (below.empty() || *below.begin() == "..") return utf8FromPath(file);
    std::string text = "C:\\";
    for (const fs::path& part : below)
        if (part != ".") text += (text.size() > 3 ? "\\" : "") + utf8FromPath(part);
    return text;
}

}  // namespace brenvik
