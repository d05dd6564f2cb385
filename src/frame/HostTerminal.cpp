#include "frame/HostTerminal.h"

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
#else
bool isTerminal(std::FILE* stream) { return ::isatty(::fileno(stream)) != 0; }
#endif

InterruptWatch::InterruptWatch() {
    interruptSeen = 0;
    before_ = std::signal(SIGINT, onInterrupt);
}

InterruptWatch::~InterruptWatch() { std::signal(SIGINT, before_ == SIG_ERR ? SIG_DFL : before_); }

bool InterruptWatch::interrupted() const { return interruptSeen != 0; }

}  // namespace brenvik::host
