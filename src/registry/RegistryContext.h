#pragma once
#include "frame/Context.h"
#include "frame/files/FileSystem.h"
#include "registry/BVKRegistry.h"
#include "registry/machine/TargetSystem.h"

namespace brenvik {

struct RegistryContext : FrameContext {
    RegistryContext(UserPort& userPort, Platform& hostPlatform, Machines& directory)
        : FrameContext(userPort, hostPlatform), machines(directory), objBVKReg(trace, directory) {
        machines.setLocalFiles(localFiles(*this));
    }
    // The machine worked on. Throws RegError NoAccess if it does not answer.
    TargetSystem& target() { return machines.target(strRechnername); }

    Machines& machines;
    BVKRegistry objBVKReg;
};

// Folders of the machine worked on, as its Windows names them: "C:\WINDOWS", "C:\WINDOWS\system32\".
std::string windowsFolder(RegistryContext& ctx);
std::string systemFolder(RegistryContext& ctx);
// An environment value there: folders as above, else what the machine's registry holds for all users; of the embedded Windows
// what the host tells.
std::string targetEnvironment(RegistryContext& ctx, std::string_view name);

}  // namespace brenvik
