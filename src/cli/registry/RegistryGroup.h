#pragma once
// The registry commands, one function for each file of them.
#include "cli/Commands.h"
#include "cli/registry/RegistryOutput.h"

namespace brenvik::cli {

struct RegistryGroup {
    CLI::App& group;
    Invocation& call;
    std::shared_ptr<bool> salvage = std::make_shared<bool>(false);

    CLI::App* add(const char* name, const std::string& text) const { return group.add_subcommand(name, text); }
    void maySalvage(CLI::App* command) const {
        command->add_flag("--salvage", *salvage, "Von beschädigten Hive-Dateien lesen, was lesbar ist; die Schäden gehen auf die Fehlerausgabe");
    }
    void on(CLI::App* command, std::function<int(Program&, Places&)> work, int failureCode = 1) const {
        command->callback([&target = call, salvaging = salvage, work = std::move(work), failureCode] {
            target.ownPlaces = true;
            target.run = reported(
                [work, salvaging](Program& program) {
                    Places places(program, *salvaging);
                    return work(program, places);
                },
                failureCode);
        });
    }
};

inline constexpr const char* KeyNeeded = "Hier gehört der Schlüssel dazu: DATEI:\\HKCU\\Schlüssel";

inline constexpr const char* PathHelp =
    "Pfad, z.B. HKCU\\Control Panel\\Desktop, oder Schlüssel in einer Hive-Datei: DATEI:\\Schlüssel, in einer REG-Datei oder registry.db: "
    "DATEI:\\HKCU\\Schlüssel, in einem Windows in einem Ordner: ORDNER:\\HKLM\\Schlüssel";

void addReadCommands(const RegistryGroup& group);       // list, read
void addSearchCommand(const RegistryGroup& group);        // find
void addChangeCommands(const RegistryGroup& group); // write, delete, copy
void addTextCommands(const RegistryGroup& group);       // export, import
void addHiveCommands(const RegistryGroup& group);       // save, restore
void addHiveCheckCommands(const RegistryGroup& group); // check, recover
void addDiffCommand(const RegistryGroup& group);  // diff

}  // namespace brenvik::cli
