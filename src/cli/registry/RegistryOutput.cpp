#include "cli/registry/RegistryOutput.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <iostream>

#include "frame/text/Characters.h"
#include "frame/text/Codepage.h"
#include "frame/text/ShownText.h"
#include "frame/text/Texts.h"
#include "registry/ValueOperations.h"
#include "registry/search/Search.h"

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
    std::string line(text);
    std::replace(line.begin(), line.end(), '\0', '|');
    return shownLine(line);
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
    if (!isWhole(value, text) || !isUtf8(text)) json["raw"] = bytesText(value.bytes);
    return json;
}

ordered_json valueJson(Context& ctx, std::string_view name, const RawValue& value) {
    ordered_json json{{"name", name}};
    json.update(dataJson(ctx, value));
    return json;
}

namespace {

// A text that JSON cannot hold as it is, or a list with such a text in it.
bool isReplaced(const ordered_json& json) {
    if (json.is_string()) return !isUtf8(json.get_ref<const std::string&>());
    return json.is_array() && std::any_of(json.begin(), json.end(), isReplaced);
}

bool holdsReplaced(const ordered_json& json) {
    return json.is_structured() ? std::any_of(json.begin(), json.end(), holdsReplaced) : isReplaced(json);
}

// One U+FFFD for each half of a character and for each byte that is none.
std::string replaced(std::string_view text) {
    constexpr char32_t Replacement = 0xFFFD;
    std::string whole;
    for (std::size_t place = 0; place < text.size();) {
        const std::size_t start = place;
        const char32_t c = characters::next(text, place);
        if (isUtf8(text.substr(start, place - start))) characters::append(whole, c);
        else characters::append(whole, Replacement);
    }
    return whole;
}

void markReplaced(ordered_json& json) {
    if (json.is_string() && isReplaced(json)) json = replaced(json.get_ref<const std::string&>());
    ordered_json names = ordered_json::array();
    if (json.is_object())
        for (const auto& [name, member] : json.items())
            if (isReplaced(member)) names.push_back(name);
    if (json.is_structured())
        for (ordered_json& member : json) markReplaced(member);
    if (!names.empty()) json["replaced"] = std::move(names);
}

// What the library leaves as it is, though nobody can see it or a terminal obeys it. Outside of texts it does not occur.
std::string unseenEscaped(const std::string& dump) {
    constexpr char32_t Delete = 0x7F, Beyond = 0x10000;
    std::string text;
    text.reserve(dump.size());
    for (std::size_t place = 0; place < dump.size();) {
        const std::size_t start = place;
        const char32_t c = characters::next(dump, place);
        if (c != Delete && !isUnseen(c)) text.append(dump, start, place - start);
        else if (c < Beyond) text += fmt::format("\\u{:04x}", static_cast<std::uint32_t>(c));
        else text += fmt::format("\\u{:04x}\\u{:04x}", 0xD800 + ((static_cast<std::uint32_t>(c) - Beyond) >> 10), 0xDC00 + (c & 0x3FF));
    }
    return text;
}

}  // namespace

std::string jsonText(const ordered_json& json, int indent) {
    if (!holdsReplaced(json)) return unseenEscaped(json.dump(indent));
    ordered_json marked = json;
    markReplaced(marked);
    return unseenEscaped(marked.dump(indent));
}

void printProblems(const std::string& file, const std::vector<RegTextProblem>& problems) {
    for (const RegTextProblem& problem : problems) std::cerr << file << ", Zeile " << problem.line << ": " << problem.message << "\n";
}

int failed(const std::string& message, int code) {
    std::cerr << message << "\n";
    return code;
}

std::function<int(Program&)> reported(std::function<int(Program&)> work, int failureCode) {
    return [work = std::move(work), failureCode](Program& program) {
        try {
            const int code = work(program);
            if (!std::cout.flush() && code == 0) return failed("Die Ausgabe konnte nicht geschrieben werden.", failureCode);
            return code;
        } catch (const NumberedError& error) {
            return failed(error.number == regerr::NoRoot ? strBVKFehler(TextNoRoot) : std::string(error.what()), failureCode);
        }
    };
}

}  // namespace brenvik::cli
