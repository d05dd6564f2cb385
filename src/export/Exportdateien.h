#pragma once
// The content of REG and ADM files, whoever asks for it and wherever it goes.
#include <string>

#include "export/Exportliste.h"

namespace brenvik {

enum class RegForm { Klassisch, Neu, Geprueft, GeprueftRegedit4 };   // the first two are the told ones

RegForm regForm(const Settings& einstellungen);

struct Exportdatei {
    std::string bytes;
    std::size_t fehlendeZeichen = 0;   // characters written as "?"; in REGEDIT4 of the checked form, entries that have some
    std::size_t abweichend = 0;        // told forms: values that would arrive otherwise
    bool ohneWerte = false;            // checked forms: there is nothing to set
    std::string hindernis;             // German: why there is no file; then bytes is empty
};

// blnListe: written as a list; else the list holds one Tip.
Exportdatei regDatei(const TipdbContext& ctx, const TippListe& liste, bool blnListe, RegForm form);
Exportdatei admDatei(const TipdbContext& ctx, const TippListe& liste);

// What the user should know about a file that was written; empty: nothing. wegZumGeprueften: how to get the other form.
std::string hinweis(const Exportdatei& datei, const char* wegZumGeprueften);

// Comment lines for the top of a file.
std::vector<std::string> dateikopf(const TipdbContext& ctx);

}  // namespace brenvik
