// SPDX-License-Identifier: GPL-3.0-or-later
// Effects that keep a picture between frames: when it is shown, renewed and forgotten.
#include <gtest/gtest.h>

#include "tests/effects/support/material_effect.h"

namespace kelmo {
namespace {

using test::DrawFrame;
using test::EffectRecord;

constexpr const char* kHallucination = "EBD7747C-195D-4C5C-A261-847CDF0A4BE0";
constexpr const char* kConfused = "D3A34D29-2B9B-4DA2-AF97-CE227A5270B3";

class Feedback : public ::testing::Test {
protected:
    /// Draws a frame and says whether it showed the kept picture.
    bool ShowsKept(NLEOpenGLFilter& effect, const EffectRecord& record, int32_t position) {
        EXPECT_EQ(DrawFrame(effect, position, first), kFilterOk);
        return record.InputAt(1).kind == EffectRecord::Input::kTexture;
    }

    test::MaterialEffects effects;
    cv::Mat clip = cv::Mat(36, 64, CV_8UC4, cv::Scalar(10, 20, 30, 255));
    FrameRecord first = test::RecordOf(clip);
};

TEST_F(Feedback, OfTheHallucinationIsShownUntilTheHostJumps) {
    const auto effect = effects.Make(kHallucination);
    EffectRecord& record = effects.Engine().Effect(0);
    effect->SetParam("speed", kParamFloat, NLEParamValue::Float(1.0F));  // kept on every frame
    EXPECT_FALSE(ShowsKept(*effect, record, 10));
    EXPECT_EQ(record.UniformInt("isLastFrameAddLut"), 1);
    EXPECT_TRUE(ShowsKept(*effect, record, 11));
    EXPECT_EQ(record.UniformInt("isLastFrameAddLut"), 0);
    EXPECT_TRUE(ShowsKept(*effect, record, 16)) << "a jump of 5 frames is the past still";
    EXPECT_FALSE(ShowsKept(*effect, record, 22)) << "one of 6 is not";
    EXPECT_TRUE(ShowsKept(*effect, record, 17)) << "backwards just the same";
}

TEST_F(Feedback, OfTheHallucinationIsRenewedBySpeed) {
    const auto effect = effects.Make(kHallucination);
    EffectRecord& record = effects.Engine().Effect(0);
    const struct {
        float speed;
        int renewals;  // over positions 0..19 at 25 frames a second
    } cases[] = {{0.0F, 4}, {1.0F, 20}, {0.5F, 7}};
    for (const auto& c : cases) {
        effect->SetParam("speed", kParamFloat, NLEParamValue::Float(c.speed));
        record.ClearCalls();
        for (int32_t position = 0; position < 20; ++position) DrawFrame(*effect, position, first);
        EXPECT_EQ(record.Count("SetRenderTarget"), c.renewals) << "speed " << c.speed;
    }
}

TEST_F(Feedback, OfAFailedFrameChangesNothing) {
    for (const char* guid : {kHallucination, kConfused}) {
        const auto effect = effects.Make(guid);
        EffectRecord& record = *effects.Engine().Effects().back();
        effects.Engine().failRender = true;
        EXPECT_EQ(DrawFrame(*effect, 0, first), kFilterFailed);
        effects.Engine().failRender = false;
        EXPECT_EQ(record.Count("SetRenderTarget"), 0);
        EXPECT_FALSE(ShowsKept(*effect, record, 1)) << "still the first frame";
    }
}

TEST_F(Feedback, OfTheConfusedEffectIsHiddenWhileItIsRenewed) {
    const auto effect = effects.Make(kConfused);
    EffectRecord& record = effects.Engine().Effect(0);
    // A pace of 3: speed 2, so the picture is renewed every 12 frames.
    effect->SetParam("pace", kParamFloat, NLEParamValue::Float(3.0F));
    for (int32_t position = 0; position < 30; ++position) {
        EXPECT_EQ(ShowsKept(*effect, record, position), position % 12 != 0) << position;
    }
    EXPECT_EQ(record.Count("SetRenderTarget"), 3);
    EXPECT_EQ(record.Count("SetUniformFloat(pace"), 0) << "no parameter goes out by name";
    EXPECT_FLOAT_EQ(record.UniformFloat("speed"), 2.0F);
}

TEST_F(Feedback, OfTheConfusedEffectBearsAnyPace) {
    const auto effect = effects.Make(kConfused);
    for (const float pace : {-1.0F, -1e30F, 0.0F, 1e30F, std::numeric_limits<float>::quiet_NaN()}) {
        effect->SetParam("pace", kParamFloat, NLEParamValue::Float(pace));
        EXPECT_EQ(DrawFrame(*effect, 7, first), kFilterOk) << pace;
    }
}

}  // namespace
}  // namespace kelmo
