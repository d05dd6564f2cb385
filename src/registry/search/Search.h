#pragma once
// Looking for a text in a registry tree: names of keys and values, and data in the form that toText gives them (a value
// that cannot be shown in its own form: byte for byte). Upper and lower case are the same, by the registry's table.
// Texts are UTF-8.
#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "registry/store/RegStore.h"

namespace brenvik {

// The pattern is no valid regular expression, or one that takes too long; what() is the German message.
class SearchPatternError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class SearchPattern {
public:
    virtual ~SearchPattern() = default;
    virtual bool inName(std::string_view name) const = 0;
    virtual bool inData(const RawValue& value) const = 0;
};

std::unique_ptr<SearchPattern> makeTextMuster(std::string_view text);
// ECMAScript syntax on characters. Long texts are searched in pieces of RegexPiece characters that overlap by half, so
// that a match longer than that half may be missed. A piece may take RegexSteps looks at a character, which is far beyond what
// expressions of good sense need; the search then ends with a SearchPatternError. Throws SearchPatternError.
std::unique_ptr<SearchPattern> makeRegexPattern(std::string_view expression);
inline constexpr std::size_t RegexPiece = 512;
inline constexpr std::uint64_t RegexSteps = 10'000'000;

// The data as text, or as bytes if they cannot be shown in their own form. Never fails.
std::string dataText(const RawValue& value);

struct SearchOptions {
    bool keys = true, names = true, data = true;
    std::string skipKey;   // path from the root that is left out with all below it; empty: none
};

struct Hits {
    std::string_view key;                // path from the root
    bool isKey = false;                  // the key's own name; else a value
    std::string_view name;               // of the value; empty: the unnamed one
    const RawValue* value = nullptr;
};

struct SearchTarget {
    std::function<void(const Hits&)> hit;
    std::function<void(std::string_view key)> enter;   // every key that is searched
    std::function<bool()> stop;                        // asked at every key and value; true ends the search
    std::function<void(std::string_view key, const RegError& why)> unreadable = {};   // is passed over; without this it ends the search
};

// The key with everything below it, each key's hits before those of its sub keys. What is only reached through links comes
// last. False: it was ended.
bool suchen(RegStore& store, Root root, std::string_view key, const SearchPattern& muster, const SearchOptions& options, const SearchTarget& target);

}  // namespace brenvik
