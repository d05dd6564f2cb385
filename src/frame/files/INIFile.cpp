#include "frame/files/INIFile.h"

#include "frame/Messages.h"
#include "frame/files/ProfileFile.h"
#include "frame/text/Conversions.h"

namespace brenvik {
namespace {

// Runs a write; a failure is traced with its reason and told as a file that cannot be written.
template <class Write> bool written(FrameContext& ctx, Write write) {
    try {
        write();
        return true;
    } catch (const NumberedError& error) {
        ctx.trace.write("--- Fehler: " + std::string(error.what()));
        ctx.port.tell(messages::IniWriteProtected);
        return false;
    }
}

}  // namespace

bool INISchreiben(FrameContext& ctx, const std::filesystem::path& file, std::string_view section, std::string_view key, std::string_view value) {
    if (textLength(key) > INIBound || textLength(value) > INIBound) {
        ctx.port.tell(messages::IniZuLang1 + numberText(INIBound) + messages::IniZuLang2);
        return false;
    }
    if (!written(ctx, [&] { writeProfileValue(file, section, key, value); })) return false;
    ctx.port.tell(messages::IniSaved);
    return true;
}

bool INILoeschen(FrameContext& ctx, const std::filesystem::path& file, std::string_view section, std::string_view key) {
    if (section.empty() || key.empty()) {
        ctx.port.tell(messages::IniNothingToDelete);
        return false;
    }
    return written(ctx, [&] { deleteProfileKey(file, section, key); });
}

bool INISektionSchreiben(FrameContext& ctx, const std::filesystem::path& file, std::string_view section, const std::vector<std::string>& lines) {
    if (!written(ctx, [&] { writeProfileSection(file, section, lines); })) return false;
    ctx.port.tell(messages::IniSaved);
    return true;
}

}  // namespace brenvik
