#pragma once
// The database layer: the four operations that the program knows, over a tip database that is read whole when it is opened
// (Jet 3, Jet 4 or SQLite). The class keeps no state; the caller holds the connection and the record sets. All texts are
// UTF-8; a null column and an empty text are different things. Failures end in reports to the user, never in exceptions.
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "frame/Context.h"
#include "frame/Reports.h"
#include "tipdb/RecordSet.h"
#include "tipdb/sql/SqlEngine.h"

namespace brenvik {

class Connection {
public:
    enum State : int { Closed = 0, IsOpen = 1 };

    std::string Version = "2.8";     // of the data access layer
    std::vector<DatabaseErrorEntry> Errors;   // what the last failing operation reported
    std::int32_t CommandTimeout = 0, CursorLocation = 0;  // seconds, ADO constant; kept, without effect here

    int State() const { return engine_ ? IsOpen : Closed; }
    void Open(const std::filesystem::path& path, const std::string& password);  // throws DatabaseErrors
    void Close() { engine_.reset(); }
    std::shared_ptr<const Table> execute(const std::string& sql);   // throws DatabaseErrors

private:
    std::unique_ptr<SqlEngine> engine_;
};

// What ConnectAccess does after a failed attempt.
enum class ConnectionSequence { GiveUpSilently, PasswordAsk, GiveUp, DriverReport, Report };
ConnectionSequence connectionSequence(std::int32_t errorNumber, const std::vector<DatabaseErrorEntry>& errors, int attemptsShown);

class bvkADO {
public:
    // Host path. The answer is never null; its State tells whether it is open.
    std::unique_ptr<Connection> ConnectAccess(FrameContext& ctx, const std::filesystem::path& path, const std::string& password,
                                              int unused = 0, std::int32_t commandTimeout = 0, std::int32_t cursorLocation = 0);
    // Only static, client-side, read-only record sets are offered; the cursor arguments choose nothing.
    std::unique_ptr<RecordSet> GetNewRS(FrameContext& ctx, Connection* connection, const std::string& sql, std::int32_t cursorLocation = 3,
                                        std::int32_t cursorType = 3, std::int32_t lockType = 1, std::int32_t option = 0, int unused = 0);
    bool ConnectionClose(Connection* connection);
    bool RSClose(RecordSet* recordSet);
};

}  // namespace brenvik
