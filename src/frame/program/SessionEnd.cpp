#include "frame/program/SessionEnd.h"

#include <optional>

#include "frame/Messages.h"
#include "frame/text/Texts.h"

namespace brenvik {
namespace {

constexpr std::int16_t Shutdown = 1, Restart = 2, LogOff = 4, PowerOff = 8;
constexpr std::int16_t Force = 1, ForceIfHung = 2;
constexpr std::uint32_t EWX_SHUTDOWN = 1, EWX_REBOOT = 2, EWX_FORCE = 4, EWX_POWEROFF = 8, EWX_FORCEIFHUNG = 16;
constexpr std::int32_t Reason = -1;
constexpr std::uint32_t PlatformNT = 2;

std::optional<std::uint32_t> flagsOf(std::int16_t intArt) {
    switch (intArt) {
        case Shutdown: return EWX_SHUTDOWN;
        case Restart: return EWX_REBOOT | EWX_SHUTDOWN;
        case LogOff: return 0;
        case PowerOff: return EWX_POWEROFF | EWX_SHUTDOWN;
        default: return std::nullopt;
    }
}

}  // namespace

bool SystemIstNT(const OSVERSIONINFO& version) { return version.dwPlatformId == PlatformNT; }
bool SystemHatForceIfHung(const OSVERSIONINFO& version) { return version.dwMajorVersion > 4 && version.dwPlatformId == PlatformNT; }

std::int16_t newLogonKind(std::int16_t intBS) { return intBS == 4 || intBS == 5 ? LogOff : Restart; }

std::string sessionEndText(const FrameContext& ctx, std::int16_t intArt) {
    if (!ctx.platform.canEndSession()) return messages::SessionStays;
    const int action = intArt == Shutdown ? 210 : intArt == PowerOff ? 211 : intArt == Restart ? 212 : 213;
    return strBVKTexte(208) + strBVKTexte(action) + strBVKTexte(209);
}

void ShutDown(FrameContext& ctx, std::int16_t intArt, std::int16_t intModus) {
    ProcTrace trace(ctx.trace, "ShutDown");
    trace.p(intArt).p(intModus);
    const auto kind = flagsOf(intArt);
    if (!kind) return;
    if (!ctx.platform.canEndSession()) {
        trace.note("Das System lässt seine Sitzung nicht beenden");
        ctx.port.tell(messages::SessionNotEnded, box::Information);
        return;
    }
    std::uint32_t flags = *kind;
    bool forced = false;
    if (SystemIstNT(ctx.osVersion)) ctx.platform.obtainShutdownPrivilege();
    if (!SystemHatForceIfHung(ctx.osVersion) && intModus == ForceIfHung) {
        flags |= EWX_FORCE;
        forced = true;
    } else if (intModus == Force) {
        flags |= EWX_FORCE;
    } else if (intModus == ForceIfHung) {
        flags |= EWX_FORCEIFHUNG;
    }
    if (!SystemIstNT(ctx.osVersion) && intArt == LogOff && forced) ctx.platform.terminateShell();
    ctx.platform.exitWindows(flags, Reason);
}

}  // namespace brenvik
