#pragma once
// Files and folders that the user chooses on the host, as the values of the embedded Windows name them.
#include <string>

#include "frame/Context.h"

namespace brenvik {

// Where a choice begins, as a host path: at the present path (a Windows path), or at C: if nothing is there.
std::string choiceStart(const FrameContext& ctx, const std::string& present);
// What was chosen, as a Windows path where it lies in the embedded Windows.
std::string chosenPath(const FrameContext& ctx, const std::string& choice);

}  // namespace brenvik
