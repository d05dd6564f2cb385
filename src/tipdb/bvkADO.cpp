#include "tipdb/bvkADO.h"

#include <algorithm>

#include "frame/text/Texts.h"
#include "tipdb/DatabaseErrors.h"
#include "tipdb/DatabaseSource.h"
#include "tipdb/Messages.h"
#include "tipdb/Schema.h"

namespace brenvik {

namespace {

constexpr const char* KontextConnect = "bvkADO.ConnectAccess";
constexpr const char* KontextNewRS = "bvkADO.GetNewRS";
constexpr int MaxPasswortMeldungen = 2;

DatenbankFehlerEintrag entryOf(const DatenbankFehler& error) { return {error.number, error.what(), error.source, error.sqlState}; }

void report(FrameContext& ctx, const DatenbankFehler& error, const Connection& connection, const char* context, const std::string& extra) {
    clsGSError record;
    record.Number = error.number;
    record.Description = error.what();
    record.Source = error.source;
    ADOFehlerAnzeigen(ctx, record, connection.Errors, context, extra);
}

}  // namespace

void Connection::Open(const std::filesystem::path& path, const std::string& password) {
    Errors.clear();
    try {
        engine_ = std::make_unique<SqlEngine>(readDatabase(path, password, {std::begin(TipTabellen), std::end(TipTabellen)}));
    } catch (const DatenbankFehler& error) {
        // A wrong password is the failure of the opening itself, so that the caller may ask again.
        if (error.number != dberr::AuthenticationFailed) Errors.push_back(entryOf(error));
        throw;
    }
}

std::shared_ptr<const Tabelle> Connection::execute(const std::string& sql) {
    Errors.clear();
    try {
        if (!engine_) throw DatenbankFehler(dberr::Closed, "Die Verbindung zur Datenbank ist geschlossen.", "SQL");
        return engine_->query(sql);
    } catch (const DatenbankFehler& error) {
        Errors.push_back(entryOf(error));
        throw;
    }
}

Verbindungsfolge verbindungsfolge(std::int32_t errorNumber, const std::vector<DatenbankFehlerEintrag>& errors, int attemptsShown) {
    const bool matched = std::any_of(errors.begin(), errors.end(), [](const DatenbankFehlerEintrag& e) { return e.Number == dberr::AuthenticationFailed; });
    if (matched) return Verbindungsfolge::StillAufgeben;
    if (errorNumber == dberr::AuthenticationFailed)
        return attemptsShown < MaxPasswortMeldungen ? Verbindungsfolge::PasswortMelden : Verbindungsfolge::Aufgeben;
    if (errorNumber == dberr::NoProvider || errorNumber == dberr::NoAutomation) return Verbindungsfolge::TreiberMelden;
    return Verbindungsfolge::Bericht;
}

std::unique_ptr<Connection> bvkADO::ConnectAccess(FrameContext& ctx, const std::filesystem::path& path, const std::string& password, int,
                                                  std::int32_t commandTimeout, std::int32_t cursorLocation) {
    auto connection = std::make_unique<Connection>();
    if (commandTimeout > 0) connection->CommandTimeout = commandTimeout;
    if (cursorLocation != 0) connection->CursorLocation = cursorLocation;
    for (int shown = 0;;) {
        try {
            connection->Open(path, password);
            return connection;
        } catch (const DatenbankFehler& error) {
            const Verbindungsfolge next = verbindungsfolge(error.number, connection->Errors, shown);
            if (next == Verbindungsfolge::PasswortMelden) {
                ctx.port.tell(meldung::PasswortUngueltig, box::Exclamation);
                ++shown;
                continue;
            }
            if (next == Verbindungsfolge::TreiberMelden)
                ctx.port.tell(meldung::DatenbankzugriffNichtMoeglich + strBVKFehler(14) + "\r\n", box::OK, meldung::MdacFehler);
            if (next == Verbindungsfolge::Bericht) report(ctx, error, *connection, KontextConnect, "");
            return connection;
        }
    }
}

std::unique_ptr<RecordSet> bvkADO::GetNewRS(FrameContext& ctx, Connection* connection, const std::string& sql, std::int32_t, std::int32_t,
                                            std::int32_t, std::int32_t, int) {
    Connection none;
    Connection& used = connection == nullptr ? none : *connection;
    try {
        return std::make_unique<RecordSet>(sql, used.execute(sql));
    } catch (const DatenbankFehler& error) {
        report(ctx, error, used, KontextNewRS, "RS.Source: " + sql);
        return std::make_unique<RecordSet>(sql, nullptr);
    }
}

bool bvkADO::ConnectionClose(Connection* connection) {
    if (connection != nullptr && connection->State() == Connection::Offen) connection->Close();
    return true;
}

bool bvkADO::RSClose(RecordSet* recordSet) {
    if (recordSet != nullptr && recordSet->State() == RecordSet::Offen) recordSet->Close();
    return true;
}

}  // namespace brenvik
