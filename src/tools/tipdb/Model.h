#pragma once
// A tip database before it is one: groups, versions and rows with the place each came from, and the complaints about them.
// Both the text sources and the tables of a finished database are brought into this form, so that one set of rules serves both.
#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "registry/ValueOperations.h"
#include "tipengine/kinds/SourceCheck.h"

namespace brenvik::tipbuild {

// Where something stands, as the user finds it: "tipps/03_symbole.toml:12" or "RegDaten, Index 5".
struct Ort {
    std::string datei;
    int zeile = 0;            // of a source; 0: the place has no lines
    std::string item = {};    // of a table instead: "Index", "Zeile"
    std::int64_t nummer = 0;  // and which one
    std::string text() const {
        if (zeile > 0) return datei + ":" + std::to_string(zeile);
        return item.empty() ? datei : datei + ", " + item + " " + std::to_string(nummer);
    }
};

class Complaints {
public:
    void add(const Ort& ort, const std::string& text);
    void hint(const Ort& ort, const std::string& text);   // worth a look, but nothing wrong
    bool empty() const { return liste_.empty(); }
    std::vector<std::string> lines() const;  // by file and line, each once
    std::vector<std::string> hints() const;

private:
    struct Eintrag {
        Ort ort;
        std::string text;
    };
    static std::vector<std::string> sortedLines(std::vector<Eintrag> entries);
    std::vector<Eintrag> liste_, hints_;
};

struct Version {
    Ort ort;
    std::string Version, Datum, Format;
};

struct GroupSource {
    Ort ort;
    std::int64_t nummer = 0;
    std::string name;
    std::optional<std::string> beschreibung;
    std::int64_t above = 0;  // number of the parent group, 0: none
    std::int64_t sequence = 0;
};

// One row of RegDaten. Absent texts and numbers are null columns.
struct Zeile : SourceRow {
    Ort ort;
    std::map<std::string, int> fields;  // line of each field of the source, by its column
    std::int64_t Index = 0, HauptIndex = 0;
    std::vector<std::int64_t> Gruppen;
    OptText Hauptschlüssel, Schlüssel, SchlüsselNT;
    OptText Überschrift, Beschreibung;
    std::optional<std::int64_t> HilfeNummer;
    std::int64_t AnzahlWerte = 0;
    std::int64_t TypAnpassen = 0, Symbol = 2;
    std::optional<std::int64_t> Verweis;
    bool Win95 = false, Win98 = false, WinME = false, WinNT = false, Win2000 = false, WinXP = false;
    OptText NeuInVersion;
    std::optional<std::int64_t> Neustart;
    bool ADMExport = false;
    bool kindReadable = true;    // the source names a kind and a type that there are; else the rules of the kind say nothing

    bool isHeading() const { return HauptIndex == 0; }
    Ort placeOf(const std::string& field) const;
};

struct Stock {
    std::vector<Version> versions;
    std::vector<GroupSource> gruppen;
    std::vector<Zeile> lines;  // table order; the rows of a Tip need not follow each other
};

// Texts and numbers of the format.
inline constexpr const char* WindowsPfad = "[WindowsPfad]";
inline constexpr const char* Sid = "[SID]";

}  // namespace brenvik::tipbau
