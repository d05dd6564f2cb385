#pragma once
// The end of the user's session. Nothing here asks: that is the callers' business.
#include <cstdint>
#include <string>

#include "frame/Context.h"

namespace brenvik {

// intArt: 1 shut down, 2 restart, 4 log off, 8 power off; anything else does nothing. intModus: 0 none, 1 force, 2 force
// what hangs. On a host whose session the program cannot end the user is told so.
void ShutDown(FrameContext& ctx, std::int16_t intArt, std::int16_t intModus);

bool SystemIstNT(const OSVERSIONINFO& version);
bool SystemHatForceIfHung(const OSVERSIONINFO& version);

// What the system needs after a Tip that asks for a new logon, as intArt.
std::int16_t newLogonKind(std::int16_t intBS);
// One sentence for the question in front of ShutDown: what is going to happen on this host.
std::string sessionEndText(const FrameContext& ctx, std::int16_t intArt);

}  // namespace brenvik
