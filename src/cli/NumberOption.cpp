#include "cli/NumberOption.h"

#include <charconv>
#include <fmt/format.h>

namespace brenvik::cli {

CLI::Validator wholeNumber(std::int64_t largest) {
    const auto check = [largest](std::string& text) {
        std::int64_t number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || end != text.data() + text.size() || number < 1 || number > largest)
            return fmt::format("\"{}\" ist keine ganze Zahl von 1 bis {}", text, largest);
        text = std::to_string(number);   // without leading zeros, which the library takes for another base
        return std::string();
    };
    return CLI::Validator(check, std::string());
}

}  // namespace brenvik::cli
