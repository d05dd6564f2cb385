#pragma once
// The registry commands, one function for each file of them.
#include "cli/Befehle.h"
#include "cli/RegistryAusgabe.h"

namespace brenvik::cli {

struct RegistryGruppe {
    CLI::App& group;
    Aufruf& call;

    CLI::App* add(const char* name, const std::string& text) { return group.add_subcommand(name, text); }
    void on(CLI::App* command, std::function<int(Programm&)> work, int failureCode = 1) {
        command->callback([&target = call, work = std::move(work), failureCode] { target.run = reported(work, failureCode); });
    }
};

inline constexpr const char* PfadHilfe =
    "Pfad, z.B. HKCU\\Control Panel\\Desktop, oder Schlüssel in einer Hive-Datei: DATEI:\\Schlüssel";

void addLesebefehle(RegistryGruppe group);       // list, read
void addSuchbefehl(RegistryGruppe group);        // find
void addAenderungsbefehle(RegistryGruppe group); // write, delete, copy
void addTextbefehle(RegistryGruppe group);       // export, import
void addHivebefehle(RegistryGruppe group);       // save, restore
void addVergleichsbefehl(RegistryGruppe group);  // diff

}  // namespace brenvik::cli
