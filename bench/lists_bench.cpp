// The history with very many records: loading, one more save, the rows of its window.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <fstream>

#include "SilentPort.h"
#include "lists/ListFolders.h"
#include "lists/Lists.h"
#include "registry/machine/LocalMachines.h"
#include "registry/store/SqliteStore.h"

namespace brenvik::bench {
namespace {

namespace fs = std::filesystem;
constexpr int Lines = 100'000;

struct World {
    World() : folder(fs::temp_directory_path() / ("bench_lists." + std::to_string(getpid()))) {
        fs::remove_all(folder);
        fs::create_directories(folder);
        std::ofstream file(folder / HistoryFile, std::ios::binary);
        for (int k = 0; k < Lines; ++k) file << "09.11.2002#12:30:00#BRENVIK-PC#" << k % 500 + 1 << "#alter Wert " << k << "#" << k % 500 + 2 << "#<Key nicht vorhanden>#\r\n";
        file.close();
        store = std::make_unique<SqliteStore>(folder / "registry.db");
        machines = std::make_unique<LocalMachines>(*store);
        ctx = std::make_unique<Context>(port, platform, *machines);
        ctx->homePath = folder;
        ctx->einstellungen.strHistoryPfad = ctx->einstellungen.strFavoritenPfad = folder.string() + "/";
        engine = std::make_unique<TipEngine>(*ctx, observer, recorder);
        lists = std::make_unique<Listen>(*engine);
    }
    ~World() {
        lists.reset();
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    fs::path folder;
    SilentPort port;
    SilentPlatform platform;
    std::unique_ptr<SqliteStore> store;
    std::unique_ptr<LocalMachines> machines;
    std::unique_ptr<Context> ctx;
    WindowObserver observer;
    ChangeRecorder recorder;
    std::unique_ptr<TipEngine> engine;
    std::unique_ptr<Listen> lists;
};

void LoadHistory100000(benchmark::State& state) {
    World w;
    for (auto _ : state)
        if (!w.lists->history().LoadHistory()) state.SkipWithError("not loaded");
    state.counters["records"] = static_cast<double>(w.lists->history().udtHistory().size());
}
BENCHMARK(LoadHistory100000)->Unit(benchmark::kMillisecond);

// The list window up to the rows that one sees; the window itself draws only these.
void OpenHistoryWindow100000(benchmark::State& state) {
    World w;
    w.lists->LoadFHListe();
    std::size_t rows = 0;
    w.port.onWindow = [&](WindowRequest& request) {
        auto& list = dynamic_cast<HistoryListeRequest&>(request);
        rows = list.lines.size();
        for (std::size_t row = rows - 30; row < rows; ++row) benchmark::DoNotOptimize(list.zeile(row));
    };
    for (auto _ : state) w.lists->historyWindows().open();
    if (rows != Lines) state.SkipWithError("not all rows");
}
BENCHMARK(OpenHistoryWindow100000)->Unit(benchmark::kMillisecond);

// One save with two values: the line before the first write, the journal with both values, marked one by one.
void OneMoreSave(benchmark::State& state) {
    World w;
    w.lists->LoadFHListe();
    Change change;
    change.tippIndex = 1;
    for (std::int16_t k = 1; k <= 2; ++k)
        change.values.push_back({"", "HKEY_CURRENT_USER\\Software\\Bench\\Wert" + std::to_string(k), k, fromText("alt", 1), fromText("neu", 1), true});
    for (auto _ : state) {
        w.lists->begin(change);
        for (std::size_t k = 0; k < change.values.size(); ++k) w.lists->written(change, k);
        w.lists->finished(change);
    }
    if (w.port.boxes != 0) state.SkipWithError("boxes came");
    state.counters["records"] = static_cast<double>(w.lists->history().udtHistory().size());
}
BENCHMARK(OneMoreSave)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brenvik::bench
