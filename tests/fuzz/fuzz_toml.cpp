// Whatever a TOML text holds: it is read or refused with a line of the text, soon and in little memory, however deep it goes.
// The input is a text, and also a recipe for one that random bytes would not find: pieces repeated many times.
#include <cstdlib>

#include "TimeBound.h"
#include "frame/toml/TomlText.h"

using namespace brenvik;

namespace {

constexpr std::string_view Pieces[] = {"a", ".a", ".\"b.c\"", "[", "]", "{", "}", "=", ",", "\n", "1", "'x'", "\"\"\"", "'''", "[[a]]", "\"", "#", " ", "a=", "\\"};

std::string grown(const std::uint8_t* data, std::size_t size) {
    std::string text;
    for (std::size_t i = 0; i + 1 < size && text.size() < MaxTomlBytes; i += 2) {
        const std::string_view piece = Pieces[data[i] % std::size(Pieces)];
        const unsigned times = data[i + 1] < 200 ? data[i + 1] % 20 : 1u << (data[i + 1] % 18);
        for (unsigned k = 0; k < times && text.size() < MaxTomlBytes; ++k) text += piece;
    }
    return text;
}

void read(std::string_view text) {
    std::size_t lines = 1;
    for (const char c : text) lines += c == '\n';
    try {
        parseToml(text);
    } catch (const TomlError& error) {
        if (error.line < 1 || error.line > lines + 1 || *error.what() == '\0') std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Bound bound(20, 1500);
    read({reinterpret_cast<const char*>(data), size});
    read(grown(data, size));
    return 0;
}
