#pragma once
// REG files in the checked form, which every importer reads alike, and what of a told file would arrive otherwise.
#include <string>
#include <string_view>
#include <vector>

#include "export/ExportValues.h"
#include "registry/text/RegTextWriter.h"

namespace brenvik {

struct CheckedFile {
    std::string bytes;
    std::vector<std::string> missing;   // paths of values that the format cannot hold; they are not in the file
};

// What was written is read again and compared with the set before it is handed out. kopf: the comment lines at the top,
// with their "; ".
CheckedFile CheckedFormat(const ExportRecord& item, RegTextWriter::Format format, const std::vector<std::string>& head);

// The places that importing the file would not leave as the set has them: paths of values, and of keys ("...\\") that it
// would make or delete beside them.
std::vector<std::string> differences(std::string_view regFileExport, const ExportRecord& item);

}  // namespace brenvik
