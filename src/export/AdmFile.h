#pragma once
// Policy templates in the old format (ADM): a section for each class, a category for each group and Tip, a policy for each value.
#include <string>
#include <string_view>
#include <vector>

#include "export/AnsiText.h"
#include "export/ExportList.h"

namespace brenvik {

// Without the four characters " ' CR LF.
std::string ADMTextBereinigen(std::string_view strText);

// The part of the file below its header. gruppen is the table of groups; firstKind the panel kind of the first value of the
// Tip on screen, which decides the wording of help texts. Deleted entries are written too. Answers the paths of the values
// that no policy of the file sets as their Tip does.
std::vector<std::string> ADMDateiSchreiben(AnsiText& out, const TipList& liste, const std::vector<Gruppe>& gruppen, std::int16_t firstKind);

}  // namespace brenvik
