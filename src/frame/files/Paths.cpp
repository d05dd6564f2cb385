// Windows paths of the program's own machine, and host paths.
#include "frame/files/FileSystem.h"

namespace brenvik {

namespace fs = std::filesystem;

fs::path pathFromUtf8(std::string_view text) { return fs::path(std::u8string(text.begin(), text.end())); }

std::string utf8FromPath(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

fs::path joinPath(const fs::path& folder, std::string_view name) {
    while (!name.empty() && (name.front() == '\\' || name.front() == '/')) name.remove_prefix(1);
    return folder / pathFromUtf8(name);
}

TargetFiles localFiles(const FrameContext& ctx) {
    const auto drive = [&ctx](char letter) -> std::optional<fs::path> {
#ifdef _WIN32
        // A Windows of its own needs no copy: without drive_c the paths are the machine's.
        if (!fs::exists(ctx.homePath / "drive_c")) return fs::path(std::string(1, letter) + ":\\");
#endif
        return ctx.homePath / (std::string("drive_") + letter);
    };
    return {drive, [&ctx] { return ctx.strWindir; }};
}

fs::path hostPath(const FrameContext& ctx, std::string_view path) { return localFiles(ctx).find(path); }

fs::path userPath(const TargetFiles& files, std::string_view path) {
    const fs::path host = pathFromUtf8(path);
    if (host.is_absolute() && path.find('\0') == std::string_view::npos) return host;
    return files.find(path);
}

fs::path userPath(const FrameContext& ctx, std::string_view path) { return userPath(localFiles(ctx), path); }

std::string windowsPath(const FrameContext& ctx, const fs::path& file) { return localFiles(ctx).windowsPath(file).value_or(utf8FromPath(file)); }

}  // namespace brenvik
