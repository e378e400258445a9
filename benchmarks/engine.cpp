// SPDX-License-Identifier: GPL-3.0-or-later
// What the engine costs on top of what it stands on: a pass beside the bare GL calls for the same
// draw, transfers beside a plain copy of the same bytes. Both sides run alternately in one loop and
// the counter "ratio" is engine time / peer time of that loop: the fastest run of each, because
// whatever else the machine does can only add.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <vector>

#include "engine/effect/effect_shaders.h"
#include "engine/effect_engine.h"

namespace kelmo {
namespace {

using Clock = std::chrono::steady_clock;
using EffectPointer = std::shared_ptr<NLEOpenGLEngineEffect>;

/// A light filter: one picture in, some arithmetic. The lighter the shader, the more the engine's
/// own share shows.
constexpr const char* kShader = R"(
uniform float amount;
void main() {
    vec4 c = Input0(vTexCoord);
    float grey = dot(c.rgb, vec3(0.2126, 0.7152, 0.0722));
    fragColor = vec4(mix(c.rgb, vec3(grey), amount), c.a);
}
)";

/// Engine, effect and picture of one size.
struct Stage {
    Stage(int width, int height) : width(width), height(height) {
        path = (std::filesystem::temp_directory_path() / "kelmo_benchmark.frag").string();
        std::ofstream(path) << kShader;
        engine = MakeOwnContextEngine(nullptr);
        engine->CreateEngineEffect(width, height, width * 4, false, path.c_str(), effect, 0, "", {},
                                   {});
        effect->AddInputTexture(width, height, width * 4, true);
        effect->CreateProgram(effect);
        pixels.resize(static_cast<size_t>(width) * height * 4);
        for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<uint8_t>(i * 31 >> 3);
        other = pixels;
        Upload();
        Pass(0.5f);
    }
    ~Stage() { std::filesystem::remove(path); }

    void Upload() {
        effect->SetInputImage(0, pixels.data(), width, height, width * 4, 4, false, 0);
    }
    void Pass(float amount) {
        effect->SetUniformFloat("amount", amount);
        FrameRecord target = FrameRecord::TargetLess(width, height, width * 4);
        effect->Render(target, effect, 0);
    }
    void Read() { effect->ReadTexture(result, width, height, width * 4, other.data()); }
    void Copy() {
        std::memcpy(other.data(), pixels.data(), pixels.size());
        benchmark::ClobberMemory();
    }

    int width, height;
    std::string path;
    std::unique_ptr<EffectEngine> engine;
    EffectPointer effect;
    int32_t result = 0;
    std::vector<uint8_t> pixels;
    std::vector<uint8_t> other;
};

/// The fastest of a row of runs.
double Fastest(const std::vector<double>& times) {
    return times.empty() ? 0 : *std::min_element(times.begin(), times.end());
}

template <typename Work>
double Seconds(Work&& work) {
    const Clock::time_point start = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Runs both alternately; the benchmark's own time is the engine's.
template <typename Ours, typename Peer>
void Compare(benchmark::State& state, Ours&& ours, Peer&& peer) {
    std::vector<double> oursTimes;
    std::vector<double> peerTimes;
    ours();
    peer();
    for (auto _ : state) {
        peerTimes.push_back(Seconds(peer));
        oursTimes.push_back(Seconds(ours));
        state.SetIterationTime(oursTimes.back());
    }
    const double oursFastest = Fastest(oursTimes);
    const double peerFastest = Fastest(peerTimes);
    state.counters["engine_us"] = oursFastest * 1e6;
    state.counters["peer_us"] = peerFastest * 1e6;
    state.counters["ratio"] = oursFastest / peerFastest;
}

/// The same draw, written out with nothing around it.
struct BarePass {
    BarePass(Stage& stage) : width(stage.width), height(stage.height) {
        std::string error;
        program = BuildShaders(*stage.engine->Device(), {stage.path, "", {}, {}}, {}, 0, error);
        glGenTextures(2, textures);
        for (const GLuint texture : textures) {
            glBindTexture(GL_TEXTURE_2D, texture);
            glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
            glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
            glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
            glTexImage2D(GL_TEXTURE_2D, 0, kPictureInternal, width, height, 0, kPictureFormat,
                         kPictureType, stage.pixels.data());
        }
        glGenFramebuffers(1, &framebuffer);
        glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, textures[1], 0);
        glGenVertexArrays(1, &vertexArray);
        glBindVertexArray(vertexArray);
        glBindBuffer(GL_ARRAY_BUFFER, stage.engine->Device()->Commons().quadBuffer.Id());
        for (const auto& attribute : program->Attributes()) {
            const bool isPosition = attribute.name == "position";
            const auto location = static_cast<GLuint>(attribute.location);
            glVertexAttribPointer(
                location, isPosition ? 4 : 3, GL_FLOAT, GL_FALSE, kQuadStride,
                reinterpret_cast<const void*>(isPosition ? 0 : 4 * sizeof(float)));
            glEnableVertexAttribArray(location);
        }
        glUseProgram(program->Id());
        amount = glGetUniformLocation(program->Id(), "amount");
        glBindVertexArray(0);
    }
    ~BarePass() {
        glDeleteTextures(2, textures);
        glDeleteFramebuffers(1, &framebuffer);
        glDeleteVertexArrays(1, &vertexArray);
    }

    void Draw(float value) {
        glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
        glViewport(0, 0, width, height);
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT);
        glUseProgram(program->Id());
        glUniform1f(amount, value);
        glActiveTexture(GL_TEXTURE0);
        glBindTexture(GL_TEXTURE_2D, textures[0]);
        glBindSampler(0, 0);
        glBindVertexArray(vertexArray);
        glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
        glBindVertexArray(0);
    }

    int width, height;
    std::shared_ptr<ShaderProgram> program;
    GLuint textures[2] = {};
    GLuint framebuffer = 0, vertexArray = 0;
    GLint amount = -1;
};

/// A whole pass to its end, with nothing read back. Target: within 10 percent.
void PassBesideBareGl(benchmark::State& state) {
    Stage stage(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    const std::shared_ptr<GlDevice> device = stage.engine->Device();
    const GlScope scope(*device);
    BarePass bare(stage);
    float value = 0;
    Compare(
        state,
        [&] {
            stage.Pass(value += 0.001f);
            glFinish();
        },
        [&] {
            bare.Draw(value += 0.001f);
            glFinish();
        });
}

/// Making the engine's context current and giving the thread back, which each operation does once.
void EnterAndLeaveContext(benchmark::State& state) {
    Stage stage(16, 16);
    const std::shared_ptr<GlDevice> device = stage.engine->Device();
    for (auto _ : state) const GlScope scope(*device);
}

/// A CPU picture to a slot, turned over on its way, beside memcpy.
void UploadBesideCopy(benchmark::State& state) {
    Stage stage(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    Compare(
        state, [&] { stage.Upload(); }, [&] { stage.Copy(); });
}

/// Material of four channels, as it stands.
void MaterialBesideCopy(benchmark::State& state) {
    Stage stage(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    Compare(
        state,
        [&] {
            stage.effect->SetInputMaterial(0, stage.pixels.data(), stage.width, stage.height,
                                           stage.width * 4, 4, false, 0, 0, 0);
        },
        [&] { stage.Copy(); });
}

/// Material of three channels, which is expanded, beside a copy of the four that come out.
void BgrMaterialBesideCopy(benchmark::State& state) {
    Stage stage(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    Compare(
        state,
        [&] {
            stage.effect->SetInputMaterial(0, stage.pixels.data(), stage.width, stage.height,
                                           stage.width * 3, 4, false, 0, 0, 0);
        },
        [&] { stage.Copy(); });
}

/// A finished picture to memory, turned over on its way, beside memcpy.
void ReadBackBesideCopy(benchmark::State& state) {
    Stage stage(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    stage.result = stage.effect->GetResultFrame().texture;
    Compare(
        state, [&] { stage.Read(); }, [&] { stage.Copy(); });
}

/// Recording one known uniform: no GL, no allocation.
void RecordUniform(benchmark::State& state) {
    Stage stage(16, 16);
    float value = 0;
    for (auto _ : state) stage.effect->SetUniformFloat("amount", value += 0.001f);
}

#define KELMO_FRAME_SIZES Args({1280, 720})->Args({1920, 1080})->UseManualTime()
// Long enough for an undisturbed run among those of a software rasteriser.
BENCHMARK(PassBesideBareGl)->KELMO_FRAME_SIZES->MinTime(3);
BENCHMARK(UploadBesideCopy)->KELMO_FRAME_SIZES;
BENCHMARK(MaterialBesideCopy)->KELMO_FRAME_SIZES;
BENCHMARK(BgrMaterialBesideCopy)->KELMO_FRAME_SIZES;
BENCHMARK(ReadBackBesideCopy)->KELMO_FRAME_SIZES;
BENCHMARK(EnterAndLeaveContext);
BENCHMARK(RecordUniform);

}  // namespace
}  // namespace kelmo
