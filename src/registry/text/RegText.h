#pragma once
// The text of REG files: "REGEDIT4" in Windows-1252, and "Windows Registry Editor Version 5.00" in UTF-16LE or UTF-8
// (with or without mark; without a mark and not UTF-8, Windows-1252). Reading takes any bytes and ends in time
// linear in their number.
#include <string>
#include <string_view>
#include <vector>

#include "registry/RegOperations.h"
#include "registry/text/RegTextSource.h"

namespace brenvik {

struct RegTextProblem {
    std::size_t line = 0;   // from 1
    std::string message;    // German
    bool operator==(const RegTextProblem&) const = default;
};

struct RegText {
    std::vector<RegOperation> operations;   // in the order of the text; what was understood
    std::vector<RegTextProblem> problems;   // at most MaxRegTextProblems
    bool ok() const { return problems.empty(); }
};

inline constexpr std::size_t MaxRegTextProblems = 1000;

RegText parseRegText(std::string_view bytes);

// A file whose operations are not kept but told one by one, so that it takes about twice its size in memory.
class RegTextFile {
public:
    explicit RegTextFile(std::string bytes) : source_(readRegTextSource(std::move(bytes))) {}
    // Reads all of it, and tells what is understood; an operation may be used until the next one comes.
    std::vector<RegTextProblem> each(const RegOperationTeller& tell) const;

private:
    RegTextSource source_;
};

}  // namespace brenvik
