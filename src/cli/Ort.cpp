#include "cli/Ort.h"

#include "frame/DateiSystem.h"
#include "registry/HiveStore.h"
#include "registry/MemoryStore.h"
#include "registry/RegText.h"

namespace brenvik::cli {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t MaxFile = std::uintmax_t{1} << 30;
constexpr Root HiveRoot = Root::LocalMachine;   // under which a hive's own root stands
constexpr std::size_t ShownProblems = 20;

bool isFile(const std::string& name) {
    std::error_code error;
    return fs::is_regular_file(pathFromUtf8(name), error);
}

bool looksLikeFile(const std::string& text) { return text.find_first_of("/.:") < text.find('\\') || text.find(":\\") != std::string::npos; }

}  // namespace

std::string Ort::shown(Root root, std::string_view keyPath) const {
    std::string text = art == Art::Registry ? std::string() : file + ":\\";
    if (art != Art::Hive) text += shortRootName(root);
    if (art != Art::Hive && !keyPath.empty()) text += '\\';
    return text.append(keyPath);
}

Wertort wertort(const Ort& place, const std::optional<std::string>& valueName) {
    if (valueName) return {place.key(), ValueName::named(*valueName)};
    if (place.path.isBareRoot || place.whole) throw RegError(regerr::NoKey, "Der Pfad nennt keinen Wert.");
    return {place.path.key, place.path.name};
}

RegStore& Orte::machine() { return programm_.machines().store(programm_.context().strRechnername); }

Ort Orte::resolve(const std::string& text) {
    if (rootByName(text.substr(0, text.find('\\')))) return {Ort::Art::Registry, &machine(), parseRegPath(text), false, {}};
    if (auto found = fileOf(text)) return *found;
    if (looksLikeFile(text)) throw NumberedError(errnum::FileNotFound, "Die Datei ist nicht vorhanden: " + text);
    return {Ort::Art::Registry, &machine(), parseRegPath(text), false, {}};   // says what is wrong with it
}

// The file ends at the first ":\" or final ":" in front of which there is one; "C:\" of a drive is none.
std::optional<Ort> Orte::fileOf(const std::string& text) {
    if (isFile(text)) return open(text, {});
    for (std::size_t colon = text.find(':'); colon != std::string::npos; colon = text.find(':', colon + 1)) {
        const bool ends = colon + 1 == text.size() || text[colon + 1] == '\\';
        if (ends && isFile(text.substr(0, colon))) return open(text.substr(0, colon), text.substr(colon + 1));
    }
    return std::nullopt;
}

Ort Orte::open(const std::string& file, const std::string& inside) {
    std::error_code error;
    const fs::path name = pathFromUtf8(file), canonical = fs::canonical(name, error);
    Ort place;
    place.file = file;
    const auto known = stores_.find(canonical);
    std::string bytes;
    if (known == stores_.end()) {
        bytes = readFile(name, MaxFile);
        place.art = bytes.compare(0, 4, "regf") == 0 ? Ort::Art::Hive : Ort::Art::RegDatei;
        place.store = place.art == Ort::Art::Hive ? &hive(canonical) : &regFile(canonical, bytes);
    } else {
        place.art = dynamic_cast<MemoryStore*>(known->second.get()) == nullptr ? Ort::Art::Hive : Ort::Art::RegDatei;
        place.store = known->second.get();
    }
    if (place.art == Ort::Art::Hive) {
        place.path = parseRegPath(std::string(shortRootName(HiveRoot)) + (inside.empty() ? "\\" : inside));
    } else if (inside.size() > 1) {
        place.path = parseRegPath(inside.substr(1));
    } else {
        place.whole = true;
    }
    return place;
}

RegStore& Orte::hive(const fs::path& file) { return *(stores_[file] = openHiveFile(file)); }

RegStore& Orte::regFile(const fs::path& file, const std::string& bytes) {
    const RegText text = parseRegText(bytes);
    if (!text.ok()) {
        std::string message = "Die Datei " + utf8FromPath(file.filename()) + " kann nicht gelesen werden:";
        for (std::size_t i = 0; i < text.problems.size() && i < ShownProblems; ++i) {
            message += "\nZeile " + std::to_string(text.problems[i].line) + ": " + text.problems[i].message;
        }
        throw NumberedError(errnum::InvalidCall, message);
    }
    auto store = std::make_unique<MemoryStore>();
    applyOperations(*store, text.operations);
    store->setWritable(false);
    for (const RegOperation& operation : text.operations) {
        if (operation.kind == RegOperation::Kind::DeleteKey || operation.kind == RegOperation::Kind::DeleteValue) ++deletions_;
    }
    return *(stores_[file] = std::move(store));
}

}  // namespace brenvik::cli
