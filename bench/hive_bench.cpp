// Hive files of the size of a real machine's: opening and walking, reading into a tree, writing whole, one value changed.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>

#include "GeneratedHive.h"
#include "registry/hive/HiveChecker.h"
#include "registry/hive/HiveReader.h"
#include "registry/hive/HiveView.h"
#include "registry/hive/HiveWriter.h"

using namespace brenvik;

namespace {

// Made once for each size; the file can be written out for comparing with other programs (BRENVIK_BENCH_HIVE=folder).
const Bytes& fileOf(std::int64_t keys) {
    static std::map<std::int64_t, Bytes> files;
    Bytes& file = files[keys];
    if (file.empty()) {
        file = writeHive(generatedHive(keys));
        if (const char* const folder = std::getenv("BRENVIK_BENCH_HIVE")) {
            if (std::FILE* const out = std::fopen((std::string(folder) + "/" + std::to_string(keys) + ".hiv").c_str(), "wb")) {
                std::fwrite(file.data(), 1, file.size(), out);
                std::fclose(out);
            }
        }
    }
    return file;
}

class Counting final : public HiveVisitor {
public:
    void enter(const HiveKeyRecord& key) override { units += key.name.units(), ++keys; }
    void value(const HiveValueRecord& value) override { units += value.name.units() + value.size, ++values; }
    void leave() override {}
    std::uint64_t keys = 0, values = 0, units = 0;
};

void label(benchmark::State& state, const Bytes& file, std::uint64_t keys, std::uint64_t values) {
    state.SetLabel(std::to_string(keys) + " keys, " + std::to_string(values) + " values, " + std::to_string(file.size() >> 10) + " KiB");
}

void openAndWalk(benchmark::State& state) {
    const Bytes& file = fileOf(state.range(0));
    Counting counting;
    for (auto _ : state) {
        counting = {};
        HiveFindings findings(HiveMode::Strict);
        HiveView view(file, findings);
        walkHive(view, counting);
        benchmark::DoNotOptimize(counting.units);
    }
    label(state, file, counting.keys, counting.values);
}

void readTree(benchmark::State& state) {
    const Bytes& file = fileOf(state.range(0));
    HiveCounts counts;
    for (auto _ : state) {
        const HiveReading reading = readHive(file);
        state.PauseTiming();
        counts = count(reading.hive.root);
        state.ResumeTiming();
    }
    label(state, file, counts.keys, counts.values);
}

void writeWhole(benchmark::State& state) {
    const Hive hive = readHive(fileOf(state.range(0))).hive;
    std::size_t size = 0;
    for (auto _ : state) size = writeHive(hive).size();
    state.SetLabel(std::to_string(size >> 10) + " KiB");
}

void readChangeWrite(benchmark::State& state) {
    const Bytes& file = fileOf(state.range(0));
    for (auto _ : state) {
        Hive hive = readHive(file).hive;
        hive.root.subKeys.front().set("neu", {4, {1, 0, 0, 0}});
        benchmark::DoNotOptimize(writeHive(hive));
    }
}

void check(benchmark::State& state) {
    const Bytes& file = fileOf(state.range(0));
    for (auto _ : state) {
        if (!checkHive(file).empty()) state.SkipWithError("the generated hive is not good");
    }
}

#define BOTH_SIZES Arg(43000)->Arg(100000)->Unit(benchmark::kMillisecond)
BENCHMARK(openAndWalk)->BOTH_SIZES;
BENCHMARK(readTree)->BOTH_SIZES;
BENCHMARK(writeWhole)->BOTH_SIZES;
BENCHMARK(readChangeWrite)->BOTH_SIZES;
BENCHMARK(check)->BOTH_SIZES;

}  // namespace
