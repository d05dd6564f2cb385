// The window, offscreen: start to the usable window, tabs, keys in the tree, showing Tips, memory. The goals stand in the
// names of the counters: goal_ms and goal_MB.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>
#include <QProcess>
#include <QScrollBar>
#include <chrono>
#include <cstdio>
#include <fstream>

#include "Generator.h"
#include "Writer.h"
#include "SilentPort.h"
#include "browser/RegBrowser.h"
#include "registry/Settings.h"
#include "registry/ValueOperations.h"
#include "shell/QtPort.h"
#include "shell/main/frmBVK_Prog.h"
#include "shell/program/ConnectHelp.h"
#include "shell/program/EngineEvents.h"
#include "shell/program/WindowProgram.h"
#include "shell/widgets/Colours.h"
#include "shell/windows/frmBVK_HistoryListe.h"
#include "shell/windows/frmBVK_RegBrowse.h"
#include "tipdb/TipSearch.h"
#include "tipengine/Program.h"

namespace brenvik::bench {
namespace {

namespace fs = std::filesystem;
constexpr std::size_t ManyTips = 50000;

// A program directory with its database, and a home that was used before.
class Folders {
public:
    explicit Folders(bool many) : path_(fs::temp_directory_path() / ("bench_shell." + std::to_string(QCoreApplication::applicationPid()) + (many ? ".viele" : ""))) {
        fs::create_directories(program());
        const fs::path shipped = BRENVIK_PROGRAMM_DIR;
        fs::copy(shipped / "erststart", program() / "erststart", fs::copy_options::recursive);
        if (many)
            tipbuild::writeDatabase(tipbuild::generated(ManyTips), program() / "RegDaten.mdb");
        else
            fs::copy_file(shipped / "RegDaten.mdb", program() / "RegDaten.mdb");
    }
    ~Folders() {
        std::error_code error;
        fs::remove_all(path_, error);
    }
    Folders(const Folders&) = delete;
    Folders& operator=(const Folders&) = delete;
    fs::path program() const { return path_ / "programm"; }
    fs::path home() const { return path_ / "heim"; }

private:
    fs::path path_;
};

// Nobody is there to answer: some Tips ask for a file that the shipped system does not have.
class SilentQtPort final : public QtPort {
public:
    Answer messageBox(const MessageBox& request) override { return (request.flags & box::YesNo) != 0 ? Answer::No : Answer::OK; }
    std::optional<std::string> chooseFile(const FileChoice&) override { return std::nullopt; }
    void showWindow(WindowRequest&) override {}
    void playSound(const std::string&) override {}
    void sleepMs(int) override {}
};

// The running program, from its start to its painted window.
struct WindowRun {
    explicit WindowRun(const Folders& folder)
        : program(port, platform, {folder.home(), folder.program()}, relay, recorders),
          window(program.context().frmBVK_Prog, program.context().einstellungen, displayOrder), events(program.engine()) {
        Context& ctx = program.context();
        connectHelp(parts);
        program.loadSettings();
        ctx.einstellungen.SoundOn = false;
        ctx.einstellungen.BSSystemAktiv = false;
        program.engine().FrameStartEinstellungen();
        window.applySettings(loadWindowSettings(ctx));
        program.detectSystem();
        if (!program.loadDatabase()) throw std::runtime_error("no database");
        relay.target = &window;
        window.attach(events);
        program.engine().tree().TreeEinlesen();
        window.resize(980, 720);
        window.show();
        settle();
    }
    // Until everything that happened is on the screen.
    void settle() {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
    TipTreeView& tree() { return *window.findChild<TipTreeView*>(QStringLiteral("tvBVKDB")); }

    SilentQtPort port;
    SilentPlatform platform;
    ObserverRelay relay;
    Recorders recorders;
    Program program;
    frmBVK_Prog window;
    EngineEvents events;
    LoadSteps steps;
    WindowParts parts{*qApp, port, program, window, steps, recorders};
};

double residentMegabytes(const char* field) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.rfind(field, 0) == 0) return std::stod(line.substr(std::string(field).size() + 1)) / 1024;
    return 0;
}

// The whole program as the user starts it: checks, load sequence with its windows and lists. The told pauses are left out.
struct ProgramRun {
    explicit ProgramRun(const Folders& folder) : program(*qApp, {{folder.home(), folder.program()}, {}, {}}, port, platform) {}
    void start() {
        if (!program.start()) throw std::runtime_error("no start");
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
    SilentQtPort port;
    SilentPlatform platform;
    WindowProgram program;
};

void start(benchmark::State& state, bool many, double goal) {
    const Folders folder(many);
    {
        ProgramRun first(folder);     // makes the home
        SaveRegistryKey(first.program.program().context(), std::string(SettingsPath) + "ShowInfo", "False", 1);
        first.start();
    }
    for (auto _ : state) {
        auto run = std::make_unique<ProgramRun>(folder);
        run->start();
        state.PauseTiming();
        if (!run->program.windows().isVisible()) state.SkipWithError("no window");
        run.reset();
        state.ResumeTiming();
    }
    state.counters["goal_ms"] = goal;
}
void StartShipped(benchmark::State& state) { start(state, false, 400); }
void StartMany(benchmark::State& state) { start(state, true, 1500); }
BENCHMARK(StartShipped)->Unit(benchmark::kMillisecond);
BENCHMARK(StartMany)->Unit(benchmark::kMillisecond);

// From all Tips in groups to the flat list and back: the two most different views.
void TabSwitchMany(benchmark::State& state) {
    const Folders folder(true);
    WindowRun run(folder);
    int tab = 1;
    for (auto _ : state) {
        tab = tab == 1 ? 2 : 1;
        run.events.selectTab(tab);
        run.settle();
    }
    state.counters["goal_ms"] = 500;
}
BENCHMARK(TabSwitchMany)->Unit(benchmark::kMillisecond);

// Arrow down through the flat list: the next Tip with its panels is on the screen.
void KeyInTree(benchmark::State& state, bool many) {
    const Folders folder(many);
    WindowRun run(folder);
    run.events.selectTab(2);
    run.tree().setFocus();
    run.settle();
    double slowest = 0;
    for (auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent key(type, Qt::Key_Down, Qt::NoModifier);
            QApplication::sendEvent(&run.tree(), &key);
        }
        run.settle();
        slowest = std::max(slowest, std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count());
    }
    if (run.program.context().aktuellerTipp.Überschrift.empty()) state.SkipWithError("no Tip was shown");
    state.counters["slowest_ms"] = slowest;
    state.counters["goal_ms"] = 50;
}
void KeyInTreeShipped(benchmark::State& state) { KeyInTree(state, false); }
void KeyInTreeMany(benchmark::State& state) { KeyInTree(state, true); }
BENCHMARK(KeyInTreeShipped)->Unit(benchmark::kMillisecond)->Iterations(300);
BENCHMARK(KeyInTreeMany)->Unit(benchmark::kMillisecond)->Iterations(300);

// All three columns, with some hundred hits, and with none.
void SearchMany(benchmark::State& state, const char* text) {
    const Folders folder(true);
    WindowRun run(folder);
    std::vector<SearchHit> hits;
    SearchOrder wanted;
    wanted.txtSuchText = text;
    for (auto _ : state) DBSuchen(run.program.context(), searchCondition(wanted), hits);
    state.counters["hits"] = static_cast<double>(hits.size());
    state.counters["goal_ms"] = 100;
}
void SearchManyHits(benchmark::State& state) { SearchMany(state, "77"); }
void SearchManyNothing(benchmark::State& state) { SearchMany(state, "Quietscheentchen"); }
BENCHMARK(SearchManyHits)->Unit(benchmark::kMillisecond);
BENCHMARK(SearchManyNothing)->Unit(benchmark::kMillisecond);

// --- windows with very many rows ---

constexpr int ManyKeys = 100'000;

// A key opened in the registry browser, painted, and shut again.
void BrowserManyKeys(benchmark::State& state) {
    const Folders folder(false);
    WindowRun run(folder);
    RegStore& store = run.program.context().objBVKReg.selectedStore();
    store.transaction([&] {
        for (int i = 0; i < ManyKeys; ++i) store.createKey(Root::CurrentUser, "Software\\Viele\\Schluessel" + std::to_string(i));
    });
    const auto browser = makeRegBrowser(run.program.context(), run.recorders);
    RegBrowseRequest request(*browser);
    frmBVK_RegBrowse window(run.port, request, nullptr);
    window.show();
    if (!window.goTo("HKEY_CURRENT_USER\\Software\\Viele")) state.SkipWithError("no key");
    auto& keys = *window.findChild<QTreeView*>(QStringLiteral("tvwReg"));
    for (auto _ : state) {
        keys.expand(keys.currentIndex());
        keys.grab();
        keys.collapse(keys.currentIndex());
    }
}
BENCHMARK(BrowserManyKeys)->Unit(benchmark::kMillisecond);

void HistoryManyRows(benchmark::State& state) {
    HistoryListeRequest request;
    for (std::int32_t row = 1; row <= ManyKeys; ++row) request.lines.push_back({row, 0});
    request.zeile = [](std::size_t row) { return HistoryListeRequest::Zeile{"09.11.2002", "12:30:00", "BRENVIK-PC", "Tipp " + std::to_string(row)}; };
    for (auto _ : state) {
        frmBVK_HistoryListe window(request, nullptr);
        window.show();
        window.grab();
    }
}
BENCHMARK(HistoryManyRows)->Unit(benchmark::kMillisecond);

// Memory of a process of its own, in which nothing was measured before: started, the tree opened, 20 Tips looked at.
int printMemory(bool many) {
    const Folders folder(many);
    WindowRun run(folder);
    run.tree().expandAll();
    const auto& tips = run.program.context().udtTippListe;
    for (std::size_t i = 0; i < tips.size() && i < 20; ++i) {
        run.program.engine().tree().showTipByNumber(tips[i * tips.size() / 20].Index);
        run.settle();
    }
    std::printf("%.1f %.1f\n", residentMegabytes("VmRSS:"), residentMegabytes("VmHWM:"));
    return 0;
}

void memory(benchmark::State& state, const char* which, double goal) {
    double now = 0, most = 0;
    for (auto _ : state) {
        QProcess own;
        own.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--memory"), QLatin1String(which)});
        own.waitForFinished(-1);
        if (std::sscanf(own.readAllStandardOutput().constData(), "%lf %lf", &now, &most) != 2) state.SkipWithError("not measured");
    }
    state.counters["MB"] = now;
    state.counters["peak_MB"] = most;
    state.counters["goal_MB"] = goal;
}
void MemoryShipped(benchmark::State& state) { memory(state, "shipped", 120); }
void MemoryMany(benchmark::State& state) { memory(state, "many", 300); }
BENCHMARK(MemoryShipped)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(MemoryMany)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace brenvik::bench

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    brenvik::setColourMode(application, brenvik::ColourMode::Light);
    if (argc == 3 && std::string(argv[1]) == "--memory") return brenvik::bench::printMemory(std::string(argv[2]) == "many");
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
