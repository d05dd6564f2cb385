#include "Check.h"

#include <algorithm>
#include <map>
#include <set>

#include "frame/text/Codepage.h"
#include "frame/text/Conversions.h"
#include "tipdb/Limits.h"
#include "tipdb/Schema.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik::tipbuild {

namespace {

constexpr std::size_t MaxText = 255, MaxList = 1000, MaxTitle = 100, MaxCaption = 100, MaxGroups = 50, MaxVersion = 10, MaxMemo = 8000, MaxGroupName = 60;
constexpr std::int64_t MaxIndex = 32767, MaxSymbol = 32767;
constexpr std::size_t MaxEntries = 255;
constexpr const char* RootNode = "Brenvik";
const std::set<std::string> Roots = {"HKCU", "HKLM", "HKU", "HKCR", "HKCC", "HKDD", "HKEY_CURRENT_USER", "HKEY_LOCAL_MACHINE", "HKEY_USERS", "HKEY_CLASSES_ROOT", "HKEY_CURRENT_CONFIG", "HKEY_DYN_DATA"};

bool hasControl(const std::string& text, bool lineEnds) {
    return std::any_of(text.begin(), text.end(), [&](char c) { return static_cast<unsigned char>(c) < 32 && !(lineEnds && (c == '\r' || c == '\n')); });
}

void checkText(const Ort& ort, const std::string& name, const OptText& text, std::size_t longest, Complaints& complaints, bool lineEnds = false) {
    if (!text) return;
    if (!fitsAnsi(*text)) complaints.add(ort, name + ": Der Text enthält Zeichen außerhalb von Windows-1252.");
    if (hasControl(*text, lineEnds))
        complaints.add(ort, name + ": Der Text enthält Steuerzeichen." + (ort.zeile > 0 ? " In doppelten Anführungszeichen wird aus \"\\t\" und \"\\n\" eines; Texte mit \"\\\" stehen in einfachen." : ""));
    if (textLength(*text) > longest) complaints.add(ort, name + ": Der Text ist mit " + std::to_string(textLength(*text)) + " Zeichen zu lang, erlaubt sind " + std::to_string(longest) + ".");
}

// Favourites and the eye cannot tell such a text from the one without.
void checkBlanks(const Ort& ort, const std::string& name, const OptText& text, Complaints& complaints) {
    if (text && !Trim(*text).empty() && Trim(*text) != *text) complaints.add(ort, name + ": Der Text beginnt oder endet mit einem Leerzeichen.");
}

// --- whole tables ---

void checkVersions(const Stock& b, Complaints& complaints) {
    if (b.versions.empty()) return complaints.add({"Version", 0}, "Es ist keine Version angegeben.");
    std::set<std::string> seen;
    for (const Version& v : b.versions) {
        for (const std::string& text : {v.Version, v.Datum, v.Format}) checkText(v.ort, "Version", text, MaxVersion, complaints);
        if (v.Version.empty()) complaints.add(v.ort, "Die Version ist leer.");
        if (!seen.insert(v.Version).second) complaints.add(v.ort, "Die Version \"" + v.Version + "\" steht doppelt.");
    }
    if (b.versions.back().Format != DBFormat) complaints.add(b.versions.back().ort, "Die letzte Version muß das Format \"" + std::string(DBFormat) + "\" haben.");
}

// The levels of each group, itself included; 0 for those that stand below themselves or hang from such a one.
class Levels {
public:
    explicit Levels(const std::map<std::int64_t, std::int64_t>& parents) : parents_(parents) {}

    std::size_t of(std::int64_t group) {
        std::vector<std::int64_t> way;
        std::size_t above = 0;
        for (std::int64_t at = group;;) {
            const auto known = levels_.find(at);
            if (known != levels_.end()) {
                above = known->second == OnTheWay ? 0 : known->second;
                if (above == 0) return settle(way, [](std::size_t) { return std::size_t{0}; });
                break;
            }
            const auto parent = parents_.find(at);
            if (parent == parents_.end()) break;   // 0, or a group that there is not
            levels_[at] = OnTheWay;
            way.push_back(at);
            at = parent->second;
        }
        return settle(way, [&](std::size_t fromTop) { return above + fromTop; });
    }

private:
    static constexpr std::size_t OnTheWay = SIZE_MAX;
    template <class Level> std::size_t settle(const std::vector<std::int64_t>& way, Level level) {
        for (std::size_t i = 0; i < way.size(); ++i) levels_[way[i]] = level(way.size() - i);
        return way.empty() ? level(0) : levels_[way.front()];
    }

    const std::map<std::int64_t, std::int64_t>& parents_;
    std::map<std::int64_t, std::size_t> levels_;
};

void checkGroups(const Stock& b, Complaints& complaints) {
    std::map<std::int64_t, std::int64_t> parents;
    std::set<std::string> names;
    for (const GroupSource& g : b.gruppen) {
        checkText(g.ort, "name", g.name, MaxGroupName, complaints);
        checkText(g.ort, "beschreibung", g.beschreibung, MaxMemo, complaints, true);
        if (g.nummer < 1 || g.nummer > MaxIndex) complaints.add(g.ort, "Die Gruppennummer " + std::to_string(g.nummer) + " liegt nicht zwischen 1 und 32767.");
        if (!parents.emplace(g.nummer, g.above).second) complaints.add(g.ort, "Die Gruppennummer " + std::to_string(g.nummer) + " ist schon vergeben.");
        checkBlanks(g.ort, "name", g.name, complaints);
        if (Trim(g.name).empty()) complaints.add(g.ort, "Die Gruppe hat keinen Namen.");
        if (!names.insert(lowerCase(g.name)).second) complaints.add(g.ort, "Der Gruppenname \"" + g.name + "\" ist schon vergeben.");
    }
    Levels levels(parents);
    for (const GroupSource& g : b.gruppen) {
        if (g.above != 0 && parents.count(g.above) == 0) complaints.add(g.ort, "Die Gruppe oberhalb mit der Nummer " + std::to_string(g.above) + " gibt es nicht.");
        else if (const std::size_t level = levels.of(g.nummer); level == 0) complaints.add(g.ort, "Die Gruppe steht über mehrere Ebenen unter sich selbst.");
        else if (level > MaxTreeLevels) complaints.add(g.ort, "Die Gruppe steht auf der Ebene " + std::to_string(level) + ", erlaubt sind " + std::to_string(MaxTreeLevels) + ".");
    }
}

// The tree finds a Tip again by its heading, so no other node may have the same text.
void checkHeadings(const Stock& b, Complaints& complaints) {
    std::map<std::string, std::string> taken = {{lowerCase(RootNode), "der Wurzel des Baums"}};
    for (const GroupSource& g : b.gruppen) taken.emplace(lowerCase(g.name), "einer Gruppe");
    for (const Version& v : b.versions) taken.emplace(lowerCase(v.Version), "einer Version");
    for (const Zeile& row : b.lines) {
        if (!row.Überschrift || row.Überschrift->empty()) continue;
        const auto [place, isNew] = taken.emplace(lowerCase(*row.Überschrift), "des Tipps " + std::to_string(row.Index));
        if (!isNew) complaints.add(row.placeOf("Überschrift"), "Die Überschrift \"" + *row.Überschrift + "\" ist schon die " + place->second + ".");
    }
}

// --- single rows ---

void checkRowTexts(const Zeile& row, Complaints& complaints) {
    const std::tuple<const char*, const OptText*, std::size_t> texts[] = {
        {"Hauptschlüssel", &row.Hauptschlüssel, MaxText}, {"Schlüssel", &row.Schlüssel, MaxText}, {"SchlüsselNT", &row.SchlüsselNT, MaxText}, {"Wertname", &row.Wertname, MaxText},
        {"Überschrift", &row.Überschrift, MaxTitle},      {"WertEin", &row.WertEin, MaxText},     {"Anzeigetext", &row.Anzeigetext, MaxList}, {"WertAus", &row.WertAus, MaxText},
        {"Werteliste", &row.Werteliste, MaxList},         {"Standardwert", &row.Standardwert, MaxText}, {"NeuInVersion", &row.NeuInVersion, MaxVersion}, {"Beschriftung", &row.Beschriftung, MaxCaption}};
    for (const auto& [name, text, longest] : texts) checkText(row.placeOf(name), name, *text, longest, complaints);
    checkText(row.placeOf("Beschreibung"), "Beschreibung", row.Beschreibung, MaxMemo, complaints, true);
    for (const auto& [name, text] : {std::pair{"Schlüssel", &row.Schlüssel}, {"SchlüsselNT", &row.SchlüsselNT}, {"Wertname", &row.Wertname}, {"Überschrift", &row.Überschrift}})
        checkBlanks(row.placeOf(name), name, *text, complaints);
}

void checkNumbers(const Zeile& row, Complaints& complaints) {
    const auto inRange = [&](const char* name, std::int64_t value, std::int64_t low, std::int64_t high) {
        if (value < low || value > high) complaints.add(row.placeOf(name), std::string(name) + ": " + std::to_string(value) + " liegt nicht zwischen " + std::to_string(low) + " und " + std::to_string(high) + ".");
    };
    inRange("Index", row.Index, 1, MaxIndex);
    inRange("Symbol", row.Symbol, 0, MaxSymbol);
    inRange("TypAnpassen", row.TypAnpassen, 0, 1);
    inRange("HilfeNummer", row.HilfeNummer.value_or(0), 0, INT32_MAX);
    inRange("Neustart", row.Neustart.value_or(0), 0, 2);
}

void checkPath(const Zeile& row, const char* column, const OptText& path, Complaints& complaints) {
    if (!path || path->empty()) return;
    const Ort ort = row.placeOf(column);
    const std::string& text = *path;
    if (text.front() == '\\' || text.back() == '\\' || text.find("\\\\") != std::string::npos)
        complaints.add(ort, "Der Schlüssel darf nicht mit \"\\\" beginnen oder enden und kein leeres Glied haben.");
    const std::vector<std::string> parts = Split(text, "\\");
    const std::string first = upperCase(text.substr(0, text.find_first_of("\\/")));
    if (Roots.count(first) != 0 || first.rfind("HKEY_", 0) == 0) complaints.add(ort, "Der Schlüssel beginnt ohne den Hauptschlüssel; der steht für sich.");
    if (text.find('/') != std::string::npos) {
        if (parts.size() == 1) complaints.add(ort, "Die Glieder eines Schlüssels trennt \"\\\", nicht \"/\".");
        else complaints.hint(ort, "Der Schlüssel enthält \"/\"; seine Glieder trennt nur \"\\\".");
    }
    const auto isMarker = [](const std::string& part) { return lowerCase(part).find("[sid]") != std::string::npos; };
    const auto marked = std::count_if(parts.begin(), parts.end(), isMarker);
    if (marked == 0) return;
    const bool exact = marked == 1 && std::count(parts.begin(), parts.end(), Sid) == 1;
    const std::string root = row.Hauptschlüssel.value_or("");
    const bool common = root == "HKU" || root == "HKEY_USERS" || root == "HKLM" || root == "HKEY_LOCAL_MACHINE";
    if (!exact || !common) complaints.add(ort, "\"[SID]\" steht genau so, einmal und als ganzes Glied eines Schlüssels unter HKU oder HKLM.");
}

void checkWindowsPath(const Zeile& row, Complaints& complaints) {
    const std::tuple<const char*, const OptText*, bool> columns[] = {{"WertEin", &row.WertEin, true},          {"WertAus", &row.WertAus, true},   {"Schlüssel", &row.Schlüssel, false},
                                                                    {"SchlüsselNT", &row.SchlüsselNT, false}, {"Wertname", &row.Wertname, false}, {"Standardwert", &row.Standardwert, false},
                                                                    {"Werteliste", &row.Werteliste, false},   {"Anzeigetext", &row.Anzeigetext, false}};
    for (const auto& [name, text, allowed] : columns) {
        if (!*text || lowerCase(**text).find("[windowspfad]") == std::string::npos) continue;
        const std::string& value = **text;
        const std::size_t length = std::string(WindowsPfad).size();
        const bool exact = value.rfind(WindowsPfad, 0) == 0 && lowerCase(value).find("[windowspfad]", 1) == std::string::npos && (value.size() == length || value[length] == '\\');
        if (!allowed || !exact) complaints.add(row.placeOf(name), "\"[WindowsPfad]\" steht nur in WertEin und WertAus, genau so, einmal und am Anfang, mit \"\\\" dahinter.");
    }
}

void checkRegistryPlace(const Zeile& row, Complaints& complaints) {
    if (Roots.count(row.Hauptschlüssel.value_or("")) == 0)
        complaints.add(row.placeOf("Hauptschlüssel"), "Der Hauptschlüssel \"" + row.Hauptschlüssel.value_or("") + "\" ist keiner; möglich sind HKCU, HKLM, HKU, HKCR, HKCC, HKDD.");
    if (row.Schlüssel.value_or("").empty()) complaints.add(row.placeOf("Schlüssel"), "Der Schlüssel fehlt.");
    checkPath(row, "Schlüssel", row.Schlüssel, complaints);
    checkPath(row, "SchlüsselNT", row.SchlüsselNT, complaints);
    if (row.Wertname.value_or("").find('\\') != std::string::npos) complaints.add(row.placeOf("Wertname"), "Ein Wertname kann kein \"\\\" enthalten.");
}

void checkIniPlace(const Zeile& row, Complaints& complaints) {
    if (row.Hauptschlüssel) complaints.add(row.placeOf("Hauptschlüssel"), "Ein INI-Tipp hat keinen Hauptschlüssel.");
    if (row.Schlüssel.value_or("").empty()) complaints.add(row.placeOf("Schlüssel"), "Der Abschnitt der INI-Datei fehlt (Schlüssel).");
    if (row.SchlüsselNT.value_or("").empty()) complaints.add(row.placeOf("SchlüsselNT"), "Der Name der INI-Datei fehlt (SchlüsselNT).");
    if (!kindOf(row.Ausgabeart).section && row.Wertname.value_or("").empty()) complaints.add(row.placeOf("Wertname"), "Der Name des Eintrags in der INI-Datei fehlt (Wertname).");
    if (row.ADMExport) complaints.add(row.placeOf("ADMExport"), "Ein INI-Tipp kann nicht als ADM exportiert werden.");
}

void checkRow(const Zeile& row, const std::set<std::int64_t>& groups, Complaints& complaints) {
    checkRowTexts(row, complaints);
    checkNumbers(row, complaints);
    checkWindowsPath(row, complaints);
    if (row.INITipp) checkIniPlace(row, complaints);
    else checkRegistryPlace(row, complaints);
    if (row.WertEin == DelKey) complaints.add(row.placeOf("WertEin"), "WertEin darf nicht \"<delkey>\" sein.");
    if (row.Gruppen.empty()) complaints.add(row.placeOf("Gruppen"), "Der Tipp steht in keiner Gruppe.");
    std::string joined;
    std::set<std::int64_t> own;
    for (const std::int64_t group : row.Gruppen) {
        joined += (joined.empty() ? "" : ",") + std::to_string(group);
        if (groups.count(group) == 0) complaints.add(row.placeOf("Gruppen"), "Die Gruppe " + std::to_string(group) + " gibt es nicht.");
        if (!own.insert(group).second) complaints.add(row.placeOf("Gruppen"), "Die Gruppe " + std::to_string(group) + " steht doppelt.");
    }
    checkText(row.placeOf("Gruppen"), "Gruppen", joined, MaxGroups, complaints);
    static const std::set<std::string> AdmRoots = {"HKCU", "HKLM", "HKEY_CURRENT_USER", "HKEY_LOCAL_MACHINE"};
    if (row.ADMExport && (kindOf(row.Ausgabeart).part == TemplatePart::None || AdmRoots.count(row.Hauptschlüssel.value_or("")) == 0))
        complaints.add(row.placeOf("ADMExport"), "Als ADM lassen sich nur die Arten haken, text, zahl, datei und liste unter HKCU und HKLM exportieren.");
}

void checkHead(const Zeile& row, const Stock& b, Complaints& complaints) {
    if (Trim(row.Überschrift.value_or("")).empty()) complaints.add(row.placeOf("Überschrift"), "Der Tipp hat keine Überschrift.");
    if (!(row.Win95 || row.Win98 || row.WinME || row.WinNT || row.Win2000 || row.WinXP)) complaints.add(row.placeOf("WinXP"), "Der Tipp ist für kein Betriebssystem.");
    const auto known = [&](const Version& v) { return v.Version == row.NeuInVersion; };
    if (std::none_of(b.versions.begin(), b.versions.end(), known)) complaints.add(row.placeOf("NeuInVersion"), "Die Version \"" + row.NeuInVersion.value_or("") + "\" steht nicht in der Tabelle Version.");
}

void checkReference(const Zeile& row, const std::map<std::int64_t, const Zeile*>& byIndex, Complaints& complaints) {
    if (row.Verweis.value_or(0) == 0) return;
    const Ort ort = row.placeOf("Verweis");
    const auto target = byIndex.find(*row.Verweis);
    if (target == byIndex.end() || target->second == &row) return complaints.add(ort, "Der Verweis zeigt auf keine andere Zeile.");
    const std::pair<const OptText Zeile::*, const char*> own[] = {{&Zeile::WertEin, "WertEin"}, {&Zeile::WertAus, "WertAus"}, {&Zeile::Anzeigetext, "Anzeigetext"}, {&Zeile::Werteliste, "Werteliste"}};
    for (const auto& [column, name] : own)
        if (target->second->*column && !(row.*column)) complaints.add(ort, std::string("Eine Zeile mit Verweis braucht ihre eigenen Werte: ") + name + " fehlt.");
}

// --- Tips as a whole ---

void checkTip(const Zeile& head, const std::vector<const Zeile*>& rows, Complaints& complaints) {
    if (rows.size() > MaxEntries) complaints.add(head.ort, "Der Tipp hat mehr als 255 Werte.");
    if (static_cast<std::size_t>(head.AnzahlWerte) + 1 != rows.size())
        complaints.add(head.ort, "AnzahlWerte ist " + std::to_string(head.AnzahlWerte) + ", der Tipp hat aber " + std::to_string(rows.size() - 1) + " weitere Werte.");
    std::set<std::string> places;
    for (const Zeile* row : rows) {
        if (row->kindReadable && textLength(row->Anzeigetext.value_or("")) <= MaxList && textLength(row->Werteliste.value_or("")) <= MaxList) checkKind(*row, rows.size(), complaints);
        const Kind &kind = kindOf(row->Ausgabeart), &first = kindOf(head.Ausgabeart);
        if ((kind.onePanel() || first.onePanel()) && &kind != &first) complaints.add(row->placeOf("Ausgabeart"), "Die Arten datei, farbe, liste, bootini und kontextmenue lassen sich mit keiner anderen mischen.");
        if (row->INITipp != head.INITipp) complaints.add(row->placeOf("INITipp"), "Alle Werte eines Tipps liegen entweder in INI-Dateien oder in der Registry.");
        const std::string place = lowerCase(row->Hauptschlüssel.value_or("") + "\\" + row->Schlüssel.value_or("") + "\\" + row->SchlüsselNT.value_or("") + "\\" + row->Wertname.value_or(""));
        if (!places.insert(place).second) complaints.add(row->placeOf("Wertname"), "Der Tipp hat diesen Wert schon.");
    }
}

}  // namespace

void checkKind(const Zeile& row, std::size_t entries, Complaints& complaints) {
    const Kind& kind = kindOf(row.Ausgabeart);
    kind.checkSource({row, kind.sourceName, entries, row.isHeading(), [&](const char* column, const std::string& text) { complaints.add(row.placeOf(column), text); }});
    if (row.Werteliste && lowerCase(*row.Werteliste) == FileList && (row.Werteliste != FileList || !kind.listsFiles || !row.isHeading()))
        complaints.add(row.placeOf("Werteliste"), "\"<filelist>\" steht genau so und nur im ersten Wert eines Tipps der Art liste.");
}

void checkAll(const Stock& b, Complaints& complaints) {
    checkVersions(b, complaints);
    checkGroups(b, complaints);
    checkHeadings(b, complaints);
    std::map<std::int64_t, const Zeile*> byIndex;
    for (const Zeile& row : b.lines)
        if (!byIndex.emplace(row.Index, &row).second) complaints.add(row.placeOf("Index"), "Die Nummer " + std::to_string(row.Index) + " ist schon vergeben.");
    std::set<std::int64_t> groups;
    for (const GroupSource& g : b.gruppen) groups.insert(g.nummer);
    std::map<std::int64_t, std::vector<const Zeile*>> furtherRows;
    for (const Zeile& row : b.lines) {
        checkRow(row, groups, complaints);
        checkReference(row, byIndex, complaints);
        if (row.isHeading()) {
            checkHead(row, b, complaints);
            continue;
        }
        const auto head = byIndex.find(row.HauptIndex);
        if (head == byIndex.end() || !head->second->isHeading()) complaints.add(row.ort, "Die Zeile gehört zu keinem Tipp (HauptIndex " + std::to_string(row.HauptIndex) + ").");
        furtherRows[row.HauptIndex].push_back(&row);
    }
    for (const Zeile& row : b.lines) {
        if (!row.isHeading()) continue;
        std::vector<const Zeile*> rows = {&row};
        const auto further = furtherRows.find(row.Index);
        if (further != furtherRows.end()) rows.insert(rows.end(), further->second.begin(), further->second.end());
        checkTip(row, rows, complaints);
    }
    hintSharedValues(b, complaints);
}

}  // namespace brenvik::tipbau
