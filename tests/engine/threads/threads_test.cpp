// SPDX-License-Identifier: GPL-3.0-or-later
// Effects on several threads, with the engine's own context.
#include <gtest/gtest.h>

#include <cstring>
#include <thread>

#include "engine/effect_engine.h"
#include "support/temporary_folder.h"

namespace kelmo::test {
namespace {

using EffectPointer = std::shared_ptr<NLEOpenGLEngineEffect>;

/// Adds 1/255 to each channel of the picture.
constexpr const char* kAddOne =
    "void main() { fragColor = Input0(vTexCoord) + vec4(1.0 / 255.0); }";

class EngineThreads : public ::testing::Test {
protected:
    EngineThreads() : engine(MakeOwnContextEngine(nullptr)) { EXPECT_TRUE(engine); }

    EffectPointer Make(int width, int height) {
        EffectPointer effect;
        engine->CreateEngineEffect(width, height, width * 4, false, path.c_str(), effect, 0, "", {},
                                   {});
        EXPECT_EQ(effect->CreateProgram(effect), 0);
        return effect;
    }
    /// Sends a picture through and says whether each byte came out one larger.
    static bool AddsOne(const EffectPointer& effect, uint8_t level) {
        const int width = effect->GetWidth();
        const int height = effect->GetHeight();
        std::vector<uint8_t> input(static_cast<size_t>(width) * height * 4, level);
        std::vector<uint8_t> output(input.size());
        effect->SetInputImage(0, input.data(), width, height, width * 4, 4, false, 0);
        FrameRecord target = FrameRecord::TargetLess(width, height, width * 4);
        target.pixels = output.data();
        if (effect->Render(target, effect, 0) != 0) return false;
        return std::all_of(output.begin(), output.end(),
                           [&](uint8_t byte) { return byte == level + 1; });
    }

    TemporaryFolder folder;
    const std::string path = folder.Write("add.frag", kAddOne);
    std::unique_ptr<EffectEngine> engine;
};

TEST_F(EngineThreads, TwoEffectsRunOnTwoThreadsAtOnce) {
    std::vector<std::thread> threads;
    std::atomic<int> wrong{0};
    for (int t = 0; t < 3; ++t) {
        threads.emplace_back([&, t] {
            EffectPointer effect = Make(16 + t, 9);
            for (int i = 0; i < 30; ++i) {
                if (!AddsOne(effect, static_cast<uint8_t>(40 * t + i))) ++wrong;
                if (i == 15) effect->Resize(20 + t, 5, (20 + t) * 4, effect);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, 0);
}

TEST_F(EngineThreads, OneEffectIsDrivenByOneThreadAfterTheOther) {
    EffectPointer effect = Make(24, 16);
    std::atomic<int> wrong{0};
    for (int i = 0; i < 8; ++i) {
        std::thread([&] { wrong += !AddsOne(effect, static_cast<uint8_t>(i)); }).join();
        wrong += !AddsOne(effect, static_cast<uint8_t>(100 + i));
    }
    EXPECT_EQ(wrong, 0);
}

TEST_F(EngineThreads, APictureOfOneThreadIsReadByAnother) {
    EffectPointer first = Make(4, 4);
    EffectPointer second = Make(4, 4);
    std::thread([&] {
        const std::vector<uint8_t> input(64, 10);
        first->SetInputImage(0, input.data(), 4, 4, 16, 4, false, 0);
        FrameRecord inside = FrameRecord::TargetLess(4, 4, 16);
        EXPECT_EQ(first->Render(inside, first, 0), 0);
    }).join();
    second->SetInputTexture(0, first->GetResultFrame(), 4, 4, 16);
    std::vector<uint8_t> output(64);
    FrameRecord target = FrameRecord::TargetLess(4, 4, 16);
    target.pixels = output.data();
    EXPECT_EQ(second->Render(target, second, 0), 0);
    EXPECT_EQ(output, std::vector<uint8_t>(64, 12));
}

TEST_F(EngineThreads, EffectsEndOnOtherThreadsWhileSomeWork) {
    EffectPointer worker = Make(8, 8);
    std::vector<EffectPointer> doomed;
    for (int i = 0; i < 10; ++i) doomed.push_back(Make(8, 8));
    std::thread ending([&] { doomed.clear(); });
    int wrong = 0;
    for (int i = 0; i < 20; ++i) wrong += !AddsOne(worker, static_cast<uint8_t>(i));
    ending.join();
    EXPECT_EQ(wrong, 0);
}

TEST_F(EngineThreads, AnEffectMayEndAfterTheEngineOnAnotherThread) {
    EffectPointer effect = Make(8, 8);
    EXPECT_TRUE(AddsOne(effect, 1));
    engine.reset();
    std::thread([&] {
        EXPECT_TRUE(AddsOne(effect, 2));
        effect.reset();
    }).join();
}

TEST_F(EngineThreads, ATaskCallsTheEngineFromInside) {
    EffectPointer effect = Make(8, 8);
    EXPECT_TRUE(effect->RunOnGLThread([&] { return AddsOne(effect, 5); }));
    EXPECT_FALSE(effect->RunOnGLThread([] { return false; }));
    EXPECT_FALSE(effect->RunOnGLThread({}));
    EXPECT_FALSE(effect->RunOnGLThread([]() -> bool { throw std::runtime_error("broken"); }));
    EXPECT_TRUE(AddsOne(effect, 6));
}

}  // namespace
}  // namespace kelmo::test
