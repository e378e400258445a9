// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/e_wave/body_ring.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/effects/support/material_effect.h"

namespace kelmo {
namespace {

TEST(BodyRing, IsAsWideAsTheBodyInItsBand) {
    // A triangle, 80 wide at its foot; its sides have no points between their ends.
    const std::vector<cv::Point> triangle = {{50, 10}, {90, 90}, {10, 90}};
    const cv::Rect box(10, 10, 81, 81);
    const struct {
        const char* name;
        Band band;
        int32_t left, width;
    } cases[] = {
        {"half way", {45, 10}, 30, 40},        {"foot on the edge", {80, 10}, 10, 80},
        {"tip on the edge", {0, 10}, 50, 0},   {"above the body", {-30, 10}, 91, -81},
        {"below the body", {91, 10}, 91, -81},
    };
    for (const auto& c : cases) {
        const cv::Rect ring = RingInBand(triangle, box, c.band);
        EXPECT_EQ(ring.x, c.left) << c.name;
        EXPECT_EQ(ring.width, c.width) << c.name;
        EXPECT_EQ(ring.y, c.band.top) << c.name;
    }
    EXPECT_EQ(RingInBand(triangle, box, {40, 20}).height, 40 * 20 / 81);
}

TEST(BodyRing, IsOneSmoothPath) {
    const cv::Size size(548, 308);
    for (const bool open : {false, true}) {
        std::vector<CurveLine> lines;
        RingLines({100, 50, 80, 20}, open, size, [&](const CurveLine& l) { lines.push_back(l); });
        ASSERT_EQ(lines.size(), 4U);
        EXPECT_EQ(lines[0].startProgress, 0.0F);
        EXPECT_NEAR(lines[3].endProgress, 1.0F, 1e-6);
        EXPECT_EQ(lines[3].end == lines[0].start, !open);
        for (std::size_t k = 1; k < 4; ++k) {
            EXPECT_EQ(lines[k].start, lines[k - 1].end);
            EXPECT_EQ(lines[k].startProgress, lines[k - 1].endProgress);
            const cv::Point2f in = lines[k - 1].end - lines[k - 1].control2;
            const cv::Point2f out = lines[k].control1 - lines[k].start;
            EXPECT_NEAR(in.cross(out), 0.0F, 1e-5) << k;
            EXPECT_GT(in.dot(out), 0.0F) << k;
        }
    }
    RingLines({5, 5, 0, 0}, false, size, [](const CurveLine&) { ADD_FAILURE(); });
}

TEST(BodyRings, WithoutABodyDrawNothing) {
    test::MaterialEffects effects;
    cv::Mat clip(36, 64, CV_8UC4, cv::Scalar::all(9));
    for (const char* guid :
         {"58A66025-F0E9-D5F5-CB3E-2363620AD304", "5222D6BB-D07E-68B3-AF6B-B365575AC683"}) {
        auto effect = effects.Make(guid);
        ASSERT_EQ(test::DrawFrame(*effect, 5, test::RecordOf(clip)), kFilterOk) << guid;
        for (const auto& made : effects.Engine().Effects()) {
            const auto colors = made->Array("uColor");
            for (std::size_t i = 0; i < std::min<std::size_t>(4, colors.size()); ++i) {
                EXPECT_EQ(colors[i], 0.0F) << guid;
            }
        }
        EXPECT_EQ(test::DrawFrame(*effect, 5, {}), kFilterFailed) << "no picture for a mask";
    }
}

}  // namespace
}  // namespace kelmo
