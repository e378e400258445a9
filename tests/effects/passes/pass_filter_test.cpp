// SPDX-License-Identifier: GPL-3.0-or-later
// Filters of passes against the recording engine: sizes, order, skips and kept pictures.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/effects/support/material_effect.h"

namespace kelmo::test {
namespace {

constexpr const char* kBlur = "4EAE61BF-C5AB-5229-8399-DD1635A66DDD";
constexpr const char* kTrails = "0F1D9102-369B-5A97-BF21-80517F432756";

class PassFilterTest : public testing::Test {
protected:
    int32_t Draw(NLEOpenGLFilter& filter, int32_t position) {
        return DrawFrame(filter, position, RecordOf(clip));
    }
    void Set(NLEOpenGLFilter& filter, const char* name, float value) {
        NLEParamValue number;
        number.Put(value);
        filter.SetParam(name, kParamFloat, number);
    }

    MaterialEffects effects;
    cv::Mat clip = cv::Mat::zeros(90, 160, CV_8UC4);
};

TEST_F(PassFilterTest, DrawsEachPassOnceAtItsSizeAndTheFrameLast) {
    const auto filter = effects.Make(kBlur, 160, 90);
    ASSERT_EQ(Draw(*filter, 0), kFilterOk);
    const std::pair<int32_t, int32_t> sizes[] = {{80, 45}, {480, 270}, {240, 135}, {121, 68},
                                                 {60, 34}, {30, 17},   {16, 9},    {160, 90}};
    ASSERT_EQ(effects.Engine().Effects().size(), std::size(sizes));
    for (std::size_t i = 0; i < std::size(sizes); ++i) {
        const EffectRecord& pass = effects.Engine().Effect(i);
        EXPECT_EQ(std::make_pair(pass.width, pass.height), sizes[i]) << i;
        EXPECT_EQ(pass.renderCount, 1) << i;
        // Each one reads what was drawn just before it; the first and the last read the clip.
        if (i == 0 || i + 1 == std::size(sizes)) {
            EXPECT_EQ(pass.InputAt(0).pixels, clip.data);
        } else {
            EXPECT_EQ(effects.Engine().DrawnBy(pass.InputAt(0).texture), static_cast<int32_t>(i));
        }
    }
}

TEST_F(PassFilterTest, SkipsPassesWithoutTheirParameterAndShowsWhatTheyWouldRead) {
    const auto filter = effects.Make(kBlur, 160, 90);
    Set(*filter, "radius", 0.0F);
    ASSERT_EQ(Draw(*filter, 0), kFilterOk);
    EXPECT_EQ(effects.Engine().RenderCount(), 1);
    for (int32_t slot = 0; slot < 7; ++slot) {
        EXPECT_EQ(effects.Engine().Effect(7).InputAt(slot).pixels, clip.data) << slot;
    }
}

TEST_F(PassFilterTest, KeepsPicturesOverSmallStepsAndForgetsThemOtherwise) {
    const auto filter = effects.Make(kTrails, 160, 90);
    const EffectRecord& trail = effects.Engine().Effect(0);
    const struct {
        int32_t position;
        int32_t hasPast;
        float elapsed;
        const char* why;
    } steps[] = {
        {10, 0, 0.0F, "the first frame"}, {11, 1, 0.04F, "the next one"},
        {11, 1, 0.04F, "the same again"}, {14, 1, 0.12F, "a small step"},
        {13, 0, 0.0F, "a step back"},     {14, 1, 0.04F, "the next one"},
        {40, 0, 0.0F, "a jump"},          {40, 0, 0.0F, "the same again"},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.why);
        ASSERT_EQ(Draw(*filter, step.position), kFilterOk);
        EXPECT_EQ(trail.UniformInt("hasPast"), step.hasPast);
        EXPECT_FLOAT_EQ(trail.UniformFloat("elapsed"), step.elapsed);
        EXPECT_EQ(trail.InputAt(1).kind == EffectRecord::Input::kTexture, step.hasPast == 1);
    }
    filter->Resize(80, 46, 320);
    ASSERT_EQ(Draw(*filter, 41), kFilterOk);
    EXPECT_EQ(trail.UniformInt("hasPast"), 0) << "another size";
}

TEST_F(PassFilterTest, BeginsAnewAfterAFrameThatFailed) {
    const auto filter = effects.Make(kTrails, 160, 90);
    ASSERT_EQ(Draw(*filter, 0), kFilterOk);
    effects.Engine().failRender = true;
    EXPECT_EQ(Draw(*filter, 1), kFilterFailed);
    effects.Engine().failRender = false;
    ASSERT_EQ(Draw(*filter, 2), kFilterOk);
    EXPECT_EQ(effects.Engine().Effect(0).UniformInt("hasPast"), 0);
}

}  // namespace
}  // namespace kelmo::test
