#include "frame/files/DefaultFolders.h"

#include <algorithm>

#include "frame/files/FileSystem.h"

namespace brenvik {
namespace {

constexpr char Separator = static_cast<char>(std::filesystem::path::preferred_separator);

}  // namespace

std::string folderText(const std::filesystem::path& folder) {
    std::string text = utf8FromPath(folder.lexically_normal());
    while (text.size() > 1 && (text.back() == '/' || text.back() == Separator)) text.pop_back();
    return text;
}

std::string defaultFolder(const FolderSetting& entry, const std::string& base) {
    return (base.ends_with(Separator) ? base : base + Separator) + entry.below;
}

std::string defaultFolder(const FrameContext& ctx, const FolderSetting& entry) { return defaultFolder(entry, folderText(ctx.*entry.base)); }

std::string defaultFolder(const FrameContext& ctx, std::string Settings::*field) {
    const auto entry = std::find_if(FolderSettings.begin(), FolderSettings.end(), [&](const FolderSetting& e) { return e.field == field; });
    return defaultFolder(ctx, *entry);
}

std::string takenAlong(const std::string& folder, const std::string& baseThen, const std::string& baseNow) {
    if (baseThen.empty() || !folder.starts_with(baseThen)) return folder;
    const std::string rest = folder.substr(baseThen.size());
    if (!rest.empty() && rest[0] != Separator && !baseThen.ends_with(Separator)) return folder;
    return baseNow + rest;
}

}  // namespace brenvik
