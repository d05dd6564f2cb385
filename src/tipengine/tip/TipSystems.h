#pragma once
// Which Windows a Tip is meant for, and what it needs there to take effect. Systems by their intBS.
#include <cstdint>
#include <string>
#include <vector>

#include "tipdb/Tipp.h"

namespace brenvik {

bool isMeantFor(const Tipp& tipp, std::int16_t intBS);
std::vector<std::string> systemsOf(const Tipp& tipp);   // their names

// What the later brings, brings the earlier too. The database has one mark for a new logon and a restart; a user's own values
// are read when he logs on, of the others no more is known than that a restart is enough.
enum class TipEffect { AtOnce, DesktopReloaded, NewLogon, LogonOrRestart };
TipEffect effectOf(const Tipp& tipp);

}  // namespace brenvik
