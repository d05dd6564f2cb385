#pragma once
#include "frame/Context.h"
#include "registry/BVKRegistry.h"

namespace brenvik {

struct RegistryContext : FrameContext {
    RegistryContext(UserPort& userPort, Platform& hostPlatform, Machines& machines)
        : FrameContext(userPort, hostPlatform), objBVKReg(trace, machines) {}
    BVKRegistry objBVKReg;
};

}  // namespace brenvik
