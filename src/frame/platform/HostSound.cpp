#include "frame/platform/HostSound.h"

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <mmsystem.h>
#endif

namespace brenvik::host {

#ifdef _WIN32
bool playSound(const std::filesystem::path& file) {
    ::sndPlaySoundW(file.c_str(), SND_ASYNC | SND_NODEFAULT);   // a failure stays silent
    return true;
}
#else
bool playSound(const std::filesystem::path&) { return false; }
#endif

}  // namespace brenvik::host
