#include "cli/registry/RegistryGroup.h"

namespace brenvik::cli {

void addRegistryCommands(CLI::App& app, Invocation& call) {
    auto* group = app.add_subcommand("registry", "Registry unmittelbar lesen und ändern");
    group->require_subcommand(1);
    const RegistryGroup commands{*group, call};
    addReadCommands(commands);
    addSearchCommand(commands);
    addChangeCommands(commands);
    addTextCommands(commands);
    addHiveCommands(commands);
    addHiveCheckCommands(commands);
    addDiffCommand(commands);
}

}  // namespace brenvik::cli
