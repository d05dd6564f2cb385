// registry list | read
#include <algorithm>
#include <cstdio>
#include <iostream>

#include "cli/registry/RegistryGroup.h"
#include "frame/platform/HostTerminal.h"
#include "frame/text/ShownOutput.h"

namespace brenvik::cli {
namespace {

using nlohmann::ordered_json;

int readValue(Program& program, Places& places, const std::string& text, const std::optional<std::string>& name, bool json) {
    const Ort place = places.resolve(text);
    const ValuePlace at = valuePlace(place, name);
    const auto value = place.store->value(place.path.root, at.key, at.name);
    if (!value) return failed("Der Wert ist nicht vorhanden: " + text + (name ? " [" + valueLabel(at.name) + "]" : ""));
    if (json) {
        std::cout << jsonText(valueJson(program.context(), at.name.text(), *value)) << "\n";
    } else {
        std::string data = toText(*value);
        std::replace(data.begin(), data.end(), '\0', '\n');   // elements of a REG_MULTI_SZ stand one in a line
        if (host::isTerminal(stdout)) std::cout << data << "\n";
        else ShownOutput::putRaw(std::cout, data + "\n");   // scripts want the value, whatever it holds
    }
    return 0;
}

struct Contents {
    std::vector<std::string> keys;
    std::vector<NamedValue> values;
};

// A whole REG file or store shows its roots in the place of keys.
Contents contentOf(const Ort& place) {
    Contents content;
    if (!place.whole) return {place.store->subKeys(place.path.root, place.key()), place.store->values(place.path.root, place.key())};
    for (int number = 0; number <= static_cast<int>(Root::ClassesRoot); ++number) {
        const Root root = static_cast<Root>(number);
        if (!place.store->subKeys(root, "").empty() || !place.store->values(root, "").empty()) content.keys.emplace_back(longRootName(root));
    }
    return content;
}

int listKey(Program& program, Places& places, const std::string& text, bool json) {
    const Ort place = places.resolve(text);
    if (!place.whole && !place.store->keyExists(place.path.root, place.key())) return failed("Der Schlüssel ist nicht vorhanden: " + text);
    const Contents content = contentOf(place);
    Context& ctx = program.context();
    if (json) {
        ordered_json out{{"keys", content.keys}, {"values", ordered_json::array()}};
        for (const NamedValue& v : content.values) out["values"].push_back(valueJson(ctx, v.name.text(), v.value));
        std::cout << jsonText(out) << "\n";
        return 0;
    }
    for (const std::string& key : content.keys) std::cout << oneLine(key) << "\\\n";
    for (const NamedValue& v : content.values)
        std::cout << valueLabel(v.name) << "\t" << typeName(ctx, v.value.type) << "\t" << shownData(v.value) << "\n";
    return 0;
}

}  // namespace

void addReadCommands(const RegistryGroup& group) {
    const auto path = std::make_shared<std::string>();
    const auto name = std::make_shared<std::optional<std::string>>();
    auto* read = group.add("read", "Einen Wert ausgeben");
    read->add_option("PATH", *path, "Pfad des Wertes, z.B. HKCU\\Control Panel\\Desktop\\Wallpaper; mit \\ am Ende ist der Wert ohne Namen gemeint")->required();
    read->add_option("--value", *name, "Name des Wertes; PATH ist dann der Schlüssel. Für Namen mit \\; ein leerer Name meint den Wert ohne Namen");
    group.maySalvage(read);
    group.on(read, [&call = group.call, path, name](Program& p, Places& places) { return readValue(p, places, *path, *name, call.json); });

    auto* list = group.add("list", "Unterschlüssel und Werte eines Schlüssels ausgeben");
    list->add_option("PATH", *path, PathHelp)->required();
    group.maySalvage(list);
    group.on(list, [&call = group.call, path](Program& p, Places& places) { return listKey(p, places, *path, call.json); });
}

}  // namespace brenvik::cli
