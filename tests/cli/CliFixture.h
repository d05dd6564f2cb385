#pragma once
// brenvik-cli as its user runs it, on homes of the test's own.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "support/CommandRun.h"
#include "support/TempDir.h"

namespace brenvik::test {

class Cliprobe : public ::testing::Test {
protected:
    using Worte = std::vector<std::string>;

    Ergebnis cli(Worte arguments, const std::string& home = "heim", const std::string& input = {}) {
        arguments.insert(arguments.begin(), {"--home", path(home)});
        return run(program, arguments, {}, input);
    }
    // Runs it, expects success without a word on stderr, and answers what it printed.
    std::string out(const Worte& arguments, const std::string& home = "heim") {
        const Ergebnis e = cli(arguments, home);
        EXPECT_EQ(e.code, 0) << e.err;
        EXPECT_EQ(e.err, "");
        return e.out;
    }
    // Expects a refusal that prints nothing on stdout, and answers what it says.
    std::string fails(const Worte& arguments, int code = 1) {
        const Ergebnis e = cli(arguments);
        EXPECT_EQ(e.code, code) << e.err;
        EXPECT_EQ(e.out, "");
        return e.err;
    }
    nlohmann::json parsed(Worte arguments) {
        arguments.insert(arguments.begin(), "--json");
        return nlohmann::json::parse(cli(arguments).out);
    }
    std::string path(const std::string& name) const { return (dir / name).string(); }

    const std::string program = (std::filesystem::path(BRENVIK_PROGRAMM_DIR) / "brenvik-cli").string();
    TempDir dir;
};

}  // namespace brenvik::test
