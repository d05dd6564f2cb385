#pragma once
// Policy templates as XML: the definitions (ADMX) and their German texts (ADML), the successor of ADM. Other than there each
// value stands below its own key, in stored units, and below its own group.
#include <string>
#include <vector>

#include "export/ExportList.h"

namespace brenvik {

struct AdmxVorlage {
    std::string admx, adml;                    // UTF-8
    std::size_t richtlinien = 0;
    std::vector<std::string> weggelassen;      // German: values that a policy cannot set, and why
};

// Entries that are not deleted. version: of the tip database, in a comment.
AdmxVorlage admxVorlage(const TippListe& liste, const std::vector<Gruppe>& gruppen, const std::string& version);

inline constexpr const char* AdmxDatei = "brenvik.admx";
inline constexpr const char* AdmlDatei = "de-DE/brenvik.adml";

}  // namespace brenvik
