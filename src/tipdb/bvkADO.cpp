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
constexpr int MaxPasswordMessages = 2;

DatabaseErrorEntry entryOf(const DatabaseErrors& error) { return {error.number, error.what(), error.source, error.sqlState}; }

void report(FrameContext& ctx, const DatabaseErrors& error, const Connection& connection, const char* context, const std::string& extra) {
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
        engine_ = std::make_unique<SqlEngine>(readDatabase(path, password, {std::begin(TipTables), std::end(TipTables)}));
    } catch (const DatabaseErrors& error) {
        // A wrong password is the failure of the opening itself, so that the caller may ask again.
        if (error.number != dberr::AuthenticationFailed) Errors.push_back(entryOf(error));
        throw;
    }
}

std::shared_ptr<const Table> Connection::execute(const std::string& sql) {
    Errors.clear();
    try {
        if (!engine_) throw DatabaseErrors(dberr::Closed, "Die Verbindung zur Datenbank ist geschlossen.", "SQL");
        return engine_->query(sql);
    } catch (const DatabaseErrors& error) {
        Errors.push_back(entryOf(error));
        throw;
    }
}

ConnectionSequence connectionSequence(std::int32_t errorNumber, const std::vector<DatabaseErrorEntry>& errors, int attemptsShown) {
    const bool matched = std::any_of(errors.begin(), errors.end(), [](const DatabaseErrorEntry& e) { return e.Number == dberr::AuthenticationFailed; });
    if (matched) return ConnectionSequence::GiveUpSilently;
    if (errorNumber == dberr::AuthenticationFailed)
        return attemptsShown < MaxPasswordMessages ? ConnectionSequence::PasswordAsk : ConnectionSequence::GiveUp;
    if (errorNumber == dberr::NoProvider || errorNumber == dberr::NoAutomation) return ConnectionSequence::DriverReport;
    return ConnectionSequence::Report;
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
        } catch (const DatabaseErrors& error) {
            const ConnectionSequence next = connectionSequence(error.number, connection->Errors, shown);
            if (next == ConnectionSequence::PasswordAsk) {
                ctx.port.tell(messages::PasswordInvalid, box::Exclamation);
                ++shown;
                continue;
            }
            if (next == ConnectionSequence::DriverReport)
                ctx.port.tell(messages::DatabaseAccessImpossible + strBVKFehler(14) + "\r\n", box::OK, messages::MdacError);
            if (next == ConnectionSequence::Report) report(ctx, error, *connection, KontextConnect, "");
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
    } catch (const DatabaseErrors& error) {
        report(ctx, error, used, KontextNewRS, "RS.Source: " + sql);
        return std::make_unique<RecordSet>(sql, nullptr);
    }
}

bool bvkADO::ConnectionClose(Connection* connection) {
    if (connection != nullptr && connection->State() == Connection::IsOpen) connection->Close();
    return true;
}

bool bvkADO::RSClose(RecordSet* recordSet) {
    if (recordSet != nullptr && recordSet->State() == RecordSet::IsOpen) recordSet->Close();
    return true;
}

}  // namespace brenvik
