// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>

#include "effects/beam/sweeps/sweep_path.h"
#include "tests/effects/support/material_effect.h"

namespace kelmo {
namespace {

constexpr float kFrames = 100.0F;
const cv::Size kWide(548, 308);

/// Pixels of `kWide`, y down.
cv::Point2f Pixel(const cv::Point2f& p) {
    return {(p.x / 2.0F + 0.5F) * 548.0F, (0.5F - p.y / 2.0F) * 308.0F};
}

TEST(SweepPaths, StandWhereTheyShould) {
    const float diagonal = std::hypot(548.0F, 308.0F);
    const struct {
        const char* name;
        SweepPath path;
        float position;
        bool blend;
        cv::Point2f first, third;  // starts of both lines
    } cases[] = {
        {"nothing has grown", SweepPath::kDiagonal, 0, false, {0, 308}, {0, 308}},
        {"along top and right",
         SweepPath::kDiagonal,
         100,
         true,
         {548 - diagonal, 0},
         {548, diagonal}},
        {"whole, not open", SweepPath::kFromBottomLeft, 25, false, {0, 308}, {0, 308}},
        {"slid apart", SweepPath::kFromBottomLeft, 100, true, {-548, 308}, {548, 308}},
        {"from the other corner", SweepPath::kFromTopRight, 62.5F, true, {274, 0}, {822, 0}},
        {"before the rest",
         SweepPath::kFromBottomLeftWithRest,
         34.999F,
         true,
         {-73, 308},
         {73, 308}},
        {"resting", SweepPath::kFromBottomLeftWithRest, 35, true, {-99.6F, 308}, {99.6F, 308}},
        {"still resting",
         SweepPath::kFromBottomLeftWithRest,
         55,
         true,
         {-99.6F, 308},
         {99.6F, 308}},
        {"rested", SweepPath::kFromBottomLeftWithRest, 100, true, {-548, 308}, {548, 308}},
        {"across", SweepPath::kCross, 25, false, {-68.5F, 346.5F}, {-68.5F, 346.5F}},
        {"centre", SweepPath::kFromCentre, 0, false, {274, 154}, {274, 154}},
        {"far apart", SweepPath::kFromCentre, 100, true, {-685, 308}, {685, 308}},
    };
    for (const auto& c : cases) {
        const Sweep sweep = SweepAt(c.path, c.position, kFrames, kWide);
        EXPECT_EQ(sweep.blend, c.blend) << c.name;
        ASSERT_EQ(sweep.count, 2U) << c.name;
        EXPECT_LT(cv::norm(Pixel(sweep.lines[0].from) - c.first), 1.0) << c.name;
        EXPECT_LT(cv::norm(Pixel(sweep.lines[1].from) - c.third), 1.0) << c.name;
    }
}

TEST(SweepPaths, AreTheirOwnMirrorImageThroughTheCentre) {
    for (const SweepPath path : {SweepPath::kFromCentre, SweepPath::kCross}) {
        for (const float position : {40.0F, 70.0F, 90.0F, 100.0F}) {
            const Sweep sweep = SweepAt(path, position, kFrames, kWide);
            EXPECT_LT(cv::norm(sweep.lines[0].from + sweep.lines[1].to), 1e-3) << position;
            EXPECT_LT(cv::norm(sweep.lines[0].to + sweep.lines[1].from), 1e-3) << position;
        }
    }
}

TEST(SweepPaths, OfRectanglesComeOneByOne) {
    const struct {
        float position;
        std::size_t lines, pairs;
    } cases[] = {{9, 0, 0}, {10, 4, 0}, {39, 8, 0}, {40, 12, 2}, {100, 12, 2}};
    for (const auto& c : cases) {
        const Sweep sweep = SweepAt(SweepPath::kFan, c.position, kFrames, kWide);
        EXPECT_EQ(sweep.count, c.lines) << c.position;
        EXPECT_EQ(sweep.pairs, c.pairs) << c.position;
        EXPECT_EQ(sweep.blend, c.pairs > 0) << c.position;
    }
    const Sweep last = SweepAt(SweepPath::kFan, 100, kFrames, {308, 548});
    EXPECT_NEAR(last.edges[0].from.x, -0.9F, 1e-3);
    EXPECT_NEAR(last.edges[0].from.y, -0.9F, 1e-3);
}

TEST(Sweeps, RunFeatheredLinesAndEndWithTheirTime) {
    test::MaterialEffects effects;
    cv::Mat clip(36, 64, CV_8UC4, cv::Scalar::all(9));
    const struct {
        const char* guid;
        int32_t position;
        int32_t frames;
        bool lines;
        int32_t blend;
    } cases[] = {
        {"6B520ED1-7AB2-437C-AFE6-81F12EF6B16A", 50, 100, true, 1},
        {"6B520ED1-7AB2-437C-AFE6-81F12EF6B16A", 20, 100, true, 0},
        {"6B520ED1-7AB2-437C-AFE6-81F12EF6B16A", 2, 3, false, 0},
        {"C802B9A4-D3EB-4913-B63C-DC580CF57B29", 30, 100, true, 1},  // of 37 frames
        {"C802B9A4-D3EB-4913-B63C-DC580CF57B29", 38, 100, false, 0},
        {"C802B9A4-D3EB-4913-B63C-DC580CF57B29", 20, 20, true, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.guid + std::to_string(c.position));
        auto effect = effects.Make(c.guid);
        const auto& made = effects.Engine().Effects();
        effect->SetDuration(c.frames);
        ASSERT_EQ(test::DrawFrame(*effect, c.position, test::RecordOf(clip), test::RecordOf(clip)),
                  kFilterOk);
        const auto* beam = made.at(made.size() - 3).get();
        const auto* own = made.back().get();
        const auto colors = beam->Array("uColor");
        EXPECT_EQ(!colors.empty() && colors[3] > 0.0F && c.frames > 3, c.lines);
        EXPECT_EQ(own->UniformInt("startBlend"), c.blend);
    }
}

}  // namespace
}  // namespace kelmo
