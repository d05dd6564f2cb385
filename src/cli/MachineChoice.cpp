#include <iostream>

#include "cli/Commands.h"
#include "frame/files/FileSystem.h"
#include "frame/text/Conversions.h"
#include "tipengine/System.h"

namespace brenvik::cli {
namespace {

constexpr std::uint32_t LocalMachineRoot = 0x80000002;
constexpr std::int32_t AccessDenied = 5, NotFound = 53;

// A folder is told from a name by a separator in it.
std::string machineName(const std::string& text) {
    return text.find('/') == std::string::npos ? text : utf8FromPath(std::filesystem::absolute(pathFromUtf8(text)));
}

}  // namespace

bool selectMachine(Program& program, const std::string& text) {
    const std::string machine = machineName(text);
    Context& ctx = program.context();
    const std::int32_t status = ctx.objBVKReg.ConnectRemote(machine, LocalMachineRoot);
    if (status != 0) {
        std::cerr << "Der Rechner \"" << machine << "\" ist nicht erreichbar: "
                  << (status == AccessDenied ? "der Zugriff wurde verweigert"
                      : status == NotFound   ? "er wurde nicht gefunden"
                                             : "Fehler " + std::to_string(status))
                  << "\n";
        return false;
    }
    ctx.strRechnername = machine;
    ctx.blnLokal = equalText(machine, ctx.strLokalerRechner);
    if (!ctx.strParamProfil.empty() && !ctx.target().chooseProfile(ctx.strParamProfil)) {
        tellTargetNotes(ctx);   // perhaps why it cannot be read
        std::cerr << profileUnknown(ctx) << "\n";
        return false;
    }
    tellTargetNotes(ctx);
    program.takeProfile();
    return true;
}

}  // namespace brenvik::cli
