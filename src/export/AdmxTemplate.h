#pragma once
// Policy templates as XML: the definitions (ADMX) and their German texts (ADML), the successor of ADM. Other than there each
// value stands below its own key, in stored units, and below its own group.
#include <string>
#include <vector>

#include "export/ExportList.h"

namespace brenvik {

struct AdmxTemplate {
    std::string admx, adml;                    // UTF-8
    std::size_t policies = 0;
    std::vector<std::string> leftOut;      // German: values that a policy cannot set, and why
};

// Entries that are not deleted. version: of the tip database, in a comment.
AdmxTemplate admxTemplate(const TipList& liste, const std::vector<Gruppe>& gruppen, const std::string& version);

inline constexpr const char* AdmxFile = "brenvik.admx";
inline constexpr const char* AdmlFile = "de-DE/brenvik.adml";

}  // namespace brenvik
