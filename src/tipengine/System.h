#pragma once
// What system the registry at hand belongs to, and what follows from it for the program's state.
#include "registry/SqliteStore.h"
#include "tipengine/Context.h"

namespace brenvik {

// Platform id, version and build as the registry tells them; id 0 if it does not.
struct Systemversion {
    std::int32_t plattform = 0, major = 0, minor = 0, build = 0;
};
Systemversion readSystemVersion(RegistryContext& ctx);

std::string BSErmitteln(RegistryContext& ctx);                 // sets strBS and intBS
void UserSIDRead(RegistryContext& ctx, const std::string& machine);
void readUserAndDirectories(RegistryContext& ctx, SqliteStore& local);
void BSEinstellungen(Context& ctx, RegStore& local);

}  // namespace brenvik
