#include "tipdb/sql/TextComparison.h"

#include <string>
#include <vector>

#include "frame/text/Codepage.h"
#include "registry/Upcase.h"

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

// The letter without its mark.
char16_t baseOf(char16_t c) {
    static constexpr std::u16string_view Bases = u"AAAAAAACEEEEIIIIDNOOOOO\u00D7OUUUUYT";  // U+00C0 to U+00DE
    return c >= 0xC0 && c <= 0xDE ? Bases[static_cast<std::size_t>(c - 0xC0)] : c;
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
    int marks = 0;  // count only between texts of the same base letters
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
        const char16_t x = baseOf(a[i].folded), y = baseOf(b[i].folded);
        if (x != y) return x < y ? -1 : 1;
        if (marks == 0 && a[i].folded != b[i].folded) marks = a[i].folded < b[i].folded ? -1 : 1;
    }
    return a.size() == b.size() ? marks : a.size() < b.size() ? -1 : 1;
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
