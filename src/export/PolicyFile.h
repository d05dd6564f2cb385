#pragma once
// Registry.pol, the binary file that Windows keeps policies in: one for the user's values (HKCU), one for the machine's (HKLM).
#include <string>
#include <vector>

#include "export/ExportValues.h"

namespace brenvik {

struct PolicyFile {
    std::string bytes;
    std::vector<std::string> obstacles;    // German: values of the root that the format cannot hold; then bytes is empty
    std::vector<std::string> otherRoots;         // values below other roots, which are not in it
};

// root: HKCU or HKLM.
PolicyFile policyFile(const ExportRecord& item, Root root);

}  // namespace brenvik
