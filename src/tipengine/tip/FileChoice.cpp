#include "tipengine/tip/FileChoice.h"

#include "frame/Errors.h"
#include "frame/files/FileSystem.h"

namespace brenvik {

std::string choiceStart(RegistryContext& ctx, const std::string& present) {
    const TargetFiles& files = ctx.target().files();
    std::error_code error;
    for (const std::string& path : {present, windowsFolder(ctx).substr(0, 3)}) {
        try {
            const auto file = userPath(files, path);
            if (!path.empty() && std::filesystem::exists(file.parent_path(), error)) return utf8FromPath(file);
        } catch (const NumberedError&) {   // no path of this machine
        }
    }
    return {};
}

std::string chosenPath(RegistryContext& ctx, const std::string& choice) {
    const auto file = pathFromUtf8(choice);
    return file.is_absolute() ? ctx.target().files().windowsPath(file).value_or(choice) : choice;
}

}  // namespace brenvik
