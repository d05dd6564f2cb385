#include "export/RegFile.h"

#include <algorithm>
#include <fmt/format.h>

#include "export/LineText.h"
#include "frame/program/Product.h"
#include "frame/text/Conversions.h"
#include "registry/ValueOperations.h"
#include "registry/text/RegTextSource.h"

namespace brenvik {
namespace {

void keyLine(AnsiText& out, const TipListValue& value) {
    out.line("[" + value.Hauptschluessel + "\\" + value.Unterschluessel + "]");
}

void valueLine(AnsiText& out, const TipListValue& value, bool classic) {
    const std::string name = "\"" + value.Wertname + "\"=";
    const std::string& text = value.Wert;
    const auto line = [&](const std::string& data) { out.line(name + (text == DelKey ? std::string("-") : data)); };
    switch (value.Datentyp) {
        case regtype::Sz: return line("\"" + text + "\"");
        case regtype::ExpandSz: return line("hex(2):" + (text == DelKey ? std::string() : RegHexString(out, text, classic)));
        case regtype::Binary: return line("hex:" + text);
        case regtype::Dword: return line("dword:" + text);
        case regtype::MultiSz: return line("hex(7):" + (text == DelKey ? std::string() : RegHexString(out, text, classic)));
        default: return;
    }
}

bool sameKey(const TipListValue& left, const TipListValue& right) {
    return left.Hauptschluessel == right.Hauptschluessel && left.Unterschluessel == right.Unterschluessel;
}

void nextKey(AnsiText& out, const TipListValue& value) {
    out.line();
    keyLine(out, value);
}

void begin(AnsiText& out, const std::string& mark, const TippListEintrag& tipp) {
    out.line();
    out.line("; ------ Anfang " + mark + "------");
    out.line();
    out.line(fmt::format("; [{}] - {}", tipp.TippNr, commentText(tipp.Titel)));
    if (!tipp.Values.empty()) keyLine(out, tipp.Values.front());
}

void end(AnsiText& out, const std::string& mark) {
    out.line();
    out.line("; ------ " + mark + "------");
    out.line();
}

}  // namespace

std::array<std::string, 6> RegFileHeader(const TipdbContext& ctx, bool RegFileClasic) {
    return {std::string(RegFileClasic ? RegHeader4 : RegHeader5),
            "; Info:     RegFile erstellt mit dem Brenvik",
            "; Version: " + ctx.strProgVersion + " ,DB: " + commentText(ctx.strDBVersion),
            "; " + std::string(product::WebAddress),
            "; " + std::string(product::Mail),
            "; " + std::string(product::Rights)};
}

std::string RegHexString(AnsiText& out, std::string_view strWert, bool RegFileClasic) {
    std::string hex;
    for (const char c : out.ansi(strWert)) {
        if (!hex.empty()) hex += RegFileClasic ? "," : ",00,";
        hex += fmt::format("{:02X}", static_cast<unsigned char>(c));
    }
    return RegFileClasic ? hex : hex + "00,00,00";
}

void RegFileTippSchreiben(AnsiText& out, const TippListEintrag& tipp, bool RegFileClasic) {
    begin(out, "", tipp);
    for (std::size_t i = 0; i < tipp.Values.size(); ++i) {
        valueLine(out, tipp.Values[i], RegFileClasic);
        if (i + 1 < tipp.Values.size() && !sameKey(tipp.Values[i], tipp.Values[i + 1])) nextKey(out, tipp.Values[i + 1]);
    }
    end(out, "Ende ");
}

void RegFileListeSchreiben(AnsiText& out, const TipList& RegListe, bool RegFileClasic) {
    for (std::size_t k = 0; k < RegListe.size(); ++k) {
        const TippListEintrag& entry = RegListe[k];
        if (entry.Geloescht) continue;
        const std::string mark = fmt::format("[{}] ", k);
        begin(out, mark, entry);
        const auto last = static_cast<std::size_t>(std::max(0.0, Val(entry.Anzahl)));
        for (std::size_t j = 1; j <= last && j < entry.Values.size(); ++j) {   // the form leaves element 0 out
            valueLine(out, entry.Values[j], RegFileClasic);
            const bool below = numberText(j) < entry.Anzahl;                  // as texts
            if (below && j + 1 < entry.Values.size() && !sameKey(entry.Values[j], entry.Values[j + 1])) nextKey(out, entry.Values[j + 1]);
        }
        end(out, "Ende " + mark);
    }
    end(out, "Listen Ende ");
}

}  // namespace brenvik
