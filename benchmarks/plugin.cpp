// SPDX-License-Identifier: GPL-3.0-or-later
// What the plug-in itself costs for each frame of a plain filter: one SyncFrame and one GLRender
// against an engine and a host that do nothing. The peer is the bare minimum that any plug-in would
// have to do: ask the host for each parameter and pass it to the engine. "allocations" counts
// operator new for each frame.
#include <benchmark/benchmark.h>

#include <chrono>
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

using Clock = std::chrono::steady_clock;

/// One effect of the plug-in, driven as a host does.
class PluginFrame {
public:
    explicit PluginFrame(Scene& scene) : scene(scene), effect(scene.info) {
        effect.SetFilter(std::make_shared<NLEOpenGLFilter>(scene.info));
        effect.PrepareResource(&scene.context);
        effect.GLRender(&scene.context);
    }
    void Draw() {
        ++scene.context.position;
        effect.SyncFrame(&scene.context);
        effect.GLRender(&scene.context);
    }

private:
    Scene& scene;
    QorOpenglFilterEffect effect;
};

/// What no plug-in can do without.
class BareFrame {
public:
    explicit BareFrame(Scene& scene) : scene(scene) {
        scene.engine.CreateEngineEffect(1920, 1080, 7680, false, "", effect, 0, "", {}, {});
    }
    void Draw() {
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

private:
    Scene& scene;
    std::shared_ptr<NLEOpenGLEngineEffect> effect;
};

/// Both sides in turn, a hundred frames each.
void FrameBesideBareMinimum(benchmark::State& state) {
    constexpr int kFrames = 100;
    Scene scene(state.range(0));
    PluginFrame plugin(scene);
    BareFrame bare(scene);
    int64_t allocations = 0;
    double ours = 0;
    double theirs = 0;
    for (auto _ : state) {
        const int64_t before = test::AllocationCount();
        const auto start = Clock::now();
        for (int i = 0; i < kFrames; ++i) plugin.Draw();
        const auto middle = Clock::now();
        allocations += test::AllocationCount() - before;
        for (int i = 0; i < kFrames; ++i) bare.Draw();
        const std::chrono::duration<double> first = middle - start;
        const std::chrono::duration<double> second = Clock::now() - middle;
        ours += first.count();
        theirs += second.count();
        state.SetIterationTime(first.count() / kFrames);
    }
    state.counters["ratio"] = ours / theirs;
    state.counters["allocations"] = benchmark::Counter(static_cast<double>(allocations) / kFrames,
                                                       benchmark::Counter::kAvgIterations);
}
BENCHMARK(FrameBesideBareMinimum)->Arg(0)->Arg(20)->Arg(100)->UseManualTime();

}  // namespace
}  // namespace kelmo
