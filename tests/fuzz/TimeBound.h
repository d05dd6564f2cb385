#pragma once
// A fuzz target's work must end soon and take little: a fault that hangs or fills the memory is a crash like any other. The
// time is the processor's, so that a busy machine condemns nobody; the program is slower here than outside by the sanitizers.
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <sys/resource.h>

namespace brenvik::fuzz {

class Bound {
public:
    Bound(double seconds, long megabytes) : seconds_(seconds), megabytes_(megabytes), began_(std::clock()), peak_(peakMegabytes()) {}
    ~Bound() {
        const double took = static_cast<double>(std::clock() - began_) / CLOCKS_PER_SEC;
        const long grew = peakMegabytes() - peak_;
        if (took <= seconds_ && grew <= megabytes_) return;
        std::fprintf(stderr, "bound broken: %.1f s, %ld MB more\n", took, grew);
        std::abort();
    }
    Bound(const Bound&) = delete;
    Bound& operator=(const Bound&) = delete;

private:
    static long peakMegabytes() {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss / 1024;
    }
    double seconds_;
    long megabytes_;
    std::clock_t began_;
    long peak_;
};

}  // namespace brenvik::fuzz
