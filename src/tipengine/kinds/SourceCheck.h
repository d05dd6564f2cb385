#pragma once
// The author's view of an entry: the columns of its row as they stand in the sources of the Tips, and the complaints that a
// kind has about them.
#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace brenvik {

using OptText = std::optional<std::string>;

// The columns that a kind reads. Absent texts are null columns.
struct SourceRow {
    OptText Wertname, WertEin, Anzeigetext, WertAus, Werteliste, Standardwert, Beschriftung;
    std::int64_t Datentyp = 1, Ausgabeart = 0;
    bool INITipp = false;
};

struct SourceName {
    const char* text;
    std::int64_t nummer;
};
inline constexpr std::array<SourceName, 5> SourceTypes = {{{"REG_SZ", 1}, {"REG_EXPAND_SZ", 2}, {"REG_BINARY", 3}, {"REG_DWORD", 4}, {"REG_MULTI_SZ", 7}}};
namespace typ {
inline constexpr std::int64_t Sz = 1, ExpandSz = 2, Binary = 3, Dword = 4, MultiSz = 7;
}
inline constexpr const char* FileList = "<filelist>";   // in Werteliste: the entries are made of the files of a folder

std::string typeName(std::int64_t typ);
std::vector<std::string> pieces(const OptText& text, const char* separator = "#");

class SourceCheck {
public:
    using Complain = std::function<void(const char* column, const std::string& text)>;
    // entries is the number of entries of the Tip, first tells whether this is the first of them.
    SourceCheck(const SourceRow& sourceRow, const char* kindName, std::size_t entryCount, bool firstEntry, Complain complaint)
        : row(sourceRow), entries(entryCount), first(firstEntry), complain(std::move(complaint)), kind_(kindName) {}

    void need(const char* column, const OptText& text) const;
    void needName() const;
    void unused(const char* column, const OptText& text) const;   // a column that this kind does not read is a sign of a misunderstanding
    void allowTypes(const std::set<std::int64_t>& types) const;
    void checkFits(const char* column, const std::string& text) const;
    bool hasDefault() const;
    void defaultOneOf(const std::vector<std::string>& values) const;
    std::vector<std::string> captions() const { return pieces(row.Anzeigetext); }

    const SourceRow& row;
    const std::size_t entries;
    const bool first;
    const Complain complain;

private:
    std::string kind_;
};

}  // namespace brenvik
