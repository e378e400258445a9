// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/star_analysis.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include "framework/filter/filter_guids.h"
#include "tests/effects/support/material_effect.h"

namespace kelmo {
namespace {

constexpr int kWidth = 960;
constexpr int kHeight = 540;
// The threshold takes the brightest 0.05 percent: 259 pixels, a disc of radius 9.1.

cv::Mat Night(int level = 40) {
    return {kHeight, kWidth, CV_8UC4, cv::Scalar(level, level, level, 255)};
}

void Spot(cv::Mat& picture, int x, int y, int radius, int level) {
    cv::circle(picture, {x, y}, radius, cv::Scalar(level, level, level, 255), cv::FILLED);
}

bool HasStarAt(const StarAnalysis& stars, double x, double y) {
    for (int i = 0; i < stars.Count(); ++i) {
        const float* const p = stars.Positions() + 4 * i;
        if (std::abs(p[0] * kWidth - x) < 1.5 && std::abs(p[1] * kHeight - y) < 1.5) return true;
    }
    return false;
}

TEST(StarAnalysis, FindsTheSpotsThatWereDrawn) {
    cv::Mat picture = Night();
    Spot(picture, 100, 80, 9, 240);
    Spot(picture, 500, 300, 9, 240);
    Spot(picture, 860, 460, 3, 255);
    StarAnalysis stars;
    ASSERT_TRUE(stars.Run(picture, 60.0F));
    EXPECT_EQ(stars.Count(), 3);
    EXPECT_TRUE(HasStarAt(stars, 100, 80));
    EXPECT_TRUE(HasStarAt(stars, 500, 300));
    EXPECT_TRUE(HasStarAt(stars, 860, 460));
    for (int i = 0; i < stars.Count(); ++i) {
        const float brightness = stars.Positions()[4 * i + 2];
        const bool saturated = std::abs(stars.Positions()[4 * i] * kWidth - 860.0F) < 1.5F;
        EXPECT_TRUE(brightness >= 0.0F && brightness <= 1.0F);
        if (saturated) {
            EXPECT_EQ(brightness, 0.0F) << "a saturated centre counts as 0";
        }
    }
}

TEST(StarAnalysis, HasNothingToShowOnADarkPictureAndKeepsTheOldStars) {
    cv::Mat picture = Night();
    Spot(picture, 400, 200, 12, 230);
    StarAnalysis stars;
    ASSERT_TRUE(stars.Run(picture, 60.0F));
    const int before = stars.Count();
    EXPECT_FALSE(stars.Run(Night(9), 60.0F));
    EXPECT_FALSE(stars.Run(cv::Mat(), 60.0F));
    EXPECT_EQ(stars.Count(), before);
    EXPECT_TRUE(HasStarAt(stars, 400, 200));
}

TEST(StarAnalysis, LeavesOutASky) {
    cv::Mat picture = Night();
    cv::rectangle(picture, {0, 0, kWidth, 120}, cv::Scalar(250, 250, 250, 255), cv::FILLED);
    Spot(picture, 480, 400, 9, 250);
    StarAnalysis stars;
    ASSERT_TRUE(stars.Run(picture, 60.0F));
    EXPECT_EQ(stars.Count(), 1);
    EXPECT_TRUE(HasStarAt(stars, 480, 400));
}

// At 960 pixels the radius is (130 - density) pixels.
TEST(StarAnalysis, MergesByDensityAndDropsEveryLaterOneOfAChain) {
    cv::Mat chain = Night();
    for (int k = 0; k < 3; ++k) Spot(chain, 300 + 60 * k, 200, 6, 240);
    StarAnalysis stars;
    ASSERT_TRUE(stars.Run(chain, 60.0F));  // radius 70: both neighbours of the first in the list
    EXPECT_EQ(stars.Count(), 1);
    ASSERT_TRUE(stars.Run(chain, 100.0F));  // radius 30
    EXPECT_EQ(stars.Count(), 3);
}

TEST(StarAnalysis, KeepsToFiftyStars) {
    cv::Mat picture = Night();
    for (int y = 30; y < kHeight; y += 60) {
        for (int x = 30; x < kWidth; x += 60) Spot(picture, x, y, 4, 255);
    }
    StarAnalysis stars;
    ASSERT_TRUE(stars.Run(picture, 100.0F));
    EXPECT_EQ(stars.Count(), StarAnalysis::kMostStars);
}

TEST(StarAnalysis, BearsTinyPictures) {
    for (const cv::Size& size : {cv::Size(1, 1), cv::Size(3, 2), cv::Size(1, 99)}) {
        StarAnalysis stars;
        stars.Run(cv::Mat(size, CV_8UC4, cv::Scalar::all(255)), 60.0F);
        EXPECT_LE(stars.Count(), size.area());
    }
}

class AstralEffects : public ::testing::Test {
protected:
    AstralEffects() { Spot(clip, 400, 200, 12, 230); }

    test::MaterialEffects effects;
    cv::Mat clip = Night();
    cv::Mat dark = Night(2);
};

TEST_F(AstralEffects, LookForStarsOnEverySecondFrameAndAfterAChange) {
    const auto effect = effects.Make(kAstralMasterGuid);
    const auto draw = [&](int32_t position, cv::Mat& picture) {
        return test::DrawFrame(*effect, position, test::RecordOf(picture));
    };
    EXPECT_EQ(draw(1, dark), kFilterFailed) << "nothing yet";
    EXPECT_EQ(draw(3, clip), kFilterFailed) << "odd: not looked for";
    EXPECT_EQ(draw(4, clip), kFilterOk);
    EXPECT_EQ(draw(5, dark), kFilterOk) << "odd: the old stars";
    effect->SetParam("density", kParamFloat, NLEParamValue::Float(61.0F));
    EXPECT_EQ(draw(7, dark), kFilterFailed) << "a change looks at once";
    test::EffectRecord& record = effects.Engine().Effect(0);
    EXPECT_EQ(record.UniformInt("count"), 1);
    EXPECT_EQ(record.Array("posArray").size(), 200U);
    EXPECT_EQ(record.InputAt(1).kind, test::EffectRecord::Input::kImage);
}

TEST_F(AstralEffects, TakeTheUsersPictureOrElseTheirOwn) {
    const auto effect = effects.Make("D96CCC6B-621E-44D3-BBF0-6AA3FC643D13");
    test::EffectRecord& record = effects.Engine().Effect(0);
    const auto widthWith = [&](const std::string& profile) {
        effect->SetParam("Profile", kParamText, NLEParamValue::Text(profile));
        EXPECT_EQ(test::DrawFrame(*effect, 0, test::RecordOf(clip)), kFilterOk);
        EXPECT_EQ(record.InputAt(1).kind, test::EffectRecord::Input::kMaterial);
        return record.InputAt(1).width;
    };
    const std::string folder = KELMO_SOURCE_DIR "/material/qor_effect/material/image/";
    EXPECT_EQ(widthWith(""), 160);
    EXPECT_EQ(widthWith(folder + "hallucination/ramp.png"), 256);
    EXPECT_EQ(widthWith(folder + "no such file.png"), 160);
    EXPECT_EQ(widthWith(folder + "hallucination/filter.conf"), 160) << "no picture";
}

}  // namespace
}  // namespace kelmo
