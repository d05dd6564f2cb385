#include "export/RegAddScript.h"

#include <algorithm>
#include <fmt/format.h>

#include "export/LineText.h"
#include "frame/text/Codepage.h"
#include "frame/text/Conversions.h"

namespace brenvik {
namespace {

constexpr std::size_t LongestLine = 8191;   // of the command processor, in UTF-16 units
constexpr const char* LineEnd = "\r\n";
constexpr const char* Copy = "\"HKCU\\Software\\Brenvik-Kopie\"";   // a key of the script's own, which is gone when it ends

// What the program's own start code makes one argument of.
std::string programArgument(std::string_view text) {
    std::string quoted = "\"";
    std::size_t backslashes = 0;
    for (const char c : text) {
        if (c == '\\') {
            ++backslashes;
            continue;
        }
        quoted.append(c == '"' ? 2 * backslashes + 1 : backslashes, '\\');
        backslashes = 0;
        quoted += c;
    }
    return quoted.append(2 * backslashes, '\\') + '"';
}

// Other control characters end the line or the file.
bool fitsLine(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' ' && c != '\t'; });
}

struct Data {
    std::string type, text, separator;
};

// A separator that none of the elements holds; "\0" is what reg.exe takes without being told.
std::string separatorFor(const std::string& elements) {
    if (elements.find("\\0") == std::string::npos) return {};
    for (const char candidate : {'|', ';', ',', '~', '$', '@', '+', '*', '='})
        if (elements.find(candidate) == std::string::npos) return {candidate};
    return "\\0";   // there is none
}

// None: no line can say this value.
std::optional<Data> dataOf(const RawValue& value) {
    if (value.type == regtype::Binary) {
        std::string hex = bytesText(value.bytes);
        std::erase(hex, ' ');
        return Data{"REG_BINARY", hex, {}};
    }
    const bool known = value.type == regtype::Sz || value.type == regtype::ExpandSz || value.type == regtype::Dword || value.type == regtype::MultiSz;
    if (!known || (value.type == regtype::Dword && value.bytes.size() != 4)) return std::nullopt;
    const std::string text = toText(value);
    if (fromText(text, value.type) != value || !isUtf8(text)) return std::nullopt;
    switch (value.type) {
        case regtype::Dword: return Data{"REG_DWORD", numberText(static_cast<std::uint32_t>(toDbl(text) < 0 ? toDbl(text) + 4294967296.0 : toDbl(text))), {}};
        case regtype::MultiSz: {
            const std::vector<std::string> elements = Split(text, std::string_view("\0", 1));
            if (std::any_of(elements.begin(), elements.end(), [](const std::string& element) { return element.empty(); })) return std::nullopt;
            Data data{"REG_MULTI_SZ", {}, separatorFor(text)};
            if (data.separator == "\\0") return std::nullopt;
            for (const std::string& element : elements) data.text += (data.text.empty() ? "" : data.separator.empty() ? "\\0" : data.separator) + element;
            return fitsLine(data.text) ? std::optional(data) : std::nullopt;
        }
        default: return fitsLine(text) ? std::optional(Data{value.type == regtype::Sz ? "REG_SZ" : "REG_EXPAND_SZ", text, {}}) : std::nullopt;
    }
}

std::string withoutMeaning(std::string_view text) {
    std::string comment = commentText(text);
    std::replace_if(comment.begin(), comment.end(), [](char c) { return std::string_view("<>|&^%").find(c) != std::string_view::npos; }, ' ');
    return comment;
}

class Script {
public:
    explicit Script(const std::vector<std::string>& head) {
        for (const std::string& line : head) comment(line);
    }
    void tipp(const ExportTip& tipp) {
        if (tipp.values.empty()) return;
        lines_ += LineEnd;
        comment(fmt::format("; [{}] - {}", tipp.TippNr, tipp.Titel));
        for (const ExportValue& value : tipp.values)
            if (!add(value)) obstacles_.push_back(value.pfad());
    }
    RegAddScript finish() {
        if (!obstacles_.empty()) return {{}, std::move(obstacles_)};
        const bool ascii = std::all_of(lines_.begin(), lines_.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
        const bool ansi = fitsAnsi(lines_);
        std::string text = "@echo off\r\nsetlocal DisableDelayedExpansion\r\nset \"BVK_FEHLER=0\"\r\n";
        // The file's own code page, and the console's own again at the end.
        if (!ascii) text += "for /f \"tokens=2 delims=:.\" %%C in ('chcp') do set \"BVK_CP=%%C\"\r\nchcp " + std::string(ansi ? "1252" : "65001") + " >nul\r\n";
        text += lines_ + LineEnd;
        if (!ascii) text += "chcp %BVK_CP% >nul\r\n";
        text += "if not \"%BVK_FEHLER%\"==\"0\" echo Nicht alle Werte wurden geschrieben.\r\nexit /b %BVK_FEHLER%\r\n";
        return {ansi ? ansiFromUtf8(text) : text, {}};
    }

private:
    void comment(const std::string& line) { lines_ += "rem " + withoutMeaning(Left(line, 1) == ";" ? Trim(Mid(line, 2)) : line) + LineEnd; }
    bool put(const std::string& line) {
        lines_ += line + LineEnd;
        return utf16FromUtf8(line).size() <= LongestLine;
    }
    bool add(const ExportValue& value) {
        if (value.root == Root::DynData || !fitsLine(value.key) || !fitsLine(value.name.text()) || !isUtf8(value.key + value.name.text())) return false;
        const std::string key = cmdArgument(std::string(shortRootName(value.root)) + "\\" + value.key);
        if (!value.wert && value.name.isUnnamed()) return deleteUnnamed(key);
        const std::string place = key + (value.name.isUnnamed() ? std::string(" /ve") : " /v " + cmdArgument(value.name.text()));
        if (!value.wert)   // deleting what is not there is no failure, a value that is still there afterwards is one
            return put("reg delete " + place + " /f >nul 2>nul") && put("reg query " + place + " >nul 2>nul") && put("if not errorlevel 1 set \"BVK_FEHLER=1\"");
        const auto data = dataOf(*value.wert);
        if (!data) return false;
        return put("reg add " + place + " /t " + data->type + (data->separator.empty() ? "" : " /s " + cmdArgument(data->separator)) + " /d " +
                   cmdArgument(data->text) + " /f >nul") &&
               put("if errorlevel 1 set \"BVK_FEHLER=1\"");
    }
    // A query for the unnamed value succeeds as soon as its key is there. Deleting it succeeds only where it is, so that a copy
    // of the key tells whether it is still there.
    bool deleteUnnamed(const std::string& key) {
        const std::string removeCopy = "reg delete " + std::string(Copy) + " /f >nul 2>nul";
        return put(removeCopy) && put("reg delete " + key + " /ve /f >nul 2>nul") &&
               put("if errorlevel 1 reg copy " + key + " " + Copy + " /f >nul 2>nul") && put("reg delete " + std::string(Copy) + " /ve /f >nul 2>nul") &&
               put("if not errorlevel 1 set \"BVK_FEHLER=1\"") && put(removeCopy);
    }

    std::string lines_;
    std::vector<std::string> obstacles_;
};

}  // namespace

std::string cmdArgument(std::string_view text) {
    const bool quotes = text.find('"') != std::string_view::npos;   // then the processor loses count of what is quoted
    std::string line;
    for (const char c : programArgument(text)) {
        if (quotes && std::string_view("\"^&|<>()!").find(c) != std::string_view::npos) line += '^';
        line += c;
        if (c == '%') line += c;
    }
    return line;
}

RegAddScript regAddScript(const ExportRecord& item, const std::vector<std::string>& head) {
    Script script(head);
    for (const ExportTip& tipp : item.tipps) script.tipp(tipp);
    return script.finish();
}

}  // namespace brenvik
