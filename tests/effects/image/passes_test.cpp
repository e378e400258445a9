// SPDX-License-Identifier: GPL-3.0-or-later
// What reaches the engine from the effects of several passes: passes, values, inputs, order.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "effects/beam/beam_eclosion_effect.h"
#include "effects/image/dual_kawase_blur.h"
#include "effects/image/motion_blur.h"
#include "framework/filter/filter_guids.h"
#include "tests/effects/support/material_effect.h"

namespace kelmo {
namespace {

using test::DrawFrame;
using test::EffectRecord;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// One pass as a test wants to see it.
struct Pass {
    int32_t layer;
    int32_t iteration;
    EffectRecord::Input::Kind input;
    bool operator==(const Pass&) const = default;
};

class Passes : public ::testing::Test {
protected:
    test::MaterialEffects effects;
    cv::Mat clip = cv::Mat(36, 64, CV_8UC4, cv::Scalar(10, 20, 30, 255));
    FrameRecord first = test::RecordOf(clip);
};

TEST_F(Passes, OfTheSoftBlurGoDownAndUp) {
    const auto blur = effects.MakeAs<NLEOpenGLDualKawaseBlur>(kDualKawaseBlurGuid);
    ASSERT_TRUE(blur);
    std::vector<Pass> seen;
    effects.Engine().onRender = [&](EffectRecord& r, FrameRecord&) {
        seen.push_back({r.UniformInt("calLayer"), r.UniformInt("curIteration"), r.InputAt(0).kind});
    };
    constexpr auto kClip = EffectRecord::Input::kImage;
    constexpr auto kKept = EffectRecord::Input::kTexture;
    const struct {
        int32_t iterations;
        std::vector<Pass> passes;
    } cases[] = {
        {0, {{2, 0, kClip}}},
        {-3, {{2, 0, kClip}}},
        {1, {{0, 0, kClip}, {1, 0, kKept}}},
        {2, {{0, 0, kClip}, {0, 1, kKept}, {1, 0, kKept}, {1, 1, kKept}}},
    };
    for (const auto& c : cases) {
        blur->SetParam("uIterations", kParamInt, NLEParamValue::Int(c.iterations));
        seen.clear();
        EXPECT_EQ(DrawFrame(*blur, 0, first), kFilterOk);
        // The iteration of a copy is whatever stood there before.
        if (c.iterations < 1) seen.at(0).iteration = 0;
        EXPECT_EQ(seen, c.passes) << c.iterations << " iterations";
    }
    blur->SetParam("uIterations", kParamInt, NLEParamValue::Int(1000000));
    seen.clear();
    EXPECT_EQ(DrawFrame(*blur, 0, first), kFilterOk);
    EXPECT_EQ(seen.size(), 2U * NLEOpenGLDualKawaseBlur::kMostIterations);
}

TEST_F(Passes, OfTheSoftBlurTakeTheOwnersPictureInsteadOfTheClip) {
    const auto blur = effects.MakeAs<NLEOpenGLDualKawaseBlur>(kDualKawaseBlurGuid);
    blur->inputOverride.texture = 77;
    blur->SetParam("uIterations", kParamInt, NLEParamValue::Int(4));
    EXPECT_EQ(DrawFrame(*blur, 0, first), kFilterOk);
    EXPECT_EQ(effects.Engine().Effect(0).Count("SetInputImage"), 0);
    EXPECT_EQ(effects.Engine().Effect(0).Count("SetInputTexture"), 8);
}

TEST_F(Passes, OfTheFeatherRunUprightThenLevel) {
    const auto feather = effects.MakeAs<NLEOpenGLBeamEclosionEffect>(kBeamEclosionGuid);
    ASSERT_TRUE(feather);
    std::vector<std::pair<int32_t, int32_t>> seen;
    effects.Engine().onRender = [&](EffectRecord& r, FrameRecord&) {
        seen.emplace_back(r.UniformInt("uHorizontal"), r.InputAt(0).texture);
    };
    feather->inputOverride.texture = 77;
    EXPECT_EQ(DrawFrame(*feather, 0, first), kFilterOk);
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[0], std::make_pair(0, 77));
    EXPECT_EQ(seen[1].first, 1);
    EXPECT_EQ(effects.Engine().DrawnBy(seen[1].second), 1) << "the second pass reads the first";
    effects.Engine().failRender = true;
    EXPECT_EQ(DrawFrame(*feather, 1, first), kFilterFailed);
}

TEST_F(Passes, OfTheDenoiserHandTheFirstPictureToTheSecond) {
    const auto denoise = effects.Make("CFE92EDA-8603-4C12-B8DC-39F2C508375C");
    std::vector<int32_t> types;
    std::vector<bool> toMemory;
    effects.Engine().onRender = [&](EffectRecord& r, FrameRecord& target) {
        types.push_back(r.UniformInt("internalType"));
        toMemory.push_back(target.HasCpuPixels());
    };
    EXPECT_EQ(DrawFrame(*denoise, 0, first), kFilterOk);
    EXPECT_THAT(types, ElementsAre(0, 1));
    EXPECT_THAT(toMemory, ElementsAre(true, false));
    const EffectRecord& record = effects.Engine().Effect(0);
    EXPECT_EQ(record.InputAt(0).kind, EffectRecord::Input::kImage);
    EXPECT_EQ(effects.Engine().DrawnBy(record.InputAt(1).texture), 1);
}

TEST_F(Passes, OfTheWaveReadOneAnother) {
    const auto wave = effects.Make("08E29D96-81B7-423C-868B-677217856FA9");
    std::vector<int32_t> layers;
    effects.Engine().onRender = [&](EffectRecord& r, FrameRecord&) {
        layers.push_back(r.UniformInt("calLayer"));
    };
    EXPECT_EQ(DrawFrame(*wave, 50, first), kFilterOk);
    EXPECT_THAT(layers, ElementsAre(1, 2));
    EXPECT_EQ(effects.Engine().Effect(0).UniformFloat("global_time"), 2.0F);
}

TEST_F(Passes, OfTheColourBlurFeatherAtTheReducedSize) {
    const auto blur = effects.Make("CDD6ABAB-0A2B-44FF-A7F9-E962B6FD9CE1", 1920, 1080);
    const EffectRecord& feather = *effects.Engine().FindEffect("feather");
    blur->SetParam("uEclosion", kParamInt, NLEParamValue::Int(40));
    EXPECT_EQ(feather.width, 548);
    EXPECT_EQ(feather.height, 308);
    EXPECT_EQ(feather.stride, 2192);
    EXPECT_EQ(DrawFrame(*blur, 0, first), kFilterOk);
    EXPECT_EQ(feather.UniformInt("uEclosion"), 40);
    const EffectRecord& record = *effects.Engine().FindEffect("color_blur");
    EXPECT_EQ(effects.Engine().DrawnBy(record.InputAt(1).texture), 2)
        << "the feather's second pass";
    EXPECT_EQ(record.Count("SetUniformFloat(global_time"), 0);
}

TEST_F(Passes, OfTheNoiseNeedNoInput) {
    const auto noise = effects.Make(kFractalNoiseGuid);
    EXPECT_EQ(DrawFrame(*noise, 25, first), kFilterOk);
    EXPECT_EQ(effects.Engine().Effect(0).Count("SetInput"), 0);
    EXPECT_EQ(effects.Engine().Effect(0).UniformFloat("global_time"), 1.0F);
}

TEST_F(Passes, OfTheDepthComparisonStayInTheEngine) {
    const auto compare = effects.Make("602B6F19-AE6B-481D-936A-38308F0A1940");
    cv::Mat target = cv::Mat::zeros(36, 64, CV_8UC4);
    FrameRecord out = test::RecordOf(target);
    EXPECT_EQ(compare->DoEffect(first, first, out, 64, 36, 256), kFilterOk);
    EXPECT_EQ(effects.Engine().Effect(0).lastTarget.pixels, nullptr);
    EXPECT_EQ(effects.Engine().Effect(0).Count("SetInputImage"), 2);
}

TEST_F(Passes, OfTheMotionBlurCountTheFramesOfTheirOwner) {
    const auto blur = effects.MakeAs<NLEOpenGLMotionBlur>(kMotionBlurGuid);
    ASSERT_TRUE(blur);
    EffectRecord& record = effects.Engine().Effect(0);
    EXPECT_EQ(DrawFrame(*blur, 0, first), kFilterOk);
    EXPECT_EQ(record.renderCount, 0) << "nobody feeds it";
    const struct {
        std::size_t frames;
        int32_t count;
        int slots;
    } cases[] = {{0, 0, 0}, {1, 1, 1}, {16, 16, 16}, {17, 16, 17}, {40, 16, 17}};
    for (const auto& c : cases) {
        const std::vector<FrameRecord> history(c.frames, first);
        blur->historyFrames = &history;
        record.ClearCalls();
        EXPECT_EQ(DrawFrame(*blur, 0, first), kFilterOk);
        EXPECT_EQ(record.UniformInt("history_frame_count"), c.count) << c.frames << " frames";
        EXPECT_EQ(record.Count("SetInputImage"), c.slots) << c.frames << " frames";
    }
    FrameRecord out;
    EXPECT_EQ(blur->DoEffect(first, first, out, 0, 36, 256), NLEOpenGLMotionBlur::kBadSize);
}

TEST_F(Passes, OfTheRetroLooksStepTheirPicturesBySpeed) {
    const char* const kDream = "E3281184-804B-411E-9F9D-15B63B06E8E8";
    const auto retro = effects.Make(kDream);
    const EffectRecord& blur = *effects.Engine().FindEffect("kawase");
    retro->SetParam("strength", kParamInt, NLEParamValue::Int(60));
    EXPECT_EQ(DrawFrame(*retro, 0, first), kFilterOk);
    EXPECT_EQ(blur.UniformInt("uIterations"), 2);
    EXPECT_FLOAT_EQ(blur.UniformFloat("uOffset"), 1.4F);
    EXPECT_EQ(blur.width, 64) << "the blur has the size of the frame";

    // Which picture of the sequence is bound after two seconds: 10 at speed 0, 50 at speed 100.
    const EffectRecord& look = *effects.Engine().FindEffect("retro_dream");
    const auto picture = [&](int32_t position) {
        EXPECT_EQ(DrawFrame(*retro, position, first), kFilterOk);
        return look.InputAt(1).pixels;
    };
    retro->SetParam("speed", kParamInt, NLEParamValue::Int(0));
    const void* const start = picture(0);
    EXPECT_EQ(picture(50), start) << "10 pictures on, the sequence of 10 begins again";
    EXPECT_NE(picture(5), start);
    EXPECT_EQ(picture(4), start) << "a picture stands for 5 frames";

    const auto film = effects.Make("0EF05B3D-6489-4637-90D8-F234D8B041CF");
    const int blurs = static_cast<int>(effects.Engine().Calls("").size());
    EXPECT_EQ(DrawFrame(*film, 0, first), kFilterOk);
    EXPECT_GT(static_cast<int>(effects.Engine().Calls("").size()), blurs);
    EXPECT_EQ(effects.Engine().FindEffect("retro_film")->InputAt(0).kind,
              EffectRecord::Input::kImage)
        << "only one of the looks blurs first";
}

}  // namespace
}  // namespace kelmo
