// SPDX-License-Identifier: GPL-3.0-or-later
// Where pictures go: CPU and GPU targets, intermediates and their exchange, sizes, reading back.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/effect_stage.h"

namespace kelmo::test {
namespace {

using ::testing::HasSubstr;

class EngineTarget : public ::testing::Test {
protected:
    /// A 1x1 effect with `targets` intermediates.
    EffectPointer MakeWithTargets(int targets) {
        return stage.Make(1, 1, kColorShader, "", [&](NLEOpenGLEngineEffect& it) {
            for (int i = 0; i < targets; ++i) EXPECT_EQ(it.AddRenderTarget(), i);
        });
    }
    /// Renders a grey of `level` into the engine.
    static void Draw(const EffectPointer& effect, int level) {
        const float value = static_cast<float>(level) / 255.0f;
        effect->SetUniformVec4("color", value, value, value, 1);
        RenderInside(effect);
    }
    static int LevelOf(const EffectPointer& effect, const FrameRecord& frame) {
        return PixelsOf(effect, frame)[0].g;
    }
    static int Intermediate(const EffectPointer& effect, int index) {
        return LevelOf(effect, effect->GetRenderTarget(index));
    }
    static int Result(const EffectPointer& effect) {
        return LevelOf(effect, effect->GetResultFrame());
    }

    EffectStage stage;
};

TEST_F(EngineTarget, CpuRowsAreWrittenTopFirstAtTheirStrideAndNothingElse) {
    const EffectPointer effect =
        stage.Make(3, 2, "void main() { fragColor = vec4(vTexCoord, 1, 1); }");
    for (const int stride : {12, 13, 32}) {
        std::vector<uint8_t> bytes(static_cast<size_t>(stride) * 2, 0xAA);
        FrameRecord target = FrameRecord::TargetLess(3, 2, stride);
        target.pixels = bytes.data();
        ASSERT_EQ(effect->Render(target, effect, 0), 0);
        EXPECT_EQ(bytes[1], 191) << "green is v: the top row has the larger one";
        EXPECT_EQ(bytes[static_cast<size_t>(stride) + 1], 64);
        for (size_t i = 0; i < bytes.size(); ++i) {
            if (i % static_cast<size_t>(stride) < 12) continue;
            EXPECT_EQ(bytes[i], 0xAA) << i;
        }
    }
}

TEST_F(EngineTarget, ACpuTargetOfAnotherSizeGetsThePictureScaled) {
    const EffectPointer effect = stage.Make(2, 2, kCopyShader);
    SetImage(effect, 0, {kRed, kRed, kBlue, kBlue}, 2, 2);
    for (const auto& [width, height] : {std::pair{1, 2}, {6, 2}, {3, 2}}) {
        Pixels pixels;
        FrameRecord target = TargetOf(pixels, width, height);
        ASSERT_EQ(effect->Render(target, effect, 0), 0);
        EXPECT_EQ(pixels.front(), kRed);
        EXPECT_EQ(pixels.back(), kBlue);
    }
    EXPECT_EQ(RenderPixels(effect), (Pixels{kRed, kRed, kBlue, kBlue})) << "the result stays";
}

TEST_F(EngineTarget, TargetsThatCannotTakeAPictureAreRefused) {
    const EffectPointer effect = stage.Make(4, 4, kColorShader);
    Pixels pixels = Filled(16, kWhite);
    const auto refused = [&](const char* what, int width, int height, int stride, int channels) {
        SCOPED_TRACE(what);
        FrameRecord target = FrameRecord::TargetLess(width, height, stride);
        target.pixels = pixels.data();
        target.channels = channels;
        EngineLogLines::Take();
        EXPECT_NE(effect->Render(target, effect, 0), 0);
        EXPECT_THAT(EngineLogLines::Take(), HasSubstr("no picture of"));
        EXPECT_EQ(pixels, Filled(16, kWhite));
    };
    refused("short rows", 4, 4, 15, 4);
    refused("no width", 0, 4, 16, 4);
    refused("less than no height", 4, -4, 16, 4);
    refused("one channel", 4, 4, 16, 1);
    refused("larger than the device takes", 1 << 20, 1, 1 << 22, 4);
    FrameRecord missing;
    missing.isCpu = 0;
    missing.texture = 12345;
    EXPECT_NE(effect->Render(missing, effect, 0), 0);
    EXPECT_THAT(EngineLogLines::Take(), HasSubstr("12345"));
    missing.texture = 0;
    EXPECT_NE(effect->Render(missing, effect, 0), 0);
    EXPECT_THAT(EngineLogLines::Take(), HasSubstr("a target without a texture"));
    // Nobody has asked for this error; the next pass is not blamed for it.
    EXPECT_TRUE(effect->RunOnGLThread([] {
        glEnable(0xDEAD);
        return true;
    }));
    RenderInside(effect);
}

TEST_F(EngineTarget, AGpuTargetIsDrawnIntoAndTheResultStays) {
    const EffectPointer effect = stage.Make(2, 2, kCopyShader);
    const Pixels picture = {kRed, kGreen, kBlue, kWhite};
    SetImage(effect, 0, picture, 2, 2);
    const EffectPointer owner = stage.Make(2, 2, kColorShader);
    FrameRecord target = owner->GetResultFrame();
    ASSERT_EQ(effect->Render(target, effect, 0), 0) << EngineLogLines::Take();
    EXPECT_EQ(PixelsOf(effect, target), picture);
    EXPECT_EQ(PixelsOf(effect, effect->GetResultFrame()), picture);
    const EffectPointer large = stage.Make(4, 4, kColorShader);
    FrameRecord scaled = large->GetResultFrame();
    ASSERT_EQ(effect->Render(scaled, effect, 0), 0);
    EXPECT_EQ(PixelsOf(effect, scaled)[0], kRed);
    EXPECT_EQ(PixelsOf(effect, scaled)[15], kWhite);
}

TEST_F(EngineTarget, FramesOfTheEngineSayWhatTheyAre) {
    const EffectPointer effect =
        stage.Make(5, 3, kColorShader, "", [](NLEOpenGLEngineEffect& it) { it.AddRenderTarget(); });
    for (const FrameRecord& frame :
         {effect->GetResultFrame(), effect->GetResultFrameAlt(), effect->GetRenderTarget(0)}) {
        EXPECT_EQ(frame.tag, -1);
        EXPECT_GT(frame.texture, 0);
        EXPECT_EQ(frame.isCpu, 0);
        EXPECT_EQ(frame.pixels, nullptr);
        EXPECT_EQ(frame.width, 5);
        EXPECT_EQ(frame.height, 3);
        EXPECT_EQ(frame.stride, 20);
        EXPECT_EQ(frame.renderable, 1);
        EXPECT_EQ(frame.channels, 4);
        EXPECT_EQ(PixelsOf(effect, frame), Filled(15, kNothing)) << "transparent at first";
    }
    EXPECT_EQ(effect->GetResultFrame().texture, effect->GetResultFrameAlt().texture);
    for (const int unknown : {-1, 1, 99}) {
        EXPECT_FALSE(effect->GetRenderTarget(unknown).HasTexture());
        EXPECT_FALSE(effect->GetRenderTarget(unknown).HasCpuPixels());
    }
}

TEST_F(EngineTarget, ExchangeKeepsAPictureWhileLaterOnesAreDrawn) {
    const EffectPointer effect = MakeWithTargets(2);
    Draw(effect, 10);
    effect->SetRenderTarget(0);
    Draw(effect, 20);
    effect->SetRenderTarget(1);
    Draw(effect, 30);
    EXPECT_EQ(Intermediate(effect, 0), 10);
    EXPECT_EQ(Intermediate(effect, 1), 20);
    EXPECT_EQ(Result(effect), 30);
}

TEST_F(EngineTarget, TwoExchangesWithoutAPassMovePicturesAmongTheIntermediates) {
    // A queue of four is filled and then moved down by one, as delay effects do.
    const EffectPointer effect = MakeWithTargets(4);
    for (int i = 0; i < 4; ++i) {
        Draw(effect, 10 * (i + 1));
        effect->SetRenderTarget(i);
    }
    Draw(effect, 99);
    for (int i = 0; i < 3; ++i) {
        effect->SetRenderTarget(i + 1);
        effect->SetRenderTarget(i);
    }
    EXPECT_EQ(Intermediate(effect, 0), 20);
    EXPECT_EQ(Intermediate(effect, 1), 30);
    EXPECT_EQ(Intermediate(effect, 2), 40);
    EXPECT_EQ(Result(effect), 10);
    EXPECT_EQ(Intermediate(effect, 3), 99);
}

TEST_F(EngineTarget, ExchangeCopiesNothing) {
    const EffectPointer effect = MakeWithTargets(1);
    const int32_t result = effect->GetResultFrame().texture;
    const int32_t intermediate = effect->GetRenderTarget(0).texture;
    effect->SetRenderTarget(0);
    EXPECT_EQ(effect->GetResultFrame().texture, intermediate);
    EXPECT_EQ(effect->GetRenderTarget(0).texture, result);
}

TEST_F(EngineTarget, ARecordTakenBeforeTheExchangeShowsTheNextPass) {
    // Motion blur collects the records of its targets before it draws into them.
    const EffectPointer effect = MakeWithTargets(2);
    std::vector<FrameRecord> frames;
    for (int i = 0; i < 2; ++i) {
        frames.push_back(effect->GetRenderTarget(i));
        effect->SetRenderTarget(i);
        Draw(effect, 50 + i);
    }
    EXPECT_EQ(effect->Resize(1, 1, 4, effect), 0) << "the size does not change";
    EXPECT_EQ(LevelOf(effect, frames[0]), 50);
    EXPECT_EQ(LevelOf(effect, frames[1]), 51);
}

TEST_F(EngineTarget, AnUnknownIntermediateIsReported) {
    const EffectPointer effect = MakeWithTargets(1);
    EngineLogLines::Take();
    effect->SetRenderTarget(1);
    EXPECT_THAT(EngineLogLines::Take(), HasSubstr("no intermediate picture 1"));
}

TEST_F(EngineTarget, FeedbackReadsThePictureOfThePassBefore) {
    // Each pass adds 1 to what it reads; with the result itself as its input, too.
    for (const bool ownResult : {false, true}) {
        const EffectPointer effect =
            stage.Make(2, 2, "void main() { fragColor = Input0(vTexCoord) + vec4(1.0 / 255.0); }",
                       "", [](NLEOpenGLEngineEffect& it) { it.AddRenderTarget(); });
        for (int i = 1; i <= 5; ++i) {
            effect->SetInputTexture(
                0, ownResult ? effect->GetResultFrame() : effect->GetRenderTarget(0), 2, 2, 8);
            RenderInside(effect);
            const auto level = static_cast<uint8_t>(i);
            EXPECT_EQ(PixelsOf(effect, effect->GetResultFrame()),
                      Filled(4, {level, level, level, level}));
            if (!ownResult) effect->SetRenderTarget(0);
        }
    }
}

TEST_F(EngineTarget, ResizeGivesTransparentPicturesOfTheNewSize) {
    const EffectPointer effect = MakeWithTargets(1);
    Draw(effect, 77);
    effect->SetRenderTarget(0);
    Draw(effect, 88);
    EXPECT_EQ(effect->Resize(3, 2, 16, effect), 0);
    EXPECT_EQ(effect->GetWidth(), 3);
    EXPECT_EQ(effect->GetHeight(), 2);
    EXPECT_EQ(effect->GetStride(), 16);
    EXPECT_EQ(PixelsOf(effect, effect->GetResultFrame()), Filled(6, kNothing));
    EXPECT_EQ(PixelsOf(effect, effect->GetRenderTarget(0)), Filled(6, kNothing));
    EXPECT_EQ(RenderPixels(effect), Filled(6, {88, 88, 88, 255}));
}

TEST_F(EngineTarget, ImpossibleSizesAreRefusedAndTheOldOneStays) {
    const EffectPointer effect = MakeWithTargets(0);
    for (const auto& [width, height] : {std::pair{0, 1}, {1, 0}, {-3, 5}, {1 << 20, 1}}) {
        EngineLogLines::Take();
        EXPECT_NE(effect->Resize(width, height, 4, effect), 0);
        EXPECT_THAT(EngineLogLines::Take(), HasSubstr("is outside 1.."));
        EXPECT_EQ(effect->GetWidth(), 1);
    }
    Draw(effect, 5);
    EXPECT_EQ(Result(effect), 5);
}

TEST_F(EngineTarget, ReadTextureRefusesWhatItCannotRead) {
    const EffectPointer effect = MakeWithTargets(0);
    Draw(effect, 1);
    const int32_t texture = effect->GetResultFrame().texture;
    uint8_t pixel[4] = {};
    EngineLogLines::Take();
    EXPECT_FALSE(effect->ReadTexture(99999, 1, 1, 4, pixel));
    EXPECT_FALSE(effect->ReadTexture(-1, 1, 1, 4, pixel));
    EXPECT_FALSE(effect->ReadTexture(texture, 1, 1, 3, pixel));
    EXPECT_FALSE(effect->ReadTexture(texture, 0, 1, 4, pixel));
    EXPECT_FALSE(effect->ReadTexture(texture, 1, 1, 4, nullptr));
    EXPECT_THAT(EngineLogLines::Take(), HasSubstr("99999"));
    EXPECT_TRUE(effect->ReadTexture(texture, 1, 1, 4, pixel));
    EXPECT_EQ(pixel[0], 1);
}

}  // namespace
}  // namespace kelmo::test
