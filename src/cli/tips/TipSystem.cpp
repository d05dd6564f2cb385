#include "cli/tips/TipSystem.h"

#include <fmt/format.h>

#include <iostream>

#include "cli/registry/RegistryOutput.h"
#include "frame/program/Detection.h"
#include "frame/text/Conversions.h"
#include "registry/machine/TargetSystem.h"
#include "tipengine/tip/TipSystems.h"

namespace brenvik::cli {

TargetWindows targetWindows(Context& ctx) {
    constexpr std::int16_t WindowsXP = 6;
    if (ctx.strRechnername.empty() || equalText(ctx.strRechnername, ctx.strLokalerRechner)) return {ctx.intBS, ctx.strBS};
    TargetSystem& target = ctx.target();
    const OSVERSIONINFO version = target.version();
    const OperatingSystem system = determineSystem(version.dwPlatformId, version.dwMajorVersion, version.dwMinorVersion);
    const std::string name = target.systemName();
    return {system.intBS == 0 && ctx.einstellungen.BSErsatz ? WindowsXP : system.intBS, name.empty() ? system.strBS : name};
}

void warnIfNotMeant(Context& ctx, std::int32_t number, const Tipp& tipp) {
    const TargetWindows target = targetWindows(ctx);
    if (isMeantFor(tipp, target.intBS)) return;
    std::string others;
    for (const std::string& name : systemsOf(tipp)) others += (others.empty() ? "" : ", ") + name;
    const std::string machine = ctx.strRechnername.empty() ? ctx.strLokalerRechner : ctx.strRechnername;
    std::cerr << oneLine(fmt::format("Achtung: Der Tipp {} ist nicht für das System des Rechners \"{}\" gedacht ({}), sondern für: {}", number, machine, target.name,
                                     others.empty() ? "keines" : others))
              << "\n";
}

}  // namespace brenvik::cli
