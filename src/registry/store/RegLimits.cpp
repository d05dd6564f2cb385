#include "registry/store/RegLimits.h"

#include <algorithm>

#include "frame/Errors.h"
#include "registry/Wtf8.h"

namespace brenvik {

namespace {

// A text has at most as many UTF-16 units as bytes, so that short ones need no conversion.
bool longerThan(std::string_view text, std::size_t most) { return text.size() > most && toUtf16(text).size() > most; }

}  // namespace

void checkKeyName(std::string_view name) {
    if (name.empty()) throw RegError(regerr::NoKey, "Ein Schlüsselname ist leer.");
    if (name.find('\\') != std::string_view::npos) throw RegError(regerr::NoKey, "Ein Schlüsselname darf keinen umgekehrten Schrägstrich enthalten.");
    if (longerThan(name, MaxKeyName)) throw RegError(regerr::NoKey, "Ein Schlüsselname darf höchstens 255 Zeichen haben.");
}

void throwTooDeep() { throw RegError(regerr::NoKey, "Der Schlüsselpfad hat mehr als 512 Ebenen."); }

void checkKeyPath(std::string_view path) {
    std::size_t depth = 0;
    for (std::size_t start = 0; start <= path.size() && !path.empty(); ++depth) {
        const std::size_t end = std::min(path.find('\\', start), path.size());
        checkKeyName(path.substr(start, end - start));
        start = end + 1;
    }
    if (depth > MaxKeyDepth) throwTooDeep();
}

void checkValue(std::string_view name, const RawValue& value) {
    if (longerThan(name, MaxValueName)) throw RegError(regerr::NoAssignment, "Ein Wertname darf höchstens 16383 Zeichen haben.");
    if (value.bytes.size() > MaxValueBytes) throw RegError(regerr::NoAssignment, "Ein Wert darf höchstens 16 MB groß sein.");
}

}  // namespace brenvik
