// The engine without a window: building the tree, showing Tips.
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <map>

#include "Generator.h"
#include "Writer.h"
#include "SilentPort.h"
#include "registry/machine/FirstStart.h"
#include "registry/machine/LocalMachines.h"
#include "registry/store/SqliteStore.h"
#include "tipdb/LoadDB.h"
#include "tipengine/TipEngine.h"

namespace brenvik::bench {
namespace {

namespace fs = std::filesystem;
constexpr int Tipps = 50000, Gruppen = 50;

class Folders {
public:
    Folders() : path_(fs::temp_directory_path() / ("bench_tipengine." + std::to_string(getpid()))) { fs::create_directories(path_); }
    ~Folders() {
        std::error_code ec;
        fs::remove_all(path_, ec);
    }
    const fs::path& path() const { return path_; }

private:
    fs::path path_;
};

struct World {
    explicit World(bool filled = false) : store(folder.path() / "registry.db") {
        const fs::path program = BRENVIK_PROGRAMM_DIR;
        if (filled) {
            fillEmptyStore(store, program / "erststart");
            copyDriveC(program / "erststart", folder.path());
        }
        ctx.intBS = 6;
        ctx.homePath = folder.path();
        ctx.einstellungen.BSSystemAktiv = false;
    }
    void load(const fs::path& file) {
        if (LoadDB(ctx, file) == LoadResult::Loaded) engine.tree().TreeEinlesen();
    }
    Folders folder;
    SilentPort port;
    SilentPlatform platform;
    SqliteStore store;
    LocalMachines machines{store};
    Context ctx{port, platform, machines};
    WindowObserver observer;
    ChangeRecorder recorder;
    TipEngine engine{ctx, observer, recorder};
};

void TreeOf50000Tips(benchmark::State& state) {
    World w;
    for (int g = 0; g < Gruppen; ++g) {
        w.ctx.udtGruppen.push_back({"Gruppe " + std::to_string(g), g, {}, -1, {}});
        w.ctx.udtTreebaum.push_back({g, 1, 1, g});
    }
    for (int k = 0; k < Tipps; ++k) {
        w.ctx.udtTippListe.push_back({k, "Tipp " + std::to_string(k * 7919 % Tipps), 2, "1.0.0", {true, true, true, true, true, true, true}});
        auto& group = w.ctx.udtGruppen[static_cast<std::size_t>(k % Gruppen)];
        group.Tipps.push_back(k);
        ++group.TippAnzahl;
    }
    for (auto _ : state) {
        w.engine.tree().TreeEinlesen();
        for (int g = 1; g < Gruppen; ++g) benchmark::DoNotOptimize(displayOrder(w.ctx.frmBVK_Prog, w.ctx.frmBVK_Prog.tvBVKDB[0].kinder[static_cast<std::size_t>(g)]));
    }
}
BENCHMARK(TreeOf50000Tips)->Unit(benchmark::kMillisecond);

void ShowTipOfTenValues(benchmark::State& state) {
    World w;
    const fs::path file = w.folder.path() / "gross.mdb";
    tipbuild::writeDatabase(tipbuild::generated(50000), file);
    w.load(file);
    const std::string heading = w.ctx.udtTippListe.at(0).Überschrift;
    for (auto _ : state)
        if (!w.engine.tree().showTipByHeading(heading)) state.SkipWithError("not shown");
    state.counters["values"] = static_cast<double>(w.ctx.aktuellerTipp.lastEntry());
    if (w.port.boxes != 0) state.SkipWithError("boxes came");
}
BENCHMARK(ShowTipOfTenValues)->Unit(benchmark::kMicrosecond);

// The slowest Tip of the shipped database is what counts.
void ShowEachShippedTip(benchmark::State& state) {
    World w(true);
    w.load(fs::path(BRENVIK_PROGRAMM_DIR) / "RegDaten.mdb");
    // The best of each Tip's times, so that a machine with other work does not count against it.
    std::map<std::int32_t, double> best;
    for (auto _ : state)
        for (const auto& tipp : w.ctx.udtTippListe) {
            const auto start = std::chrono::steady_clock::now();
            w.engine.tree().showTipByHeading(tipp.Überschrift);
            const double ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
            const auto [place, first] = best.try_emplace(tipp.Index, ms);
            if (!first) place->second = std::min(place->second, ms);
        }
    const auto slowest = std::max_element(best.begin(), best.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
    state.counters["slowest_ms"] = slowest->second;
    state.SetLabel("Tip " + std::to_string(slowest->first));
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * w.ctx.udtTippListe.size()));
}
BENCHMARK(ShowEachShippedTip)->Unit(benchmark::kMillisecond);

// A list of keys, as context menus have them.
void ShowKeyListOf5000(benchmark::State& state) {
    World w(true);
    w.load(fs::path(BRENVIK_PROGRAMM_DIR) / "RegDaten.mdb");
    w.store.transaction([&] {
        for (int k = 0; k < 5000; ++k)
            w.store.setValue(Root::LocalMachine, "Software\\Classes\\Drive\\shell\\Eintrag" + std::to_string(k), ValueName::unnamed(), fromText("Text", 1));
    });
    for (auto _ : state)
        if (!w.engine.tree().showTipByNumber(607)) state.SkipWithError("not shown");
    state.counters["rows"] = static_cast<double>(w.ctx.frmBVK_Prog.panels.at(0).lines.size());
}
BENCHMARK(ShowKeyListOf5000)->Unit(benchmark::kMillisecond);

void ShowFileListOf200(benchmark::State& state) {
    World w(true);
    w.load(fs::path(BRENVIK_PROGRAMM_DIR) / "RegDaten.mdb");
    const fs::path folder = w.folder.path() / "drive_c/WINDOWS/system32";
    for (int k = 0; k < 180; ++k) std::ofstream(folder / ("x" + std::to_string(k) + ".cpl")) << "x";
    for (auto _ : state)
        if (!w.engine.tree().showTipByNumber(3603)) state.SkipWithError("not shown");
    state.counters["rows"] = static_cast<double>(w.ctx.frmBVK_Prog.panels.at(0).lines.size());
}
BENCHMARK(ShowFileListOf200)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brenvik::bench
