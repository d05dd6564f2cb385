#pragma once
// REG files in the checked form, which every importer reads alike, and how much of a told file would arrive otherwise.
#include <array>
#include <string>
#include <string_view>

#include "export/Exportwerte.h"
#include "registry/RegTextWriter.h"

namespace brenvik {

struct GepruefteDatei {
    std::string bytes;
    std::size_t verloren = 0;   // entries with characters that the format lacks (REGEDIT4)
};

// kopf: the comment lines at its top, with their "; ".
GepruefteDatei GeprueftesFormat(const Exportsatz& satz, RegTextWriter::Format format, const std::vector<std::string>& kopf);

// The number of values that importing the file would not leave as the set has them, values it would add included.
std::size_t abweichungen(std::string_view regDatei, const Exportsatz& satz);

}  // namespace brenvik
