#pragma once
// What system the registry at hand belongs to, and what follows from it for the program's state.
#include "frame/Erkennung.h"
#include "registry/SqliteStore.h"
#include "tipengine/Context.h"

namespace brenvik {

// The figures of the Windows that the registry at hand belongs to; platform id 0 if it does not tell.
OSVERSIONINFO readSystemVersion(RegistryContext& ctx);

void UserSIDRead(RegistryContext& ctx, const std::string& machine);
void readUserAndDirectories(RegistryContext& ctx, SqliteStore& local);
void BSEinstellungen(Context& ctx, RegStore& local);

}  // namespace brenvik
