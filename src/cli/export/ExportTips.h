#pragma once
// What the export and list commands share: the Tips they were given, and where their result goes.
#include "cli/Commands.h"
#include "export/ExportList.h"

namespace brenvik::cli {

struct TipChoice {
    std::vector<std::int32_t> tipps;
    std::vector<std::string> set_;   // "NUMBER=TEXT" or "NUMBER:ENTRY=TEXT": set in the panel before it is collected
    std::string output;                // file; empty: standard output

    // Options and arguments of a command; withOutput: -o too.
    void addTo(CLI::App& command, bool withOutput);
};

// A text into the panel of an entry of the Tip on screen. German: why it cannot be, or that saving would pass it over.
std::string setEntry(TipEngine& engine, std::int32_t entry, const std::string& text);
std::string emptyTextRefused(std::int32_t entry);

enum class Needs { Values, Template };   // each Tip must have values to export; must be released for templates

// The Tips collected, texts filled. Nothing: the user was told why not.
std::optional<TipList> gather(Program& program, const TipChoice& choice, Needs needs);

// Answers the exit code. fertig1 and fertig2 are told around the name of a file that was written.
int print(Program& program, const std::string& file, const std::string& bytes, const std::string& done1, const std::string& done2);

int obstacles(const std::vector<std::string>& lines, const char* was);   // tells them, answers 1

}  // namespace brenvik::cli
