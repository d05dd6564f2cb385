#include "shell/program/ConnectTools.h"

#include "frame/Messages.h"
#include "frame/files/FileSystem.h"
#include "shell/QtPort.h"
#include "shell/main/frmBVK_Prog.h"
#include "tipengine/Program.h"

namespace brenvik {
namespace {

constexpr const char* Msinfo32 = "Microsoft Shared\\MSInfo\\msinfo32.exe";

struct Werkzeug {
    Befehl befehl;
    const char* file;
};
constexpr Werkzeug Plain[] = {
    {Befehl::Regedit, "regedit.exe"},       {Befehl::Regedt32, "regedt32.exe"},     {Befehl::Dxdiag, "dxdiag.exe"},     {Befehl::Sigverif, "sigverif.exe"},
    {Befehl::DrWatson16, "drwatson.exe"},   {Befehl::DrWatson32, "drwtsn32.exe"},   {Befehl::Eventvwr, "eventvwr.exe"},
};

void launch(UserPort& port, const std::string& program, const std::vector<std::string>& arguments = {}) {
    if (port.startProgram(program, arguments)) return;
    const std::string& named = arguments.empty() ? program : arguments.back();
    port.tell(meldung::ProgrammStart1 + named.substr(named.rfind('\\') + 1) + meldung::ProgrammStart2);
}

// The German Windows keeps it elsewhere than all others.
std::string msinfo32(const Context& ctx) {
    const std::string german = ctx.strWinLaufwerk + "Programme\\Gemeinsame Dateien\\" + Msinfo32;
    std::error_code error;
    if (std::filesystem::is_regular_file(userPath(ctx, german), error)) return german;
    return ctx.strWinLaufwerk + "Program Files\\Common Files\\" + Msinfo32;
}

}  // namespace

void verbindeDatenbankwahl(Fensterteile& teile) {
    TippMaschine& engine = teile.programm.maschine();
    teile.fenster.setCommand(Befehl::AndereDBLaden, [&engine] { engine.tree().mnuandereDBLoad(); });
    teile.fenster.setCommand(Befehl::BVKDBLaden, [&engine] { engine.tree().mnuBVKDBLoad(); });
}

void verbindeWerkzeuge(Fensterteile& teile) {
    frmBVK_Prog& window = teile.fenster;
    UserPort& port = teile.port;
    Context& ctx = teile.programm.context();
    for (const Werkzeug& tool : Plain) window.setCommand(tool.befehl, [&port, file = tool.file] { launch(port, file); });
    window.setCommand(Befehl::Gpedit, [&port, &ctx] { launch(port, "mmc", {ctx.strWindir + "\\system32\\gpedit.msc"}); });
    window.setCommand(Befehl::Msinfo32, [&port, &ctx] { launch(port, msinfo32(ctx)); });
}

}  // namespace brenvik
