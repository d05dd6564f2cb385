#pragma once
// The content of REG and ADM files, whoever asks for it and wherever it goes.
#include <string>
#include <vector>

#include "export/ExportList.h"
#include "export/LineText.h"

namespace brenvik {

enum class RegForm { Classic, Neu, Checked, CheckedRegedit4 };   // the first two are the told ones

RegForm regForm(const Settings& einstellungen);

struct ExportFile {
    std::string bytes;
    std::size_t missingCharacters = 0;       // told forms: characters written as "?"
    std::vector<std::string> differing;   // REG: values that would arrive otherwise; ADM: that it cannot set, or sets otherwise
    std::vector<std::string> leftOut;  // REGEDIT4 of the checked form: values that it cannot hold
    bool withoutValues = false;                // checked forms: there is nothing to set
    std::string obstacle;                 // German: why there is no file; then bytes is empty
};

// blnListe: written as a list; else the list holds one Tip.
ExportFile regFileExport(const TipdbContext& ctx, const TipList& liste, bool blnListe, RegForm form);
ExportFile admFile(const TipdbContext& ctx, const TipList& liste);

// What the user should know about a file that was written; empty: nothing. roadToChecked: how to get the other REG form,
// nullptr where there is none; most: how many values are named.
std::string hint(const ExportFile& datei, const char* roadToChecked, std::size_t most = LinesInBox);

// Comment lines for the top of a file.
std::vector<std::string> fileHeader(const TipdbContext& ctx);

}  // namespace brenvik
