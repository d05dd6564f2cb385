#include "registry/RegistryContext.h"

#include "frame/program/Detection.h"
#include "frame/text/Conversions.h"

namespace brenvik {
namespace {

constexpr const char* EnvironmentKey = "System\\CurrentControlSet\\Control\\Session Manager\\Environment";

bool isLocal(const RegistryContext& ctx) { return ctx.strRechnername.empty() || ctx.strRechnername == ctx.strLokalerRechner; }

}  // namespace

std::string windowsFolder(RegistryContext& ctx) {
    const std::string folder = isLocal(ctx) ? std::string() : ctx.target().files().windowsFolder();
    return folder.empty() ? ctx.strWindir : folder;
}

std::string systemFolder(RegistryContext& ctx) { return isLocal(ctx) ? ctx.strSystemVerzeichnis : windowsFolder(ctx) + "\\system32\\"; }

std::string targetEnvironment(RegistryContext& ctx, std::string_view name) {
    if (isLocal(ctx)) return environmentValue(ctx, name);
    const std::string wanted = lowerCase(name);
    if (wanted == "windir" || wanted == "systemroot") return windowsFolder(ctx);
    if (wanted == "systemdrive") return windowsFolder(ctx).substr(0, 2);
    const auto value = ctx.target().store().value(Root::LocalMachine, EnvironmentKey, ValueName::named(std::string(name)));
    return value ? toText(*value) : std::string();
}

}  // namespace brenvik
