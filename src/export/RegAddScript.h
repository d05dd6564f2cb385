#pragma once
// A command file for Windows that sets the values with reg.exe. It ends with errorlevel 1 if something failed.
#include <string>
#include <string_view>
#include <vector>

#include "export/ExportValues.h"

namespace brenvik {

struct RegAddScript {
    std::string bytes;                       // CR LF; Windows-1252, or UTF-8 where that lacks a character
    std::vector<std::string> obstacles;    // German: values that no such line can hold; then bytes is empty
};

// kopf: comment lines for its top, with their "; ".
RegAddScript regAddScript(const ExportRecord& item, const std::vector<std::string>& head);

// One argument of reg.exe in a line of a command file: first for the program's own reading of quotes and backslashes,
// then for the command processor, which reads the line before.
std::string cmdArgument(std::string_view text);

}  // namespace brenvik
