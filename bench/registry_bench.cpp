// The embedded registry: reading one value in a large store, and writing changed values.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "registry/BVKRegistry.h"
#include "registry/LocalMachines.h"
#include "registry/RegText.h"
#include "registry/SqliteStore.h"

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

}  // namespace
