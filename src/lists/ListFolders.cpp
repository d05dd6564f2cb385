#include "lists/ListFolders.h"

#include "frame/files/FileSystem.h"
#include "frame/platform/HostFile.h"
#include "frame/text/Texts.h"
#include "lists/Messages.h"

namespace brenvik {
namespace {
constexpr int TextChooseFolder = 73;
}

std::string browseForListFolder(FrameContext& ctx, const std::string& present) {
    const std::string chosen = BrowseForFolder(ctx, present, strBVKTexte(TextChooseFolder));
    return chosen.empty() ? present : chosen;
}

std::string FolderExit(FrameContext& ctx, const std::string& path) {
    ProcTrace trace(ctx.trace, "FolderExit");
    trace.p(path);
    std::string folder = withSeparator(path);
    if (!ExistFileDirDrive(ctx, folder)) {
        ctx.port.tell(messages::ListFolderMissing1 + folder + messages::ListFolderMissing2);
        folder = browseForListFolder(ctx, folder);
    }
    trace.r(folder);
    return folder;
}

bool FileWrite(FrameContext& ctx, const std::string& path) {
    try {
        const std::filesystem::path file = userPath(ctx, path);
        if (isReadOnly(file)) return false;   // a privileged user may open it all the same
        std::error_code error;
        const auto kind = std::filesystem::status(file, error);
        if (!std::filesystem::exists(kind)) return !host::makePrivate(file);
        if (!std::filesystem::is_regular_file(kind)) return false;
        std::FILE* opened = host::openFile(file, "ab");
        if (opened == nullptr) return false;
        std::fclose(opened);
        return true;
    } catch (const std::exception&) {   // a path that no file can have
        return false;
    }
}

}  // namespace brenvik
