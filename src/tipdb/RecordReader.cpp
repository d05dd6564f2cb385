#include "tipdb/RecordReader.h"

#include <fmt/format.h>

#include "frame/Reports.h"
#include "frame/files/FileSystem.h"
#include "frame/text/Conversions.h"
#include "tipdb/Messages.h"
#include "tipdb/Schema.h"

namespace brenvik {

namespace {

constexpr const char* Routine = "DBTippRead";
constexpr const char* FileList = "<filelist>";
constexpr const char* WindowsPfad = "[WindowsPfad]";

// The long form of a root key; only these exact spellings are known.
std::string expandedRoot(const std::string& text) {
    static constexpr struct {
        const char *brief, *lang;
    } Roots[] = {{"HKCU", "HKEY_CURRENT_USER"}, {"HKLM", "HKEY_LOCAL_MACHINE"},  {"HKU", "HKEY_USERS"},
                 {"HKDD", "HKEY_DYN_DATA"},     {"HKCC", "HKEY_CURRENT_CONFIG"}, {"HKCR", "HKEY_CLASSES_ROOT"}};
    for (const auto& root : Roots)
        if (text == root.brief || text == root.lang) return root.lang;
    return {};
}

class RecordReader {
public:
    explicit RecordReader(TipdbContext& context) : ctx_(context), tipp_(context.aktuellerTipp) {}

    void read();

private:
    void readHead(const RecordSet& rs);
    std::int16_t listFiles(const RecordSet& rs);
    void readRows(RecordSet& rs);
    void readFileEntries(RecordSet& rs, std::int16_t count);
    void readCommon(const RecordSet& rs, TipEntry& entry);
    std::string valueOrPath(const RecordSet& rs, spalte::Spalte column, const char* ifNull) const;
    TipEntry& entryAt(std::size_t i) {
        if (i >= tipp_.Eintrag.size()) throw LocatedError(errnum::Subscript, fmt::format(messages::MoreLines, TableRegDaten, tipp_.Eintrag.at(1).TippIndex));
        return tipp_.Eintrag[i];
    }

    TipdbContext& ctx_;
    Tipp& tipp_;
};

void RecordReader::readHead(const RecordSet& rs) {
    tipp_.Überschrift = rs.textOrEmpty(spalte::Überschrift);
    tipp_.AnzahlWerte = rs.number<std::uint8_t>(spalte::AnzahlWerte);
    tipp_.Win95 = rs.flag(spalte::Win95);
    tipp_.Win98 = rs.flag(spalte::Win98);
    tipp_.WinME = rs.flag(spalte::WinME);
    tipp_.WinNT = rs.flag(spalte::WinNT);
    tipp_.Win2000 = rs.flag(spalte::Win2000);
    tipp_.WinXP = rs.flag(spalte::WinXP);
    tipp_.INITipp = rs.flag(spalte::INITipp);
    tipp_.Gruppen = rs.textOrEmpty(spalte::Gruppen);
    tipp_.Symbol = rs.number<std::int16_t>(spalte::Symbol);
    tipp_.NeuInVersion = rs.textOrEmpty(spalte::NeuInVersion);
    tipp_.HilfeNummer = rs.numberOrZero<std::int32_t>(spalte::HilfeNummer);
    tipp_.Beschreibung = rs.textOrEmpty(spalte::Beschreibung);
    tipp_.Neustart = rs.numberOrZero<std::uint8_t>(spalte::Neustart);
}

// Answers the number of files, 0 for a Tip that is none of a file list.
std::int16_t RecordReader::listFiles(const RecordSet& rs) {
    if (rs.textOrEmpty(spalte::Werteliste) != FileList) return 0;
    const std::int16_t count = DirList(ctx_, ctx_.target().files(), systemFolder(ctx_) + "*.cpl", ctx_.strDateiListe);
    if (count > 256) throw NumberedError(errnum::Overflow, "Überlauf");
    if (count > 0) tipp_.AnzahlWerte = static_cast<std::uint8_t>(count - 1);
    return count;
}

std::string RecordReader::valueOrPath(const RecordSet& rs, spalte::Spalte column, const char* ifNull) const {
    if (rs.isNull(column)) return ifNull;
    const std::string text = rs.text(column);
    const std::vector<std::string> parts = Split(text, WindowsPfad);
    if (parts.size() != 2) return text;
    const bool windows9x = ctx_.intBS == 1 || ctx_.intBS == 2 || ctx_.intBS == 5;
    return windowsFolder(ctx_) + (windows9x ? "\\System" : "\\System32") + parts[1];
}

void RecordReader::readCommon(const RecordSet& rs, TipEntry& entry) {
    entry.Hauptschlüssel = expandedRoot(rs.textOrEmpty(spalte::Hauptschlüssel));
    entry.TippIndex = rs.number<std::int16_t>(spalte::Index);
    entry.Schlüssel = rs.textOrEmpty(spalte::Schlüssel);
    entry.TypAnpassen = rs.number<std::uint8_t>(spalte::TypAnpassen);
    entry.SchlüsselNT = rs.textOrEmpty(spalte::SchlüsselNT);
    entry.WertEin = valueOrPath(rs, spalte::WertEin, "1");
    entry.WertAus = valueOrPath(rs, spalte::WertAus, "0");
    entry.Werteliste = rs.textOrEmpty(spalte::Werteliste);
    entry.Standardwert = rs.textOrEmpty(spalte::Standardwert);
    entry.Ausgabeart = rs.number<std::int16_t>(spalte::Ausgabeart);
    entry.Datentyp = rs.number<std::int32_t>(spalte::Datentyp);
    entry.Beschriftung = rs.textOrEmpty(spalte::Beschriftung);
    tipp_.ADMExport = rs.flag(spalte::ADMExport);
}

void RecordReader::readRows(RecordSet& rs) {
    for (std::size_t i = 1; !rs.atEOF(); rs.MoveNext(), ++i) {
        TipEntry& entry = entryAt(i);
        readCommon(rs, entry);
        entry.Wertname = rs.textOrEmpty(spalte::Wertname);
        entry.Anzeigetext = rs.textOrEmpty(spalte::Anzeigetext);
    }
}

// One entry for each file, all of them copies of the first row; a row that names the file gives it its caption.
void RecordReader::readFileEntries(RecordSet& rs, std::int16_t count) {
    std::vector<std::pair<std::string, std::string>> captions;
    for (; !rs.atEOF(); rs.MoveNext())
        if (!rs.isNull(spalte::Wertname)) captions.emplace_back(lowerCase(rs.text(spalte::Wertname)), rs.textOrEmpty(spalte::Anzeigetext));
    rs.MoveFirst();
    for (std::size_t i = 1; i <= static_cast<std::size_t>(count); ++i) {
        TipEntry& entry = entryAt(i);
        readCommon(rs, entry);
        entry.Wertname = ctx_.strDateiListe.at(i);
        entry.Anzeigetext = "Unbekannt!";
        for (const auto& [name, caption] : captions)
            if (name == lowerCase(entry.Wertname)) entry.Anzeigetext = caption;
    }
}

void RecordReader::read() {
    if (!ctx_.objRS) throw NumberedError(91, "Es ist keine Datenbank geladen.");
    const RecordSet& head = *ctx_.objRS;
    ctx_.trace.write("Tipp aus der Datenbank auslesen:");
    ctx_.trace.write("Tippnummer: " + head.text(spalte::Index));
    ctx_.blnTippGeladen = true;
    tipp_ = {};  // should the reading fail, nothing of the Tip before must seem to be this one's
    readHead(head);
    const std::int16_t files = listFiles(head);
    tipp_.Eintrag.assign(static_cast<std::size_t>(tipp_.AnzahlWerte) + 2, {});
    const auto number = head.number<std::int16_t>(spalte::Index);
    entryAt(1).TippIndex = number;
    const std::string n = std::to_string(number);
    const auto rs = ctx_.objDB.GetNewRS(ctx_, ctx_.objVerbindung.get(), "Select * From RegDaten where Index=" + n + " or HauptIndex=" + n);
    if (rs->State() != RecordSet::IsOpen || rs->atEOF()) return;
    rs->MoveFirst();
    if (files >= 1) readFileEntries(*rs, files);
    else readRows(*rs);
    ctx_.objDB.RSClose(rs.get());
    ctx_.trace.write("Tipp gelesen");
}

}  // namespace

void DBTippRead(TipdbContext& ctx) {
    reportAndGoOn(ctx, Routine, [&] { RecordReader(ctx).read(); });
}

void DBTippSuchen(TipdbContext& ctx, const std::string& Überschrift) {
    reportAndGoOn(ctx, Routine, [&] {
        if (ctx.objRS) ctx.objRS->moveToText(spalte::Überschrift, Überschrift);
        RecordReader(ctx).read();
    });
}

}  // namespace brenvik
