// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/color_statistics.h"

#include <gtest/gtest.h>

#include <cmath>

#include "effects/image/match_color_effect.h"
#include "tests/effects/support/material_effect.h"

namespace kelmo {
namespace {

cv::Mat Noise(int rows, int cols, uint64_t seed) {
    cv::Mat picture(rows, cols, CV_8UC4);
    cv::RNG rng(seed);
    rng.fill(picture, cv::RNG::UNIFORM, 0, 256);
    return picture;
}

/// The definition in double precision.
ColorStatistics Reference(const cv::Mat& bgra) {
    double sum[3] = {};
    double squares[3] = {};
    for (int y = 0; y < bgra.rows; ++y) {
        for (int x = 0; x < bgra.cols; ++x) {
            const auto p = bgra.at<cv::Vec4b>(y, x);
            const double b = p[0] / 255.0;
            const double g = p[1] / 255.0;
            const double r = p[2] / 255.0;
            const auto response = [](double v) { return std::log10(std::max(v, 0.03)); };
            const double l = response(0.0402 * b + 0.5783 * g + 0.3811 * r);
            const double m = response(0.0782 * b + 0.7244 * g + 0.1967 * r);
            const double s = response(0.8444 * b + 0.1288 * g + 0.0241 * r);
            const double v[3] = {(l + m + s) / std::sqrt(3.0), (l + m - 2.0 * s) / std::sqrt(6.0),
                                 (l - m) / std::sqrt(2.0)};
            for (int k = 0; k < 3; ++k) {
                sum[k] += v[k];
                squares[k] += v[k] * v[k];
            }
        }
    }
    ColorStatistics result;
    const double n = static_cast<double>(bgra.total());
    for (int k = 0; k < 3; ++k) {
        result.mean[k] = sum[k] / n;
        result.deviation[k] =
            std::sqrt(std::max(0.0, squares[k] / n - result.mean[k] * result.mean[k]));
    }
    return result;
}

void ExpectNear(const ColorStatistics& got, const ColorStatistics& expected,
                const std::string& what) {
    for (int k = 0; k < 3; ++k) {
        // The byte scale 0.003922 differs from 1/255 by 1.1e-4 of its value, which log10 turns into
        // 5e-5.
        EXPECT_NEAR(got.mean[k], expected.mean[k], 3e-4) << what << " mean " << k;
        EXPECT_NEAR(got.deviation[k], expected.deviation[k], 3e-4) << what << " deviation " << k;
    }
}

TEST(ColorStatistics, BothRoadsAgreeWithTheDefinition) {
    const cv::Size sizes[] = {{64, 64}, {101, 99}, {1, 300}, {300, 1}, {7, 5}, {40, 7}};
    for (const cv::Size& size : sizes) {
        const cv::Mat picture = Noise(size.height, size.width, 7);
        cv::Mat scratch;
        const std::string what = std::to_string(size.width) + "x" + std::to_string(size.height);
        const ColorStatistics expected = Reference(picture);
        ExpectNear(MeasureColorSerial(picture), expected, "serial " + what);
        ExpectNear(MeasureColorParallel(picture, scratch), expected, "parallel " + what);
    }
}

TEST(ColorStatistics, OfBlackAreTheFloorAndOfAnEmptyPictureZero) {
    const cv::Mat black = cv::Mat::zeros(200, 200, CV_8UC4);
    cv::Mat scratch;
    const ColorStatistics measured = MeasureColor(black, scratch);
    EXPECT_NEAR(measured.mean[0], 3.0 * std::log10(0.03) / std::sqrt(3.0), 1e-5);
    EXPECT_NEAR(measured.deviation[0], 0.0, 1e-6);
    EXPECT_EQ(MeasureColor(cv::Mat(), scratch).mean[0], 0.0);
}

TEST(ColorStatistics, TheParallelRoadRepeatsForAnyNumberOfThreads) {
    const cv::Mat picture = Noise(203, 311, 3);
    cv::Mat scratch;
    const int threads = cv::getNumThreads();
    cv::setNumThreads(1);
    const ColorStatistics one = MeasureColorParallel(picture, scratch);
    cv::setNumThreads(8);
    const ColorStatistics many = MeasureColorParallel(picture, scratch);
    cv::setNumThreads(threads);
    EXPECT_EQ(one.mean, many.mean);
    EXPECT_EQ(one.deviation, many.deviation);
}

class MatchColor : public ::testing::Test {
protected:
    test::MaterialEffects effects;
    std::unique_ptr<NLEOpenGLFilter> effect = effects.Make("718F5DC3-D828-48BF-B7CF-135474EF64A4");
    test::EffectRecord& record = effects.Engine().Effect(0);
    cv::Mat clip = Noise(36, 64, 5);
};

TEST_F(MatchColor, SendsTheReferenceAndWhatItMeasured) {
    EXPECT_TRUE(effect->NeedsCpuFrame());
    effect->SetParam("strength", kParamInt, NLEParamValue::Int(85));
    ASSERT_EQ(test::DrawFrame(*effect, 0, test::RecordOf(clip)), kFilterOk);
    const ColorStatistics measured = Reference(clip);
    EXPECT_NEAR(record.UniformFloat("mean_b1"), measured.mean[0], 3e-4);
    EXPECT_NEAR(record.UniformFloat("stddr1"), measured.deviation[2], 3e-4);
    EXPECT_EQ(record.UniformInt("Enabled"), 1);
    EXPECT_EQ(record.UniformInt("strength"), 85);
}

TEST_F(MatchColor, LeavesAFrameAloneWhenDisabledOrWithoutReference) {
    effect->SetParam("Enabled", kParamInt, NLEParamValue::Int(0));
    EXPECT_EQ(test::DrawFrame(*effect, 0, test::RecordOf(clip)), kFilterFailed);
    effect->SetParam("Enabled", kParamInt, NLEParamValue::Int(1));
    for (const char* name : {"mean_b", "mean_g", "mean_r", "stddb", "stddg", "stddr"}) {
        effect->SetParam(name, kParamFloat, NLEParamValue::Float(0.0F));
    }
    EXPECT_EQ(test::DrawFrame(*effect, 1, test::RecordOf(clip)), kFilterFailed);
    EXPECT_EQ(record.renderCount, 0);
}

}  // namespace
}  // namespace kelmo
