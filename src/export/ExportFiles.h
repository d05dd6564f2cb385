#pragma once
// The content of REG and ADM files, whoever asks for it and wherever it goes.
#include <string>
#include <vector>

#include "export/ExportList.h"
#include "export/LineText.h"

namespace brenvik {

enum class RegForm { Klassisch, Neu, Geprueft, GeprueftRegedit4 };   // the first two are the told ones

RegForm regForm(const Settings& einstellungen);

struct Exportdatei {
    std::string bytes;
    std::size_t fehlendeZeichen = 0;       // told forms: characters written as "?"
    std::vector<std::string> abweichend;   // REG: values that would arrive otherwise; ADM: that it cannot set, or sets otherwise
    std::vector<std::string> weggelassen;  // REGEDIT4 of the checked form: values that it cannot hold
    bool ohneWerte = false;                // checked forms: there is nothing to set
    std::string hindernis;                 // German: why there is no file; then bytes is empty
};

// blnListe: written as a list; else the list holds one Tip.
Exportdatei regDatei(const TipdbContext& ctx, const TippListe& liste, bool blnListe, RegForm form);
Exportdatei admDatei(const TipdbContext& ctx, const TippListe& liste);

// What the user should know about a file that was written; empty: nothing. wegZumGeprueften: how to get the other REG form,
// nullptr where there is none; most: how many values are named.
std::string hinweis(const Exportdatei& datei, const char* wegZumGeprueften, std::size_t most = LinesInBox);

// Comment lines for the top of a file.
std::vector<std::string> dateikopf(const TipdbContext& ctx);

}  // namespace brenvik
