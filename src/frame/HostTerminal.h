#pragma once
// What a command line asks of the terminal it runs in.
#include <cstdio>

namespace brenvik::host {

bool isTerminal(std::FILE* stream);

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
