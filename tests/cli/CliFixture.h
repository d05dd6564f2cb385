#pragma once
// brenvik-cli as its user runs it, on homes of the test's own.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "support/CommandRun.h"
#include "support/TempDir.h"

namespace brenvik::test {

class CliFixture : public ::testing::Test {
protected:
    using Words = std::vector<std::string>;

    CommandRun cli(Words arguments, const std::string& home = "heim", const std::string& input = {}) {
        arguments.insert(arguments.begin(), {"--home", path(home)});
        return run(program, arguments, {}, input);
    }
    // Runs it, expects success without a word on stderr, and answers what it printed.
    std::string out(const Words& arguments, const std::string& home = "heim") {
        const CommandRun e = cli(arguments, home);
        EXPECT_EQ(e.code, 0) << e.err;
        EXPECT_EQ(e.err, "");
        return e.out;
    }
    // Expects a refusal that prints nothing on stdout, and answers what it says.
    std::string fails(const Words& arguments, int code = 1) {
        const CommandRun e = cli(arguments);
        EXPECT_EQ(e.code, code) << e.err;
        EXPECT_EQ(e.out, "");
        return e.err;
    }
    nlohmann::json parsed(Words arguments) {
        arguments.insert(arguments.begin(), "--json");
        return nlohmann::json::parse(cli(arguments).out);
    }
    std::string path(const std::string& name) const { return (dir / name).string(); }

    const std::string program = (std::filesystem::path(BRENVIK_PROGRAMM_DIR) / "brenvik-cli").string();
    TempDir dir;
};

}  // namespace brenvik::test
