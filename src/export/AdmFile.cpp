#include "export/AdmFile.h"

#include <fmt/format.h>
#include <set>

#include "export/LineText.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "registry/ValueOperations.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik {
namespace {

constexpr std::size_t ColGroup = 5, ColTipp = 10, ColPolicy = 15, ColPart = 20, ColDetail = 21, ColName = 25, ColExpandable = 26;
constexpr std::size_t HelpWidth = 78;
constexpr const char* ListTicked = "no";       // what the engine writes for a ticked row
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

// A quotation mark goes into the file as it is and ends the text there; a "?" stands for what the code page lacks.
bool isPlain(const std::string& text) { return text.find('"') == std::string::npos && fitsAnsi(text); }

// What a policy sets lies below the key of the entry's first value, whatever the value's own; the file's numbers are stored
// as they are, without the factor of the panel.
bool canBeSaid(const TippListEintrag& entry, const TipListValue& value) {
    const TipListValue& first = entry.Values.front();
    return value.Hauptschluessel == first.Hauptschluessel && equalText(value.Unterschluessel, first.Unterschluessel) && !value.Wertname.empty() &&
           isPlain(value.Wertname) && isPlain(value.Unterschluessel) && isPlain(value.WertEin) && isPlain(value.WertAus) && isPlain(value.Standardwert);
}

bool hasDefault(const TipListValue& value) { return !value.Standardwert.empty() && value.Standardwert != DelKey; }

// Each of these writes a policy and answers whether it sets the type and the data that the Tip would.
bool twoStates(AnsiText& out, const TippListEintrag& entry, const TipListValue& value, std::int16_t firstKind) {
    out.line(ColPolicy, "POLICY \"" + value.Wertname + "\"");
    out.line(ColPart, "VALUENAME \"" + value.Wertname + "\"");
    if (value.Datentyp == Sz || value.Datentyp == Dword) {
        const std::string numeric = value.Datentyp == Dword ? " NUMERIC" : "";
        if (value.WertEin != DelKey) out.line(ColPart, "ValueON" + numeric + " \"" + value.WertEin + "\"");
        if (value.WertAus != DelKey) out.line(ColPart, "ValueOFF" + numeric + " \"" + value.WertAus + "\"");
    }
    ADMHilfeTextSchreiben(out, kindOf(firstKind).ticksHide ? value.WertInfo + " ausblenden. Info: " + entry.Beschreibung : entry.Beschreibung);
    out.line(ColPolicy, "END POLICY");
    const bool ticked = !kindOf(value.PanelArt).ticksHide || value.WertEin == ListTicked;
    return ticked && value.WertEin != DelKey && (value.Datentyp == Sz || value.Datentyp == Dword);
}

bool textOrPath(AnsiText& out, const TipListValue& value) {
    out.line(ColPolicy, "POLICY \"" + value.Wertname + "\"");
    if (value.Datentyp == Sz || value.Datentyp == Dword) {
        const std::string numeric = value.Datentyp == Dword ? " NUMERIC" : "";
        out.line(ColPart, "ValueON" + numeric + " \"\"");
        out.line(ColPart, "ValueOff" + numeric + " \"\"");
    }
    out.line(ColPart, fmt::format("Part \"{}\" EDITTEXT", kindOf(value.PanelArt).fieldLabel));
    out.line(ColName, "VALUENAME \"" + value.Wertname + "\"");
    if (value.Datentyp == MultiSz || value.Datentyp == ExpandSz) {
        out.line(ColDetail, "REQUIRED");
        out.line(ColDetail, "#if VERSION >= 2");
        out.line(ColExpandable, "EXPANDABLETEXT");
        out.line(ColDetail, "#endif");
    }
    out.line(ColPart, "END PART");
    out.line(ColPolicy, "END POLICY");
    return value.Datentyp == Sz || value.Datentyp == ExpandSz;
}

bool numberBox(AnsiText& out, const TipListValue& value) {
    out.line(ColPolicy, "POLICY \"Wert: " + value.Wertname + "\"");
    out.line(ColPart, "Part \"" + ADMTextBereinigen(value.WertInfo) + "\" Numeric Required ");
    out.line(ColName, "Min " + value.WertAus + " Max " + value.WertEin);
    out.line(ColName, "ValueName \"" + value.Wertname + "\"");
    if (hasDefault(value)) out.line(ColName, "Default \"" + value.Standardwert + "\"");
    out.line(ColPart, "End Part");
    out.line(ColPolicy, "END POLICY");
    return value.Werteliste.empty() && Val(value.WertAus) >= 0;
}

bool numberAsText(AnsiText& out, const TipListValue& value) {
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
    return value.Datentyp == Sz && value.Werteliste.empty();
}

bool formA(AnsiText& out, const TippListEintrag& entry, const TipListValue& value, std::int16_t firstKind) {
    switch (kindOf(value.PanelArt).part) {
        case TemplatePart::States: return twoStates(out, entry, value, firstKind);
        case TemplatePart::Text: return textOrPath(out, value);
        default: return false;
    }
}

bool formB(AnsiText& out, const TipListValue& value) {
    const double largest = Val(value.WertEin);
    if (value.Datentyp == Dword && largest < LargestBoxNumber) return numberBox(out, value);
    if (value.Datentyp == Sz || (value.Datentyp == Dword && largest > LargestBoxNumber)) return numberAsText(out, value);
    return false;
}

using Said = std::set<const TipListValue*>;   // the values that a policy sets

void tipBlock(AnsiText& out, const TippListEintrag& entry, std::int16_t firstKind, Said& said) {
    out.line(ColTipp, fmt::format("; [{}] - {}", entry.TippNr, commentText(ADMTextBereinigen(entry.Titel))));
    const TemplatePart part = kindOf(entry.Values.front().PanelArt).part;
    if (part == TemplatePart::None) return;
    const bool isA = part != TemplatePart::Number;
    out.line(ColTipp, "CATEGORY \"" + ADMTextBereinigen(entry.Titel) + "\"");
    out.line(ColPolicy, "KEYNAME \"" + entry.Values.front().Unterschluessel + "\"");
    for (const TipListValue& value : entry.Values)
        if ((isA ? formA(out, entry, value, firstKind) : formB(out, value)) && canBeSaid(entry, value)) said.insert(&value);
    out.line(ColTipp, "END CATEGORY");
    out.line();
}

void groupBlock(AnsiText& out, const TipList& liste, const Gruppe& group, const std::string& root, std::int16_t firstKind, Said& said) {
    bool opened = false;
    for (const TippListEintrag& entry : liste) {
        if (entry.Values.empty() || Val(Left(entry.Baumpfad, 1)) != group.Nummer || entry.Values.front().Hauptschluessel != root) continue;
        if (!opened) {
            out.line();
            out.line(ColGroup, "CATEGORY \"" + ADMTextBereinigen(group.Name) + "\"");
            opened = true;
        }
        tipBlock(out, entry, firstKind, said);
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

std::vector<std::string> ADMDateiSchreiben(AnsiText& out, const TipList& liste, const std::vector<Gruppe>& gruppen, std::int16_t firstKind) {
    Said said;
    for (const int index : {0, 1}) {
        out.line(index == 0 ? "Class User" : "CLASS MACHINE");
        out.line("; ------ Anfang ------");
        out.line();
        out.line("CATEGORY \"BVK-ADM-Datei\"");
        for (const Gruppe& group : gruppen) groupBlock(out, liste, group, strRootKeys(index), firstKind, said);
        out.line("END CATEGORY");
        out.line();
        out.line("; ------ Ende ------");
    }
    std::vector<std::string> rest;
    for (const TippListEintrag& entry : liste)
        for (const TipListValue& value : entry.Values)
            if (!entry.Geloescht && said.count(&value) == 0) rest.push_back(value.pfad());
    return rest;
}

}  // namespace brenvik
