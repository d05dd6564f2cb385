#pragma once
// Readers for the forms that only others read, as narrow as their formats: what is in the file, or a failure.
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include "export/ExportValues.h"
#include "frame/text/Codepage.h"
#include "frame/text/Conversions.h"

namespace brenvik::test {

// Values by "ROOT\Key\Name"; none: deleted.
using ReadValues = std::map<std::string, std::optional<RawValue>>;

inline ReadValues wantedValues(const ExportRecord& item, std::optional<Root> root = {}) {
    ReadValues values;
    for (const ExportTip& tipp : item.tipps)
        for (const ExportValue& value : tipp.values)
            if (!root || value.root == *root) values[value.pfad()] = value.wert;
    return values;
}

// What Windows makes of a line of a command file: carets outside of quotes, then percent signs, then a program's arguments.
inline std::vector<std::string> cmdWords(const std::string& line) {
    std::string plain;
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '%' && line.substr(i, 2) != "%%") throw std::runtime_error("variable in: " + line);
        if (line[i] == '%') ++i;
        if (line[i] == '^' && !quoted) {
            plain += line.at(++i);
            continue;
        }
        if (line[i] == '"') quoted = !quoted;
        if (!quoted && std::string_view("&|()").find(line[i]) != std::string_view::npos) throw std::runtime_error("operator in: " + line);
        plain += line[i];
    }
    std::vector<std::string> words;
    for (std::size_t i = 0; i < plain.size();) {
        if (plain[i] == ' ') {
            ++i;
            continue;
        }
        std::string word;
        for (bool inside = false; i < plain.size() && (inside || plain[i] != ' '); ++i) {
            const std::size_t slashes = std::min(plain.find_first_not_of('\\', i), plain.size()) - i;
            const bool beforeQuote = plain[i + slashes] == '"';
            word.append(beforeQuote ? slashes / 2 : slashes, '\\');
            i += slashes;
            if (!beforeQuote) {
                if (slashes > 0) --i;
                else word += plain[i];
            } else if (slashes % 2 == 1) {
                word += '"';
            } else {
                inside = !inside;
            }
        }
        words.push_back(std::move(word));
    }
    return words;
}

// Every line must be one of those that the script is made of.
inline ReadValues readCommandFile(const std::string& text) {
    static const std::set<std::string> frame{
        "@echo off", "setlocal DisableDelayedExpansion", "set \"BVK_FEHLER=0\"", "if errorlevel 1 set \"BVK_FEHLER=1\"", "if not errorlevel 1 set \"BVK_FEHLER=1\"",
        "for /f \"tokens=2 delims=:.\" %%C in ('chcp') do set \"BVK_CP=%%C\"", "chcp 1252 >nul", "chcp %BVK_CP% >nul",
        "if not \"%BVK_FEHLER%\"==\"0\" echo Nicht alle Werte wurden geschrieben.", "exit /b %BVK_FEHLER%", ""};
    ReadValues values;
    for (const std::string& line : Split(text, "\r\n")) {
        // What only checks a deletion changes nothing but the script's own copy.
        if (frame.count(line) != 0 || line.starts_with("rem ") || line.starts_with("reg query ") || line.starts_with("if errorlevel 1 reg copy ")) continue;
        const auto words = cmdWords(line);
        std::map<std::string, std::string> options;
        for (std::size_t k = 3; k < words.size(); ++k) {
            const bool alone = words[k] == "/ve" || words[k] == "/f" || words[k] == ">nul" || words[k] == "2>nul";
            options[words[k]] = alone ? "" : words.at(k + 1);
            k += alone ? 0 : 1;
        }
        const bool deletes = words.at(1) == "delete";
        if (words[0] != "reg" || (!deletes && words[1] != "add")) throw std::runtime_error("line: " + line);
        if (words.at(2) == "HKCU\\Software\\Brenvik-Kopie") continue;
        const RegPath key = parseRegPath(words[2] + "\\");
        std::optional<RawValue>& place = values[ExportValue{key.root, key.key, ValueName::named(options.count("/ve") ? std::string() : options.at("/v")), {}}.pfad()];
        if (deletes) continue;
        const std::string type = options.at("/t"), data = options.at("/d"), separator = options.count("/s") ? options.at("/s") : "\\0";
        RawValue value;
        if (type == "REG_MULTI_SZ") value = fromText(Replace(data, separator, std::string(1, '\0')), regtype::MultiSz);
        else if (type == "REG_BINARY") {
            value.type = regtype::Binary;
            for (std::size_t k = 0; k < data.size(); k += 2) value.bytes.push_back(static_cast<std::uint8_t>(std::stoul(data.substr(k, 2), nullptr, 16)));
        } else {
            value = fromText(data, type == "REG_DWORD" ? regtype::Dword : type == "REG_SZ" ? regtype::Sz : regtype::ExpandSz);
        }
        place = value;
    }
    return values;
}

inline ReadValues readPolicyFile(const std::string& bytes, Root root) {
    ReadValues values;
    std::size_t at = 8;
    const auto need = [&](bool good) {
        if (!good) throw std::runtime_error("Registry.pol at " + std::to_string(at));
    };
    const auto mark = [&](char c) { need(bytes.substr(at, 2) == std::string{c, '\0'}), at += 2; };
    const auto number = [&] {
        std::size_t value = 0;
        for (std::size_t k = 4; k-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes.at(at + k));
        return at += 4, value;
    };
    const auto text = [&] {
        std::size_t end = at;
        while (bytes.at(end) != 0 || bytes.at(end + 1) != 0) end += 2;
        const std::string result = utf8FromUtf16Le(bytes.substr(at, end - at));
        return at = end + 2, result;
    };
    need(bytes.substr(0, 8) == std::string("PReg\1\0\0\0", 8));
    while (at < bytes.size()) {
        mark('[');
        const std::string key = text();
        mark(';');
        const std::string name = text();
        mark(';');
        RawValue value{static_cast<std::uint32_t>(number()), {}};
        mark(';');
        const std::size_t size = number();
        mark(';');
        const std::string data = bytes.substr(at, size);
        value.bytes.assign(data.begin(), data.end());
        at += size;
        mark(']');
        const bool deletes = name.starts_with("**del.");
        values[ExportValue{root, key, ValueName::named(deletes ? name.substr(6) : name), {}}.pfad()] = deletes ? std::nullopt : std::optional(value);
    }
    return values;
}

// The policies of an ADM file as "CLASS\Key\Name", read token by token as the policy editor does, lines or not.
inline std::vector<std::string> readAdm(const std::string& text) {
    std::vector<std::string> tokens, open, policies;
    for (std::size_t at = 0; at < text.size();) {
        if (static_cast<unsigned char>(text[at]) <= ' ') {
            ++at;
        } else if (text[at] == ';' || text[at] == '#') {
            at = std::min(text.find('\n', at), text.size());
        } else if (text[at] == '"') {
            const std::size_t end = text.find('"', at + 1);
            tokens.push_back(text.substr(at, end - at));   // the mark in front tells it from a word
            if (tokens.back().find('\n') != std::string::npos) throw std::runtime_error("line end in " + tokens.back());
            at = end + 1;
        } else {
            const std::size_t end = std::min(text.find_first_of(" \r\n\"", at), text.size());
            tokens.push_back(upperCase(text.substr(at, end - at)));
            at = end;
        }
    }
    std::string where, key, name;
    for (std::size_t k = 0; k < tokens.size(); ++k) {
        const std::string& word = tokens[k];
        if (word == "CLASS") where = tokens.at(++k);
        else if (word == "CATEGORY" || word == "POLICY" || word == "PART") open.push_back(word), name = word == "POLICY" ? std::string() : name, ++k;
        else if (word == "KEYNAME") key = tokens.at(++k).substr(1);
        else if (word == "VALUENAME") name = tokens.at(++k).substr(1);
        else if (word == "END") {
            if (open.empty() || open.back() != tokens.at(++k)) throw std::runtime_error("END " + tokens.at(k));
            open.pop_back();
            if (tokens[k] == "POLICY") policies.push_back(where + "\\" + key + "\\" + name);
        } else if (word[0] == '"' && (k == 0 || tokens[k - 1][0] == '"')) {
            throw std::runtime_error("text of its own: " + word);
        }
    }
    if (!open.empty()) throw std::runtime_error("open: " + open.back());
    return policies;
}

// The lines of a told REG file that an importer acts on.
inline std::vector<std::string> actingLines(const std::string& text) {
    std::vector<std::string> lines;
    for (const std::string& line : Split(Replace(text, "\r", "\n"), "\n"))
        if (const std::string plain = Trim(line); !plain.empty() && plain[0] != ';') lines.push_back(plain);
    return lines;
}

}  // namespace brenvik::test
