#include <iostream>

#include "cli/Befehle.h"
#include "frame/DateiSystem.h"
#include "frame/Konvertierung.h"

namespace brenvik::cli {
namespace {

constexpr std::uint32_t LocalMachineRoot = 0x80000002;
constexpr std::int32_t AccessDenied = 5, NotFound = 53;

// A folder is told from a name by its separators.
std::string machineName(const std::string& text) {
    std::error_code error;
    const auto folder = pathFromUtf8(text);
    return std::filesystem::is_directory(folder, error) ? utf8FromPath(std::filesystem::absolute(folder)) : text;
}

}  // namespace

bool selectMachine(Programm& programm, const std::string& text) {
    const std::string machine = machineName(text);
    Context& ctx = programm.context();
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
    programm.takeProfile();
    return true;
}

}  // namespace brenvik::cli
