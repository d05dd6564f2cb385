#include "export/AdmDatei.h"

#include <fmt/format.h>

#include "frame/Konvertierung.h"
#include "frame/Texte.h"
#include "registry/ValueOperations.h"

namespace brenvik {
namespace {

constexpr std::size_t ColGroup = 5, ColTipp = 10, ColPolicy = 15, ColPart = 20, ColDetail = 21, ColName = 25, ColExpandable = 26;
constexpr std::size_t HelpWidth = 78;
constexpr double LargestBoxNumber = 29000;   // number boxes hold less, text boxes more; the number itself gets neither

constexpr std::int32_t TypeOf(std::uint32_t type) { return static_cast<std::int32_t>(type); }
constexpr std::int32_t Sz = TypeOf(regtype::Sz), ExpandSz = TypeOf(regtype::ExpandSz), Dword = TypeOf(regtype::Dword), MultiSz = TypeOf(regtype::MultiSz);

void ADMHilfeTextSchreiben(AnsiText& out, const std::string& text) {
    const std::vector<std::string> words = Split(text, " ");
    for (std::size_t next = 0; next < words.size();) {
        std::string line;
        std::size_t length = 0;
        do {   // a word that is too long for any line has one of its own
            line += words[next] + " ";
            length += textLength(words[next]) + 1;
            ++next;
        } while (next < words.size() && textLength(words[next]) + length <= HelpWidth);
        out.line(ColPart, "Part \"" + ADMTextBereinigen(line) + "\"Text End Part");
    }
}

bool hasDefault(const TippListWert& value) { return !value.Standardwert.empty() && value.Standardwert != DelKey; }

void twoStates(AnsiText& out, const TippListEintrag& entry, const TippListWert& value, std::int16_t ersteArt) {
    out.line(ColPolicy, "POLICY \"" + value.Wertname + "\"");
    out.line(ColPart, "VALUENAME \"" + value.Wertname + "\"");
    if (value.Datentyp == Sz || value.Datentyp == Dword) {
        const std::string numeric = value.Datentyp == Dword ? " NUMERIC" : "";
        if (value.WertEin != DelKey) out.line(ColPart, "ValueON" + numeric + " \"" + value.WertEin + "\"");
        if (value.WertAus != DelKey) out.line(ColPart, "ValueOFF" + numeric + " \"" + value.WertAus + "\"");
    }
    ADMHilfeTextSchreiben(out, ersteArt == art::Liste ? value.WertInfo + " ausblenden. Info: " + entry.Beschreibung : entry.Beschreibung);
    out.line(ColPolicy, "END POLICY");
}

void textOrPath(AnsiText& out, const TippListWert& value) {
    out.line(ColPolicy, "POLICY \"" + value.Wertname + "\"");
    if (value.Datentyp == Sz || value.Datentyp == Dword) {
        const std::string numeric = value.Datentyp == Dword ? " NUMERIC" : "";
        out.line(ColPart, "ValueON" + numeric + " \"\"");
        out.line(ColPart, "ValueOff" + numeric + " \"\"");
    }
    out.line(ColPart, value.PanelArt == art::Drive ? "Part \"Pfad:\" EDITTEXT" : "Part \"Text:\" EDITTEXT");
    out.line(ColName, "VALUENAME \"" + value.Wertname + "\"");
    if (value.Datentyp == MultiSz || value.Datentyp == ExpandSz) {
        out.line(ColDetail, "REQUIRED");
        out.line(ColDetail, "#if VERSION >= 2");
        out.line(ColExpandable, "EXPANDABLETEXT");
        out.line(ColDetail, "#endif");
    }
    out.line(ColPart, "END PART");
    out.line(ColPolicy, "END POLICY");
}

void numberBox(AnsiText& out, const TippListWert& value) {
    out.line(ColPolicy, "POLICY \"Wert: " + value.Wertname + "\"");
    out.line(ColPart, "Part \"" + ADMTextBereinigen(value.WertInfo) + "\" Numeric Required ");
    out.line(ColName, "Min " + value.WertAus + " Max " + value.WertEin);
    out.line(ColName, "ValueName \"" + value.Wertname + "\"");
    if (hasDefault(value)) out.line(ColName, "Default \"" + value.Standardwert + "\"");
    out.line(ColPart, "End Part");
    out.line(ColPolicy, "END POLICY");
}

void numberAsText(AnsiText& out, const TippListWert& value) {
    out.line(ColPolicy, "POLICY \"Wert: " + value.Wertname + "\"");
    if (value.Datentyp == Dword) {
        out.line(ColPart, "ValueON NUMERIC \"\"");
        out.line(ColPart, "ValueOff NUMERIC \"\"");
    }
    out.line(ColPart, fmt::format("Part \"Geben Sie den Wert {} ein: ({} - {})\" EditText ", ADMTextBereinigen(value.WertInfo), value.WertAus, value.WertEin));
    out.line(ColName, "ValueName \"" + value.Wertname + "\"");
    if (hasDefault(value)) out.line(ColName, "Default \"" + value.Standardwert + "\"");
    out.line(ColName, "REQUIRED");
    out.line(ColPart, "End Part");
    out.line(ColPolicy, "END POLICY");
}

void formA(AnsiText& out, const TippListEintrag& entry, const TippListWert& value, std::int16_t ersteArt) {
    if (value.PanelArt == art::CheckBox || value.PanelArt == art::Liste) twoStates(out, entry, value, ersteArt);
    if (value.PanelArt == art::TextWerte || value.PanelArt == art::Drive) textOrPath(out, value);
}

void formB(AnsiText& out, const TippListWert& value) {
    const double largest = Val(value.WertEin);
    if (value.Datentyp == Dword && largest < LargestBoxNumber) numberBox(out, value);
    if (value.Datentyp == Sz || (value.Datentyp == Dword && largest > LargestBoxNumber)) numberAsText(out, value);
}

void tippBlock(AnsiText& out, const TippListEintrag& entry, std::int16_t ersteArt) {
    out.line(ColTipp, fmt::format("; [{}] - {}", entry.TippNr, ADMTextBereinigen(entry.Titel)));
    const std::int16_t kind = entry.Werte.front().PanelArt;
    const bool isA = kind == art::CheckBox || kind == art::TextWerte || kind == art::Drive || kind == art::Liste;
    if (!isA && kind != art::ZahlenWerte) return;
    out.line(ColTipp, "CATEGORY \"" + ADMTextBereinigen(entry.Titel) + "\"");
    out.line(ColPolicy, "KEYNAME \"" + entry.Werte.front().Unterschluessel + "\"");
    for (const TippListWert& value : entry.Werte) {
        if (isA)
            formA(out, entry, value, ersteArt);
        else
            formB(out, value);
    }
    out.line(ColTipp, "END CATEGORY");
    out.line();
}

void groupBlock(AnsiText& out, const TippListe& liste, const Gruppe& group, const std::string& root, std::int16_t ersteArt) {
    bool opened = false;
    for (const TippListEintrag& entry : liste) {
        if (entry.Werte.empty() || Val(Left(entry.Baumpfad, 1)) != group.Nummer || entry.Werte.front().Hauptschluessel != root) continue;
        if (!opened) {
            out.line();
            out.line(ColGroup, "CATEGORY \"" + ADMTextBereinigen(group.Name) + "\"");
            opened = true;
        }
        tippBlock(out, entry, ersteArt);
    }
    if (!opened) return;
    out.line(ColGroup, "END CATEGORY");
    out.line();
}

}  // namespace

std::string ADMTextBereinigen(std::string_view strText) {
    std::string clean(strText);
    std::erase_if(clean, [](char c) { return c == '"' || c == '\'' || c == '\r' || c == '\n'; });
    return clean;
}

void ADMDateiSchreiben(AnsiText& out, const TippListe& liste, const std::vector<Gruppe>& gruppen, std::int16_t ersteArt) {
    for (const int index : {0, 1}) {
        out.line(index == 0 ? "Class User" : "CLASS MACHINE");
        out.line("; ------ Anfang ------");
        out.line();
        out.line("CATEGORY \"BVK-ADM-Datei\"");
        for (const Gruppe& group : gruppen) groupBlock(out, liste, group, strRootKeys(index), ersteArt);
        out.line("END CATEGORY");
        out.line();
        out.line("; ------ Ende ------");
    }
}

}  // namespace brenvik
