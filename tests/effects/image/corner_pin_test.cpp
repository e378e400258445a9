// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/corner_pin_effect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include "framework/filter/filter_guids.h"
#include "tests/effects/support/material_effect.h"

namespace kelmo {
namespace {

using ::testing::FloatNear;
using ::testing::Pointwise;

constexpr const char* kNames[] = {"left_upx",   "left_upy",   "right_upx",   "right_upy",
                                  "left_downx", "left_downy", "right_downx", "right_downy"};
const std::vector<float> kIdentity3 = {1, 0, 0, 0, 1, 0, 0, 0, 1};

class CornerPin : public ::testing::Test {
protected:
    std::vector<float> MatrixFor(const std::array<float, 8>& corners) {
        for (std::size_t i = 0; i < corners.size(); ++i) {
            effect->SetParam(kNames[i], kParamFloat, NLEParamValue::Float(corners[i]));
        }
        EXPECT_EQ(test::DrawFrame(*effect, 0, test::RecordOf(clip)), kFilterOk);
        return record.Uniform("perspective_mat");
    }

    test::MaterialEffects effects;
    std::unique_ptr<NLEOpenGLFilter> effect = effects.Make(kCornerPinGuid);
    test::EffectRecord& record = effects.Engine().Effect(0);
    cv::Mat clip = cv::Mat(36, 64, CV_8UC4, cv::Scalar::all(0));
};

TEST_F(CornerPin, TakesEachCornerBackToTheCornerOfThePicture) {
    const std::array<float, 8> corners = {0.1F, 0.06F, 0.93F, 0.2F, 0.04F, 0.95F, 0.88F, 0.78F};
    const std::vector<float> m = MatrixFor(corners);
    EXPECT_EQ(record.UniformInt("is_conv"), 1);
    const float expected[4][2] = {{0, 0}, {63, 0}, {0, 35}, {63, 35}};
    for (int i = 0; i < 4; ++i) {
        const float x = corners[2 * i] * 63.0F;
        const float y = corners[2 * i + 1] * 35.0F;
        const float w = m[2] * x + m[5] * y + m[8];
        EXPECT_NEAR((m[0] * x + m[3] * y + m[6]) / w, expected[i][0], 1e-3) << "corner " << i;
        EXPECT_NEAR((m[1] * x + m[4] * y + m[7]) / w, expected[i][1], 1e-3) << "corner " << i;
    }
}

TEST_F(CornerPin, SendsTheIdentityForCornersAtTheirPlacesAndForNoProperQuad) {
    const struct {
        const char* name;
        std::array<float, 8> corners;
        int32_t convex;
    } cases[] = {
        {"own corners", {0, 0, 1, 0, 0, 1, 1, 1}, 1},
        {"crossed", {1, 0, 0, 0, 0, 1, 1, 1}, 0},
        {"concave", {0, 0, 1, 0, 0, 1, 0.2F, 0.2F}, 0},
    };
    for (const auto& c : cases) {
        EXPECT_THAT(MatrixFor(c.corners), Pointwise(FloatNear(1e-5F), kIdentity3)) << c.name;
        EXPECT_EQ(record.UniformInt("is_conv"), c.convex) << c.name;
    }
}

TEST_F(CornerPin, BearsCornersInOneSpotAndNumbersThatAreNone) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const float v : {0.0F, 0.5F, 1e30F, nan}) {
        for (const float entry : MatrixFor({v, v, v, v, v, v, v, v})) {
            EXPECT_TRUE(std::isfinite(entry)) << v;
        }
    }
}

TEST_F(CornerPin, SendsTheRegionThatItWasTold) {
    effect->SetParam("cornerpin_roix0", kParamFloat, NLEParamValue::Float(0.25F));
    effect->SetParam("cornerpin_roiw", kParamFloat, NLEParamValue::Float(0.5F));
    MatrixFor({0, 0, 1, 0, 0, 1, 1, 1});
    EXPECT_EQ(record.Uniform("result_roi"), (std::vector<float>{0.25F, 0.0F, 0.5F, 1.0F}));
}

}  // namespace
}  // namespace kelmo
