#pragma once
// One function adds one group of commands. A command stores its work in `run`, which answers the exit code:
// 0 done, 1 failed (the reason went to stderr), 2 wrong usage; drift and others have further ones.
#include <CLI/CLI.hpp>
#include <functional>

#include "lists/Lists.h"
#include "tipengine/Program.h"

namespace brenvik::cli {

struct Invocation {
    bool json = false;
    bool yes = false;
    bool keep = false;          // what was changed again since stays when a change is taken back
    bool needsDatabase = false;
    bool ownPlaces = false;     // works on what its arguments name; the home is opened if that lies there
    std::string bootName;       // of a new entry of the boot menu; empty: the entry is overwritten
    Listen* listen = nullptr;   // there while the command runs
    std::function<int(Program&)> run;
};

// The machine that commands work on, from --machine. False: it does not answer, and stderr says why.
bool selectMachine(Program& program, const std::string& machine);

void addTipCommands(CLI::App& app, Invocation& call);
void addRegistryCommands(CLI::App& app, Invocation& call);
void addHistoryCommands(CLI::App& app, Invocation& call);   // history, and below it
void addDriftCommand(CLI::App& app, Invocation& call);
void addExportCommands(CLI::App& app, Invocation& call);
void addListCommands(CLI::App& app, Invocation& call);     // list, apply

}  // namespace brenvik::cli
