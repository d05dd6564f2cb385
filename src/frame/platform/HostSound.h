#pragma once
#include <filesystem>

namespace brenvik::host {

// Plays a WAV file through the system itself, without waiting. False: the system has no such call.
bool playSound(const std::filesystem::path& file);

}  // namespace brenvik::host
