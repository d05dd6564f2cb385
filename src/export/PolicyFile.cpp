#include "export/PolicyFile.h"

#include "export/LineText.h"
#include "frame/text/Codepage.h"

namespace brenvik {
namespace {

constexpr std::size_t LargestData = 65535, LongestName = 259;
constexpr std::string_view Deletion = "**del.";
constexpr std::string_view Header("PReg\x01\0\0\0", 8);   // signature and version 1

std::string dword(std::size_t number) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift & 0xFF);
    return bytes;
}

std::string text(std::string_view utf8) { return utf16LeFromUtf8(utf8) + std::string(2, '\0'); }

// [key;value;type;size;data], the brackets and semicolons in UTF-16 too.
std::string record(const ExportValue& value) {
    const auto mark = [](char c) { return std::string{c, '\0'}; };
    // A deletion is a text value of this name, whose data nobody reads.
    const std::string name = value.wert ? value.name.text() : std::string(Deletion) + value.name.text();
    const RawValue data = value.wert ? *value.wert : fromText(" ", regtype::Sz);
    return mark('[') + text(value.key) + mark(';') + text(name) + mark(';') + dword(data.type) + mark(';') + dword(data.bytes.size()) + mark(';') +
           std::string(data.bytes.begin(), data.bytes.end()) + mark(']');
}

// Names that begin with "**" are commands there, and the unnamed value cannot be named in the command that deletes.
bool fits(const ExportValue& value) {
    const std::string& name = value.name.text();
    if (name.starts_with("**") || hasControls(name) || utf16FromUtf8(name).size() > LongestName) return false;
    if (value.key.empty() || hasControls(value.key)) return false;
    return value.wert ? value.wert->bytes.size() <= LargestData : !value.name.isUnnamed();
}

}  // namespace

PolicyFile policyFile(const ExportRecord& item, Root root) {
    PolicyFile file;
    file.bytes = Header;
    for (const ExportTip& tipp : item.tipps)
        for (const ExportValue& value : tipp.values) {
            if (value.root != root)
                file.otherRoots.push_back(value.pfad());
            else if (!fits(value))
                file.obstacles.push_back(value.pfad());
            else
                file.bytes += record(value);
        }
    if (!file.obstacles.empty()) file.bytes.clear();
    return file;
}

}  // namespace brenvik
