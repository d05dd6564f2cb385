#pragma once
// A failure of the database layer, with what its report shows: number, German description, source, SQL state.
#include "frame/Errors.h"

namespace brenvik {

namespace dberr {
inline constexpr std::int32_t Unspecified = static_cast<std::int32_t>(0x80004005),
                              NoTable = static_cast<std::int32_t>(0x80040E37),
                              BadStatement = static_cast<std::int32_t>(0x80040E14),
                              AuthenticationFailed = static_cast<std::int32_t>(0x80040E4D);
inline constexpr std::int32_t NullValue = 94, NoCurrentRow = 3021, NoSuchField = 3265, Closed = 3704,
                              NoProvider = 3706, NoAutomation = 430;
}  // namespace dberr

class DatabaseErrors : public NumberedError {
public:
    DatabaseErrors(std::int32_t errorNumber, const std::string& description, std::string sourceName,
                    std::string state = {})
        : NumberedError(errorNumber, description), source(std::move(sourceName)), sqlState(std::move(state)) {}
    std::string source;
    std::string sqlState;
};

}  // namespace brenvik
