// SPDX-License-Identifier: GPL-3.0-or-later
// The start of the plug-in as a host sees it: the library is loaded, StartupQor reads the
// catalogue, every effect is registered, ShutdownQor. The peer is bare parsing of the same bytes
// with the JSON library. Each round loads a copy of its own, since a process fills a catalogue
// once.
#include <benchmark/benchmark.h>
#include <dlfcn.h>

#include <chrono>
#include <nlohmann/json.hpp>

#include "benchmarks/catalogue_folder.h"
#include "contract/qor_host.h"
#include "host/session/description_registrar.h"
#include "tests/support/recording_host.h"
#include "tests/support/temporary_folder.h"

namespace kelmo {
namespace {

using Clock = std::chrono::steady_clock;

double Seconds(Clock::duration duration) {
    return std::chrono::duration<double>(duration).count();
}

/// From loading the library to the last registered effect; the number of effects.
int32_t Start(const std::string& library, test::RecordingHost& host) {
    void* const handle = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) return -1;
    const auto startUp = reinterpret_cast<StartupQorFn>(dlsym(handle, kStartupQor));
    const auto registerEffect =
        reinterpret_cast<RegisterQorEffectFn>(dlsym(handle, kRegisterQorEffect));
    const auto shutdown = reinterpret_cast<ShutdownQorFn>(dlsym(handle, kShutdownQor));
    QorPluginInfo info;
    startUp(&host, &info);
    int32_t registered = 0;
    for (int32_t i = 0; i < info.effectCount; ++i) {
        host::DescriptionRegistrar registrar;
        registered += registerEffect(i, &registrar) == kQorOk ? 1 : 0;
        benchmark::DoNotOptimize(registrar.Take());
    }
    shutdown();
    return registered;
}

void StartUpBesideBareParsing(benchmark::State& state) {
    const CatalogueFolder folder(static_cast<int>(state.range(0)));
    const test::TemporaryFolder copies;
    test::RecordingHost host;
    host.resourceFolder = folder.Path();
    host.pluginFolder = copies.Path();
    double starting = 0;
    double parsing = 0;
    int round = 0;
    // The libraries that the plug-in needs are loaded once in a process.
    Start(KELMO_PLUGIN_DIR "/qorOpenGLFilterPlugin.qor", host);
    for (auto _ : state) {
        const std::string library = copies.Path(std::to_string(round++) + ".qor");
        std::filesystem::copy_file(KELMO_PLUGIN_DIR "/qorOpenGLFilterPlugin.qor", library);
        const auto start = Clock::now();
        if (Start(library, host) != state.range(0)) {
            state.SkipWithError("effects are missing");
            break;
        }
        const auto middle = Clock::now();
        {
            std::ifstream file(folder.File(), std::ios::binary);
            const nlohmann::json bare = nlohmann::json::parse(file);
            benchmark::DoNotOptimize(bare.size());
        }
        starting += Seconds(middle - start);
        parsing += Seconds(Clock::now() - middle);
        state.SetIterationTime(Seconds(middle - start));
    }
    state.counters["start/parse"] = starting / parsing;
}
BENCHMARK(StartUpBesideBareParsing)
    ->Arg(250)
    ->Iterations(20)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(StartUpBesideBareParsing)
    ->Arg(10000)
    ->Iterations(3)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kelmo
