// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugin/corner_pin_step.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

#include "tests/support/fake_render_context.h"
#include "tests/support/filter_descriptions.h"

namespace kelmo {
namespace {

constexpr const char* kCorners[8] = {"left_upx",   "left_upy",   "right_upx",   "right_upy",
                                     "left_downx", "left_downy", "right_downx", "right_downy"};

TEST(CornerPinStepTest, AsksForTheRoomBeyondTheFartherEdge) {
    struct {
        const char* what;
        std::array<float, 8> corners;
        bool expands;
        QorPoint size, offset;
        std::array<float, 4> box;
    } const cases[] = {
        {"the frame itself", {0, 0, 1, 0, 0, 1, 1, 1}, false, {}, {}, {0, 0, 1, 1}},
        {"smaller, in the middle",
         {0.25F, 0.25F, 0.75F, 0.25F, 0.25F, 0.75F, 0.75F, 0.75F},
         false,
         {},
         {},
         {0.25F, 0.25F, 0.5F, 0.5F}},
        {"twice as large",
         {-0.5F, -0.5F, 1.5F, -0.5F, -0.5F, 1.5F, 1.5F, 1.5F},
         true,
         {200, 100},
         {100, 50},
         {-0.5F, -0.5F, 2, 2}},
        {"out to the right: 2 * 1.75 - 1 wide, 1 high",
         {0.75F, 0, 1.75F, 0, 0.75F, 1, 1.75F, 1},
         true,
         {250, 50},
         {125, 25},
         {0.75F, 0, 1, 1}},
        {"out to the top left: 2 * |0.5 + 0.5|",
         {-0.5F, -0.5F, 0.5F, -0.5F, -0.5F, 0.5F, 0.5F, 0.5F},
         true,
         {200, 100},
         {100, 50},
         {-0.5F, -0.5F, 1, 1}},
        {"pixels are cut",
         {-0.255F, 0, 1.255F, 0, -0.255F, 1, 1.255F, 1},
         true,
         {151, 50},
         {75, 25},
         {-0.255F, 0, 1.51F, 1}},
    };
    for (const auto& c : cases) {
        test::FakeFrame frame(100, 50);
        test::FakeRenderContext context;
        context.first = &frame;
        NLEOpenGLFilter filter(test::MakeInfo("pin"));
        for (std::size_t i = 0; i < 8; ++i) {
            filter.SetParam(kCorners[i], kParamFloat, NLEParamValue::Float(c.corners[i]));
        }
        RunCornerPinStep(context, filter);
        ASSERT_EQ(context.expansion.has_value(), c.expands) << c.what;
        if (c.expands) {
            EXPECT_EQ(context.expansion->first.x, c.size.x) << c.what;
            EXPECT_EQ(context.expansion->first.y, c.size.y) << c.what;
            EXPECT_EQ(context.expansion->second.x, c.offset.x) << c.what;
            EXPECT_EQ(context.expansion->second.y, c.offset.y) << c.what;
        }
        EXPECT_FLOAT_EQ(filter.FloatOr("cornerpin_roix0", 9), c.box[0]) << c.what;
        EXPECT_FLOAT_EQ(filter.FloatOr("cornerpin_roiy0", 9), c.box[1]) << c.what;
        EXPECT_FLOAT_EQ(filter.FloatOr("cornerpin_roiw", 9), c.box[2]) << c.what;
        EXPECT_FLOAT_EQ(filter.FloatOr("cornerpin_roih", 9), c.box[3]) << c.what;
    }
}

TEST(CornerPinStepTest, AMissingNameTakesTheValueReadBeforeIt) {
    test::FakeRenderContext context;
    NLEOpenGLFilter filter(test::MakeInfo("pin"));
    filter.SetParam("left_upx", kParamFloat, NLEParamValue::Float(0.25F));
    filter.SetParam("right_downx", kParamFloat, NLEParamValue::Float(0.5F));
    RunCornerPinStep(context, filter);
    EXPECT_EQ(filter.FloatOr("cornerpin_roix0", 9), 0.25F);
    EXPECT_EQ(filter.FloatOr("cornerpin_roiy0", 9), 0.25F);
    EXPECT_EQ(filter.FloatOr("cornerpin_roiw", 9), 0.25F);
    EXPECT_FALSE(context.expansion) << "without an input frame there is no size";
}

TEST(CornerPinStepTest, CornersThatAreNoNumbersDoNoHarm) {
    test::FakeFrame frame(100, 50);
    test::FakeRenderContext context;
    context.first = &frame;
    NLEOpenGLFilter filter(test::MakeInfo("pin"));
    const float wild[] = {std::numeric_limits<float>::quiet_NaN(),
                          std::numeric_limits<float>::infinity(), 3.0e38F, -3.0e38F};
    for (std::size_t i = 0; i < 8; ++i) {
        filter.SetParam(kCorners[i], kParamFloat, NLEParamValue::Float(wild[i % 4]));
    }
    RunCornerPinStep(context, filter);
    EXPECT_TRUE(context.expansion);
}

}  // namespace
}  // namespace kelmo
