#include "frame/Reports.h"

#include <filesystem>
#include <new>
#include <system_error>

#include "frame/Messages.h"
#include "frame/platform/HostFile.h"
#include "frame/program/HelpTopics.h"
#include "frame/program/Product.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"

namespace brenvik {
namespace {

constexpr char LineEnd[] = "\r\n";

std::string registryErrorText(std::int32_t errorNumber) {
    switch (errorNumber) {
        case regerr::NoKey: return strBVKFehler(1);
        case regerr::NoRoot: return strBVKFehler(2);
        case regerr::NoAccess: return strBVKFehler(7);
        case regerr::KeyNotCreated: return strBVKFehler(4);
        case regerr::NoAssignment: return strBVKFehler(0);
        case regerr::KeyNotRead: return strBVKFehler(6);
        case regerr::BadBinary: return strBVKFehler(5);
        case regerr::KeyCreateFailed: return strBVKFehler(3);
        default: return strBVKFehler(8) + numberText(errorNumber);
    }
}

std::int32_t fileErrorNumber(const std::error_code& code) {
    if (code == std::errc::no_such_file_or_directory) return errnum::FileNotFound;
    if (code == std::errc::not_a_directory) return errnum::PathNotFound;
    if (code == std::errc::permission_denied || code == std::errc::operation_not_permitted) return errnum::Permission;
    if (host::meansDiskFull(code)) return errnum::DiskFull;
    return errnum::PathFileAccess;
}

// "123 [&h7B]" with the program's different blanks in between, and what follows in both kinds of entry.
std::string databaseEntry(std::int32_t number, const char* gap, const std::string& description, const std::string& source) {
    return numberText(number) + gap + "[&h" + Dec2Hex(number) + "]" + LineEnd + description + LineEnd + LineEnd + "Source: " + source;
}

}  // namespace

void FehlerMeldung(FrameContext& ctx, std::string& procName, const std::string& errNumber, const std::string& place) {
    procName = strBVKFehler(15) + procName + strBVKFehler(16) + errNumber + strBVKFehler(18);
    if (!place.empty()) procName += LineEnd + (LineEnd + place);
    ctx.trace.write("Fehler: " + procName);
    ctx.port.messageBox({procName, box::Critical + box::Help, strBVKFehler(17), "\\" + std::string(product::HelpFile), helpTopic::DebugMode});
}

void RegFehlermeldungen(FrameContext& ctx, std::int32_t errorNumber, const std::string& reason) {
    ProcTrace trace(ctx.trace, "RegFehlermeldungen");
    const std::string text = registryErrorText(errorNumber);
    const bool writing = errorNumber == regerr::NoAssignment && !reason.empty();
    ctx.port.tell(writing ? text + LineEnd + LineEnd + reason : text, box::Critical, strBVKFehler(9));
    trace.note("Fehler: " + text);
}

void ADOFehlerAnzeigen(FrameContext& ctx, const clsGSError& error, const std::vector<DatabaseErrorEntry>& connectionErrors,
                       const std::string& source, const std::string& extra) {
    std::string message;
    const auto separate = [&] { if (!message.empty()) message += "\n\r\n"; };
    bool matched = false;
    for (std::size_t i = 0; i < connectionErrors.size(); ++i) {
        const DatabaseErrorEntry& entry = connectionErrors[i];
        separate();
        message += "Cnn.Errors(" + numberText(i) + ") :    " + databaseEntry(entry.Number, " ", entry.Description, entry.Source);
        if (!entry.SQLState.empty()) message += LineEnd + ("SQL-State: " + entry.SQLState);
        matched = matched || entry.Description == error.Description;
    }
    if (error.Number != 0 && !matched) {
        separate();
        message += "Err : " + databaseEntry(error.Number, "    ", error.Description, error.Source);
    }
    if (!extra.empty()) message += LineEnd + extra;
    if (message.empty()) return;
    const std::string title(product::Titel);
    const std::string question = source + message + LineEnd + LineEnd + LineEnd + messages::ToClipboard;
    if (ctx.port.ask(question, box::Exclamation, title)) ctx.port.setClipboard(title + ": " + source + LineEnd + message + LineEnd);
}

std::int32_t errorNumberOf(const std::exception& error) {
    if (const auto* numbered = dynamic_cast<const NumberedError*>(&error)) return numbered->number;
    if (const auto* system = dynamic_cast<const std::system_error*>(&error)) return fileErrorNumber(system->code());
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) return errnum::OutOfMemory;
    if (dynamic_cast<const std::out_of_range*>(&error) != nullptr) return errnum::Subscript;
    if (dynamic_cast<const std::overflow_error*>(&error) != nullptr) return errnum::Overflow;
    if (dynamic_cast<const std::invalid_argument*>(&error) != nullptr || dynamic_cast<const std::length_error*>(&error) != nullptr)
        return errnum::InvalidCall;
    return errnum::Internal;
}

bool reportAndGoOn(FrameContext& ctx, const char* procName, const std::function<void()>& step) {
    try {
        step();
        return true;
    } catch (const std::exception& error) {
        std::string name = procName;
        // What a store says of what it cannot read names the file.
        const auto* const registry = dynamic_cast<const RegError*>(&error);
        const bool located = dynamic_cast<const LocatedError*>(&error) != nullptr || (registry != nullptr && registry->number == regerr::KeyNotRead);
        FehlerMeldung(ctx, name, numberText(errorNumberOf(error)), located ? error.what() : std::string());
        return false;
    }
}

}  // namespace brenvik
