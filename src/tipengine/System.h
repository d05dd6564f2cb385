#pragma once
// What system the registry at hand belongs to, and what follows from it for the program's state.
#include "frame/program/Detection.h"
#include "registry/store/SqliteStore.h"
#include "tipengine/Context.h"
#include "tipengine/LoadSequence.h"

namespace brenvik {

// The figures of the Windows that the registry at hand belongs to; platform id 0 if it does not tell.
OSVERSIONINFO readSystemVersion(RegistryContext& ctx);

void UserSIDRead(RegistryContext& ctx, const std::string& machine);
void readUserAndDirectories(RegistryContext& ctx, SqliteStore& local);
// The browser component's version as the registry at hand tells it, where the host has none of its own.
void readBrowserVersion(RegistryContext& ctx);

// Fits the window to the system, finds the rights, and turns to the machine of the command line. account connects to a
// machine under another account; it may be empty.
void BSEinstellungen(Context& ctx, RegStore& local, StartDisplay& display, const LoadSteps::Logon& account = {});

void turnToMachine(Context& ctx, const std::string& machine, StartDisplay& display, const LoadSteps::Logon& account = {});

// Tells what the machine worked on has to say of itself: whose HKCU it is, what of it cannot be had.
void tellTargetNotes(Context& ctx);
// Why strParamProfil cannot be chosen there, with the profiles that can (German).
std::string profileUnknown(Context& ctx);

// Tries the registry of strRechnername. If it cannot be had the user is told why, and the local machine is worked on.
bool TestConnect(Context& ctx);

}  // namespace brenvik
