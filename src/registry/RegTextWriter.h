#pragma once
// Writes the text of REG files so that reading it again gives the same values byte for byte. What a format cannot
// hold (letters outside Windows-1252 in REGEDIT4, line ends in key names) is counted, never quietly changed.
#include <string>
#include <string_view>

#include "registry/RegStore.h"

namespace brenvik {

class RegTextWriter {
public:
    enum class Format { Regedit4, Version5 };   // Windows-1252; UTF-16LE with mark. Both with CR LF.

    explicit RegTextWriter(Format format);
    void comment(std::string_view line);        // as it stands, with its "; "; what the format lacks becomes "?" there
    void key(Root root, std::string_view key);
    void deleteKey(Root root, std::string_view key);
    void value(const ValueName& name, const RawValue& value);
    void deleteValue(const ValueName& name);
    void tree(RegStore& store, Root root, std::string_view key);   // with everything below

    std::size_t lost() const { return lost_; }   // entries that the format cannot hold as they are
    std::string bytes() const;                   // the file so far

private:
    void header(std::string_view prefix, Root root, std::string_view key);
    void name(const ValueName& name);
    void hex(const RawValue& value);
    void noteFit(std::string_view text);
    Format format_;
    std::string text_;   // UTF-8
    std::size_t lost_ = 0;
};

}  // namespace brenvik
