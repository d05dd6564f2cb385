#pragma once
// TOML texts that somebody else may have written. The bounds are held before the parser sees the text: it recurses into
// names and brackets as deep as they go.
#include <stdexcept>
#include <string>
#include <string_view>

#define TOML_EXCEPTIONS 1
#include <toml++/toml.h>

#include "frame/toml/TomlLimits.h"

namespace brenvik {

class TomlError : public std::runtime_error {   // what(): the reason, in German, without the line
public:
    TomlError(std::size_t lineNumber, const std::string& reason) : std::runtime_error(reason), line(lineNumber) {}
    std::size_t line;                            // from 1
};

// Throws TomlError.
toml::table parseToml(std::string_view text);

}  // namespace brenvik
