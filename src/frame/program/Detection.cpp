#include "frame/program/Detection.h"

#include "frame/Messages.h"
#include "frame/Reports.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"

namespace brenvik {

OperatingSystem determineSystem(std::uint32_t platformId, std::uint32_t major, std::uint32_t minor) {
    if (platformId == 2) {
        if (major == 4) return {3, strBVKBS(3)};
        if (major == 5 && minor == 0) return {4, strBVKBS(4)};
        if (major == 5 && minor == 1) return {6, strBVKBS(5)};
    } else if (platformId == 1) {
        if (major > 4 || (major == 4 && minor > 0)) return minor >= 90 ? OperatingSystem{5, strBVKBS(2)} : OperatingSystem{2, strBVKBS(1)};
        if (major == 4) return {1, strBVKBS(0)};
    }
    return {0, messages::UnknownOperatingSystem, platformId != 1 && platformId != 2};
}

std::string laterWindows(const OSVERSIONINFO& version) {
    constexpr std::uint32_t NT = 2, FirstBuildOf11 = 22000;
    struct Name {
        std::uint32_t major, minor;
        const char* name;
    };
    constexpr Name names[] = {{5, 2, "Windows Server 2003"}, {6, 0, "Windows Vista"}, {6, 1, "Windows 7"}, {6, 2, "Windows 8"}, {6, 3, "Windows 8.1"}};
    if (version.dwPlatformId != NT) return {};
    if (version.dwMajorVersion == 10 && version.dwMinorVersion == 0) return version.dwBuildNumber >= FirstBuildOf11 ? "Windows 11" : "Windows 10";
    for (const Name& n : names)
        if (n.major == version.dwMajorVersion && n.minor == version.dwMinorVersion) return n.name;
    return {};
}

OperatingSystem BSErmitteln(FrameContext& ctx, const OSVERSIONINFO& version) {
    constexpr std::int16_t WindowsXP = 6;
    ProcTrace trace(ctx.trace, "BSErmitteln");
    OperatingSystem system;
    reportAndGoOn(ctx, "BSErmitteln", [&] {
        ctx.trace.write(" BS-Versionsinfo:");
        ctx.trace.write(" PlatfromID: " + numberText(version.dwPlatformId));
        ctx.trace.write(" MajorVersion: " + numberText(version.dwMajorVersion));
        ctx.trace.write(" MinorVersion: " + numberText(version.dwMinorVersion));
        system = determineSystem(version.dwPlatformId, version.dwMajorVersion, version.dwMinorVersion);
        if (!system.dialog) return;
        OSErkennungRequest window;
        window.version = version;
        ctx.port.showWindow(window);
    });
    ctx.strBS = system.strBS;
    ctx.strBSName = system.intBS == 0 ? laterWindows(version) : std::string();
    ctx.intBS = system.intBS == 0 && ctx.einstellungen.BSErsatz ? WindowsXP : system.intBS;
    trace.r(system.strBS).r(system.intBS);
    return system;
}

std::vector<std::string_view> hiddenMenus(std::int16_t intBS) {
    switch (intBS) {
        case 1: return {"mnuTools"};
        case 2: return {"mnugpedit", "mnueventvwr", "mnusugverif", "mnuDrwtsn32"};
        case 3: return {"mnumsinfo32", "mnugpedit", "mnusugverif", "mnudxdiag"};
        case 5: return {"mnugpedit", "mnueventvwr"};
        default: return {};
    }
}

std::string ReadUserName(FrameContext& ctx) {
    ProcTrace trace(ctx.trace, "ReadUserName");
    const std::string name = ctx.platform.userName();
    ctx.trace.write("--- Ergebis: " + numberText(name.empty() ? 0 : 1));
    ctx.trace.write("--- User: " + name);
    const std::string result = name.empty() ? strBVKTexte(216) : name;
    trace.r(result);
    return result;
}

std::string Windir(FrameContext& ctx) {
    ProcTrace trace(ctx.trace, "Windir");
    std::string folder = ctx.platform.windowsDirectory().value_or(ctx.strWindir);
    while (folder.size() > 3 && folder.back() == '\\') folder.pop_back();
    trace.r(folder);
    return folder;
}

bool GetIEVersion(FrameContext& ctx) {
    ProcTrace trace(ctx.trace, "GetIEVersion");
    const BrowserComponent browser = ctx.platform.browserComponent().value_or(BrowserComponent{});
    if (browser.installed) {
        ctx.intIEMajor = browser.major;
        ctx.intIEMinor = browser.minor;
        ctx.intIEBuild = browser.build;
    }
    trace.r(browser.installed).r(numberText(ctx.intIEMajor) + "." + numberText(ctx.intIEMinor) + "." + numberText(ctx.intIEBuild));
    return browser.installed;
}

bool AdminCheck(FrameContext& ctx) {
    const bool result = ctx.platform.isAdministrator();
    ctx.trace.write("Adminrechte: " + boolText(result));
    return result;
}

std::string environmentValue(const FrameContext& ctx, std::string_view name) {
    const std::string wanted = lowerCase(name);
    if (wanted == "windir" || wanted == "systemroot") return ctx.strWindir;
    if (wanted == "systemdrive") return ctx.strSystemLaufwerk.substr(0, 2);
    return ctx.platform.environment(std::string(name)).value_or("");
}

}  // namespace brenvik
