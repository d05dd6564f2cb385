#include "cli/registry/RegistryPlace.h"

#include <cstdio>
#include <iostream>

#include "frame/files/FileSystem.h"
#include "frame/platform/HostFile.h"
#include "registry/CregFile.h"
#include "registry/hivefile/HiveFileBytes.h"
#include "registry/hivefile/HiveStore.h"
#include "registry/store/MemoryStore.h"
#include "registry/store/SqliteStore.h"
#include "registry/text/RegImport.h"

namespace brenvik::cli {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t MaxFile = std::uintmax_t{1} << 30;
constexpr Root HiveRoot = Root::LocalMachine;   // under which a hive's own root stands
constexpr std::size_t ShownProblems = 20;
constexpr std::string_view StoreStart("SQLite format 3\0", 16);

bool isFile(const std::string& name) {
    std::error_code error;
    return fs::is_regular_file(pathFromUtf8(name), error);
}

bool isFolder(const std::string& name) {
    std::error_code error;
    return fs::is_directory(pathFromUtf8(name), error);
}

bool looksLikeFile(const std::string& text) { return text.find_first_of("/.:") < text.find('\\') || text.find(":\\") != std::string::npos; }

// What tells hives and stores from texts.
std::string startOf(const fs::path& file) {
    std::string start(StoreStart.size(), '\0');
    std::FILE* const in = host::openFile(file, "rb");
    if (in == nullptr) return {};   // reading it says why
    start.resize(std::fread(start.data(), 1, start.size(), in));
    std::fclose(in);
    return start;
}

}  // namespace

std::string Ort::shown(Root root, std::string_view keyPath) const {
    std::string text = art == Art::Registry ? std::string() : file + ":\\";
    if (art != Art::Hive) text += shortRootName(root);
    if (art != Art::Hive && !keyPath.empty()) text += '\\';
    return text.append(keyPath);
}

ValuePlace valuePlace(const Ort& place, const std::optional<std::string>& valueName) {
    if (valueName) return {place.key(), ValueName::named(*valueName)};
    if (place.path.isBareRoot || place.whole) throw RegError(regerr::NoKey, "Der Pfad nennt keinen Wert.");
    return {place.path.key, place.path.name};
}

std::vector<Root> rootsOf(const Ort& place) {
    if (place.hasLinks()) return {Root::LocalMachine, Root::Users};
    return {Root::CurrentUser, Root::LocalMachine, Root::Users, Root::DynData, Root::CurrentConfig, Root::ClassesRoot};
}

RegStore& Places::machine() { return program_.machines().store(program_.context().strRechnername); }

Ort Places::resolve(const std::string& text) {
    if (rootByName(text.substr(0, text.find('\\')))) return {Ort::Art::Registry, &machine(), parseRegPath(text), false, {}};
    if (auto found = fileOf(text)) return *found;
    if (looksLikeFile(text)) throw NumberedError(errnum::FileNotFound, "Die Datei ist nicht vorhanden: " + text);
    return {Ort::Art::Registry, &machine(), parseRegPath(text), false, {}};   // says what is wrong with it
}

// The file or folder ends at the first ":\" or final ":" in front of which there is one; "C:\" of a drive is none. A folder
// alone is told from a key by its separators.
std::optional<Ort> Places::fileOf(const std::string& text) {
    if (isFile(text) || (text.find('/') != std::string::npos && isFolder(text))) return open(text, {});
    for (std::size_t colon = text.find(':'); colon != std::string::npos; colon = text.find(':', colon + 1)) {
        const bool ends = colon + 1 == text.size() || text[colon + 1] == '\\';
        const std::string place = text.substr(0, colon);
        if (ends && (isFile(place) || (colon > 1 && isFolder(place)))) return open(place, text.substr(colon + 1));
    }
    return std::nullopt;
}

Ort Places::open(const std::string& file, const std::string& inside) {
    const fs::path canonical = fs::canonical(pathFromUtf8(file));
    auto known = opened_.find(canonical);
    if (known == opened_.end()) known = opened_.emplace(canonical, openFile(canonical)).first;
    Ort place;
    place.file = file;
    place.art = known->second.art;
    place.store = known->second.store;
    if (place.art == Ort::Art::Hive) {
        place.path = parseRegPath(std::string(shortRootName(HiveRoot)) + (inside.empty() ? "\\" : inside));
    } else if (inside.size() > 1) {
        place.path = parseRegPath(inside.substr(1));
    } else {
        place.whole = true;
    }
    return place;
}

Places::Opened Places::openFile(const fs::path& file) {
    if (fs::is_directory(file)) return {Ort::Art::Store, &program_.machines().store(utf8FromPath(file)), nullptr};
    const std::string start = startOf(file);
    if (isHiveFile(file) || isCregFile(file)) return openHive(file);
    if (start != StoreStart) return openRegFile(file);
    auto store = std::make_unique<SqliteStore>(file, StoreOptions{.create = false});
    return {Ort::Art::Store, store.get(), std::move(store)};
}

Places::Opened Places::openHive(const fs::path& file) {
    const auto tell = [&](const HiveFinding& finding) { std::cerr << utf8FromPath(file) << ", " << finding.line() << "\n"; };
    try {
        const HiveOpenOptions options{salvage_, tell, [&port = program_.context().port](const std::string& question) { return port.ask(question, box::Exclamation); }};
        auto store = isCregFile(file) ? openCregFile(file, options) : openHiveFile(file, options);
        return {Ort::Art::Hive, store.get(), std::move(store)};
    } catch (const RegError& error) {
        if (salvage_) throw;
        throw RegError(error.number, std::string(error.what()) + "\nMit --salvage wird beim Lesen übergangen, was beschädigt ist.");
    }
}

Places::Opened Places::openRegFile(const fs::path& file) {
    const RegTextFile text(readFile(file, MaxFile));
    auto store = std::make_unique<MemoryStore>();
    if (const auto problems = replay(*store, text); !problems.empty()) {
        std::string message = "Die Datei " + utf8FromPath(file.filename()) + " kann nicht gelesen werden:";
        for (std::size_t i = 0; i < problems.size() && i < ShownProblems; ++i) {
            message += "\nZeile " + std::to_string(problems[i].line) + ": " + problems[i].message;
        }
        throw NumberedError(errnum::InvalidCall, message);
    }
    store->setWritable(false);
    text.each([&](const RegOperation& operation) {
        if (operation.kind == RegOperation::Kind::DeleteKey || operation.kind == RegOperation::Kind::DeleteValue) ++deletions_;
    });
    return {Ort::Art::RegFileExport, store.get(), std::move(store)};
}

}  // namespace brenvik::cli
