#pragma once
// The settings that the core asks for, between the registry and Settings. All are REG_SZ. A missing value gives its
// default, and so does one that cannot be read as what it should be; the trace says which. A folder that lies in the home,
// or in the program's folder, goes along when that is copied or moved: beside the folders stands where they were saved.
// The window's own values (place, splitters, bands) are the shell's business.
#include "registry/RegistryContext.h"

namespace brenvik {

inline constexpr const char* SettingsPath = "HKCU\\Software\\Brenvik\\Einstellungen\\";
inline constexpr const char* PathsPath = "HKCU\\Software\\Brenvik\\Pfade\\";
inline constexpr const char* MachineSettingsPath = "HKLM\\Software\\Brenvik\\Einstellungen\\";

void loadCoreSettings(RegistryContext& ctx);
void saveCoreSettings(RegistryContext& ctx);   // the start password only with administrative rights

}  // namespace brenvik
