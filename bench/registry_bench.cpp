// The embedded registry: reading one value in a large store, and writing changed values.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "GeneratedHive.h"
#include "registry/BVKRegistry.h"
#include "registry/hivefile/HiveFilesImpl.h"
#include "registry/hivefile/HiveStore.h"
#include "registry/machine/LocalMachines.h"
#include "registry/search/Search.h"
#include "registry/store/RegTree.h"
#include "registry/store/SqliteStore.h"
#include "registry/text/RegText.h"
#include "registry/text/RegTextWriter.h"

using namespace brenvik;

namespace {

constexpr int Groups = 100, KeysPerGroup = 100, ValuesPerKey = 30;   // 300,000 values in 10,000 keys at depth 6

std::string keyOf(int group, int key) {
    return "Software\\Hersteller\\Programm\\Version " + std::to_string(group % 10) + "\\Gruppe " + std::to_string(group) + "\\Schlüssel " + std::to_string(key);
}

std::string valueOf(int value) { return "Einstellung Nummer " + std::to_string(value); }

// A store in a folder of its own, made once for all benchmarks.
struct Large {
    std::filesystem::path folder;
    std::unique_ptr<SqliteStore> store;

    Large() {
        std::random_device random;
        folder = std::filesystem::temp_directory_path() / ("brenvik-bench-" + std::to_string(random()));
        std::filesystem::create_directories(folder);
        store = std::make_unique<SqliteStore>(folder / "registry.db");
        store->transaction([&] {
            for (int group = 0; group < Groups; ++group) {
                for (int key = 0; key < KeysPerGroup; ++key) {
                    for (int value = 0; value < ValuesPerKey; ++value) {
                        store->setValue(Root::CurrentUser, keyOf(group, key), ValueName::named(valueOf(value)), fromText(std::to_string(value), regtype::Sz));
                    }
                }
            }
        });
    }
    ~Large() {
        store.reset();
        std::error_code error;
        std::filesystem::remove_all(folder, error);
    }
    static Large& get() {
        static Large large;
        return large;
    }
};

// Paths in an order that no cache of pages likes.
std::vector<std::string> shuffledPaths() {
    std::vector<std::string> paths;
    std::mt19937 random(42);
    for (int i = 0; i < 50000; ++i) {
        const auto pick = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
        paths.push_back("HKEY_CURRENT_USER\\" + keyOf(pick(Groups), pick(KeysPerGroup)) + "\\" + valueOf(pick(ValuesPerKey)));
    }
    return paths;
}

void existsAndRead(benchmark::State& state) {
    LocalMachines machines(*Large::get().store);
    TraceLog log;
    BVKRegistry registry(log, machines);
    const std::vector<std::string> paths = shuffledPaths();
    std::size_t next = 0;
    for (auto _ : state) {
        registry.SetPath("", paths[next++ % paths.size()]);
        if (!registry.Exists(KEY_QUERY_VALUE_MASK)) state.SkipWithError("value missing");
        benchmark::DoNotOptimize(registry.ReadValue(false));
    }
    state.SetLabel("SetPath + Exists + ReadValue, random value of 300,000 at depth 6");
}
BENCHMARK(existsAndRead);

void existsMissing(benchmark::State& state) {
    SqliteStore& store = *Large::get().store;
    int next = 0;
    for (auto _ : state) benchmark::DoNotOptimize(store.hasValue(Root::CurrentUser, keyOf(next++ % Groups, 1000), ValueName::unnamed()));
    state.SetLabel("hasValue in a key that is not there");
}
BENCHMARK(existsMissing);

void firstLook(benchmark::State& state) {
    const auto file = Large::get().store->file();
    for (auto _ : state) {
        SqliteStore store(file);
        benchmark::DoNotOptimize(store.value(Root::CurrentUser, keyOf(50, 50), ValueName::named(valueOf(1))));
    }
    state.SetLabel("open the store and read one value");
}
BENCHMARK(firstLook)->Unit(benchmark::kMicrosecond);

// Every write stores something new, so that none can be skipped.
void changedValues(benchmark::State& state) {
    SqliteStore& store = *Large::get().store;
    const bool together = state.range(0) != 0;
    std::mt19937 random(7);
    std::uint32_t number = static_cast<std::uint32_t>(random());
    std::vector<std::string> keys;
    for (int i = 0; i < 1000; ++i) keys.push_back(keyOf(static_cast<int>(random() % Groups), static_cast<int>(random() % KeysPerGroup)));
    const auto change = [&] {
        ++number;
        store.setValue(Root::CurrentUser, keys[number % keys.size()], ValueName::named(valueOf(static_cast<int>(number % ValuesPerKey))),
                       fromText(std::to_string(number), regtype::Dword));
    };
    for (auto _ : state) {
        if (!together) {
            change();
        } else {
            store.transaction([&] {
                for (int i = 0; i < 1000; ++i) change();
            });
        }
    }
    state.SetItemsProcessed(state.iterations() * (together ? 1000 : 1));
    state.SetLabel(together ? "1000 changed values a transaction" : "each changed value a commit of its own");
}
BENCHMARK(changedValues)->Arg(0)->Arg(1)->UseRealTime();

// Names and data of everything, with a text that is nowhere and one that every value's name has.
void searchAll(benchmark::State& state) {
    const auto pattern = makeTextMuster(state.range(0) != 0 ? "Nummer 29" : "nirgends");
    std::uint64_t hits = 0;
    for (auto _ : state) suchen(*Large::get().store, Root::CurrentUser, "", *pattern, {}, {[&](const Hits&) { ++hits; }, {}, {}});
    state.counters["hits"] = benchmark::Counter(static_cast<double>(hits), benchmark::Counter::kAvgIterations);
    state.SetLabel("search through 300,000 values");
}
BENCHMARK(searchAll)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void parseText(benchmark::State& state) {
    std::string text = "Windows Registry Editor Version 5.00\n";
    for (int key = 0; key < 1000; ++key) {
        text += "\n[HKEY_CURRENT_USER\\" + keyOf(key % Groups, key) + "]\n";
        for (int value = 0; value < 10; ++value) text += "\"" + valueOf(value) + "\"=hex(2):25,00,54,00,45,00,4d,00,50,00,25,00,00,00\n";
    }
    for (auto _ : state) {
        const RegText parsed = parseRegText(text);
        if (!parsed.ok()) state.SkipWithError("not read");
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
    state.SetItemsProcessed(state.iterations() * 10000);
    state.SetLabel("values of a REG text");
}
BENCHMARK(parseText)->Unit(benchmark::kMillisecond);

// A folder with a hive file of 43,000 keys (about 15 MB) or 100,000 keys and 300,000 values.
struct HiveFolder {
    std::filesystem::path folder, hive;

    explicit HiveFolder(std::int64_t keys) {
        std::random_device random;
        folder = std::filesystem::temp_directory_path() / ("brenvik-bench-" + std::to_string(random()));
        std::filesystem::create_directories(folder);
        hive = folder / "bench.hiv";
        const Bytes bytes = writeHive(generatedHive(keys));
        std::FILE* const out = std::fopen(hive.string().c_str(), "wb");
        std::fwrite(bytes.data(), 1, bytes.size(), out);
        std::fclose(out);
    }
    ~HiveFolder() {
        std::error_code error;
        std::filesystem::remove_all(folder, error);
    }
};

void hiveOpenAndReadOne(benchmark::State& state) {
    const HiveFolder files(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(openHiveFile(files.hive)->subKeys(Root::LocalMachine, "ControlSet1000"));
}

void hiveChangeOneAndWrite(benchmark::State& state) {
    const HiveFolder files(state.range(0));
    const auto store = openHiveFile(files.hive);
    std::uint32_t number = 0;
    for (auto _ : state) store->setValue(Root::LocalMachine, "ControlSet1000", ValueName::named("neu"), fromText(std::to_string(++number), regtype::Dword));
    state.SetLabel("whole new file, on the disk");
}

void hiveToEmbedded(benchmark::State& state) {
    const HiveFolder files(state.range(0));
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto store = std::make_unique<SqliteStore>(files.folder / (std::to_string(++round) + ".db"));
        state.ResumeTiming();
        const auto hive = openHiveFile(files.hive);
        copyTree(*hive, Root::LocalMachine, "", *store, Root::LocalMachine, "Kopie");
        state.PauseTiming();
        store.reset();
        state.ResumeTiming();
    }
    state.SetLabel("opening included");
}

void embeddedToHive(benchmark::State& state) {
    const HiveFolder files(state.range(0));
    SqliteStore store(files.folder / "quelle.db");
    const auto hive = openHiveFile(files.hive);
    copyTree(*hive, Root::LocalMachine, "", store, Root::LocalMachine, "Kopie");
    RegfHiveFiles hiveFiles;
    for (auto _ : state) {
        if (!hiveFiles.save(store, Root::LocalMachine, "Kopie", files.folder / "neu.hiv")) state.SkipWithError("not saved");
        state.PauseTiming();
        std::filesystem::remove(files.folder / "neu.hiv");
        state.ResumeTiming();
    }
    state.SetLabel("hive file on the disk");
}

void hiveToRegText(benchmark::State& state) {
    const HiveFolder files(state.range(0));
    std::size_t size = 0;
    for (auto _ : state) {
        RegTextWriter writer(RegTextWriter::Format::Version5);
        writer.tree(*openHiveFile(files.hive), Root::LocalMachine, "");
        size = writer.bytes().size();
    }
    state.SetLabel("opening included, " + std::to_string(size >> 20) + " MB of text in memory");
}

void importRegText(benchmark::State& state) {
    const HiveFolder files(state.range(0));
    RegTextWriter writer(RegTextWriter::Format::Version5);
    writer.tree(*openHiveFile(files.hive), Root::LocalMachine, "");
    const std::string text = writer.bytes();
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto store = std::make_unique<SqliteStore>(files.folder / (std::to_string(++round) + ".db"));
        state.ResumeTiming();
        const RegText parsed = parseRegText(text);
        if (!parsed.ok()) state.SkipWithError("not read");
        applyOperations(*store, parsed.operations);
        state.PauseTiming();
        store.reset();
        state.ResumeTiming();
    }
    state.SetLabel("parsed and put into the embedded store");
}

void searchHive(benchmark::State& state) {
    const HiveFolder files(state.range(0));
    const auto pattern = makeTextMuster("nirgends");
    for (auto _ : state) suchen(*openHiveFile(files.hive), Root::LocalMachine, "", *pattern, {}, {[](const Hits&) {}, {}, {}});
    state.SetLabel("opening included");
}

void searchEmbedded(benchmark::State& state) {
    const HiveFolder files(state.range(0));
    SqliteStore store(files.folder / "quelle.db");
    const auto hive = openHiveFile(files.hive);
    copyTree(*hive, Root::LocalMachine, "", store, Root::LocalMachine, "Kopie");
    const auto pattern = makeTextMuster("nirgends");
    for (auto _ : state) suchen(store, Root::LocalMachine, "", *pattern, {}, {[](const Hits&) {}, {}, {}});
}

#define BOTH_SIZES Arg(43000)->Arg(100000)->Unit(benchmark::kMillisecond)
BENCHMARK(hiveOpenAndReadOne)->BOTH_SIZES;
BENCHMARK(hiveChangeOneAndWrite)->BOTH_SIZES;
BENCHMARK(hiveToEmbedded)->BOTH_SIZES->Iterations(3);
BENCHMARK(embeddedToHive)->BOTH_SIZES->Iterations(3);
BENCHMARK(searchHive)->BOTH_SIZES;
BENCHMARK(searchEmbedded)->BOTH_SIZES;
BENCHMARK(hiveToRegText)->BOTH_SIZES;
BENCHMARK(importRegText)->BOTH_SIZES->Iterations(3);

}  // namespace
