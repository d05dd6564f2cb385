// What each of the eleven panel kinds needs, and which values fit it. The reasons lie in how the program reads and writes:
// a check box compares the value with its two texts, a combo stores the caption itself, options compare numbers, and so on.
#include <algorithm>
#include <cmath>
#include <set>

#include "Pruefung.h"
#include "Wertformen.h"
#include "frame/Konvertierung.h"

namespace brenvik::tipbau {

namespace {

constexpr std::size_t MaxOptionen = 6, MaxBits = 32;
constexpr std::int64_t MaxBinaerzahl = 32767;

class Artpruefer {
public:
    Artpruefer(const Zeile& row, std::size_t entries, Beschwerden& complaints) : row_(row), entries_(entries), complaints_(complaints) {}

    void check();

private:
    void complain(const char* column, const std::string& text) { complaints_.add(row_.ortVon(column), text); }
    void need(const char* column, const OptText& text) {
        if (text.value_or("").empty()) complain(column, "Die Art " + artName(row_.Ausgabeart) + " braucht " + column + ".");
    }
    void needName() {
        if (!row_.Wertname) complain("Wertname", "Der Wertname fehlt; der unbenannte Wert hat den leeren Namen \"\".");
    }
    // A column that this kind does not read is a sign of a misunderstanding. On INI Tips Werteliste is the folder.
    void unused(const char* column, const OptText& text) {
        if (text) complain(column, "Die Art " + artName(row_.Ausgabeart) + " benutzt " + column + " nicht.");
    }
    void allowTypes(std::set<std::int64_t> types) {
        if (!row_.INITipp && types.count(row_.Datentyp) == 0) complain("Datentyp", "Der Datentyp " + typName(row_.Datentyp) + " paßt nicht zur Art " + artName(row_.Ausgabeart) + ".");
    }
    void checkFits(const char* column, const std::string& text) {
        if (text != DelKey && !row_.INITipp && !fitsType(row_.Datentyp, text)) complain(column, "\"" + text + "\" ist kein Wert vom Typ " + typName(row_.Datentyp) + ".");
    }
    bool hasDefault() {
        if (!row_.Standardwert) return false;
        if (row_.Standardwert->empty()) complain("Standardwert", "Ein leerer Standardwert bewirkt nichts; ohne Standard bleibt das Feld weg.");
        return !row_.Standardwert->empty() && *row_.Standardwert != DelKey;
    }
    void defaultOneOf(const std::vector<std::string>& values) {
        if (!hasDefault()) return;
        const auto same = [&](const std::string& v) { return lowerCase(v) == lowerCase(*row_.Standardwert); };
        if (std::none_of(values.begin(), values.end(), same)) complain("Standardwert", "Der Standardwert \"" + *row_.Standardwert + "\" ist keiner der Werte des Tipps.");
    }
    std::vector<std::string> captions() { return pieces(row_.Anzeigetext); }

    void checkBox();
    void checkText();
    void checkNumber();
    void checkCombo();
    void checkOptions();
    void checkFile();
    void checkColour();
    void checkList();
    void checkBoot();
    void checkContext();
    void checkBits();

    const Zeile& row_;
    std::size_t entries_;
    Beschwerden& complaints_;
};

void Artpruefer::checkBox() {
    allowTypes({typ::Sz, typ::ExpandSz, typ::Binary, typ::Dword});
    needName();
    if (!row_.INITipp) unused("Werteliste", row_.Werteliste);
    const std::string on = row_.WertEin.value_or("1"), off = row_.WertAus.value_or("0");
    checkFits("WertEin", on);
    checkFits("WertAus", off);
    if (lowerCase(on) == lowerCase(off)) complain("WertAus", "WertEin und WertAus lassen sich nicht unterscheiden.");
    defaultOneOf({on, off, off == DelKey ? "0" : off});
}

void Artpruefer::checkText() {
    allowTypes({typ::Sz, typ::ExpandSz, typ::Binary, typ::Dword, typ::MultiSz});
    needName();
    unused("WertEin", row_.WertEin);
    unused("WertAus", row_.WertAus);
    if (!row_.INITipp) unused("Werteliste", row_.Werteliste);
    if (entries_ > 1) need("Beschriftung", row_.Beschriftung);
    if (!hasDefault()) return;
    if (row_.Datentyp != typ::Dword || row_.INITipp) return checkFits("Standardwert", *row_.Standardwert);
    if (!isHexDword(*row_.Standardwert)) complain("Standardwert", "Ein Textfeld zeigt REG_DWORD hexadezimal: 1 bis 8 Ziffern 0 bis F.");
}

void Artpruefer::checkNumber() {
    allowTypes({typ::Sz, typ::ExpandSz, typ::Binary, typ::Dword});
    needName();
    const auto low = decimal(row_.WertAus.value_or("")), high = decimal(row_.WertEin.value_or(""));
    if (!low || *low < INT32_MIN) return complain("WertAus", "Die Art zahl braucht in WertAus das Minimum als ganze Zahl.");
    if (!high || *high > INT32_MAX) return complain("WertEin", "Die Art zahl braucht in WertEin das Maximum als ganze Zahl.");
    if (*low >= *high) complain("WertAus", "Das Minimum " + std::to_string(*low) + " liegt nicht unter dem Maximum " + std::to_string(*high) + ".");
    double divisor = 1;
    if (row_.Werteliste && !row_.INITipp) {
        const auto number = decimal(*row_.Werteliste);
        if (!number || *number == 0) return complain("Werteliste", "Der Teiler \"" + *row_.Werteliste + "\" ist keine ganze Zahl außer 0.");
        divisor = static_cast<double>(*number);
    }
    const double first = static_cast<double>(*low) * divisor, second = static_cast<double>(*high) * divisor;
    const double smallest = std::min(first, second), largest = std::max(first, second);
    if (row_.Datentyp == typ::Dword && !row_.INITipp && smallest < 0) complain("WertAus", "REG_DWORD wird ohne Vorzeichen gelesen, der Bereich darf nicht unter 0 reichen.");
    if (row_.Datentyp == typ::Binary && !row_.INITipp && (smallest < 0 || largest > MaxBinaerzahl)) complain("WertEin", "Eine Zahl in REG_BINARY liegt zwischen 0 und 32767.");
    if (largest > UINT32_MAX || smallest < INT32_MIN) complain("WertEin", "Der Bereich paßt nicht in 32 Bit.");
    if (!hasDefault()) return;
    const auto standard = decimal(*row_.Standardwert);
    if (!standard) return complain("Standardwert", "Der Standardwert \"" + *row_.Standardwert + "\" ist keine ganze Zahl.");
    const auto value = static_cast<double>(*standard);
    if (value < smallest || value > largest) complain("Standardwert", "Der Standardwert " + *row_.Standardwert + " liegt nicht im Bereich.");
}

void Artpruefer::checkCombo() {
    allowTypes({typ::Sz, typ::ExpandSz, typ::Binary, typ::Dword});
    needName();
    unused("WertEin", row_.WertEin);
    unused("WertAus", row_.WertAus);
    const auto values = captions();
    if (values.size() < 2) return complain("Anzeigetext", "Die Art auswahl braucht mindestens zwei Texte in Anzeigetext.");
    for (std::size_t i = 0; i < values.size(); ++i) {
        checkFits("Anzeigetext", values[i]);
        if (values[i].empty()) complain("Anzeigetext", "Ein Text der Auswahl ist leer.");
        for (std::size_t j = 0; j < i; ++j)
            if (lowerCase(values[j]).find(lowerCase(values[i])) != std::string::npos && !values[i].empty())
                complain("Anzeigetext", "Der Text \"" + values[i] + "\" steckt im früheren Text \"" + values[j] + "\" und würde nie gewählt; der kürzere steht vorn.");
    }
    if (row_.Werteliste && !row_.INITipp && pieces(row_.Werteliste) != values) complain("Werteliste", "Gespeichert wird der Text der Auswahl selbst; eine andere Werteliste gilt nicht.");
    defaultOneOf(values);
}

void Artpruefer::checkOptions() {
    allowTypes({typ::Sz, typ::ExpandSz, typ::Dword});
    needName();
    unused("WertEin", row_.WertEin);
    unused("WertAus", row_.WertAus);
    const auto texts = captions();
    if (texts.size() < 2 || texts.size() > MaxOptionen) complain("Anzeigetext", "Die Art optionen braucht zwei bis sechs Texte in Anzeigetext.");
    std::vector<std::string> values;
    for (std::size_t i = 0; i < texts.size(); ++i) values.push_back(std::to_string(i));
    if (!row_.INITipp && row_.Werteliste) {
        values = pieces(row_.Werteliste);
        if (values.size() != texts.size()) complain("Werteliste", "Es sind " + std::to_string(texts.size()) + " Texte, aber " + std::to_string(values.size()) + " Werte.");
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        const auto number = decimal(values[i]);
        if (!number || *number < 0 || *number > UINT32_MAX) complain("Werteliste", "Der Wert \"" + values[i] + "\" einer Option ist keine Zahl von 0 bis 4294967295.");
        if (std::count(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(i), values[i]) != 0) complain("Werteliste", "Der Wert \"" + values[i] + "\" steht doppelt.");
    }
    defaultOneOf(values);
}

void Artpruefer::checkFile() {
    allowTypes({typ::Sz, typ::ExpandSz});
    needName();
    need("Anzeigetext", row_.Anzeigetext);
    if (row_.INITipp || !row_.Werteliste) return;
    const auto parts = pieces(row_.Werteliste, "|");
    const bool odd = parts.size() % 2 != 0 || parts.empty();
    if (odd || std::any_of(parts.begin(), parts.end(), [](const std::string& p) { return p.empty(); }))
        complain("Werteliste", "Ein Dateifilter hat die Form \"Name|*.ext\", auch mehrmals hintereinander.");
}

void Artpruefer::checkColour() {
    allowTypes({typ::Sz});
    needName();
    need("Anzeigetext", row_.Anzeigetext);
    if (hasDefault() && !isColour(*row_.Standardwert)) complain("Standardwert", "Eine Farbe hat die Form \"58 110 165\".");
}

void Artpruefer::checkList() {
    allowTypes({typ::Sz});
    const bool whole = row_.istKopf() && row_.Wertname.value_or("").empty();
    if (whole && row_.Werteliste == Dateiliste) return;
    if (whole) {
        if (entries_ > 1) complain("Wertname", "Eine Liste von Schlüsseln hat nur einen Wert; sonst fehlt hier der Wertname.");
        return;
    }
    need("Wertname", row_.Wertname);
    need("Anzeigetext", row_.Anzeigetext);
    if (hasDefault() && lowerCase(*row_.Standardwert) != "no") complain("Standardwert", "Der Standardwert einer Liste ist \"no\" oder \"<delkey>\".");
}

void Artpruefer::checkBoot() {
    if (!row_.INITipp) complain("INITipp", "Ein Bootmenü-Tipp ist ein INI-Tipp.");
    if (entries_ > 1) complain("Ausgabeart", "Ein Bootmenü-Tipp hat nur einen Wert.");
    const auto switches = captions();
    if (switches.empty()) need("Anzeigetext", row_.Anzeigetext);
    std::set<std::string> seen;
    for (const std::string& name : switches) {
        if (name.size() < 2 || name[0] != '/' || name.find(' ') != std::string::npos) complain("Anzeigetext", "\"" + name + "\" ist kein Schalter der Form \"/NAME\" oder \"/NAME=\".");
        if (!seen.insert(lowerCase(name)).second) complain("Anzeigetext", "Der Schalter \"" + name + "\" steht doppelt.");
    }
    if (row_.Standardwert) complain("Standardwert", "Ein Bootmenü-Tipp hat keinen Standardwert.");
}

void Artpruefer::checkContext() {
    if (row_.INITipp) complain("INITipp", "Ein Kontextmenü liegt in der Registry.");
    if (entries_ > 1) complain("Ausgabeart", "Ein Kontextmenü-Tipp hat nur einen Wert.");
    if (!row_.Wertname.value_or("").empty()) complain("Wertname", "Ein Kontextmenü-Tipp hat keinen Wertnamen.");
    if (row_.Standardwert) complain("Standardwert", "Ein Kontextmenü-Tipp hat keinen Standardwert.");
}

void Artpruefer::checkBits() {
    allowTypes({typ::Binary, typ::Dword});
    needName();
    unused("WertEin", row_.WertEin);
    unused("WertAus", row_.WertAus);
    const auto boxes = captions();
    if (boxes.empty() || boxes.size() > MaxBits) complain("Anzeigetext", "Die Art bitmaske braucht 1 bis 32 Texte in Anzeigetext, den ersten für Bit 0.");
    if (hasDefault()) checkFits("Standardwert", *row_.Standardwert);
}

void Artpruefer::check() {
    switch (row_.Ausgabeart) {
        case art::Haken: return checkBox();
        case art::Text: return checkText();
        case art::Zahl: return checkNumber();
        case art::Auswahl: return checkCombo();
        case art::Optionen: return checkOptions();
        case art::Datei: return checkFile();
        case art::Farbe: return checkColour();
        case art::Liste: return checkList();
        case art::BootIni: return checkBoot();
        case art::Kontextmenue: return checkContext();
        case art::Bitmaske: return checkBits();
        default: complain("Ausgabeart", "Die Art " + std::to_string(row_.Ausgabeart) + " gibt es nicht.");
    }
}

}  // namespace

void checkKind(const Zeile& row, std::size_t entries, Beschwerden& complaints) {
    Artpruefer(row, entries, complaints).check();
    if (row.Werteliste && lowerCase(*row.Werteliste) == Dateiliste && (row.Werteliste != Dateiliste || row.Ausgabeart != art::Liste || !row.istKopf()))
        complaints.add(row.ortVon("Werteliste"), "\"<filelist>\" steht genau so und nur im ersten Wert eines Tipps der Art liste.");
}

}  // namespace brenvik::tipbau
