// registry diff
#include <iostream>

#include "cli/registry/RegistryGroup.h"
#include "registry/search/Comparison.h"

namespace brenvik::cli {
namespace {

using nlohmann::ordered_json;
using Art = Difference::Art;

constexpr int Different = 1, Trouble = 2;

TreePlace treeOf(const Ort& place, Root root, const std::string& key) { return {place.store, root, key}; }

// The key of a REG file that all its entries lie in.
TreePlace topmost(const Ort& place) {
    std::optional<TreePlace> top;
    for (const Root root : rootsOf(place)) {
        if (place.store->subKeys(root, "").empty() && place.store->values(root, "").empty()) continue;
        if (top) throw NumberedError(errnum::InvalidCall, place.file + " hat mehrere Hauptschlüssel; geben Sie an, welcher Schlüssel gemeint ist: " + place.file + ":\\HKCU\\Schlüssel");
        top = treeOf(place, root, "");
    }
    if (!top) return treeOf(place, Root::LocalMachine, "");
    while (true) {
        const auto children = place.store->subKeys(top->root, top->key);
        if (children.size() != 1 || !place.store->values(top->root, top->key).empty()) return *top;
        top->key += (top->key.empty() ? "" : "\\") + children.front();
    }
}

struct Paar {
    TreePlace first, second;
    std::string prefix;   // in front of keys in the output
};

// A REG file or store without a path stands for the same path as a registry path on the other side, for its topmost key beside a
// hive, and for everything in it beside another one without a path.
std::vector<Paar> pairsOf(const Ort& a, const Ort& b) {
    std::vector<Paar> pairs;
    if (a.whole && b.whole) {
        for (const Root root : rootsOf(a.hasLinks() ? b : a)) {
            pairs.push_back({treeOf(a, root, ""), treeOf(b, root, ""), longRootName(root)});
        }
        return pairs;
    }
    const auto side = [](const Ort& place, const Ort& other) {
        if (!place.whole) return treeOf(place, place.path.root, place.key());
        return other.art == Ort::Art::Hive ? topmost(place) : treeOf(place, other.path.root, other.key());
    };
    return {{side(a, b), side(b, a), {}}};
}

void requireKey(const TreePlace& place, const std::string& text) {
    if (!place.store->keyExists(place.root, place.key)) throw RegError(regerr::NoAccess, "Der Schlüssel ist nicht vorhanden: " + text);
}

std::string keyText(const std::string& prefix, const std::string& key) { return prefix + (prefix.empty() || key.empty() ? "" : "\\") + key; }

class Ausgabe {
public:
    Ausgabe(Context& ctx, bool json) : ctx_(ctx), json_(json) {}

    void tell(const std::string& prefix, const Difference& difference) {
        const std::string key = keyText(prefix, difference.key);
        json_ ? add(key, difference) : print(key, difference);
    }
    void end(bool equal) {
        if (json_) std::cout << jsonText({{"equal", equal}, {"differences", std::move(list_)}}) << "\n";
    }

private:
    static bool isKey(Art art) { return art == Art::KeyMissing || art == Art::KeyAdded; }

    void line(char sign, const std::string& key, const ValueName& name, const RawValue& value, bool withBytes) {
        std::cout << sign << ' ' << oneLine(key) << "\\\t" << valueLabel(name) << "\t" << typeName(ctx_, value.type) << "\t" << shownData(value);
        if (withBytes) std::cout << "\t[" << bytesText(value.bytes) << "]";
        std::cout << "\n";
    }
    void print(const std::string& key, const Difference& d) {
        if (isKey(d.art)) {
            std::cout << (d.art == Art::KeyMissing ? "- " : "+ ") << oneLine(key) << "\\\n";
            return;
        }
        const bool alike = d.first && d.second && d.first->type == d.second->type && shownData(*d.first) == shownData(*d.second);
        if (d.first) line('-', key, d.name, *d.first, alike);
        if (d.second) line('+', key, d.name, *d.second, alike);
    }
    void add(const std::string& key, const Difference& d) {
        ordered_json entry{{"key", key}};
        if (isKey(d.art)) {
            entry["change"] = d.art == Art::KeyMissing ? "missing" : "added";
        } else {
            entry["name"] = d.name.text();
            entry["a"] = d.first ? dataJson(ctx_, *d.first) : ordered_json(nullptr);
            entry["b"] = d.second ? dataJson(ctx_, *d.second) : ordered_json(nullptr);
        }
        list_.push_back(std::move(entry));
    }

    Context& ctx_;
    bool json_;
    ordered_json list_ = ordered_json::array();
};

int diff(Program& program, Places& places, const std::string& first, const std::string& second, bool json) {
    const Ort a = places.resolve(first), b = places.resolve(second);
    const std::vector<Paar> pairs = pairsOf(a, b);
    if (pairs.size() == 1) {
        requireKey(pairs[0].first, first);
        requireKey(pairs[0].second, second);
    }
    if (places.deletions() > 0)
        std::cerr << "Löschungen in REG-Dateien zählen beim Vergleich nicht: " << places.deletions() << "\n";
    Ausgabe output(program.context(), json);
    bool equal = true;
    for (const Paar& pair : pairs)
        equal = compare(pair.first, pair.second, [&](const Difference& difference) { output.tell(pair.prefix, difference); }) && equal;
    output.end(equal);
    return equal ? 0 : Different;
}

}  // namespace

void addDiffCommand(const RegistryGroup& group) {
    const auto a = std::make_shared<std::string>(), b = std::make_shared<std::string>();
    auto* command = group.add("diff", "Zwei Schlüssel mit allem darunter vergleichen. Ergebnis 0: gleich, 1: verschieden, 2: nicht zu vergleichen. "
                                      "- steht nur in A, + nur in B; ein anderer Wert hat zwei Zeilen");
    command->add_option("A", *a, PathHelp)->required();
    command->add_option("B", *b, "Ebenso; eine REG-Datei oder Registry ohne Schlüssel steht für denselben Pfad wie auf der anderen Seite")->required();
    group.maySalvage(command);
    group.on(command, [&call = group.call, a, b](Program& p, Places& places) { return diff(p, places, *a, *b, call.json); }, Trouble);
}

}  // namespace brenvik::cli
