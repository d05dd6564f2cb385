#pragma once
#include <cstdint>
#include <string>

namespace brenvik {

// Figures as the platform's version record has them.
struct OSVERSIONINFO {
    std::uint32_t dwOSVersionInfoSize = 148, dwMajorVersion = 0, dwMinorVersion = 0, dwBuildNumber = 0, dwPlatformId = 0;
    std::string szCSDVersion;  // service text
};

}  // namespace brenvik
