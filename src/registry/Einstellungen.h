#pragma once
// The settings that the core asks for, between the registry and Settings. All are REG_SZ. A missing value gives its
// default, and so does one that cannot be read as what it should be; the trace says which. The window's own values
// (place, splitters, bands) are the shell's business.
#include "registry/RegistryContext.h"

namespace brenvik {

inline constexpr const char* EinstellungenPfad = "HKCU\\Software\\Brenvik\\Einstellungen\\";
inline constexpr const char* PfadePfad = "HKCU\\Software\\Brenvik\\Pfade\\";
inline constexpr const char* MaschinenEinstellungenPfad = "HKLM\\Software\\Brenvik\\Einstellungen\\";

void loadCoreSettings(RegistryContext& ctx);
void saveCoreSettings(RegistryContext& ctx);   // the start password only with administrative rights

}  // namespace brenvik
