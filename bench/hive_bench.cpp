// Hive files of the size of a real machine's: opening and walking, reading into a tree, writing whole, one value changed.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>

#include "registry/hive/HiveChecker.h"
#include "registry/hive/HiveReader.h"
#include "registry/hive/HiveView.h"
#include "registry/hive/HiveWriter.h"

using namespace brenvik;

namespace {

Bytes dataOf(std::size_t i) {
    // sizes as in a machine's hive: half dwords, the rest texts, now and then something long
    const std::size_t size = i % 2 == 0 ? 4 : i % 97 == 1 ? 900 : 12 + (i * 37) % 120;
    return Bytes(size, static_cast<std::uint8_t>(i));
}

Hive generate(std::size_t keys, std::size_t values) {
    Hive hive;
    hive.minorVersion = 5;
    hive.root.name = "ROOT";
    for (std::uint8_t i = 0; i < 40; ++i) {
        Bytes descriptor = defaultDescriptor();
        descriptor[24] = i;
        hive.descriptors.push_back(descriptor);
    }
    hive.root.security = 0;
    std::size_t made = 1, given = 0;
    for (std::size_t group = 0; made < keys; ++group) {
        HiveKey& top = hive.root.ensure("ControlSet" + std::to_string(1000 + group));
        top.security = 0;
        ++made;
        for (std::size_t i = 0; i < 40 && made < keys; ++i) {
            HiveKey& middle = top.ensure("{4D36E96" + std::to_string(100 + i) + "-E325-11CE}");
            middle.security = static_cast<std::uint32_t>(i % 40);
            ++made;
            for (std::size_t j = 0; j < 20 && made < keys; ++j, ++made) {
                HiveKey& key = middle.ensure("Device Parameters " + std::to_string(100 + j));
                key.security = static_cast<std::uint32_t>((i + j) % 40);
                for (; given * keys < made * values; ++given) key.values.push_back({"Value Name " + std::to_string(given % 50), {given % 2 == 0 ? 4u : 1u, dataOf(given)}});
            }
        }
    }
    return hive;
}

// Made once for each size; the file can be written out for comparing with other programs (BRENVIK_BENCH_HIVE=folder).
const Bytes& fileOf(std::int64_t keys) {
    static std::map<std::int64_t, Bytes> files;
    Bytes& file = files[keys];
    if (file.empty()) {
        file = writeHive(generate(static_cast<std::size_t>(keys), static_cast<std::size_t>(keys > 50000 ? 3 * keys : keys * 90 / 43)));
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
