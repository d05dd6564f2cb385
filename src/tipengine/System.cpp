#include "tipengine/System.h"

#include <fmt/format.h>

#include "frame/Reports.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "registry/ValueOperations.h"
#include "registry/machine/LocalMachines.h"
#include "tipengine/Messages.h"

namespace brenvik {
namespace {

constexpr const char* NtVersion = "HKLM\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\";
constexpr const char* WinVersion = "HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\";

std::string machineValue(RegistryContext& ctx, const std::string& path) {
    ctx.objBVKReg.SetPath(ctx.strLokalerRechner, path);
    return ctx.objBVKReg.Exists(KEY_QUERY_VALUE_MASK) ? ctx.objBVKReg.ReadValue(false) : std::string();
}

std::uint32_t wholeOf(const std::string& text) {
    const double value = Val(text);
    return value < 0 || value > 1e9 ? 0 : static_cast<std::uint32_t>(value);
}

}  // namespace

OSVERSIONINFO readSystemVersion(RegistryContext& ctx) { return ctx.machines.target(ctx.strLokalerRechner).version(); }

void UserSIDRead(RegistryContext& ctx, const std::string& machine) {
    ProcTrace trace(ctx.trace, "UserSIDRead");
    trace.p(machine);
    ctx.strDefaultUserID.clear();
    reportAndGoOn(ctx, "UserSIDRead", [&] {
        ctx.objBVKReg.SetPath(machine, "HKCU\\Identities\\Default User ID");
        if (ctx.objBVKReg.Exists(KEY_QUERY_VALUE_MASK)) ctx.strDefaultUserID = ctx.objBVKReg.ReadValue(false);
    });
}

void readUserAndDirectories(RegistryContext& ctx, SqliteStore& local) {
    if (const std::string root = machineValue(ctx, std::string(NtVersion) + "SystemRoot"); root.size() >= 3) ctx.strWindir = root;
    else if (const std::string old = machineValue(ctx, std::string(WinVersion) + "SystemRoot"); old.size() >= 3) ctx.strWindir = old;
    ctx.strWindir = Windir(ctx);
    ctx.strWinLaufwerk = Left(ctx.strWindir, 3);
    ctx.trace.write("Windows Laufwerk: " + ctx.strWinLaufwerk);
    ctx.strSystemLaufwerk = ctx.strWinLaufwerk;
    ctx.trace.write("System Laufwerk: " + ctx.strSystemLaufwerk);
    ctx.strEigeneSID = local.currentUserSid();
    ctx.strUserName = storedUserName(local, ctx.strEigeneSID);
    if (ctx.strUserName.empty()) ctx.strUserName = ReadUserName(ctx);
    ctx.trace.write("User Name: " + ctx.strUserName);
}

void readBrowserVersion(RegistryContext& ctx) {
    const auto parts = Split(machineValue(ctx, "HKLM\\SOFTWARE\\Microsoft\\Internet Explorer\\Version"), ".");
    const auto part = [&](std::size_t i) { return i < parts.size() ? static_cast<std::int32_t>(wholeOf(parts[i])) : 0; };
    ctx.intIEMajor = part(0);
    ctx.intIEMinor = part(1);
    ctx.intIEBuild = part(2);
}

std::string profileUnknown(Context& ctx) {
    std::string names;
    for (const TargetProfile& p : ctx.target().profiles()) names += (names.empty() ? "" : ", ") + p.userName + " (" + p.sid + ")" + (p.missing.empty() ? "" : " - " + p.missing);
    return fmt::format(messages::ProfileUnknown, ctx.strParamProfil, names.empty() ? messages::NoProfiles : names);
}

bool TestConnect(Context& ctx) {
    constexpr std::uint32_t LocalMachineRoot = 0x80000002;
    constexpr std::int32_t AccessDenied = 5, NotFound = 53;
    ProcTrace trace(ctx.trace, "TestConnect");
    bool reached = true;
    reportAndGoOn(ctx, "TestConnect", [&] {
        if (ctx.strRechnername.empty() || equalText(ctx.strRechnername, ctx.strLokalerRechner)) return;
        const std::int32_t code = ctx.objBVKReg.ConnectRemote(ctx.strRechnername, LocalMachineRoot);
        if (code == 0) return;
        reached = false;
        const std::string reason = code == AccessDenied ? strBVKTexte(86) : code == NotFound ? strBVKTexte(87) : strBVKTexte(88) + numberText(code);
        ctx.port.tell(strBVKTexte(89) + reason);
        ctx.strRechnername = ctx.strLokalerRechner;
    });
    trace.r(reached);
    return reached;
}

void tellTargetNotes(Context& ctx) {
    std::string text;
    for (const std::string& note : ctx.target().notes()) text += (text.empty() ? "" : "\r\n") + note;
    if (!text.empty()) ctx.port.tell(text, box::Information, ctx.strRechnername);
}

void turnToMachine(Context& ctx, const std::string& machine, StartDisplay& display, const LoadSteps::Logon& account) {
    level(ctx, 152);
    display.Update(90);
    ctx.port.letEventsRun();
    ctx.strRechnername = machine;
    if (!ctx.strParamUser.empty() && account) account(machine, ctx.strParamUser, ctx.strParamPasswort);
    TestConnect(ctx);
    ctx.blnLokal = equalText(ctx.strRechnername, ctx.strLokalerRechner);
    if (!ctx.strParamProfil.empty() && !ctx.target().chooseProfile(ctx.strParamProfil)) ctx.port.tell(profileUnknown(ctx), box::Exclamation);
    tellTargetNotes(ctx);
}

void BSEinstellungen(Context& ctx, RegStore& local, StartDisplay& display, const LoadSteps::Logon& account) {
    ProcTrace trace(ctx.trace, "BSEinstellungen");
    MainWindow& window = ctx.frmBVK_Prog;
    const auto hidden = hiddenMenus(ctx.intBS);
    window.hidden["System"] = {hidden.begin(), hidden.end()};
    if (ctx.intBS == 0) return;
    window.blnNTFamilie = ctx.istNT();
    if (!ctx.istNT()) {
        ctx.blnAdmin = true;
        ctx.strSystemVerzeichnis = ctx.strWindir + "\\system\\";
        ctx.strRechnername = ctx.strLokalerRechner;
        return;
    }
    level(ctx, 178);
    display.Update(85);
    ctx.port.letEventsRun();
    ctx.port.sleepMs(shortPauseMs);
    ctx.blnAdmin = local.writable();   // whoever may write the whole registry
    ctx.trace.write("Adminrechte: " + traceText(ctx.blnAdmin));
    if (ctx.blnAdmin) {
        ctx.blnPrivilegien = ctx.objBVKReg.EnablePrivileges(ctx.strLokalerRechner);
    } else {
        // Where it is no right that is missing the true reason is told, by whoever opened the registry.
        if (local.whyReadOnly().empty()) {
            ctx.click();
            ctx.port.tell(strBVKTexte(8));
        }
        ctx.blnPrivilegien = false;
    }
    ctx.strSystemVerzeichnis = ctx.strWindir + "\\system32\\";
    ctx.strRechnername = ctx.strLokalerRechner;
    if (!ctx.strParamPC.empty()) turnToMachine(ctx, ctx.strParamPC, display, account);
}

}  // namespace brenvik
