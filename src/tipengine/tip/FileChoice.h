#pragma once
// Files and folders that the user chooses on the host, as the values of the machine worked on name them.
#include <string>

#include "registry/RegistryContext.h"

namespace brenvik {

// Where a choice begins, as a host path: at the present path (a Windows path), at its drive
// if nothing is there, or nowhere (empty) if its files are out of reach.
std::string choiceStart(RegistryContext& ctx, const std::string& present);
// What was chosen, as a Windows path where it lies on one of its drives.
std::string chosenPath(RegistryContext& ctx, const std::string& choice);

}  // namespace brenvik
