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

constexpr const char* Routine = "LoadDB";
constexpr const char* MdacMinimum = "2.5";
constexpr const char* PasswordCoded = "bppegjdomiggipieikdmnahpjeanjl";
constexpr const char* PasswordKey = "Weide7Bach!Ufer";
constexpr std::int32_t CommandTimeout = 3, CursorLocationUnveraendert = 0;

// The user has been told; nothing is left but to leave.
struct LoadingEnded {};

bool hasRows(const RecordSet& rs) { return rs.State() == RecordSet::IsOpen && !rs.atBOF() && !rs.atEOF(); }

// What only the failure message asks for.
struct AccessLayer {
    std::string mdac, jet;
};

AccessLayer readAccessLayer(TipdbContext& ctx) {
    AccessLayer found;
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
enum class Occasion { Start, OtherDatabase };

class Loader {
public:
    Loader(TipdbContext& context, std::filesystem::path path, Occasion occasion) : ctx_(context), path_(std::move(path)), occasion_(occasion) {}

    void read() {
        if (occasion_ == Occasion::Start) connect();
        else connectOther();
        readVersions();
        readGroups();
        readTree();
        readTips();
        if (occasion_ == Occasion::OtherDatabase) checkOther();
        checkTreeSize(neu_);
        neu_.databaseFile = path_;
        neu_.blnDBGeladen = true;
        static_cast<TipDatabase&>(ctx_) = std::move(neu_);
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
        if (occasion_ == Occasion::Start) return ctx_.objDB.GetNewRS(ctx_, neu_.objVerbindung.get(), sql);
        return std::make_unique<RecordSet>(sql, neu_.objVerbindung->execute(sql));
    }
    [[noreturn]] void tellAndLeave(const std::string& text, bool traced, bool click);
    void checkFormat(const RecordSet& rs);
    void addToGroups(const RecordSet& rs);

    TipdbContext& ctx_;
    std::filesystem::path path_;
    Occasion occasion_;
    TipDatabase neu_;
    std::unordered_multimap<std::int32_t, std::size_t> groupsByNumber_;
    std::unordered_map<std::int32_t, std::int32_t> firstGroup_;   // by number
    std::size_t placedTips_ = 0;
};

void Loader::tellAndLeave(const std::string& text, bool traced, bool click) {
    ctx_.port.tell(text, box::Critical);
    if (traced) ctx_.trace.write(text);
    if (click) ctx_.click();
    throw LoadingEnded{};
}

void Loader::connect() {
    std::error_code ec;
    if (!std::filesystem::exists(path_, ec))
        tellAndLeave(messages::DatabaseMissing1 + utf8FromPath(path_) + messages::DatabaseMissing2, true, true);
    neu_.objVerbindung = ctx_.objDB.ConnectAccess(ctx_, path_, databasePassword(ctx_), 0, CommandTimeout, CursorLocationUnveraendert);
    ctx_.port.letEventsRun();
    if (neu_.objVerbindung->State() != Connection::IsOpen) tellAndLeave(messages::DatabaseNotOpened, false, false);
    const std::string& version = neu_.objVerbindung->Version;
    ctx_.trace.write("-- MDAC Version: " + version);
    if (!mdacSuffices(version))
        tellAndLeave(messages::MdacTooOld1 + version + messages::MdacTooOld2 + std::string(product::DriverDownload) + messages::MdacTooOld3, false, false);
}

void Loader::connectOther() {
    std::error_code ec;
    if (!std::filesystem::exists(path_, ec)) throw NumberedError(errnum::FileNotFound, messages::OtherIsMissing);
    neu_.objVerbindung = std::make_unique<Connection>();
    neu_.objVerbindung->Open(path_, databasePassword(ctx_));
    ctx_.port.letEventsRun();
}

// What the reading itself does not ask for: a row of versions, and the one column that is reached by name only.
void Loader::checkOther() {
    if (neu_.strDBVersionen.empty()) throw NumberedError(dberr::NoCurrentRow, messages::OtherWithoutVersion);
    neu_.objVerbindung->execute("Select HauptIndex From RegDaten where Index=0");
}

void Loader::checkFormat(const RecordSet& rs) {
    if (rs.textOrEmpty(versionColumn::Format) == DBFormat) return;
    tellAndLeave(messages::FormatWrong1 + utf8FromPath(path_) + messages::FormatWrong2 + DBWantedVersion + messages::FormatWrong3 + neu_.strDBVersion +
                     " [" + neu_.strDBDatum + "] " + messages::FormatWrong4 + std::string(product::WebAddress),
                 true, true);
}

void Loader::readVersions() {
    ctx_.trace.write("--- Datenbank Datum und Version auslesen");
    const auto rs = open("Select * From Version");
    if (!hasRows(*rs)) return;
    ctx_.trace.write("----- Anzahl: " + traceText(rs->RecordCount()));
    for (rs->MoveFirst(); !rs->atEOF(); rs->MoveNext()) neu_.strDBVersionen.push_back(rs->textOrEmpty(versionColumn::Version));
    rs->MoveLast();
    neu_.strDBVersion = rs->textOrEmpty(versionColumn::Version);
    neu_.strDBDatum = rs->textOrEmpty(versionColumn::Datum);
    ctx_.trace.write("--- Datenbankversion: " + neu_.strDBVersion);
    ctx_.trace.write("--- Datenbankdatum: " + neu_.strDBDatum);
    checkFormat(*rs);
    ctx_.objDB.RSClose(rs.get());
}

void Loader::readGroups() {
    ctx_.trace.write("--- Gruppennamen auslesen");
    const auto rs = open("Select * From Gruppennamen order by Gruppe");
    if (!hasRows(*rs)) return;
    for (; !rs->atEOF(); rs->MoveNext()) {
        Gruppe group;
        group.Name = rs->textOrEmpty(groupColumn::Name);
        group.Nummer = rs->number<std::int32_t>(groupColumn::Nummer);
        group.Beschreibung = rs->textOrEmpty(groupColumn::Beschreibung);
        groupsByNumber_.emplace(group.Nummer, neu_.udtGruppen.size());
        firstGroup_.try_emplace(group.Nummer, static_cast<std::int32_t>(neu_.udtGruppen.size()));
        neu_.udtGruppen.push_back(std::move(group));
    }
    ctx_.objDB.RSClose(rs.get());
}

void Loader::readTree() {
    ctx_.trace.write("--- Treebaum auslesen");
    const auto rs = open("Select * From Treebaum order by Nachfolger");
    if (!hasRows(*rs)) return;
    for (; !rs->atEOF(); rs->MoveNext()) {
        Treebaum node;
        node.Nummer = rs->number<std::int32_t>(treeColumn::Nummer);
        node.Vorgänger = rs->number<std::int16_t>(treeColumn::Vorgänger);
        node.Ebene = rs->number<std::int32_t>(treeColumn::Ebene);
        const auto group = firstGroup_.find(rs->number<std::int32_t>(treeColumn::Gruppe));
        if (group != firstGroup_.end()) node.Gruppe = group->second;
        neu_.udtTreebaum.push_back(node);
    }
    ctx_.objDB.RSClose(rs.get());
}

// A group that the Tip names twice gets it twice.
void Loader::addToGroups(const RecordSet& rs) {
    const auto index = rs.number<std::int32_t>(spalte::Index);
    for (const std::string& piece : Split(rs.textOrEmpty(spalte::Gruppen), ",")) {
        const double value = Val(piece);
        if (value != std::trunc(value) || std::abs(value) > INT32_MAX) continue;
        const auto [first, last] = groupsByNumber_.equal_range(static_cast<std::int32_t>(value));
        for (auto hit = first; hit != last; ++hit) {
            if (++placedTips_ > MaxTreeNodes) throw tooBig(messages::TreeEntries, MaxTreeNodes);
            Gruppe& group = neu_.udtGruppen[hit->second];
            ++group.TippAnzahl;
            group.Tipps.push_back(index);
        }
    }
}

void Loader::readTips() {
    ctx_.trace.write("--- Tipp-Daten auslesen");
    neu_.objRS = open("Select * From RegDaten");
    RecordSet& rs = *neu_.objRS;
    if (!hasRows(rs)) return;
    for (rs.MoveFirst(); !rs.atEOF(); rs.MoveNext()) {
        if (rs.isNullOrEmpty(spalte::Überschrift)) continue;
        TipListEntry entry;
        entry.Index = rs.number<std::int32_t>(spalte::Index);
        entry.Überschrift = rs.text(spalte::Überschrift);
        entry.Symbol = rs.number<std::int16_t>(spalte::Symbol);
        entry.NeuInVersion = rs.isNull(spalte::NeuInVersion) ? "0" : rs.text(spalte::NeuInVersion);
        entry.Filter = {true, rs.flag(spalte::Win95), rs.flag(spalte::Win98), rs.flag(spalte::WinME), rs.flag(spalte::WinNT), rs.flag(spalte::Win2000), rs.flag(spalte::WinXP)};
        neu_.udtTippListe.push_back(std::move(entry));
        addToGroups(rs);
    }
}

void reportFailure(TipdbContext& ctx, const std::exception& error, const AccessLayer& found) {
    std::string extra = messages::LoadingFailed;
    if (!mdacSuffices(found.mdac)) extra += "\r\n\r\n" + (messages::LoadMdac1 + found.mdac) + messages::LoadMdac2;
    if (found.jet == boolText(false)) extra += (messages::LadenJet1 + found.mdac) + messages::LadenJet2;
    clsGSError record;
    record.Number = errorNumberOf(error);
    record.Description = error.what();
    record.Source = Routine;
    ADOFehlerAnzeigen(ctx, record, {}, Routine, extra);
}

}  // namespace

bool mdacSuffices(const std::string& version) { return version >= MdacMinimum; }

std::string databasePassword(TipdbContext& ctx) {
    std::string password = DecryptText(PasswordCoded, PasswordKey);
    ctx.trace.hide(password);
    return password;
}

LoadResult LoadDB(TipdbContext& ctx, const std::filesystem::path& Pfad) {
    ProcTrace trace(ctx.trace, Routine);
    const AccessLayer found = readAccessLayer(ctx);
    try {
        Loader(ctx, Pfad, Occasion::Start).read();
        return LoadResult::Loaded;
    } catch (const LoadingEnded&) {
    } catch (const std::exception& error) {
        reportFailure(ctx, error, found);
    }
    trace.noEnd();
    return LoadResult::ProgramEnd;
}

bool loadOtherDatabase(TipdbContext& ctx, const std::filesystem::path& Pfad) {
    ProcTrace trace(ctx.trace, Routine);
    try {
        Loader(ctx, Pfad, Occasion::OtherDatabase).read();
        return true;
    } catch (const LoadingEnded&) {
    } catch (const std::exception& error) {
        const std::string text = fmt::format(messages::OtherNotOpened, utf8FromPath(Pfad), error.what());
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
