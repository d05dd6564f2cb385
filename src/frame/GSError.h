#pragma once
// The carrier of one error with all that its source told about it. Texts are UTF-8.
#include <cstdint>
#include <string>
#include <utility>

#include "frame/Errors.h"

namespace brenvik {

struct clsGSError {
    std::string Source;
    std::int32_t LastDllError = 0;
    std::string HelpFile;
    std::int32_t HelpContext = 0;
    std::string Description;
    std::int32_t Number = 0;

    [[noreturn]] void Raise(std::int32_t number, std::string source, std::string description, std::string helpFile, std::int32_t helpContext) {
        Number = number;
        Source = std::move(source);
        Description = std::move(description);
        HelpFile = std::move(helpFile);
        HelpContext = helpContext;
        throw NumberedError(Number, Description);
    }
    void Clear() { *this = {}; }
};

}  // namespace brenvik
