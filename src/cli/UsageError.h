#pragma once
// What is wrong with a command line, and its help, in German.
#include <string>

#include <CLI/CLI.hpp>

namespace brenvik::cli {

// Headings of the help pages of a command and those below it. Called when all commands are there.
void germanHelp(CLI::App& app);

std::string usageProblem(const CLI::App& app, const CLI::ParseError& error);

}  // namespace brenvik::cli
