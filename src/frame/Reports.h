#pragma once
// The common error reports, and the wrapper that gives one numbered step of a procedure the program's pattern:
// report the failure once and carry on with the next step.
#include <cstdint>
#include <exception>
#include <functional>
#include <string>
#include <vector>

#include "frame/Context.h"
#include "frame/GSError.h"

namespace brenvik {

// Shows and traces the common report; procName is overwritten with the finished message. What is known of the place of the
// failure stands at its end.
void FehlerMeldung(FrameContext& ctx, std::string& procName, const std::string& errNumber, const std::string& place = {});

// The report for errors of the registry service. Where a write failed, the number's text alone does not tell what to do about it:
// a full disk, or a file that somebody else has changed.
void RegFehlermeldungen(FrameContext& ctx, std::int32_t errorNumber, const std::string& reason = {});

// One entry of a database connection's error list.
struct DatabaseErrorEntry {
    std::int32_t Number = 0;
    std::string Description, Source, SQLState;
};

// The report for errors of the database layer: the connection's errors (empty without a connection), the error itself
// unless the list has one of the same description, and extra. Offered for the clipboard; shows nothing if all are empty.
void ADOFehlerAnzeigen(FrameContext& ctx, const clsGSError& error, const std::vector<DatabaseErrorEntry>& connectionErrors,
                       const std::string& source, const std::string& extra);

// Number of the exception in flight: NumberedError's own, else the ordinary run-time error that fits.
std::int32_t errorNumberOf(const std::exception& error);

// Runs one step; a failure is reported under the procedure's name. Answers whether the step succeeded.
bool reportAndGoOn(FrameContext& ctx, const char* procName, const std::function<void()>& step);

}  // namespace brenvik
