#pragma once
// One function adds one group of commands. A command stores its work in `run`, which answers the exit code:
// 0 done, 1 failed (the reason went to stderr), 2 wrong usage; drift and others have further ones.
#include <CLI/CLI.hpp>
#include <functional>

#include "lists/Lists.h"
#include "tipengine/Program.h"

namespace brenvik::cli {

struct Aufruf {
    bool json = false;
    bool yes = false;
    bool keep = false;          // what was changed again since stays when a change is taken back
    bool needsDatabase = false;
    bool ownPlaces = false;     // works on what its arguments name; the home is opened if that lies there
    std::string bootName;       // of a new entry of the boot menu; empty: the entry is overwritten
    Listen* listen = nullptr;   // there while the command runs
    std::function<int(Programm&)> run;
};

// The machine that commands work on, from --machine. False: it does not answer, and stderr says why.
bool selectMachine(Programm& programm, const std::string& machine);

void addTippBefehle(CLI::App& app, Aufruf& call);
void addRegistryBefehle(CLI::App& app, Aufruf& call);
void addHistoryBefehle(CLI::App& app, Aufruf& call);   // history, and below it
void addDriftCommand(CLI::App& app, Aufruf& call);
void addExportBefehle(CLI::App& app, Aufruf& call);
void addListenBefehle(CLI::App& app, Aufruf& call);     // list, apply

}  // namespace brenvik::cli
