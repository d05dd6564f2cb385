#include <algorithm>
#include <cstdint>
#include <iterator>
#include <regex>

#include "frame/Errors.h"
#include "registry/Upcase.h"
#include "registry/Wtf8.h"
#include "registry/search/Search.h"

namespace brenvik {

std::string dataText(const RawValue& value) {
    if (value.type == regtype::Dword && value.bytes.size() != 4) return bytesText(value.bytes);
    return toText(value);
}

namespace {

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char upcaseAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

// The units whose upper case is the given one: itself and its lower-case form, rarely more.
struct Anfang {
    explicit Anfang(char16_t unit) : upper(unit), lower(unit) {
        for (std::uint32_t code = 0; code < 0x10000; ++code) {
            const auto other = static_cast<char16_t>(code);
            if (other == upper || upcase(other) != upper) continue;
            if (lower != upper) more = true;
            lower = other;
        }
    }
    bool matches(char16_t unit) const { return unit == upper || unit == lower || (more && upcase(unit) == upper); }
    char16_t upper, lower;
    bool more = false;
};

// Looks for the upper-cased pattern among count units that are given one by one. Most units are told by the pattern's first.
template <class Pattern, class Unit> bool contains(const Pattern& pattern, const Anfang& first, std::size_t count, const Unit& unit) {
    if (pattern.size() > count) return false;
    for (std::size_t start = 0, last = count - pattern.size(); start <= last; ++start) {
        if (!first.matches(unit(start))) continue;
        std::size_t same = 1;
        while (same < pattern.size() && upcase(unit(start + same)) == static_cast<char16_t>(pattern[same])) ++same;
        if (same == pattern.size()) return true;
    }
    return false;
}

class TextMuster final : public SearchPattern {
public:
    explicit TextMuster(std::string_view text) : units_(foldName(text)), first_(units_.empty() ? u'\0' : units_.front()), ascii_(isAscii(text)) {
        for (const char c : text) bytes_ += upcaseAscii(c);
        inNumbers_ = bytes_.find_first_not_of("-0123456789") == std::string::npos;
        inBytes_ = bytes_.find_first_not_of(" 0123456789ABCDEF") == std::string::npos;
    }

    bool inName(std::string_view name) const override {
        if (ascii_) {
            // The bytes of letters outside ASCII are above all of it and have no upper case in it.
            return contains(bytes_, first_, name.size(), [&](std::size_t i) { return static_cast<char16_t>(static_cast<unsigned char>(name[i])); });
        }
        return !isAscii(name) && foldName(name).find(units_) != std::u16string::npos;
    }

    bool inData(const RawValue& value) const override {
        switch (value.type) {
            case regtype::Sz:
            case regtype::ExpandSz: return inUnits(value.bytes, endOfString(value.bytes));
            case regtype::MultiSz: return inUnits(value.bytes, value.bytes.size() / 2);
            case regtype::Dword:
                if (value.bytes.size() == 4) return inNumbers_ && toText(value).find(bytes_) != std::string::npos;
                [[fallthrough]];
            default: return inBytes_ && bytesText(value.bytes).find(bytes_) != std::string::npos;
        }
    }

private:
    static std::size_t endOfString(const Bytes& bytes) {
        std::size_t units = 0;
        while (2 * units + 1 < bytes.size() && (bytes[2 * units] != 0 || bytes[2 * units + 1] != 0)) ++units;
        return units;
    }
    bool inUnits(const Bytes& bytes, std::size_t count) const {
        const std::uint8_t* p = bytes.data();
        return contains(units_, first_, count, [p](std::size_t i) { return static_cast<char16_t>(p[2 * i] | (p[2 * i + 1] << 8)); });
    }

    std::u16string units_;
    std::string bytes_;
    Anfang first_;
    bool ascii_, inNumbers_ = false, inBytes_ = false;
};

// Lets the expression see upper and lower case as the registry does.
struct RegistryTraits : std::regex_traits<wchar_t> {
    wchar_t translate_nocase(wchar_t c) const {
        const auto code = static_cast<std::uint32_t>(c);
        return code < 0x10000 ? static_cast<wchar_t>(upcase(static_cast<char16_t>(code))) : c;
    }
};

// Characters where wchar_t has room for them, else UTF-16 units.
std::wstring wide(std::string_view text) {
    const std::u16string units = toUtf16(text);
    std::wstring result;
    result.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        const char16_t unit = units[i];
        const bool pair = sizeof(wchar_t) > 2 && unit >= 0xD800 && unit < 0xDC00 && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] < 0xE000;
        if (pair) {
            result += static_cast<wchar_t>(0x10000u + ((unit - 0xD800u) << 10) + (units[++i] - 0xDC00u));
        } else {
            result += static_cast<wchar_t>(unit);
        }
    }
    return result;
}

struct TooManySteps {};

// A place in a text for the library's matcher, which goes back and forth as often as the expression makes it: for some longer
// than anybody lives. Each look at a character is counted.
class CountedPlace {
public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = wchar_t;
    using difference_type = std::ptrdiff_t;
    using pointer = const wchar_t*;
    using reference = const wchar_t&;

    CountedPlace() = default;
    CountedPlace(pointer at, std::uint64_t& left) : at_(at), left_(&left) {}
    reference operator*() const {
        if ((*left_)-- == 0) throw TooManySteps{};
        return *at_;
    }
    pointer operator->() const { return &**this; }
    CountedPlace& operator++() { return ++at_, *this; }
    CountedPlace& operator--() { return --at_, *this; }
    CountedPlace operator++(int) { return {at_++, *left_}; }
    CountedPlace operator--(int) { return {at_--, *left_}; }
    bool operator==(const CountedPlace& other) const { return at_ == other.at_; }

private:
    pointer at_ = nullptr;
    std::uint64_t* left_ = nullptr;
};

class RegexMuster final : public SearchPattern {
public:
    explicit RegexMuster(std::string_view expression) : expression_(expression) {
        try {
            regex_.assign(wide(expression), std::regex_constants::ECMAScript | std::regex_constants::icase);
        } catch (const std::regex_error&) {
            throw SearchPatternError("\"" + expression_ + "\" ist kein gültiger regulärer Ausdruck.");
        }
    }
    bool inName(std::string_view name) const override { return matches(wide(name)); }
    bool inData(const RawValue& value) const override { return matches(wide(dataText(value))); }

private:
    // The library's matcher recurses once for each character, which long texts would not survive.
    bool matches(const std::wstring& text) const {
        using namespace std::regex_constants;
        try {
            for (std::size_t start = 0;; start += RegexPiece / 2) {
                const std::size_t end = std::min(text.size(), start + RegexPiece);
                match_flag_type flags = match_default;
                if (start > 0) flags |= match_prev_avail | match_not_bol;
                if (end < text.size()) flags |= match_not_eol;
                std::uint64_t left = RegexSteps;
                if (std::regex_search(CountedPlace(text.data() + start, left), CountedPlace(text.data() + end, left), regex_, flags)) return true;
                if (end == text.size()) return false;
            }
        } catch (const std::regex_error&) {
            tooCostly(text);
        } catch (const TooManySteps&) {
            tooCostly(text);
        }
    }

    [[noreturn]] void tooCostly(const std::wstring& text) const {
        throw SearchPatternError("Der reguläre Ausdruck \"" + expression_ + "\" ist zu aufwendig: Schon ein Text von " + std::to_string(std::min(text.size(), RegexPiece)) +
                               " Zeichen lässt sich damit nicht in vertretbarer Zeit durchsuchen. Vereinfachen Sie ihn, vor allem Wiederholungen in Wiederholungen wie (x+)+.");
    }

    std::string expression_;
    std::basic_regex<wchar_t, RegistryTraits> regex_;
};

}  // namespace

std::unique_ptr<SearchPattern> makeTextMuster(std::string_view text) { return std::make_unique<TextMuster>(text); }
std::unique_ptr<SearchPattern> makeRegexPattern(std::string_view expression) { return std::make_unique<RegexMuster>(expression); }

}  // namespace brenvik
