// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/offset/edge_offset.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "geometry/shapes/outlines.h"

namespace kelmo {
namespace {

using test::Outline;

float Length(const cv::Point2f& vector) {
    return std::hypot(vector.x, vector.y);
}

// Distance of `point` from the line through `from` and `to`, positive on the right-hand side.
double RightOf(const cv::Point2f& point, const cv::Point2f& from, const cv::Point2f& to) {
    const cv::Point2f along = to - from;
    return -(along.cross(point - from)) / Length(along);
}

TEST(OffsetDirection, ofAStraightRunStandsAtRightAnglesToItWithLengthOne) {
    for (int turn = 0; turn < 16; ++turn) {
        const double angle = turn * std::numbers::pi / 8;
        const cv::Point2f along(std::cos(angle), std::sin(angle));
        const cv::Point2f direction = OffsetDirection(along, along);
        EXPECT_NEAR(Length(direction), 1, 1e-6);
        EXPECT_NEAR(direction.dot(along), 0, 1e-6);
        EXPECT_GT(direction.cross(along), 0) << "points to the right";
    }
}

TEST(OffsetDirection, atACornerGrowsWithItsSharpness) {
    struct Case {
        double innerAngle;  // degrees between the edges
        double length;
    };
    for (const Case& c : {Case{90, std::sqrt(2)}, {60, 2}, {30, 3.8637}, {150, 1.0353}}) {
        for (const double side : {1.0, -1.0}) {
            const double turn = side * (180 - c.innerAngle) * std::numbers::pi / 180;
            const cv::Point2f outgoing(std::cos(turn), std::sin(turn));
            EXPECT_NEAR(Length(OffsetDirection({1, 0}, outgoing)), c.length, 1e-3)
                << c.innerAngle << " degrees, side " << side;
        }
    }
}

TEST(OffsetDirections, putThePointAtDistanceOneFromBothEdges) {
    const Outline shapes[] = {test::Square(2), test::Star(5, 3, 1.2f), test::Star(9, 2, 1.9f),
                              test::Circle(37, 1), test::Turned(test::Circle(11, 0.3f))};
    for (const Outline& shape : shapes) {
        const std::vector<EdgeCoreInfo> cores = OffsetDirections(shape);
        ASSERT_EQ(cores.size(), shape.size());
        for (size_t i = 0; i < shape.size(); ++i) {
            const cv::Point2f& before = shape[(i + shape.size() - 1) % shape.size()];
            const cv::Point2f& behind = shape[(i + 1) % shape.size()];
            const cv::Point2f moved = shape[i] + cores[i].dir;
            EXPECT_NEAR(RightOf(moved, before, shape[i]), 1, 2e-4) << i;
            EXPECT_NEAR(RightOf(moved, shape[i], behind), 1, 2e-4) << i;
        }
    }
}

TEST(OffsetDirections, pointIntoTheMaterialOfOutersAndHoles) {
    const Outline outer = test::Circle(24, 1);
    const std::vector<EdgeCoreInfo> inwards = OffsetDirections(outer);
    const Outline hole = test::Turned(outer);
    const std::vector<EdgeCoreInfo> outwards = OffsetDirections(hole);
    for (size_t i = 0; i < outer.size(); ++i) {
        EXPECT_LT(inwards[i].dir.dot(outer[i]), 0);
        EXPECT_GT(outwards[i].dir.dot(hole[i]), 0);
    }
}

TEST(OffsetDirections, ofRepeatedPointsAreThoseOfTheirCorner) {
    const Outline square = test::Square(2);
    const Outline repeated{square[0], square[0], square[1], square[2],
                           square[2], square[2], square[3], square[0]};
    const size_t corner[] = {0, 0, 1, 2, 2, 2, 3, 0};
    const std::vector<EdgeCoreInfo> plain = OffsetDirections(square);
    const std::vector<EdgeCoreInfo> cores = OffsetDirections(repeated);
    ASSERT_EQ(cores.size(), repeated.size());
    for (size_t i = 0; i < repeated.size(); ++i) EXPECT_EQ(cores[i].dir, plain[corner[i]].dir) << i;
}

TEST(OffsetDirections, areZeroWhereThereIsNoDirection) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    EXPECT_TRUE(OffsetDirections({}).empty());
    EXPECT_EQ(OffsetDirections({{1, 2}})[0].dir, cv::Point2f());
    for (const EdgeCoreInfo& core : OffsetDirections({{1, 2}, {1, 2}, {1, 2}})) {
        EXPECT_EQ(core.dir, cv::Point2f());
    }
    // A line there and back: both tips are reversals.
    for (const EdgeCoreInfo& core : OffsetDirections({{0, 0}, {3, 1}})) {
        EXPECT_EQ(core.dir, cv::Point2f());
    }
    const Outline broken{{0, 0}, {nan, 1}, {1, 1}, {inf, 0}, {1, 0}};
    const std::vector<EdgeCoreInfo> cores = OffsetDirections(broken);
    ASSERT_EQ(cores.size(), broken.size());
    for (const EdgeCoreInfo& core : cores) {
        EXPECT_TRUE(std::isfinite(core.dir.x) && std::isfinite(core.dir.y));
    }
}

TEST(StepDirections, ofStepsWithoutLengthAreThoseOfTheStepBefore) {
    const std::vector<cv::Point2f> edges{{0, 0}, {0, 0}, {0, 0}, {2, 0},
                                         {2, 0}, {2, 0}, {2, 0}, {0, 0}};
    const std::vector<cv::Point2f> expected{{-1, 0}, {1, 0}, {1, 0}, {-1, 0}};
    EXPECT_EQ(StepDirections(edges), expected);
    EXPECT_EQ(StepDirections({{1, 1}, {1, 1}}), std::vector<cv::Point2f>(1, {1, 0}));
}

}  // namespace
}  // namespace kelmo
