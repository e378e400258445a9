// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include "effects/scene/photo_cards.h"
#include "effects/scene/starburst_effect.h"
#include "tests/effects/support/material_effect.h"

namespace kelmo {
namespace {

/// A picture with one bright spot in each of the tiles named.
cv::Mat SquaresIn(const std::vector<cv::Point>& tiles, int level) {
    cv::Mat gray = cv::Mat::zeros(300, 400, CV_8U);  // tiles of 40 x 30
    for (const cv::Point& tile : tiles) {
        gray(cv::Rect(tile.x * 40 + 17, tile.y * 30 + 12, 6, 6)).setTo(level);
    }
    // Of two pixels next to each other one must be the stronger corner.
    cv::GaussianBlur(gray, gray, {5, 5}, 1.0);
    return gray;
}

TEST(StarPoints, GiveTheStrongestCornerOfATileRowByRow) {
    const struct {
        const char* name;
        std::vector<cv::Point> tiles;
        int level;
        int32_t amount, count;
    } cases[] = {
        {"two", {{7, 1}, {2, 8}}, 255, 50, 2},
        {"every tile's own", {{0, 0}, {9, 9}}, 255, 0, 2},
        {"too faint", {{3, 3}}, 60, 30, 0},
        {"faint ones, too", {{3, 3}}, 60, 100, 1},
        {"beyond the range", {{3, 3}}, 60, 999, 1},
        {"black", {}, 255, 100, 0},
    };
    for (const auto& c : cases) {
        StarPoints points;
        points.Detect(SquaresIn(c.tiles, c.level), c.amount);
        ASSERT_EQ(points.Count(), c.count) << c.name;
        for (int32_t i = 0; i < c.count; ++i) {
            EXPECT_NEAR(points.Places()[2 * i], (c.tiles[i].x + 0.5) / 10, 0.02) << c.name;
            EXPECT_NEAR(points.Places()[2 * i + 1], 1 - (c.tiles[i].y + 0.5) / 10, 0.02) << c.name;
        }
    }
    StarPoints none;
    none.Detect(cv::Mat(9, 9, CV_8U, cv::Scalar(255)), 100);
    EXPECT_EQ(none.Count(), 0) << "tiles without a pixel";
}

TEST(PhotoCards, TakeTheirGridFromTheLongerSide) {
    const struct {
        int32_t count, width, height;
        cv::Size grid;
    } cases[] = {{32, 1280, 720, {32, 18}}, {32, 720, 1280, {18, 32}}, {7, 500, 500, {7, 7}},
                 {0, 1280, 720, {}},        {-5, 1280, 720, {}},       {9, 0, 720, {}}};
    for (const auto& c : cases) EXPECT_EQ(PhotoCards::GridFor(c.count, c.width, c.height), c.grid);
    for (const cv::Size frame : {cv::Size(1280, 720), cv::Size(1, 100000), cv::Size(90000, 3)}) {
        EXPECT_LE(PhotoCards::GridFor(INT32_MAX, frame.width, frame.height).area(),
                  PhotoCards::kMostCards);
    }
}

TEST(PhotoCards, LieOverWhatIsNotBlackAndStayInRange) {
    cv::Mat picture = cv::Mat::zeros(40, 40, CV_8UC4);
    picture(cv::Rect(20, 0, 20, 40)).setTo(cv::Scalar(0, 1, 0, 0));
    PhotoCards cards, again;
    cards.Build({10, 20}, picture);
    again.Build({10, 20}, picture);
    ASSERT_EQ(cards.VertexCount(), 6 * 201);
    for (int k = 0; k < 6; ++k) {
        EXPECT_EQ(cards.Positions()[4 * k + 2], -10.0F);
        EXPECT_EQ(cards.Positions()[4 * k], cards.Corners()[2 * k]);
    }
    for (int v = 6; v < cards.VertexCount(); ++v) {
        EXPECT_GE(cards.Positions()[4 * v], 0.0F) << "the black half";
        EXPECT_EQ(cards.Positions()[4 * v], cards.Positions()[4 * (v - v % 6)]) << "one place";
        for (int i = 0; i < 3; ++i) EXPECT_LE(std::abs(cards.Positions()[4 * v + i]), 1.0F);
        EXPECT_EQ(cards.Positions()[4 * v + 3], again.Positions()[4 * v + 3]);
    }
    cards.Build({0, 0}, {});
    EXPECT_EQ(cards.VertexCount(), 6) << "the backdrop alone";
}

TEST(PhotoCollection, KeepsItsCloudUntilTheGridChanges) {
    test::MaterialEffects effects;
    auto effect = effects.Make("7AD7063E-08B0-D64B-E337-B3FE29BA5CCF");
    test::EffectRecord& record = effects.Engine().Effect(0);
    const auto cloud = [&](const cv::Scalar& colour, int32_t count) {
        cv::Mat clip(36, 64, CV_8UC4, colour);
        clip(cv::Rect(0, 0, 32, 36)).setTo(cv::Scalar::all(0));
        effect->SetParam("uCount", kParamInt, NLEParamValue::Int(count));
        EXPECT_EQ(test::DrawFrame(*effect, 0, test::RecordOf(clip)), kFilterOk);
        return record.vertexCount;
    };
    EXPECT_EQ(cloud(cv::Scalar::all(9), 16), 6 * (16 * 9 + 1));
    EXPECT_EQ(cloud(cv::Scalar::all(0), 16), 6 * (16 * 9 + 1));
    EXPECT_EQ(cloud(cv::Scalar::all(0), 0), 6);
}

TEST(Starburst, TellsOfNoPlacesAtAmountNought) {
    test::MaterialEffects effects;
    auto effect = effects.Make("6C1D40B7-3E7A-4B52-9F08-21A5C4D87E10");
    cv::Mat gray = SquaresIn({{1, 1}, {5, 5}}, 255), clip;
    cv::cvtColor(gray, clip, cv::COLOR_GRAY2BGRA);
    test::EffectRecord& record = effects.Engine().Effect(0);
    for (const auto& [amount, count] : {std::pair(60, 2), std::pair(0, 0)}) {
        effect->SetParam("amount", kParamInt, NLEParamValue::Int(amount));
        ASSERT_EQ(test::DrawFrame(*effect, 0, test::RecordOf(clip)), kFilterOk);
        EXPECT_EQ(record.UniformInt("starburstCount"), count);
    }
    EXPECT_EQ(test::DrawFrame(*effect, 0, FrameRecord::TargetLess(0, 0, 0)), kFilterFailed);
}

}  // namespace
}  // namespace kelmo
