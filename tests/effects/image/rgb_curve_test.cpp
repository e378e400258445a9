// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/rgb_curve_effect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "effects/image/rgb_curve_look_table.h"
#include "tests/effects/support/material_effect.h"

namespace kelmo {
namespace {

using test::DrawFrame;
using ::testing::ElementsAre;

std::string Curve(int knots) {
    std::string text = "[";
    for (int i = 0; i < knots; ++i) {
        const std::string x = std::to_string(static_cast<double>(i) / (knots - 1));
        text += (i ? "," : "") + std::string("{\"_time\":") + x + ",\"_value\":" + x + "}";
    }
    return text + "]";
}

class RgbCurves : public ::testing::Test {
protected:
    void SetCurve(const char* name, const std::string& text) {
        effect->SetParam(name, kParamText, NLEParamValue::Text(text));
    }
    int32_t Draw(int32_t position) { return DrawFrame(*effect, position, test::RecordOf(clip)); }

    test::MaterialEffects effects;
    std::unique_ptr<NLEOpenGLFilter> effect = effects.Make("0FDB786D-A9A9-4ED7-9964-AC6954FB441A");
    test::EffectRecord& strips = *effects.Engine().FindEffect("curve_strip");
    test::EffectRecord& picture = *effects.Engine().FindEffect("rgb_curves");
    cv::Mat clip = cv::Mat::zeros(36, 64, CV_8UC4);
};

TEST_F(RgbCurves, DrawEachStripOnceAndAgainOnlyForNewKnots) {
    EXPECT_EQ(Draw(0), kFilterOk);
    EXPECT_EQ(strips.renderCount, 4);
    EXPECT_THAT(strips.Calls("SetRenderTarget"),
                ElementsAre("SetRenderTarget(0)", "SetRenderTarget(1)", "SetRenderTarget(2)",
                            "SetRenderTarget(3)"));
    EXPECT_EQ(Draw(1), kFilterOk);
    EXPECT_EQ(strips.renderCount, 4) << "a still curve costs no pass";
    strips.ClearCalls();
    SetCurve("bKnots", Curve(5));
    EXPECT_EQ(Draw(2), kFilterOk);
    EXPECT_THAT(strips.Calls("SetRenderTarget"), ElementsAre("SetRenderTarget(2)"));
    EXPECT_EQ(strips.UniformInt("pointsNums"), 5);
    SetCurve("bKnot_First_Controls", Curve(4));
    EXPECT_EQ(Draw(3), kFilterOk);
    EXPECT_EQ(strips.renderCount, 5) << "controls alone redraw nothing";
}

TEST_F(RgbCurves, BindTheFourStripsBehindTheClip) {
    ASSERT_EQ(Draw(0), kFilterOk);
    EXPECT_EQ(picture.InputAt(0).kind, test::EffectRecord::Input::kImage);
    for (int slot = 1; slot <= 4; ++slot) {
        const auto input = picture.InputAt(slot);
        EXPECT_EQ(input.kind, test::EffectRecord::Input::kTexture) << slot;
        EXPECT_EQ(input.width, 256);
        EXPECT_EQ(input.height, 1);
        EXPECT_EQ(input.stride, 1024);
    }
}

TEST_F(RgbCurves, StripsKeepTheirSizeWhateverTheFrames) {
    effect->Resize(1920, 1080, 7680);
    EXPECT_EQ(strips.width, 256);
    EXPECT_EQ(strips.height, 1);
}

TEST_F(RgbCurves, FailTheFrameForCurvesThatCannotBeDrawn) {
    const struct {
        const char* name;
        std::string text;
        int32_t result;
    } cases[] = {
        {"empty", "", kFilterFailed},
        {"one knot", R"([{"_time":0,"_value":0}])", kFilterFailed},
        {"2 knots", Curve(2), kFilterOk},
        {"25 knots", Curve(25), kFilterOk},
        {"26 knots", Curve(26), kFilterFailed},
        {"broken", "[{", kFilterFailed},
        {"huge", "[" + std::string(100000, ' ') + "]", kFilterFailed},
    };
    for (const auto& c : cases) {
        SetCurve("gKnots", c.text);
        EXPECT_EQ(Draw(0), c.result) << c.name;
    }
    SetCurve("gKnots", Curve(25));
    ASSERT_EQ(Draw(1), kFilterOk) << "a failed frame does not spoil the next";
    EXPECT_EQ(strips.Array("controlPoints").size(), 2U * (3 * 25 - 2));
}

TEST_F(RgbCurves, UseGivenControlsOnlyWhenBothListsAreThere) {
    SetCurve("rKnots", R"([{"_time":0,"_value":0},{"_time":1,"_value":1}])");
    SetCurve("rKnot_First_Controls", R"([{"_time":0.1,"_value":0.9}])");
    ASSERT_EQ(Draw(0), kFilterOk);
    strips.ClearCalls();
    SetCurve("rKnots", R"([{"_time":0,"_value":0.5},{"_time":1,"_value":1}])");
    SetCurve("rKnot_Second_Controls", R"([{"_time":0.2,"_value":0.8}])");
    ASSERT_EQ(Draw(1), kFilterOk);
    EXPECT_THAT(strips.Array("controlPoints"),
                ElementsAre(0.0F, 0.5F, 0.1F, 0.9F, 0.2F, 0.8F, 1.0F, 1.0F));
}

TEST_F(RgbCurves, TryAStripAgainThatCouldNotBeDrawn) {
    effects.Engine().failRender = true;
    EXPECT_EQ(Draw(0), kFilterFailed);
    effects.Engine().failRender = false;
    EXPECT_EQ(Draw(1), kFilterOk);
    EXPECT_EQ(strips.Count("SetRenderTarget"), 4);
}

}  // namespace
}  // namespace kelmo
