#pragma once
// The registry commands, one function for each file of them.
#include "cli/Commands.h"
#include "cli/registry/RegistryOutput.h"

namespace brenvik::cli {

struct RegistryGruppe {
    CLI::App& group;
    Aufruf& call;
    std::shared_ptr<bool> salvage = std::make_shared<bool>(false);

    CLI::App* add(const char* name, const std::string& text) const { return group.add_subcommand(name, text); }
    void maySalvage(CLI::App* command) const {
        command->add_flag("--salvage", *salvage, "Von beschädigten Hive-Dateien lesen, was lesbar ist; die Schäden gehen auf die Fehlerausgabe");
    }
    void on(CLI::App* command, std::function<int(Programm&, Orte&)> work, int failureCode = 1) const {
        command->callback([&target = call, salvaging = salvage, work = std::move(work), failureCode] {
            target.ownPlaces = true;
            target.run = reported(
                [work, salvaging](Programm& programm) {
                    Orte places(programm, *salvaging);
                    return work(programm, places);
                },
                failureCode);
        });
    }
};

inline constexpr const char* KeyNeeded = "Hier gehört der Schlüssel dazu: DATEI:\\HKCU\\Schlüssel";

inline constexpr const char* PfadHilfe =
    "Pfad, z.B. HKCU\\Control Panel\\Desktop, oder Schlüssel in einer Hive-Datei: DATEI:\\Schlüssel, in einer REG-Datei oder registry.db: "
    "DATEI:\\HKCU\\Schlüssel, in einem Windows in einem Ordner: ORDNER:\\HKLM\\Schlüssel";

void addLesebefehle(const RegistryGruppe& group);       // list, read
void addSuchbefehl(const RegistryGruppe& group);        // find
void addAenderungsbefehle(const RegistryGruppe& group); // write, delete, copy
void addTextbefehle(const RegistryGruppe& group);       // export, import
void addHivebefehle(const RegistryGruppe& group);       // save, restore
void addHiveCheckCommands(const RegistryGruppe& group); // check, recover
void addVergleichsbefehl(const RegistryGruppe& group);  // diff

}  // namespace brenvik::cli
