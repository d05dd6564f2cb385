#include "tipengine/Dateiwahl.h"

#include "frame/DateiSystem.h"
#include "frame/Errors.h"

namespace brenvik {

std::string choiceStart(const FrameContext& ctx, const std::string& present) {
    std::error_code error;
    try {
        const auto file = userPath(ctx, present);
        if (!present.empty() && std::filesystem::exists(file.parent_path(), error)) return utf8FromPath(file);
    } catch (const NumberedError&) {   // no path of this machine
    }
    return utf8FromPath(hostPath(ctx, "C:\\"));
}

std::string chosenPath(const FrameContext& ctx, const std::string& choice) {
    const auto file = pathFromUtf8(choice);
    return file.is_absolute() ? windowsPath(ctx, file) : choice;
}

}  // namespace brenvik
