#pragma once
// How registry commands print keys and values, and how they report failures.
#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "cli/registry/RegistryPlace.h"
#include "registry/text/RegText.h"

namespace brenvik::cli {

std::string typeName(Context& ctx, std::uint32_t type);                       // the number if it has no name
std::optional<std::uint32_t> typeNumber(Context& ctx, const std::string& text);   // of a name or a number
std::string oneLine(std::string_view text);                                   // as shownLine, but U+0000 as "|"
std::string shownData(const RawValue& value, std::size_t most = std::string::npos);   // in one line, cut behind that many bytes
std::string valueLabel(const ValueName& name);                                // "(Standard)" for the unnamed value

// {"name", "type", "data"}; data is an array for REG_MULTI_SZ; "raw" has the bytes where the text, as JSON has it, does not
// tell them all.
nlohmann::ordered_json valueJson(Context& ctx, std::string_view name, const RawValue& value);
nlohmann::ordered_json dataJson(Context& ctx, const RawValue& value);         // the same without a name
// What is no UTF-8 becomes U+FFFD, and a member "replaced" of the same object names the members it happened to. Characters
// that nobody can see are escaped.
std::string jsonText(const nlohmann::ordered_json& json, int indent = 2);

void printProblems(const std::string& file, const std::vector<RegTextProblem>& problems);   // to stderr, a line each

int failed(const std::string& message, int code = 1);   // prints it to stderr and answers the code

// Runs the work; failures go to stderr in the words of their cause and end with failureCode.
std::function<int(Program&)> reported(std::function<int(Program&)> work, int failureCode = 1);

}  // namespace brenvik::cli
