#include "support/CommandRun.h"

#include <cstdlib>

#include "support/TempDir.h"

namespace brenvik::test {
namespace {

std::string quoted(const std::string& word) {
    std::string result = "'";
    for (const char c : word) result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

}  // namespace

CommandRun run(const std::filesystem::path& program, const std::vector<std::string>& arguments, const std::vector<std::string>& environment,
             const std::string& input) {
    const TempDir dir;
    std::string command = "env";
    for (const std::string& word : environment) command += " " + quoted(word);
    command += " " + quoted(program.string());
    for (const std::string& word : arguments) command += " " + quoted(word);
    command += " >" + quoted((dir / "out").string()) + " 2>" + quoted((dir / "err").string()) + " <" + quoted(dir.put("in", input).string());
    const int status = std::system(command.c_str());
    return {status < 256 ? status : status / 256, bytesOf(dir / "out"), bytesOf(dir / "err")};
}

}  // namespace brenvik::test
