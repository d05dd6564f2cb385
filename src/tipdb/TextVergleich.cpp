#include "tipdb/TextVergleich.h"

#include <cstdint>
#include <string>
#include <vector>

#include "registry/Upcase.h"
#include "frame/Codepage.h"

namespace brenvik {

namespace {

constexpr char16_t SharpS = u'ß', BigSharpS = u'\u1E9E';

// One character of a text being compared. ß counts as two; the second one is marked, so that "_" can take both.
struct Unit {
    char16_t folded;
    bool second = false;
};

std::vector<Unit> unitsOf(std::string_view text) {
    std::vector<Unit> units;
    units.reserve(text.size());
    for (const char16_t c : utf16FromUtf8(text)) {
        if (c == SharpS || c == BigSharpS) {
            units.push_back({u'S'});
            units.push_back({u'S', true});
        } else {
            units.push_back({upcase(c)});
        }
    }
    return units;
}

// Sorts a letter with a mark directly behind its base letter.
std::uint32_t weight(char16_t c) {
    static constexpr std::u16string_view Bases = u"AAAAAAACEEEEIIIIDNOOOOO\u00D7OUUUUYTS";  // U+00C0 to U+00DF
    const bool marked = c >= 0xC0 && c <= 0xDE && c != 0xD7;
    return static_cast<std::uint32_t>(marked ? Bases[c - 0xC0] : c) << 16 | (marked ? c : 0U);
}

bool isAscii(std::string_view text) {
    for (const char c : text)
        if (static_cast<unsigned char>(c) >= 0x80) return false;
    return true;
}

unsigned char asciiUpper(char c) { return static_cast<unsigned char>(c >= 'a' && c <= 'z' ? c - 32 : c); }

int compareAscii(std::string_view left, std::string_view right) {
    for (std::size_t i = 0; i < left.size() && i < right.size(); ++i) {
        const unsigned char a = asciiUpper(left[i]), b = asciiUpper(right[i]);
        if (a != b) return a < b ? -1 : 1;
    }
    return left.size() == right.size() ? 0 : left.size() < right.size() ? -1 : 1;
}

}  // namespace

int compareDatabaseTexts(std::string_view left, std::string_view right) {
    if (isAscii(left) && isAscii(right)) return compareAscii(left, right);
    const auto a = unitsOf(left), b = unitsOf(right);
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
        const std::uint32_t x = weight(a[i].folded), y = weight(b[i].folded);
        if (x != y) return x < y ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

bool likeDatabaseText(std::string_view text, std::string_view pattern) {
    const auto t = unitsOf(text), p = unitsOf(pattern);
    constexpr std::size_t None = SIZE_MAX;
    std::size_t i = 0, j = 0, afterPercent = None, retryAt = 0;
    while (i < t.size()) {
        if (j < p.size() && p[j].folded == u'%') {
            afterPercent = ++j;
            retryAt = i;
        } else if (j < p.size() && p[j].folded == u'_' && !t[i].second) {
            i += i + 1 < t.size() && t[i + 1].second ? 2 : 1;
            ++j;
        } else if (j < p.size() && p[j].folded == t[i].folded) {
            ++i;
            ++j;
        } else if (afterPercent != None) {
            i = ++retryAt;
            j = afterPercent;
        } else {
            return false;
        }
    }
    while (j < p.size() && p[j].folded == u'%') ++j;
    return j == p.size();
}

}  // namespace brenvik
