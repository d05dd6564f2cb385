#pragma once
// What a command line asks of the terminal it runs in.
#include <cstdio>
#include <optional>
#include <string>

namespace brenvik::host {

bool isTerminal(std::FILE* stream);

// Writing to a pipe that nobody reads any more then fails like any other write, and does not end the process.
void surviveBrokenPipes();

// The first line that comes from a descriptor, without its end, for what no command line should hold. Nothing if the
// descriptor cannot be read, or the line is longer than MaxSecret.
inline constexpr std::size_t MaxSecret = 1024;
std::optional<std::string> readSecretLine(int descriptor);

// While one lives, Ctrl+C only sets a mark that long work looks at; a second Ctrl+C ends the process. One at a time.
class InterruptWatch {
public:
    InterruptWatch();
    ~InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;
    bool interrupted() const;

private:
    void (*before_)(int);
};

inline constexpr int InterruptedExitCode = 130;

}  // namespace brenvik::host
