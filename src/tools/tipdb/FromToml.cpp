#include "FromToml.h"

#include <algorithm>
#include <set>

#include "frame/files/FileSystem.h"
#include "frame/text/Conversions.h"
#include "frame/toml/TomlText.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik::tipbuild {

namespace {

namespace fs = std::filesystem;

// One table of a source. Fields are fetched by name; those nobody fetched are unknown and complained about at the end.
class Fields {
public:
    Fields(const toml::table& table, std::string datei, Complaints& complaints)
        : table_(table), datei_(std::move(datei)), complaints_(complaints) {}

    Ort ort() const { return {datei_, static_cast<int>(table_.source().begin.line)}; }
    Ort placeOf(const std::string& name) const {
        const toml::node* node = table_.get(name);
        return node == nullptr ? ort() : Ort{datei_, static_cast<int>(node->source().begin.line)};
    }
    const toml::node* get(const std::string& name) {
        known_.insert(name);
        return table_.get(name);
    }
    void complain(const std::string& name, const std::string& text) { complaints_.add(placeOf(name), name + ": " + text); }

    OptText text(const std::string& name, bool required = false) {
        const toml::node* node = get(name);
        if (node == nullptr) {
            if (required) complaints_.add(ort(), "Das Feld \"" + name + "\" fehlt.");
            return std::nullopt;
        }
        if (const auto value = node->value_exact<std::string>()) return value;
        complain(name, "Hier wird ein Text erwartet.");
        return std::nullopt;
    }
    // A text, or texts that are stored joined by "#".
    OptText listText(const std::string& name) {
        const toml::node* node = get(name);
        if (node == nullptr) return std::nullopt;
        if (const auto value = node->value_exact<std::string>()) return value;
        const auto items = texts(name);
        if (!items) return std::nullopt;
        std::string joined;
        for (std::size_t i = 0; i < items->size(); ++i) {
            if ((*items)[i].find('#') != std::string::npos) complain(name, "Ein Text einer Liste darf kein \"#\" enthalten.");
            joined += (i == 0 ? "" : "#") + (*items)[i];
        }
        return joined;
    }
    std::optional<std::vector<std::string>> texts(const std::string& name) {
        const toml::node* node = get(name);
        if (node == nullptr) return std::nullopt;
        std::vector<std::string> result;
        const toml::array* list = node->as_array();
        for (std::size_t i = 0; list != nullptr && i < list->size(); ++i)
            if (const auto value = list->get(i)->value_exact<std::string>()) result.push_back(*value);
        if (list == nullptr || result.size() != list->size() || result.empty()) {
            complain(name, "Hier wird eine Liste von Texten erwartet.");
            return std::nullopt;
        }
        return result;
    }
    std::optional<std::int64_t> number(const std::string& name, bool required = false) {
        const toml::node* node = get(name);
        if (node == nullptr) {
            if (required) complaints_.add(ort(), "Das Feld \"" + name + "\" fehlt.");
            return std::nullopt;
        }
        if (const auto value = node->value_exact<std::int64_t>()) return value;
        complain(name, "Hier wird eine ganze Zahl erwartet.");
        return std::nullopt;
    }
    std::optional<std::vector<std::int64_t>> numbers(const std::string& name) {
        const toml::node* node = get(name);
        if (node == nullptr) return std::nullopt;
        std::vector<std::int64_t> result;
        const toml::array* list = node->as_array();
        for (std::size_t i = 0; list != nullptr && i < list->size(); ++i)
            if (const auto value = list->get(i)->value_exact<std::int64_t>()) result.push_back(*value);
        if (list == nullptr || result.size() != list->size() || result.empty()) {
            complain(name, "Hier wird eine Liste von ganzen Zahlen erwartet.");
            return std::nullopt;
        }
        return result;
    }
    bool flag(const std::string& name) {
        const toml::node* node = get(name);
        if (node == nullptr) return false;
        if (const auto value = node->value_exact<bool>()) return *value;
        complain(name, "Hier wird true oder false erwartet.");
        return false;
    }
    // The tables of [[name]], in order.
    std::vector<const toml::table*> tables(const std::string& name) {
        const toml::node* node = get(name);
        std::vector<const toml::table*> result;
        if (node == nullptr) return result;
        const toml::array* list = node->as_array();
        for (std::size_t i = 0; list != nullptr && i < list->size(); ++i)
            if (const toml::table* item = list->get(i)->as_table()) result.push_back(item);
        if (list == nullptr || result.size() != list->size()) complain(name, "Hier werden Abschnitte [[" + name + "]] erwartet.");
        return result;
    }
    void finish() {
        for (const auto& [key, node] : table_)
            if (known_.count(std::string(key.str())) == 0)
                complaints_.add({datei_, static_cast<int>(key.source().begin.line)}, "Das Feld \"" + std::string(key.str()) + "\" ist unbekannt.");
    }
    const std::string& datei() const { return datei_; }
    Complaints& complaints() { return complaints_; }

private:
    const toml::table& table_;
    std::string datei_;
    Complaints& complaints_;
    std::set<std::string> known_;
};

// Line ends of descriptions as Windows has them.
OptText withCrLf(OptText text) {
    if (!text) return text;
    return Replace(Replace(*text, "\r\n", "\n"), "\n", "\r\n");
}

// The number of a name; nothing where there is none, which has been complained about if it had to be there.
template <class Names> std::optional<std::int64_t> named(Fields& fields, const std::string& field, const Names& names, bool required) {
    const OptText text = fields.text(field, required);
    if (!text) return std::nullopt;
    for (const SourceName& name : names)
        if (*text == name.text) return name.nummer;
    std::string allowed;
    for (const SourceName& name : names) allowed += (allowed.empty() ? "" : ", ") + std::string(name.text);
    fields.complain(field, "\"" + *text + "\" ist unbekannt; möglich sind " + allowed + ".");
    return std::nullopt;
}

void readSystems(Fields& fields, Zeile& head) {
    const auto systems = fields.texts("systeme");
    if (!systems) {
        if (fields.get("systeme") == nullptr) fields.complaints().add(fields.ort(), "Das Feld \"systeme\" fehlt.");
        return;
    }
    const std::array<std::pair<const char*, bool*>, 6> known = {{{"95", &head.Win95}, {"98", &head.Win98}, {"ME", &head.WinME}, {"NT", &head.WinNT}, {"2000", &head.Win2000}, {"XP", &head.WinXP}}};
    for (const std::string& system : *systems) {
        const auto hit = std::find_if(known.begin(), known.end(), [&](const auto& k) { return system == k.first; });
        if (hit == known.end()) fields.complain("systeme", "\"" + system + "\" ist unbekannt; möglich sind 95, 98, ME, NT, 2000, XP.");
        else if (*hit->second) fields.complain("systeme", "\"" + system + "\" steht doppelt.");
        else *hit->second = true;
    }
}

// What belongs to the Tip as a whole; further rows start as copies of it.
Zeile readTip(Fields& fields, std::int64_t fileGroup) {
    static constexpr std::array<SourceName, 3> Restarts = {{{"nein", 0}, {"neustart", 1}, {"desktop", 2}}};
    Zeile head;
    head.ort = fields.ort();
    head.Index = fields.number("nummer", true).value_or(0);
    head.Überschrift = fields.text("titel", true);
    head.Beschreibung = withCrLf(fields.text("beschreibung", true));
    head.Gruppen = fields.numbers("gruppen").value_or(std::vector<std::int64_t>{fileGroup});
    readSystems(fields, head);
    head.NeuInVersion = fields.text("neu", true);
    head.Neustart = named(fields, "neustart", Restarts, true).value_or(0);
    head.HilfeNummer = fields.number("hilfe");
    head.Symbol = fields.number("symbol").value_or(2);
    head.ADMExport = fields.flag("adm");
    head.INITipp = fields.flag("ini");
    const std::pair<const char*, const char*> places[] = {{"nummer", "Index"}, {"titel", "Überschrift"}, {"beschreibung", "Beschreibung"}, {"gruppen", "Gruppen"}, {"systeme", "WinXP"},
                                                          {"neu", "NeuInVersion"}, {"hilfe", "HilfeNummer"}, {"symbol", "Symbol"}, {"adm", "ADMExport"}, {"ini", "INITipp"}};
    for (const auto& [field, column] : places) head.fields[column] = fields.placeOf(field).zeile;
    return head;
}

std::vector<SourceName> kindNames() {
    std::vector<SourceName> names;
    for (const Kind* kind : allKinds()) names.push_back({kind->sourceName, kind->number});
    return names;
}

void readEntry(Fields& fields, Zeile& row) {
    row.ort = fields.ort();
    const auto kind = named(fields, "art", kindNames(), true);
    row.Ausgabeart = kind.value_or(0);
    row.Hauptschlüssel = fields.text("wurzel");
    row.Schlüssel = fields.text("schluessel");
    row.SchlüsselNT = fields.text("schluessel_nt");
    row.Wertname = fields.text("name");
    const bool typed = !row.INITipp && !kindOf(row.Ausgabeart).menu;  // the others hold texts
    const auto type = named(fields, "typ", SourceTypes, typed);
    row.Datentyp = type.value_or(typ::Sz);
    row.kindReadable = kind && (type || (!typed && fields.get("typ") == nullptr));
    row.WertEin = fields.text("ein");
    row.WertAus = fields.text("aus");
    row.Anzeigetext = fields.listText("anzeige");
    row.Werteliste = fields.listText("werte");
    row.Standardwert = fields.text("standard");
    row.Beschriftung = fields.text("beschriftung");
    row.Verweis = fields.number("verweis");
    row.TypAnpassen = fields.number("typanpassen").value_or(0);
    if (row.TypAnpassen != 0) fields.complain("typanpassen", "Nur 0 ist möglich: vor einem Wechsel des Datentyps wird gefragt.");
    const std::pair<const char*, const char*> places[] = {{"art", "Ausgabeart"}, {"wurzel", "Hauptschlüssel"}, {"schluessel", "Schlüssel"}, {"schluessel_nt", "SchlüsselNT"}, {"name", "Wertname"}, {"typ", "Datentyp"},
                                                          {"ein", "WertEin"}, {"aus", "WertAus"}, {"anzeige", "Anzeigetext"}, {"werte", "Werteliste"}, {"standard", "Standardwert"}, {"beschriftung", "Beschriftung"}, {"verweis", "Verweis"}};
    for (const auto& [field, column] : places) row.fields[column] = fields.placeOf(field).zeile;
}

void addTip(Fields& tip, std::int64_t fileGroup, Stock& out) {
    const Zeile head = readTip(tip, fileGroup);
    const auto entries = tip.tables("wert");
    if (entries.empty()) tip.complaints().add(tip.ort(), "Der Tipp hat keinen Abschnitt [[tipp.wert]].");
    for (std::size_t i = 0; i < entries.size(); ++i) {
        Fields fields(*entries[i], tip.datei(), tip.complaints());
        Zeile row = head;
        const auto number = fields.number("nummer", i > 0);
        readEntry(fields, row);
        fields.finish();
        if (i == 0) {
            if (number && *number != head.Index) fields.complain("nummer", "Der erste Wert trägt die Nummer des Tipps.");
            row.AnzahlWerte = static_cast<std::int64_t>(entries.size()) - 1;
        } else {
            row.Index = number.value_or(0);
            row.fields["Index"] = fields.placeOf("nummer").zeile;
            row.HauptIndex = head.Index;
            row.Überschrift.reset();
            row.Beschreibung.reset();
            row.HilfeNummer.reset();
        }
        out.lines.push_back(std::move(row));
    }
    tip.finish();
}

void addGroupFile(const toml::table& root, const std::string& datei, Complaints& complaints, Stock& out) {
    Fields file(root, datei, complaints);
    const toml::node* node = file.get("gruppe");
    std::int64_t number = 0;
    if (node == nullptr || node->as_table() == nullptr) {
        complaints.add({datei, 1}, "Der Abschnitt [gruppe] fehlt.");
    } else {
        Fields fields(*node->as_table(), datei, complaints);
        GroupSource group;
        group.ort = fields.ort();
        group.nummer = number = fields.number("nummer", true).value_or(0);
        group.name = fields.text("name", true).value_or("");
        group.beschreibung = withCrLf(fields.text("beschreibung", true));
        group.above = fields.number("oberhalb").value_or(0);
        group.sequence = fields.number("reihenfolge", true).value_or(0);
        fields.finish();
        out.gruppen.push_back(group);
    }
    for (const toml::table* table : file.tables("tipp")) {
        Fields tip(*table, datei, complaints);
        addTip(tip, number, out);
    }
    file.finish();
}

void addVersions(const toml::table& root, const std::string& datei, Complaints& complaints, Stock& out) {
    Fields file(root, datei, complaints);
    for (const toml::table* table : file.tables("version")) {
        Fields fields(*table, datei, complaints);
        Version version;
        version.ort = fields.ort();
        version.Version = fields.text("version", true).value_or("");
        version.Datum = fields.text("datum", true).value_or("");
        version.Format = fields.text("format", true).value_or("");
        fields.finish();
        out.versions.push_back(version);
    }
    file.finish();
}

}  // namespace

Stock readSources(const fs::path& folder, Complaints& complaints) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == ".toml") files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    Stock result;
    for (const fs::path& file : files) {
        const std::string datei = utf8FromPath(file);
        try {
            const toml::table root = parseToml(readFile(file, MaxTomlBytes));
            if (file.filename() == "version.toml") addVersions(root, datei, complaints, result);
            else addGroupFile(root, datei, complaints, result);
        } catch (const TomlError& error) {
            complaints.add({datei, static_cast<int>(error.line)}, "Das ist kein gültiges TOML: " + std::string(error.what()) + ".");
        } catch (const NumberedError& error) {
            complaints.add({datei}, std::string("Die Datei ist nicht lesbar: ") + error.what());
        }
    }
    return result;
}

}  // namespace brenvik::tipbau
