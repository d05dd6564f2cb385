// Whatever a registry.db holds, as bytes or as rows of a sound file: it is read or refused, told in bounded time and pieces,
// and what is left of it can be changed and deleted.
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "registry/RegOperations.h"
#include "registry/Upcase.h"
#include "registry/search/Search.h"
#include "registry/store/SqliteStore.h"
#include "registry/text/RegTextWriter.h"

using namespace brenvik;
namespace fs = std::filesystem;

namespace {

constexpr int OpenForWriting = 2;   // SQLITE_OPEN_READWRITE
constexpr auto LongestRun = std::chrono::seconds(5);

// A folder for this process, emptied before each use.
const fs::path& folder() {
    static const fs::path path = [] {
        const fs::path made = fs::temp_directory_path() / ("fuzz-registry-" + std::to_string(std::random_device()()));
        fs::create_directories(made);
        std::atexit([] { std::error_code ignored; fs::remove_all(folder(), ignored); });
        return made;
    }();
    return path;
}

fs::path freshFile() {
    for (const auto& entry : fs::directory_iterator(folder())) fs::remove_all(entry.path());
    return folder() / "registry.db";
}

std::string makeSeed() {
    const fs::path file = freshFile();
    {
        SqliteStore store(file);
        for (const char* key : {"Software\\Classes\\.txt", "System\\ControlSet001\\Control", "System\\Select"})
            store.setValue(Root::LocalMachine, key, ValueName::named("Current"), fromText("1", regtype::Dword));
        store.setValue(Root::CurrentUser, "Software\\Classes\\.TXT\\\xC3\xA4", ValueName::unnamed(), fromText("x", regtype::Sz));
        store.setDetails(Root::CurrentUser, "Software", {{'C', 0}, 5, {1, 0, 4, 0x80}, true});
    }
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

const std::string& seedStore() {
    static const std::string bytes = makeSeed();
    return bytes;
}

// Takes the input apart, a little at a time; zeros when it has ended.
class Source {
public:
    Source(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}
    bool empty() const { return left_ == 0; }
    std::uint8_t byte() { return left_ == 0 ? 0 : (--left_, *data_++); }
    std::string text() {
        std::string result(byte() % 40, '\0');
        for (char& c : result) c = static_cast<char>(byte());
        return result;
    }

private:
    const std::uint8_t* data_;
    std::size_t left_;
};

void addRows(const fs::path& file, Source source) {
    sqlite::Database database(file.string(), OpenForWriting);
    sqlite::Statement key(database.handle(), "INSERT OR REPLACE INTO key(id, parent, folded, name, class, written, descriptor, readonly) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?6, ?7)");
    sqlite::Statement value(database.handle(), "INSERT OR REPLACE INTO value(id, key, folded, name, type, bytes) VALUES (?1, ?2, ?3, ?4, ?5, ?6)");
    database.execute("BEGIN");
    while (!source.empty()) {
        const std::uint8_t kind = source.byte();
        const std::int64_t id = static_cast<std::int8_t>(source.byte()), parent = static_cast<std::int8_t>(source.byte());
        const std::string name = source.text(), other = source.text(), folded = (kind & 2) != 0 ? other : foldedBytesOf(name);
        auto row = (kind & 1) != 0 ? key.run() : value.run();
        row.bind(1, id).bind(2, parent).bindBytes(3, folded.data(), folded.size());
        (kind & 4) != 0 ? row.bindBytes(4, name.data(), name.size()) : row.bind(4, std::string_view(name));
        if ((kind & 1) != 0) row.bindBytes(5, other.data(), other.size()).bind(6, std::int64_t{source.byte()} << (kind >> 2)).bind(7, std::int64_t{source.byte()} & 1);
        else row.bind(5, std::int64_t{source.byte()} << (kind >> 2)).bindBytes(6, other.data(), other.size());
        row.step();
    }
    database.execute("COMMIT");
}

struct Counting final : TreeSink {
    void enter(std::string_view, const KeyDetails&) override {
        if (++depth > MaxKeyDepth + 10 || ++keys > 1000000) std::abort();
    }
    void value(std::string_view, const RawValue&) override {}
    void leave() override { --depth; }
    std::size_t depth = 0, keys = 0;
};

template <class Work> void tried(const Work& work) {
    try {
        work();
    } catch (const RegError&) {
    }
}

void use(const fs::path& file) {
    SqliteStore store(file, {.create = false});
    for (const Root root : {Root::LocalMachine, Root::Users, Root::CurrentUser, Root::ClassesRoot, Root::CurrentConfig}) {
        tried([&] {
            Counting count;
            store.walk(root, "", count);
        });
        tried([&] {
            RegTextWriter writer(RegTextWriter::Format::Version5, [](std::string_view) {});
            writer.tree(store, root, "");
        });
        tried([&] {
            for (const std::string& name : store.subKeys(root, "")) {
                store.keyExists(root, name);
                store.values(root, name);
            }
        });
    }
    tried([&] { suchen(store, Root::LocalMachine, "", *makeTextMuster("current"), {}, {[](const Hits&) {}, {}, {}, {}}); });
    tried([&] { store.setValue(Root::CurrentUser, "Software\\Neu", ValueName::named("v"), fromText("x", regtype::Sz)); });
    tried([&] { deleteTree(store, Root::LocalMachine, "Software"); });
    tried([&] { store.clear(Root::LocalMachine, ""); });
    tried([&] { store.clear(Root::Users, ""); });
}

}  // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed) {
    if (size < 2) {
        const bool rows = seed % 2 != 0 || most < seedStore().size() + 1;
        data[0] = rows ? 1 : 0;
        size = rows ? std::min<std::size_t>(most, 200) : seedStore().size() + 1;
        if (rows) std::fill(data + 1, data + size, static_cast<std::uint8_t>(seed));
        else std::copy(seedStore().begin(), seedStore().end(), data + 1);
    }
    return LLVMFuzzerMutate(data, size, most);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const auto start = std::chrono::steady_clock::now();
    const bool rows = data[0] % 2 != 0;
    const std::string& seed = seedStore();
    const fs::path file = freshFile();
    std::ofstream(file, std::ios::binary) << (rows ? seed : std::string(reinterpret_cast<const char*>(data + 1), size - 1));
    try {
        if (rows) addRows(file, Source(data + 1, size - 1));
        use(file);
    } catch (const RegError&) {
    } catch (const sqlite::Error&) {   // rows that no file can hold
        if (!rows) std::abort();
    }
    if (std::chrono::steady_clock::now() - start > LongestRun) std::abort();
    return 0;
}
