// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/measure/reference_statistics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <opencv2/imgcodecs.hpp>

#include "tests/support/temporary_folder.h"

namespace kelmo::measure {
namespace {

class MeasureFileTest : public testing::Test {
protected:
    ColorStatistics Measure(const cv::Mat& picture) {
        const std::string path = folder.Path("picture.png");
        EXPECT_TRUE(cv::imwrite(path, picture));
        return MeasureFile(path);
    }
    test::TemporaryFolder folder;
};

TEST_F(MeasureFileTest, TellsWhiteBlackAndTheirMixture) {
    const ColorStatistics white = Measure(cv::Mat(4, 4, CV_8UC3, cv::Scalar::all(255)));
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(white.mean[i], 0.0, 2e-3) << i;
        EXPECT_NEAR(white.deviation[i], 0.0, 1e-6) << i;
    }
    // Black counts as a response of 0.03: l is sqrt(3) times its logarithm.
    const double blackest = std::sqrt(3.0) * std::log10(0.03);
    EXPECT_NEAR(Measure(cv::Mat::zeros(4, 4, CV_8UC3)).mean[0], blackest, 1e-4);
    cv::Mat half(4, 4, CV_8UC3, cv::Scalar::all(255));
    half.rowRange(0, 2).setTo(0);
    const ColorStatistics mixed = Measure(half);
    EXPECT_NEAR(mixed.mean[0], blackest / 2, 2e-3);
    EXPECT_NEAR(mixed.deviation[0], -blackest / 2, 2e-3);
}

TEST_F(MeasureFileTest, TakesGreyDeepAndTransparentPictures) {
    const double white = Measure(cv::Mat(4, 4, CV_8UC3, cv::Scalar::all(255))).mean[0];
    EXPECT_NEAR(Measure(cv::Mat(4, 4, CV_8UC1, cv::Scalar(255))).mean[0], white, 1e-9);
    EXPECT_NEAR(Measure(cv::Mat(4, 4, CV_16UC3, cv::Scalar::all(65535))).mean[0], white, 1e-9);
    const double grey = Measure(cv::Mat(4, 4, CV_8UC3, cv::Scalar::all(128))).mean[0];
    EXPECT_NEAR(Measure(cv::Mat(4, 4, CV_8UC4, cv::Scalar(255, 255, 255, 128))).mean[0], grey,
                1e-9);
}

TEST_F(MeasureFileTest, SaysWhichFileIsNoPicture) {
    folder.Write("text.png", "no picture");
    for (const char* name : {"text.png", "missing.png"}) {
        try {
            MeasureFile(folder.Path(name));
            FAIL() << name;
        } catch (const std::runtime_error& error) {
            EXPECT_THAT(error.what(), testing::HasSubstr(name));
        }
    }
}

TEST(ReferenceStatistics, ArePrintedByTheNamesOfTheParameters) {
    const ColorStatistics statistics{{-0.85, 0.16, 0.0321234567}, {0.5, 0.25, 0.125}};
    EXPECT_EQ(AsParameters(statistics),
              "-p mean_b=-0.850000 -p mean_g=0.160000 -p mean_r=0.032123 -p stddb=0.500000 "
              "-p stddg=0.250000 -p stddr=0.125000");
    const auto json = nlohmann::json::parse(AsJson(statistics));
    EXPECT_EQ(json.size(), 6u);
    EXPECT_EQ(json["mean_b"], -0.85);
    EXPECT_EQ(json["stddr"], 0.125);
}

}  // namespace
}  // namespace kelmo::measure
