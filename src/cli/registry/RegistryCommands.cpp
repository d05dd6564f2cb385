#include "cli/registry/RegistryGroup.h"

namespace brenvik::cli {

void addRegistryBefehle(CLI::App& app, Aufruf& call) {
    auto* group = app.add_subcommand("registry", "Registry unmittelbar lesen und ändern");
    group->require_subcommand(1);
    const RegistryGruppe commands{*group, call};
    addLesebefehle(commands);
    addSuchbefehl(commands);
    addAenderungsbefehle(commands);
    addTextbefehle(commands);
    addHivebefehle(commands);
    addHiveCheckCommands(commands);
    addVergleichsbefehl(commands);
}

}  // namespace brenvik::cli
