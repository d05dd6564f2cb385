#include "frame/platform/HostTerminal.h"

#include <cerrno>
#include <csignal>
#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace brenvik::host {
namespace {

volatile std::sig_atomic_t interruptSeen = 0;   // a signal handler can reach nothing else

void onInterrupt(int) {
    interruptSeen = 1;
    std::signal(SIGINT, SIG_DFL);
}

}  // namespace

#ifdef _WIN32
bool isTerminal(std::FILE* stream) { return ::_isatty(::_fileno(stream)) != 0; }
void surviveBrokenPipes() {}   // there are no signals for them
int readByte(int descriptor, char& byte) { return ::_read(descriptor, &byte, 1); }
#else
bool isTerminal(std::FILE* stream) { return ::isatty(::fileno(stream)) != 0; }
void surviveBrokenPipes() { std::signal(SIGPIPE, SIG_IGN); }
ssize_t readByte(int descriptor, char& byte) { return ::read(descriptor, &byte, 1); }
#endif

std::optional<std::string> readSecretLine(int descriptor) {
    std::string line;
    char byte = 0;
    for (;;) {
        const auto got = readByte(descriptor, byte);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0 || line.size() > MaxSecret) return std::nullopt;
        if (got == 0 || byte == '\n') break;
        line += byte;
    }
    if (line.ends_with('\r')) line.pop_back();
    return line;
}

InterruptWatch::InterruptWatch() {
    interruptSeen = 0;
    before_ = std::signal(SIGINT, onInterrupt);
}

InterruptWatch::~InterruptWatch() { std::signal(SIGINT, before_ == SIG_ERR ? SIG_DFL : before_); }

bool InterruptWatch::interrupted() const { return interruptSeen != 0; }

}  // namespace brenvik::host
