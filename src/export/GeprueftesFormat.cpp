#include "export/GeprueftesFormat.h"

#include <algorithm>
#include <fmt/format.h>
#include <map>
#include <tuple>

#include "registry/RegText.h"
#include "registry/Upcase.h"

namespace brenvik {

GepruefteDatei GeprueftesFormat(const Exportsatz& satz, RegTextWriter::Format format, const std::vector<std::string>& kopf) {
    RegTextWriter writer(format);
    for (const std::string& line : kopf) writer.comment(line);
    for (const Exporttipp& tipp : satz.tipps) {
        if (tipp.werte.empty()) continue;
        writer.comment("");
        writer.comment(fmt::format("; [{}] - {}", tipp.TippNr, tipp.Titel));
        const Exportwert* last = nullptr;
        for (const Exportwert& value : tipp.werte) {
            if (last == nullptr || last->root != value.root || last->key != value.key) writer.key(value.root, value.key);
            last = &value;
            if (value.wert)
                writer.value(value.name, *value.wert);
            else
                writer.deleteValue(value.name);
        }
    }
    return {writer.bytes(), writer.lost()};
}

std::size_t abweichungen(std::string_view regDatei, const Exportsatz& satz) {
    using Place = std::tuple<Root, std::u16string, std::u16string>;
    const auto placeOf = [](Root root, const std::string& key, const ValueName& name) { return Place(root, foldName(key), foldName(name.text())); };
    using States = std::map<Place, std::optional<RawValue>>;
    States wanted, arrives;
    for (const Exporttipp& tipp : satz.tipps)
        for (const Exportwert& value : tipp.werte) wanted[placeOf(value.root, value.key, value.name)] = value.wert;
    const RegText text = parseRegText(regDatei);
    for (const RegOperation& operation : text.operations) {
        const bool sets = operation.kind == RegOperation::Kind::SetValue;
        if (sets || operation.kind == RegOperation::Kind::DeleteValue)
            arrives[placeOf(operation.root, operation.key, operation.name)] = sets ? std::optional(operation.value) : std::nullopt;
    }
    std::size_t count = 0;
    for (const auto& [place, value] : wanted) {
        const auto found = arrives.find(place);
        if (found == arrives.end() || found->second != value) ++count;
    }
    for (const auto& [place, value] : arrives) count += wanted.count(place) == 0;
    return count == 0 && !text.ok() ? 1 : count;
}

}  // namespace brenvik
