// SPDX-License-Identifier: GPL-3.0-or-later
// What the plug-in itself costs for each frame of a plain filter: one SyncFrame and one GLRender
// against an engine and a host that do nothing. The peer is the bare minimum that any plug-in would
// have to do: ask the host for each parameter and pass it to the engine. "allocations" counts
// operator new for each frame.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "plugin/qor_opengl_filter_effect.h"
#include "tests/support/allocation_count.h"
#include "tests/support/engine_session.h"
#include "tests/support/fake_render_context.h"
#include "tests/support/filter_descriptions.h"

namespace kelmo {
namespace {

/// Engine and host of a frame, with `count` float parameters in the catalogue.
struct Scene {
    explicit Scene(int64_t count) {
        engine.recording = false;
        context.recording = false;
        context.first = &input;
        context.output = &output;
        for (int64_t i = 0; i < count; ++i) {
            names.push_back("parameter" + std::to_string(i));
            test::AddParam(*info, names.back(), NLEParamValue::Float(0.0F));
            context.values[names.back()] = test::HostFloat(0.5F);
        }
    }

    test::EngineSession engine;
    test::FakeRenderContext context;
    test::FakeFrame input{1920, 1080};
    test::FakeFrame output{1920, 1080};
    std::shared_ptr<NLEFilterInfo> info = test::MakeInfo("plain");
    std::vector<std::string> names;
};

void ReportAllocations(benchmark::State& state, int64_t before) {
    state.counters["allocations"] = benchmark::Counter(
        static_cast<double>(test::AllocationCount() - before), benchmark::Counter::kAvgIterations);
}

void BM_FrameOfThePlugin(benchmark::State& state) {
    Scene scene(state.range(0));
    QorOpenglFilterEffect effect(scene.info);
    effect.SetFilter(std::make_shared<NLEOpenGLFilter>(scene.info));
    effect.PrepareResource(&scene.context);
    effect.GLRender(&scene.context);
    const int64_t before = test::AllocationCount();
    for (auto _ : state) {
        ++scene.context.position;
        effect.SyncFrame(&scene.context);
        effect.GLRender(&scene.context);
    }
    ReportAllocations(state, before);
}
BENCHMARK(BM_FrameOfThePlugin)->Arg(0)->Arg(20)->Arg(100);

void BM_BareMinimum(benchmark::State& state) {
    Scene scene(state.range(0));
    std::shared_ptr<NLEOpenGLEngineEffect> effect;
    scene.engine.CreateEngineEffect(1920, 1080, 7680, false, "", effect, 0, "", {}, {});
    const int64_t before = test::AllocationCount();
    for (auto _ : state) {
        ++scene.context.position;
        for (const std::string& name : scene.names) {
            QorValue value;
            value.type = kHostFloat;
            scene.context.GetParamValue(name.c_str(), scene.context.position, &value);
            effect->SetUniformFloat(name.c_str(), value.f);
        }
        effect->SetInputImage(0, scene.input.pixels.data(), 1920, 1080, 7680, 4, false, 0);
        FrameRecord target = FrameRecord::TargetLess(1920, 1080, 7680);
        effect->Render(target, effect, 0);
    }
    ReportAllocations(state, before);
}
BENCHMARK(BM_BareMinimum)->Arg(0)->Arg(20)->Arg(100);

}  // namespace
}  // namespace kelmo
