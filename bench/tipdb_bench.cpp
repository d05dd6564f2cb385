// Opening and reading databases of 50,000 rows into the tables in memory, and reading single Tips from them.
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <cstdlib>

#include "Generator.h"
#include "Writer.h"
#include "SilentPort.h"
#include "frame/files/FileSystem.h"
#include "registry/machine/LocalMachines.h"
#include "registry/store/SqliteStore.h"
#include "tipdb/LoadDB.h"
#include "tipdb/RecordReader.h"

namespace brenvik::bench {
namespace {

namespace fs = std::filesystem;
constexpr std::size_t Rows = 50000;

// The databases, made once, in a folder that goes away with the program.
class Dateien {
public:
    Dateien() : folder_(fs::temp_directory_path() / ("bench_tipdb." + std::to_string(getpid()))) {
        fs::create_directories(folder_);
        tipbuild::writeDatabase(tipbuild::generated(Rows), folder_ / "sqlite.mdb");
    }
    ~Dateien() {
        std::error_code ec;
        fs::remove_all(folder_, ec);
    }
    fs::path sqlite() const { return folder_ / "sqlite.mdb"; }
    // Empty if it cannot be made here (it takes python3).
    fs::path jet(int version) const {
        const fs::path file = folder_ / ("jet" + std::to_string(version) + ".mdb");
        if (fs::exists(file)) return file;
        const std::string script = std::string(BRENVIK_SOURCE_DIR) + "/tests/data/tools/jet_aus_sqlite.py";
        const std::string command = "python3 -B '" + script + "' '" + sqlite().string() + "' '" + file.string() + "' " + std::to_string(version);
        return std::system(command.c_str()) == 0 ? file : fs::path();
    }
    fs::path store() const { return folder_ / "registry.db"; }

private:
    fs::path folder_;
};

const Dateien& dateien() {
    static const Dateien files;
    return files;
}

struct World {
    World() : ctx(port, platform, machines) {
        store.setValue(Root::LocalMachine, "Software\\Microsoft\\DataAccess", ValueName::named("Version"), fromText("2.8", regtype::Sz));
        store.createKey(Root::LocalMachine, "Software\\Microsoft\\Jet");
        ctx.intBS = 6;
    }
    SilentPort port;
    SilentPlatform platform;
    SqliteStore store{dateien().store()};
    LocalMachines machines{store};
    TipdbContext ctx;
};

void load(benchmark::State& state, const fs::path& file) {
    if (file.empty()) return state.SkipWithError("python3 is not there to make the Jet file");
    World w;
    for (auto _ : state) {
        if (LoadDB(w.ctx, file) != LoadResult::Loaded || w.port.boxes != 0) state.SkipWithError("not loaded");
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * Rows));
}

void LoadSqlite(benchmark::State& state) { load(state, dateien().sqlite()); }
void LoadJet3(benchmark::State& state) { load(state, dateien().jet(3)); }
void LoadJet4(benchmark::State& state) { load(state, dateien().jet(4)); }
BENCHMARK(LoadSqlite)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadJet3)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadJet4)->Unit(benchmark::kMillisecond);

// A click in the tree: the table afresh, the heading found, a Tip of ten values read.
void ReadTipOfTenValues(benchmark::State& state) {
    World w;
    LoadDB(w.ctx, dateien().sqlite());
    std::size_t tip = 0;
    for (std::size_t i = 0; i < w.ctx.udtTippListe.size(); ++i) {
        w.ctx.objRS->MoveFirst();
        w.ctx.objRS->moveToNumber(spalte::Index, w.ctx.udtTippListe[i].Index);
        if (w.ctx.udtTippListe[i].Index > 20000 && w.ctx.objRS->number<int>(spalte::AnzahlWerte) == 9) {
            tip = i;
            break;
        }
    }
    for (auto _ : state) {
        w.ctx.objRS = w.ctx.objDB.GetNewRS(w.ctx, w.ctx.objVerbindung.get(), "Select * From RegDaten");
        w.ctx.objRS->moveToText(spalte::Überschrift, w.ctx.udtTippListe[tip].Überschrift);
        DBTippRead(w.ctx);
        if (w.ctx.aktuellerTipp.lastEntry() != 10 || w.port.boxes != 0) state.SkipWithError("not the Tip of ten values");
    }
}
BENCHMARK(ReadTipOfTenValues)->Unit(benchmark::kMicrosecond);

void SearchInDescriptions(benchmark::State& state) {
    World w;
    LoadDB(w.ctx, dateien().sqlite());
    for (auto _ : state) {
        const auto rs = w.ctx.objDB.GetNewRS(w.ctx, w.ctx.objVerbindung.get(),
                                             "Select Index, Überschrift, Beschreibung, Wertname, HauptIndex From RegDaten where Beschreibung Like '%stelle 1.%' order by 1");
        if (rs->RecordCount() == 0) state.SkipWithError("nothing found");
    }
}
BENCHMARK(SearchInDescriptions)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brenvik::bench
