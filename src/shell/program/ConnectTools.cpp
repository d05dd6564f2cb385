#include "shell/program/ConnectTools.h"

#include "frame/Messages.h"
#include "frame/files/FileSystem.h"
#include "shell/QtPort.h"
#include "shell/main/frmBVK_Prog.h"
#include "tipengine/Program.h"

namespace brenvik {
namespace {

constexpr const char* Msinfo32 = "Microsoft Shared\\MSInfo\\msinfo32.exe";

struct Tool {
    Command command;
    const char* file;
};
constexpr Tool Plain[] = {
    {Command::Regedit, "regedit.exe"},       {Command::Regedt32, "regedt32.exe"},     {Command::Dxdiag, "dxdiag.exe"},     {Command::Sigverif, "sigverif.exe"},
    {Command::DrWatson16, "drwatson.exe"},   {Command::DrWatson32, "drwtsn32.exe"},   {Command::Eventvwr, "eventvwr.exe"},
};

void launch(UserPort& port, const std::string& program, const std::vector<std::string>& arguments = {}) {
    if (port.startProgram(program, arguments)) return;
    const std::string& named = arguments.empty() ? program : arguments.back();
    port.tell(messages::ProgramStart1 + named.substr(named.rfind('\\') + 1) + messages::ProgramStart2);
}

// The German Windows keeps it elsewhere than all others.
std::string msinfo32(const Context& ctx) {
    const std::string german = ctx.strWinLaufwerk + "Programme\\Gemeinsame Dateien\\" + Msinfo32;
    std::error_code error;
    if (std::filesystem::is_regular_file(userPath(ctx, german), error)) return german;
    return ctx.strWinLaufwerk + "Program Files\\Common Files\\" + Msinfo32;
}

}  // namespace

void connectDatabaseChoice(WindowParts& parts) {
    TipEngine& engine = parts.program.engine();
    parts.windows.setCommand(Command::LoadOtherDB, [&engine] { engine.tree().mnuandereDBLoad(); });
    parts.windows.setCommand(Command::BVKDBLaden, [&engine] { engine.tree().mnuBVKDBLoad(); });
}

void connectTools(WindowParts& parts) {
    frmBVK_Prog& window = parts.windows;
    UserPort& port = parts.port;
    Context& ctx = parts.program.context();
    for (const Tool& tool : Plain) window.setCommand(tool.command, [&port, file = tool.file] { launch(port, file); });
    window.setCommand(Command::Gpedit, [&port, &ctx] { launch(port, "mmc", {ctx.strWindir + "\\system32\\gpedit.msc"}); });
    window.setCommand(Command::Msinfo32, [&port, &ctx] { launch(port, msinfo32(ctx)); });
}

}  // namespace brenvik
