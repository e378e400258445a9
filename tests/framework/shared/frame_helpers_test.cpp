// SPDX-License-Identifier: GPL-3.0-or-later
// The small vocabulary that effects share: clock, sizes, colours, feedback, numbers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "framework/engine/color_uniform.h"
#include "framework/engine/frame_time.h"
#include "framework/filter/parameter_upload.h"
#include "framework/shared/feedback_trail.h"
#include "framework/shared/multiply_table.h"
#include "framework/shared/working_size.h"
#include "tests/support/recording_engine.h"

namespace kelmo {
namespace {

using ::testing::ElementsAre;

std::shared_ptr<NLEOpenGLEngineEffect> MakeEngineEffect(test::RecordingEngine& engine) {
    std::shared_ptr<NLEOpenGLEngineEffect> effect;
    engine.CreateEngineEffect(16, 16, 64, false, "a.frag", effect, 0, "", {}, {});
    return effect;
}

TEST(FrameTimeTest, CountsSecondsByTheRateAndTicksByTwentyFive) {
    const FrameTime time = FrameTime::At(30, 60, 30.0F);
    EXPECT_FLOAT_EQ(time.position, 1.0F);
    EXPECT_FLOAT_EQ(time.duration, 2.0F);
    EXPECT_FLOAT_EQ(time.Tick(), 25.0F);
    EXPECT_FLOAT_EQ(time.Progress(), 0.5F);
}

TEST(FrameTimeTest, AnUnusableRateOrLengthGivesFiniteNumbers) {
    for (const float rate : {0.0F, -1.0F, std::numeric_limits<float>::quiet_NaN()}) {
        EXPECT_FLOAT_EQ(SecondsAt(50, rate), 2.0F);
    }
    EXPECT_EQ(FrameTime::At(5, 0, 25.0F).Progress(), 0.0F);
}

TEST(FrameTimeTest, ACycleStartsAgainAndRunsTheSameWayBeforeZero) {
    EXPECT_FLOAT_EQ(CycleFraction(2.5F, 2.0F), 0.25F);
    EXPECT_FLOAT_EQ(CycleFraction(2.0F, 2.0F), 0.0F);
    EXPECT_FLOAT_EQ(CycleFraction(-0.5F, 2.0F), 0.75F);
    EXPECT_EQ(CycleFraction(1.0F, 0.0F), 0.0F);
}

TEST(WorkingSizeTest, FollowsTheDirectionOfTheFrame) {
    struct {
        int32_t width, height;
        int32_t expectedWidth, expectedHeight, expectedStride;
    } const cases[] = {
        {1920, 1080, 548, 308, 2192}, {1080, 1920, 308, 548, 1232}, {1000, 1000, 308, 548, 1232}};
    for (const auto& c : cases) {
        const FrameRecord record = WorkingSize::For(c.width, c.height).TargetLess();
        EXPECT_EQ(record.width, c.expectedWidth);
        EXPECT_EQ(record.height, c.expectedHeight);
        EXPECT_EQ(record.stride, c.expectedStride);
        EXPECT_EQ(record.isCpu, 1);
        EXPECT_EQ(record.pixels, nullptr);
    }
}

TEST(ColorUniformTest, SplitsBytesAndMovesDigitsBehindTheLetter) {
    test::RecordingEngine engine;
    const auto effect = MakeEngineEffect(engine);
    ColorUniform("color").Declare(*effect);
    ColorUniform("color2").Set(*effect, 0x123456);
    ColorUniform("core_color2").Set(*effect, 0xFF000001);
    EXPECT_THAT(engine.Effect(0).Calls(),
                ElementsAre("AddUniformInt(color_r, 255)", "AddUniformInt(color_g, 255)",
                            "AddUniformInt(color_b, 255)", "SetUniformInt(color_r2, 18)",
                            "SetUniformInt(color_g2, 52)", "SetUniformInt(color_b2, 86)",
                            "SetUniformInt(core_color_r2, 0)", "SetUniformInt(core_color_g2, 0)",
                            "SetUniformInt(core_color_b2, 1)"));
}

TEST(FeedbackTrailTest, RestartsOnTheFirstFrameAJumpAndASizeChange) {
    FeedbackTrail trail(6);
    EXPECT_TRUE(trail.Restarts(0, false));
    EXPECT_TRUE(trail.Restarts(0, false)) << "a frame that failed leaves no past";
    trail.Keep(10);
    struct {
        int32_t index;
        bool sizeChanged;
        bool restarts;
    } const cases[] = {{10, false, false},
                       {15, false, false},
                       {16, false, true},
                       {5, false, false},
                       {4, false, true},
                       {11, true, true},
                       {-2147483647 - 1, false, true}};
    for (const auto& c : cases) EXPECT_EQ(trail.Restarts(c.index, c.sizeChanged), c.restarts);
    trail.Forget();
    EXPECT_TRUE(trail.Restarts(10, false));
}

TEST(MultiplyTableTest, IsFilledOnLoadWithRoundedProducts) {
    for (int b = 0; b < 256; ++b) {
        EXPECT_EQ(multiplyTable[255 * 256 + b], b);
        EXPECT_EQ(multiplyTable[b * 256], 0);
    }
    EXPECT_EQ(multiplyTable[128 * 256 + 128], 64);
    EXPECT_EQ(multiplyTable[1 * 256 + 127], 0);
    EXPECT_EQ(multiplyTable[1 * 256 + 128], 1);
    InitBlendTables();
    EXPECT_EQ(multiplyTable[200 * 256 + 100], std::lrint(200 * 100 / 255.0));
}

TEST(ParameterUploadTest, NumbersGoUpByTheTypeOfTheirValueAndOthersDoNot) {
    test::RecordingEngine engine;
    const auto effect = MakeEngineEffect(engine);
    FilterParamList params;
    const auto add = [&](const char* name, int32_t type, const NLEParamValue& value) {
        auto param = std::make_shared<NLEFilterParams>();
        param->name = name;
        param->type = type;
        param->value = value;
        params.push_back(param);
    };
    add("f", kParamFloat, NLEParamValue::Float(1.5F));
    add("d", kParamDouble, NLEParamValue::Double(2.5));
    add("i", kParamInt, NLEParamValue::Int(-3));
    add("b", kParamBool, NLEParamValue::Bool(true));
    add("t", kParamText, NLEParamValue::Text("text"));
    add("p", kParamPointer, NLEParamValue::Pointer(&params));
    add("untouched", kParamFloat, NLEParamValue());
    DeclareParams(*effect, params);
    EXPECT_THAT(engine.Effect(0).Calls("AddUniform"),
                ElementsAre("AddUniformFloat(f, 1.5)", "AddUniformInt(i, -3)",
                            "AddUniformFloat(untouched, 0)"));
    UploadParams(*effect, params);
    EXPECT_THAT(engine.Effect(0).Calls("SetUniform"),
                ElementsAre("SetUniformFloat(f, 1.5)", "SetUniformFloat(d, 2.5)",
                            "SetUniformInt(i, -3)", "SetUniformFloat(untouched, 0)"));
}

TEST(ParameterUploadTest, NumbersChangeTheirTypeWithinWhatItHolds) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    struct {
        NLEParamValue value;
        int32_t type;
        bool converts;
        double expected;
    } const cases[] = {{NLEParamValue::Double(2.9), kParamInt, true, 2},
                       {NLEParamValue::Double(1e300), kParamInt, true, 2147483647},
                       {NLEParamValue::Double(nan), kParamInt, true, 0},
                       {NLEParamValue::Int(7), kParamFloat, true, 7},
                       {NLEParamValue::Bool(true), kParamDouble, true, 1},
                       {NLEParamValue::Float(0.25F), kParamBool, true, 1},
                       {NLEParamValue::Text("7"), kParamInt, false, 0},
                       {NLEParamValue::Int(7), kParamPointer, false, 0}};
    for (const auto& c : cases) {
        NLEFilterParams param;
        param.value = c.value;
        EXPECT_EQ(ConvertNumber(param.value, c.type), c.converts);
        EXPECT_EQ(param.value.type, c.converts ? c.type : c.value.type);
        if (c.converts) {
            EXPECT_EQ(CurrentNumber(param), static_cast<float>(c.expected));
        }
    }
}

}  // namespace
}  // namespace kelmo
