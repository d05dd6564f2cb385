#pragma once
// Writes the text of REG files so that reading it again gives the same values byte for byte. What a format cannot
// hold (letters outside Windows-1252 in REGEDIT4, line ends in key names) is left out and named, never quietly changed.
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "registry/store/RegStore.h"

namespace brenvik {

class RegTextWriter {
public:
    enum class Format { Regedit4, Version5 };   // Windows-1252; UTF-16LE with mark. Both with CR LF.

    // With a drain what is written goes there piece by piece, the last of it at end().
    using Drain = std::function<void(std::string_view bytes)>;
    explicit RegTextWriter(Format format, Drain drain = {});
    void comment(std::string_view line);        // as it stands, with its "; "; what the format lacks becomes "?" there
    void key(Root root, std::string_view key);
    void deleteKey(Root root, std::string_view key);
    void value(const ValueName& name, const RawValue& value);
    void value(std::string_view name, const RawValue& value);      // "" is the unnamed value
    void deleteValue(const ValueName& name);
    // With everything below, also what is only reached through links. What cannot be read is left out, with a comment.
    void tree(RegStore& store, Root root, std::string_view key);

    struct Omission {
        Root root = Root::LocalMachine;
        std::string key;                  // with all below it, unless a value is named
        std::optional<ValueName> value;
        std::string why;                  // German, of what cannot be read; empty: the format cannot hold it
    };
    const std::vector<Omission>& omitted() const { return omitted_; }   // the first MaxOmissions of them
    std::size_t lost() const { return lost_; }                          // how many the format cannot hold
    std::size_t unreadable() const { return unreadable_; }              // how many cannot be read
    bool holds(std::string_view key) const;                             // whether a key of this name can be written
    void noteUnreadable(Root root, std::string_view key, const RegError& error);
    std::string bytes() const;                   // the file so far; only without a drain
    void end();

    static constexpr std::size_t MaxOmissions = 1000;

private:
    void put(std::string_view text);
    void putAscii(std::string_view text);
    void putQuoted(std::string_view text);
    void newEntry();
    std::size_t column() const { return (text_.size() - lineStart_) / (format_ == Format::Version5 ? 2 : 1); }
    void header(std::string_view prefix, Root root, std::string_view key);
    bool fits(std::string_view text) const;
    bool takes(std::string_view name);   // false: the value is not to be written, and that is noted
    void name(std::string_view name);
    void hex(const RawValue& value);
    void omit(std::string_view key, std::optional<ValueName> value);
    Format format_;
    Drain drain_;
    std::string text_;   // as it will stand in the file
    std::size_t lineStart_ = 0;
    Root root_ = Root::LocalMachine;   // of the key whose values come
    std::string key_;
    bool keyOmitted_ = false;
    std::vector<Omission> omitted_;
    std::size_t lost_ = 0, unreadable_ = 0;
};

}  // namespace brenvik
