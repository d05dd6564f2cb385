#pragma once
// REG files in the told form, kept to the byte with what it does not do: nothing is escaped, padded or wrapped, the list
// leaves out the first value of each entry, and no comma stands before the terminator of hex texts. CheckedFormat.h is
// the form that every importer reads alike.
#include <array>
#include <string>
#include <string_view>

#include "export/AnsiText.h"
#include "export/ExportList.h"

namespace brenvik {

// Lines 0 to 5 that every file begins with; 2 to 5 are those of the ADM file too.
std::array<std::string, 6> RegFileHeader(const TipdbContext& ctx, bool RegFileClasic);

// Characters as their codes in Windows-1252. "AB": "41,42", in the new form "41,00,4200,00,00".
std::string RegHexString(AnsiText& out, std::string_view strWert, bool RegFileClasic);

// The values' texts (Wert) of one Tip, and of a list.
void RegFileTippSchreiben(AnsiText& out, const TippListEintrag& tipp, bool RegFileClasic);
void RegFileListeSchreiben(AnsiText& out, const TipList& RegListe, bool RegFileClasic);

}  // namespace brenvik
