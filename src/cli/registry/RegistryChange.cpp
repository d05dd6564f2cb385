// registry write | delete | copy
#include <algorithm>
#include <charconv>

#include "cli/ValueInput.h"
#include "cli/registry/RegistryGroup.h"
#include "frame/files/FileSystem.h"
#include "registry/RegOperations.h"
#include "registry/store/RegTree.h"

namespace brenvik::cli {
namespace {

struct WriteOrder {
    std::string path, type, data, dataFile;
    std::optional<std::string> name;
    int descriptor = 0;
};

constexpr std::uintmax_t MaxDataFile = 64u << 20;   // more than any value holds, so that the store says what it takes

// Numbers may be given in hexadecimal, too.
std::string decimal(const std::string& text) {
    if (text.size() < 3 || text[0] != '0' || (text[1] != 'x' && text[1] != 'X')) return text;
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data() + 2, text.data() + text.size(), number, 16);
    return error == std::errc() && end == text.data() + text.size() ? std::to_string(number) : text;
}

RawValue valueOf(const WriteOrder& order, std::uint32_t type) {
    const bool isString = type == regtype::Sz || type == regtype::ExpandSz || type == regtype::MultiSz;
    std::string data = order.data == FromInput ? readValue(order.descriptor) : order.dataFile.empty() ? order.data : readFile(pathFromUtf8(order.dataFile), MaxDataFile);
    if (!order.dataFile.empty() && !isString && type != regtype::Dword) return {type, {data.begin(), data.end()}};
    if (type == regtype::MultiSz) std::replace(data.begin(), data.end(), '\n', '\0');
    if (type == regtype::Dword) data = decimal(data);
    return fromText(data, type);
}

int writeValue(Program& program, Places& places, const WriteOrder& order) {
    const auto type = typeNumber(program.context(), order.type);
    if (!type) return failed("Unbekannter Datentyp: " + order.type, 2);
    const Ort place = places.resolve(order.path);
    const ValuePlace at = valuePlace(place, order.name);
    if (place.path.isKey && !order.name && *type == regtype::None && order.data.empty() && order.dataFile.empty()) {
        place.store->createKey(place.path.root, at.key);
    } else {
        place.store->setValue(place.path.root, at.key, at.name, valueOf(order, *type));
    }
    return 0;
}

int deleteKey(Program& program, const Ort& place, const std::string& text, bool recursive) {
    const std::string key = place.key();
    if (place.whole || key.empty()) return failed("Ein Hauptschlüssel kann nicht gelöscht werden: " + text);
    RegStore& store = *place.store;
    if (!store.keyExists(place.path.root, key)) return failed("Der Schlüssel ist nicht vorhanden: " + text);
    if (!recursive && !store.subKeys(place.path.root, key).empty())
        return failed("Der Schlüssel hat Unterschlüssel und wurde nicht gelöscht (mit --recursive wird er es): " + text);
    const std::string what = place.shown(key) + (recursive ? " mit allen Unterschlüsseln und Werten" : "");
    if (!program.context().port.ask("Soll der Schlüssel " + what + " gelöscht werden?")) return 1;
    RegOperation operation;
    operation.kind = RegOperation::Kind::DeleteKey;
    operation.root = place.path.root;
    operation.key = key;
    applyOperations(store, {operation});
    return 0;
}

int deletePath(Program& program, Places& places, const std::string& text, const std::optional<std::string>& name, bool recursive) {
    if (name && recursive) return failed("--value und --recursive schließen sich aus", 2);
    const Ort place = places.resolve(text);
    if (!name && (recursive || place.path.isKey || place.path.isBareRoot)) return deleteKey(program, place, text, recursive);
    const ValuePlace at = valuePlace(place, name);
    if (place.store->deleteValue(place.path.root, at.key, at.name)) return 0;
    return failed("Der Wert ist nicht vorhanden: " + text + (name ? " [" + valueLabel(at.name) + "]" : ""));
}

int copy(Program& program, Places& places, const std::string& from, const std::string& to) {
    const Ort source = places.resolve(from), target = places.resolve(to);
    if (source.whole || target.whole) return failed(KeyNeeded, 2);
    if (!source.store->keyExists(source.path.root, source.key())) return failed("Der Schlüssel ist nicht vorhanden: " + from);
    if (target.store->keyExists(target.path.root, target.key()) &&
        !program.context().port.ask("Der Schlüssel " + target.shown(target.key()) +
                                     " ist schon vorhanden. Sollen die Schlüssel und Werte dort ergänzt und gleichnamige Werte ersetzt werden?"))
        return 1;
    if (!copyTree(*source.store, source.path.root, source.key(), *target.store, target.path.root, target.key()))
        return failed("Der Schlüssel wurde nicht kopiert: " + from);
    return 0;
}

}  // namespace

void addChangeCommands(const RegistryGroup& group) {
    const auto order = std::make_shared<WriteOrder>();
    constexpr const char* valueHelp = "Name des Wertes; PATH ist dann der Schlüssel. Für Namen mit \\; ein leerer Name meint den Wert ohne Namen";
    auto* write = group.add("write", "Einen Wert schreiben; Schlüssel auf dem Weg werden angelegt");
    write->add_option("PATH", order->path, "Pfad des Wertes; mit \\ am Ende ist der Wert ohne Namen gemeint, mit Typ 0 und leeren Daten wird nur der Schlüssel angelegt")->required();
    write->add_option("TYPE", order->type, "REG_SZ, REG_EXPAND_SZ, REG_BINARY, REG_DWORD, REG_MULTI_SZ, ein anderer Name oder die Nummer")->required();
    auto* data = write->add_option("DATA", order->data, std::string("Daten als Text; bei REG_MULTI_SZ ein Element je Zeile, bei REG_BINARY Bytes wie 0A FF") + FromInputHelp);
    write->add_option("--value-fd", order->descriptor, "Deskriptor, von dem die Daten \"-\" gelesen werden");
    auto* file = write->add_option("--data-file", order->dataFile, "Daten aus dieser Datei: Text in UTF-8, bei anderen Typen die Bytes selbst");
    data->excludes(file);
    write->add_option("--value", order->name, valueHelp);
    group.on(write, [order, data, file](Program& p, Places& places) {
        if (data->count() + file->count() == 0) return failed("Es fehlt DATA oder --data-file", 2);
        return writeValue(p, places, *order);
    });

    const auto recursive = std::make_shared<bool>(false);
    auto* remove = group.add("delete", "Einen Wert oder, mit \\ am Ende, einen Schlüssel löschen");
    remove->add_option("PATH", order->path, PathHelp)->required();
    remove->add_flag("--recursive", *recursive, "Den Schlüssel mit allem darunter löschen (fragt nach)");
    remove->add_option("--value", order->name, valueHelp);
    group.on(remove, [order, recursive](Program& p, Places& places) { return deletePath(p, places, order->path, order->name, *recursive); });

    const auto target = std::make_shared<std::string>();
    auto* copier = group.add("copy", "Einen Schlüssel mit allem darunter kopieren (fragt nach, wenn es das Ziel schon gibt)");
    copier->add_option("A", order->path, PathHelp)->required();
    copier->add_option("B", *target, "Schlüssel, der die Kopie wird; auch in einer Hive-Datei")->required();
    group.maySalvage(copier);
    group.on(copier, [order, target](Program& p, Places& places) { return copy(p, places, order->path, *target); });
}

}  // namespace brenvik::cli
