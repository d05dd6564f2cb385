#include "FromDatabase.h"

#include <functional>
#include <set>

#include "frame/text/Conversions.h"
#include "tipdb/DatabaseErrors.h"
#include "tipdb/DatabaseSource.h"
#include "tipdb/Limits.h"
#include "tipdb/RecordSet.h"
#include "tipdb/Schema.h"
#include "tipdb/sql/SqlEngine.h"

namespace brenvik::tipbuild {

namespace {

class Reader {
public:
    Reader(SqlEngine& engine, Complaints& complaints) : engine_(engine), complaints_(complaints) {}

    // Calls take for each row; a field that cannot be read is a complaint about that row.
    void rows(const std::string& table, const std::string& sql, const std::function<void(const RecordSet&, const Ort&)>& take) {
        try {
            RecordSet rs(sql, engine_.query(sql));
            for (std::int64_t i = 1; !rs.atEOF(); rs.MoveNext(), ++i) {
                Ort ort{table, 0, "Zeile", i};
                if (table == TableRegDaten && !rs.isNull(spalte::Index)) ort = {table, 0, "Index", rs.wholeNumber(spalte::Index)};
                try {
                    take(rs, ort);
                } catch (const NumberedError& error) {
                    complaints_.add(ort, std::string("Die Zeile ist nicht lesbar: ") + error.what());
                }
            }
        } catch (const DatabaseErrors& error) {
            complaints_.add({table}, error.what());
        }
    }

private:
    SqlEngine& engine_;
    Complaints& complaints_;
};

OptText textOf(const RecordSet& rs, int column) { return rs.isNull(column) ? OptText() : OptText(rs.text(column)); }
std::optional<std::int64_t> numberOf(const RecordSet& rs, int column) {
    return rs.isNull(column) ? std::nullopt : std::optional<std::int64_t>(rs.wholeNumber(column));
}

Zeile rowOf(const RecordSet& rs, const Ort& ort, int hauptIndex) {
    Zeile z;
    z.ort = ort;
    z.Index = rs.wholeNumber(spalte::Index);
    z.HauptIndex = numberOf(rs, hauptIndex).value_or(0);
    for (const std::string& piece : Split(rs.textOrEmpty(spalte::Gruppen), ",")) z.Gruppen.push_back(static_cast<std::int64_t>(Val(piece)));
    z.Hauptschlüssel = textOf(rs, spalte::Hauptschlüssel);
    z.Schlüssel = textOf(rs, spalte::Schlüssel);
    z.SchlüsselNT = textOf(rs, spalte::SchlüsselNT);
    z.Wertname = textOf(rs, spalte::Wertname);
    z.Datentyp = rs.wholeNumber(spalte::Datentyp);
    z.Ausgabeart = rs.wholeNumber(spalte::Ausgabeart);
    z.Überschrift = textOf(rs, spalte::Überschrift);
    z.Beschreibung = textOf(rs, spalte::Beschreibung);
    z.HilfeNummer = numberOf(rs, spalte::HilfeNummer);
    z.AnzahlWerte = rs.wholeNumber(spalte::AnzahlWerte);
    z.WertEin = textOf(rs, spalte::WertEin);
    z.Anzeigetext = textOf(rs, spalte::Anzeigetext);
    z.WertAus = textOf(rs, spalte::WertAus);
    z.Werteliste = textOf(rs, spalte::Werteliste);
    z.Standardwert = textOf(rs, spalte::Standardwert);
    z.TypAnpassen = rs.wholeNumber(spalte::TypAnpassen);
    z.Symbol = rs.wholeNumber(spalte::Symbol);
    z.Verweis = numberOf(rs, spalte::Verweis);
    z.Win95 = rs.flag(spalte::Win95);
    z.Win98 = rs.flag(spalte::Win98);
    z.WinME = rs.flag(spalte::WinME);
    z.WinNT = rs.flag(spalte::WinNT);
    z.Win2000 = rs.flag(spalte::Win2000);
    z.WinXP = rs.flag(spalte::WinXP);
    z.NeuInVersion = textOf(rs, spalte::NeuInVersion);
    z.Neustart = numberOf(rs, spalte::Neustart);
    z.INITipp = rs.flag(spalte::INITipp);
    z.Beschriftung = textOf(rs, spalte::Beschriftung);
    z.ADMExport = rs.flag(spalte::ADMExport);
    return z;
}

void checkTree(Reader& reader, const Stock& b, Complaints& complaints) {
    std::set<std::int64_t> known;
    for (const GroupSource& g : b.gruppen) known.insert(g.nummer);
    std::int64_t previous = 0;
    reader.rows(TableTreebaum, "Select * From Treebaum order by Nachfolger", [&](const RecordSet& rs, const Ort& ort) {
        const std::int64_t predecessor = rs.wholeNumber(treeColumn::Vorgänger), ebene = rs.wholeNumber(treeColumn::Ebene), wanted = rs.wholeNumber(treeColumn::Gruppe);
        if (ebene < 1 || predecessor != ebene || ebene > previous + 1) complaints.add(ort, "Ebene " + std::to_string(ebene) + " mit Vorgänger " + std::to_string(predecessor) + " hat im Baum keinen Platz.");
        else if (ebene > static_cast<std::int64_t>(MaxTreeLevels)) complaints.add(ort, "Ebene " + std::to_string(ebene) + " ist zu tief, erlaubt sind " + std::to_string(MaxTreeLevels) + ".");
        previous = ebene;
        if (known.count(wanted) == 0) complaints.add(ort, "Die Gruppe " + std::to_string(wanted) + " gibt es nicht.");
    });
}

}  // namespace

Stock readFinishedDatabase(const std::filesystem::path& file, const std::string& password, Complaints& complaints) {
    SqlEngine engine(readDatabase(file, password, {std::begin(TipTables), std::end(TipTables)}));
    Reader reader(engine, complaints);
    Stock b;
    reader.rows(TableVersion, "Select * From Version", [&](const RecordSet& rs, const Ort& ort) {
        b.versions.push_back({ort, rs.textOrEmpty(versionColumn::Version), rs.textOrEmpty(versionColumn::Datum), rs.textOrEmpty(versionColumn::Format)});
    });
    reader.rows(TableGruppennamen, "Select * From Gruppennamen order by Gruppe", [&](const RecordSet& rs, const Ort& ort) {
        GroupSource group;
        group.ort = ort;
        group.name = rs.textOrEmpty(groupColumn::Name);
        group.nummer = rs.wholeNumber(groupColumn::Nummer);
        group.beschreibung = textOf(rs, groupColumn::Beschreibung);
        b.gruppen.push_back(group);
    });
    checkTree(reader, b, complaints);
    // HauptIndex has no fixed place: it is asked for by name and comes behind all other columns.
    reader.rows(TableRegDaten, "Select *, HauptIndex From RegDaten", [&](const RecordSet& rs, const Ort& ort) { b.lines.push_back(rowOf(rs, ort, static_cast<int>(rs.FieldCount()) - 1)); });
    return b;
}

}  // namespace brenvik::tipbau
