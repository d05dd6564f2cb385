#include <fmt/format.h>
#include <limits>
#include <set>

#include "export/ExportValues.h"
#include "export/Messages.h"
#include "export/Preset.h"
#include "frame/text/Conversions.h"
#include "frame/toml/TomlText.h"
#include "registry/ValueOperations.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik {
namespace {

std::int64_t lineOf(const toml::node& node) { return static_cast<std::int64_t>(node.source().begin.line); }

// The type numbers that a Tip's values can have, by name.
std::optional<std::uint32_t> typeNumber(Context& ctx, const std::string& name) {
    for (const std::uint32_t type : ListTypes)
        if (DatenTypText(ctx, static_cast<std::int32_t>(type)) == name) return type;
    return std::nullopt;
}

class Reader {
public:
    Reader(TipEngine& engine, PresetList& result) : engine_(engine), ctx_(engine.context()), result_(result) {}

    void file(const toml::table& root) {
        const toml::node* format = root.get("format");
        if (format == nullptr || format->value_exact<std::int64_t>() != 1) return result_.problems.push_back(messages::WrongFormat);
        known(root, {"format", "programm", "datenbank", "tipp"});
        each(root, "tipp", [&](const toml::table& table) { tipp(table); });
    }

private:
    template <class... Args> void problem(fmt::format_string<Args...> text, Args&&... args) {
        result_.problems.push_back(fmt::format(text, std::forward<Args>(args)...));
    }

    void known(const toml::table& table, const std::set<std::string_view>& names) {
        for (const auto& [name, node] : table)
            if (names.count(name.str()) == 0) problem(messages::UnknownField, lineOf(node), std::string(name.str()));
    }

    template <class Work> void each(const toml::table& table, const char* name, const Work& work) {
        const toml::node* node = table.get(name);
        if (node == nullptr) return;
        const toml::array* list = node->as_array();
        if (list == nullptr) return problem(messages::FieldExpected, lineOf(*node), name, "eine Folge von Abschnitten");
        for (const toml::node& item : *list) {
            if (const toml::table* entry = item.as_table())
                work(*entry);
            else
                problem(messages::FieldExpected, lineOf(item), name, "ein Abschnitt");
        }
    }

    std::optional<std::int64_t> number(const toml::table& table, const char* name, std::int64_t least, std::int64_t most) {
        const toml::node* node = table.get(name);
        const auto value = node == nullptr ? std::nullopt : node->value_exact<std::int64_t>();
        if (value && *value >= least && *value <= most) return value;
        problem(messages::FieldExpected, lineOf(node == nullptr ? table : *node), name, fmt::format("eine Zahl von {} bis {}", least, most));
        return std::nullopt;
    }

    std::optional<std::string> text(const toml::table& table, const char* name) {
        const toml::node* node = table.get(name);
        auto value = node == nullptr ? std::nullopt : node->value_exact<std::string>();
        if (!value) problem(messages::FieldExpected, lineOf(node == nullptr ? table : *node), name, "ein Text");
        return value;
    }

    void tipp(const toml::table& table) {
        known(table, {"nummer", "titel", "wert"});
        const auto tippNr = number(table, "nummer", 1, std::numeric_limits<std::int16_t>::max());
        if (!tippNr) return;
        if (!seen_.insert(*tippNr).second) return problem(messages::DuplicateTip, lineOf(table), *tippNr);
        const auto record = engine_.lookUpTip(static_cast<std::int32_t>(*tippNr));
        if (!record) return problem(messages::TipUnknown, lineOf(table), *tippNr);
        if (record->INITipp) return problem(messages::TipIsINI, lineOf(table), *tippNr);
        TippListEintrag entry = listEntry(*record, {});
        each(table, "wert", [&](const toml::table& item) { value(item, entry); });
        takeTexts(entry);
        result_.liste.push_back(std::move(entry));
    }

    void value(const toml::table& table, TippListEintrag& entry) {
        known(table, {"nummer", "name", "typ", "wert", "bytes", "geloescht"});
        const auto row = number(table, "nummer", 1, std::numeric_limits<std::int16_t>::max());
        const auto name = text(table, "name");
        if (!row || !name) return;
        const auto found = std::find_if(entry.Values.begin(), entry.Values.end(), [&](const TipListValue& own) {
            return own.TippIndex == *row && equalText(own.Wertname, *name);
        });
        if (found == entry.Values.end()) return problem(messages::ValueUnknown, lineOf(table), entry.TippNr, *row, *name);
        GatheredValue& own = found->gathered;
        if (own.touched) return problem(messages::DuplicateValue, lineOf(table), *name);
        own.touched = true;
        const bool removes = table.get("geloescht") != nullptr && table.get("geloescht")->value_exact<bool>() == true;
        if (removes + (table.get("wert") != nullptr) + (table.get("bytes") != nullptr) != 1) return problem(messages::ValueOrDeleted, lineOf(table));
        if (removes) {
            own.geloescht = true;
            own.text = DelKey;
            return;
        }
        const auto typeName = text(table, "typ");
        if (!typeName) return;
        const auto type = typeNumber(ctx_, *typeName);
        if (!type || !fitsTheType(*type, found->Datentyp)) return problem(messages::TypeUnfit, lineOf(table), *name, entry.TippNr);
        try {
            own.wert = data(table, *type);
            if (own.wert) own.text = shownText(*own.wert, *found);
        } catch (const NumberedError& error) {
            problem(messages::ValueDoesNotFit, lineOf(table), std::string(error.what()));
        }
    }

    std::optional<RawValue> data(const toml::table& table, std::uint32_t type) {
        if (table.get("bytes") != nullptr) {
            const auto bytes = text(table, "bytes");
            return bytes ? std::optional(RawValue{type, fromText(*bytes, regtype::Binary).bytes}) : std::nullopt;
        }
        if (type == regtype::Dword) {
            const auto value = number(table, "wert", std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::uint32_t>::max());
            return value ? std::optional(fromText(std::to_string(*value), type)) : std::nullopt;
        }
        if (type != regtype::MultiSz) {
            const auto value = text(table, "wert");
            return value ? std::optional(fromText(*value, type)) : std::nullopt;
        }
        return elements(table);
    }

    std::optional<RawValue> elements(const toml::table& table) {
        const toml::array* list = table.get("wert")->as_array();
        std::string joined;
        for (std::size_t i = 0; list != nullptr && i < list->size(); ++i) {
            const auto element = list->get(i)->value_exact<std::string>();
            if (!element || element->find('\0') != std::string::npos) list = nullptr;
            else joined += (i == 0 ? std::string() : std::string(1, '\0')) + *element;
        }
        if (list != nullptr) return fromText(joined, regtype::MultiSz);
        problem(messages::FieldExpected, lineOf(*table.get("wert")), "wert", "eine Liste von Texten");
        return std::nullopt;
    }

    // As the panel of the value shows it.
    std::string shownText(const RawValue& value, const TipListValue& of) {
        if (value.type != regtype::Dword || value.bytes.size() != 4) return toText(value);
        return kindOf(of.PanelArt).dwordForm(toLng(toText(value)));
    }

    TipEngine& engine_;
    Context& ctx_;
    PresetList& result_;
    std::set<std::int64_t> seen_;
};

}  // namespace

PresetList ladePreset(TipEngine& engine, std::string_view text) {
    PresetList result;
    try {
        Reader(engine, result).file(parseToml(text));
    } catch (const TomlError& error) {
        result.problems.push_back(fmt::format(messages::NoTOML, error.line, error.what()));
    }
    if (!result.problems.empty()) result.liste.clear();
    return result;
}

}  // namespace brenvik
