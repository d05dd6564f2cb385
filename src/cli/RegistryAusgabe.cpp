#include "cli/RegistryAusgabe.h"

#include <charconv>
#include <iostream>

#include "frame/Texte.h"
#include "registry/Suche.h"
#include "registry/ValueOperations.h"

namespace brenvik::cli {

using nlohmann::ordered_json;

namespace {

constexpr std::uint32_t LastNamedType = 10;
constexpr int TextNoRoot = 2;

// Elements of a REG_MULTI_SZ.
ordered_json elements(const std::string& text) {
    ordered_json list = ordered_json::array();
    std::size_t from = 0;
    while (!text.empty() && from <= text.size()) {
        const auto end = std::min(text.find('\0', from), text.size());
        list.push_back(text.substr(from, end - from));
        from = end + 1;
    }
    return list;
}

bool isWhole(const RawValue& value, const std::string& text) {
    if (value.type == regtype::Dword && value.bytes.size() != 4) return false;
    try {
        return fromText(text, value.type) == value;
    } catch (const RegError&) {
        return false;
    }
}

}  // namespace

std::string typeName(Context& ctx, std::uint32_t type) {
    return type <= LastNamedType ? DatenTypText(ctx, static_cast<std::int32_t>(type)) : std::to_string(type);
}

std::optional<std::uint32_t> typeNumber(Context& ctx, const std::string& text) {
    for (std::uint32_t type = 0; type <= LastNamedType; ++type) {
        if (text == typeName(ctx, type)) return type;
    }
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

std::string oneLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte == 0) line += '|';
        else if (byte < 0x20 || byte == 0x7F) line += {'\xE2', '\x90', static_cast<char>(byte == 0x7F ? 0xA1 : 0x80 + byte)};
        else line += c;
    }
    return line;
}

std::string shownData(const RawValue& value, std::size_t most) {
    std::string text = dataText(value);
    if (text.size() > most) {
        std::size_t end = most;
        while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;   // never inside a character
        return oneLine(std::string_view(text).substr(0, end)) + "…";
    }
    return oneLine(text);
}

std::string valueLabel(const ValueName& name) { return name.isUnnamed() ? std::string("(Standard)") : oneLine(name.text()); }

ordered_json dataJson(Context& ctx, const RawValue& value) {
    const std::string text = dataText(value);
    ordered_json json{{"type", typeName(ctx, value.type)}};
    json["data"] = value.type == regtype::MultiSz ? elements(text) : ordered_json(text);
    if (!isWhole(value, text)) json["raw"] = bytesText(value.bytes);
    return json;
}

ordered_json valueJson(Context& ctx, std::string_view name, const RawValue& value) {
    ordered_json json{{"name", name}};
    json.update(dataJson(ctx, value));
    return json;
}

std::string jsonText(const ordered_json& json, int indent) { return json.dump(indent, ' ', false, ordered_json::error_handler_t::replace); }

void printProblems(const std::string& file, const std::vector<RegTextProblem>& problems) {
    for (const RegTextProblem& problem : problems) std::cerr << file << ", Zeile " << problem.line << ": " << problem.message << "\n";
}

int failed(const std::string& message, int code) {
    std::cerr << message << "\n";
    return code;
}

std::function<int(Programm&)> reported(std::function<int(Programm&)> work, int failureCode) {
    return [work = std::move(work), failureCode](Programm& programm) {
        try {
            const int code = work(programm);
            if (!std::cout.flush()) return failed("Die Ausgabe konnte nicht geschrieben werden.", failureCode);
            return code;
        } catch (const NumberedError& error) {
            return failed(error.number == regerr::NoRoot ? strBVKFehler(TextNoRoot) : std::string(error.what()), failureCode);
        }
    };
}

}  // namespace brenvik::cli
