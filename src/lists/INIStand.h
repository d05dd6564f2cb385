#pragma once
// What the program made of INI and boot files, line by line, and which of it stands differently now.
#include <optional>
#include <string>
#include <vector>

#include "lists/Journal.h"

namespace brenvik {

struct INIAbweichung {
    std::int64_t nummer = 0;                    // of the change that wrote the line last
    std::int32_t tipp = 0;
    std::string überschrift, datei, sektion, schluessel;
    std::optional<std::string> gesetzt, jetzt;  // none: the line was taken out; it is not there
};

// Ordered by Tip. A file that cannot be read is named with its error instead.
std::vector<INIAbweichung> iniAbweichungen(Journal& journal, std::vector<std::string>& unlesbar);

}  // namespace brenvik
