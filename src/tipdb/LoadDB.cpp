#include "tipdb/LoadDB.h"

#include <fmt/format.h>

#include <cmath>
#include <unordered_map>

#include "frame/Reports.h"
#include "frame/files/FileSystem.h"
#include "frame/program/Cipher.h"
#include "frame/program/Product.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "registry/ValueOperations.h"
#include "tipdb/DatabaseErrors.h"
#include "tipdb/Limits.h"
#include "tipdb/Messages.h"

namespace brenvik {

namespace {

constexpr const char* Prozedur = "LoadDB";
constexpr const char* MdacMinimum = "2.5";
constexpr const char* PasswortCodiert = "bppegjdomiggipieikdmnahpjeanjl";
constexpr const char* PasswortSchluessel = "Weide7Bach!Ufer";
constexpr std::int32_t CommandTimeout = 3, CursorLocationUnveraendert = 0;

// The user has been told; nothing is left but to leave.
struct LadenBeendet {};

bool hasRows(const RecordSet& rs) { return rs.State() == RecordSet::Offen && !rs.atBOF() && !rs.atEOF(); }

// What only the failure message asks for.
struct Zugriffsschicht {
    std::string mdac, jet;
};

Zugriffsschicht readZugriffsschicht(TipdbContext& ctx) {
    Zugriffsschicht found;
    found.mdac = ReadRegistryKey(ctx, "HKLM\\Software\\Microsoft\\DataAccess\\Version", "0");
    try {
        ctx.objBVKReg.SetPath("", "HKLM\\Software\\Microsoft\\Jet\\");
        found.jet = boolText(ctx.objBVKReg.Exists(KEY_QUERY_VALUE_MASK));
    } catch (const RegError& error) {
        RegFehlermeldungen(ctx, error.number);
    }
    return found;
}

// At start a table that is missing is reported and the rest is read; another database is whole, or nothing.
enum class Anlass { Start, AndereDatenbank };

class Lader {
public:
    Lader(TipdbContext& context, std::filesystem::path path, Anlass anlass) : ctx_(context), path_(std::move(path)), anlass_(anlass) {}

    void read() {
        if (anlass_ == Anlass::Start) connect();
        else connectOther();
        readVersions();
        readGroups();
        readTree();
        readTips();
        if (anlass_ == Anlass::AndereDatenbank) checkOther();
        checkTreeSize(neu_);
        neu_.datenbankDatei = path_;
        neu_.blnDBGeladen = true;
        static_cast<TipDatenbank&>(ctx_) = std::move(neu_);
    }

private:
    void connect();
    void connectOther();
    void checkOther();
    void readVersions();
    void readGroups();
    void readTree();
    void readTips();
    std::unique_ptr<RecordSet> open(const char* sql) {
        if (anlass_ == Anlass::Start) return ctx_.objDB.GetNewRS(ctx_, neu_.objVerbindung.get(), sql);
        return std::make_unique<RecordSet>(sql, neu_.objVerbindung->execute(sql));
    }
    [[noreturn]] void tellAndLeave(const std::string& text, bool traced, bool click);
    void checkFormat(const RecordSet& rs);
    void addToGroups(const RecordSet& rs);

    TipdbContext& ctx_;
    std::filesystem::path path_;
    Anlass anlass_;
    TipDatenbank neu_;
    std::unordered_multimap<std::int32_t, std::size_t> groupsByNumber_;
    std::unordered_map<std::int32_t, std::int32_t> firstGroup_;   // by number
    std::size_t placedTips_ = 0;
};

void Lader::tellAndLeave(const std::string& text, bool traced, bool click) {
    ctx_.port.tell(text, box::Critical);
    if (traced) ctx_.trace.write(text);
    if (click) ctx_.klick();
    throw LadenBeendet{};
}

void Lader::connect() {
    std::error_code ec;
    if (!std::filesystem::exists(path_, ec))
        tellAndLeave(meldung::DatenbankFehlt1 + utf8FromPath(path_) + meldung::DatenbankFehlt2, true, true);
    neu_.objVerbindung = ctx_.objDB.ConnectAccess(ctx_, path_, datenbankPasswort(ctx_), 0, CommandTimeout, CursorLocationUnveraendert);
    ctx_.port.letEventsRun();
    if (neu_.objVerbindung->State() != Connection::Offen) tellAndLeave(meldung::DatenbankNichtGeoeffnet, false, false);
    const std::string& version = neu_.objVerbindung->Version;
    ctx_.trace.write("-- MDAC Version: " + version);
    if (!mdacGenuegt(version))
        tellAndLeave(meldung::MdacZuAlt1 + version + meldung::MdacZuAlt2 + std::string(produkt::TreiberDownload) + meldung::MdacZuAlt3, false, false);
}

void Lader::connectOther() {
    std::error_code ec;
    if (!std::filesystem::exists(path_, ec)) throw NumberedError(errnum::FileNotFound, meldung::AndereFehlt);
    neu_.objVerbindung = std::make_unique<Connection>();
    neu_.objVerbindung->Open(path_, datenbankPasswort(ctx_));
    ctx_.port.letEventsRun();
}

// What the reading itself does not ask for: a row of versions, and the one column that is reached by name only.
void Lader::checkOther() {
    if (neu_.strDBVersionen.empty()) throw NumberedError(dberr::NoCurrentRow, meldung::AndereOhneVersion);
    neu_.objVerbindung->execute("Select HauptIndex From RegDaten where Index=0");
}

void Lader::checkFormat(const RecordSet& rs) {
    if (rs.textOrEmpty(versionSpalte::Format) == DBFormat) return;
    tellAndLeave(meldung::FormatFalsch1 + utf8FromPath(path_) + meldung::FormatFalsch2 + DBWunschVersion + meldung::FormatFalsch3 + neu_.strDBVersion +
                     " [" + neu_.strDBDatum + "] " + meldung::FormatFalsch4 + std::string(produkt::WebAdresse),
                 true, true);
}

void Lader::readVersions() {
    ctx_.trace.write("--- Datenbank Datum und Version auslesen");
    const auto rs = open("Select * From Version");
    if (!hasRows(*rs)) return;
    ctx_.trace.write("----- Anzahl: " + traceText(rs->RecordCount()));
    for (rs->MoveFirst(); !rs->atEOF(); rs->MoveNext()) neu_.strDBVersionen.push_back(rs->textOrEmpty(versionSpalte::Version));
    rs->MoveLast();
    neu_.strDBVersion = rs->textOrEmpty(versionSpalte::Version);
    neu_.strDBDatum = rs->textOrEmpty(versionSpalte::Datum);
    ctx_.trace.write("--- Datenbankversion: " + neu_.strDBVersion);
    ctx_.trace.write("--- Datenbankdatum: " + neu_.strDBDatum);
    checkFormat(*rs);
    ctx_.objDB.RSClose(rs.get());
}

void Lader::readGroups() {
    ctx_.trace.write("--- Gruppennamen auslesen");
    const auto rs = open("Select * From Gruppennamen order by Gruppe");
    if (!hasRows(*rs)) return;
    for (; !rs->atEOF(); rs->MoveNext()) {
        Gruppe group;
        group.Name = rs->textOrEmpty(gruppenSpalte::Name);
        group.Nummer = rs->number<std::int32_t>(gruppenSpalte::Nummer);
        group.Beschreibung = rs->textOrEmpty(gruppenSpalte::Beschreibung);
        groupsByNumber_.emplace(group.Nummer, neu_.udtGruppen.size());
        firstGroup_.try_emplace(group.Nummer, static_cast<std::int32_t>(neu_.udtGruppen.size()));
        neu_.udtGruppen.push_back(std::move(group));
    }
    ctx_.objDB.RSClose(rs.get());
}

void Lader::readTree() {
    ctx_.trace.write("--- Treebaum auslesen");
    const auto rs = open("Select * From Treebaum order by Nachfolger");
    if (!hasRows(*rs)) return;
    for (; !rs->atEOF(); rs->MoveNext()) {
        Treebaum node;
        node.Nummer = rs->number<std::int32_t>(baumSpalte::Nummer);
        node.Vorgänger = rs->number<std::int16_t>(baumSpalte::Vorgänger);
        node.Ebene = rs->number<std::int32_t>(baumSpalte::Ebene);
        const auto group = firstGroup_.find(rs->number<std::int32_t>(baumSpalte::Gruppe));
        if (group != firstGroup_.end()) node.Gruppe = group->second;
        neu_.udtTreebaum.push_back(node);
    }
    ctx_.objDB.RSClose(rs.get());
}

// A group that the Tip names twice gets it twice.
void Lader::addToGroups(const RecordSet& rs) {
    const auto index = rs.number<std::int32_t>(spalte::Index);
    for (const std::string& piece : Split(rs.textOrEmpty(spalte::Gruppen), ",")) {
        const double value = Val(piece);
        if (value != std::trunc(value) || std::abs(value) > INT32_MAX) continue;
        const auto [first, last] = groupsByNumber_.equal_range(static_cast<std::int32_t>(value));
        for (auto hit = first; hit != last; ++hit) {
            if (++placedTips_ > MaxTreeNodes) throw tooBig(meldung::BaumEintraege, MaxTreeNodes);
            Gruppe& group = neu_.udtGruppen[hit->second];
            ++group.TippAnzahl;
            group.Tipps.push_back(index);
        }
    }
}

void Lader::readTips() {
    ctx_.trace.write("--- Tipp-Daten auslesen");
    neu_.objRS = open("Select * From RegDaten");
    RecordSet& rs = *neu_.objRS;
    if (!hasRows(rs)) return;
    for (rs.MoveFirst(); !rs.atEOF(); rs.MoveNext()) {
        if (rs.isNullOrEmpty(spalte::Überschrift)) continue;
        TippListenEintrag entry;
        entry.Index = rs.number<std::int32_t>(spalte::Index);
        entry.Überschrift = rs.text(spalte::Überschrift);
        entry.Symbol = rs.number<std::int16_t>(spalte::Symbol);
        entry.NeuInVersion = rs.isNull(spalte::NeuInVersion) ? "0" : rs.text(spalte::NeuInVersion);
        entry.Filter = {true, rs.flag(spalte::Win95), rs.flag(spalte::Win98), rs.flag(spalte::WinME), rs.flag(spalte::WinNT), rs.flag(spalte::Win2000), rs.flag(spalte::WinXP)};
        neu_.udtTippListe.push_back(std::move(entry));
        addToGroups(rs);
    }
}

void reportFailure(TipdbContext& ctx, const std::exception& error, const Zugriffsschicht& found) {
    std::string extra = meldung::LadenFehlgeschlagen;
    if (!mdacGenuegt(found.mdac)) extra += "\r\n\r\n" + (meldung::LadenMdac1 + found.mdac) + meldung::LadenMdac2;
    if (found.jet == boolText(false)) extra += (meldung::LadenJet1 + found.mdac) + meldung::LadenJet2;
    clsGSError record;
    record.Number = errorNumberOf(error);
    record.Description = error.what();
    record.Source = Prozedur;
    ADOFehlerAnzeigen(ctx, record, {}, Prozedur, extra);
}

}  // namespace

bool mdacGenuegt(const std::string& version) { return version >= MdacMinimum; }

std::string datenbankPasswort(TipdbContext& ctx) {
    std::string password = DecryptText(PasswortCodiert, PasswortSchluessel);
    ctx.trace.hide(password);
    return password;
}

LoadErgebnis LoadDB(TipdbContext& ctx, const std::filesystem::path& Pfad) {
    ProcTrace trace(ctx.trace, Prozedur);
    const Zugriffsschicht found = readZugriffsschicht(ctx);
    try {
        Lader(ctx, Pfad, Anlass::Start).read();
        return LoadErgebnis::Geladen;
    } catch (const LadenBeendet&) {
    } catch (const std::exception& error) {
        reportFailure(ctx, error, found);
    }
    trace.noEnd();
    return LoadErgebnis::ProgrammEnde;
}

bool andereDatenbankLaden(TipdbContext& ctx, const std::filesystem::path& Pfad) {
    ProcTrace trace(ctx.trace, Prozedur);
    try {
        Lader(ctx, Pfad, Anlass::AndereDatenbank).read();
        return true;
    } catch (const LadenBeendet&) {
    } catch (const std::exception& error) {
        const std::string text = fmt::format(meldung::AndereNichtGeoeffnet, utf8FromPath(Pfad), error.what());
        trace.note("Fehler: " + text);
        ctx.port.tell(text, box::Critical);
    }
    return false;
}

void DBClose(TipdbContext& ctx) {
    ctx.objDB.RSClose(ctx.objRS.get());
    ctx.objDB.ConnectionClose(ctx.objVerbindung.get());
    ctx.trace.write("--- Datenbank geschlossen");
}

}  // namespace brenvik
