// SPDX-License-Identifier: GPL-3.0-or-later
// Loading of the catalogue file, beside bare parsing of the same bytes with the JSON library, which
// is the least that any loader does; and the operations on a description that each frame uses.
#include <benchmark/benchmark.h>

#include <chrono>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

#include "benchmarks/catalogue_folder.h"
#include "catalogue/filter_catalogue.h"
#include "catalogue/json_reader.h"

namespace kelmo {
namespace {

using Clock = std::chrono::steady_clock;

double Seconds(Clock::duration duration) {
    return std::chrono::duration<double>(duration).count();
}

// Both sides in turn within one loop, so that the ratio is of one machine in one mood.
void LoadCatalogueBesideBareParsing(benchmark::State& state) {
    const CatalogueFolder folder(static_cast<int>(state.range(0)));
    double loading = 0;
    double parsing = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        {
            FilterCatalogue catalogue;
            LoadCatalogueInto(catalogue, folder.Path());
            if (catalogue.Count() != static_cast<std::size_t>(state.range(0))) {
                state.SkipWithError("entries are missing");
                break;
            }
        }
        const auto middle = Clock::now();
        {
            std::ifstream file(CatalogueFile(folder.Path()), std::ios::binary);
            const nlohmann::json bare = nlohmann::json::parse(file);
            benchmark::DoNotOptimize(bare.size());
        }
        const auto end = Clock::now();
        loading += Seconds(middle - start);
        parsing += Seconds(end - middle);
        state.SetIterationTime(Seconds(middle - start));
    }
    state.counters["load/parse"] = loading / parsing;
    state.counters["entries/s"] = benchmark::Counter(
        static_cast<double>(state.range(0)) * static_cast<double>(state.iterations()) / loading);
}
BENCHMARK(LoadCatalogueBesideBareParsing)
    ->Arg(250)
    ->Arg(10000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// The walk over the parameters that every frame makes, beside the same walk by key text.
void WalkParametersByIndexBesideKeyText(benchmark::State& state) {
    NLEFilterInfo info;
    const auto count = static_cast<int32_t>(state.range(0));
    for (int32_t i = 0; i < count; ++i) {
        info.AddParam(i, std::make_shared<NLEFilterParams>());
    }
    double byIndex = 0;
    double byKey = 0;
    constexpr int kRounds = 100;
    for (auto _ : state) {
        const auto start = Clock::now();
        for (int round = 0; round < kRounds; ++round) {
            for (int32_t i = 0; i < count; ++i) {
                benchmark::DoNotOptimize(info.GetParam(i));
            }
        }
        const auto middle = Clock::now();
        for (int round = 0; round < kRounds; ++round) {
            for (int32_t i = 0; i < count; ++i) {
                const std::lock_guard guard(info.lock);
                auto param = info.params.find("Param[" + std::to_string(i) + "]")->second;
                benchmark::DoNotOptimize(param);
            }
        }
        byIndex += Seconds(middle - start);
        byKey += Seconds(Clock::now() - middle);
        state.SetIterationTime(Seconds(middle - start));
    }
    state.counters["key/index"] = byKey / byIndex;
    state.SetItemsProcessed(state.iterations() * kRounds * count);
}
BENCHMARK(WalkParametersByIndexBesideKeyText)->Arg(10)->UseManualTime();

}  // namespace
}  // namespace kelmo
