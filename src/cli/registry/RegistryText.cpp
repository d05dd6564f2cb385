// registry export | import
#include <iostream>

#include "cli/registry/RegistryGroup.h"
#include "frame/files/FileSystem.h"
#include "registry/text/RegImport.h"
#include "registry/text/RegTextWriter.h"

namespace brenvik::cli {
namespace {

using nlohmann::ordered_json;

constexpr std::uintmax_t MaxRegFile = std::uintmax_t{1} << 30;
constexpr const char* NotThere = "(nicht vorhanden)";

struct Waived {};

void printOmissions(const Ort& place, const RegTextWriter& writer) {
    for (const RegTextWriter::Omission& entry : writer.omitted()) {
        const std::string key = oneLine(place.shown(entry.root, entry.key)) + "\\";
        if (!entry.why.empty()) std::cerr << "Nicht lesbar: " << key << "\t" << oneLine(entry.why) << "\n";
        else std::cerr << "Ausgelassen: " << key << (entry.value ? "\t" + valueLabel(*entry.value) : std::string()) << "\n";
    }
    if (writer.lost() + writer.unreadable() > writer.omitted().size()) std::cerr << "Weitere werden nicht aufgezählt.\n";
}

int exportKey(Program& program, Places& places, const std::string& text, const std::string& file, bool regedit4) {
    const Ort place = places.resolve(text);
    if (place.whole) return failed(KeyNeeded, 2);
    if (!place.store->keyExists(place.path.root, place.key())) return failed("Der Schlüssel ist nicht vorhanden: " + text);
    const auto format = regedit4 ? RegTextWriter::Format::Regedit4 : RegTextWriter::Format::Version5;
    std::size_t unreadable = 0;
    try {
        writeFileAtomic(pathFromUtf8(file), [&](const OutputPiece& put) {
            RegTextWriter writer(format, put);
            writer.tree(*place.store, place.path.root, place.key());
            writer.end();
            printOmissions(place, writer);
            if (writer.lost() > 0 &&
                !program.context().port.ask("Einträge, die sich in diesem Format nicht darstellen lassen und in der Datei fehlen: " + std::to_string(writer.lost()) + ". Soll sie trotzdem geschrieben werden?"))
                throw Waived{};
            unreadable = writer.unreadable();
        });
    } catch (const Waived&) {
        return 1;
    }
    return unreadable > 0 ? failed("Die Datei wurde geschrieben, enthält aber nicht alles.") : 0;
}

std::string stateText(Context& ctx, const std::optional<RawValue>& value) {
    return value ? typeName(ctx, value->type) + " " + shownData(*value) : std::string(NotThere);
}

void printChanges(Context& ctx, const std::vector<ChangePreview>& changes) {
    for (const ChangePreview& change : changes) {
        std::cout << oneLine(longRootName(change.root)) << "\\" << oneLine(change.key) << "\\\t";
        if (change.isKey) {
            std::cout << (change.keyBefore ? "wird gelöscht" : "wird angelegt") << "\n";
            continue;
        }
        std::string before = stateText(ctx, change.before), after = stateText(ctx, change.after);
        if (before == after) {   // texts do not tell all bytes
            before += " [" + bytesText(change.before->bytes) + "]";
            after += " [" + bytesText(change.after->bytes) + "]";
        }
        std::cout << valueLabel(change.name) << "\t" << before << " -> " << after << "\n";
    }
}

void printChangesJson(Context& ctx, const std::vector<ChangePreview>& changes) {
    ordered_json out = ordered_json::array();
    const auto state = [&](const std::optional<RawValue>& value) { return value ? dataJson(ctx, *value) : ordered_json(nullptr); };
    for (const ChangePreview& change : changes) {
        ordered_json entry{{"key", std::string(longRootName(change.root)) + "\\" + change.key}};
        if (change.isKey) {
            entry["change"] = change.keyBefore ? "deleted" : "created";
        } else {
            entry["name"] = change.name.text();
            entry["old"] = state(change.before);
            entry["new"] = state(change.after);
        }
        out.push_back(std::move(entry));
    }
    std::cout << jsonText(out) << "\n";
}

int refused(const std::string& file, const std::vector<RegTextProblem>& problems) {
    printProblems(file, problems);
    if (problems.size() >= MaxRegTextProblems) std::cerr << "Weitere Fehler werden nicht aufgezählt.\n";
    return failed("Die Datei wurde nicht eingelesen, nichts wurde geändert.");
}

int importFile(Program& program, Places& places, const std::string& file, bool dryRun, bool json) {
    const RegTextFile text(readFile(pathFromUtf8(file), MaxRegFile));
    RegStore& store = places.machine();
    if (!dryRun) {
        const auto problems = replay(store, text);
        return problems.empty() ? 0 : refused(file, problems);
    }
    const Preview preview = previewOf(store, text);
    if (!preview.problems.empty()) return refused(file, preview.problems);
    json ? printChangesJson(program.context(), preview.changes) : printChanges(program.context(), preview.changes);
    return 0;
}

}  // namespace

void addTextCommands(const RegistryGroup& group) {
    const auto path = std::make_shared<std::string>(), file = std::make_shared<std::string>();
    const auto flag = std::make_shared<bool>(false);
    auto* writer = group.add("export", "Einen Schlüssel mit allem darunter als REG-Datei schreiben");
    writer->add_option("PATH", *path, PathHelp)->required();
    writer->add_option("FILE", *file, "REG-Datei; eine vorhandene wird ersetzt")->required();
    writer->add_flag("--regedit4", *flag, "Im Format REGEDIT4 (Windows-1252) statt Version 5.00 (UTF-16)");
    group.maySalvage(writer);
    group.on(writer, [path, file, flag](Program& p, Places& places) { return exportKey(p, places, *path, *file, *flag); });

    auto* reader = group.add("import", "Eine REG-Datei einlesen: ganz oder, wenn eine Zeile nicht stimmt, gar nicht");
    reader->add_option("FILE", *file, "REG-Datei")->required();
    reader->add_flag("--dry-run", *flag, "Nur zeigen, was sich ändern würde");
    group.on(reader, [&call = group.call, file, flag](Program& p, Places& places) { return importFile(p, places, *file, *flag, call.json); });
}

}  // namespace brenvik::cli
