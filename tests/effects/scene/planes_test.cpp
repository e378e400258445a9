// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>

#include "effects/scene/planes/clock_digits.h"
#include "effects/scene/planes/floor_line.h"
#include "host/text/host_text_path.h"
#include "tests/effects/support/material_effect.h"

namespace kelmo {
namespace {

TEST(FloorLine, GoesThroughItsPointAndKnowsTheFarthestCorner) {
    const struct {
        float x, y, degrees;
        cv::Size frame;
        cv::Vec4f line;
        float farthest;
    } cases[] = {
        {0.5F, 0.75F, 0.0F, {1600, 900}, {0.0F, 0.25F, 1.0F, 0.25F}, 225.0F},
        {0.5F, 0.5F, 0.0F, {900, 1600}, {0.0F, 0.841797F, 1.0F, 0.841797F}, 1346.875F},
        {0.5F, 0.5F, 0.0F, {2000, 1000}, {0.0F, 0.5F, 1.0F, 0.5F}, 500.0F},  // too wide to stretch
        {0.5F, 0.5F, 180.0F, {1600, 900}, {1.0F, 0.5F, 0.0F, 0.5F}, 450.0F},
        {0.25F, 0.5F, 90.0F, {1600, 900}, {0.25F, 0.0556F, 0.25F, 1.8333F}, 1200.0F},
        {0.5F, 1.2F, 0.0F, {1600, 900}, {0.0F, -0.2F, 1.0F, -0.2F}, 0.0F},  // nothing lies below
    };
    for (const auto& c : cases) {
        const FloorLine floor(c.x, c.y, c.degrees, c.frame);
        EXPECT_LT(cv::norm(floor.Line() - c.line), 1e-3) << floor.Line();
        EXPECT_NEAR(floor.Farthest(), c.farthest, 0.01F);
    }
    const FloorLine floor(0.5F, 0.5F, 0.0F, {1600, 900});
    EXPECT_NEAR(floor.Parallel(90.0F)[1], 0.4F, 1e-6) << "downwards";
}

TEST(ClockDigits, CountDownToNoughtAndRoundUp) {
    const struct {
        int64_t start, elapsed;
        int32_t hour, minute, second, total;
    } cases[] = {{1000, 0, 0, 0, 10, 10},         {1000, 1, 0, 0, 10, 10},
                 {1000, 100, 0, 0, 9, 9},         {1000, 999, 0, 0, 1, 1},
                 {1000, 1000, 0, 0, 0, 0},        {1000, 99999, 0, 0, 0, 0},
                 {360000, 1, 1, 0, 0, 3600},      {360000, 100, 0, 59, 59, 3599},
                 {25 * 360000, 0, 1, 0, 0, 90000}};
    for (const auto& c : cases) {
        const ClockDigits digits = ClockDigits::OfClock(c.start, c.elapsed);
        EXPECT_EQ(digits.hour, c.hour);
        EXPECT_EQ(digits.minute, c.minute);
        EXPECT_EQ(digits.second, c.second);
        EXPECT_EQ(digits.total, c.total);
    }
    const ClockDigits clock = ClockDigits::OfClock(2 * 360000, 0);
    EXPECT_EQ(clock.pages[0].nextLeft, 2) << "hours' tens: 2, 1, 0";
    EXPECT_EQ(clock.pages[2].nextLeft, 5);
    EXPECT_EQ(clock.pages[2].nextRight, 9);
    const ClockDigits count = ClockDigits::OfCount(2000, 0);
    EXPECT_EQ(count.count, 20);
    EXPECT_EQ(count.pages[2].left, 2);
    EXPECT_EQ(count.pages[2].nextLeft, 1);
    EXPECT_EQ(ClockDigits::OfCount(INT64_MAX / 2, 0).total, INT32_MAX);
}

TEST(FlipClock, DrawsItsPagesAndThenTheWhole) {
    test::MaterialEffects effects;
    auto effect = effects.Make("53558A36-2658-216A-9FA1-734DBF77B12A");
    cv::Mat clip(36, 64, CV_8UC4, cv::Scalar::all(99));
    auto& shadow = effects.Engine().Effect(0);
    auto& light = effects.Engine().Effect(1);
    auto& own = effects.Engine().Effect(2);
    effect->SetParam("uPageCount", kParamInt, NLEParamValue::Int(7));
    effect->SetParam("General_opacity", kParamInt, NLEParamValue::Int(55));
    ASSERT_EQ(test::DrawFrame(*effect, 26, test::RecordOf(clip)), kFilterOk);  // 1:28.96 left
    EXPECT_EQ(own.UniformInt("leftNumSecond"), 2);
    EXPECT_EQ(own.UniformInt("rightNumSecond"), 9);
    EXPECT_EQ(own.UniformInt("sTotalTime"), 89);
    EXPECT_EQ(own.Array("uPagePos"), (std::vector<float>{0, 7, 1, 7, 2, 7}));
    EXPECT_EQ(own.vertexCount, 48);
    EXPECT_EQ(own.renderCount, 2);
    EXPECT_EQ(light.UniformInt("Opacity"), 55);
    EXPECT_EQ(light.InputAt(1).texture, shadow.InputAt(0).texture) << "the pages";
}

TEST(Reflection, FeathersItsLayerTwice) {
    test::MaterialEffects effects;
    auto effect = effects.Make("6721F018-C91D-4501-AF90-790159D76BE3");
    cv::Mat clip(36, 64, CV_8UC4, cv::Scalar::all(99));
    effect->SetParam("uEclosion", kParamInt, NLEParamValue::Int(7));
    effect->SetParam("reflectionAngle", kParamFloat, NLEParamValue::Float(180.0F));
    ASSERT_EQ(test::DrawFrame(*effect, 0, test::RecordOf(clip)), kFilterOk);
    auto& own = effects.Engine().Effect(2);
    EXPECT_EQ(effects.Engine().Effect(0).UniformInt("uEclosion"), 7);
    EXPECT_EQ(effects.Engine().Effect(1).UniformInt("uEclosion"), 17);
    EXPECT_EQ(own.renderCount, 2);
    EXPECT_NEAR(own.UniformFloat("reflectionAngle"), 3.14159F, 1e-4) << "radians";
    EXPECT_EQ(own.inputs.size(), 4U);
    EXPECT_EQ(test::DrawFrame(*effects.Make("C7A3DB01-7222-4B68-A2D8-5B4F03F650F2"), 0,
                              test::RecordOf(clip)),
              kFilterOk);
    EXPECT_EQ(effects.Engine().Effect(3).inputs.size(), 2U) << "no feathers";
}

TEST(TextureAnimation, HasAQuadForEachLetterWhereItStands) {
    test::MaterialEffects effects;
    auto effect = effects.Make("EEECC02B-EDFD-4130-A77B-71D6E038DB60", 640, 360);
    cv::Mat clip(360, 640, CV_8UC4, cv::Scalar::all(99));
    auto& own = effects.Engine().Effect(0);
    const auto draw = [&] {
        FrameRecord target = FrameRecord::TargetLess(640, 360, 2560);
        EXPECT_EQ(effect->DoEffect({}, test::RecordOf(clip), target, 640, 360, 2560), kFilterOk);
    };
    draw();
    EXPECT_EQ(own.vertexCount, 6) << "the clip in one piece";
    host::TextSettings settings;
    settings.text = "Hi!";
    settings.size = 60;
    settings.canvasWidth = 640;
    settings.canvasHeight = 360;
    auto text = host::HostTextPath::Create(settings);
    effect->SetParam("TextPath", kParamPointer, NLEParamValue::Pointer(text.get()));
    for (int frame = 0; frame < 2; ++frame) {  // the second one without the object
        draw();
        ASSERT_EQ(own.vertexCount, 18);
        const std::vector<float> places = own.AttributeValues("texcoord");
        const std::vector<float> positions = own.AttributeValues("position");
        for (int v = 0; v < 18; ++v) {
            EXPECT_NEAR(positions[3 * v], 2 * places[2 * v] - 1, 1e-5);
            EXPECT_NEAR(places[2 * v + 1], 0.5F, 0.2F) << "in the middle";
            EXPECT_GE(places[2 * v] + 1e-4, places[2 * (v < 6 ? v : v - 6)]) << "rightwards";
        }
        EXPECT_EQ(own.AttributeValues("matrix_column2")[2], 1.0F);
        text.reset();
    }
}

TEST(PlaneMap, StandsInTheMiddleOfAFrameWithoutPeople) {
    test::MaterialEffects effects;
    auto effect = effects.Make("03E695DF-524D-6758-528A-ECF93285F6F2");
    cv::Mat clip(36, 64, CV_8UC4, cv::Scalar::all(99));
    auto& own = effects.Engine().Effect(0);
    effect->SetParam("is_follow_size", kParamInt, NLEParamValue::Int(0));
    effect->SetParam("scale", kParamFloat, NLEParamValue::Float(0.5F));
    effect->SetParam("duration", kParamFloat, NLEParamValue::Float(4.0F));
    for (const auto& [frame, y] : {std::pair(0, 1.0F), std::pair(25, 0.5F), std::pair(75, -0.5F)}) {
        ASSERT_EQ(test::DrawFrame(*effect, frame, test::RecordOf(clip)), kFilterOk);
        EXPECT_NEAR(own.Uniform("uCenter")[1], y, 1e-4) << "runs down in four seconds";
    }
    EXPECT_EQ(own.AttributeValues("position")[0], -0.5F);
    EXPECT_NEAR(own.Uniform("uRatioWH")[0], 64 / 36.0, 1e-5);
}

}  // namespace
}  // namespace kelmo
