// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <opencv2/imgproc.hpp>

#include "effects/beam/lightning/body_bolts.h"
#include "effects/beam/lightning/bolt_branches.h"
#include "effects/beam/lightning/bolt_swing.h"
#include "effects/beam/lightning/bright_ends.h"
#include "effects/beam/lightning/fractal_bolt.h"
#include "effects/beam/lightning/frame_edge_hit.h"
#include "effects/beam/lightning/wave_bars.h"
#include "platform/random.h"

namespace kelmo {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kHuge = std::numeric_limits<float>::infinity();
const BoltLine kAcross = {{-0.5F, 0.0F}, {0.5F, 0.0F}};

std::vector<BoltLine> Bolt(const BoltRoughness& roughness, BoltPath* path = nullptr,
                           const BoltLine& line = kAcross) {
    std::vector<BoltLine> lines;
    FractalBolt(line, roughness, path, [&](const BoltLine& l) { lines.push_back(l); });
    return lines;
}

TEST(ABolt, HasAsManyLinesAsItsRoughnessHalvesButNeverTooMany) {
    const struct {
        float displace, detail;
        std::size_t lines;
    } cases[] = {{0.02F, 0.02F, 2},  {0.0199F, 0.02F, 1},
                 {0.22F, 0.02F, 16}, {1.0F, 0.0F, Bolt({1.0F, 0.001F}).size()},
                 {-1.0F, 0.02F, 1},  {kNan, 0.02F, 1},
                 {kHuge, 0.02F, 1},  {1e30F, 0.02F, 2048},
                 {0.5F, -3.0F, 512}};
    for (const auto& c : cases) {
        BoltPath path;
        EXPECT_EQ(Bolt({c.displace, c.detail}, &path).size(), c.lines) << c.displace;
        EXPECT_EQ(path.Points().size() + 1, c.lines) << c.displace;
    }
    EXPECT_TRUE(Bolt({0.2F}, nullptr, {{kNan, 0.0F}, {0.5F, 0.0F}}).empty());
}

TEST(ABolt, IsAChainFromEndToEndThatRepeatsWithItsSeed) {
    for (const uint32_t seed : {1U, 7U, 99U}) {
        Srand(seed);
        BoltPath path;
        const auto lines = Bolt({0.37F, 0.009F}, &path);
        Srand(seed);
        const auto again = Bolt({0.37F, 0.009F});
        ASSERT_EQ(lines.size(), again.size());
        EXPECT_EQ(lines.front().start, kAcross.start);
        EXPECT_EQ(lines.back().end, kAcross.end);
        EXPECT_EQ(lines.front().startProgress, 0.0F);
        EXPECT_EQ(lines.back().endProgress, 1.0F);
        for (std::size_t i = 0; i < lines.size(); ++i) {
            EXPECT_EQ(lines[i].end, again[i].end);
            // Offsets of a half, a quarter, an eighth ... never add up to more than the first.
            EXPECT_LT(std::abs(lines[i].end.y), 0.37F);
            if (i == 0) continue;
            EXPECT_EQ(lines[i].start, lines[i - 1].end);
            EXPECT_EQ(lines[i].startProgress, lines[i - 1].endProgress);
        }
        SortPointsByDistance(path.Points(), kAcross.start);
        float last = 0.0F;
        for (const BoltPoint& point : path.Points()) {
            const float distance = std::hypot(point.at.x + 0.5F, point.at.y);
            EXPECT_GE(distance, last - 1e-6F);
            last = distance;
        }
    }
}

TEST(Branches, LeaveTheirBoltForwardsShorterAndFainter) {
    std::vector<BoltPoint> points;
    for (int i = 0; i < 50; ++i) {
        points.push_back({{0.02F * static_cast<float>(i), 0.0F}, 0.02F * static_cast<float>(i), i});
    }
    const BranchShape straight{5.0F, 13.0F, 0.0F};
    int drawn = 0;
    for (uint32_t seed = 0; seed < 50; ++seed) {
        Srand(seed);
        const auto take = [&](const BoltLine& line) {
            ++drawn;
            const cv::Point2f way = line.end - line.start;
            const auto degrees = std::abs(std::atan2(way.y, way.x)) * 180.0 / CV_PI;
            EXPECT_NEAR(line.start.x, line.startProgress, 1e-6F);
            EXPECT_NEAR(std::hypot(way.x, way.y), 0.45F, 0.1501F);
            EXPECT_TRUE(degrees > 4.99 && degrees < 18.01) << degrees;
            EXPECT_EQ(line.alpha, 0.7F);
            EXPECT_EQ(line.endProgress, 1.0F);
        };
        EXPECT_EQ(GenerateBranches(points, 1.0F, 2, straight, take), 0);
    }
    EXPECT_GT(drawn, 80);
    EXPECT_LE(drawn, 100);
    const auto none = [](const BoltLine&) { ADD_FAILURE(); };
    EXPECT_EQ(GenerateBranches(points, 1.0F, 0, straight, none), 1);
    EXPECT_EQ(GenerateBranches(points, 1.0F, 51, straight, none), 1);
    EXPECT_EQ(GenerateBranches(points, 1.0F, 1 << 30, straight, none), 1);
    const auto any = [](const BoltLine&) {};
    EXPECT_EQ(GenerateBranches(points, 1.0F, 50, straight, any), 0) << "every point once";
}

TEST(TheEdgeOfTheFrame, IsMetInFrontOfTheHand) {
    const struct {
        const char* name;
        cv::Point2f elbow, hand;
        std::optional<cv::Point2f> hit;
    } cases[] = {
        {"up", {0.0F, 0.0F}, {0.0F, 0.5F}, cv::Point2f(0.0F, 1.0F)},
        {"left and down", {0.5F, 0.5F}, {0.0F, 0.25F}, cv::Point2f(-1.0F, -0.25F)},
        {"into the corner", {0.0F, 0.0F}, {0.5F, 0.5F}, cv::Point2f(1.0F, 1.0F)},
        {"along an edge", {-0.5F, 1.0F}, {0.5F, 1.0F}, cv::Point2f(1.0F, 1.0F)},
        {"from outside", {-3.0F, 0.0F}, {-2.0F, 0.0F}, cv::Point2f(-1.0F, 0.0F)},
        {"away from outside", {0.0F, 0.0F}, {0.0F, 1.5F}, std::nullopt},
        {"past it", {-3.0F, 0.0F}, {-2.0F, 4.0F}, std::nullopt},
        {"nowhere", {0.3F, 0.3F}, {0.3F, 0.3F}, std::nullopt},
        {"no number", {kNan, 0.3F}, {0.3F, 0.3F}, std::nullopt},
    };
    for (const auto& c : cases) EXPECT_EQ(FrameEdgeHit(c.elbow, c.hand), c.hit) << c.name;
}

TEST(Swings, GoThereAndBack) {
    // 25 frames one way with growing steps, then 25 the other way.
    EXPECT_EQ(CrownTurn(0, 25.0F), 2.0F);
    EXPECT_EQ(CrownTurn(24, 25.0F), 50.0F);
    EXPECT_EQ(CrownTurn(25, 25.0F), -2.0F);
    EXPECT_EQ(CrownTurn(49, 25.0F), -50.0F);
    EXPECT_EQ(CrownTurn(50, 25.0F), 2.0F);
    std::vector<float> places;
    BoltWobble wobble;
    for (int i = 0; i < 7; ++i) places.push_back(wobble.Next(2.0F, 0.5F));
    EXPECT_THAT(places, ::testing::ElementsAre(0.0F, -0.5F, -0.5F, 0.0F, 0.0F, -0.5F, -0.5F));
    for (const float rate : {0.0F, -25.0F, kNan, kHuge, 0.1F}) {
        EXPECT_TRUE(std::isfinite(CrownTurn(7, rate) + BoltWobble().Next(rate, 0.1F)));
    }
}

TEST(TheFlashOfABody, IsLitAtTheBeginningOfItsCycle) {
    const struct {
        float ticks;
        int32_t interval, light;
        int32_t tick;
        bool lit;
    } cases[] = {{0.9F, 15, 12, 0, true},  {12.0F, 15, 12, 12, true}, {13.0F, 15, 12, 13, false},
                 {15.0F, 15, 12, 0, true}, {14.0F, 15, 15, 14, true}, {7.0F, 0, 12, 0, true},
                 {7.0F, -4, 0, 0, true},   {7.0F, 15, -1, 7, false}};
    for (const auto& c : cases) {
        const BodyFlash flash = BodyFlash::At(c.ticks, c.interval, c.light);
        EXPECT_EQ(flash.tick, c.tick);
        EXPECT_EQ(flash.lit, c.lit);
    }
}

TEST(TheBoltsOfABody, JumpEveryThirdTickAndEndOnTheBody) {
    cv::Mat mask = cv::Mat::zeros(308, 548, CV_8UC1);
    const cv::Rect body(200, 100, 100, 200);
    mask(body).setTo(255);
    BodyBolts bolts;
    const auto ends = [&](int32_t tick, const cv::Rect& box) {
        std::vector<cv::Point2f> places;
        std::size_t lines = 0;
        bolts.Draw(tick, mask, box, [&](const BoltLine& line) {
            if (++lines % 16 == 0) places.push_back(line.end);
        });
        EXPECT_EQ(lines, 64U);
        return places;
    };
    Srand(5);
    const auto first = ends(0, cv::Rect(0, 0, 548, 308));
    const auto second = ends(1, body);
    const auto later = ends(3, body);
    for (std::size_t i = 0; i < BodyBolts::kBolts; ++i) {
        const cv::Point2f pixel((first[i].x + 1.0F) * 274.0F, (1.0F - first[i].y) * 154.0F);
        EXPECT_TRUE(cv::Rect2f(196.0F, 96.0F, 108.0F, 208.0F).contains(pixel)) << pixel;
        EXPECT_LT(cv::norm(second[i] - first[i]), 0.02);
        EXPECT_GT(cv::norm(later[i] - first[i]), 0.02);
    }
    mask.setTo(0);
    ends(3, cv::Rect(10, 10, 1, 1));  // nowhere to be: ends all the same
}

TEST(WaveBars, StayWithinThePersonAsTheyRise) {
    const cv::Rect box(137, 77, 274, 154);  // the middle half of the picture
    const cv::Size size(548, 308);
    const auto resting = WaveBars(box, size, {}, 0.0F);
    EXPECT_NEAR(resting[1].start.x, 0.375F, 1e-5F) << "runs back from the right";
    EXPECT_NEAR(resting[1].start.y, -0.375F, 1e-5F) << "the foot of the range";
    EXPECT_NEAR(resting[2].start.y, -0.375F + 0.3F * 0.775F, 1e-4F);
    for (const float phase : {-1.0F, 0.3F, 1.0F}) {
        for (float turn = 0.0F; turn < 1.0F; turn += 0.125F) {
            for (const CurveLine& bar :
                 WaveBars(box, size, {phase, phase, phase, phase, phase, phase}, turn)) {
                for (const cv::Point2f& end : {bar.start, bar.end}) {
                    EXPECT_LE(std::abs(end.x), 0.3751F);
                    EXPECT_TRUE(end.y > -0.46F && end.y < 0.3751F) << end.y;
                }
                EXPECT_GT(bar.control1.y, bar.start.y);
                EXPECT_LT(bar.control2.y, bar.end.y);
            }
        }
    }
}

TEST(TheEndsOfWhatIsBright, AreItsCornersInsideTheBorder) {
    cv::Mat picture = cv::Mat::zeros(100, 200, CV_8UC4);
    BrightEndFinder finder;
    BrightEnds ends{{9.0F, 9.0F}, {9.0F, 9.0F}};
    cv::Mat mask;
    EXPECT_FALSE(finder.FindAnchors(picture, ends, mask));
    picture.row(2).setTo(255);  // in the border
    EXPECT_FALSE(finder.FindAnchors(picture, ends, mask));
    EXPECT_EQ(mask.at<cv::Vec4b>(2, 7)[0], 250) << "the mask has the border, too";
    EXPECT_FALSE(finder.FindAnchors(cv::Mat(8, 8, CV_8UC4, cv::Scalar::all(255)), ends, mask));
    EXPECT_FALSE(finder.FindAnchors(cv::Mat(), ends, mask));
    EXPECT_EQ(ends.topLeft.x, 9.0F);
    picture(cv::Rect(50, 25, 20, 20)).setTo(255);
    picture(cv::Rect(130, 60, 21, 16)).setTo(255);
    ASSERT_TRUE(finder.FindAnchors(picture, ends, mask));
    EXPECT_EQ(ends.topLeft, cv::Point2f(-0.5F, 0.5F));
    EXPECT_EQ(ends.bottomRight, cv::Point2f(0.5F, -0.5F));
}

}  // namespace
}  // namespace kelmo
