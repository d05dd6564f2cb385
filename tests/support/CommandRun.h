#pragma once
// Runs an executable of ours as a user would, and brings back all it printed.
#include <filesystem>
#include <string>
#include <vector>

namespace brenvik::test {

struct CommandRun {
    int code = -1;
    std::string out, err;
};

// Environment as "NAME=value" words in front of the command.
CommandRun run(const std::filesystem::path& program, const std::vector<std::string>& arguments, const std::vector<std::string>& environment = {},
             const std::string& input = {});

}  // namespace brenvik::test
