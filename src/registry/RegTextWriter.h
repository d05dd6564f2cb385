#pragma once
// Writes the text of REG files so that reading it again gives the same values byte for byte. What a format cannot
// hold (letters outside Windows-1252 in REGEDIT4, line ends in key names) is counted, never quietly changed.
#include <functional>
#include <string>
#include <string_view>

#include "registry/RegStore.h"

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
    void tree(RegStore& store, Root root, std::string_view key);   // with everything below

    std::size_t lost() const { return lost_; }   // entries that the format cannot hold as they are
    std::string bytes() const;                   // the file so far; only without a drain
    void end();

private:
    void put(std::string_view text);
    void putAscii(std::string_view text);
    void putQuoted(std::string_view text);
    void newEntry();
    std::size_t column() const { return (text_.size() - lineStart_) / (format_ == Format::Version5 ? 2 : 1); }
    void header(std::string_view prefix, Root root, std::string_view key);
    void name(std::string_view name);
    void hex(const RawValue& value);
    void noteFit(std::string_view text);
    Format format_;
    Drain drain_;
    std::string text_;   // as it will stand in the file
    std::size_t lineStart_ = 0;
    std::size_t lost_ = 0;
};

}  // namespace brenvik
